#pragma once

#include "MacToolbox/Base/Platform.h"

#include <memory>
#include <optional>

namespace MacToolbox {

using CursHandle = std::shared_ptr<Cursor>;

// Resource ids of the stock cursors.
inline constexpr Int iBeamCursor = 1, crossCursor = 2, plusCursor = 3, watchCursor = 4;

/// The cursor last asked for. The request is recorded whether or not there is a window. Game thread only.
struct Cursors {
    /// The cursor of the last request; nothing is the arrow.
    static const std::optional<Cursor>& requested();
    /// How many requests changed the cursor since the start of the run.
    static Int changes();
};

/// Asks for the arrow.
void InitCursor();
/// The cursor of resource `CURS` `id`; nil if it is missing or shorter than 68 bytes.
CursHandle GetCursor(Int id);
/// Asks for a cursor; nothing happens if it is the one in force.
void SetCursor(const Cursor& cursor);
/// The same; nil does nothing.
void SetCursor(const CursHandle& cursor);
void HideCursor();
void ShowCursor();
/// Hides the cursor until the mouse moves.
void ObscureCursor();

} // namespace MacToolbox
