#pragma once

// Control definitions: the icon button as a control, and the tab and the page corner of the guide.

#include "MacToolbox/Managers/Controls.h"

namespace Wainroad {
using namespace MacToolbox;

Int IconButtonDef(Int variation, const ControlHandle& control, Int message, Int parameter);
Int GuideTabDef(Int variation, const ControlHandle& control, Int message, Int parameter);
/// Part 1 is the half below the diagonal from top left to bottom right, part 2 the half above.
Int PageCornerDef(Int variation, const ControlHandle& control, Int message, Int parameter);
/// Registers the three under the ids 10, 14 and 8.
void RegisterControls();

} // namespace Wainroad
