#include "MacToolbox/Base/MainQueue.h"

#include <chrono>

namespace MacToolbox {

void MainQueue::push(std::function<void()> block)
{
    const std::lock_guard lock(mutex_);
    blocks_.push_back(std::move(block));
    arrived_.notify_one();
}

void MainQueue::runForever()
{
    for (;;) {
        {
            std::unique_lock lock(mutex_);
            arrived_.wait(lock, [this] { return !blocks_.empty(); });
        }
        drain();
    }
}

Int MainQueue::drain()
{
    for (Int count = 0;; ++count) {
        std::unique_lock lock(mutex_);
        if (blocks_.empty())
            return count;
        const auto block = std::move(blocks_.front());
        blocks_.pop_front();
        lock.unlock();
        block();
    }
}

Int MainQueue::drainFor(Int milliseconds)
{
    {
        std::unique_lock lock(mutex_);
        arrived_.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return !blocks_.empty(); });
    }
    return drain();
}

} // namespace MacToolbox
