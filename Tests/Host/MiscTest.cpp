#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Base/HeadlessPlatform.h"
#include "MacToolbox/Base/ManualClock.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/GameThread.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <stdexcept>

using namespace MacToolbox;

namespace {

/// A run that has just begun, under the manual clock.
class HostTest : public testing::Test {
protected:
    HostTest()
    {
        Clock::install(&clock);
        startRunAfresh();
    }
    ~HostTest() override { Clock::install(nullptr); }

    /// Lets `n` ticks pass with no service.
    void skip(Int n)
    {
        clock.sleep(0); // no yield, so the time is moved in pieces
        for (const Nanos end = clock.time() + n * kTickNanos; clock.time() < end;)
            clock.sleep(std::min(kTickNanos, end - clock.time()));
    }
    VBLTaskPtr task(Int count, std::function<void(VBLTask&)> address)
    {
        const auto made = std::make_shared<VBLTask>();
        made->vblCount = count;
        made->vblAddr = std::move(address);
        return made;
    }

    ManualClock clock;
    std::string log;
};

class PlatformWithDate final : public HeadlessPlatform {
public:
    explicit PlatformWithDate(const char* date) : date_(date) { Platform::install(this); }
    ~PlatformWithDate() override { Platform::install(nullptr); }
    std::optional<std::string> environment(const std::string& name) override
    {
        return name == "WR_DATE" ? std::optional<std::string>(date_) : std::nullopt;
    }

private:
    const char* date_;
};

} // namespace

TEST_F(HostTest, TicksBeginAt1AndLast16666667Nanoseconds)
{
    clock.sleep(123'456'789);
    const Nanos start = clock.time() + ManualClock::kReadCost; // the time that the first call reads
    EXPECT_EQ(TickCount(), 1);
    clock.sleep(start + 16'666'667 - clock.time() - 2 * ManualClock::kReadCost);
    EXPECT_EQ(TickCount(), 1);
    EXPECT_EQ(TickCount(), 2) << "the tick turns at exactly 16666667 ns";
    EXPECT_EQ(endOfTick(1), start + 16'666'667);
    clock.sleep(endOfTick(60) - clock.time() - 2 * ManualClock::kReadCost);
    EXPECT_EQ(TickCount(), 60);
    EXPECT_EQ(TickCount(), 61);
}

TEST_F(HostTest, DelayServesTheMachineAndTakesNoEvent)
{
    Int last = 0, fired = 0;
    VInstall(task(1, [&](VBLTask& t) { t.vblCount = 1, ++fired; }));
    const Int start = TickCount();
    Delay(30, last);
    EXPECT_EQ(last - start, 30);
    EXPECT_NEAR(static_cast<double>(fired), 29, 1);
    Input::key('a', 0, 0, true);
    Delay(5, last);
    EXPECT_TRUE(Input::take(keyDownMask, false)) << "the event is still there";
}

TEST_F(HostTest, DelayOfNothingDoesNotService)
{
    Int last = 0;
    bool ran = false;
    GameThread::perform([&] { ran = true; });
    Delay(0, last);
    Delay(-7, last);
    EXPECT_FALSE(ran);
    EXPECT_EQ(last, TickCount());
}

TEST_F(HostTest, AQuitRequestEndsEachDelayAfterOneRound)
{
    Int last = 0;
    clock.after(5 * kTickNanos, [] { Input::requestQuit(); });
    const Int start = TickCount();
    Delay(600, last);
    EXPECT_LE(last - start, 6);
    Input::flush(everyEvent);
    const Int again = TickCount();
    Delay(600, last);
    EXPECT_LE(last - again, 2) << "and each one after it";
}

TEST_F(HostTest, ServiceRunsDeferredWorkInOrderAndNeverInsideItself)
{
    GameThread::perform([&] {
        log += "a";
        GameThread::perform([&] { log += "d"; });
        GameThread::service();
        log += "b";
    });
    GameThread::perform([&] { log += "c"; });
    GameThread::service();
    EXPECT_EQ(log, "abc");
    GameThread::service();
    EXPECT_EQ(log, "abcd");
}

TEST_F(HostTest, ServiceWorksOnAfterAnExceptionWentThroughIt)
{
    GameThread::perform([] { throw std::runtime_error("out"); });
    EXPECT_THROW(GameThread::service(), std::runtime_error);
    EXPECT_FALSE(GameThread::isServicing());
    GameThread::perform([&] { log += "a"; });
    GameThread::service();
    EXPECT_EQ(log, "a");
}

TEST_F(HostTest, ServicePublishesWhatWasDrawn)
{
    GameThread::service();
    const FramePtr first = Screen::shared().snapshot();
    ASSERT_TRUE(first) << "the first publish is never left out";
    GameThread::service();
    EXPECT_EQ(Screen::shared().snapshot(), first);
    GameThread::service(true);
    EXPECT_NE(Screen::shared().snapshot(), first);
}

TEST_F(HostTest, TaskCountsDownOnceATickAndSetsItselfAgain)
{
    Int fired = 0;
    const auto once = task(1, [&](VBLTask&) { ++fired; });
    VInstall(once);
    GameThread::service();
    EXPECT_EQ(fired, 0) << "the first pump only takes the time";
    skip(1);
    GameThread::service();
    EXPECT_EQ(fired, 1);
    skip(10);
    GameThread::service();
    EXPECT_EQ(fired, 1);
    once->vblAddr = [&](VBLTask& t) { t.vblCount = 3, ++fired; };
    once->vblCount = 3;
    skip(30);
    GameThread::service();
    EXPECT_EQ(fired, 11);
}

TEST_F(HostTest, LostTimeIsCaughtUpTo120Ticks)
{
    Int fired = 0;
    VInstall(task(1, [&](VBLTask& t) { t.vblCount = 1, ++fired; }));
    GameThread::service();
    skip(500);
    GameThread::service();
    EXPECT_EQ(fired, 120);
    skip(2);
    GameThread::service();
    EXPECT_LE(fired, 123);
}

TEST_F(HostTest, TasksMayComeAndGoWhileTheyRun)
{
    VBLTaskPtr self, other;
    other = task(0, [&](VBLTask&) { log += "o"; });
    self = task(1, [&](VBLTask&) {
        log += "s";
        VRemove(self);
        VInstall(other);
        other->vblCount = 1;
    });
    const auto twice = task(2, [&](VBLTask&) { log += "t"; });
    VInstall(self);
    VInstall(twice);
    VInstall(twice); // counts down twice a tick
    GameThread::service();
    skip(1);
    GameThread::service();
    EXPECT_EQ(log, "st");
    skip(3);
    GameThread::service();
    EXPECT_EQ(log, "sto");
    VRemove(twice);
    twice->vblCount = 1;
    skip(3);
    GameThread::service();
    EXPECT_EQ(log, "sto");
    EXPECT_EQ(VInstall(nullptr), noErr);
}

TEST_F(HostTest, ATaskOfOneRunIsGoneInTheNext)
{
    Int fired = 0;
    VInstall(task(1, [&](VBLTask& t) { t.vblCount = 1, ++fired; }));
    startRunAfresh();
    EXPECT_EQ(TickCount(), 1);
    GameThread::service();
    skip(5);
    GameThread::service();
    EXPECT_EQ(fired, 0);
}

TEST(Dates, OnlyADateOfTheFullFormThatExistsCounts)
{
    EXPECT_EQ(noonOfDate("1904-01-01"), 43200);
    EXPECT_EQ(noonOfDate("1970-01-01"), 2082844800 + 43200);
    EXPECT_EQ(noonOfDate("1848-04-01"), 43200 - 20362 * 86400) << "before 1904 it is below 0";
    EXPECT_TRUE(noonOfDate("2000-02-29"));
    for (const char* wrong : {"", "1848-4-1", "1848-04-1", "1848-02-30", "1900-02-29", "1848-13-01", "1848-00-10",
             "1848-04-00", " 1848-04-01", "1848-04-01 ", "1848/04/01", "1848-04-01x", "18480401", "-848-04-01",
             "1848-+4-01", "99999-01-01"})
        EXPECT_FALSE(noonOfDate(wrong)) << wrong;
}

TEST(Dates, TheDateOfTheEnvironmentIsNoonInEveryZone)
{
    const char* const zones[] = {"UTC", "America/New_York", "Asia/Kolkata", "Pacific/Kiritimati"};
    for (const char* zone : zones) {
        setenv("TZ", zone, 1);
        tzset();
        const PlatformWithDate platform("1848-04-01");
        Int seconds = 0;
        GetDateTime(seconds);
        EXPECT_EQ(seconds, *noonOfDate("1848-04-01")) << zone;
    }
    unsetenv("TZ");
    tzset();
}

TEST_F(HostTest, WithoutAGoodDateTheLocalTimeIsAsked)
{
    const Int utc = ManualClock::kWallStart + 2082844800;
    setenv("TZ", "XYZ-05:30", 1); // five and a half hours east
    tzset();
    Int seconds = 0;
    for (const char* date : {"1848-02-30", "soon"}) {
        const PlatformWithDate platform(date);
        GetDateTime(seconds);
        EXPECT_EQ(seconds, utc + 19800) << date;
    }
    unsetenv("TZ");
    tzset();
}

TEST(Machine, AnswersAreThoseOfOneMachine)
{
    Int result = -1;
    EXPECT_EQ(Gestalt(gestaltSystemVersion, result), noErr);
    EXPECT_EQ(result, 0x0701);
    for (const OSType unknown : {gestaltSoundAttr, gestaltDisplayMgrAttr, os("xxxx"), OSType(0)}) {
        result = -1;
        EXPECT_EQ(Gestalt(unknown, result), -5551);
        EXPECT_EQ(result, 0);
    }
    EXPECT_EQ(GetTrapAddress(0xA89F), GetTrapAddress(0xAB03));
    EXPECT_NE(GetTrapAddress(0xA89F), GetTrapAddress(0xA860));
    EXPECT_EQ(GetTrapAddress(0xA89F), GetTrapAddress(0x1A89F)) << "16 bits count";
}

TEST(Bits, AShiftByAnyCountIsDefined)
{
    EXPECT_EQ(BitShift(1, 3), 8);
    EXPECT_EQ(BitShift(-8, -1), -4);
    EXPECT_EQ(BitShift(1, 63), INT64_MIN);
    EXPECT_EQ(BitShift(1, 64), 0);
    EXPECT_EQ(BitShift(-1, -64), -1);
    EXPECT_EQ(BitShift(5, -64), 0);
    EXPECT_EQ(BitShift(-1, INT64_MIN), -1);
    EXPECT_EQ(BitShift(1, INT64_MAX), 0);
}
