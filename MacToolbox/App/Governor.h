#pragma once

namespace MacToolbox {

/// Lets an idle game rest. The game polls for events without a pause; with the governor, a few polls of each tick run
/// free, and the next one waits for the end of the tick or for something to do, whichever is first.
struct Governor {
    /// Adds a start hook that puts the governor in the event pump. To be called before `WRApp::run`, by the program:
    /// the Toolbox alone has the bare pump.
    static void installAtStart();
};

} // namespace MacToolbox
