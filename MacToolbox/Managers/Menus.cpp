#include "MacToolbox/Managers/Menus.h"

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace MacToolbox {

namespace {

/// What the game thread works on.
struct Bar {
    std::vector<MenuHandle> menus;
    std::map<Int, MenuHandle> loaded; // by menu id: made by GetMenu, or parked by InsertMenu
    bool dirty = false;               // changed since the last snapshot
};
RunState<Bar> sBar;

/// What other threads see. Never destroyed: they may still look while the process ends.
struct Published {
    std::mutex lock;
    MenuBar::Snapshot snapshot;
};
Published& published()
{
    static Published& p = *new Published;
    return p;
}
const AtRunStart sForgetPublished([] {
    const std::scoped_lock hold(published().lock);
    published().snapshot = {};
});
const AtRunStart sForgetChoice([] { MenuBar::pendingChoice = 0; });

std::uint8_t upper(Int c)
{
    const Int low = c & 255;
    return static_cast<std::uint8_t>(low >= 'a' && low <= 'z' ? low - 32 : low);
}

MenuHandle inBar(Int id)
{
    for (const MenuHandle& menu : sBar->menus)
        if (menu->menuID == id)
            return menu;
    return nullptr;
}

/// The items of a `MENU`, from the list that starts at `pos` and ends at a zero length byte or with the data.
void parseItems(MenuRecord& menu, ByteReader in, Int flags)
{
    for (Int n = 1; !in.atEnd(); ++n) {
        const Int length = in.u8();
        if (length == 0)
            return;
        MenuRecord::Item item;
        item.text = in.raw(std::min(length, I(in.bytes().size()) - in.pos)); // cut at the end of the data
        item.icon = static_cast<std::uint8_t>(in.u8());
        item.key = static_cast<std::uint8_t>(in.u8());
        item.mark = static_cast<std::uint8_t>(in.u8());
        item.style = static_cast<std::uint8_t>(in.u8());
        item.enabled = n >= 31 || (flags >> n & 1) != 0;
        menu.items.push_back(std::move(item));
    }
}

/// id (2), 8 bytes not read, enable flags (4), counted title, items. Nil for a block too short to hold a title.
MenuHandle parseMenu(const Handle& h)
{
    if (h->count() < 15)
        return nullptr;
    const auto menu = std::make_shared<MenuRecord>(h->s16(0));
    const Int flags = h->u32(10);
    menu->enabled = (flags & 1) != 0;
    menu->title = h->pstr(14);
    menu->title[0] = static_cast<std::uint8_t>(menu->title.size() - 1); // cut at the end of the data
    parseItems(*menu, ByteReader(h->bytes, 15 + h->u8(14)), flags);
    return menu;
}

MenuBar::Snapshot freeze(const std::vector<MenuHandle>& menus)
{
    MenuBar::Snapshot snapshot;
    for (const MenuHandle& menu : menus)
        snapshot.menus.push_back({menu->menuID, menu->title, menu->enabled, menu->items});
    return snapshot;
}

} // namespace

Int MenuBar::pendingChoice = 0;

MenuRecord::Item* MenuRecord::item(Int n)
{
    return n >= 1 && n <= I(items.size()) ? &items[static_cast<std::size_t>(n - 1)] : nullptr;
}

const std::vector<MenuHandle>& MenuBar::menus() { return sBar->menus; }

void MenuBar::syncIfNeeded()
{
    if (!sBar->dirty)
        return;
    sBar->dirty = false;
    Snapshot snapshot = freeze(sBar->menus);
    {
        const std::scoped_lock hold(MacToolbox::published().lock);
        Snapshot& shown = MacToolbox::published().snapshot;
        if (snapshot == shown)
            return;
        shown = std::move(snapshot);
    }
    Platform::current().menusChanged();
}

MenuBar::Snapshot MenuBar::published()
{
    const std::scoped_lock hold(MacToolbox::published().lock);
    return MacToolbox::published().snapshot;
}

std::string MenuBar::dump()
{
    std::string out;
    for (const Snapshot::M& menu : published().menus) {
        out += string(menu.title) + (menu.enabled ? "\n" : " -\n");
        for (const MenuRecord::Item& item : menu.items)
            out +=
                "  " + fromMacRoman(item.text) + (item.enabled ? "" : " -") + (item.mark != noMark ? " *" : "") + "\n";
    }
    return out;
}

void InitMenus() { }

MenuHandle NewMenu(Int id, const Str255& title)
{
    const auto menu = std::make_shared<MenuRecord>(id);
    menu->title = title;
    return menu;
}

MenuHandle GetMenu(Int id)
{
    if (const MenuHandle known = GetMHandle(id))
        return known;
    const Handle h = GetResource(os("MENU"), id);
    const MenuHandle menu = h ? parseMenu(h) : nullptr;
    if (menu)
        sBar->loaded[menu->menuID] = menu;
    return menu;
}

std::vector<MenuHandle> GetNewMBar(Int id)
{
    std::vector<MenuHandle> list;
    const Handle h = GetResource(os("MBAR"), id);
    if (!h)
        return list;
    ByteReader in(h->bytes);
    for (Int left = in.u16(); left > 0 && !in.atEnd(); --left)
        if (const MenuHandle menu = GetMenu(in.s16()))
            list.push_back(menu);
    return list;
}

void SetMenuBar(const std::vector<MenuHandle>& list)
{
    sBar->menus.clear();
    for (const MenuHandle& menu : list)
        if (menu)
            sBar->menus.push_back(menu);
    sBar->dirty = true;
}

void InsertMenu(const MenuHandle& menu, Int beforeID)
{
    auto& menus = sBar->menus;
    if (!menu || std::find(menus.begin(), menus.end(), menu) != menus.end())
        return;
    if (beforeID == -1 || beforeID == -2) {
        sBar->loaded[menu->menuID] = menu;
        return;
    }
    const auto before =
        std::find_if(menus.begin(), menus.end(), [&](const MenuHandle& m) { return m->menuID == beforeID; });
    menus.insert(before, menu);
    sBar->dirty = true;
}

void DeleteMenu(Int id)
{
    std::erase_if(sBar->menus, [&](const MenuHandle& menu) { return menu->menuID == id; });
    sBar->dirty = true;
}

MenuHandle GetMHandle(Int id)
{
    if (const MenuHandle menu = inBar(id))
        return menu;
    const auto found = sBar->loaded.find(id);
    return found == sBar->loaded.end() ? nullptr : found->second;
}

void AppendMenu(const MenuHandle& menu, const Str255& data)
{
    if (!menu)
        return;
    const auto chars = characters(data);
    MenuRecord::Item item;
    std::size_t i = 0;
    const auto next = [&]() -> std::uint8_t { return i < chars.size() ? chars[i++] : 0; };
    while (i < chars.size()) {
        const std::uint8_t c = next();
        switch (c) {
        case ';':
        case '\r':
            menu->items.push_back(std::move(item));
            item = {};
            break;
        case '/': item.key = next(); break;
        case '!': item.mark = next(); break;
        case '^': item.icon = next(); break;
        case '<': next(); break;
        case '(': item.enabled = false; break;
        default: item.text.push_back(c);
        }
    }
    menu->items.push_back(std::move(item));
    sBar->dirty = true;
}

void DrawMenuBar()
{
    sBar->dirty = true;
    MenuBar::syncIfNeeded();
}

void ClearMenuBar()
{
    sBar->menus.clear();
    sBar->dirty = true;
}

static void setEnabled(const MenuHandle& menu, Int n, bool enabled)
{
    if (!menu)
        return;
    if (n == 0)
        menu->enabled = enabled;
    else if (MenuRecord::Item* const item = menu->item(n))
        item->enabled = enabled;
    sBar->dirty = true;
}

void EnableItem(const MenuHandle& menu, Int n) { setEnabled(menu, n, true); }
void DisableItem(const MenuHandle& menu, Int n) { setEnabled(menu, n, false); }

void CheckItem(const MenuHandle& menu, Int n, bool on) { SetItemMark(menu, n, on ? checkMark : noMark); }

void SetItemMark(const MenuHandle& menu, Int n, Int mark)
{
    if (MenuRecord::Item* const item = menu ? menu->item(n) : nullptr) {
        item->mark = static_cast<std::uint8_t>(mark);
        sBar->dirty = true;
    }
}

void SetItmMark(const MenuHandle& menu, Int n, Int mark) { SetItemMark(menu, n, mark); }

void SetItem(const MenuHandle& menu, Int n, const Str255& text)
{
    if (MenuRecord::Item* const item = menu ? menu->item(n) : nullptr) {
        const auto chars = characters(text);
        item->text.assign(chars.begin(), chars.end());
        sBar->dirty = true;
    }
}

void GetItem(const MenuHandle& menu, Int n, Str255& text)
{
    text.assign(1, 0);
    if (const MenuRecord::Item* const item = menu ? menu->item(n) : nullptr) {
        const std::size_t length = std::min<std::size_t>(item->text.size(), 255);
        text[0] = static_cast<std::uint8_t>(length);
        text.insert(text.end(), item->text.begin(), item->text.begin() + static_cast<std::ptrdiff_t>(length));
    }
}

Int CountMItems(const MenuHandle& menu) { return menu ? I(menu->items.size()) : 0; }

Int MenuKey(Int ch)
{
    for (const MenuHandle& menu : sBar->menus) {
        if (!menu->enabled)
            continue;
        Int n = 0;
        for (const MenuRecord::Item& item : menu->items) {
            ++n;
            if (item.key != 0 && upper(item.key) == upper(ch))
                return item.enabled ? packMenuChoice(menu->menuID, n) : 0;
        }
    }
    return 0;
}

Int MenuSelect(Point)
{
    const Int choice = MenuBar::pendingChoice;
    MenuBar::pendingChoice = 0;
    return choice;
}

} // namespace MacToolbox
