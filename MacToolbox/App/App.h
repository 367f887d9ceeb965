#pragma once

#include "MacToolbox/Base/Geometry.h"
#include "MacToolbox/Base/Platform.h"

#include <functional>
#include <string>
#include <vector>

namespace MacToolbox {

/// The process as a whole: chooses the host's shape, starts the game, takes quit requests.
struct WRApp {
    /// Host points per screen pixel of the windowed shape; a start hook may change it.
    static Int scale;
    /// Run in order by `run`, before the game starts, on the main thread.
    static std::vector<std::function<void()>>& willStart();

    /// Runs the game. Main thread, once a process; comes back only under a platform that runs the game inside this
    /// call. The platform in force is used if one was installed; else WR_HEADLESS asks for the one without a window,
    /// and without it the desktop module is opened. If that cannot be, one line on standard error says why, and the
    /// process ends with status 1.
    static void run(const std::string& title, std::function<void()> game);

    /// The player asks to quit: it reaches the game as Command-Q, and ends a modal dialog and a `Delay`. Any thread.
    static void requestQuit();
};

} // namespace MacToolbox
