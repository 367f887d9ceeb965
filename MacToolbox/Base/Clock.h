#pragma once

#include "MacToolbox/Base/Geometry.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>

namespace MacToolbox {

/// Nanoseconds: points of a monotonic clock, and spans of time.
using Nanos = std::int64_t;

inline constexpr Nanos kSecond = 1'000'000'000;
/// A tick of the machine is 1/60 s, counted as this many nanoseconds.
inline constexpr Nanos kTickNanos = 16'666'667;
/// 1/60 s as a span to wait: a little shorter than a tick as it is counted.
inline constexpr Nanos kSixtieth = 16'666'666;

/// A mutex with a condition whose timed wait goes through the clock. Fits `std::lock_guard` and `std::unique_lock`.
class Condition {
public:
    Condition() = default;
    Condition(const Condition&) = delete;
    Condition& operator=(const Condition&) = delete;

    void lock() { mutex_.lock(); }
    void unlock() { mutex_.unlock(); }
    /// Wakes every waiter. Lock held.
    void broadcast();
    /// One timed wait, lock held: returns after a broadcast or when the clock reaches `deadline`, and now and then
    /// earlier. Returns at once if `deadline` has passed.
    void waitUntil(Nanos deadline);

private:
    friend class SteadyClock;
    friend class ManualClock;
    std::mutex mutex_;
    std::condition_variable condition_;
    std::uint64_t broadcasts_ = 0; // counted under the lock
};

/// The one place where time is read and waited for. One clock is in force at a time; the steady one, unless another
/// is installed. Any thread.
class Clock {
public:
    /// One piece of work that answers how long to wait before the next, or nothing at its end.
    using Step = std::function<std::optional<Nanos>()>;

    virtual ~Clock() = default;

    /// Monotonic time in nanoseconds from an origin of the clock's own; never below 0.
    virtual Nanos now() = 0;
    /// Wall clock: whole seconds since 1970, UTC.
    virtual std::int64_t wallSeconds() = 0;
    /// What `Condition::waitUntil` does.
    virtual void waitUntil(Condition& condition, Nanos deadline) = 0;
    /// Waits for that long; a span below 0 counts as 0.
    virtual void sleep(Nanos span) = 0;
    /// Runs `work` once after that long, on a background thread or in the caller's next wait. Returns at once.
    virtual void after(Nanos span, std::function<void()> work) = 0;
    /// Runs `step` again and again, first after `delay` and then after each span that it answers, on a thread of its
    /// own or in the caller's waits, until it answers nothing. Returns at once.
    virtual void run(Nanos delay, Step step) = 0;
    /// Told by the game thread at each of its yields, outside all locks. A clock that is moved by hand lets time pass.
    virtual void yielded() { }

    /// The clock in force.
    static Clock& current();
    /// Puts a clock in force; nullptr is the steady one again. Only while nothing waits. The clock stays the caller's.
    static void install(Clock* clock);
};

/// The real clock: it stands still while the machine is suspended.
class SteadyClock final : public Clock {
public:
    Nanos now() override;
    std::int64_t wallSeconds() override;
    void waitUntil(Condition& condition, Nanos deadline) override;
    void sleep(Nanos span) override;
    void after(Nanos span, std::function<void()> work) override;
    void run(Nanos delay, Step step) override;
};

} // namespace MacToolbox
