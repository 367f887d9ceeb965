#pragma once

#include <functional>

namespace Desktop {

/// Runs `act` on the main thread at the first SIGINT or SIGTERM; a second one of the same kind ends the process, as
/// without this. Main thread, once a process.
void onTerminationSignal(std::function<void()> act);

} // namespace Desktop
