// Hunting: what is met where, the refusals, the hunt's own limits, and what is carried home.

#include "MacToolbox/Managers/Cursors.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/Player/PanelPlayer.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Screens/HuntScene.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

using AnimalOdds = std::array<Int, kAnimalKinds>;

namespace {

/// What may be met in June where nothing was shot before.
const struct {
    Int landmark;
    AnimalOdds odds;
} kJune[] = {
    {-1, {15, 25, 40, 40, 0, 0, 0}},
    {2, {15, 25, 40, 40, 0, 0, 0}},
    {3, {15, 25, 40, 40, 0, 0, 7}},
    {4, {15, 25, 40, 40, 8, 0, 20}},
    {5, {15, 25, 40, 40, 15, 0, 20}},
    {6, {15, 25, 40, 40, 15, 5, 20}},
    {7, {8, 25, 40, 40, 15, 5, 20}},
    {9, {8, 25, 40, 40, 15, 5, 20}},
    {10, {8, 10, 40, 40, 15, 5, 20}},
    {11, {8, 10, 40, 40, 8, 5, 20}},
    {12, {8, 10, 40, 40, 8, 5, 7}},
    {13, {8, 10, 40, 40, 8, 10, 0}},
    {14, {8, 10, 40, 40, 15, 10, 0}},
    {16, {8, 25, 40, 40, 15, 10, 0}},
};

Int kindsIn(const AnimalOdds& odds)
{
    return std::count_if(odds.begin(), odds.end(), [](Int n) { return n != 0; });
}

/// Draws often, and expects that every kind of `expected` comes with its odds, and no other.
void expectKinds(const HuntPlace& place, const AnimalOdds& expected)
{
    SCOPED_TRACE(place.landmark);
    AnimalOdds most{};
    for (Int i = 0; i < 2000; ++i) {
        const AnimalOdds odds = DrawOdds(place);
        const Int kinds = kindsIn(odds);
        ASSERT_TRUE(kinds == 1 || kinds == 2) << kinds;
        ASSERT_FALSE(place.fresh && odds[2] != 0 && odds[3] != 0) << "one of the two small ones is struck out first";
        for (std::size_t kind = 0; kind < kAnimalKinds; ++kind) {
            ASSERT_TRUE(odds[kind] == 0 || odds[kind] == expected[kind]) << "kind " << kind;
            most[kind] = std::max(most[kind], odds[kind]);
        }
    }
    EXPECT_EQ(most, expected);
}

} // namespace

TEST(HuntRules, EachPlaceHasItsAnimals)
{
    qd.randSeed = 11;
    for (const auto& place : kJune)
        expectKinds({place.landmark, 6, true}, place.odds);
    expectKinds({6, 3, true}, {15, 25, 40, 40, 15, 0, 20}); // before its season
    expectKinds({14, 11, true}, {8, 10, 40, 40, 15, 0, 0}); // and after it
    expectKinds({2, 6, false}, {15, 25, 20, 20, 0, 0, 0});  // where something was shot before
}

TEST(HuntRules, TheGroundFitsThePlaceAndTheMonth)
{
    const struct {
        Int landmark, month;
        HuntGround ground; // desert, ground, no bushes, mountains, backdrop
    } kGrounds[] = {
        {-1, 6, {false, true, true, false, 0}},
        {1, 3, {true, true, true, false, 0}},
        {2, 9, {false, true, false, false, 0}},
        {4, 6, {false, false, false, false, 0}},
        {4, 10, {true, false, false, false, 0}},
        {5, 6, {false, true, true, true, 1}},
        {6, 12, {false, true, false, true, 1}},
        {7, 6, {false, true, true, true, 1}},
        {10, 6, {false, true, true, true, 1}},
        {11, 6, {false, true, false, true, 1}},
        {13, 6, {false, true, false, true, 1}},
        {14, 6, {false, true, true, true, 1}},
    };
    for (const auto& one : kGrounds) {
        const HuntGround ground = GroundOf({one.landmark, one.month, true});
        EXPECT_EQ(std::tie(ground.desert, ground.hasGround, ground.noBushes, ground.mountains, ground.backdrop),
            std::tie(one.ground.desert, one.ground.hasGround, one.ground.noBushes, one.ground.mountains,
                one.ground.backdrop))
            << "place " << one.landmark << ", month " << one.month;
    }
}

namespace {

/// A journey on its first leg.
class OnTheHunt : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(player.setOut("Ann"));
        player.click(ContinuePanel, 1);
        ASSERT_TRUE(run.runUntil([] { return gState.miles > 0; }, 1200));
    }
    /// Changes the journey as if it had come so, and lets the view see it.
    template <typename Change> void change(Change&& how)
    {
        how(gTrain);
        run.advance(120);
    }
    void pressHunt() { player.click(RightButtonsPanel, 6); }
    void begin()
    {
        pressHunt();
        ASSERT_TRUE(player.waitFor(HuntPanel, 240));
    }
    void fireAt(Int h, Int v)
    {
        run.play("click " + std::to_string(h) + " " + std::to_string(v));
        run.advance(60); // the ball lands
    }
    void endHunt()
    {
        player.click(HuntPanel, 2);
        ASSERT_TRUE(player.waitFor(HuntResultPanel, 60));
    }

    GameRun run{Wainroad_main};
    PanelPlayer player{run};
};

} // namespace

TEST_F(OnTheHunt, IsRefusedInSevereWeatherWithoutBulletsAndAtAPlace)
{
    const auto refuses = [&](const ViewProc& with, Int ticks) {
        pressHunt();
        EXPECT_TRUE(player.waitFor(with, 60));
        if (ticks > 0) // it goes by itself
            EXPECT_FALSE(run.runUntil([&] { return !FindPanel(with); }, ticks - 20));
        else
            player.key("return");
        EXPECT_TRUE(run.runUntil([&] { return !FindPanel(with); }, 40));
        EXPECT_TRUE(player.waitFor(RightButtonsPanel, 60));
    };
    gTrain.mode &= ~I(kModeMoving);
    change([](GameState& train) { train.weather = 7; });
    refuses(SevereWeatherPanel, 300);
    change([](GameState& train) {
        train.weather = 6;
        train.wagon[0].supply[kBullets] = 0;
    });
    refuses(NoBulletsPanel, 300);
    change([](GameState& train) { train.toNext = 0; });
    refuses(NoHuntingHerePanel, 0);
}

TEST_F(OnTheHunt, HasNoMoreShotsThanBulletsAndStopsTheWain)
{
    change([](GameState& train) { train.wagon[0].supply[kBullets] = 3; });
    begin();
    EXPECT_EQ(gTrain.mode & kModeMoving, 0);
    for (const Int item : {2, 4, 6, 7})
        EXPECT_FALSE(GetMHandle(1001)->item(item)->enabled) << item;
    run.play("click 20 70\nclick 400 70"); // the second while the first is in the air: nothing, at no cost
    run.advance(60);
    for (int i = 0; i < 4; ++i)
        fireAt(256, 200);
    endHunt();
    EXPECT_EQ(gHuntBullets, 3);
    for (const Int item : {2, 4, 6, 7})
        EXPECT_TRUE(GetMHandle(1001)->item(item)->enabled) << item;
    run.advance(120);
    EXPECT_EQ(gState.wagon[0].supply[kBullets], 0);
}

TEST_F(OnTheHunt, TwentyShotsAreTheMost)
{
    begin();
    for (int i = 0; i < 24; ++i)
        run.play("click 256 210\nwait 0.15");
    endHunt();
    EXPECT_EQ(gHuntBullets, 20);
}

TEST_F(OnTheHunt, EndsByItselfAfterItsTimeAndTheReportAfterTenSeconds)
{
    begin();
    const Int begun = run.ticks(), most = 60 * gHuntSeconds[static_cast<std::size_t>(gState.huntTime)];
    ASSERT_TRUE(run.runUntil([&] { return player.shows(HuntResultPanel); }, most + 120));
    EXPECT_NEAR(static_cast<double>(run.ticks() - begun), static_cast<double>(most), 20);
    const Int reported = run.ticks();
    ASSERT_TRUE(run.runUntil([] { return !FindPanel(HuntResultPanel); }, 700));
    EXPECT_NEAR(static_cast<double>(run.ticks() - reported), 600, 10);
}

TEST_F(OnTheHunt, TimeThatRunsOutWaitsForTheBall)
{
    begin();
    const Int most = 60 * gHuntSeconds[static_cast<std::size_t>(gState.huntTime)];
    const Int begun = run.ticks();
    while (run.ticks() - begun < most - 24)
        run.advance(6);
    run.play("click 12 62"); // twelve frames away
    const Int fired = run.ticks();
    ASSERT_TRUE(player.waitFor(HuntResultPanel, 200));
    EXPECT_EQ(gHuntBullets, 1);
    EXPECT_GE(run.ticks() - fired, 11 * 3);
}

TEST_F(OnTheHunt, AnimalsComeTwoAtATimeAndShotOnesFeedTheParty)
{
    begin();
    const FramePtr empty = run.frame();
    for (int i = 0; i < 10; ++i)
        NewAnimal();
    run.advance(60);
    EXPECT_NE(run.frame(), empty);
    // A ball for every part of the field that an animal walks through: some of them hit.
    for (Int i = 0; i < 20 && FindPanel(HuntPanel); ++i) {
        NewAnimal();
        fireAt(40 + (i * 97) % 430, 70 + (i * 41) % 140);
    }
    endHunt();
    const Int before = gState.wagon[0].supply[kFood];
    run.advance(120);
    EXPECT_LE(gHuntResult, 200);
    EXPECT_GT(gHuntResult, 0);
    EXPECT_NEAR(static_cast<double>(gState.wagon[0].supply[kFood]), static_cast<double>(before + gHuntResult),
        15); // a day passes
}

TEST_F(OnTheHunt, ShowsTwentyFramesASecondAtMost)
{
    begin();
    for (int i = 0; i < 4; ++i)
        NewAnimal();
    run.advance(30);
    Int frames = 0;
    FramePtr last = run.frame();
    const Int begun = run.ticks();
    while (run.ticks() < begun + 120) {
        run.advance(1);
        frames += run.frame() != last;
        last = run.frame();
    }
    EXPECT_GT(frames, 20); // they walk
    EXPECT_LE(3 * (frames - 1), run.ticks() - begun);
}

TEST_F(OnTheHunt, CarriesWhatTheyCanAndTheWainHolds)
{
    begin();
    EXPECT_EQ(gHuntCarried, 200);
    endHunt();
    player.click(HuntResultPanel, 1);
    gTrain.wagon[0].supply[kFood] = 1950;
    run.advance(120);
    gHuntShot = 340;
    HuntOver(200, 4);
    EXPECT_EQ(gHuntResult, 50);
    ASSERT_TRUE(player.waitFor(HuntResultPanel, 60));
    ASSERT_TRUE(run.runUntil([] { return gState.wagon[0].supply[kFood] == 2000; }, 120));
    EXPECT_FALSE(HuntPlaceIsFresh()); // the second hunt here is a poor one
}

TEST_F(OnTheHunt, NothingShotLeavesThePlaceFresh)
{
    begin();
    endHunt();
    EXPECT_EQ(gHuntResult, 0);
    EXPECT_TRUE(HuntPlaceIsFresh());
}

TEST_F(OnTheHunt, AloneSomeoneCarriesAHundred)
{
    change([](GameState& train) {
        Wagon& wagon = train.wagon[0];
        wagon.people = 1;
        std::fill(wagon.illness.begin() + 1, wagon.illness.end(), I(kDead));
    });
    begin();
    EXPECT_EQ(gHuntCarried, 100);
}

TEST_F(OnTheHunt, AnotherSpotHasOtherSceneryAndTheHuntGoesOn)
{
    change([](GameState& train) { train.landmark = 4; }); // at least four bushes
    begin();
    run.advance(30);
    const Frame first = *run.frame();
    player.click(HuntPanel, 1);
    run.advance(30);
    EXPECT_NE(run.frame()->pixels, first.pixels);
    EXPECT_TRUE(player.shows(HuntPanel));
    fireAt(256, 200);
    endHunt();
    EXPECT_EQ(gHuntBullets, 1);
}

TEST_F(OnTheHunt, TheCursorIsACrosshairOverTheField)
{
    begin();
    run.play("move 200 120");
    run.advance(6);
    EXPECT_TRUE(Cursors::requested().has_value());
    run.play("move 60 15"); // over the buttons
    run.advance(6);
    EXPECT_FALSE(Cursors::requested().has_value());
    run.play("move 200 120");
    endHunt();
    EXPECT_FALSE(Cursors::requested().has_value());
}
