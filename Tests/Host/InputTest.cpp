#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Base/ManualClock.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/GameThread.h"
#include "MacToolbox/Host/Misc.h"

#include <gtest/gtest.h>

using namespace MacToolbox;

namespace {

/// A run that has just begun, under the manual clock.
class InputTest : public testing::Test {
protected:
    InputTest()
    {
        Clock::install(&clock);
        startRunAfresh();
    }
    ~InputTest() override { Clock::install(nullptr); }

    static Int count()
    {
        Int n = 0;
        while (Input::take(everyEvent, true))
            ++n;
        return n;
    }
    static void fill(Int kind, Int n)
    {
        for (Int i = 0; i < n; ++i)
            Input::post({kind, i, 0, {}, 0});
    }

    ManualClock clock;
};

} // namespace

TEST_F(InputTest, AFullQueueDropsTheFirstAutoKeyAndElseTheOldest)
{
    fill(keyDown, 99);
    Input::post({autoKey, 1000, 0, {}, 0});
    Input::post({mouseUp, 1001, 0, {}, 0});
    EXPECT_FALSE(Input::take(autoKeyMask, false)) << "the auto key made room";
    EXPECT_EQ(Input::take(keyDownMask, false)->message, 0) << "and the oldest stayed";
    Input::post({mouseUp, 1002, 0, {}, 0});
    EXPECT_EQ(Input::take(keyDownMask, false)->message, 1);
    EXPECT_EQ(count(), 100);
}

TEST_F(InputTest, AMenuChoiceGoesWithItsClick)
{
    Input::menuChoice(1001, 7);
    const auto click = Input::take(everyEvent, true);
    ASSERT_TRUE(click);
    EXPECT_EQ(click->what, mouseDown);
    EXPECT_EQ(click->message, -1);
    EXPECT_EQ(click->where, (Point{2, 2}));
    EXPECT_EQ(click->modifiers, btnState);
    EXPECT_EQ(Input::takeMenuChoice(1), 1001 << 16 | 7);
    EXPECT_EQ(Input::takeMenuChoice(1), 0) << "a choice is answered once";

    Input::menuChoice(1002, -1);
    fill(keyDown, 100); // the click is the oldest, and goes
    EXPECT_EQ(Input::takeMenuChoice(2), 0);
    Input::menuChoice(1002, 0x12345);
    EXPECT_EQ(Input::takeMenuChoice(3), 1002 << 16 | 0x2345);
}

TEST_F(InputTest, OnlyAChangeOfTheButtonMakesAMouseEvent)
{
    Input::mouse(10, 20, false);
    EXPECT_TRUE(Input::isEmpty());
    Input::modifiers(shiftKey);
    Input::mouse(11, 21, true);
    Input::mouse(12, 22, true);
    Input::mouse(13, 23, false);
    const auto down = Input::take(everyEvent, true), up = Input::take(everyEvent, true);
    ASSERT_TRUE(down && up);
    EXPECT_EQ(down->what, mouseDown);
    EXPECT_EQ(down->where, (Point{21, 11}));
    EXPECT_EQ(down->modifiers, shiftKey);
    EXPECT_EQ(up->what, mouseUp);
    EXPECT_EQ(up->modifiers, shiftKey | btnState);
    EXPECT_TRUE(Input::isEmpty());
    EXPECT_EQ(Input::mouseLocation(), (Point{23, 13}));
}

TEST_F(InputTest, KeysAreMarkedAndOnlyPressesAreEvents)
{
    Input::key('a', 0x24, 0, true);
    Input::key('a', 0x24, 0, true, true);
    Input::key('b', 300, cmdKey, true);
    Input::key('b', -1, cmdKey, true);
    EXPECT_TRUE(Input::keysDown()[0x24]);
    Input::key('a', 0x24, 0, false);
    EXPECT_FALSE(Input::keysDown()[0x24]);
    EXPECT_EQ(Input::take(everyEvent, true)->message, 0x2461);
    EXPECT_EQ(Input::take(everyEvent, true)->what, autoKey);
    EXPECT_EQ(Input::take(everyEvent, true)->modifiers, cmdKey | btnState);
    EXPECT_EQ(count(), 1);
}

TEST_F(InputTest, EventsOfNoKnownKindStayInTheQueue)
{
    for (const Int kind : {-1, 64, 1000})
        Input::post({kind, 0, 0, {}, 0});
    Input::post({63, 0, 0, {}, 0});
    EXPECT_FALSE(Input::take(everyEvent, true));
    EXPECT_EQ(Input::take(-1, true)->what, 63);
    Input::flush(-1);
    EXPECT_FALSE(Input::isEmpty());
}

TEST_F(InputTest, AQuitRequestIsTheFlagAndCommandQ)
{
    Input::requestQuit();
    EXPECT_TRUE(Input::quitRequested);
    const auto key = Input::take(everyEvent, true);
    ASSERT_TRUE(key);
    EXPECT_EQ(key->what, keyDown);
    EXPECT_EQ(key->message, 0x0C71);
    EXPECT_EQ(key->modifiers, cmdKey | btnState);
    EXPECT_TRUE(Input::keysDown()[12]);
    startRunAfresh();
    EXPECT_FALSE(Input::quitRequested) << "another run begins without it";
}

TEST_F(InputTest, AWaitEndsEarlyForAnEventAndForDeferredWork)
{
    const auto waited = [this](Int ticks) {
        const Nanos start = clock.time();
        Input::wait(ticks);
        return clock.time() - start;
    };
    clock.yielded();
    EXPECT_NEAR(static_cast<double>(waited(60)), 1e9, 1e5);
    EXPECT_LT(waited(-3), 100'000);
    clock.after(kSecond / 10, [] { Input::key('x', 7, 0, true); });
    EXPECT_NEAR(static_cast<double>(waited(60)), 1e8, 1e5);
    EXPECT_LT(waited(60), 100'000) << "an event waits";
    Input::flush(everyEvent);
    clock.yielded();
    clock.after(kSecond / 10, [] { Input::mouse(1, 1, false); });
    EXPECT_NEAR(static_cast<double>(waited(60)), 1e9, 1e5) << "a move wakes nobody";
    clock.after(kSecond / 10, [] { GameThread::perform([] {}); });
    EXPECT_NEAR(static_cast<double>(waited(60)), 1e8, 1e5);
    EXPECT_LT(waited(60), 100'000) << "work waits";
}
