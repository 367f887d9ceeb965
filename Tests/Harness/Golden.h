#pragma once

#include "MacToolbox/QuickDraw/Screen.h"

#include <string>

namespace Harness {

/// Compares a frame, pixel by pixel, with the picture `Tests/Golden/NAME.png`; a failure of the test if they differ.
/// The picture as it is then lies in the build folder under `actual/`, and the message counts the pixels and says where
/// they lie. With UPDATE_GOLDEN=1 in the environment the picture is accepted instead: look at it before it is
/// committed.
void expectFrame(const MacToolbox::FramePtr& frame, const std::string& name);

/// The pixels of a PNG file, black for what is darker than the middle; nil if it cannot be read.
MacToolbox::FramePtr readPicture(const std::string& path);
/// Writes a frame as PNG; its folder is made.
bool writePicture(const MacToolbox::Frame& frame, const std::string& path);

} // namespace Harness
