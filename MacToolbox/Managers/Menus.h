#pragma once

#include "MacToolbox/Base/Geometry.h"
#include "MacToolbox/Base/Memory.h"

#include <memory>
#include <string>
#include <vector>

// The game's menu bar. Menus belong to the game thread; `DrawMenuBar` freezes their state into a snapshot that other
// threads read. A choice made in the host's menus comes back as a click in the menu bar. A nil menu does nothing.

namespace MacToolbox {

struct EventRecord;
struct WindowRecord;

inline constexpr Int noMark = 0, checkMark = 18;

struct MenuRecord {
    struct Item {
        Bytes text;           ///< Mac OS Roman, no length byte
        std::uint8_t key = 0; ///< Command-key character, or 0
        std::uint8_t mark = noMark;
        std::uint8_t style = 0;
        std::uint8_t icon = 0;
        bool enabled = true;

        bool isSeparator() const { return !text.empty() && text[0] == '-'; }
        bool operator==(const Item&) const = default;
    };

    const Int menuID;
    Str255 title{0};
    std::vector<Item> items;
    bool enabled = true;

    explicit MenuRecord(Int id) : menuID(id) { }
    /// Item `n` from 1, or nullptr.
    Item* item(Int n);
};
using MenuHandle = std::shared_ptr<MenuRecord>;

/// A choice as the Toolbox packs it: menu id in the high word, item from 1 in the low word; 0 is none.
constexpr Int packMenuChoice(Int menuID, Int item) { return menuID << 16 | item; }

namespace MenuBar {
/// The bar as of the last DrawMenuBar, in plain values.
struct Snapshot {
    struct M {
        Int id = 0;
        Str255 title{0};
        bool enabled = true;
        std::vector<MenuRecord::Item> items;
        bool operator==(const M&) const = default;
    };
    std::vector<M> menus;
    bool operator==(const Snapshot&) const = default;
};

/// The bar from left to right. Game thread only.
const std::vector<MenuHandle>& menus();
/// The choice that the next MenuSelect answers, or 0. Game thread only.
extern Int pendingChoice;
/// Publishes a snapshot if anything was changed since the last one, and tells the host if it differs.
void syncIfNeeded();
/// Any thread.
Snapshot published();
/// The published bar as UTF-8 text, a line for each menu and item: " -" marks a disabled one, " *" a marked one. Any
/// thread.
std::string dump();
}

void InitMenus();
/// A new empty enabled menu, kept nowhere.
MenuHandle NewMenu(Int id, const Str255& title);
/// The menu of that id in the bar, or made before, or from the resource `MENU` `id`; nil if there is none.
MenuHandle GetMenu(Int id);
/// The menus of the resource `MBAR` `id`; those that are missing are left out.
std::vector<MenuHandle> GetNewMBar(Int id);
void SetMenuBar(const std::vector<MenuHandle>& list);
/// Puts the menu before the first one of id `beforeID`, or last. -1 and -2 only keep it for `GetMHandle`.
void InsertMenu(const MenuHandle& menu, Int beforeID);
void DeleteMenu(Int id);
MenuHandle GetMHandle(Int id);
/// Adds items told in the Menu Manager's own notation: `;` ends an item, `/` key, `!` mark, `^` icon, `<` style, `(`
/// disabled.
void AppendMenu(const MenuHandle& menu, const Str255& data);
/// Makes the changes to the bar visible.
void DrawMenuBar();
void ClearMenuBar();
inline void DisposMenu(const MenuHandle&) { }
inline void DisposeMenu(const MenuHandle&) { }
inline void AddResMenu(const MenuHandle&, OSType) { }
inline void HiliteMenu(Int) { }
inline void FlashMenuBar(Int) { }
inline void CloseDeskAcc(Int) { }
inline void SystemClick(const EventRecord&, const std::shared_ptr<WindowRecord>&) { }
/// Item 0 is the menu itself.
void EnableItem(const MenuHandle& menu, Int n);
void DisableItem(const MenuHandle& menu, Int n);
void CheckItem(const MenuHandle& menu, Int n, bool on);
void SetItemMark(const MenuHandle& menu, Int n, Int mark);
void SetItmMark(const MenuHandle& menu, Int n, Int mark);
void SetItem(const MenuHandle& menu, Int n, const Str255& text);
void GetItem(const MenuHandle& menu, Int n, Str255& text); ///< empty for no such item
Int CountMItems(const MenuHandle& menu);
/// The packed choice of the first item with that Command key, in either case; 0 if it is disabled or there is none.
Int MenuKey(Int ch);
/// Takes the choice that the host's menus left. The point is not looked at.
Int MenuSelect(Point);
/// Pops the menu up on the screen, item `item` at (`top`, `left`) in global coordinates, and follows the mouse.
/// @return The packed choice, or 0.
Int PopUpMenuSelect(const MenuHandle& menu, Int top, Int left, Int item);

} // namespace MacToolbox
