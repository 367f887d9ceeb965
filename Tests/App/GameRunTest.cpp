#include "Tests/Harness/GameRun.h"

#include "MacToolbox/App/App.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Managers/Events.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace MacToolbox;
using namespace Harness;

namespace {

/// What the little game below shows of itself.
struct Seen {
    Int passes = 0, tasks = 0, keys = 0, clicks = 0, choice = 0, unwound = 0;
    Int pollsInTick = 0, fewestPolls = 1000, lastTick = 0, ticks = 0;
};
RunState<Seen> sSeen;

struct CountsItsEnd {
    ~CountsItsEnd() { ++sSeen->unwound; }
};

void drawKey()
{
    const std::size_t at = 64 * 30 + static_cast<std::size_t>(sSeen->keys);
    Screen::shared().bits.baseAddr->bytes[at] = 0xFF;
    Screen::shared().noteChange(Screen::shared().bits);
}

/// One pass of a main loop that polls without a pause, with two event calls, as the game does.
bool pass()
{
    EventRecord event, peeked;
    ++sSeen->passes;
    const Int tick = TickCount();
    if (tick != sSeen->lastTick) {
        if (sSeen->lastTick > 1)
            sSeen->fewestPolls = std::min(sSeen->fewestPolls, sSeen->pollsInTick);
        sSeen->pollsInTick = 0;
        sSeen->lastTick = tick;
        ++sSeen->ticks;
    }
    ++sSeen->pollsInTick;
    EventAvail(everyEvent, peeked);
    if (!WaitNextEvent(everyEvent, event, 0, nullptr))
        return true;
    if (event.what == keyDown) {
        ++sSeen->keys;
        drawKey();
        return (event.modifiers & cmdKey) == 0 || (event.message & charCodeMask) != 'q';
    }
    if (event.what == mouseDown)
        ++sSeen->clicks;
    return true;
}

void littleGame()
{
    const CountsItsEnd end;
    const auto task = std::make_shared<VBLTask>();
    task->vblCount = 1;
    task->vblAddr = [](VBLTask& t) { t.vblCount = 1, ++sSeen->tasks; };
    VInstall(task);
    while (pass()) { }
    ExitToShell();
}

void littleProgram() { WRApp::run("Little", littleGame); }

} // namespace

TEST(GameRun, AGameRunsFromItsStartToExitToShell)
{
    GameRun run(littleProgram);
    EXPECT_TRUE(run.advance(60));
    EXPECT_TRUE(run.play("type abc\nclick 5 5\nmenu 1 1"));
    EXPECT_EQ(sSeen->keys, 3);
    EXPECT_EQ(sSeen->clicks, 2);
    EXPECT_FALSE(run.play("key cmd-q\nwait 1"));
    EXPECT_EQ(run.status(), 0);
    EXPECT_EQ(sSeen->unwound, 1);
    EXPECT_FALSE(run.advance(10));
}

TEST(GameRun, TheSameRunTwiceIsTheSameToTheNanosecond)
{
    const auto once = [] {
        GameRun run(littleProgram);
        run.play("type hello\nwait 1.7\ntype you\nshot a.png");
        EXPECT_TRUE(std::filesystem::exists(run.outFolder() + "/a.png"));
        return std::tuple(run.frame()->pixels, TickCount(), sSeen->passes, sSeen->tasks, sSeen->keys);
    };
    const auto first = once();
    EXPECT_EQ(first, once());
    EXPECT_EQ(std::get<4>(first), 8);
}

TEST(GameRun, TheGovernorKeepsTheRateOfTicksAndLetsTheGameRest)
{
    GameRun run(littleProgram);
    run.advance(60);
    sSeen->fewestPolls = 1000;
    const Int passes = sSeen->passes, tasks = sSeen->tasks, ticks = sSeen->ticks;
    run.advance(3600);
    EXPECT_NEAR(static_cast<double>(sSeen->tasks - tasks), 3600, 1);
    EXPECT_NEAR(static_cast<double>(sSeen->ticks - ticks), 3600, 1) << "no tick is slept through";
    EXPECT_GE(sSeen->fewestPolls, 3) << "several passes in each tick";
    EXPECT_LE(sSeen->passes - passes, 3600 * 5) << "but not as many as there is time for";
}

TEST(GameRun, InputEndsTheRestAtOnce)
{
    GameRun run(littleProgram);
    run.advance(60);
    const Nanos start = Clock::current().now();
    Input::key('a', 0, 0, true);
    ASSERT_TRUE(run.runUntil([] { return sSeen->keys == 1; }));
    EXPECT_LT(Clock::current().now() - start, 2'000'000) << "nanoseconds of a slow machine";
}

TEST(GameRun, ARunCanBeLeftAnywhereAndUnwinds)
{
    const auto left = [](const std::function<void()>& game, Int ticks) {
        {
            GameRun run([&] {
                WRApp::run("Left", [&] {
                    const CountsItsEnd end;
                    game();
                });
            });
            EXPECT_TRUE(run.advance(ticks));
            sSeen->unwound = 0;
        }
        EXPECT_EQ(sSeen->unwound, 1);
        EXPECT_FALSE(GameThread::isServicing());
    };
    Int last = 0;
    left([&] { Delay(1'000'000, last); }, 100);
    left(
        [] {
            for (;;)
                SystemTask();
        },
        100);
    left(
        [] {
            for (;;)
                StillDown();
        },
        1000);
    left(
        [] {
            GameThread::addHousekeeping([] { const CountsItsEnd inner; });
            for (EventRecord event;;)
                WaitNextEvent(everyEvent, event, 60, nullptr);
        },
        0);
}

TEST(GameRun, EveryEndGivesItsStatus)
{
    const auto status = [](const std::function<void()>& game, const std::string& script = {}) {
        GameRun run([&] { WRApp::run("End", game); }, {script, {}, {}});
        run.runToEnd(36000);
        return run.status();
    };
    const auto idle = [] {
        for (EventRecord event;;)
            WaitNextEvent(everyEvent, event, 60, nullptr);
    };
    EXPECT_EQ(status([] { ExitToShell(); }), 0);
    EXPECT_EQ(status([] { ExitToShell(1); }), 1);
    EXPECT_EQ(status([] {}), 0) << "the game's closure returned";
    EXPECT_EQ(status(idle, "wait 3\nquit"), 0);
    EXPECT_EQ(status(
                  [] {
                      Int last;
                      Delay(1'000'000, last);
                  },
                  "quit"),
        0);
    EXPECT_EQ(status(idle, "wait 3"), std::nullopt) << "a script without a quit ends nothing";
}

TEST(GameRun, TheScriptOfTheEnvironmentStartsAfterHalfASecond)
{
    GameRun run(littleProgram, {"type x", {}, {}});
    EXPECT_TRUE(run.runUntil([] { return sSeen->keys == 1; }));
    EXPECT_NEAR(static_cast<double>(run.ticks()), 30, 1);
    for (const char* bad : {"type x\xC0\xAF", "type \xED\xA0\x80", "type \xF5\x80\x80\x80", "type \xC3"}) {
        GameRun silent(littleProgram, {bad, {}, {}});
        silent.advance(120);
        EXPECT_EQ(sSeen->keys, 0) << "not UTF-8, so no script";
    }
    GameRun missing(littleProgram, {{}, {{"WR_SCRIPT", "/nowhere/at/all"}}, {}});
    EXPECT_TRUE(missing.advance(120));
    GameRun folder(littleProgram, {{}, {{"WR_SCRIPT", "/"}}, {}});
    EXPECT_TRUE(folder.advance(120));
}

TEST(GameRun, TheGameMayWaitForTheMainThread)
{
    Int answer = 0;
    GameRun run([&] {
        WRApp::run("Wait", [&] {
            answer = GameThread::waitForMain<Int>([](std::function<void(Int)> done) {
                Clock::current().after(kSecond, [done] {
                    done(7);
                    done(8); // a second answer is not heard
                });
            });
            answer += GameThread::onMain([] { return Int(10); });
        });
    });
    EXPECT_TRUE(run.runToEnd());
    EXPECT_EQ(answer, 17);
}
