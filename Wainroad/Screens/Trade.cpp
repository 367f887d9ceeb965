#include "Wainroad/Screens/Trade.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "Wainroad/Frame/EditItems.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Goods.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"
#include "Wainroad/Simulation/Random.h"

#include <algorithm>
#include <cstdlib>

namespace Wainroad {

Int gWantItem = 0, gWantAmount = 0, gGiveItem = 0, gGiveCount = 0;
bool gNobodyHasIt = false;

namespace {

const AtRunStart sFreshStart([] {
    gWantItem = gWantAmount = gGiveItem = gGiveCount = 0;
    gNobodyHasIt = false;
});

constexpr Int kTradeGoods = 8; // the supplies and money
constexpr Int kJournalNoMeans = 76, kJournalNoRoom = 78, kJournalTraded = 79;
constexpr Int kMessages = 3015, kGoodsWords = 3011, kOfferTexts = 2051;
constexpr Int kFaces = 6080, kBesideFrame = 9, kNeverTrades = 6;

using PerGood = std::array<Int, kTradeGoods>;
constexpr std::size_t at(Int good) { return static_cast<std::size_t>(good); }

const Wagon& myWagon() { return WagonOf(gState, gMySlot); }

// ---- The price

/// Cents of one unit as a trade counts it: a pair, a set, a round, a part, a pound, a dollar.
constexpr PerGood kValue{gTradeValue[kOxen], gTradeValue[kClothes], gTradeValue[kBullets] / 20, gTradeValue[kFirstPart],
    gTradeValue[kSecondPart], gTradeValue[kThirdPart], gTradeValue[kFood], 100};

PerGood holdings(const Wagon& wagon)
{
    PerGood have{};
    std::copy(wagon.supply.begin(), wagon.supply.end(), have.begin());
    have[kOxen] /= 2;
    have[kTradeMoney] = HeldS16(wagon.money / 100);
    return have;
}

/// How much of `give` somebody asks for the want.
Int drawAmount(Int give)
{
    const bool alone = gState.wagons == 1;
    const Int base = alone ? 80 : 100, spread = alone ? 41 : 51;
    float ratio = static_cast<float>(kValue[at(gWantItem)]) / static_cast<float>(kValue[at(give)])
        * static_cast<float>(gWantAmount);
    if (gWantItem == kTradeMoney)
        ratio /= 100.0F;
    const float factor = static_cast<float>(base + RandomN(spread)) / 100.0F;
    return std::max<Int>(static_cast<Int>(factor * ratio), 1);
}

// ---- What the player wants

enum WantItems : Int { kWantOK = 1, kWantCancel = 2, kAmount = 3, kGoods = 4 };

void setWantKeys(View& panel)
{
    SetKeys(panel, 2, 2, 1);
    gTENumeric = 1;
    gTEMaxChars = 4;
    gEditItems = 0;
}

void refuse(Int text)
{
    const Str255 words = ListString(kMessages, text);
    ParamText(&words, nullptr, nullptr, nullptr);
    OpenPanel(TradeMessagePanel);
}

void takeWant(View& panel)
{
    constexpr Int kNoAmount = 13, kTooManyOxen = 21, kTooMany = 4;
    Str255 text;
    GetItemText(panel, kAmount, text);
    Int n = 0;
    StringToNum(text, n);
    gWantAmount = std::max<Int>(n, 0) * (gWantItem == kTradeMoney ? 100 : 1);
    if (gWantAmount < 1 || gWantItem >= kTradeNothing) {
        refuse(kNoAmount);
        return;
    }
    if (gWantItem < kSupplyCount) {
        const Int add = gWantItem == kOxen ? 2 * n : 0;
        if (gSupplyLimit[at(gWantItem)] < myWagon().supply[at(gWantItem)] + add) {
            refuse(gWantItem == kOxen ? kTooManyOxen : kTooMany);
            return;
        }
    }
    PopKeys();
    OpenPanel(TradeOfferPanel);
}

Int tradeWantProc(View& panel, Msg& msg)
{
    constexpr Int kQuestion = 3, kRadioButtons = 6121;
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            ClearKeys();
            setWantKeys(panel);
            PushKeys();
            setWantKeys(panel);
            InstallUserItem(panel, kGoods, RadioGroup, kRadioButtons);
            gWantItem = 0;
        } else {
            const Str255 question = ListString(kMessages, kQuestion);
            ParamText(&question, nullptr, nullptr, nullptr);
        }
        return PanelDescriptor(1, 10, 6120);
    case kMsgClick:
        switch (MsgItem(msg)) {
        case kGoods: gWantItem = std::clamp<Int>(MsgResult(msg) - 1, 0, kTradeNothing); break;
        case kWantCancel: ShowTravelScreen(); break;
        case kWantOK: takeWant(panel); break;
        }
        return 1;
    default: return 0;
    }
}

Int tradeMessageProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            SetKeys(panel, 1, 1, 0);
        return PanelDescriptor(1, 10, 6290);
    case kMsgClick:
        if (MsgItem(msg) == 1) {
            ClosePanel(TradeMessagePanel);
            ShowTravelScreen();
        }
        return 1;
    default: return 0;
    }
}

// ---- The offer

enum OfferItems : Int { kFace = 1, kBeside = 2, kQuestionItem = 4, kAccept = 5 };

/// An amount in words: the count, and the good that belongs to it (none for money).
struct Amount {
    Str255 count, word;
};
Amount inWords(Int good, Int amount)
{
    if (good == kTradeMoney)
        return {pstr("$" + std::to_string(amount / 100)), Str255{0}};
    return {pstr(std::to_string(amount)), ListString(kGoodsWords, good + (amount == 1 ? 8 : 1))};
}

/// Fills count and word of one side in. For money the word's blank goes with it.
void fillInAmount(Str255& text, Int good, Int amount, const std::string& countMark, const std::string& wordMark)
{
    const Amount words = inWords(good, amount);
    ReplaceFirst(text, countMark, words.count);
    ReplaceFirst(text, good == kTradeMoney ? wordMark + " " : wordMark, words.word);
}

void drawOffer()
{
    const Int nobody = gState.wagons == 1 ? 333 : 500;
    gNobodyHasIt = RandomN(1000) <= nobody;
    if (gNobodyHasIt)
        return;
    ComputeOffer();
    gNobodyHasIt = gGiveItem == kTradeNothing;
    if (!gNobodyHasIt && gGiveItem == kOxen)
        gGiveCount /= 2;
}

Str255 offerText()
{
    Str255 text = ListString(kOfferTexts, gNobodyHasIt ? 1 : 2);
    if (!gNobodyHasIt)
        fillInAmount(text, gGiveItem, gGiveCount, "^2", "^3");
    fillInAmount(text, gWantItem, gWantAmount, "^0", "^1");
    return text;
}

Int drawFace()
{
    Int face = 0;
    do
        face = std::abs(Random()) % 9;
    while (face == kNeverTrades);
    return face;
}

void openOffer(View& panel)
{
    if (gNobodyHasIt)
        for (const Int item : {Int(kQuestionItem), Int(kAccept)})
            if (View* view = GetItem(panel, item))
                DisableView(*view);
    InstallUserItem(panel, kFace, ImageItemProc, 0, ImageSpec{kFaces, 16080, drawFace(), 1, gScreenDepth});
    InstallUserItem(panel, kBeside, ImageItemProc, 0, ImageSpec{kFaces, 16080, kBesideFrame, 1, gScreenDepth});
}

// ---- The exchange

bool hasRoom(const Wagon& wagon)
{
    if (gWantItem == kTradeMoney)
        return true;
    if (gWantItem == kOxen)
        return wagon.supply[kOxen] + 2 * gWantAmount <= gSupplyLimit[kOxen];
    return wagon.supply[at(gWantItem)] + gWantAmount <= gSupplyLimit[at(gWantItem)];
}

bool hasMeans(const Wagon& wagon)
{
    switch (gGiveItem) {
    case kTradeNothing: return true;
    case kTradeMoney: return gGiveCount <= wagon.money;
    case kOxen: return 2 * gGiveCount <= wagon.supply[kOxen];
    default: return gGiveCount <= wagon.supply[at(gGiveItem)];
    }
}

/// One side of a trade as the journal has it.
struct Side {
    Int slot, good, amount;
};
void reportTrade(Int code, const Side& first, const Side& second)
{
    ByteWriter news;
    WriteDate(news, gTrain);
    news.u8(code);
    news.u8(first.slot);
    news.u8(second.slot);
    news.u8(first.good + 16 * second.good);
    news.u32(first.amount);
    news.u32(second.amount);
    QueuePackets(kPacketNews, kAllNodes, news.bytes, I(news.bytes.size()), 0);
}

void exchange()
{
    std::array<Int, kSupplyCount> change{};
    Int cents = 0;
    const auto add = [&](Int good, Int amount) {
        if (good == kTradeMoney)
            cents += amount;
        else if (good < kSupplyCount)
            change[at(good)] += good == kOxen ? 2 * amount : amount;
    };
    add(gGiveItem, -gGiveCount);
    add(gWantItem, gWantAmount);
    SendSupplyChange(change, cents);
    reportTrade(kJournalTraded, {gMySlot, gGiveItem, gGiveCount}, {kNobody, gWantItem, gWantAmount});
}

void acceptOffer()
{
    const Wagon& wagon = myWagon();
    const Int failure = !hasRoom(wagon) ? kJournalNoRoom : !hasMeans(wagon) ? kJournalNoMeans : 0;
    if (failure == 0)
        exchange();
    else
        reportTrade(failure, {kNobody, gWantItem, gWantAmount}, {gMySlot, gGiveItem, gGiveCount});
}

Int tradeOfferProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            openOffer(panel);
        } else {
            drawOffer();
            const Str255 text = offerText();
            ParamText(&text, nullptr, nullptr, nullptr);
            panel.style.face = 0;
            panel.style.size = 12;
        }
        return PanelDescriptor(1, 10, 6310);
    case kMsgClick:
        if (MsgItem(msg) == kAccept)
            acceptOffer();
        ShowTravelScreen();
        return 1;
    default: return 0;
    }
}

} // namespace

const ViewProc TradeWantPanel{tradeWantProc};
const ViewProc TradeMessagePanel{tradeMessageProc};
const ViewProc TradeOfferPanel{tradeOfferProc};

void ComputeOffer()
{
    const PerGood have = holdings(myWagon());
    std::array<bool, kTradeGoods> open;
    open.fill(true);
    if (gWantItem >= 0 && gWantItem < kTradeGoods)
        open[at(gWantItem)] = false;
    gGiveItem = kTradeNothing;
    gGiveCount = 0;
    while (std::find(open.begin(), open.end(), true) != open.end()) {
        Int good = 0;
        do
            good = std::abs(Random()) & 7;
        while (good == gWantItem);
        const Int amount = drawAmount(good);
        if (amount < have[at(good)] || (amount == have[at(good)] && good != kOxen)) {
            gGiveItem = good;
            gGiveCount = amount * (good == kTradeMoney ? 100 : good == kOxen ? 2 : 1);
            return;
        }
        open[at(good)] = false;
    }
}

} // namespace Wainroad
