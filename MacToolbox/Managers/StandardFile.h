#pragma once

#include "MacToolbox/Data/Files.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace MacToolbox {

/// The answer of a file panel. `good` false: cancelled, and the rest is empty.
struct SFReply {
    bool good = false, copy = false;
    OSType fType = 0;
    Int vRefNum = 0, version = 0;
    Str255 fName{0};
};

/// True to leave a file out. Called on the main thread while the game thread waits: it may not use the Toolbox.
using FileFilterProc = std::function<bool(OSType type, const Str255& name)>;

/// Asks for a file to open, and waits for the answer. With a window a panel shows files of the first `numTypes` types
/// of the list (all, below 1) that the filter does not leave out. Without one the next scripted answer is taken, of
/// whatever type, unless the filter leaves it out; no scripted answer counts as Cancel. Game thread.
void SFGetFile(Point where, const Str255& prompt, const FileFilterProc& fileFilter, Int numTypes,
    const std::vector<OSType>& typeList, std::nullptr_t dlgHook, SFReply& reply);

/// Asks where to save; the file may exist. The name has at most 63 characters. Answers as `SFGetFile`. Game thread.
/// @param kind  The type that the file is to have: a panel shows files of that type alone, and lets no other be
/// replaced.
///              0: any.
void SFPutFile(
    Point where, const Str255& prompt, const Str255& origName, std::nullptr_t dlgHook, SFReply& reply, OSType kind = 0);

} // namespace MacToolbox
