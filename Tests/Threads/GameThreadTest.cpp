#include "MacToolbox/App/App.h"
#include "MacToolbox/App/Governor.h"
#include "MacToolbox/App/ScriptHost.h"
#include "MacToolbox/Base/HeadlessPlatform.h"
#include "MacToolbox/Managers/Events.h"
#include "Tests/Harness/ChildProcess.h"
#include "Tests/Harness/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <thread>
#include <vector>

using namespace MacToolbox;
using namespace Harness;

namespace {

constexpr double kPatience = 60; // seconds; far more than any of these needs

void idle()
{
    for (EventRecord event;;)
        WaitNextEvent(everyEvent, event, 60, nullptr);
}

void poll()
{
    for (EventRecord event;;)
        GetNextEvent(everyEvent, event);
}

/// In a child: runs a game headless with the real clock, with or without the governor.
void runGame(const std::function<void()>& game, bool governed = true)
{
    setenv("WR_HEADLESS", "", 1);
    if (governed)
        Governor::installAtStart();
    WRApp::run("Test", game);
}

void sleepMilliseconds(Int n) { std::this_thread::sleep_for(std::chrono::milliseconds(n)); }

double secondsOfProcessor()
{
    timespec spent{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &spent);
    return static_cast<double>(spent.tv_sec) + static_cast<double>(spent.tv_nsec) / 1e9;
}

} // namespace

TEST(GameThread, NoWakeUpIsLost)
{
    // A wait is far longer than the whole test, so a lost wake-up stops it for good.
    ChildProcess child([] {
        runGame([] {
            std::thread([] {
                std::vector<double> milliseconds;
                std::atomic<Int> ran{0};
                for (Int i = 0; i < 10'000; ++i) {
                    const Nanos start = Clock::current().now();
                    GameThread::perform([&] { ran = i + 1; });
                    while (ran != i + 1)
                        std::this_thread::yield();
                    milliseconds.push_back(static_cast<double>(Clock::current().now() - start) / 1e6);
                }
                std::ranges::nth_element(milliseconds, milliseconds.begin() + 5'000);
                std::printf("%d\n", milliseconds[5'000] < 2);
                Platform::current().post([] { Platform::current().exitProcess(0); });
            }).detach();
            for (;;) {
                GameThread::service();
                Input::wait(60 * 3600);
            }
        });
    });
    EXPECT_EQ(child.wait(kPatience), 0);
    EXPECT_EQ(child.output(), "1\n") << "half of the calls take more than 2 ms";
}

TEST(GameThread, AKeyEndsTheRestOfTheGovernor)
{
    ChildProcess child([] {
        runGame([] {
            static std::atomic<Int> seen{0};
            std::thread([] {
                std::vector<double> milliseconds;
                for (Int i = 1; i <= 200; ++i) {
                    sleepMilliseconds(20 + i % 17); // anywhere in a tick
                    const Nanos start = Clock::current().now();
                    Input::key('a', 0, 0, true);
                    while (seen != i)
                        std::this_thread::yield();
                    milliseconds.push_back(static_cast<double>(Clock::current().now() - start) / 1e6);
                }
                std::ranges::nth_element(milliseconds, milliseconds.begin() + 100);
                std::printf("%d\n", milliseconds[100] < 4);
                Platform::current().post([] { Platform::current().exitProcess(0); });
            }).detach();
            for (EventRecord event;;)
                if (GetNextEvent(keyDownMask, event))
                    ++seen;
        });
    });
    EXPECT_EQ(child.wait(kPatience), 0);
    EXPECT_EQ(child.output(), "1\n") << "half of the keys wait for the end of their tick";
}

TEST(GameThread, TheProcessEndsFromEveryState)
{
    const struct {
        const char* name;
        std::function<void()> game;
    } states[] = {
        {"idle", idle},
        {"polling", poll},
        {"delay",
            [] {
                Int last;
                for (;;)
                    Delay(100'000, last);
            }},
        {"held button",
            [] {
                Input::mouse(1, 1, true);
                for (;;)
                    StillDown();
            }},
        {"mouse loop",
            [] {
                Point p;
                for (;;)
                    GetMouse(p);
            }},
        {"computing",
            [] {
                for (;;)
                    std::this_thread::yield();
            }},
        {"waiting for a panel", [] { GameThread::waitForMain<Int>([](std::function<void(Int)>) {}); }},
        {"at its end", [] { ExitToShell(); }},
        {"returned", [] {}},
    };
    for (const auto& state : states)
        for (Int i = 0; i < 5; ++i) {
            ChildProcess child([&] {
                runGame([&] {
                    std::thread([i] {
                        sleepMilliseconds(5 * i);
                        Platform::current().post([] { Platform::current().exitProcess(0); });
                    }).detach();
                    state.game();
                });
            });
            EXPECT_EQ(child.wait(kPatience), 0) << state.name;
        }
}

TEST(GameThread, TheGameHasItsNameAndALargeStack)
{
    ChildProcess child([] {
        runGame([] {
            char name[16] = "";
            pthread_getname_np(pthread_self(), name, sizeof name);
            volatile char deep[48 << 20]; // more than a plain thread has
            for (std::size_t i = 0; i < sizeof deep; i += 4096)
                deep[i] = 1;
            std::printf("%s %d %d\n", name, GameThread::isGameThread(), Platform::current().isMainThread());
            ExitToShell(3);
        });
    });
    EXPECT_EQ(child.wait(kPatience), 3);
    EXPECT_EQ(child.output(), "The Wainroad 1 0\n");
}

TEST(GameThread, TheGameWaitsForTheMainThread)
{
    ChildProcess child([] {
        runGame([] {
            const Int answer = GameThread::waitForMain<Int>([](std::function<void(Int)> done) {
                std::printf("%d ", Platform::current().isMainThread());
                std::thread([done] {
                    sleepMilliseconds(20);
                    done(7);
                }).detach();
            });
            std::printf("%d %d\n", static_cast<int>(answer),
                GameThread::onMain([] { return Platform::current().isMainThread(); }));
            ExitToShell();
        });
    });
    EXPECT_EQ(child.wait(kPatience), 0);
    EXPECT_EQ(child.output(), "1 7 1\n");
}

TEST(GameThread, AQuitRequestEndsADelay)
{
    ChildProcess child([] {
        runGame([] {
            std::thread([] {
                sleepMilliseconds(30);
                WRApp::requestQuit();
            }).detach();
            Int last;
            Delay(60 * 3600, last);
            EventRecord event;
            ExitToShell(GetNextEvent(keyDownMask, event) && event.message == 0x0C71 ? 0 : 5);
        });
    });
    EXPECT_EQ(child.wait(kPatience), 0);
}

TEST(GameThread, AGovernedGameRestsAndKeepsItsTicks)
{
    ChildProcess child([] {
        runGame([] {
            Int tasks = 0;
            const auto task = std::make_shared<VBLTask>();
            task->vblCount = 1;
            task->vblAddr = [&](VBLTask& t) { t.vblCount = 1, ++tasks; };
            VInstall(task);
            EventRecord event;
            const Int start = TickCount();
            const double spent = secondsOfProcessor();
            while (TickCount() < start + 120)
                GetNextEvent(everyEvent, event);
            const double share = (secondsOfProcessor() - spent) / 2;
            std::printf("%d %d\n", share < 0.25, std::abs(tasks - (TickCount() - start)) <= 2);
            ExitToShell();
        });
    });
    EXPECT_EQ(child.wait(kPatience), 0);
    EXPECT_EQ(child.output(), "1 1\n") << "it takes less than a quarter of a core; a task runs once a tick";
}

TEST(Script, ARealScriptPlaysAtItsPaceAndItsQuitEndsTheProcess)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("a.script", "type ab\nwait 0.2\nkey cmd-q\nfrown\nquit\ntype c\n");
    ChildProcess child([&] {
        setenv("WR_SCRIPT", path.c_str(), 1);
        runGame([begun = Clock::current().now()] {
            for (EventRecord event;;) {
                if (!GetNextEvent(keyDownMask, event))
                    continue;
                std::printf("%c%d ", static_cast<char>(event.message & charCodeMask),
                    Clock::current().now() - begun >= ScriptHost::kFirstWait);
            }
        });
    });
    EXPECT_EQ(child.wait(kPatience), 0);
    EXPECT_EQ(child.output(), "a1 b1 q1 script: unknown command frown\n");
}

TEST(Script, AScriptWithoutAQuitLeavesTheProcessRunning)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("a.script", "# nothing\n\n");
    ChildProcess child([&] {
        setenv("WR_SCRIPT", path.c_str(), 1);
        runGame(idle);
    });
    EXPECT_EQ(child.wait(1), -1);
}

TEST(Shell, WithoutAModuleOneLineSaysWhatIsMissing)
{
    ChildProcess child([] {
        unsetenv("WR_HEADLESS");
        WRApp::run("Test", idle);
    });
    EXPECT_EQ(child.wait(kPatience), 1);
    const std::string output = child.output();
    EXPECT_NE(output.find("wainroad-desktop.so"), std::string::npos);
    EXPECT_EQ(std::ranges::count(output, '\n'), 1);
}
