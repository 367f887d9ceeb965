#include "Tools/rsrc/Check.h"
#include "Tools/rsrc/Expectations.h"
#include "Tools/rsrc/Forms.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace Rsrc {

namespace {

constexpr Int kMenuKeyPeriod = '.', kCheckMark = 18, kAppleTitle = 0x14;

std::string_view view(const Bytes& bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

struct MenuItem {
    Bytes text;
    Int key = 0, mark = 0;
};

struct Menu {
    Int flags = 0;
    Bytes title;
    std::vector<MenuItem> items;
};

std::optional<Menu> menuOf(const Bytes& data)
{
    if (data.size() < 16)
        return std::nullopt;
    ByteReader in(data, 10);
    Menu menu;
    menu.flags = in.u32();
    menu.title = in.raw(in.u8());
    while (!in.atEnd()) {
        const Int length = in.u8();
        if (length == 0)
            return menu;
        MenuItem item;
        item.text = in.raw(length);
        in.skip(1);
        item.key = in.u8();
        item.mark = in.u8();
        in.skip(1);
        menu.items.push_back(std::move(item));
    }
    return std::nullopt;
}

/// One text of a list; empty if it is not there.
Bytes textOf(const Stock& stock, Int list, Int index)
{
    const Bytes* data = stock.find("STR#", list);
    const auto texts = data ? stringsOf(*data) : std::nullopt;
    return texts && index <= I(texts->size()) ? (*texts)[static_cast<std::size_t>(index - 1)] : Bytes{};
}

void checkMenu(const MenuNeeds& need, const Menu& menu, const Stock& stock, Findings& findings)
{
    const auto fault = [&](const std::string& text) { findings.fault("MENU", need.id, text); };
    if (I(menu.items.size()) < need.items || (need.id == 52 && I(menu.items.size()) != need.items))
        return fault("has " + std::to_string(menu.items.size()) + " items, not " + std::to_string(need.items));
    if ((menu.flags & 1) == 0)
        fault("is disabled as a whole");
    const std::vector<Int> disabled = numbersOf(need.disabled);
    for (Int n = 1; n <= need.items; ++n) {
        const bool enabled = menu.flags >> n & 1,
                   wanted = std::find(disabled.begin(), disabled.end(), n) == disabled.end();
        if (enabled != wanted)
            fault("item " + std::to_string(n) + (wanted ? " has to be enabled" : " has to be disabled"));
    }
    for (const MenuItem& item : menu.items)
        if (item.key == kMenuKeyPeriod)
            fault("no item may have the key \".\"");
    if (need.id == 1000 && menu.title != Bytes{kAppleTitle})
        fault("the title has to be the character 20");
    if (need.id == 1001 && menu.items[6].key != 'Q')
        fault("item 7 has to have the key Q");
    if (need.id == 1003 && menu.items[1].mark != kCheckMark)
        fault("item 2 has to have the mark 18");
    if (need.id == 1004
        && (menu.items[1].text != textOf(stock, 1004, 1) || menu.items[5].text != textOf(stock, 1004, 4)))
        fault("items 2 and 6 have to read as STR# 1004 index 1 and 4");
}

void checkList(const ListNeeds& need, const Bytes& data, Findings& findings)
{
    const auto texts = stringsOf(data);
    if (!texts)
        return findings.fault("STR#", need.id, "is damaged");
    if (need.more ? I(texts->size()) < need.count : I(texts->size()) != need.count)
        findings.fault(
            "STR#", need.id, "has " + std::to_string(texts->size()) + " texts, not " + std::to_string(need.count));
    for (const Int index : numbersOf(need.shown))
        if (index <= I(texts->size()) && (*texts)[static_cast<std::size_t>(index - 1)].empty())
            findings.fault("STR#", need.id, "index " + std::to_string(index) + " is empty, and a player may see it");
}

/// What single texts must look like because of what the program does with them.
void checkWordings(const Stock& stock, Findings& findings)
{
    const auto fault = [&](Int list, Int index, const std::string& text) {
        findings.fault("STR#", list, "index " + std::to_string(index) + ' ' + text);
    };
    for (Int list = 3100; list <= 3117; ++list)
        for (const Int index : {1, 3, 5})
            if (const Bytes text = textOf(stock, list, index); !text.empty() && (text[0] < '0' || text[0] > '8'))
                fault(list, index, "has to begin with the digit of a picture, 0 to 8");
    for (const Int index : {1, 2}) {
        const Bytes offer = textOf(stock, 2051, index);
        for (std::size_t at = 0; at + 1 < offer.size(); ++at)
            if (offer[at] == '^' && (offer[at + 1] == '1' || offer[at + 1] == '3')
                && (at + 2 >= offer.size() || offer[at + 2] != ' '))
                fault(2051, index, "has to have a blank behind ^1 and ^3");
    }
    for (Int index = 1; index <= 13; ++index) {
        const Bytes text = textOf(stock, 1000, index);
        const std::size_t comma = view(text).find(',');
        if (!text.empty()
            && (comma == std::string_view::npos || comma == 0
                || view(text).substr(0, comma).find_first_not_of("-0123456789") != std::string_view::npos))
            fault(1000, index, "has to be a number, a comma and a text");
    }
    const Bytes file = textOf(stock, 3000, 5);
    if (file.size() > 63 || view(file).find('/') != std::string_view::npos)
        fault(3000, 5, "is the name of a file: at most 63 characters, no \"/\"");
    for (const Int index : {18, 19})
        if (textOf(stock, 3000, index).size() > 27)
            fault(3000, index, "has more than 27 characters");
    for (const Int index : {2, 3, 10, 13})
        if (const Bytes place = textOf(stock, 3002, index);
            !place.empty() && view(place).find("the ") == std::string_view::npos)
            fault(3002, index, "has to hold \"the \"");
    if (const Bytes separator = textOf(stock, 1500, 8); separator == Bytes{','})
        fault(1500, 8, "has to be more than a comma");
    for (const Int list : {1505, 1525})
        for (const Int index : list == 1505 ? std::vector<Int>{1, 7, 9} : std::vector<Int>{10})
            if (view(textOf(stock, list, index)).find("^6") != std::string_view::npos)
                fault(list, index, "must not hold ^6");
    for (const Int index : {5, 6, 9})
        if (const Bytes base = textOf(stock, 1507, index); !base.empty() && base.back() != ' ')
            fault(1507, index, "has to end in a blank: another text follows");
    for (const Int list : {3019, 3020})
        for (Int index = 1; index <= 7; ++index)
            if (const Bytes reason = textOf(stock, list, index); !reason.empty() && reason[0] == ' ')
                fault(list, index, "must not begin with a blank");
    if (const Bytes drowned = textOf(stock, 3021, 8); !drowned.empty() && drowned[0] == ' ')
        fault(3021, 8, "must not begin with a blank");
    for (const Int index : {8, 9})
        if (const Bytes unit = textOf(stock, 3013, index); !unit.empty() && unit[0] != ' ')
            fault(3013, index, "has to begin with a blank");
    if (view(textOf(stock, 1522, 25)).find('^') != std::string_view::npos)
        fault(1522, 25, "must hold no placeholder");
    for (const Int list : {1501, 1502, 1503, 1505, 1522, 1523, 1525})
        for (Int index = 1; index <= 43; ++index)
            if (const Bytes line = textOf(stock, list, index);
                !line.empty() && (line.back() == '.' || line.back() == 'z'))
                fault(list, index, "ends in a full stop or in \"z\"; the full stop is added behind A to y");
}

} // namespace

void checkMenus(const Stock& stock, Findings& findings)
{
    for (const MenuNeeds& need : menuNeeds()) {
        const Bytes* data = stock.find("MENU", need.id);
        if (!data)
            continue;
        const auto menu = menuOf(*data);
        if (!menu)
            findings.fault("MENU", need.id, "is damaged");
        else
            checkMenu(need, *menu, stock, findings);
    }
    ByteWriter bar;
    bar.u16(5);
    for (Int id = 1000; id <= 1004; ++id)
        bar.u16(id);
    if (const Bytes* data = stock.find("MBAR", 1000); data && *data != bar.bytes)
        findings.fault("MBAR", 1000, "has to hold the menus 1000 to 1004 in this order");
}

void checkTexts(const Stock& stock, Findings& findings)
{
    for (const ListNeeds& need : listNeeds())
        if (const Bytes* data = stock.find("STR#", need.id))
            checkList(need, *data, findings);
    checkWordings(stock, findings);
    for (Int id = 3151; id <= 3171; ++id) {
        const Bytes* data = stock.find("WST#", id);
        const auto texts = data ? guideStringsOf(*data) : std::nullopt;
        if (data && (!texts || I(texts->size()) != (id == 3171 ? 1 : 3)))
            findings.fault("WST#", id, "has to hold " + std::string(id == 3171 ? "one page" : "three pages"));
    }
}

} // namespace Rsrc
