#include "MacToolbox/Base/ManualClock.h"

#include <algorithm>

namespace MacToolbox {

void ManualClock::waitUntil(Condition& condition, Nanos deadline)
{
    deadline = std::min(deadline, lastYield_ + kLongestJump);
    const std::uint64_t seen = condition.broadcasts_;
    while (time_ < deadline && condition.broadcasts_ == seen) {
        if (due_.empty() || due_.begin()->first >= deadline) {
            time_ = deadline;
            return;
        }
        time_ = std::max(time_, due_.begin()->first);
        struct Unlocked {
            std::mutex& mutex;
            explicit Unlocked(std::mutex& m) : mutex(m) { mutex.unlock(); }
            ~Unlocked() { mutex.lock(); }
        } const unlocked(condition.mutex_);
        runDue();
    }
}

void ManualClock::sleep(Nanos span)
{
    const Nanos end = time_ + std::clamp<Nanos>(span, 0, kLongestJump);
    while (!due_.empty() && due_.begin()->first < end) {
        time_ = std::max(time_, due_.begin()->first);
        runDue();
    }
    time_ = std::max(time_, end);
}

void ManualClock::after(Nanos span, std::function<void()> work)
{
    due_.emplace(time_ + std::max<Nanos>(span, 0), std::move(work));
}

void ManualClock::run(Nanos delay, Step step)
{
    ++steppers_;
    stepLater(delay, std::move(step));
}

void ManualClock::yielded()
{
    time_ += kYieldCost;
    lastYield_ = time_;
    runDue();
    if (onYield)
        onYield();
}

void ManualClock::runDue()
{
    while (!due_.empty() && due_.begin()->first <= time_) {
        const auto work = std::move(due_.extract(due_.begin()).mapped());
        work();
    }
}

void ManualClock::stepLater(Nanos span, Step step)
{
    after(span, [this, step = std::move(step)] {
        if (const auto next = step())
            stepLater(*next, step);
        else
            --steppers_;
    });
}

} // namespace MacToolbox
