#include "MacToolbox/Base/Clock.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <map>
#include <thread>

namespace MacToolbox {

namespace {

using SteadyPoint = std::chrono::time_point<std::chrono::steady_clock, std::chrono::nanoseconds>;

/// Late work of the steady clock, on one thread that is made at its first use and stays.
class Timer {
public:
    static Timer& shared()
    {
        static auto& timer = *new Timer; // leaked: its thread runs to the end of the process
        return timer;
    }

    void add(Nanos due, std::function<void()> work)
    {
        const std::lock_guard lock(mutex_);
        work_.emplace(due, std::move(work));
        changed_.notify_one();
    }

private:
    Timer()
    {
        std::thread([this] { serve(); }).detach();
    }

    [[noreturn]] void serve()
    {
        std::unique_lock lock(mutex_);
        for (;;) {
            if (work_.empty()) {
                changed_.wait(lock);
                continue;
            }
            const SteadyPoint due{std::chrono::nanoseconds(work_.begin()->first)};
            if (std::chrono::steady_clock::now() < due) {
                changed_.wait_until(lock, due);
                continue;
            }
            const auto work = std::move(work_.extract(work_.begin()).mapped());
            lock.unlock();
            work();
            lock.lock();
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::multimap<Nanos, std::function<void()>> work_;
};

SteadyClock& steady()
{
    static auto& clock = *new SteadyClock;
    return clock;
}

std::atomic<Clock*> sCurrent{nullptr};

} // namespace

void Condition::broadcast()
{
    ++broadcasts_;
    condition_.notify_all();
}

void Condition::waitUntil(Nanos deadline) { Clock::current().waitUntil(*this, deadline); }

Clock& Clock::current()
{
    Clock* const clock = sCurrent.load(std::memory_order_acquire);
    return clock ? *clock : steady();
}

void Clock::install(Clock* clock) { sCurrent.store(clock, std::memory_order_release); }

Nanos SteadyClock::now()
{
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::int64_t SteadyClock::wallSeconds()
{
    return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()).time_since_epoch().count();
}

void SteadyClock::waitUntil(Condition& condition, Nanos deadline)
{
    std::unique_lock lock(condition.mutex_, std::adopt_lock);
    condition.condition_.wait_until(lock, SteadyPoint{std::chrono::nanoseconds(deadline)});
    lock.release(); // the caller's
}

void SteadyClock::sleep(Nanos span) { std::this_thread::sleep_for(std::chrono::nanoseconds(std::max<Nanos>(span, 0))); }

void SteadyClock::after(Nanos span, std::function<void()> work)
{
    Timer::shared().add(now() + std::max<Nanos>(span, 0), std::move(work));
}

void SteadyClock::run(Nanos delay, Step step)
{
    std::thread([this, delay, step = std::move(step)] {
        sleep(delay);
        while (const auto span = step())
            sleep(*span);
    }).detach();
}

} // namespace MacToolbox
