#pragma once

// The plain text copy of the journal, kept off screen for the export.

#include "MacToolbox/Base/Memory.h"

#include <memory>

namespace MacToolbox {
struct TERec;
using TEHandle = std::shared_ptr<TERec>;
} // namespace MacToolbox

namespace Wainroad {
using namespace MacToolbox;

extern TEHandle gLogTE; ///< nil before the first `ClearLogText`

/// Empties the copy; makes it if there is none.
void ClearLogText();
/// Adds every message of the store that the player sees.
void LogUpdate(const TEHandle& te);
/// Adds a text, with `newline` as a line of its own. Beyond 32000 characters the oldest line goes.
void LogAppendString(const TEHandle& te, Str255 text, bool newline);
/// True if there is nothing to export.
bool LogTextIsEmpty();

} // namespace Wainroad
