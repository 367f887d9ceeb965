#pragma once

// How much the party eats and how fast the train goes: two small panels of three choices each.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

extern const ViewProc RationsPanel, SameRationsPanel, RationsInfoPanel;
extern const ViewProc PacePanel, SamePacePanel, PaceInfoPanel;

} // namespace Wainroad
