#pragma once

#include "MacToolbox/Base/Memory.h"

#include <span>

namespace Rsrc {

using namespace MacToolbox;

/// What the game relies on in an item list. `items` has a letter for each item that it addresses, from item 1:
///   B push button, type byte exactly 4       c whatever answers to a click: 4 or 7
///   C control, 7                             r radio button, 6
///   e edit text, 16                          t static text, 136
///   u user item, clicks or not               U user item that takes clicks itself, 0
///   . any
struct PanelNeeds {
    Int id;
    Int height, width; ///< of the panel's content; 0 for a list within another
    const char* items;
    const char*
        pushButtons; ///< the items of type 4, all of them, as the key tables count them; "-" if none are counted
    Int ringed;      ///< the push button with a ring round it, or 0
    const char* placeholders; ///< the digits of the ^n that a text may hold
};
std::span<const PanelNeeds> panelNeeds();

/// The same for the item lists of dialogs and alerts.
struct DialogNeeds {
    Int id;
    const char* items;
    const char* placeholders;
};
std::span<const DialogNeeds> dialogNeeds();

struct ListNeeds {
    Int id;
    Int count;
    bool more;         ///< more are welcome
    const char* shown; ///< indices that a player may see: "2-5 10"
};
std::span<const ListNeeds> listNeeds();

struct ImageNeeds {
    Int id;
    Int frames; ///< at least
};
std::span<const ImageNeeds> imageNeeds();

/// Bounds on the sizes of frames `first` to `last`, outer ones included; `same` wants one size for all of them.
struct FrameNeeds {
    Int id;
    Int first, last;
    Int leastHeight, mostHeight, leastWidth, mostWidth;
    bool same;
};
std::span<const FrameNeeds> frameNeeds();

/// A text that must fit a width.
struct WidthNeeds {
    Int list;
    const char* indices;
    Int size; ///< of the game's font
    bool bold;
    Int pixels;
};
std::span<const WidthNeeds> widthNeeds();

struct MenuNeeds {
    Int id;
    Int items;
    const char* disabled; ///< items that are disabled at the start
};
std::span<const MenuNeeds> menuNeeds();

/// One resource or a range of ids that must be there, in whichever file.
struct ResourceNeeds {
    const char* type;
    Int first, last;
};
std::span<const ResourceNeeds> resourceNeeds();

/// The numbers of a text like "2-5 10".
std::vector<Int> numbersOf(const char* text);

} // namespace Rsrc
