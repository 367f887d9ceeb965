#pragma once

#include "Tools/rsrc/Archive.h"

#include <string>
#include <vector>

namespace Rsrc {

/// Compiles every YAML file of a folder and the folders in it. Faults are added to `faults`; entries at fault are left
/// out.
Archive compileFolder(const std::string& folder, std::vector<std::string>& faults);

} // namespace Rsrc
