#pragma once

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

extern const ViewProc RestPanel;      ///< asks for 1 to 9 days of rest
extern const ViewProc RestRangePanel; ///< that was no number of days

} // namespace Wainroad
