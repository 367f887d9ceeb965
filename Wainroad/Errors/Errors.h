#pragma once

#include "MacToolbox/Base/Memory.h"

#include <functional>
#include <string_view>

namespace Wainroad {
using namespace MacToolbox;

/// What the ends of the run need from the rooms above. The game fills it once at start; an empty entry is skipped.
struct ErrorHooks {
    std::function<void(Int id)> centeredAlert; ///< `DCenteredAlert`
    std::function<void(Rect&)> centerRect;     ///< `CenterRect`
    std::function<void()> flushConfig;         ///< `FlushConfig`, if the configuration is open for writing
    std::function<void()> rewriteConfig;       ///< the write of a fatal `DiskError`, under the same condition
    std::function<void()> closeNetwork;        ///< `CloseNetwork`
};
/// The one table of hooks. It outlives a run: fill it whole with each start.
ErrorHooks& errorHooks();

/// Shows alert 1000 with the error and the step that failed, says the same on standard error, keeps the configuration
/// and ends the process with status 0. One that is raised while another is being shown ends it at once, with status 1.
/// @param where  The name of the step, plain ASCII.
[[noreturn]] void Fatal(Int error, std::string_view where);

/// Tells of a failed file operation through alert 1001, and ends the process if `fatal`. An error without a text, or a
/// missing alert, goes to `Fatal` with "DiskError".
void DiskError(Int error, bool fatal);

/// Says a text that ends the program on standard error too, as one line of UTF-8.
void PrintError(const Str255& text);

/// Finds the text of an error number in `STR#` 1000. @return False if there is none; `text` is then unchanged.
bool ErrorMessage(Int number, Str255& text);
/// Appends a decimal number, with "-" if it is negative.
void AppendNumber(Int n, Str255& text);

} // namespace Wainroad
