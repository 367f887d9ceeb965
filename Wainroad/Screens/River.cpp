#include "Wainroad/Screens/River.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "Wainroad/Screens/Crossing.h"
#include "Wainroad/Screens/Losses.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"
#include "Wainroad/Simulation/Random.h"

#include <algorithm>
#include <array>

namespace Wainroad {

Int gCrossMethod = 0, gCrossOutcome = 0, gCrossResult = 0, gCrossWagons = 0;
LossPacket gCrossLoss;

namespace {

const AtRunStart sFreshStart([] {
    gCrossMethod = gCrossOutcome = gCrossResult = gCrossWagons = 0;
    gCrossLoss = {};
});

enum RiverItems : Int { kFordItem = 1, kFloatItem, kFerryItem, kGuideItem, kInfoItem };
constexpr Int kSecondRiver = 1, kThirdRiver = 8, kLastRiver = 11;
constexpr Int kFerryPrice = 500;                // cents
constexpr Int kGuidePrice = 3;                  // sets of clothes
constexpr Int kFloatDepth = 3, kFerryDepth = 5; // half feet: shallower needs neither
constexpr Int kJournalChoice = 130;

const Wagon& myWagon() { return WagonOf(gState, gMySlot); }

Int riverDescriptor(Int ditl) { return PanelDescriptor(gCrossWagons == 1 ? 1 : 3, 12, ditl); }

// ---- The choice

void setRiverTexts()
{
    const Int halfFeet = gState.riverDepth;
    const Str255 width = pstr(std::to_string(gState.riverWidth));
    const Str255 depth = pstr(std::to_string(halfFeet / 2) + (halfFeet % 2 != 0 ? ".5" : ".0"));
    ParamText(&width, &depth, nullptr, nullptr);
}

void disableItem(View& panel, Int item)
{
    if (View* view = GetItem(panel, item))
        DisableView(*view);
}

/// Takes away the ways that this river does not offer.
void disableWays(View& panel)
{
    if (gState.landmark == kLastRiver || gState.landmark == kSecondRiver)
        disableItem(panel, kFerryItem);
    if (gState.landmark != kLastRiver)
        disableItem(panel, kGuideItem);
}

void choose(Int item)
{
    switch (item) {
    case kFordItem: ChooseCrossing(kFord); break;
    case kFloatItem:
        if (gState.riverDepth < kFloatDepth)
            OpenPanel(TooShallowPanel);
        else
            ChooseCrossing(kFloat);
        break;
    case kFerryItem:
        if (gState.riverDepth < kFerryDepth)
            OpenPanel(NoFerryNeededPanel);
        else if (myWagon().money < kFerryPrice)
            OpenPanel(NoFerryMoneyPanel);
        else
            ChooseCrossing(kFerry);
        break;
    case kGuideItem:
        if (myWagon().supply[kClothes] < kGuidePrice)
            OpenPanel(NoClothesPanel);
        else
            ChooseCrossing(kGuide);
        break;
    case kInfoItem: OpenPanel(RiverInfoPanel); break;
    }
}

Int riverPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            disableWays(panel);
        } else {
            gCrossing = true;
            gCrossWagons = gState.wagons;
            setRiverTexts();
        }
        return riverDescriptor(8070);
    case kMsgClick: choose(MsgItem(msg)); return 1;
    default: return 0;
    }
}

/// Serves a panel that leads back to the choice.
Int riverMessage(View& panel, Msg& msg, Int ditl)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            SetKeys(panel, 1, 1, 0);
        return riverDescriptor(ditl);
    case kMsgClick: OpenPanel(RiverPanel); return 1;
    case kMsgClose:
        ClearKeys();
        if (gCrossWagons != 1)
            RemoveTimer(panel);
        return 1;
    default: return 0;
    }
}

Int tooShallowProc(View& panel, Msg& msg) { return riverMessage(panel, msg, 8071); }
Int noFerryNeededProc(View& panel, Msg& msg) { return riverMessage(panel, msg, 8072); }
Int noFerryMoneyProc(View& panel, Msg& msg) { return riverMessage(panel, msg, 8073); }
Int noClothesProc(View& panel, Msg& msg) { return riverMessage(panel, msg, 8074); }

Int riverInfoProc(View& panel, Msg& msg)
{
    if (msg.what == kMsgOpen) {
        panel.style = kInfoStyle;
        if (ItemsLoaded(panel))
            disableWays(panel);
    }
    return riverMessage(panel, msg, 8075);
}

// ---- How it ends

void accident() { gCrossOutcome = gCrossResult = 2; }

void decideFord(Int depth)
{
    const Int landmark = gState.landmark;
    if (depth == 5) {
        gCrossResult = kCrossWet;
    } else if (depth > 5) {
        gCrossOutcome = gCrossResult = 1;
    } else if (landmark == kSecondRiver) {
        if (Chance(40))
            gCrossResult = kCrossMud;
    } else if ((landmark == kThirdRiver || landmark == kLastRiver) && Chance(16)) {
        accident();
    }
}

void decideFerry(Int depth, Int current)
{
    if (depth < 5 || current < 6)
        return;
    if (Chance(current >= 11 ? 10 : 5))
        accident();
}

void decideGuided(Int depth, Int current)
{
    const Int landmark = gState.landmark;
    if (depth > 4) {
        gCrossMethod = kFloat;
        if (Chance(current))
            accident();
        return;
    }
    gCrossMethod = kFord;
    if (landmark == kSecondRiver) {
        if (Chance(8))
            gCrossResult = kCrossMud;
    } else if ((landmark == kThirdRiver || landmark == kLastRiver) && RandomN(1000) < 32) {
        accident();
    }
}

void reportChoice(Int method)
{
    constexpr Int kNewsBytes = 22;
    ByteWriter news;
    WriteDate(news, gTrain);
    news.u8(gState.wagons == 1 ? 109 : 108);
    news.u8(kJournalChoice);
    news.u8(gMySlot + 32 * (method - 1));
    news.pad(kNewsBytes);
    QueuePackets(kPacketNews, kAllNodes, news.bytes, kNewsBytes, 0);
}

/// Pays ferry or guide. @return The strength that counts for a river without its own.
Int payForCrossing(Int method)
{
    if (method != kFerry && method != kGuide)
        return 0;
    std::array<Int, kSupplyCount> change{};
    if (method == kGuide)
        change[kClothes] = -kGuidePrice;
    SendSupplyChange(change, method == kFerry ? -kFerryPrice : 0);
    return 7;
}

} // namespace

const ViewProc RiverPanel{riverPanelProc};
const ViewProc TooShallowPanel{tooShallowProc};
const ViewProc NoFerryNeededPanel{noFerryNeededProc};
const ViewProc NoFerryMoneyPanel{noFerryMoneyProc};
const ViewProc NoClothesPanel{noClothesProc};
const ViewProc RiverInfoPanel{riverInfoProc};

void ChooseCrossing(Int method)
{
    for (const Int item : {7, 6, 2, 4})
        DisableItem(GetMHandle(1001), item);
    reportChoice(method);
    const Int base = payForCrossing(method);
    gCrossMethod = method;
    DecideCrossing(base);
    gCrossLoss = {};
    if (gCrossWagons != 1) {
        SendCommand(kCommandCrossingChosen, 0, 0);
        ClosePanel(RiverPanel);
        OpenPanel(CrossWaitPanel);
        return;
    }
    ClosePanel(RiverPanel);
    OpenPanel(CrossingPanel);
    OpenPanel(CrossingTextPanel);
}

Int Current(Int base)
{
    switch (gState.landmark) {
    case 0: base = 300; break;
    case 1: base = 200; break;
    case 8: base = 500; break;
    case 9: base = 700; break;
    }
    return (gState.rain + base) / 100;
}

void DecideCrossing(Int base)
{
    const Int current = Current(base), depth = gState.riverDepth;
    gCrossOutcome = gCrossResult = 0;
    switch (gCrossMethod) {
    case kFord: decideFord(depth); break;
    case kFloat:
        if (depth >= 5 && Chance(5 * current))
            accident();
        break;
    case kFerry: decideFerry(depth, current); break;
    case kGuide: decideGuided(depth, current); break;
    }
}

void ComputeCrossingLosses()
{
    const Wagon& wagon = myWagon();
    const Int depth = gState.riverDepth;
    switch (gCrossMethod) {
    case kFerry:
        LoseSupplies2(wagon, 80, gCrossLoss);
        LoseOxen(wagon, 50, gCrossLoss);
        Drown(20);
        break;
    case kFloat:
        LoseSupplies2(wagon, (Current(depth) + 10) / 4, gCrossLoss);
        if (depth >= 7)
            Drown((4 * depth - 24) / 3);
        break;
    case kFord:
        if (depth < 5) {
            LoseSupplies2(wagon, 10 + RandomN(30), gCrossLoss);
            break;
        }
        LoseSupplies2(wagon, 5 * depth, gCrossLoss);
        LoseOxen(wagon, 5 * (depth - 2), gCrossLoss);
        if (depth != 5)
            Drown(5 * (depth - 5));
        break;
    }
}

void Drown(Int percent)
{
    const Wagon& wagon = myWagon();
    Int living = wagon.people;
    const Int members = std::clamp<Int>(wagon.startPeople, 0, kMaxPeople);
    for (std::size_t member = 1; member < static_cast<std::size_t>(members); ++member)
        if (wagon.illness[member] != kDead && Chance(percent)) {
            gCrossLoss.drowned[member] = 1;
            --living;
        }
    if (living == 1 && wagon.illness[0] != kDead && Chance(percent))
        gCrossLoss.drowned[0] = 1;
}

void SendCrossingLosses()
{
    constexpr Int kJournalDrowned = 53;
    SendLossPacket(kCommandCrossed, gCrossLoss.supplies, gCrossLoss.drowned);
    const Wagon& wagon = myWagon();
    Int drowned = 0;
    for (std::size_t member = 0; member < kMaxPeople; ++member)
        if (gCrossLoss.drowned[member] != 0 && wagon.illness[member] != kDead)
            ++drowned;
    if (drowned != 0 && wagon.people - drowned > 0)
        News(kJournalDrowned, gMySlot, drowned, false);
}

bool CrossingPanelIsOpen()
{
    for (const ViewProc* proc : {&RiverPanel, &TooShallowPanel, &NoFerryNeededPanel, &NoFerryMoneyPanel,
             &NoClothesPanel, &RiverInfoPanel, &CrossingPanel, &CrossWaitPanel, &CrossingResultPanel})
        if (FindPanel(*proc))
            return true;
    return false;
}

} // namespace Wainroad
