#pragma once

// What stands between a place and the road on from it: the choice at a fork and at the toll, and why it can't go on.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

extern const ViewProc RoutePanel; ///< item 3 is the other way, at the toll the raft; any other the usual way
extern const ViewProc NoTollPanel;
extern const ViewProc CantContinuePanel;
extern const ViewProc OnlyFortsPanel; ///< there is no store here

/// Serves a panel with one button that leads back to the travel screen.
Int BackToTravelPanel(View& panel, Msg& msg, Int descriptor);

} // namespace Wainroad
