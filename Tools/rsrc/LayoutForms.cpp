#include "Tools/rsrc/Forms.h"

namespace Rsrc {

namespace {

constexpr Int kNoClicks = 128;

enum class Holds { Text, Number, Nothing };

struct Kind {
    const char* name;
    Int code;
    Holds holds;
    bool disabled; ///< unless the source says otherwise
};
constexpr Kind kKinds[] = {{"button", 4, Holds::Text, false}, {"check", 5, Holds::Text, false},
    {"radio", 6, Holds::Text, false}, {"control", 7, Holds::Number, false}, {"text", 8, Holds::Text, true},
    {"edit", 16, Holds::Text, false}, {"icon", 32, Holds::Number, true}, {"picture", 64, Holds::Number, true},
    {"user", 0, Holds::Nothing, false}};

void put(ByteWriter& out, const Rect& r)
{
    for (const Int side : {r.top, r.left, r.bottom, r.right})
        out.u16(side);
}

Rect takeRect(ByteReader& in)
{
    Rect r;
    for (Int* side : {&r.top, &r.left, &r.bottom, &r.right})
        *side = in.s16();
    return r;
}

Bytes hexBytes(const Source& source)
{
    const std::string text = source.word();
    Bytes bytes;
    int digits = 0, value = 0;
    for (const char c : text) {
        if (c == ' ' || c == '\n')
            continue;
        const int digit = c >= '0' && c <= '9' ? c - '0'
            : c >= 'a' && c <= 'f'             ? c - 'a' + 10
            : c >= 'A' && c <= 'F'             ? c - 'A' + 10
                                               : -1;
        if (digit < 0)
            source.fail(std::string("\"") + c + "\" is no hexadecimal digit");
        value = value << 4 | digit;
        if (++digits % 2 == 0)
            bytes.push_back(static_cast<std::uint8_t>(value));
    }
    if (digits % 2 != 0)
        source.fail("half a byte is left over");
    return bytes;
}

/// The one kind that the item names, or nothing if it gives its type as a number.
const Kind* kindOf(const Source& item)
{
    const Kind* found = nullptr;
    for (const Kind& kind : kKinds) {
        if (!item.find(kind.name))
            continue;
        if (found)
            item.fail(std::string("an item is either \"") + found->name + "\" or \"" + kind.name + '"');
        found = &kind;
    }
    if (!found && !item.find("type"))
        item.fail("an item has a kind: button, check, radio, control, text, edit, icon, picture or user");
    if (found && item.find("type"))
        item.fail("\"type\" stands in place of a kind");
    return found;
}

Item compileItem(const Source& source)
{
    source.allow({"button", "check", "radio", "control", "text", "edit", "icon", "picture", "user", "type", "hex",
        "rect", "disabled"});
    Item item;
    item.rect = source.at("rect").rect();
    if (item.rect.bottom < item.rect.top || item.rect.right < item.rect.left)
        source.at("rect").fail("the rectangle ends before it begins");
    const Kind* kind = kindOf(source);
    if (!kind) {
        item.type = source.at("type").number(0, 255);
        item.data = source.find("hex") ? hexBytes(source.at("hex")) : Bytes{};
        if (item.data.size() > 255)
            source.fail("an item has at most 255 bytes");
        return item;
    }
    item.type = kind->code + (source.flag("disabled", kind->disabled) ? kNoClicks : 0);
    const Source value = source.at(kind->name);
    if (kind->holds == Holds::Text)
        item.data = value.roman(255);
    if (kind->holds == Holds::Number) {
        ByteWriter id;
        id.u16(value.number(-32768, 32767));
        item.data = id.bytes;
    }
    return item;
}

Bytes compileItems(const Source& entry, Int)
{
    entry.allow({"title", "items"});
    const std::vector<Source> items = entry.at("items").numbered(1);
    ByteWriter out;
    out.u16(I(items.size()) - 1);
    for (const Source& source : items) {
        const Item item = compileItem(source);
        out.u32(0);
        put(out, item.rect);
        out.u8(item.type);
        out.u8(I(item.data.size()));
        out.raw(item.data);
        out.zeros(item.data.size() % 2);
    }
    return out.bytes;
}

std::string showItem(const Item& item)
{
    const std::string rect = ", rect: " + shown(item.rect) + '}';
    for (const Kind& kind : kKinds) {
        if ((item.type & ~kNoClicks) != kind.code || (kind.holds == Holds::Number && item.data.size() != 2)
            || (kind.holds == Holds::Nothing && !item.data.empty())
            || (kind.holds == Holds::Text && !isText(item.data)))
            continue;
        std::string out = std::string("{") + kind.name + ": ";
        if (kind.holds == Holds::Text)
            out += quoted(item.data);
        else if (kind.holds == Holds::Number)
            out += std::to_string(Block(item.data).s16(0));
        else
            out += "\"\"";
        const bool disabled = (item.type & kNoClicks) != 0;
        if (disabled != kind.disabled)
            out += disabled ? ", disabled: true" : ", disabled: false";
        return out + rect;
    }
    return "{type: " + std::to_string(item.type) + ", hex: \"" + hexText(item.data) + '"' + rect;
}

std::optional<std::string> showItems(Int, const Bytes& data)
{
    const auto items = itemsOf(data);
    if (!items)
        return std::nullopt;
    std::string out = "\n    items:";
    for (std::size_t i = 0; i < items->size(); ++i)
        out += "\n      " + std::to_string(i + 1) + ": " + showItem((*items)[i]);
    return items->empty() ? out + " {}" : out;
}

std::string flagText(Int value) { return value != 0 ? "true" : "false"; }

Bytes compileDialog(const Source& entry, Int)
{
    entry.allow({"bounds", "procID", "visible", "goAway", "refCon", "items", "title"});
    ByteWriter out;
    put(out, entry.at("bounds").rect());
    out.u16(entry.number("procID", -32768, 32767, 1));
    out.u8(entry.flag("visible", false));
    out.u8(0);
    out.u8(entry.flag("goAway", false));
    out.u8(0);
    out.u32(entry.number("refCon", INT32_MIN, INT32_MAX, 0));
    out.u16(entry.at("items").number(-32768, 32767));
    out.raw(entry.counted("title"));
    return out.bytes;
}

std::optional<std::string> showDialog(Int, const Bytes& data)
{
    if (data.size() < 21)
        return std::nullopt;
    const Block b(data);
    return " {bounds: " + shown(b.rect(0)) + ", procID: " + std::to_string(b.s16(8)) + ", visible: "
        + flagText(b.u8(10)) + ", goAway: " + flagText(b.u8(12)) + ", refCon: " + std::to_string(b.s32(14))
        + ", items: " + std::to_string(b.s16(18)) + ", title: " + quoted(std::span(data).subspan(21)) + '}';
}

Bytes compileAlert(const Source& entry, Int)
{
    entry.allow({"bounds", "items", "stages"});
    ByteWriter out;
    put(out, entry.at("bounds").rect());
    out.u16(entry.at("items").number(-32768, 32767));
    out.u16(entry.number("stages", 0, 0xFFFF, 0x5555));
    return out.bytes;
}

std::optional<std::string> showAlert(Int, const Bytes& data)
{
    if (data.size() != 12)
        return std::nullopt;
    const Block b(data);
    return " {bounds: " + shown(b.rect(0)) + ", items: " + std::to_string(b.s16(8))
        + ", stages: " + std::to_string(b.u16(10)) + '}';
}

Bytes compileWindow(const Source& entry, Int)
{
    entry.allow({"bounds", "procID", "visible", "goAway", "refCon", "title"});
    ByteWriter out;
    put(out, entry.at("bounds").rect());
    out.u16(entry.number("procID", -32768, 32767, 2));
    out.u16(entry.flag("visible", false));
    out.u16(entry.flag("goAway", false));
    out.u32(entry.number("refCon", INT32_MIN, INT32_MAX, 0));
    out.raw(entry.counted("title"));
    return out.bytes;
}

std::optional<std::string> showWindow(Int, const Bytes& data)
{
    if (data.size() < 19)
        return std::nullopt;
    const Block b(data);
    return " {bounds: " + shown(b.rect(0)) + ", procID: " + std::to_string(b.s16(8))
        + ", visible: " + flagText(b.u16(10)) + ", goAway: " + flagText(b.u16(12))
        + ", refCon: " + std::to_string(b.s32(14)) + ", title: " + quoted(std::span(data).subspan(19)) + '}';
}

Bytes compileControl(const Source& entry, Int)
{
    entry.allow({"rect", "value", "visible", "max", "min", "procID", "refCon", "title"});
    const auto word = [&](const char* key, Int otherwise) { return entry.number(key, -32768, 32767, otherwise); };
    ByteWriter out;
    put(out, entry.find("rect") ? entry.at("rect").rect() : Rect{});
    out.u16(word("value", 0));
    out.u8(entry.flag("visible", true));
    out.u8(0);
    out.u16(word("max", 1));
    out.u16(word("min", 0));
    out.u16(entry.at("procID").number(0, 32767));
    out.u32(entry.number("refCon", INT32_MIN, INT32_MAX, 0));
    out.raw(entry.counted("title"));
    return out.bytes;
}

std::optional<std::string> showControl(Int, const Bytes& data)
{
    if (data.size() < 23)
        return std::nullopt;
    const Block b(data);
    return " {procID: " + std::to_string(b.s16(16)) + ", value: " + std::to_string(b.s16(8))
        + ", min: " + std::to_string(b.s16(14)) + ", max: " + std::to_string(b.s16(12))
        + ", visible: " + flagText(b.u8(10)) + ", refCon: " + std::to_string(b.s32(18)) + ", rect: " + shown(b.rect(0))
        + ", title: " + quoted(std::span(data).subspan(23)) + '}';
}

struct MenuItem {
    Bytes text; ///< counted
    Int icon = 0, key = 0, mark = 0, style = 0;
    bool enabled = true;
};

MenuItem compileMenuItem(const Source& source)
{
    MenuItem item;
    if (source.isScalar()) {
        if (source.word() != "separator")
            source.fail("an item is a map, or the word separator");
        item.text = {1, '-'};
        item.enabled = false;
        return item;
    }
    source.allow({"text", "icon", "key", "mark", "style", "enabled"});
    item.text = source.at("text").counted();
    if (item.text[0] == 0)
        source.at("text").fail("an item without a text would end the menu");
    if (const auto key = source.find("key")) {
        const Bytes character = key->roman(1);
        item.key = character.empty() ? 0 : character[0];
    }
    item.icon = source.number("icon", 0, 255, 0);
    item.mark = source.number("mark", 0, 255, 0);
    item.style = source.number("style", 0, 255, 0);
    item.enabled = source.flag("enabled", true);
    return item;
}

constexpr Int kItemsWithFlags = 30; // items 1 to 30 have a bit; later ones are always enabled
constexpr Int kAllEnabled = 0xFFFFFFFF;

Bytes compileMenu(const Source& entry, Int id)
{
    entry.allow({"title", "enabled", "items"});
    ByteWriter items;
    Int flags = kAllEnabled, number = 0;
    if (!entry.flag("enabled", true))
        flags &= ~I(1);
    for (const Source& source : entry.at("items").numbered(1)) {
        const MenuItem item = compileMenuItem(source);
        ++number;
        if (!item.enabled && number > kItemsWithFlags)
            source.fail("items above 30 are always enabled");
        if (!item.enabled)
            flags &= ~(I(1) << number);
        items.raw(item.text);
        for (const Int field : {item.icon, item.key, item.mark, item.style})
            items.u8(field);
    }
    ByteWriter out;
    out.u16(id);
    out.zeros(8);
    out.u32(flags);
    out.raw(entry.at("title").counted());
    out.raw(items.bytes);
    out.u8(0);
    return out.bytes;
}

std::string showMenuItem(ByteReader& in, Int length, bool enabled)
{
    const Bytes text = in.raw(length);
    const Int icon = in.u8(), key = in.u8(), mark = in.u8(), style = in.u8();
    if (text == Bytes{'-'} && icon + key + mark + style == 0 && !enabled)
        return "separator";
    std::string out = "{text: " + quoted(text);
    const auto code = static_cast<std::uint8_t>(key);
    if (key != 0)
        out += ", key: " + quoted(std::span(&code, 1));
    for (const auto& [name, value] : {std::pair("icon", icon), std::pair("mark", mark), std::pair("style", style)})
        if (value != 0)
            out += std::string(", ") + name + ": " + std::to_string(value);
    return out + (enabled ? "}" : ", enabled: false}");
}

std::optional<std::string> showMenu(Int, const Bytes& data)
{
    if (data.size() < 16)
        return std::nullopt;
    ByteReader in(data, 10);
    const Int flags = in.u32(), titleLength = in.u8();
    std::string out = "\n    title: " + quoted(in.raw(titleLength));
    out += "\n    enabled: " + flagText(flags & 1) + "\n    items:";
    Int number = 0;
    while (!in.atEnd()) {
        const Int length = in.u8();
        if (length == 0)
            return number == 0 ? out + " {}" : out;
        ++number;
        out += "\n      " + std::to_string(number) + ": "
            + showMenuItem(in, length, number > kItemsWithFlags || (flags >> number & 1));
    }
    return std::nullopt;
}

Bytes compileMenuBar(const Source& entry, Int)
{
    ByteWriter out;
    const std::vector<Source> ids = (entry.isMap() ? entry.at("menus") : entry).list();
    out.u16(I(ids.size()));
    for (const Source& id : ids)
        out.u16(id.number(-32768, 32767));
    return out.bytes;
}

std::optional<std::string> showMenuBar(Int, const Bytes& data)
{
    ByteReader in(data);
    const Int count = in.s16();
    if (count < 0 || I(data.size()) != 2 + 2 * count)
        return std::nullopt;
    std::string out = " [";
    for (Int i = 0; i < count; ++i)
        out += (i > 0 ? ", " : "") + std::to_string(in.s16());
    return out + ']';
}

} // namespace

std::optional<std::vector<Item>> itemsOf(const Bytes& data)
{
    ByteReader in(data);
    const Int count = in.s16() + 1;
    std::vector<Item> items;
    for (Int i = 0; i < count && !in.atEnd(); ++i) {
        in.skip(4);
        Item item;
        item.rect = takeRect(in);
        item.type = in.u8();
        const Int length = in.u8();
        if (in.pos + length > I(data.size()))
            return std::nullopt;
        item.data = in.raw(length);
        in.skip(length % 2);
        items.push_back(std::move(item));
    }
    if (data.size() < 2 || I(items.size()) != std::max<Int>(count, 0))
        return std::nullopt;
    return items;
}

std::vector<Form> layoutForms()
{
    return {{"DITL", compileItems, showItems}, {"DLOG", compileDialog, showDialog}, {"ALRT", compileAlert, showAlert},
        {"WIND", compileWindow, showWindow}, {"CNTL", compileControl, showControl}, {"MENU", compileMenu, showMenu},
        {"MBAR", compileMenuBar, showMenuBar}};
}

} // namespace Rsrc
