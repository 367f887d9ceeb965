#include "MacToolbox/Base/ManualClock.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace MacToolbox;

namespace {

/// A manual clock in force for the length of a test.
class ManualClockTest : public testing::Test {
protected:
    ManualClockTest() { Clock::install(&clock); }
    ~ManualClockTest() override { Clock::install(nullptr); }

    void waitFor(Nanos span)
    {
        const std::lock_guard lock(condition);
        condition.waitUntil(clock.time() + span);
    }
    void broadcast()
    {
        const std::lock_guard lock(condition);
        condition.broadcast();
    }

    ManualClock clock;
    Condition condition;
    std::string log;
};

} // namespace

TEST_F(ManualClockTest, AWaitRunsWhatIsDueAndEndsOnTime)
{
    clock.after(30, [&] { log += "c"; });
    clock.after(10, [&] { log.append("a").append(std::to_string(clock.time())); });
    clock.after(10, [&] { log += "b"; });
    clock.after(1000, [&] { log += "late"; });
    waitFor(100);
    EXPECT_EQ(log, "a10bc");
    EXPECT_EQ(clock.time(), 100);
    waitFor(-5);
    EXPECT_EQ(clock.time(), 100) << "a wait for the past moves nothing";
}

TEST_F(ManualClockTest, ABroadcastEndsTheWaitAndOthersDoNot)
{
    Condition other;
    clock.after(10, [&] {
        const std::lock_guard lock(other);
        other.broadcast();
    });
    clock.after(20, [&] { broadcast(); });
    clock.after(30, [&] { log += "too far"; });
    waitFor(100);
    EXPECT_EQ(clock.time(), 20);
    EXPECT_EQ(log, "");
}

TEST_F(ManualClockTest, AskingAndYieldingCostTime)
{
    EXPECT_EQ(clock.now(), 1'000);
    EXPECT_EQ(clock.now(), 2'000);
    clock.after(200'000, [&] { log += "due"; });
    clock.onYield = [&] { log += " yield"; };
    clock.yielded();
    EXPECT_EQ(clock.time(), 252'000);
    EXPECT_EQ(log, "due yield");
}

TEST_F(ManualClockTest, NoWaitJumpsPast120TicksFromTheLastYield)
{
    clock.yielded();
    const Nanos yielded = clock.time();
    waitFor(1000 * kTickNanos);
    EXPECT_LT(clock.time() - yielded, 120 * kTickNanos);
    EXPECT_GT(clock.time() - yielded, 110 * kTickNanos);
}

TEST_F(ManualClockTest, AStepperRunsAtItsOwnPace)
{
    std::vector<Nanos> times;
    clock.run(5, [&]() -> std::optional<Nanos> {
        times.push_back(clock.time());
        return times.size() < 4 ? std::optional<Nanos>(10) : std::nullopt;
    });
    EXPECT_TRUE(clock.stepping());
    waitFor(1000);
    EXPECT_EQ(times, (std::vector<Nanos>{5, 15, 25, 35}));
    EXPECT_FALSE(clock.stepping());
    EXPECT_TRUE(clock.idle());
}

TEST(SteadyClock, ATimedWaitTakesItsTimeAndNoMore)
{
    Clock& clock = Clock::current();
    Condition condition;
    const Nanos start = clock.now();
    {
        const std::lock_guard lock(condition);
        while (clock.now() < start + 20'000'000)
            condition.waitUntil(start + 20'000'000);
    }
    EXPECT_GE(clock.now() - start, 20'000'000);
    EXPECT_LT(clock.now() - start, 2 * kSecond);
}
