#pragma once

#include "MacToolbox/Base/Memory.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <optional>

namespace MacToolbox {

/// The frame as a PNG file: 8-bit RGB, plain black and white, one image pixel a screen pixel. Any thread.
/// @return Nothing for a frame without pixels.
std::optional<Bytes> makePNG(const Frame& frame);
/// The published frame as a PNG file; nothing if there is none yet. Any thread.
std::optional<Bytes> screenPNG();

} // namespace MacToolbox
