// The travel screen and what hangs on its keys, on the real resource files.

#include "Wainroad/Screens/Travel.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Managers/Menus.h"
#include "Tests/Player/PanelPlayer.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Journal/LogView.h"
#include "Wainroad/Screens/Choices.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Guide.h"
#include "Wainroad/Screens/Hunt.h"
#include "Wainroad/Screens/Party.h"
#include "Wainroad/Screens/Rest.h"
#include "Wainroad/Screens/Route.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Screens/Scene.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Talk.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Screens/Trade.h"
#include "Wainroad/Simulation/Model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

constexpr Int kViewKey = 2, kGuideKey = 3, kPartyKey = 4, kRationsKey = 5;           // at the left
constexpr Int kTradeKey = 2, kTalkKey = 3, kRestKey = 4, kPaceKey = 5, kHuntKey = 6; // at the right

/// A journey that stands at its start.
class OnTheRoad : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(player.setOut("Ann")); }

    void setOff()
    {
        ASSERT_TRUE(player.waitFor(ContinuePanel));
        player.click(ContinuePanel, 1);
        ASSERT_TRUE(player.waitFor(TimeOutPanel, 400));
    }
    /// Changes the state of the journey as if it had come so, and lets the view see it.
    template <typename Change> void change(Change&& how)
    {
        how(gTrain);
        run.advance(100);
    }

    GameRun run{Wainroad_main};
    PanelPlayer player{run};
};

} // namespace

TEST_F(OnTheRoad, DaysPassAndTheStatusFollowsTheModel)
{
    setOff();
    const Int food = gState.wagon[0].supply[kFood];
    ASSERT_TRUE(run.runUntil([] { return gState.day >= 4; }, 2400));
    run.advance(60);
    EXPECT_GT(gState.miles, 0);
    EXPECT_LT(gState.wagon[0].supply[kFood], food);
    EXPECT_EQ(gPrev.day, gState.day);
    EXPECT_EQ(gPrev.miles, gState.miles);
    player.click(TimeOutPanel, 1);
    EXPECT_TRUE(player.waitFor(ContinuePanel, 200));
}

TEST_F(OnTheRoad, TheWindowIsToldDateAndPlace)
{
    EXPECT_EQ(run.toldStatus(), "April 1, 1848. Lanthorn");
    setOff();
    ASSERT_TRUE(run.runUntil([] { return gPrev.day == 2; }));
    run.advance(60);
    EXPECT_EQ(run.toldStatus(), "April 2, 1848. To next: 82 mi, the Morrow River");
}

TEST_F(OnTheRoad, RationsAndPaceChangeOnceAndTellWhenTheyAreSo)
{
    player.click(LeftButtonsPanel, kRationsKey);
    ASSERT_TRUE(player.waitFor(RationsPanel));
    player.click(RationsPanel, 1);
    EXPECT_TRUE(player.waitFor(SameRationsPanel, 60));
    player.key("return");
    player.click(LeftButtonsPanel, kRationsKey);
    player.click(RationsPanel, 3);
    run.advance(120);
    EXPECT_EQ(gState.wagon[0].rations, 2);

    player.click(RightButtonsPanel, kPaceKey);
    ASSERT_TRUE(player.waitFor(PacePanel));
    player.click(PacePanel, 4);
    ASSERT_TRUE(player.waitFor(PaceInfoPanel, 60));
    player.key("return");
    ASSERT_TRUE(player.waitFor(PacePanel, 60));
    player.click(PacePanel, 2);
    run.advance(120);
    EXPECT_EQ(gState.pace, 1);
}

TEST_F(OnTheRoad, RestTakesOneDigitFromOneToNine)
{
    for (const char* days : {"0", ""}) {
        player.click(RightButtonsPanel, kRestKey);
        ASSERT_TRUE(player.waitFor(RestPanel));
        player.type(days);
        player.key("return");
        ASSERT_TRUE(player.waitFor(RestRangePanel, 60)) << '"' << days << '"';
        player.key("return");
        ASSERT_TRUE(player.waitFor(RestPanel, 60));
    }
    player.type("2");
    player.key("return");
    EXPECT_TRUE(run.runUntil([] { return gTrain.restDays > 0; }, 200));
    EXPECT_TRUE(player.waitFor(StatusPanel));
}

TEST_F(OnTheRoad, TheFirstKeySwapsPlaceAndRoad)
{
    ASSERT_TRUE(player.waitFor(LandmarkPanel));
    player.click(LeftButtonsPanel, kViewKey);
    EXPECT_TRUE(player.waitFor(TravelPanel, 30));
    run.advance(60);
    EXPECT_TRUE(player.shows(TravelPanel)) << "the place is not offered again by itself";
    player.click(LeftButtonsPanel, kViewKey);
    EXPECT_TRUE(player.waitFor(LandmarkPanel, 30));
}

TEST_F(OnTheRoad, TheFiveKeysOpenTheirPanels)
{
    const struct {
        const ViewProc& column;
        Int key;
        const ViewProc& panel;
    } kKeys[] = {{LeftButtonsPanel, kGuideKey, GuidePanel}, {LeftButtonsPanel, kPartyKey, PartyPanel},
        {RightButtonsPanel, kTradeKey, TradeWantPanel}, {RightButtonsPanel, kTalkKey, TalkPanel},
        {RightButtonsPanel, kHuntKey, NoHuntingHerePanel}};
    for (const auto& key : kKeys) {
        player.click(key.column, key.key);
        EXPECT_TRUE(player.waitFor(key.panel, 60)) << "key " << key.key;
        EXPECT_TRUE(player.shows(LogPanel));
    }
}

TEST_F(OnTheRoad, ContinueAtAForkAsksForTheWayAndIsDeafUntilTheAnswerIsSeen)
{
    change([](GameState& train) {
        train.landmark = 6;
        train.toNext = 0;
        train.miles = 932;
    });
    ASSERT_TRUE(player.waitFor(ContinuePanel));
    player.click(ContinuePanel, 1);
    ASSERT_TRUE(player.waitFor(RoutePanel, 60));
    player.click(RoutePanel, 3);
    EXPECT_TRUE(run.runUntil([] { return gTrain.landmark == 8; }, 200));
    EXPECT_EQ(gTrain.route & 1, 1);
}

TEST_F(OnTheRoad, TheTollIsRefusedTakenOnceAndTakenFromTheWagon)
{
    change([](GameState& train) {
        train.landmark = 15;
        train.toNext = 0;
        train.wagon[0].money = 499;
    });
    player.click(ContinuePanel, 1);
    ASSERT_TRUE(player.waitFor(RoutePanel, 60));
    player.click(RoutePanel, 2);
    ASSERT_TRUE(player.waitFor(NoTollPanel, 60));
    EXPECT_EQ(gTrain.wagon[0].money, 499);
    player.key("return");
    change([](GameState& train) { train.wagon[0].money = 700; });
    player.click(ContinuePanel, 1);
    ASSERT_TRUE(player.waitFor(RoutePanel, 60));
    player.click(RoutePanel, 2);
    player.click(ContinuePanel, 1);
    run.advance(200);
    EXPECT_EQ(gTrain.wagon[0].money, 200);
    EXPECT_EQ(gTrain.landmark, 16);
}

TEST_F(OnTheRoad, LeavingAsksAndLeadsToTheTitle)
{
    run.choose(1001, 6);
    ASSERT_TRUE(player.waitFor(ExitPanel, 120));
    player.key("return"); // save, and the file panel is cancelled
    ASSERT_TRUE(player.waitFor(StatusPanel, 120));
    EXPECT_EQ(gPlaying, 2);
    run.choose(1001, 6);
    ASSERT_TRUE(player.waitFor(ExitPanel, 120));
    player.click(ExitPanel, 3);
    EXPECT_TRUE(player.waitFor(TitlePanel, 120));
    EXPECT_FALSE(FindPanel(LogPanel));
    EXPECT_EQ(gPlaying, 0);
}

TEST_F(OnTheRoad, SavingWhileTheWainRollsIsRefused)
{
    setOff();
    run.choose(1001, 2);
    EXPECT_TRUE(player.waitFor(OnlyInTimeOutPanel, 120));
}

TEST_F(OnTheRoad, ASavedJourneyComesBackAndPlaysOnTheSame)
{
    setOff();
    ASSERT_TRUE(run.runUntil([] { return gState.day == 3; }, 2400));
    player.click(TimeOutPanel, 1);
    ASSERT_TRUE(player.waitFor(ContinuePanel, 200));
    run.advance(120);
    run.play("file one\nmenu 1001 2\nwait 1");
    ASSERT_EQ(std::filesystem::file_size(run.dataFolder() + "/one"), 14438U);
    const GameState saved = gState;

    run.choose(1001, 6);
    ASSERT_TRUE(player.waitFor(ExitPanel, 120));
    player.click(ExitPanel, 3);
    ASSERT_TRUE(player.waitFor(TitlePanel, 120));
    run.play("file one");
    player.click(TitlePanel, 2);
    ASSERT_TRUE(player.waitFor(StatusPanel, 300));
    run.advance(60);
    EXPECT_EQ(gState.wagon[0].supply, saved.wagon[0].supply);
    EXPECT_EQ(gState.wagon[0].money, saved.wagon[0].money);
    EXPECT_EQ(gState.miles, saved.miles);
    EXPECT_EQ(gState.day, saved.day);
    EXPECT_EQ(gMySlot, 0);
    setOff();
    EXPECT_TRUE(run.runUntil([&] { return gState.miles > saved.miles; }, 2400));
}

TEST_F(OnTheRoad, AJourneyOpenedFromTheMenuTakesTheIntroductionAway)
{
    const auto introduction = [] { return GetMHandle(1003)->item(1)->enabled; };
    run.play("file one\nmenu 1001 2\nwait 1");
    run.choose(1001, 6);
    ASSERT_TRUE(player.waitFor(ExitPanel, 120));
    player.click(ExitPanel, 3);
    ASSERT_TRUE(player.waitFor(TitlePanel, 120));
    EXPECT_TRUE(introduction());
    run.play("menu 1001 1\nwait 1"); // no file is chosen
    EXPECT_TRUE(player.shows(TitlePanel));
    EXPECT_TRUE(introduction());
    run.play("file one\nmenu 1001 1\nwait 1");
    ASSERT_TRUE(player.waitFor(StatusPanel, 300));
    EXPECT_FALSE(introduction());
}

TEST_F(OnTheRoad, AWordFromTheLeaderEndsTheJourneyAndTheNamedOneSavesIt)
{
    gMessages[0] = {kMessageExit, 0, gMyID, 0};
    gMessageCount = 1;
    run.play("file one\nwait 1");
    EXPECT_TRUE(player.waitFor(TitlePanel, 120));
    EXPECT_TRUE(std::filesystem::exists(run.dataFolder() + "/one"));
}

TEST_F(OnTheRoad, OfSeveralWagonsInASavedJourneyTheLastOneIsPlayed)
{
    constexpr Int kStateAt = 40, kOrderAt = 0x00A, kSlotsAt = 0x240, kWagonsAt = 0x25C, kMoneyAt = 0x56;
    run.play("file one\nmenu 1001 2\nwait 1");
    {
        std::fstream file(run.dataFolder() + "/one", std::ios::in | std::ios::out | std::ios::binary);
        const auto put = [&](Int at, char byte) { file.seekp(kStateAt + at).put(byte); };
        put(kSlotsAt, 2);
        put(kOrderAt + 1, 3); // the second slot is the fourth wagon
        put(kWagonsAt + 3 * kWagonBytes + kMoneyAt + 3, 77);
    }
    run.choose(1001, 6);
    ASSERT_TRUE(player.waitFor(ExitPanel, 120));
    player.click(ExitPanel, 3);
    ASSERT_TRUE(player.waitFor(TitlePanel, 120));
    run.play("file one");
    player.click(TitlePanel, 2);
    ASSERT_TRUE(player.waitFor(StatusPanel, 300));
    run.advance(100);
    EXPECT_EQ(gMySlot, 1);
    EXPECT_EQ(UsedSlots(gState), 1);
    EXPECT_EQ(WagonOf(gTrain, 1).money, 77);
    EXPECT_EQ(WagonOf(gState, 1).money, 77) << "the view is told of it";
}

TEST_F(OnTheRoad, TheGuideOpensAtThePlaceAndOnTheWayAtTheLastOne)
{
    const auto pageAt = [&](Int landmark, Int toNext, Int route) {
        gState.landmark = landmark;
        gState.toNext = toNext;
        gState.route = route;
        ClosePanel(GuidePanel);
        OpenPanel(GuidePanel);
        run.advance(4);
        return string(ListString(3150, gGuidePage));
    };
    const auto nameOf = [](Int landmark) { return string(ListString(3002, landmark + 2)); };
    for (const Int route : {0, 1, 2, 3})
        for (Int place = -1; place <= 16; ++place) {
            const bool firstSkips = (route & 1) != 0, secondSkips = (route & 2) != 0; // the way that leaves a place out
            if ((place == 7 && firstSkips) || (place == 14 && secondSkips))
                continue;
            const Int last = place == 8 && firstSkips ? 6
                : place == 15 && secondSkips          ? 13
                                                      : std::max<Int>(place - 1, -1);
            const std::string there = pageAt(place, 0, route), onTheWay = pageAt(place, 9, route);
            EXPECT_NE(nameOf(place).find(there), std::string::npos)
                << there << " at " << nameOf(place) << ", route " << route;
            EXPECT_NE(nameOf(last).find(onTheWay), std::string::npos)
                << onTheWay << " after " << nameOf(last) << ", route " << route;
        }
    EXPECT_EQ(GuidePageFor(18, false, 0), 1);
    EXPECT_EQ(GuidePageFor(-1, true, 0), 1);
}
