#include "Tools/rsrc/Check.h"
#include "Tools/rsrc/Expectations.h"
#include "Tools/rsrc/Forms.h"

#include <algorithm>
#include <cstring>

namespace Rsrc {

namespace {

constexpr Int kDisabled = 128, kIconButton = 160;
constexpr Int kKinds[] = {0, 4, 5, 6, 7, 8, 16, 32, 64};

std::string itemText(std::size_t index) { return "item " + std::to_string(index + 1); }

/// True if the type byte is one that the letter of the needs allows.
bool allowed(char need, Int type)
{
    switch (need) {
    case 'B': return type == 4;
    case 'c': return type == 4 || type == 7;
    case 'C': return type == 7;
    case 'r': return type == 6;
    case 'e': return type == 16;
    case 't': return type == 8 + kDisabled;
    case 'u': return (type & ~kDisabled) == 0;
    case 'U': return type == 0;
    default: return true;
    }
}

void checkItems(Int id, const std::vector<Item>& items, const char* needs, const char* placeholders, const Stock& stock,
    Findings& findings)
{
    const std::size_t wanted = std::strlen(needs);
    if (items.size() < wanted)
        findings.fault("DITL", id, std::to_string(items.size()) + " items, " + std::to_string(wanted) + " are wanted");
    for (std::size_t i = 0; i < items.size(); ++i) {
        const Item& item = items[i];
        const Int kind = item.type & ~kDisabled;
        const auto fault = [&](const std::string& text) { findings.fault("DITL", id, itemText(i) + ' ' + text); };
        if (i < wanted && !allowed(needs[i], item.type))
            fault("has the type byte " + std::to_string(item.type) + ", which does not do for \"" + needs[i] + '"');
        if (std::find(std::begin(kKinds), std::end(kKinds), kind) == std::end(kKinds))
            fault("has a kind that ends the list");
        if (kind == 8 && item.type != 8 + kDisabled)
            fault("is static text that takes clicks");
        for (std::size_t at = 0; kind == 8 && at + 1 < item.data.size(); ++at)
            if (const char digit = static_cast<char>(item.data[at + 1]);
                item.data[at] == '^' && digit >= '0' && digit <= '3' && !std::strchr(placeholders, digit))
                fault(std::string("holds ^") + digit + ", which nothing fills here");
        if (kind != 7 && kind != 32 && kind != 64)
            continue;
        const char* type = kind == 7 ? "CNTL" : kind == 32 ? "ICON" : "PICT";
        if (item.data.size() != 2 || !stock.find(type, Block(item.data).s16(0)))
            fault(std::string("names a ") + type + " that is missing");
    }
}

bool liesIn(const Rect& r, Int height, Int width)
{
    return r.top >= 0 && r.left >= 0 && r.top <= r.bottom && r.left <= r.right && r.bottom <= height
        && r.right <= width;
}

bool takesClicks(const Item& item) { return (item.type & kDisabled) == 0; }

/// Items that share a place on purpose: of each pair only one is ever enabled.
bool sharePlace(Int id, std::size_t low, std::size_t high)
{
    return (id == 9030 && low == 15 && high == 24) || ((id == 8070 || id == 8075) && low == 2 && high == 3);
}

void checkPlaces(const PanelNeeds& need, const std::vector<Item>& items, Int height, Int width, Findings& findings)
{
    const auto fault = [&](std::size_t i, const std::string& text) {
        findings.fault("DITL", need.id, itemText(i) + ' ' + text);
    };
    for (std::size_t i = 0; i < items.size(); ++i) {
        const Rect& r = items[i].rect;
        if (!liesIn(r, height, width))
            fault(i,
                "does not lie in the panel, " + std::to_string(height) + " high and " + std::to_string(width)
                    + " wide");
        for (std::size_t low = 0; low < i; ++low)
            if (takesClicks(items[low]) && r.intersects(items[low].rect) && !sharePlace(need.id, low, i))
                fault(i, "lies over " + itemText(low) + ", which takes clicks");
        if ((items[i].type & ~kDisabled) == 16 && !liesIn(r.insetBy(-4, -3), height, width))
            findings.note("DITL", need.id, itemText(i) + " has no room for its frame");
    }
    if (need.ringed > 0 && need.ringed <= I(items.size()) && need.id != 9030) {
        const Rect ring = items[static_cast<std::size_t>(need.ringed - 1)].rect.insetBy(-4, -4);
        if (!liesIn(ring, height, width))
            findings.note("DITL", need.id, "the ring of the default button leaves the panel");
        for (std::size_t i = 0; i < items.size(); ++i)
            if (I(i) != need.ringed - 1 && takesClicks(items[i]) && (items[i].type & ~kDisabled) != 0
                && ring.intersects(items[i].rect))
                findings.note("DITL", need.id, "the ring of the default button touches " + itemText(i));
    }
}

void checkPushButtons(const PanelNeeds& need, const std::vector<Item>& items, Findings& findings)
{
    if (std::strcmp(need.pushButtons, "-") == 0)
        return;
    std::vector<Int> found;
    for (std::size_t i = 0; i < items.size(); ++i)
        if (items[i].type == 4)
            found.push_back(I(i) + 1);
    if (found != numbersOf(need.pushButtons))
        findings.fault("DITL", need.id, std::string("the push buttons have to be the items ") + need.pushButtons);
}

/// The item of a panel that stands for a list within it.
std::optional<Rect> groupRect(const Stock& stock, Int list)
{
    const Int panel = list == 6121 ? 6120 : 9020;
    const std::size_t index = list == 6121 ? 3 : 7;
    const Bytes* data = stock.find("DITL", panel);
    const auto items = data ? itemsOf(*data) : std::nullopt;
    return items && items->size() > index ? std::optional((*items)[index].rect) : std::nullopt;
}

void checkPanel(const PanelNeeds& need, const Stock& stock, Findings& findings)
{
    const Bytes* data = stock.find("DITL", need.id);
    if (!data)
        return;
    const auto items = itemsOf(*data);
    if (!items)
        return findings.fault("DITL", need.id, "is damaged");
    checkItems(need.id, *items, need.items, need.placeholders, stock, findings);
    checkPushButtons(need, *items, findings);
    const std::optional<Rect> group = need.height == 0 ? groupRect(stock, need.id) : std::nullopt;
    if (need.height > 0)
        checkPlaces(need, *items, need.height, need.width, findings);
    else if (group)
        checkPlaces(need, *items, group->height(), group->width(), findings);
}

/// Items whose place the code relies on.
void checkFixedPlaces(const Stock& stock, Findings& findings)
{
    constexpr struct {
        Int id, item;
        Rect rect;
    } kPlaces[] = {{5000, 1, {0, 0, 304, 52}}, {5100, 1, {0, 0, 77, 262}}, {5200, 1, {0, 0, 119, 262}},
        {5300, 1, {0, 0, 155, 262}}, {5310, 1, {0, 0, 155, 262}}, {5600, 1, {0, 0, 251, 119}},
        {5800, 1, {0, 0, 304, 52}}, {6020, 1, {0, 0, 199, 262}}, {9000, 1, {0, 0, 304, 494}},
        {9160, 3, {25, 0, 304, 494}}, {9200, 1, {0, 0, 304, 494}}};
    for (const auto& place : kPlaces) {
        const Bytes* data = stock.find("DITL", place.id);
        const auto items = data ? itemsOf(*data) : std::nullopt;
        if (items && I(items->size()) >= place.item
            && (*items)[static_cast<std::size_t>(place.item - 1)].rect != place.rect)
            findings.fault("DITL", place.id, "item " + std::to_string(place.item) + " has to be " + shown(place.rect));
    }
    const Bytes* store = stock.find("DITL", 9030);
    const auto items = store ? itemsOf(*store) : std::nullopt;
    if (!items || items->size() < 29)
        return;
    if ((*items)[15].rect.topLeft() != (*items)[24].rect.topLeft())
        findings.fault("DITL", 9030, "items 16 and 25 have to begin in one place");
    for (std::size_t i = 0; i < items->size(); ++i)
        if ((*items)[i].type == 16 && (i < 16 || i > 22))
            findings.fault("DITL", 9030, itemText(i) + " is an edit item; only 17 to 23 are");
}

constexpr Int kMostDialogHeight = 306, kMostDialogWidth = 496;

void checkDialogs(const Stock& stock, Findings& findings)
{
    for (const DialogNeeds& need : dialogNeeds()) {
        const Bytes* data = stock.find("DITL", need.id);
        if (!data)
            continue;
        const auto items = itemsOf(*data);
        if (!items)
            findings.fault("DITL", need.id, "is damaged");
        else
            checkItems(need.id, *items, need.items, need.placeholders, stock, findings);
    }
    for (const Int id : stock.ids("DLOG")) {
        const Block b(*stock.find("DLOG", id));
        if (b.count() < 8 || (b.count() < 21 && id > -3999))
            findings.fault("DLOG", id, "is too short");
        if (b.count() < 21 || id <= -3999)
            continue;
        const Rect r = b.rect(0);
        if (r.isEmpty() || r.height() > kMostDialogHeight || r.width() > kMostDialogWidth)
            findings.fault("DLOG", id, "is empty or larger than the window");
        if (b.u8(10) != 0)
            findings.fault("DLOG", id, "is visible at once, before it stands in its place");
        if (!stock.find("DITL", b.s16(18)))
            findings.fault("DLOG", id, "names a DITL that is missing");
        if ((id == 2047 && (r.height() < 160 || r.width() < 210)) || (id == 2050 && r.height() < 266))
            findings.fault("DLOG", id, "is too small for what is drawn there");
        if (const Bytes* data = stock.find("DITL", b.s16(18)))
            if (const auto items = itemsOf(*data))
                for (std::size_t i = 0; i < items->size(); ++i)
                    if (!liesIn((*items)[i].rect, r.height(), r.width()))
                        findings.note("DITL", b.s16(18), itemText(i) + " reaches out of its dialog");
    }
    for (const Int id : stock.ids("ALRT")) {
        const Block b(*stock.find("ALRT", id));
        if (b.count() < 12)
            findings.fault("ALRT", id, "is too short");
        else if (!stock.find("DITL", b.s16(8)))
            findings.fault("ALRT", id, "names a DITL that is missing");
        else if (b.u16(10) & 8)
            findings.fault("ALRT", id, "makes item 2 the default");
    }
}

void checkWindow(const Stock& stock, Findings& findings)
{
    const Bytes* data = stock.find("WIND", 1000);
    if (!data)
        return;
    const Block b(*data);
    if (b.count() < 19 || b.rect(0) != Rect{20, 0, 342, 512})
        findings.fault("WIND", 1000, "has to be [20, 0, 342, 512]");
}

void checkControls(const Stock& stock, Findings& findings)
{
    constexpr struct {
        Int id, item, procID;
    } kControls[] = {{5000, 5, 160}, {5800, 5, 160}, {5500, 2, 16}, {6020, 2, 128}, {6020, 6, 224}};
    for (const auto& want : kControls) {
        const Bytes* data = stock.find("DITL", want.id);
        const auto items = data ? itemsOf(*data) : std::nullopt;
        if (!items || I(items->size()) < want.item
            || (*items)[static_cast<std::size_t>(want.item - 1)].data.size() != 2)
            continue;
        const Int control = Block((*items)[static_cast<std::size_t>(want.item - 1)].data).s16(0);
        const Bytes* form = stock.find("CNTL", control);
        if (form && (form->size() < 23 || Block(*form).s16(16) != want.procID))
            findings.fault("CNTL", control, "has to have the procID " + std::to_string(want.procID));
    }
    for (const Int id : stock.ids("CNTL")) {
        const Block b(*stock.find("CNTL", id));
        if (b.count() < 23) {
            findings.fault("CNTL", id, "is too short");
            continue;
        }
        const Bytes* icon = stock.find("ICON", LoWord(b.s32(18)));
        if (b.s16(16) == kIconButton && (!icon || icon->size() < 128))
            findings.fault("CNTL", id, "names an ICON that is missing");
        if (b.s16(16) == kIconButton && b.u8(10) == 0)
            findings.note("CNTL", id, "is an invisible icon button, which is disabled");
    }
}

} // namespace

void checkLayouts(const Stock& stock, Findings& findings)
{
    checkWindow(stock, findings);
    for (const PanelNeeds& need : panelNeeds())
        checkPanel(need, stock, findings);
    checkFixedPlaces(stock, findings);
    checkDialogs(stock, findings);
    checkControls(stock, findings);
    for (const char* type : {"ICON", "CURS"})
        for (const Int id : stock.ids(type))
            if (stock.find(type, id)->size() < (std::strcmp(type, "ICON") == 0 ? 128U : 68U))
                findings.fault(type, id, "is too short");
    if (const Bytes* keys = stock.find("CDEF", 10); keys && keys->size() < 1808)
        findings.fault("CDEF", 10, "is too short");
}

} // namespace Rsrc
