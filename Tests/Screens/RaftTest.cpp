// The raft run: the outlines, steering, the losses on the copy, the report, and how the run ends.

#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/Player/PanelPlayer.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Screens/Arrival.h"
#include "Wainroad/Screens/RaftScene.h"
#include "Wainroad/Screens/Route.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

/// A journey at the last landing.
class AtTheLanding : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(player.setOut("Ann"));
        gTrain.landmark = 15;
        gTrain.toNext = 0;
        gTrain.rain = 0;
        run.advance(120);
        player.click(ContinuePanel, 1);
        ASSERT_TRUE(player.waitFor(RoutePanel, 240));
    }
    void castOff()
    {
        player.click(RoutePanel, 3);
        ASSERT_TRUE(player.waitFor(RaftPanel, 240));
    }
    /// Straight down the middle, until a rock is hit. @return False if none is.
    bool runAground()
    {
        const Wagon before = gRaftWagon;
        return run.runUntil(
            [&] { return gRaftWagon.supply != before.supply || gRaftWagon.people != before.people; }, 60 * 70);
    }
    /// The picture changes within some ticks.
    bool moves(Int ticks = 12)
    {
        const Frame before = *run.frame();
        run.advance(ticks);
        return run.frame()->pixels != before.pixels;
    }

    GameRun run{Wainroad_main};
    PanelPlayer player{run};
};

/// The columns from which a rock whose top is at `v` hits the raft: the first, and how many.
struct Columns {
    Int first = 0, count = 0;
};
Columns columnsThatHit(Int v)
{
    Columns columns;
    for (Int h = -200; h < 600; ++h) {
        Sprite rock;
        rock.cur.pos = {v, h};
        if (RockHits(rock) && columns.count++ == 0)
            columns.first = h;
    }
    return columns;
}

} // namespace

TEST_F(AtTheLanding, RocksHitWhereTheOutlinesMeet)
{
    castOff();
    run.play("move 190 200"); // over the raft: straight on
    run.advance(6);
    EXPECT_EQ(columnsThatHit(178).count, 0); // just above the raft
    EXPECT_EQ(columnsThatHit(250).count, 0); // gone by
    // The rock's foot is 63 wide, its head 28; the raft's bow 20, its lowest band 52.
    EXPECT_EQ(columnsThatHit(180).count, 63 + 20 - 1);
    EXPECT_EQ(columnsThatHit(240).count, 28 + 52 - 1);
}

TEST_F(AtTheLanding, TheRaftFollowsTheMouseFromBankToBank)
{
    castOff();
    const auto columnAt = [&](const char* mouse) {
        run.play(mouse);
        run.advance(3 * 120); // longer than it takes from bank to bank
        return columnsThatHit(240).first;
    };
    const Int left = columnAt("move 0 200"), right = columnAt("move 411 200");
    EXPECT_EQ(right - left, 340); // 10 to 350
    run.play("move 360 200");     // over it
    const Int before = columnsThatHit(240).first;
    run.advance(60);
    EXPECT_EQ(columnsThatHit(240).first, before);
}

TEST_F(AtTheLanding, ARockStopsTheRunUntilTheReportIsRead)
{
    castOff();
    run.play("move 190 200");
    ASSERT_TRUE(runAground());
    run.advance(12);
    EXPECT_FALSE(moves(60)) << "the report stands";
    run.play("click 200 200");
    run.advance(3);
    EXPECT_TRUE(moves()) << "a click ends it";
    ASSERT_TRUE(runAground());
    run.advance(12);
    const Int stood = run.ticks();
    while (!moves(3) && run.ticks() - stood < 300) { }
    EXPECT_NEAR(static_cast<double>(run.ticks() - stood), 196 - 12, 12) << "it ends by itself";
}

TEST_F(AtTheLanding, TheModelIsToldOnceInTheEnd)
{
    castOff();
    run.play("move 190 200");
    const Wagon before = gState.wagon[0];
    ASSERT_TRUE(runAground());
    run.advance(200);
    EXPECT_EQ(gState.wagon[0].supply, before.supply);
    EXPECT_EQ(gState.wagon[0].people, before.people);
    EXPECT_TRUE(GetMHandle(1001)->item(7)->enabled);
    EXPECT_FALSE(GetMHandle(1001)->item(2)->enabled);
    run.play("move 0 200"); // out of the way of the others
    ASSERT_TRUE(player.waitFor(ArrivingPanel, 60 * 120));
    const Wagon after = gRaftWagon;
    ASSERT_TRUE(player.waitFor(ArrivalPanel, 600));
    EXPECT_EQ(gState.wagon[0].supply, after.supply);
    EXPECT_EQ(gState.wagon[0].people, after.people);
}

TEST_F(AtTheLanding, ADrownedPartyNeverArrives)
{
    castOff();
    run.advance(60);
    gRaftWagon.people = 0;
    gRaftDrowned.fill(true);
    ASSERT_TRUE(run.runUntil([&] { return player.shows(GameOverPanel); }, 400));
    EXPECT_FALSE(FindPanel(RaftPanel));
    EXPECT_FALSE(FindPanel(ArrivingPanel));
    player.click(GameOverPanel, 1);
    run.advance(120);
    EXPECT_FALSE(FindPanel(ArrivalPanel));
}

TEST_F(AtTheLanding, AskedInMidRunToLeaveTheGameItAsksBelowTheRiver)
{
    castOff();
    run.advance(60);
    run.choose(1001, 7); // where no key reaches it
    run.advance(30);
    run.play("key return");
    run.advance(30);
    EXPECT_TRUE(run.running());
    EXPECT_TRUE(player.shows(RaftPanel));
    run.play("move 0 200");
    EXPECT_TRUE(player.waitFor(ArrivalPanel, 60 * 200));
}

TEST(RaftRules, LossesStayWithinTheCopyAndTheLeaderDrownsLast)
{
    qd.randSeed = 3;
    Int leader = 0, everything = 0;
    for (Int i = 0; i < 3000; ++i) {
        gRaftWagon = {};
        gRaftWagon.people = gRaftWagon.startPeople = 3;
        gRaftWagon.illness.fill(kWell);
        gRaftWagon.supply = {5, 2, 1, 1, 0, 3, 40};
        gRaftDrowned = {};
        const Wagon before = gRaftWagon;
        for (Int rock = 0; rock < 3; ++rock) {
            gRaftLoss = {};
            LoseSupplies3(50);
            LoseOxen2(40);
            Drown2(40);
            for (std::size_t slot = 0; slot < kSupplyCount; ++slot)
                ASSERT_LE(gRaftLoss.supplies[slot], before.supply[slot]);
        }
        const auto drowned = std::count(gRaftDrowned.begin(), gRaftDrowned.end(), true);
        ASSERT_EQ(gRaftWagon.people, 3 - drowned);
        ASSERT_FALSE(gRaftDrowned[3] || gRaftDrowned[4]) << "there are only three";
        ASSERT_TRUE(!gRaftDrowned[0] || drowned == 3);
        leader += gRaftDrowned[0];
        everything += gRaftLoss.supplies[kOxen] == 5;
    }
    EXPECT_GT(leader, 0);
    EXPECT_GT(everything, 0); // three pairs, but no sixth ox
}
