#pragma once

#include "MacToolbox/Base/Geometry.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

namespace MacToolbox {

/// Blocks for the main thread, run in posting order. Blocks run outside the lock.
class MainQueue {
public:
    /// Appends a block. Any thread.
    void push(std::function<void()> block);
    /// Runs blocks as they come, for ever. Main thread.
    [[noreturn]] void runForever();
    /// Runs the blocks that are there, and those that they push; does not wait. @return How many ran.
    Int drain();
    /// Waits up to `milliseconds` of real time for a block, then drains. @return How many ran.
    Int drainFor(Int milliseconds);

private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<std::function<void()>> blocks_;
};

} // namespace MacToolbox
