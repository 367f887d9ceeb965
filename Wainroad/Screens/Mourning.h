#pragma once

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

extern const ViewProc MourningPanel; ///< somebody died: ten seconds, or until a click
extern const ViewProc MourningTextPanel;

} // namespace Wainroad
