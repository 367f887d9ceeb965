// The rivers: how a crossing ends, what it costs, and the panels from the choice to the report.

#include "Wainroad/Screens/River.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/Player/PanelPlayer.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Screens/Arrival.h"
#include "Wainroad/Screens/Crossing.h"
#include "Wainroad/Screens/Losses.h"
#include "Wainroad/Screens/Mourning.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

constexpr Int kDraws = 20000;

/// A river in its state of today, with one wagon of five at it.
void standAt(Int landmark, Int halfFeet, Int rain)
{
    gMySlot = 0;
    gState = GameState{};
    gState.wagons = gState.slots = gState.startWagons = 1;
    gState.order[0] = 0;
    gState.landmark = landmark;
    gState.riverDepth = halfFeet;
    gState.rain = rain;
    Wagon& wagon = gState.wagon[0];
    wagon.people = wagon.startPeople = 5;
    wagon.illness.fill(kWell);
    wagon.supply = {9, 10, 400, 3, 3, 3, 1000};
}

void cross(Int method)
{
    gCrossMethod = method;
    DecideCrossing(method >= kFerry ? 7 : 0);
}

/// Expects that what holds in `share` of the draws in a hundred does so, give or take four standard deviations.
void expectShare(const std::string& what, double share, const std::function<bool()>& holds)
{
    Int count = 0;
    for (Int i = 0; i < kDraws; ++i)
        count += holds();
    const double p = share / 100;
    EXPECT_NEAR(static_cast<double>(count) / kDraws, p, 4 * std::sqrt(p * (1 - p) / kDraws) + 1e-9) << what;
}

} // namespace

TEST(RiverRules, WithoutChanceTheDepthDecides)
{
    const struct {
        const char* name;
        Int landmark, method, depth, rain, outcome, result, methodAfter;
    } kCases[] = {
        {"a low ford", 0, kFord, 2, 900, 0, kCrossedWell, kFord},
        {"a ford to the boards", 8, kFord, 5, 0, 0, kCrossWet, kFord},
        {"a deep ford", 0, kFord, 6, 0, 1, kCrossLosses1, kFord},
        {"a float on low water", 8, kFloat, 4, 900, 0, kCrossedWell, kFloat},
        {"a ferry on low water", 8, kFerry, 4, 900, 0, kCrossedWell, kFerry},
        {"a ferry in a slow river", 0, kFerry, 9, 299, 0, kCrossedWell, kFerry},
        {"a guide through low water fords", 0, kGuide, 4, 0, 0, kCrossedWell, kFord},
        {"a guide through a river without a current", 11, kGuide, 5, 92, 0, kCrossedWell, kFloat},
        {"a float without a current", 11, kFloat, 9, 99, 0, kCrossedWell, kFloat},
    };
    for (const auto& one : kCases) {
        SCOPED_TRACE(one.name);
        for (Int i = 0; i < 500; ++i) {
            standAt(one.landmark, one.depth, one.rain);
            cross(one.method);
            ASSERT_EQ(gCrossOutcome, one.outcome);
            ASSERT_EQ(gCrossResult, one.result);
            ASSERT_EQ(gCrossMethod, one.methodAfter);
        }
    }
}

TEST(RiverRules, AccidentsComeAsOftenAsTheRiverAndTheWayHaveIt)
{
    qd.randSeed = 7;
    const struct {
        const char* name;
        Int landmark, method, depth, rain;
        double mud, accidents; // in a hundred
    } kCases[] = {
        {"ford at the second river", 1, kFord, 4, 0, 40, 0},
        {"ford at the third river", 8, kFord, 4, 0, 0, 16},
        {"ford at the last river", 11, kFord, 4, 0, 0, 16},
        {"float at the second river, no rain", 1, kFloat, 5, 0, 0, 10},
        {"float at the third river in the rain", 8, kFloat, 6, 500, 0, 50},
        {"ferry below the strength", 8, kFerry, 6, 99, 0, 0},
        {"ferry at six", 8, kFerry, 6, 100, 0, 5},
        {"ferry at ten", 8, kFerry, 6, 500, 0, 5},
        {"ferry at eleven", 8, kFerry, 6, 600, 0, 10},
        {"guide afloat", 11, kGuide, 5, 600, 0, 6},
        {"guide at the ford of the last river", 11, kGuide, 4, 0, 0, 3.2},
        {"guide at the ford of the second river", 1, kGuide, 4, 0, 8, 0},
    };
    for (const auto& one : kCases) {
        standAt(one.landmark, one.depth, one.rain);
        expectShare(std::string(one.name) + ", mud", one.mud, [&] {
            cross(one.method);
            return gCrossResult == kCrossMud;
        });
        expectShare(std::string(one.name) + ", accidents", one.accidents, [&] {
            cross(one.method);
            EXPECT_EQ(gCrossOutcome != 0, gCrossResult == kCrossLosses1 || gCrossResult == kCrossLosses2);
            return gCrossOutcome == 2;
        });
    }
}

TEST(RiverRules, LossesFitTheWayAndWhatTheWagonHas)
{
    qd.randSeed = 7;
    const auto lose = [](Int method) {
        gCrossMethod = method;
        gCrossLoss = {};
        ComputeCrossingLosses();
        for (std::size_t slot = 0; slot < kSupplyCount; ++slot) {
            EXPECT_GE(gCrossLoss.supplies[slot], 0);
            EXPECT_LE(gCrossLoss.supplies[slot], gState.wagon[0].supply[slot]);
        }
        return gCrossLoss;
    };
    // A loss that strikes takes 0 to all of it, so that of 1000 pounds one in 1001 takes none.
    const auto food = [](double percent) { return percent * 1000 / 1001; };

    standAt(0, 6, 0);
    expectShare("deep ford: food", food(30), [&] { return lose(kFord).supplies[kFood] > 0; });
    expectShare("deep ford: no pair of five", 100 * std::pow(0.8, 5), [&] { return lose(kFord).supplies[kOxen] == 0; });
    expectShare("deep ford: a member", 5, [&] { return lose(kFord).drowned[3] != 0; });
    expectShare("deep ford: every pair of five, and no ox that is not there", 100 * std::pow(0.2, 5),
        [&] { return lose(kFord).supplies[kOxen] == 9; });
    standAt(8, 4, 0);
    expectShare("accident at a low ford: no ox", 0, [&] { return lose(kFord).supplies[kOxen] > 0; });
    expectShare("accident at a low ford: food", food(24.5), [&] { return lose(kFord).supplies[kFood] > 0; });
    standAt(8, 6, 0);
    expectShare("ferry: food", food(80), [&] { return lose(kFerry).supplies[kFood] > 0; });
    expectShare("ferry: a member", 20, [&] { return lose(kFerry).drowned[1] != 0; });
    expectShare("float in low water: a member", 0, [&] { return lose(kFloat).drowned[1] != 0; });
    standAt(8, 12, 0);
    expectShare("float in high water: food", food(3), [&] { return lose(kFloat).supplies[kFood] > 0; });
    expectShare("float in high water: a member", 8, [&] { return lose(kFloat).drowned[4] != 0; });
}

TEST(RiverRules, TheLeaderDrownsOnlyAsTheLast)
{
    qd.randSeed = 7;
    standAt(0, 9, 0);
    gState.wagon[0].illness[2] = kDead;
    gState.wagon[0].people = 4;
    Int leader = 0;
    for (Int i = 0; i < kDraws; ++i) {
        gCrossLoss = {};
        Drown(60);
        EXPECT_EQ(gCrossLoss.drowned[2], 0) << "who is dead does not drown";
        if (gCrossLoss.drowned[0] == 0)
            continue;
        ++leader;
        ASSERT_TRUE(gCrossLoss.drowned[1] != 0 && gCrossLoss.drowned[3] != 0 && gCrossLoss.drowned[4] != 0);
    }
    EXPECT_GT(leader, 0);
    gState.wagon[0].startPeople = gState.wagon[0].people = 1;
    expectShare("alone", 60, [] {
        gCrossLoss = {};
        Drown(60);
        return gCrossLoss.drowned[0] != 0;
    });
}

namespace {

/// A journey that has come to a river.
class AtTheRiver : public testing::Test {
protected:
    void comeTo(Int landmark, Int halfFeet)
    {
        ASSERT_TRUE(player.setOut("Ann"));
        gTrain.landmark = landmark;
        gTrain.toNext = 0;
        gTrain.riverDepth = halfFeet;
        gTrain.riverWidth = 40;
        gTrain.rain = 0;
        run.advance(120);
        ASSERT_TRUE(player.waitFor(ContinuePanel));
        player.click(ContinuePanel, 1);
        ASSERT_TRUE(player.waitFor(RiverPanel, 120));
    }
    bool offers(Int item) const { return GetItem(*FindPanel(RiverPanel), item)->disabled == 0; }
    Int menuItemsOn() const
    {
        Int on = 0;
        for (const Int item : {2, 4, 6, 7})
            on += GetMHandle(1001)->item(item)->enabled;
        return on;
    }
    const Wagon& wagon() const { return gState.wagon[0]; }

    GameRun run{Wainroad_main};
    PanelPlayer player{run};
};

} // namespace

TEST_F(AtTheRiver, EachRiverOffersItsWays)
{
    const struct {
        Int landmark;
        bool ferry, guide;
    } kRivers[] = {{0, true, false}, {1, false, false}, {8, true, false}, {11, false, true}};
    comeTo(0, 4);
    for (const auto& river : kRivers) {
        SCOPED_TRACE(river.landmark);
        gTrain.landmark = river.landmark;
        run.advance(120);
        player.click(RiverPanel, 5);
        ASSERT_TRUE(player.waitFor(RiverInfoPanel, 60));
        player.click(RiverInfoPanel, 1);
        ASSERT_TRUE(player.waitFor(RiverPanel, 60));
        EXPECT_TRUE(offers(1) && offers(2));
        EXPECT_EQ(offers(3), river.ferry);
        EXPECT_EQ(offers(4), river.guide);
    }
}

TEST_F(AtTheRiver, RefusalsLeadBackToTheChoiceAndCostNothing)
{
    comeTo(0, 2);
    const auto refuses = [&](Int item, const ViewProc& with) {
        player.click(RiverPanel, item);
        EXPECT_TRUE(player.waitFor(with, 60)) << item;
        player.key("return");
        EXPECT_TRUE(player.waitFor(RiverPanel, 60)) << item;
    };
    const Int money = wagon().money;
    refuses(2, TooShallowPanel);
    refuses(3, NoFerryNeededPanel);
    gTrain.riverDepth = 5;
    gTrain.wagon[0].money = 499;
    run.advance(120);
    refuses(3, NoFerryMoneyPanel);
    EXPECT_EQ(wagon().money, 499);
    gTrain.wagon[0].money = money;
    gTrain.wagon[0].supply[kClothes] = 2;
    gTrain.landmark = 11;
    run.advance(120);
    refuses(5, RiverInfoPanel); // and shows the guide
    refuses(4, NoClothesPanel);
    EXPECT_EQ(wagon().supply[kClothes], 2);
    EXPECT_EQ(wagon().money, money);
}

TEST_F(AtTheRiver, AFerryIsPaidCrossesAndReportsForThreeSeconds)
{
    comeTo(0, 6);
    const Int money = wagon().money;
    ASSERT_EQ(menuItemsOn(), 4);
    player.click(RiverPanel, 3);
    ASSERT_TRUE(player.waitFor(CrossingPanel, 60));
    EXPECT_EQ(menuItemsOn(), 0);
    const Int begun = run.ticks();
    ASSERT_TRUE(player.waitFor(CrossingResultPanel, 600));
    EXPECT_GE(run.ticks() - begun, 100); // the landing is over before the scene is
    EXPECT_EQ(menuItemsOn(), 4);
    EXPECT_EQ(wagon().money, money - 500);
    EXPECT_EQ(gState.landmark, 1);
    const Int reported = run.ticks();
    ASSERT_TRUE(run.runUntil([] { return !FindPanel(CrossingResultPanel); }, 400));
    EXPECT_NEAR(static_cast<double>(run.ticks() - reported), 180, 3);
    EXPECT_FALSE(gCrossing);
}

TEST_F(AtTheRiver, AGuideTakesThreeSetsOfClothingAndAClickEndsTheReport)
{
    comeTo(11, 5);
    const Int clothes = wagon().supply[kClothes];
    player.click(RiverPanel, 4);
    ASSERT_TRUE(player.waitFor(CrossingResultPanel, 600));
    EXPECT_EQ(wagon().supply[kClothes], clothes - 3);
    player.click(CrossingResultPanel, 1);
    EXPECT_TRUE(run.runUntil([] { return !FindPanel(CrossingResultPanel); }, 6));
}

TEST_F(AtTheRiver, MourningWaitsForTheReport)
{
    comeTo(0, 6);
    player.click(RiverPanel, 1); // always an accident
    ASSERT_TRUE(player.waitFor(CrossingPanel, 60));
    EXPECT_EQ(gCrossOutcome, 1);
    run.advance(30);
    gMourning = true; // as for somebody who dies of an illness in these hours
    ASSERT_TRUE(player.waitFor(CrossingResultPanel, 600));
    run.advance(30);
    EXPECT_FALSE(FindPanel(MourningPanel));
    gCrossLoss = {};
    gCrossLoss.supplies[kFood] = 10;
    gCrossLoss.drowned[1] = 1;
    const Int food = wagon().supply[kFood];
    player.click(CrossingResultPanel, 1);
    ASSERT_TRUE(player.waitFor(MourningPanel, 120));
    EXPECT_EQ(gTrain.mode & kModeMoving, 0);
    run.advance(120);
    EXPECT_EQ(wagon().people, 4);
    EXPECT_EQ(wagon().illness[1], I(kDead));
    EXPECT_EQ(wagon().supply[kFood], food - 10);
}

TEST_F(AtTheRiver, AWholePartyThatDrownsEndsTheJourney)
{
    comeTo(0, 6);
    player.click(RiverPanel, 1);
    ASSERT_TRUE(player.waitFor(CrossingResultPanel, 600));
    gCrossLoss.drowned.fill(1);
    player.click(CrossingResultPanel, 1);
    EXPECT_TRUE(player.waitFor(GameOverPanel, 240));
}
