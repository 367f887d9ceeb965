#pragma once

// The items of panels: the loader of `DITL` lists, the plain kinds of item, and what panels do with an item by number.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

/// Kinds of item in a `DITL`, bits 0-6 of the type byte; bit 7 takes no clicks.
enum ItemKind : Int {
    kUserItem = 0,
    kButtonItem = 4,
    kCheckItem = 5,
    kRadioItem = 6,
    kControlItem = 7,
    kTextItem = 8,
    kEditItem = 16,
    kIconItem = 32,
    kPictureItem = 64
};

/// Which images an `ImageItemProc` shows: `count` frames of `Imag` `resID` from `first` on.
struct ImageSpec {
    Int resID = 0, colorID = 0, first = 0, count = 1, depth = 1;
};

/// Reads a `DITL` into children of `view`, placed relative to it, and opens each for the first time. A list that is cut
/// short gives the items that are whole.
/// @return 0, -192 or the like if the list is missing, -1 at an unknown kind: loading ends after that item.
Int LoadItems(View& view, Int id);

/// Puts `proc` over user item `item` and opens it with `param` and `obj`. Nothing if the item is of another kind.
void InstallUserItem(View& panel, Int item, const ViewProc& proc, Int param = 0, std::any obj = {});

/// The text of a static or edit item as a counted string, cut at 255. Other kinds leave `out` untouched.
void GetItemText(View& panel, Int item, Str255& out);
/// Replaces the text (without a length byte) of a static or edit item; `^0` to `^3` are expanded in static text.
void SetItemText(View& panel, Int item, std::span<const std::uint8_t> text);
void SetItemSize(View& panel, Int item, Int size);
void SetItemFace(View& panel, Int item, Int face);
void SetItemJust(View& panel, Int item, Int just);
/// Waits while the mouse button is down. @return True if it was let go inside the item; false at once for an item that
/// takes no clicks.
bool TrackItem(View& panel, Int item);
/// The same for a view.
bool TrackView(View& view);

extern const ViewProc UserItem; ///< a user item without a proc
/// What a user item with one timer leaves to others: takes the timer away at `kMsgClose`, else answers as `UserItem`.
Int TimedItem(View& view, Msg& msg);
extern const ViewProc ControlItem;   ///< button, check box, radio button or resource control; `data` is `ControlHandle`
extern const ViewProc TextItem;      ///< static text; `data` is `Handle`
extern const ViewProc FrameItem;     ///< a framed rectangle; `obj` is a `Pattern`, black if none
extern const ViewProc ImageItemProc; ///< frame 0 of an `ImageSpec`; `data` is `std::shared_ptr<ImageList>`
extern const ViewProc RadioGroup;    ///< a panel of radio buttons in a panel; `param` is its `DITL`

/// Gives a click to the newest enabled child that holds its point. @return Item number + answer << 16, 0 for none.
Int ClickChild(View& view, Msg& msg);
/// Gives a draw to each enabled child that meets the `visRgn` of the port, oldest first.
void DrawChildren(View& view, Msg& msg);
/// Gives `kMsgClose` to each child and disposes of it, newest first.
void CloseChildren(View& view);
/// Covers or uncovers each child by one.
void DisableChildren(View& view);
void EnableChildren(View& view);

} // namespace Wainroad
