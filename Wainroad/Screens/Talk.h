#pragma once

// Talk at the road: what somebody says here, and in a train of several wagons a word to the others.

#include "Wainroad/Frame/Panels.h"

#include <array>

namespace MacToolbox {
struct ListRec;
using ListHandle = std::shared_ptr<ListRec>;
} // namespace MacToolbox

namespace Wainroad {

extern Int gTalkTurn; ///< 1 to 3: which of a place's talks is told; 0 before the first

/// Goes on to the next talk and opens its panel anew.
void NextTalk();
/// The key of the travel screen.
void StartTalk();

/// The slots of the wagons in use, by row; -1 where there is none.
using WagonMap = std::array<Int, 33>;
/// Lists the wagons of the train. Bit 1 of `flags` leaves out those without an open trade request, bit 2 this player's.
/// Fills `list`, if given, and selects its first row. @return The number of rows.
Int ListWagons(const ListHandle& list, Int flags, WagonMap& map);

extern const ViewProc TalkPanel, TalkChoicePanel, TalkToPanel, SayPanel;

} // namespace Wainroad
