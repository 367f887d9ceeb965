#pragma once

// The two ends of a journey: at the gate of the last place, and on the way.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

extern const ViewProc ArrivalPanel;  ///< goes on to the score
extern const ViewProc GameOverPanel; ///< goes back to the title

} // namespace Wainroad
