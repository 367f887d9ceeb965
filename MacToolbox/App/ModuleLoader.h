#pragma once

#include "MacToolbox/Base/Platform.h"

#include <string>

namespace MacToolbox {

/// The windowed host is a module that the executable opens only when it needs a window. It exports this one function,
/// with C linkage, under the name `wr_make_desktop`.
/// @return The platform, which lives to the end of the process; or nullptr, with one line in `whyNot` that says what is
///         missing (a display, for one).
extern "C" using MakeDesktop = Platform * (std::string & whyNot);

/// Opens `wainroad-desktop.so`, beside the executable or in `<prefix>/lib/wainroad`, and makes its platform.
/// @return nullptr if there is no module, or it has nothing to show on; `whyNot` then says why, in one line.
Platform* loadDesktop(std::string& whyNot);

} // namespace MacToolbox
