#include "MacToolbox/Managers/Events.h"

#include "MacToolbox/Base/ManualClock.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"

#include <gtest/gtest.h>

using namespace MacToolbox;

namespace {

/// A run that has just begun, under the manual clock.
class EventsTest : public testing::Test {
protected:
    EventsTest()
    {
        Clock::install(&clock);
        startRunAfresh();
    }
    ~EventsTest() override { Clock::install(nullptr); }

    /// The next event that `mask` admits, taken.
    static EventRecord next(Int mask = everyEvent)
    {
        EventRecord event;
        GetNextEvent(mask, event);
        return event;
    }
    static WindowPtr window(Int left)
    {
        return NewWindow(nullptr, {40, left, 90, left + 50}, {0}, true, plainDBoxProc, nullptr, false, 0);
    }
    /// No update and no activation waits.
    static void settle()
    {
        for (const auto& w : WindowManager::shared().windows)
            w->updateRgn = {};
        WindowManager::shared().pendingActivates.clear();
    }

    ManualClock clock;
};

} // namespace

TEST_F(EventsTest, ActivationComesBeforeInputAndInputBeforeUpdate)
{
    const WindowPtr w = window(10);
    Input::key('a', 0, 0, true);
    EventRecord event = next();
    EXPECT_EQ(event.what, activateEvt);
    EXPECT_EQ(event.window(), w);
    EXPECT_EQ(event.modifiers, activeFlag);
    EXPECT_EQ(next().what, keyDown);
    for (int i = 0; i < 3; ++i) {
        event = next();
        EXPECT_EQ(event.what, updateEvt) << "an update stays until it is begun";
        EXPECT_EQ(event.window(), w);
    }
    BeginUpdate(w);
    EndUpdate(w);
    EXPECT_EQ(next().what, nullEvent);
}

TEST_F(EventsTest, TheMaskHoldsEventsBack)
{
    const WindowPtr w = window(10);
    Input::key('a', 0, 0, true);
    Input::mouse(5, 5, true);
    EXPECT_EQ(next(mDownMask).what, mouseDown);
    EXPECT_EQ(next(mDownMask).what, nullEvent);
    EXPECT_EQ(next(updateMask).what, updateEvt);
    EXPECT_EQ(next(activMask).what, activateEvt);
    EXPECT_EQ(next(keyDownMask).what, keyDown);
}

TEST_F(EventsTest, AWindowKeepsItsTag)
{
    const WindowPtr a = window(10), b = window(100);
    EventRecord first, second, again;
    first.setWindow(b);
    second.setWindow(a);
    again.setWindow(b);
    EXPECT_EQ(first.message, 1);
    EXPECT_EQ(second.message, 2);
    EXPECT_EQ(again.message, 1);
    again.setWindow(nullptr);
    EXPECT_EQ(again.message, 1);
    EXPECT_EQ(EventRecord{}.window(), nullptr);
}

TEST_F(EventsTest, TheFrontOfTwoWindowsIsUpdatedFirstAndTheHiddenNever)
{
    const WindowPtr back = window(10), front = window(100);
    WindowManager::shared().pendingActivates.clear();
    EXPECT_EQ(next().window(), front);
    front->updateRgn = {};
    EXPECT_EQ(next().window(), back);
    HideWindow(front);
    settle();
    front->updateRgn = Region(Rect{0, 0, 9, 9});
    EXPECT_EQ(next().what, nullEvent);
}

TEST_F(EventsTest, EventAvailLeavesTheEvent)
{
    EventRecord event;
    window(10);
    EXPECT_TRUE(EventAvail(everyEvent, event));
    EXPECT_EQ(event.what, activateEvt);
    EXPECT_EQ(next().what, activateEvt);
    Input::menuChoice(1001, 3);
    EXPECT_TRUE(EventAvail(mDownMask, event));
    EXPECT_EQ(MenuSelect({2, 2}), 0) << "a look at the click chooses nothing";
    EXPECT_EQ(next(mDownMask).message, -1);
    EXPECT_EQ(MenuSelect({2, 2}), packMenuChoice(1001, 3));
    EXPECT_EQ(MenuSelect({2, 2}), 0) << "a choice is answered once";
}

TEST_F(EventsTest, AClickWhoseChoiceWasDroppedChoosesNothing)
{
    Input::menuChoice(1001, 3);
    Input::takeMenuChoice(1);
    MenuBar::pendingChoice = packMenuChoice(1, 1);
    EXPECT_EQ(next().message, -1);
    EXPECT_EQ(MenuSelect({2, 2}), 0);
}

TEST_F(EventsTest, ASleepIsCutTo2TicksAndNoneIsNone)
{
    EventRecord event;
    const auto slept = [&](Int sleep) {
        const Nanos start = clock.time();
        EXPECT_FALSE(WaitNextEvent(everyEvent, event, sleep, nullptr));
        return static_cast<double>(clock.time() - start) / 1e6; // ms
    };
    EXPECT_NEAR(slept(65535), 33.6, 0.4);
    EXPECT_LT(slept(0), 0.4);
    EXPECT_LT(slept(-1), 0.4);
    Input::modifiers(shiftKey);
    clock.after(kSecond / 60, [] { Input::mouse(7, 9, true); });
    EXPECT_NEAR(slept(2), 17, 0.5) << "the press ends the sleep, and is for the next call";
    EXPECT_EQ(event.where, (Point{9, 7})) << "but the null event is as fresh as that";
    EXPECT_EQ(event.modifiers, shiftKey);
    EXPECT_EQ(next().what, mouseDown);
}

TEST_F(EventsTest, HooksRunAfterTheServiceAndBeforeTheSearch)
{
    std::string log;
    GameThread::perform([&] { log += "service "; });
    Events::idleHooks().push_back([&] {
        log += "hook";
        Input::key('a', 0, 0, true);
    });
    EXPECT_EQ(next().what, keyDown);
    EXPECT_EQ(log, "service hook");
}

TEST_F(EventsTest, AnOSEventIsInputAloneAndServicesNothing)
{
    EventRecord event;
    window(10);
    Input::post({osEvt, 0, 0, {}, 0});
    GameThread::perform([] { FAIL() << "serviced"; });
    EXPECT_FALSE(OSEventAvail(everyEvent, event));
    EXPECT_EQ(event.what, nullEvent);
    PostEvent(keyDown, 'x');
    EXPECT_TRUE(OSEventAvail(everyEvent, event));
    EXPECT_EQ(event.message, 'x');
    EXPECT_EQ(event.modifiers, 0);
    startRunAfresh(); // the deferred work goes unseen
}

TEST_F(EventsTest, TheButtonIsFollowedUntilItsUpIsQueued)
{
    EXPECT_FALSE(StillDown());
    Input::mouse(1, 1, true);
    EXPECT_TRUE(Button());
    EXPECT_TRUE(StillDown());
    Input::mouse(1, 1, false);
    Input::mouse(1, 1, true);
    EXPECT_TRUE(Button());
    EXPECT_FALSE(StillDown()) << "an up is queued, whatever the button does now";
    EXPECT_FALSE(WaitMouseUp());
    EXPECT_TRUE(WaitMouseUp()) << "the up was taken";
    FlushEvents(everyEvent, 0);
    EXPECT_TRUE(Input::isEmpty());
}

TEST_F(EventsTest, TheMouseIsLocalToThePort)
{
    const WindowPtr w = window(100);
    const PortScope scope(w->port);
    Input::mouse(130, 70, false);
    Point p;
    GetMouse(p);
    EXPECT_EQ(p, (Point{30, 30}));
}

TEST_F(EventsTest, TheKeyMapHasABitForEachKey)
{
    Input::key(0, 36, 0, true);
    Input::key(0, 127, 0, true);
    KeyMap keys;
    GetKeys(keys);
    KeyMap expected{};
    expected[4] = 0x10;
    expected[15] = 0x80;
    EXPECT_EQ(keys, expected);
}
