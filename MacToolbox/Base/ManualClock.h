#pragma once

#include "MacToolbox/Base/Clock.h"

#include <map>

namespace MacToolbox {

/// A slow, exact machine's clock, for runs that are the same every time and do not wait. A wait jumps to the earlier of
/// its end and the next thing due, and runs what is due; asking the time costs 1 us and a yield 250 us, so that loops
/// that only poll move on too. Everything runs on the threads that call it, of which only one may run at a time.
class ManualClock final : public Clock {
public:
    static constexpr Nanos kReadCost = 1'000;
    static constexpr Nanos kYieldCost = 250'000;
    /// No wait moves further than this beyond the last yield.
    static constexpr Nanos kLongestJump = 119 * kTickNanos;
    static constexpr std::int64_t kWallStart = 1'000'000'000; ///< 9 September 2001; what the wall clock shows at 0

    Nanos now() override { return time_ += kReadCost; }
    std::int64_t wallSeconds() override { return kWallStart + time_ / kSecond; }
    void waitUntil(Condition& condition, Nanos deadline) override;
    void sleep(Nanos span) override;
    void after(Nanos span, std::function<void()> work) override;
    void run(Nanos delay, Step step) override;
    void yielded() override;

    /// The time, at no cost.
    Nanos time() const { return time_; }
    /// True if nothing is waiting to become due.
    bool idle() const { return due_.empty(); }
    /// True while a `run` has not answered its last step.
    bool stepping() const { return steppers_ > 0; }
    /// Called at each yield, after what was due has run; the place where a driver may stop the run, also by throwing.
    std::function<void()> onYield;

private:
    void runDue();
    void stepLater(Nanos span, Step step);

    Nanos time_ = 0;
    Nanos lastYield_ = 0;
    Int steppers_ = 0;
    std::multimap<Nanos, std::function<void()>> due_; // of equal times, in the order in which they were added
};

} // namespace MacToolbox
