#include "Wainroad/Screens/Store.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/EditItems.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Screens/Origin.h"
#include "Wainroad/Screens/Setup.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Goods.h"
#include "Wainroad/Simulation/Lobby.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"

#include <algorithm>

namespace Wainroad {

namespace {

enum StoreItems : Int {
    kPicture = 1,
    kHeading = 2,
    kCosts = 13,
    kBuy = 15,
    kHelp = 16,
    kFirstField = 17,
    kPrices = 24,
    kLeave = 25,
    kHave = 27
};
constexpr std::array<Int, 5> kColumnHeadings{10, 11, 12, 14, 26};
constexpr std::array<Int, 2> kSideTexts{28, 29};
constexpr Int kRowHeight = 18, kRowBaseline = 11;
constexpr Int kTotalRow = kSupplyCount; // the sum stands below the seven goods
constexpr Int kJournalBought = 67;

using Amounts = std::array<Int, kSupplyCount>;

struct StoreState {
    Amounts shownCounts{}; // field values that `DrawCosts` last drew
    Int tooManyItem = 0;   // the slot that broke its limit
    Int tooManyCount = 0;  // the amount refused, in pairs for oxen, else in stored units
};
RunState<StoreState> sStore;

constexpr std::size_t at(Int slot) { return static_cast<std::size_t>(slot); }

const Wagon& myWagon() { return WagonOf(gState, gMySlot); }
Int fundsAtHand() { return gFormingShown ? gStartMoney : myWagon().money; }

/// How many stored units one unit of the field counts.
Int unitsPerField(Int slot) { return slot == kOxen ? 2 : slot == kBullets ? 20 : 1; }
/// A stored amount in the units of the field.
Int inFieldUnits(Int slot, Int amount)
{
    return slot == kOxen ? (amount + 1) / 2 : slot == kBullets ? amount / 20 : amount;
}

/// What a field asks for; a negative number counts as none.
Int wantedAmount(View& panel, Int slot)
{
    Str255 text;
    GetItemText(panel, kFirstField + slot, text);
    Int n = 0;
    StringToNum(text, n);
    return std::max<Int>(n, 0);
}

Str255 dollars(Int cents, bool withSign)
{
    Str255 amount, text = withSign ? pstr("$") : Str255{0};
    CentsToString(cents, amount);
    PStrAppend(text, amount);
    return text;
}

// ---- Buying

/// Checks the fields one after another against money, need and limit. @return False if one was refused: a panel says
/// so.
bool checkPurchase(View& panel, Amounts& bought, Int& balance)
{
    balance = fundsAtHand();
    for (Int slot = 0; slot < kSupplyCount; ++slot) {
        const Int wanted = wantedAmount(panel, slot);
        balance -= StorePrice(slot, wanted);
        if (gFormingShown && wanted == 0 && (slot == kOxen || slot == kFood)) {
            OpenPanel(NeedOxenFoodPanel);
            return false;
        }
        if (balance < 0) {
            OpenPanel(CantAffordPanel);
            return false;
        }
        const Int stored = wanted * unitsPerField(slot);
        const Int have = gFormingShown ? 0 : myWagon().supply[at(slot)];
        if (have + stored > gSupplyLimit[at(slot)]) {
            sStore->tooManyItem = slot;
            sStore->tooManyCount = slot == kOxen ? stored / 2 : stored;
            OpenPanel(TooManyPanel);
            return false;
        }
        bought[at(slot)] = stored;
    }
    return true;
}

void reportPurchase(const Amounts& bought)
{
    ByteWriter news;
    WriteDate(news, gTrain);
    news.u8(kJournalBought);
    news.u8(gMySlot);
    news.u8(bought[kOxen]);
    news.u8(bought[kClothes]);
    news.u16(bought[kBullets]);
    for (const Int part : {kFirstPart, kSecondPart, kThirdPart})
        news.u8(bought[at(part)]);
    news.u8(0);
    news.u16(bought[kFood]);
    news.u32(0);
    QueuePackets(kPacketNews, kAllNodes, news.bytes, I(news.bytes.size()), 0);
}

void buy(View& panel)
{
    Amounts bought{};
    Int balance = 0;
    if (!checkPurchase(panel, bought, balance))
        return;
    if (gFormingShown) {
        gStartSupplies = bought;
        gStartMoney = balance;
        gLobbyState = kLobbyReady;
        gLobbyTick = TickCount();
        StartSolo();
        return;
    }
    const Int money = myWagon().money;
    if (balance != money) {
        reportPurchase(bought);
        SendSupplyChange(bought, balance - money);
    }
    ShowTravelScreen();
}

// ---- The panel

void setStoreTexts()
{
    const Str255 money = dollars(fundsAtHand(), false);
    Str255 place;
    if (gFormingShown || gState.landmark == -1)
        place = ListString(3016, 2);
    else
        place = ListString(3002, gState.landmark + 2);
    const Str255 column = ListString(3016, gFormingShown ? 3 : 4);
    ParamText(&money, &place, &column, nullptr);
}

void setStoreKeys(View& panel)
{
    gKeyPanel = gFormingShown ? nullptr : &panel;
    gOutlineItem = gReturnItem = 0;
    gCancelItem = gFormingShown ? 0 : 2;
    gTENumeric = 1;
    gTEMaxChars = 2;
    gEditItems = kSupplyCount;
}

void setItemStyle(View& panel, Int item, Int face, Int size, Int just)
{
    SetItemFace(panel, item, face);
    SetItemSize(panel, item, size);
    SetItemJust(panel, item, just);
}

void openStore(View& panel)
{
    setItemStyle(panel, kHeading, 1, 14, 1);
    for (const Int item : kColumnHeadings)
        setItemStyle(panel, item, 1, 12, -1);
    for (const Int item : kSideTexts)
        setItemStyle(panel, item, 1, 12, 0);
    InstallUserItem(panel, kPicture, ImageItemProc, 0, ImageSpec{9030, 19030, 0, 1, gScreenDepth});
    InstallUserItem(panel, kCosts, CostItem);
    InstallUserItem(panel, kPrices, PriceItem);
    InstallUserItem(panel, kHave, HaveItem);
    for (Int slot = 0; slot < kSupplyCount; ++slot)
        if (View* field = GetItem(panel, kFirstField + slot))
            field->user = &StoreEditKey;
    ClearKeys();
    setStoreKeys(panel);
    PushKeys();
    setStoreKeys(panel);
    if (View* unused = GetItem(panel, gFormingShown ? kLeave : kHelp))
        DisableView(*unused);
}

Int storePanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            openStore(panel);
        } else {
            panel.style = {6322, 0, 0, 12, 0};
            if (!gFormingShown)
                SendCommand(kCommandEnterStore, 0, 0);
            setStoreTexts();
        }
        return PanelDescriptor(1, 13, 9030);
    case kMsgClick:
        switch (MsgItem(msg)) {
        case kBuy: buy(panel); break;
        case kHelp: OpenPanel(StoreHelpPanel); break;
        case kLeave: ShowTravelScreen(); break;
        }
        return 1;
    case kMsgClose:
        ClearKeys();
        if (!gFormingShown)
            SendCommand(kCommandLeaveStore, 0, 0);
        return 1;
    default: return 0;
    }
}

Int storeEditKey(View& field, Msg&)
{
    const Int ordinal = EditItemNumber(field) - 1;
    gTEMaxChars = ordinal == kFood ? 4 : ordinal >= kFirstPart && ordinal <= kThirdPart ? 1 : 2;
    return 1;
}

// ---- Refusals

Int storeHelpPanelProc(View& panel, Msg& msg)
{
    return InfoPanel(panel, msg, StoreHelpPanel, PanelDescriptor(2, 13, 9031));
}
Int cantAffordPanelProc(View& panel, Msg& msg)
{
    return InfoPanel(panel, msg, CantAffordPanel, PanelDescriptor(2, 13, 9032));
}
Int needOxenFoodPanelProc(View& panel, Msg& msg)
{
    return InfoPanel(panel, msg, NeedOxenFoodPanel, PanelDescriptor(2, 13, 9035));
}

Int tooManyPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            SetKeys(panel, 1, 1, 0); // the store's keys stay saved, so that the click brings them back
        } else {
            Str255 count;
            NumToCommas(sStore->tooManyCount, count);
            const Str255 also = gFormingShown ? Str255{0} : ListString(3011, 16);
            const Str255 goods = ListString(3011, sStore->tooManyItem + (sStore->tooManyCount == 1 ? 8 : 1));
            ParamText(&count, &also, &goods, nullptr);
        }
        return PanelDescriptor(2, 13, sStore->tooManyItem == kOxen ? 9034 : 9033);
    case kMsgClick:
        PopKeys();
        ClosePanel(TooManyPanel);
        return 1;
    default: return 0;
    }
}

// ---- Columns

void drawCost(const Str255& text, Int row)
{
    constexpr Int kRight = 52;
    const Int v = kRowHeight * row, left = kRight - StringWidth(text);
    EraseRect({v, 0, v + 13, left});
    MoveTo(left, v + kRowBaseline);
    DrawString(text);
}

/// Reads the fields again. @return True if one has changed.
bool countsChanged(View& item)
{
    if (!item.parent)
        return false;
    bool changed = false;
    for (Int slot = 0; slot < kSupplyCount; ++slot) {
        const Int wanted = wantedAmount(*item.parent, slot);
        changed |= sStore->shownCounts[at(slot)] != wanted;
        sStore->shownCounts[at(slot)] = wanted;
    }
    return changed;
}

Int costItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item)) {
            AddTimer(item, 15);
            sStore->shownCounts = {};
        }
        return 1;
    case kMsgTimer:
        if (item.disabled == 0 && countsChanged(item))
            DrawCosts(item);
        return 1;
    case kMsgDraw: DrawCosts(item); return 1;
    default: return TimedItem(item, msg);
    }
}

Int priceItemProc(View& item, Msg& msg)
{
    constexpr Int kRight = 62;
    if (msg.what != kMsgDraw)
        return UserItem.fn(item, msg);
    const StyleScope style(item.style);
    const OriginScope origin(item);
    for (Int slot = 0; slot < kSupplyCount; ++slot)
        DrawToRight(dollars(StorePrice(slot, 1), slot == 0), kRight, kRowBaseline + kRowHeight * slot);
    return 1;
}

/// On the trail what the wagon has, before the journey the most that it can take.
Int haveItemProc(View& item, Msg& msg)
{
    constexpr Int kRight = 33;
    if (msg.what != kMsgDraw)
        return UserItem.fn(item, msg);
    const StyleScope style(item.style);
    const OriginScope origin(item);
    for (Int slot = 0; slot < kSupplyCount; ++slot) {
        const Int amount = gFormingShown ? gSupplyLimit[at(slot)] : myWagon().supply[at(slot)];
        Str255 text;
        NumToCommas(inFieldUnits(slot, amount), text);
        DrawToRight(text, kRight, kRowBaseline + kRowHeight * slot);
    }
    return 1;
}

} // namespace

const ViewProc StorePanel{storePanelProc};
const ViewProc StoreHelpPanel{storeHelpPanelProc};
const ViewProc CantAffordPanel{cantAffordPanelProc};
const ViewProc TooManyPanel{tooManyPanelProc};
const ViewProc NeedOxenFoodPanel{needOxenFoodPanelProc};
const ViewProc CostItem{costItemProc};
const ViewProc PriceItem{priceItemProc};
const ViewProc HaveItem{haveItemProc};
const ViewProc StoreEditKey{storeEditKey};

Int StorePrice(Int slot, Int n)
{
    const Int plain = gTradeValue[at(slot)] * n;
    if (gFormingShown)
        return plain;
    const Int place = std::clamp<Int>(gState.landmark + 1, 0, I(gPriceMarkup.size()) - 1);
    return HeldS32(plain * gPriceMarkup[at(place)]) / 100;
}

void DrawCosts(View& view)
{
    const ViewPortScope port(view);
    const StyleScope style(view.style);
    const OriginScope origin(view);
    Int total = 0;
    for (Int slot = 0; slot < kSupplyCount; ++slot) {
        const Int cost = StorePrice(slot, sStore->shownCounts[at(slot)]);
        total += cost;
        drawCost(dollars(cost, slot == 0), slot);
    }
    drawCost(dollars(total, true), kTotalRow);
}

} // namespace Wainroad
