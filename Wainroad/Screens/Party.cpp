#include "Wainroad/Screens/Party.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Screens/Origin.h"
#include "Wainroad/Simulation/Model.h"

#include <algorithm>

namespace Wainroad {

namespace {

enum PartyItems : Int { kSuppliesItem = 1, kPartyItem = 2, kOccupationItem = 3 };
constexpr TextStyleRec kRowStyle{6322, 0, 0, 12, 0};
constexpr Int kFirstBaseline = 16, kRowHeight = 14;
constexpr Int kOccupations = 3005, kHealthWords = 3007, kIllnessWords = 3008, kGoods = 3011, kMoneyWord = 3016;

struct PartyState {
    Int slot = 0;
    Int occupation = 0; // + 1
    Int health = 0, people = 0;
    std::array<Str255, kMaxPeople> names{Str255{0}, Str255{0}, Str255{0}, Str255{0}, Str255{0}};
    std::array<Int, kMaxPeople> illness{};
    std::array<Int, kSupplyCount> supply{};
    Int money = 0;
};
RunState<PartyState> sShown;

const Wagon& shownWagon() { return WagonOf(gState, sShown->slot); }

// ---- The party

void takeParty()
{
    const Wagon& wagon = shownWagon();
    sShown->health = wagon.health;
    sShown->people = std::clamp<Int>(wagon.startPeople, 0, kMaxPeople);
    sShown->illness = wagon.illness;
    sShown->names[0] = gState.names[static_cast<std::size_t>(sShown->slot & 31)];
    for (std::size_t i = 1; i < sShown->names.size(); ++i)
        sShown->names[i] = wagon.family[i - 1];
}

bool partyChanged()
{
    const Wagon& wagon = shownWagon();
    return wagon.health != sShown->health
        || !std::equal(wagon.illness.begin(), wagon.illness.begin() + sShown->people, sShown->illness.begin());
}

/// Cuts a text to a width, with an ellipsis at its end.
Str255 shortened(Str255 text, Int width)
{
    constexpr std::uint8_t kEllipsis = 201;
    while (text.size() > 1 && StringWidth(text) > width) {
        if (text.back() == kEllipsis)
            text.pop_back();
        text.back() = kEllipsis;
        text[0] = static_cast<std::uint8_t>(text.size() - 1);
    }
    return text;
}

/// @param spare  Rows that wide names may still take.
void drawMember(const View& item, std::size_t member, Int& baseline, Int& spare)
{
    const Int middle = item.r.width() / 2, room = middle - 10;
    Str255 name = sShown->names[member];
    if (StringWidth(name) > room && --spare < 0)
        name = shortened(name, room);
    if (StringWidth(name) > room) {
        MoveTo(0, baseline);
        DrawString(name);
        baseline += kRowHeight;
        name = Str255{0};
    }
    PStrAppend(name, pstr(" –"));
    DrawToRight(name, middle, baseline);

    const Int illness = sShown->illness[member];
    const Str255 state =
        illness == kWell ? ListString(kHealthWords, sShown->health / 35 + 1) : ListString(kIllnessWords, illness + 1);
    MoveTo(middle, baseline);
    DrawString(state);
    EraseRect({baseline - 10, middle + StringWidth(state), baseline + 2, item.r.width()});
    baseline += kRowHeight;
}

Int partyItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item)) {
            AddTimer(item, 60);
            takeParty();
        }
        return 1;
    case kMsgDraw: DrawParty(item); return 1;
    case kMsgTimer:
        if (partyChanged()) {
            takeParty();
            if (item.disabled == 0)
                DrawParty(item);
        }
        return 1;
    default: return TimedItem(item, msg);
    }
}

// ---- The supplies

void takeSupplies()
{
    sShown->supply = shownWagon().supply;
    sShown->money = shownWagon().money;
}

bool suppliesChanged()
{
    const Wagon& wagon = shownWagon();
    return wagon.money != sShown->money
        || !std::equal(wagon.supply.begin(), wagon.supply.end(), sShown->supply.begin(),
            [](Int a, Int b) { return Held16(a) == Held16(b); });
}

void drawGoods(Int slot, Int column)
{
    const Int amount = sShown->supply[static_cast<std::size_t>(slot)];
    const Int shown = slot == kOxen ? (amount + 1) / 2 : amount;
    const Int baseline = kFirstBaseline + kRowHeight * slot;
    Str255 number;
    NumToCommas(shown, number);
    DrawToRight(number, column, baseline);
    Str255 word = ListString(kGoods, slot + (shown == 1 ? 8 : 1));
    PStrAppend(word, pstr("    ")); // wipes the end of a longer word
    MoveTo(column + 6, baseline);
    DrawString(word);
}

void drawMoney(Int column)
{
    constexpr Int kCentsLength = 3; // the point and two digits
    const Int baseline = kFirstBaseline + kRowHeight * kSupplyCount;
    Str255 amount, text = pstr("$");
    CentsToString(sShown->money, amount);
    StrReplace(amount, std::max<Int>(amount[0] - kCentsLength, 0), kCentsLength, nullptr);
    PStrAppend(text, amount);
    DrawToRight(text, column, baseline);
    MoveTo(column + 6, baseline);
    DrawString(ListString(kMoneyWord, 1));
}

Int suppliesItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item)) {
            AddTimer(item, 60);
            takeSupplies();
        }
        return 1;
    case kMsgDraw: DrawSupplies(item); return 1;
    case kMsgTimer:
        if (gState.order[static_cast<std::size_t>(sShown->slot & 31)] != kNobody && suppliesChanged()) {
            takeSupplies();
            if (gState.mode != 0 && item.disabled == 0)
                DrawSupplies(item);
        }
        return 1;
    default: return TimedItem(item, msg);
    }
}

// ---- The panel

Int occupationItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item))
            sShown->occupation = shownWagon().occupation + 1;
        return 1;
    case kMsgDraw: DrawOccupation(item); return 1;
    default: return UserItem.fn(item, msg);
    }
}

Int partyPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            sShown->slot = gMySlot;
            AddTimer(panel, 60);
            InstallUserItem(panel, kOccupationItem, OccupationItem);
            InstallUserItem(panel, kSuppliesItem, SuppliesItem);
            InstallUserItem(panel, kPartyItem, PartyItem);
        } else {
            panel.style = {6322, 0, 1, 12, 0};
        }
        return PanelDescriptor(1, 10, 6183);
    case kMsgClose: RemoveTimer(panel); return 1;
    default: return 0;
    }
}

} // namespace

const ViewProc PartyPanel{partyPanelProc};
const ViewProc OccupationItem{occupationItemProc};
const ViewProc PartyItem{partyItemProc};
const ViewProc SuppliesItem{suppliesItemProc};

void DrawOccupation(View& item)
{
    const ViewPortScope port(item);
    const OriginScope origin(item);
    const StyleScope style(kRowStyle);
    const Int middle = item.r.width() / 2;
    DrawToRight(ListString(kOccupations, 9), middle, kFirstBaseline);
    MoveTo(middle + 4, kFirstBaseline);
    DrawString(ListString(kOccupations, sShown->occupation));
}

void DrawParty(View& item)
{
    const ViewPortScope port(item);
    const OriginScope origin(item);
    const StyleScope style(kRowStyle);
    Int baseline = kFirstBaseline, spare = (item.r.height() - kFirstBaseline) / kRowHeight + 1 - sShown->people;
    for (Int member = 0; member < sShown->people; ++member)
        drawMember(item, static_cast<std::size_t>(member), baseline, spare);
}

void DrawSupplies(View& item)
{
    const ViewPortScope port(item);
    const OriginScope origin(item);
    const StyleScope style(kRowStyle);
    const Int column = HeldS16(5 * item.r.width() / 14);
    for (Int slot = 0; slot < kSupplyCount; ++slot)
        drawGoods(slot, column);
    drawMoney(column);
}

} // namespace Wainroad
