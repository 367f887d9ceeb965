#pragma once

// From the wish to travel to the first day: the letter, the party, the month. The store stands between the last two.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

/// Opens the lobby and the letter that begins a journey.
void TravelTheTrail();
/// Leaves the lobby; the journey that was to be is given up.
void LeaveLobby();
/// Makes the train of one wagon with what was bought, and asks for the month.
void StartSolo();

extern const ViewProc IntroPanel;  ///< the letter
extern const ViewProc PartyPanel2; ///< names and occupation
extern const ViewProc NoNamePanel; ///< the leader's name is missing or too long
extern const ViewProc OccupationsInfoPanel;
extern const ViewProc MonthPanel;

/// A panel that tells something over another: takes the keys, and gives them back as its button closes it.
/// @param proc  The panel itself. @return What its handler answers.
Int InfoPanel(View& panel, Msg& msg, const ViewProc& proc, Int descriptor);

} // namespace Wainroad
