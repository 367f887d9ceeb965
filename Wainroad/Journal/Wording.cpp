#include "Wainroad/Journal/Wording.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Journal/Names.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Records.h"

#include <algorithm>

namespace Wainroad {

using Message = std::span<const std::uint8_t>;

// The lists. The second of each pair tells of another wagon.
static constexpr Int kFragments = 1500, kTrainNews = 1501, kMyEvents = 1502, kEvents = 1522, kMyGoods = 1503,
                     kGoodsNews = 1523, kMyChat = 1504, kChat = 1524, kMyTrades = 1505, kTrades = 1525,
                     kMyRequests = 1506, kRequests = 1526, kDecisions = 1507;
static constexpr Int kLandmarks = 3002, kPaces = 3009, kRations = 3010, kGoods = 3011, kMonths = 3014, kReasons = 3019,
                     kMyReasons = 3020;

/// Entries of `kFragments`.
enum Fragment : Int {
    kSomeoneOf = 1,
    kMyWagon = 2,
    kSpeaksFor = 3,
    kMyPossessive = 4,
    kAnd = 5,
    kSeparator = 8,
    kNo = 9,
    kYes = 10,
    kAlone = 11,
    kTheTrain = 12,
    kPossessiveEnding = 13,
    kPluralEnding = 14
};

static constexpr std::uint8_t kBullet = 165;

static Str255 Entry(Int list, Int index)
{
    Str255 text;
    GetIndString(text, list, index);
    return text;
}

static Str255 Number(Int n)
{
    Str255 text;
    NumToString(n, text);
    return text;
}

static Str255 Lowered(Str255 text)
{
    LowerString(text);
    return text;
}

static Str255 NameOfSlot(Int slot) { return gState.names[static_cast<std::size_t>(slot & 31)]; }

static Int Slot(Int who) { return who & 31; }

void LowerString(Str255& text)
{
    for (std::size_t i = 1; i < text.size(); ++i)
        if (text[i] >= 'A' && text[i] <= 'Z')
            text[i] = static_cast<std::uint8_t>(text[i] + 32);
}

static Int PlaceOf(const Str255& text, Int n)
{
    return PStrPos(Str255{2, '^', static_cast<std::uint8_t>('0' + n)}, text);
}

void FillPlace(Str255& text, Int n, const Str255& words)
{
    if (const Int at = PlaceOf(text, n); at >= 0)
        StrReplace(text, at, 2, words);
}

/// The words with a small first letter, unless the text begins with place 6.
static Str255 AtPlaceSix(const Str255& text, Str255 words)
{
    if (PlaceOf(text, 6) != 0 && words.size() > 1 && words[1] >= 'A' && words[1] <= 'Z')
        words[1] = static_cast<std::uint8_t>(words[1] + 32);
    return words;
}

void WagonRef(Str255& text, Int slot)
{
    if (slot == gMySlot) {
        FillPlace(text, 6, AtPlaceSix(text, Entry(kFragments, kMyWagon)));
        return;
    }
    Str255 name;
    WagonName(name, slot);
    FillPlace(text, 6, name);
}

void PersonRef(Str255& text, Int who)
{
    const Int slot = Slot(who), person = who >> 5;
    Str255 name{0};
    if (slot != gMySlot) {
        Str255 wagon;
        WagonName(wagon, slot);
        name = Entry(kFragments, kSomeoneOf);
        FillPlace(name, 0, wagon);
    } else if (person == 0) {
        WagonName(name, slot);
    } else if (person < kMaxPeople) {
        name = WagonOf(gState, slot).family[static_cast<std::size_t>(person - 1)];
    }
    FillPlace(text, 0, name);
}

Int LastComma(const Str255& text)
{
    const Str255 separator = Entry(kFragments, kSeparator);
    const auto body = characters(text), sought = characters(separator);
    const auto found = std::find_end(body.begin(), body.end(), sought.begin(), sought.end());
    return sought.empty() || found == body.end() ? -1 : found - body.begin();
}

// Dates

static Str255 FormatDate(Message message)
{
    ByteReader in(message, 2);
    const Int year = in.s16(), month = in.u8(), day = in.u8();
    Str255 text{2, kBullet, ' '};
    PStrAppend(text, Entry(kMonths, month));
    PStrAppend(text, pstr(" "));
    PStrAppend(text, Number(day));
    PStrAppend(text, pstr(", "));
    PStrAppend(text, Number(year));
    PStrAppend(text, Str255{2, ' ', kBullet});
    return text;
}

// Events

/// How many drowned in the party of a wagon.
static Str255 FormatDrowned(Int who)
{
    const Int slot = Slot(who), count = who >> 5;
    Str255 text = Entry(kMyEvents, 53 - 19);
    FillPlace(text, 7, Number(count));
    FillPlace(text, 5, count >= 2 ? Entry(kFragments, kPluralEnding) : pstr(" "));
    Str255 owner = Entry(kFragments, kMyPossessive);
    if (slot != gMySlot) {
        WagonName(owner, slot);
        PStrAppend(owner, Entry(kFragments, kPossessiveEnding));
    } else {
        owner = AtPlaceSix(text, owner);
    }
    FillPlace(text, 6, owner);
    return text;
}

/// The entry of an event about a wagon, in the person that fits.
static Str255 WagonEvent(Int code, Int slot)
{
    if (slot == gMySlot)
        return Entry(kMyEvents, code - 19);
    Str255 text = Entry(kEvents, code - 19);
    WagonRef(text, slot);
    return text;
}

static Str255 FormatTrainForms(Int slot)
{
    Str255 text;
    if (gState.slots > 1) {
        text = Entry(slot < kNobody ? kMyEvents : kEvents, 48 - 19);
        FillPlace(text, 6, NameOfSlot(slot));
    } else {
        text = Entry(kFragments, kAlone);
    }
    FillPlace(text, 5, Number(gState.slots));
    return text;
}

static Str255 FormatEvent(Message message)
{
    const Int code = message[0], b = message[1], index = code - 19;
    Str255 text = Entry(kMyEvents, index);
    switch (code) {
    case 21:
    case 22:
    case 23:
    case 24:
    case 35: return WagonEvent(code, Slot(b));
    case 30:
    case 31:
    case 32:
    case 33:
    case 34:
        text = WagonEvent(code, Slot(b));
        FillPlace(text, 2, Entry(kGoods, 8 | b >> 5));
        return text;
    case 43: FillPlace(text, 5, Lowered(Entry(kRations, (b >> 5) + 1))); return text;
    case 44:
        if (Slot(b) == gMySlot)
            return Entry(kEvents, index);
        WagonRef(text, Slot(b));
        return text;
    case 45:
        if (gState.wagons == 1)
            text = Entry(kMyEvents, index + 1);
        FillPlace(text, 5, Entry(kLandmarks, b + 1));
        return text;
    case 46:
    case 49: WagonRef(text, Slot(b)); return text;
    case 47:
        if ((b & 224) == 0)
            return Entry(kEvents, index);
        FillPlace(text, 5, Number(Slot(b)));
        return text;
    case 48: return FormatTrainForms(b);
    case 50:
        if (b < kNobody)
            FillPlace(text, 6, NameOfSlot(b));
        else
            text = Entry(kEvents, index);
        FillPlace(text, 5, Number(gState.wagons));
        return text;
    case 51: FillPlace(text, 6, NameOfSlot(b)); return text;
    case 53: return FormatDrowned(b);
    case 60: return Entry(kEvents, index);
    case 20:
    case 25:
    case 61:
    case 62: return text;
    default: // illness, recovery, death: of a person
        PersonRef(text, b);
        return text;
    }
}

// Goods

static Str255 FormatSupplies(Message message)
{
    ByteReader in(message, 1);
    const Int slot = in.u8();
    Str255 list{0};
    const auto append = [&list](Int item, Int count) {
        if (count >= 1)
            AppendAmount(list, item, count);
    };
    append(kOxen, (in.u8() + 1) / 2);
    append(kClothes, in.u8());
    append(kBullets, in.s16());
    for (const Int part : {kFirstPart, kSecondPart, kThirdPart})
        append(part, in.u8());
    in.skip(1);
    append(kFood, in.s16());
    append(7, in.s32());
    if (const Int comma = LastComma(list); comma >= 0)
        StrReplace(list, comma, I(characters(Entry(kFragments, kSeparator)).size()), Entry(kFragments, kAnd));

    const Int code = message[0], index = code - 62;
    const bool some = slot == gMySlot && list.size() > 1;
    Str255 text = Entry(some || (code != 63 && code != 66) ? kMyGoods : kGoodsNews, index);
    WagonRef(text, slot);
    FillPlace(text, 2, list);
    return text;
}

/// One good of a trade in words; "nothing" has no count of its own.
static Str255 TradeAmount(Int item, Int amount)
{
    constexpr Int kNothing = 8;
    Str255 text{0};
    if (item <= kNothing)
        AppendAmount(text, item, item == kNothing ? 1 : amount);
    return text;
}

static Str255 FormatTrade(Message message)
{
    ByteReader in(message);
    const Int code = in.u8(), first = in.u8(), second = in.u8(), items = in.u8();
    const Int firstAmount = in.s32(), secondAmount = in.s32(), index = code - 69;
    Str255 text;
    if (second == gMySlot) {
        text = Entry(kMyTrades, index);
        if (code >= 72)
            WagonRef(text, first);
    } else if (first != gMySlot && code == 72) {
        text = Entry(kMyTrades, 11);
        Str255 name;
        WagonName(name, first);
        FillPlace(text, 0, name);
        WagonName(name, second);
        FillPlace(text, 3, name);
    } else {
        text = Entry(kTrades, index);
        if (code >= 71)
            WagonRef(text, second);
    }
    FillPlace(text, 2, TradeAmount(items & 15, firstAmount));
    if (code >= 72)
        FillPlace(text, 4, TradeAmount(items >> 4, secondAmount));
    return text;
}

// Requests and decisions

static Str255 FormatRequest(Message message)
{
    const Int code = message[0], slot = message[1], a = message[2], index = code - 84;
    Str255 text = Entry(kMyRequests, index);
    if (code == 88 && a <= 1)
        text = Entry(kRequests, a == 1 ? index : 5);
    WagonRef(text, slot);
    switch (code) {
    case 88: FillPlace(text, 5, Number(a)); break;
    case 89: FillPlace(text, 5, Lowered(Entry(kPaces, a + 1))); break;
    case 92: {
        Str255 name;
        WagonName(name, a);
        FillPlace(text, 5, Entry(kFragments, kSpeaksFor));
        FillPlace(text, 6, name);
        break;
    }
    case 93: FillPlace(text, 5, Entry(kFragments, a != 0 ? kYes : kNo)); break;
    }
    return text;
}

/// What the player chose, behind the words "You choose".
static Str255 FormatAction(Int action, Int a)
{
    const auto entry = [](Int index) { return Entry(kDecisions, index); };
    Str255 text = entry(5);
    switch (action) {
    case 1: PStrAppend(text, entry(7)); break;
    case 2: PStrAppend(text, entry(8)); break;
    case 3: PStrAppend(text, entry(15)); break;
    case 4:
        PStrAppend(text, entry(a == 1 ? 16 : 17));
        FillPlace(text, 5, Number(a));
        break;
    case 5:
        PStrAppend(text, entry(18));
        FillPlace(text, 5, Lowered(Entry(kPaces, a + 1)));
        break;
    case 6: PStrAppend(text, entry(20)); break;
    case 7:
        PStrAppend(text, entry(21));
        FillPlace(text, 6, NameOfSlot(a));
        break;
    case 8:
        PStrAppend(text, entry(22));
        FillPlace(text, 5, Entry(kFragments, a == kNobody ? kNo : kYes));
        break;
    case 9:
        PStrAppend(text, entry(23));
        WagonRef(text, a);
        break;
    case 10: PStrAppend(text, entry(19)); break;
    case 17: PStrAppend(text, entry(26)); break;
    case 66:
        if (a <= 16)
            PStrAppend(text, entry(9));
        PStrAppend(text, Entry(kLandmarks, a + 1));
        break;
    case 130:
        text = entry(10);
        FillPlace(text, 5, entry((a >> 5 & 7) + 11));
        break;
    }
    return text;
}

static Str255 FormatDecision(Message message)
{
    const Int code = message[0], b = message[1], a = message[2];
    Str255 text = Entry(kDecisions, code - 104);
    switch (code) {
    case 105: FillPlace(text, 5, Number(a)); break;
    case 109: return FormatAction(b, a);
    case 110:
        FillPlace(text, 0, Entry(kFragments, gState.wagons > 1 ? kTheTrain : kMyWagon));
        WagonRef(text, b);
        PStrAppend(text, Entry(b == gMySlot ? kMyReasons : kReasons, a));
        break;
    case 111:
        text = Entry(kDecisions, b == 1 ? 25 : 24);
        FillPlace(text, 7, Number(b));
        FillPlace(text, 5, Number(a + b));
        break;
    }
    return text;
}

// Chat

static Str255 FormatChat(Message message)
{
    const Int code = message[0], sender = message[1];
    const bool mine = sender == gMySlot;
    const auto said = message.subspan(2, std::size_t{1} + message[2]);
    const Int list = mine ? kMyChat : kChat;
    Str255 text = Entry(list, 2);
    if (code == 118) {
        const auto slots = message.subspan(2 + said.size());
        const Int count = slots[0];
        text = Entry(list, count == 1 ? 3 : 1);
        Str255 to = Number(count);
        if (count == 1)
            WagonName(to, slots[1]);
        FillPlace(text, 5, to);
    }
    if (!mine)
        WagonRef(text, sender);
    FillPlace(text, 1, Str255(said.begin(), said.end()));
    return text;
}

// All

Str255 MessageText(Message message)
{
    if (MessageSize(message) == 0)
        return {0};
    const Int code = message[0];
    Str255 text{0};
    if (code == kLogDate)
        text = FormatDate(message);
    else if (code < 20)
        text = Entry(kTrainNews, code + 1);
    else if (code <= 62)
        text = FormatEvent(message);
    else if (code <= 69)
        text = FormatSupplies(message);
    else if (code <= 84)
        text = FormatTrade(message);
    else if (code <= 95)
        text = FormatRequest(message);
    else if (code >= 105 && code <= 111)
        text = FormatDecision(message);
    else if (code == 118 || code == 119)
        text = FormatChat(message);
    if (text.size() > 1 && text.back() >= 65 && text.back() <= 121)
        PStrAppend(text, pstr("."));
    return text;
}

Int MessageFace(Message message)
{
    const Int code = message[0], b = message.size() > 1 ? I(message[1]) : 0;
    const bool mine = Slot(b) == gMySlot;
    switch (code) {
    case 71:
    case 88: return 1;
    case 118:
    case 119: return b != gMySlot;
    case 23:
    case 24:
    case 26:
    case 27:
    case 29:
    case 34:
    case 35:
    case 64:
    case 65:
    case 66: return mine;
    }
    return mine && ((code >= 37 && code <= 42) || (code >= 53 && code <= 59));
}

} // namespace Wainroad
