#pragma once

// The entry of the program.

#include <string>
#include <string_view>

namespace Wainroad {

/// What `main` calls: opens the two resource files, registers the control definitions and runs the game. Main thread.
/// Comes back only under a platform that runs the game inside this call.
void Wainroad_main();

/// Where a resource file lies: in the program's folder, or in the bundle of resources beside it. If there is no bundle,
/// the program ends with status 1.
std::string resourcePath(std::string_view name);

} // namespace Wainroad
