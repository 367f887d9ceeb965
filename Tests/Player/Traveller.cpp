#include "Tests/Player/Traveller.h"

#include "Wainroad/Screens/Arrival.h"
#include "Wainroad/Screens/Choices.h"
#include "Wainroad/Screens/Crossing.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Hunt.h"
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
#include "Wainroad/Simulation/Scoring.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <optional>

namespace Harness {

using namespace Wainroad;

namespace {

constexpr Int kStep = 30; // ticks between two looks at the screen
constexpr Int kPatienceStranded = 60 * 60 * 2;

Int dateNumber() { return (gState.year * 12 + gState.month) * 31 + gState.day; }

/// A number that changes with any byte of the state.
std::string digest(const Bytes& bytes)
{
    std::uint32_t sum = 2166136261U;
    for (const std::uint8_t byte : bytes)
        sum = (sum ^ byte) * 16777619U;
    char text[9];
    std::snprintf(text, sizeof text, "%08x", static_cast<unsigned>(sum));
    return text;
}

template <typename Amounts> Int sumOf(const Amounts& amounts)
{
    return std::accumulate(amounts.begin(), amounts.end(), Int(0));
}

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
    const auto living = std::count_if(wagon.illness.begin(),
        wagon.illness.begin() + std::clamp<Int>(wagon.startPeople, 0, 5), [](Int illness) { return illness != kDead; });
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
    diary_.push_back(std::to_string(gState.year) + "-" + std::to_string(gState.month) + "-" + std::to_string(gState.day)
        + " place " + std::to_string(gState.landmark) + ": " + std::to_string(gState.miles) + " miles, "
        + std::to_string(wagon.people) + " people, supplies " + suppliesText(wagon) + ", " + std::to_string(wagon.money)
        + " cents, state " + digest(gState.bytes()));
}

void Traveller::tell(const std::string& moment)
{
    if (onMoment)
        onMoment(moment);
}

/// Once, as the report of a crossing shows.
void Traveller::noteReport()
{
    static constexpr std::array<const char*, 5> kWays{"", "fords", "floats", "takes the ferry", "takes a guide"};
    const std::string place = std::to_string(lastLandmark_);
    std::string line = std::string("  ") + kWays[static_cast<std::size_t>(wayAcross_)];
    if (gCrossResult == kCrossMud)
        line += ": muddy";
    else if (gCrossResult == kCrossWet)
        line += ": wet";
    else if (gCrossResult != kCrossedWell)
        line += ": loses " + std::to_string(sumOf(gCrossLoss.supplies)) + " goods and "
            + std::to_string(sumOf(gCrossLoss.drowned)) + " people";
    diary_.push_back(line);
    tell("Report" + place);
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

// ---- On the hunt

namespace {

/// Where something moves on the hunting field between two frames: the middle of the pixels that differ.
std::optional<Point> movement(const Frame& before, const Frame& now)
{
    constexpr Int kTop = 59, kBottom = 220; // of the window
    Int count = 0, sumV = 0, sumH = 0;
    for (Int v = kTop; v < kBottom; ++v)
        for (Int h = 12; h < 500; ++h) {
            const auto i = static_cast<std::size_t>(v * now.width + h);
            if (before.pixels[i] == now.pixels[i])
                continue;
            ++count;
            sumV += v;
            sumH += h;
        }
    if (count < 8)
        return std::nullopt;
    return Point{sumV / count, sumH / count};
}

} // namespace

/// Looks for what moves, and fires ahead of it.
void Traveller::shoot()
{
    constexpr Int kFrame = 3, kLook = 4; // ticks a frame, frames between two looks
    const auto look = [&] {
        const FramePtr before = run_.frame();
        run_.advance(kFrame * kLook);
        return before && player_.shows(HuntPanel) ? movement(*before, *run_.frame()) : std::nullopt;
    };
    const auto first = look(), second = look();
    if (!first || !second)
        return;
    tell("Hunt" + std::to_string(++shotsAimed_));
    const Int flight = std::max(std::abs(second->h - 256), std::abs(second->v - 228)) / 20 + kLook / 2 + 4; // frames
    const Int h = second->h + (second->h - first->h) * flight / kLook;
    run_.play("click " + std::to_string(std::clamp<Int>(h, 12, 500)) + " " + std::to_string(second->v));
}

void Traveller::hunt()
{
    constexpr Int kHuntKey = 6;
    habits_.huntsAfter = -2;
    player_.click(RightButtonsPanel, kHuntKey);
    if (!player_.waitFor(HuntPanel, 240))
        return;
    while (player_.shows(HuntPanel))
        shoot();
    if (!player_.waitFor(HuntResultPanel, 60))
        return;
    diary_.push_back("  hunts: " + std::to_string(gHuntBullets) + " shots, " + std::to_string(gHuntShot)
        + " pounds, carries " + std::to_string(gHuntResult));
    tell("HuntReport");
    player_.click(HuntResultPanel, 1);
    run_.advance(120); // until the state shows it
}

// ---- On the way

void Traveller::setHabits()
{
    constexpr Int kPaceKey = 5, kRationsKey = 5, kFirstChoice = 1;
    if (habits_.pace != gState.pace) {
        player_.click(RightButtonsPanel, kPaceKey);
        player_.waitFor(PacePanel, 60);
        player_.click(PacePanel, kFirstChoice + habits_.pace);
    }
    if (habits_.rations != WagonOf(gState, gMySlot).rations) {
        player_.click(LeftButtonsPanel, kRationsKey);
        player_.waitFor(RationsPanel, 60);
        player_.click(RationsPanel, kFirstChoice + habits_.rations);
    }
    run_.advance(120); // until the state shows it
    if (gState.pace != habits_.pace || WagonOf(gState, gMySlot).rations != habits_.rations)
        fault_ += "pace or rations cannot be chosen; ";
}

void Traveller::arrive()
{
    lastLandmark_ = gState.landmark;
    note();
    checkState();
    if (lastLandmark_ >= 0) {
        player_.waitFor(LandmarkPanel, 60);
        run_.advance(15);
        tell("Place" + std::to_string(lastLandmark_));
    }
    stockUp();
}

bool Traveller::answerEnd()
{
    if (player_.shows(GameOverPanel)) {
        noteEnd("lost on the way");
        tell("GameOver");
        return player_.click(GameOverPanel, 1);
    }
    if (player_.shows(ArrivalPanel)) {
        tell("Arrival");
        return player_.click(ArrivalPanel, 2);
    }
    if (player_.shows(ScorePanel)) {
        noteEnd("arrived with " + std::to_string(WagonScore(gMySlot)) + " points"
            + (gFinalScore > 0 ? ", among the legends" : ""));
        tell("Score");
        return player_.click(ScorePanel, 1);
    }
    return false;
}

/// Keeps to the left bank, which few rocks come near.
bool Traveller::watchRaft()
{
    const Int goods = sumOf(gRaftWagon.supply);
    if (raftLooks_++ == 0) {
        livingOnRaft_ = gRaftWagon.people;
        goodsOnRaft_ = goods;
        diary_.push_back("  takes to the water");
    } else if (raftLooks_ == 10) {
        tell("Raft");
    }
    if (goods != goodsOnRaft_ || gRaftWagon.people != livingOnRaft_) {
        diary_.push_back("  strikes a rock: loses " + std::to_string(goodsOnRaft_ - goods) + " goods and "
            + std::to_string(livingOnRaft_ - gRaftWagon.people) + " people");
        goodsOnRaft_ = goods;
        livingOnRaft_ = gRaftWagon.people;
        tell("RaftReport");
    }
    return run_.play("move 4 200");
}

bool Traveller::answerRiver()
{
    if (player_.shows(CrossingPanel)) {
        if (!onWater_) {
            onWater_ = true;
            run_.advance(150); // half way over
            tell("Crossing" + std::to_string(lastLandmark_));
        }
        return true; // and leaves the keys alone
    }
    if (player_.shows(CrossingResultPanel)) {
        if (onWater_)
            noteReport();
        onWater_ = false;
        return player_.click(CrossingResultPanel, 1);
    }
    for (const ViewProc* refusal : {&TooShallowPanel, &NoFerryNeededPanel, &NoFerryMoneyPanel, &NoClothesPanel})
        if (player_.shows(*refusal))
            return player_.click(*refusal, 1);
    if (!player_.shows(RiverPanel))
        return false;
    const Int tries = crossingTries_++; // what is refused or not offered becomes a float, then a ford
    wayAcross_ = tries == 0 ? habits_.crossing : tries == 1 ? kFloat : kFord;
    if (wayAcross_ >= kFerry) // one place of the panel holds the ferry or, at the last river, the guide
        wayAcross_ = gState.landmark == 11 ? kGuide : kFerry;
    return player_.click(RiverPanel, wayAcross_);
}

bool Traveller::answerPanels()
{
    if (answerEnd() || answerRiver())
        return true;
    if (player_.shows(RaftPanel))
        return watchRaft();
    if (player_.shows(MourningPanel)) {
        diary_.push_back("  mourns");
        tell("Mourning");
        return player_.click(MourningPanel, 1);
    }
    if (player_.shows(RoutePanel)) {
        const bool other = gState.landmark == 15 ? habits_.raft : habits_.otherWays;
        diary_.push_back(std::string("  takes the ") + (other ? "other" : "first") + " way");
        tell("Fork" + std::to_string(gState.landmark));
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
    setHabits();
    const Int end = run_.ticks() + ticks;
    while (run_.running() && run_.ticks() < end) {
        if (player_.shows(TitlePanel))
            return true;
        if (gPlaying == 2 && gState.landmark != lastLandmark_ && gState.toNext == 0 && gState.mode != 0)
            arrive();
        if (lastLandmark_ == habits_.huntsAfter && gState.toNext != 0 && (gState.mode & kModeMoving) != 0)
            hunt();
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
