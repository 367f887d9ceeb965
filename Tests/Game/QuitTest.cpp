// Leaving a journey: by every way out, from every screen of the road.

#include "MacToolbox/Base/Strings.h"
#include "Tests/Harness/GameRun.h"
#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Game/GameMenu.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Store.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

bool atTitle() { return FindPanel(TitlePanel) != nullptr; }

/// From the title to the first morning on the road.
bool setOut(GameRun& run)
{
    run.advance(30);
    run.play("click 45 285\nwait 1\nkey return\nwait 1\ntype Ann\nclick 443 291\nwait 1\n"
             "type 4\nkey tab\nkey tab\nkey tab\nkey tab\nkey tab\nkey tab\ntype 400\nclick 442 273\nwait 1\n"
             "click 194 251\nwait 3");
    return gPlaying == 2 && FindPanel(LeftButtonsPanel);
}

std::string middleOf(const ViewProc& panel, Int item)
{
    View* const view = FindPanel(panel);
    const Rect r = view ? GetItem(*view, item)->r : Rect{};
    return "click " + std::to_string((r.left + r.right) / 2) + ' ' + std::to_string((r.top + r.bottom) / 2) + '\n';
}

} // namespace

TEST(Quit, TheQuitPanelEndsTheGameByEachOfItsWays)
{
    for (Int way = 0; way < 3; ++way) {
        SCOPED_TRACE(way);
        GameRun run(Wainroad_main);
        ASSERT_TRUE(run.runUntil(atTitle));
        ASSERT_TRUE(setOut(run));
        ASSERT_TRUE(run.play("key cmd-q\nwait 1.5"));
        ASSERT_TRUE(FindPanel(QuitPanel));
        const std::string leave = middleOf(QuitPanel, 3);
        run.play(way == 0 ? leave : way == 1 ? "key cmd-.\n" : "file Kept\nkey return\nwait 1");
        EXPECT_TRUE(run.runToEnd(300));
        EXPECT_EQ(run.status(), 0);
        EXPECT_EQ(gRootView, nullptr);
        EXPECT_EQ(std::filesystem::exists(run.dataFolder() + "/Kept"), way == 2);
    }
}

TEST(Quit, AWishToQuitCanBeTakenBack)
{
    GameRun run(Wainroad_main);
    ASSERT_TRUE(run.runUntil(atTitle));
    ASSERT_TRUE(setOut(run));
    ASSERT_TRUE(run.play("key cmd-q\nwait 1.5\n" + middleOf(LeftButtonsPanel, 2) + "wait 1"));
    EXPECT_EQ(FindPanel(QuitPanel), nullptr);
    ASSERT_TRUE(run.play("key cmd-.\nkey return\nwait 1")) << "the keys of the panel went with it";
    ASSERT_TRUE(run.play(middleOf(ContinuePanel, 1) + "wait 12"));
    EXPECT_GT(gState.miles, 0);
    ASSERT_TRUE(run.play("key cmd-q\nwait 1.5\nkey return\nwait 1"));
    EXPECT_TRUE(FindPanel(OnlyInTimeOutPanel)) << "no saving on the move";
    EXPECT_TRUE(run.play("key return\nwait 1"));
    EXPECT_EQ(FindPanel(OnlyInTimeOutPanel), nullptr);
}

TEST(Quit, TheStoreIsLeftFirst)
{
    GameRun run(Wainroad_main);
    ASSERT_TRUE(run.runUntil(atTitle));
    ASSERT_TRUE(setOut(run));
    ASSERT_TRUE(run.play(middleOf(LeftButtonsPanel, 6) + "wait 3"));
    ASSERT_TRUE(FindPanel(StorePanel));
    ASSERT_NE(gTrain.wagon[0].flags & kFlagInStore, 0);
    ASSERT_TRUE(run.play("key cmd-q\nwait 3"));
    EXPECT_EQ(FindPanel(StorePanel), nullptr);
    EXPECT_TRUE(FindPanel(QuitPanel));
    EXPECT_EQ(gTrain.wagon[0].flags & kFlagInStore, 0);
}

TEST(Quit, FromAnyScreenOfTheRoad)
{
    struct Way {
        const ViewProc* column;
        Int item;
    };
    for (const Way& way :
        {Way{&LeftButtonsPanel, 3}, {&LeftButtonsPanel, 4}, {&LeftButtonsPanel, 5}, {&RightButtonsPanel, 2},
            {&RightButtonsPanel, 3}, {&RightButtonsPanel, 4}, {&RightButtonsPanel, 5}, {&RightButtonsPanel, 6}}) {
        SCOPED_TRACE((way.column == &LeftButtonsPanel ? "left " : "right ") + std::to_string(way.item));
        GameRun run(Wainroad_main);
        ASSERT_TRUE(run.runUntil(atTitle));
        ASSERT_TRUE(setOut(run));
        ASSERT_TRUE(run.play(middleOf(*way.column, way.item) + "wait 2\nkey cmd-q\nwait 1.5"));
        ASSERT_TRUE(FindPanel(QuitPanel));
        run.play("key cmd-.\nwait 1");
        EXPECT_TRUE(run.runToEnd(300));
        EXPECT_EQ(run.status(), 0);
    }
}

TEST(Quit, AJourneyLeftForTheTitleLeavesNothingBehind)
{
    GameRun run(Wainroad_main);
    ASSERT_TRUE(run.runUntil(atTitle));
    ASSERT_TRUE(setOut(run));
    ASSERT_TRUE(run.play(middleOf(ContinuePanel, 1) + "wait 12"));
    EXPECT_GT(gState.miles, 0);
    run.choose(kFileMenu, kFileToTitle);
    ASSERT_TRUE(run.play("wait 1\nkey cmd-.\nwait 2"));
    EXPECT_TRUE(atTitle());
    EXPECT_EQ(gRootView->children.size(), 1U) << "the title alone";
    EXPECT_EQ(gPlaying, 0);
    ASSERT_TRUE(setOut(run));
    EXPECT_EQ(gState.miles, 0);
    EXPECT_EQ(gState.wagon[0].supply[6], 400);
}
