// Trading: the price by lot, the refusals, and the exchange. Talking: three talks that take turns.

#include "Wainroad/Screens/Trade.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/Player/PanelPlayer.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Journal/Wording.h"
#include "Wainroad/Screens/Talk.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Goods.h"
#include "Wainroad/Simulation/Model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

void have(const std::array<Int, kSupplyCount>& supplies, Int cents)
{
    gMySlot = 0;
    gState = GameState{};
    gState.wagons = gState.slots = gState.startWagons = 1;
    gState.order[0] = 0;
    gState.wagon[0].supply = supplies;
    gState.wagon[0].money = cents;
}

/// The least and greatest price in `good` over many offers; none is {0, 0}.
struct Prices {
    Int least = 0, greatest = 0;
    bool operator==(const Prices&) const = default;
};
std::array<Prices, 9> offersFor(Int want, Int amount)
{
    gWantItem = want;
    gWantAmount = amount;
    std::array<Prices, 9> all{};
    for (Int i = 0; i < 8000; ++i) {
        ComputeOffer();
        Prices& prices = all[static_cast<std::size_t>(gGiveItem)];
        prices.least = prices.greatest == 0 ? gGiveCount : std::min(prices.least, gGiveCount);
        prices.greatest = std::max(prices.greatest, gGiveCount);
    }
    return all;
}

} // namespace

TEST(TradeRules, AloneAPriceLiesWithinAFifthOfTheWorth)
{
    qd.randSeed = 5;
    have({40, 50, 1980, 3, 3, 3, 2000}, 50000);
    // Two sets of clothing are worth a pair of oxen, 200 bullets, 2 parts, 100 pounds or 20 dollars.
    const std::array<Prices, 9> clothes = offersFor(kClothes, 2);
    EXPECT_EQ(clothes[kOxen], (Prices{2, 2})); // one pair at least, and one at most
    EXPECT_EQ(clothes[kClothes], (Prices{}));
    EXPECT_EQ(clothes[kBullets], (Prices{160, 240}));
    EXPECT_EQ(clothes[kFirstPart], (Prices{1, 2}));
    EXPECT_EQ(clothes[kFood], (Prices{80, 120}));
    EXPECT_EQ(clothes[kTradeMoney], (Prices{1600, 2400}));
    EXPECT_EQ(clothes[kTradeNothing], (Prices{}));
    // Five dollars are worth 50 bullets; a bullet is worth less than one of anything else but food, and costs one.
    EXPECT_EQ(offersFor(kTradeMoney, 500)[kBullets], (Prices{40, 60}));
    const std::array<Prices, 9> bullet = offersFor(kBullets, 1);
    EXPECT_EQ(bullet[kClothes], (Prices{1, 1}));
    EXPECT_EQ(bullet[kTradeMoney], (Prices{100, 100}));
}

TEST(TradeRules, InATrainAPriceIsTheWorthOrHalfAsMuchAgain)
{
    qd.randSeed = 5;
    have({40, 50, 1980, 3, 3, 3, 2000}, 50000);
    gState.wagons = 2;
    EXPECT_EQ(offersFor(kClothes, 2)[kBullets], (Prices{200, 300}));
}

TEST(TradeRules, NobodyAsksForTheLastPairOrForWhatIsNotThere)
{
    qd.randSeed = 5;
    have({2, 0, 0, 0, 0, 0, 0}, 99);
    EXPECT_EQ(offersFor(kFood, 20)[kTradeNothing].greatest, 0);
    EXPECT_EQ(gGiveItem, I(kTradeNothing));
    EXPECT_EQ(gGiveCount, 0);
    have({4, 0, 0, 0, 0, 0, 0}, 99);
    EXPECT_EQ(offersFor(kFood, 20)[kOxen], (Prices{2, 2}));
    have({2, 0, 0, 0, 0, 0, 5}, 0);
    EXPECT_EQ(offersFor(kBullets, 10)[kFood], (Prices{4, 5})); // all of it, if the price is just that
}

namespace {

class OnTheMarket : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(player.setOut("Ann", 0, 4, {8, 12, 15, 1, 1, 1, 1200})); }
    const Wagon& wagon() const { return gState.wagon[0]; }
    /// Asks for an amount; what came of it is on the screen.
    void ask(Int good, const std::string& amount)
    {
        player.click(RightButtonsPanel, 2);
        ASSERT_TRUE(player.waitFor(TradeWantPanel, 60));
        player.type(amount);
        View* goods = GetItem(*FindPanel(TradeWantPanel), 4);
        const View* one = goods ? GetItem(*goods, good + 1) : nullptr;
        ASSERT_TRUE(one);
        run.play("click " + std::to_string(one->r.left + 6) + " " + std::to_string((one->r.top + one->r.bottom) / 2));
        ASSERT_EQ(gWantItem, good);
        player.click(TradeWantPanel, 1);
    }
    bool refused()
    {
        if (!player.waitFor(TradeMessagePanel, 60))
            return false;
        player.key("return");
        return player.waitFor(RightButtonsPanel, 60) && !FindPanel(TradeMessagePanel);
    }
    /// Asks until somebody offers.
    void askForOffer(Int good, const std::string& amount)
    {
        for (int tries = 0; tries < 40; ++tries) {
            ask(good, amount);
            ASSERT_TRUE(player.waitFor(TradeOfferPanel, 60));
            EXPECT_EQ(GetItem(*FindPanel(TradeOfferPanel), 5)->disabled != 0, gNobodyHasIt);
            if (!gNobodyHasIt)
                return;
            player.click(TradeOfferPanel, 6);
            run.advance(30);
        }
        FAIL() << "nobody has it";
    }
    /// The last sentence of the journal that is no date.
    static std::string lastWords()
    {
        std::string words;
        for (Int at = 0; at < gLogInfo.end; at = NextMessage(at))
            if (MessageAt(at)[0] != 120)
                words = string(MessageText(MessageAt(at)));
        return words;
    }

    GameRun run{Wainroad_main};
    PanelPlayer player{run};
};

} // namespace

TEST_F(OnTheMarket, WhatCannotBeAskedIsRefusedAtOnce)
{
    const auto expectRefusal = [&](Int good, const char* amount) {
        SCOPED_TRACE(testing::Message() << amount << " of " << good);
        ask(good, amount);
        EXPECT_TRUE(refused());
    };
    expectRefusal(kClothes, "0");
    expectRefusal(kTradeMoney, "0");
    gTrain.wagon[0].supply[kOxen] = 39;
    run.advance(120);
    expectRefusal(kOxen, "1");
    gTrain.wagon[0].supply[kOxen] = 38;
    run.advance(120);
    ask(kOxen, "1");
    EXPECT_TRUE(player.waitFor(TradeOfferPanel, 60));
}

TEST_F(OnTheMarket, GoodsChangeHandsOnceAndTheJournalTellsIt)
{
    askForOffer(kClothes, "2");
    gGiveItem = kFood;
    gGiveCount = 90;
    const Int clothes = wagon().supply[kClothes], food = wagon().supply[kFood];
    player.click(TradeOfferPanel, 5);
    run.advance(180);
    EXPECT_EQ(wagon().supply[kClothes], clothes + 2);
    EXPECT_EQ(wagon().supply[kFood], food - 90);
    EXPECT_EQ(lastWords(), "You trade 90 pounds of food for 2 sets of clothing.");
}

TEST_F(OnTheMarket, OxenChangeHandsInPairsAndMoneyInCents)
{
    askForOffer(kOxen, "2");
    gGiveItem = kTradeMoney;
    gGiveCount = 4500;
    const Int oxen = wagon().supply[kOxen], money = wagon().money;
    player.click(TradeOfferPanel, 5);
    run.advance(180);
    EXPECT_EQ(wagon().supply[kOxen], oxen + 4);
    EXPECT_EQ(wagon().money, money - 4500);
    EXPECT_EQ(lastWords(), "You trade $45.00 for 2 pairs of oxen.");

    askForOffer(kTradeMoney, "20");
    gGiveItem = kOxen;
    gGiveCount = 1;
    player.click(TradeOfferPanel, 5);
    run.advance(180);
    EXPECT_EQ(wagon().supply[kOxen], oxen + 2);
    EXPECT_EQ(wagon().money, money - 2500);
    EXPECT_EQ(lastWords(), "You trade one pair of oxen for $20.00");
}

TEST_F(OnTheMarket, WithoutRoomOrMeansNothingMoves)
{
    gTrain.wagon[0].supply[kClothes] = 49;
    run.advance(120);
    askForOffer(kClothes, "3");
    gGiveItem = kFood;
    gGiveCount = 10;
    const auto before = wagon().supply;
    player.click(TradeOfferPanel, 5);
    run.advance(180);
    EXPECT_EQ(wagon().supply, before);
    EXPECT_EQ(lastWords(), "There is no room in the wain for 3 sets of clothing.");

    askForOffer(kBullets, "20");
    gGiveItem = kTradeMoney;
    gGiveCount = wagon().money + 1;
    player.click(TradeOfferPanel, 5);
    run.advance(180);
    EXPECT_EQ(wagon().supply, before);
    EXPECT_NE(lastWords().find(" to give for 20 bullets."), std::string::npos) << lastWords();
}

TEST_F(OnTheMarket, AnyOtherClickLetsThePersonGo)
{
    askForOffer(kFood, "20");
    const auto before = wagon().supply;
    player.click(TradeOfferPanel, 6);
    run.advance(180);
    EXPECT_FALSE(FindPanel(TradeOfferPanel));
    EXPECT_EQ(wagon().supply, before);
}

TEST_F(OnTheMarket, ThreeTalksTakeTurnsFromPlaceToPlace)
{
    std::vector<Frame> seen;
    for (const Int turn : {1, 2, 3, 1}) {
        player.click(RightButtonsPanel, 3);
        ASSERT_TRUE(player.waitFor(TalkPanel, 60));
        run.advance(10);
        EXPECT_EQ(gTalkTurn, turn);
        seen.push_back(*run.frame());
    }
    EXPECT_NE(seen[0].pixels, seen[1].pixels);
    EXPECT_NE(seen[1].pixels, seen[2].pixels);
    EXPECT_EQ(seen[0].pixels, seen[3].pixels);
    gTrain.landmark = 3;
    run.advance(120);
    player.click(RightButtonsPanel, 3);
    run.advance(30);
    EXPECT_EQ(gTalkTurn, 2);
}

TEST_F(OnTheMarket, EveryPlaceHasThreeTalksWithAFace)
{
    for (Int landmark = -1; landmark <= 16; ++landmark)
        for (Int turn = 1; turn <= 3; ++turn) {
            Str255 face, talk;
            GetIndString(face, 3101 + landmark, 2 * turn - 1);
            GetIndString(talk, 3101 + landmark, 2 * turn);
            EXPECT_TRUE(face.size() == 2 && face[1] >= '0' && face[1] <= '8') << landmark << ' ' << turn;
            EXPECT_GT(talk.size(), 20U) << landmark << ' ' << turn;
        }
}
