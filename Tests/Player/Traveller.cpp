#include "Tests/Player/Traveller.h"

#include "Wainroad/Screens/Arrival.h"
#include "Wainroad/Screens/Choices.h"
#include "Wainroad/Screens/Crossing.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Mourning.h"
#include "Wainroad/Screens/Raft.h"
#include "Wainroad/Screens/River.h"
#include "Wainroad/Screens/Route.h"
#include "Wainroad/Screens/Score.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Store.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Screens/Trade.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Goods.h"
#include "Wainroad/Simulation/Model.h"

#include <algorithm>
#include <array>

namespace Harness {

using namespace Wainroad;

namespace {

constexpr Int kStep = 30; // ticks between two looks at the screen
constexpr Int kPatienceStranded = 60 * 60 * 2;

Int dateNumber() { return (gState.year * 12 + gState.month) * 31 + gState.day; }

std::string suppliesText(const Wagon& wagon)
{
    std::string text;
    for (const Int amount : wagon.supply)
        text += (text.empty() ? "" : " ") + std::to_string(amount);
    return text;
}

} // namespace

void Traveller::checkState()
{
    const Wagon& wagon = WagonOf(gState, gMySlot);
    const auto wrong = [&](const std::string& what) { fault_ += what + "; "; };
    for (std::size_t slot = 0; slot < kSupplyCount; ++slot)
        if (wagon.supply[slot] < 0 || wagon.supply[slot] > gSupplyLimit[slot])
            wrong("supply " + std::to_string(slot) + " is " + std::to_string(wagon.supply[slot]));
    if (wagon.money < 0)
        wrong("money is negative");
    const auto living = std::count_if(wagon.illness.begin(), wagon.illness.begin() + std::clamp<Int>(wagon.startPeople, 0, 5),
        [](Int illness) { return illness != kDead; });
    if (living != wagon.people)
        wrong("people " + std::to_string(wagon.people) + ", living " + std::to_string(living));
    if (dateNumber() < lastDate_)
        wrong("the date went back");
    GameState again;
    again.load(gState.bytes());
    if (again.bytes() != gState.bytes())
        wrong("the byte form does not read back");
    lastDate_ = dateNumber();
}

void Traveller::note()
{
    const Wagon& wagon = WagonOf(gState, gMySlot);
    diary_.push_back(std::to_string(gState.year) + "-" + std::to_string(gState.month) + "-" + std::to_string(gState.day) + " place "
        + std::to_string(gState.landmark) + ": " + std::to_string(gState.miles) + " miles, " + std::to_string(wagon.people)
        + " people, supplies " + suppliesText(wagon) + ", " + std::to_string(wagon.money) + " cents");
}

void Traveller::noteEnd(const std::string& how)
{
    ended_ = true;
    diary_.push_back(how);
}

void Traveller::stockUp()
{
    constexpr std::array<Int, 6> kHearths{2, 4, 7, 10, 12, 14};
    constexpr Int kStoreKey = 6, kFoodField = 23, kBuy = 15, kSpare = 3000, kEnough = 1500;
    const Wagon& wagon = WagonOf(gState, gMySlot);
    if (std::find(kHearths.begin(), kHearths.end(), gState.landmark) == kHearths.end())
        return;
    const Int affordable = (wagon.money - kSpare) / 50; // twenty cents a pound, dearer on the way
    const Int amount = std::min(kEnough - wagon.supply[kFood], affordable);
    if (amount <= 0)
        return;
    player_.click(LeftButtonsPanel, kStoreKey);
    if (!player_.waitFor(StorePanel, 120))
        return;
    player_.click(StorePanel, kFoodField);
    player_.type(std::to_string(amount));
    player_.click(StorePanel, kBuy);
    player_.waitFor(StatusPanel, 120);
    run_.advance(120);
}

bool Traveller::answerPanels()
{
    if (player_.shows(GameOverPanel)) {
        noteEnd("lost on the way");
        return player_.click(GameOverPanel, 1);
    }
    if (player_.shows(ArrivalPanel))
        return player_.click(ArrivalPanel, 2);
    if (player_.shows(ScorePanel)) {
        noteEnd("arrived with " + std::to_string(gFinalScore) + " points");
        return player_.click(ScorePanel, 1);
    }
    if (player_.shows(RaftPanel)) // few rocks come near the left bank
        return run_.play("move 4 200");
    if (player_.shows(MourningPanel))
        return player_.click(MourningPanel, 1);
    if (player_.shows(CrossingResultPanel))
        return player_.click(CrossingResultPanel, 1);
    for (const ViewProc* refusal : {&TooShallowPanel, &NoFerryNeededPanel, &NoFerryMoneyPanel, &NoClothesPanel})
        if (player_.shows(*refusal))
            return player_.click(*refusal, 1);
    if (player_.shows(RiverPanel)) // what is refused or not offered becomes a float, then a ford
        return player_.click(RiverPanel, crossingTries_++ == 0 ? habits_.crossing : crossingTries_ == 2 ? 2 : 1);
    if (player_.shows(RoutePanel)) {
        const bool other = gState.landmark == 15 ? habits_.raft : habits_.otherWays;
        return player_.click(RoutePanel, other ? 3 : 2);
    }
    if (player_.shows(NoTollPanel)) {
        habits_.raft = true;
        return player_.click(NoTollPanel, 1);
    }
    if (player_.shows(TradeOfferPanel))
        return player_.click(TradeOfferPanel, gNobodyHasIt ? 6 : 5);
    if (player_.shows(TradeWantPanel)) {
        player_.type("1");
        return player_.click(TradeWantPanel, 1);
    }
    if (player_.shows(CantContinuePanel)) {
        player_.click(CantContinuePanel, 1);
        if (habits_.buysOxen && WagonOf(gState, gMySlot).supply[kOxen] == 0)
            player_.click(RightButtonsPanel, 2);
        return true;
    }
    if (player_.shows(ContinuePanel) && (gState.mode & (kModeResting | kModeDelayed)) == 0) {
        crossingTries_ = 0;
        return player_.click(ContinuePanel, 1);
    }
    return false;
}

bool Traveller::travel(Int ticks)
{
    gTrain.pace = habits_.pace;
    WagonOf(gTrain, gMySlot).rations = habits_.rations;
    const Int end = run_.ticks() + ticks;
    while (run_.running() && run_.ticks() < end) {
        if (player_.shows(TitlePanel))
            return true;
        if (gPlaying == 2 && gState.landmark != lastLandmark_ && gState.toNext == 0 && gState.mode != 0) {
            lastLandmark_ = gState.landmark;
            note();
            checkState();
            stockUp();
        }
        const bool moving = (gState.mode & kModeMoving) != 0;
        strandedTicks_ = moving || ended_ ? 0 : strandedTicks_ + kStep;
        if (strandedTicks_ > kPatienceStranded) {
            noteEnd("stranded");
            run_.choose(1001, 6);
            player_.waitFor(ExitPanel);
            player_.click(ExitPanel, 3);
            strandedTicks_ = 0;
        }
        answerPanels();
        run_.advance(kStep);
    }
    return false;
}

} // namespace Harness
