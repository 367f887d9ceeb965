// From the title to the first day, on the real resource files.

#include "Wainroad/Screens/Setup.h"
#include "Tests/Player/PanelPlayer.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Store.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Lobby.h"
#include "Wainroad/Simulation/Model.h"

#include "MacToolbox/Base/Strings.h"

#include <gtest/gtest.h>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

enum StoreItem : Int { kBuy = 15, kAdvice = 16, kOxenField = 17, kFoodField = 23 };

std::string nameOf(const Name15& name) { return string(Str255(name)); }

} // namespace

TEST(Title, GoesToTheLegendsAndBackByItself)
{
    GameRun run(Wainroad_main);
    PanelPlayer player(run);
    ASSERT_TRUE(player.waitFor(TitlePanel));
    EXPECT_FALSE(player.waitFor(LegendsPanel, 7000));
    EXPECT_TRUE(player.waitFor(LegendsPanel, 400));
    EXPECT_FALSE(player.waitFor(TitlePanel, 500));
    EXPECT_TRUE(player.waitFor(TitlePanel, 200));
}

TEST(Title, ItsPictureTakesNoClicks)
{
    GameRun run(Wainroad_main);
    PanelPlayer player(run);
    ASSERT_TRUE(player.waitFor(TitlePanel));
    GetItem(*FindPanel(TitlePanel), 1)->type = kUserItem; // as if the list of items let clicks through
    run.play("click 256 60\nwait 1");
    EXPECT_TRUE(player.shows(TitlePanel));
}

TEST(Month, OfAYearBeyondItsTwelveIsNone)
{
    GameRun run(Wainroad_main);
    PanelPlayer player(run);
    ASSERT_TRUE(player.toStore("Ann", 0));
    player.fillStore({});
    player.click(StorePanel, kBuy);
    ASSERT_TRUE(player.waitFor(MonthPanel));
    const GameState before = gTrain;
    for (const Int item : {11, 40, 32767}) {
        Msg click{kMsgClick, item, 0, {}};
        MonthPanel.fn(*FindPanel(MonthPanel), click);
    }
    EXPECT_EQ(gTrain, before);
    EXPECT_EQ(gPlaying, 1);
}

TEST(Party, ClosesUpOverNamesThatAreLeftOut)
{
    GameRun run(Wainroad_main);
    PanelPlayer player(run);
    ASSERT_TRUE(player.waitFor(TitlePanel));
    player.click(TitlePanel, 3);
    ASSERT_TRUE(player.waitFor(IntroPanel));
    player.key("return");
    ASSERT_TRUE(player.waitFor(PartyPanel2));

    player.click(PartyPanel2, 1);
    ASSERT_TRUE(player.waitFor(NoNamePanel)) << "a party needs a leader";
    player.key("return");
    ASSERT_TRUE(player.waitFor(PartyPanel2));

    player.click(PartyPanel2, 2);
    player.type("Ann");
    Str255 second, fourth;
    GetItemText(*FindPanel(PartyPanel2), 4, second);
    GetItemText(*FindPanel(PartyPanel2), 6, fourth);
    player.key("tab");
    player.key("backspace");
    player.key("tab");
    player.key("tab");
    player.key("backspace");
    player.click(PartyPanel2, 1);
    ASSERT_TRUE(player.waitFor(StorePanel));
    EXPECT_EQ(gPartySize, 3);
    EXPECT_EQ(nameOf(gTrain.names[0]), "Ann");
    EXPECT_EQ(Str255(gTrain.wagon[0].family[0]), second);
    EXPECT_EQ(Str255(gTrain.wagon[0].family[1]), fourth);
    EXPECT_TRUE(gTrain.wagon[0].family[2].empty());
}

TEST(Store, RefusesInTheOrderOfItsRowsAndKeepsTheFields)
{
    GameRun run(Wainroad_main);
    PanelPlayer player(run);
    ASSERT_TRUE(player.toStore("Ann", 1)); // 800 dollars

    player.click(StorePanel, kAdvice);
    ASSERT_TRUE(player.waitFor(StoreHelpPanel));
    player.key("return");

    const struct {
        const char* what;
        PanelPlayer::Outfit outfit;
        const ViewProc& refusal;
    } kRefusals[] = {
        {"no oxen, though the rest is too dear as well", {0, 99, 99, 0, 0, 0, 10}, NeedOxenFoodPanel},
        {"no food", {4, 2, 2, 0, 0, 0, 0}, NeedOxenFoodPanel},
        {"too many oxen", {21, 0, 0, 0, 0, 0, 100}, TooManyPanel},
        {"too dear", {4, 50, 99, 3, 3, 3, 100}, CantAffordPanel},
        {"too many wheels", {4, 2, 2, 4, 0, 0, 100}, TooManyPanel},
    };
    for (const auto& refusal : kRefusals) {
        SCOPED_TRACE(refusal.what);
        ASSERT_TRUE(player.waitFor(StorePanel));
        player.fillStore(refusal.outfit);
        player.click(StorePanel, kBuy);
        ASSERT_TRUE(player.waitFor(refusal.refusal, 120));
        player.key("return");
        EXPECT_EQ(gStartMoney, 80000);
        EXPECT_EQ(gLobbyState, kLobbyStore);
    }
    Str255 food;
    GetItemText(*FindPanel(StorePanel), kFoodField, food);
    EXPECT_EQ(string(food), "100");
}

TEST(Store, TakesWhatWasBoughtOnTheRoad)
{
    GameRun run(Wainroad_main);
    PanelPlayer player(run);
    ASSERT_TRUE(player.setOut("Ann", 2, 4, {4, 10, 10, 1, 0, 1, 500}));
    const Wagon& wagon = gState.wagon[0];
    EXPECT_EQ(wagon.supply, (std::array<Int, kSupplyCount>{8, 10, 200, 1, 0, 1, 500}));
    EXPECT_EQ(wagon.money, 80000 - 8000 - 10000 - 2000 - 2000 - 10000);
    EXPECT_EQ(gState.month, 4);
    EXPECT_EQ(gPlaying, 2);
    EXPECT_EQ(gState.landmark, -1);
}

TEST(Store, OnTheRoadSendsOnlyWhatChanged)
{
    GameRun run(Wainroad_main);
    PanelPlayer player(run);
    ASSERT_TRUE(player.setOut("Ann"));
    const auto before = gState.wagon[0].supply;
    const Int money = gState.wagon[0].money;

    player.click(LeftButtonsPanel, 6);
    ASSERT_TRUE(player.waitFor(StorePanel));
    EXPECT_TRUE(run.runUntil([] { return (gTrain.wagon[0].flags & kFlagInStore) != 0; }, 120))
        << "the store holds the train";
    player.click(StorePanel, kBuy);
    ASSERT_TRUE(player.waitFor(StatusPanel));
    run.advance(120);
    EXPECT_EQ(gState.wagon[0].supply, before);
    EXPECT_EQ(gTrain.wagon[0].flags & kFlagInStore, 0);

    player.click(LeftButtonsPanel, 6);
    ASSERT_TRUE(player.waitFor(StorePanel));
    player.click(StorePanel, kOxenField);
    player.type("2");
    player.click(StorePanel, kBuy);
    ASSERT_TRUE(player.waitFor(StatusPanel));
    run.advance(120);
    EXPECT_EQ(gState.wagon[0].supply[kOxen], before[kOxen] + 4);
    EXPECT_EQ(gState.wagon[0].money, money - 4000);
}
