#pragma once

#include "MacToolbox/QuickDraw/Screen.h"

#include <string>
#include <vector>

namespace Harness {

/// Pictures of the game side by side, each with a line below that says what it is.
class ContactSheet {
public:
    /// Adds a picture. The caption is set in a font of the game: while a game runs.
    void add(const MacToolbox::FramePtr& picture, const std::string& caption);
    std::size_t count() const { return pictures_.size(); }
    /// Writes all as one PNG. @return False if there are none or the file cannot be written.
    bool write(const std::string& path) const;

private:
    std::vector<MacToolbox::Frame> pictures_; // with their captions
};

} // namespace Harness
