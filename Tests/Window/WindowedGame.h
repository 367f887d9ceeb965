#pragma once

#include "MacToolbox/QuickDraw/Screen.h"
#include "Tests/Window/Desk.h"

namespace Harness {

using MacToolbox::FramePtr;
using MacToolbox::Int;

/// The game in its window, on a desk.
class WindowedGame {
public:
    /// @param more  Added to the desk's environment, or in place of it.
    explicit WindowedGame(const Desk& desk, const Program::Environment& more = {}, const std::string& program = "");

    /// Waits for the window and a first picture in it. @param factor  Display pixels a pixel that are expected.
    bool comesUp(int factor = 2);
    Program& program() { return program_; }
    const Desk& desk() const { return desk_; }
    Desk::Window window() const { return window_; }
    int factor() const { return factor_; }
    int bar() const { return bar_; } ///< height of the menu bar
    Shot shot() const { return desk_.shot(window_); }

    /// The picture of the game as the window shows it; nil unless every pixel is a clean square of black or white.
    /// @param factor  Display pixels a pixel; 0: as expected at the start.
    FramePtr picture(int factor = 0) const;
    /// Waits until the window shows that frame. Pixels that `mask` has set are not looked at. What it showed instead is
    /// left in the build folder under `actual/`.
    bool shows(const FramePtr& frame, int factor = 0, const FramePtr& mask = nullptr, double seconds = 60) const;
    /// A place of the picture as a place of the window.
    std::pair<int, int> place(MacToolbox::Point p) const;
    void move(MacToolbox::Point p) const;
    void click(MacToolbox::Point p) const;

private:
    const Desk& desk_;
    int factor_ = 2;
    Program program_;
    Desk::Window window_ = 0;
    int bar_ = 0;
};

/// The number of pixels that differ, except where `mask` is set; all if the sizes differ or one is nil.
Int differing(const FramePtr& a, const FramePtr& b, const FramePtr& mask = nullptr);

/// How often a button pressed at `p`, where that changes the picture, is answered how soon.
/// @return Milliseconds from each press to the first changed pixel on the display.
std::vector<double> pressToPixel(const WindowedGame& game, MacToolbox::Point p, int rounds);
double median(std::vector<double> values);

} // namespace Harness
