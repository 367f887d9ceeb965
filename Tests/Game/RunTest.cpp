// The whole game under the manual clock, on the real resource files.

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Host/Misc.h"
#include "Tests/Harness/GameRun.h"
#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Game/Wainroad.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <utility>
#include <vector>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

bool atTitle() { return gRootView && !gRootView->children.empty(); }

/// The pictures of a run that plays `script`, one every few ticks.
std::vector<Bytes> pictures(const std::string& script, Int count, Int every)
{
    GameRun run(Wainroad_main, {script, {}, {}});
    std::vector<Bytes> all;
    for (Int i = 0; i < count && run.advance(every); ++i)
        all.push_back(run.frame()->pixels);
    return all;
}

} // namespace

TEST(Run, TheGameComesUpAndCommandQEndsIt)
{
    GameRun run(Wainroad_main);
    ASSERT_TRUE(run.runUntil(atTitle));
    run.advance(60);
    EXPECT_EQ(run.frame()->width, 512);
    EXPECT_EQ(run.frame()->height, 322);
    EXPECT_EQ(std::filesystem::file_size(run.dataFolder() + "/Wainroad Settings"), 1108U);
    EXPECT_FALSE(run.play("key cmd-q\nwait 5"));
    EXPECT_EQ(run.status(), 0);
}

TEST(Run, TwoRunsInOneProcessShowTheSamePictures)
{
    const std::string script = "wait 4\nclick 60 290\nwait 2\ntype Ann\nkey tab\nwait 1\nkey cmd-q\n";
    const auto first = pictures(script, 40, 13), second = pictures(script, 40, 13);
    EXPECT_GT(first.size(), 10U);
    EXPECT_EQ(first, second);
}

TEST(Run, AQuitRequestEndsTheGameWhereverItIsOnTheWayToTheTitle)
{
    for (Int ticks = 0; ticks < 240; ticks += 17) {
        GameRun run(Wainroad_main);
        run.advance(ticks);
        Input::requestQuit();
        run.advance(120);
        if (run.running()) // asked before the game empties its queue at its start: the key is lost, and a second one
                           // quits
            Input::requestQuit();
        EXPECT_TRUE(run.runToEnd(1200)) << "asked after " << ticks << " ticks";
        EXPECT_EQ(run.status(), 0);
    }
}

TEST(Run, WithoutItsResourceFilesTheGameEndsWithWords)
{
    const TemporaryFolder empty;
    testing::internal::CaptureStderr();
    GameRun run(Wainroad_main, {{}, {}, {empty.path()}});
    EXPECT_TRUE(run.runToEnd(3600));
    EXPECT_EQ(run.status(), 1);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

TEST(Run, TheTitleRestsBetweenTicks)
{
    GameRun run(Wainroad_main);
    ASSERT_TRUE(run.runUntil(atTitle));
    run.advance(120);
    const Int hour = 60 * 60 * 60;
    const auto start = std::chrono::steady_clock::now();
    run.advance(hour / 10);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    EXPECT_TRUE(run.running());
    EXPECT_LT(taken.count(), 60) << "seconds for six minutes of the game";
}
