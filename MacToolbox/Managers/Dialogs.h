#pragma once

#include "MacToolbox/Managers/Controls.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "MacToolbox/Managers/Windows.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

// Dialogs from `DLOG` and `DITL`, the modal loop, and the alerts. Game thread only. Nil dialogs, item numbers out of
// range and missing resources are ignored.

namespace MacToolbox {

struct EventRecord;
struct DialogRecord;
using DialogPtr = std::shared_ptr<DialogRecord>;
/// Draws a user item; `item` is its number, from 1.
using UserItemProc = std::function<void(const DialogPtr& dialog, Int item)>;
/// Sees each event of a modal dialog first and may change it. @return True to end the dialog with `item`.
using DialogFilter = std::function<bool(const DialogPtr& dialog, EventRecord& event, Int& item)>;

/// Item types; a kind is a type without `itemDisable`, which means that a hit does not end the dialog.
inline constexpr Int userItem = 0, ctrlItem = 4, btnCtrl = 0, chkCtrl = 1, radCtrl = 2, resCtrl = 3, statText = 8,
                     editText = 16, iconItem = 32, picItem = 64, itemDisable = 128;

/// What a dialog item shows.
struct DItemHandle {
    enum class Kind { none, control, text, icon, picture, user };

    Kind kind = Kind::none;
    ControlHandle ctl; ///< of a control
    Handle block;      ///< of a text, an icon or a picture
    UserItemProc proc; ///< of a user item; may be empty

    static DItemHandle control(ControlHandle c) { return {Kind::control, std::move(c), {}, {}}; }
    static DItemHandle text(Handle h) { return {Kind::text, {}, std::move(h), {}}; }
    static DItemHandle icon(Handle h) { return {Kind::icon, {}, std::move(h), {}}; }
    static DItemHandle picture(Handle h) { return {Kind::picture, {}, std::move(h), {}}; }
    static DItemHandle user(UserItemProc p) { return {Kind::user, {}, {}, std::move(p)}; }
    bool is(Kind k) const { return kind == k; }
};

struct DItem {
    Int type = 0;
    Rect rect; ///< local to the dialog
    DItemHandle handle;
    bool hidden = false;

    Int kind() const { return type & 127; }
    bool disabled() const { return (type & itemDisable) != 0; }
};

struct DialogRecord : WindowRecord {
    std::vector<DItem> items; ///< item number n is element n - 1
    Int editField = -1;       ///< element of the focused edit text; -1 for none
    TEHandle textH;           ///< the one TextEdit record
    Int aDefItem = 1;         ///< number of the default item
    std::optional<Int> alertIcon;

    DialogRecord(const Rect& bounds, Int windowProcID);

    /// The item of number `n` (from 1), or nullptr.
    DItem* item(Int n);
};

/// Fills a dialog from `DITL` `ditlID` and focuses its first edit text; no items if the list is missing.
void loadItems(const DialogPtr& dialog, Int ditlID);
/// Gives an edit text the focus. @param index  From 0.
void focusItem(const DialogPtr& dialog, Int index, bool selectAll);
/// Draws one item; `thePort` must be the dialog's. @param index  From 0.
void drawItem(const DialogPtr& dialog, Int index);
/// Draws the ring round the default button.
void outlineDefault(const DialogPtr& dialog);

inline void InitDialogs() { }
inline void CouldAlert(Int) { }
inline void FreeAlert(Int) { }
inline void CouldDialog(Int) { }
inline void FreeDialog(Int) { }
/// From the resource `DLOG` `id`; nil if it is missing or too short.
DialogPtr GetNewDialog(Int id, const void* storage = nullptr, const WindowPtr& behind = nullptr);
DialogPtr NewDialog(const void* storage, const Rect& bounds, const Str255& title, bool visible, Int procID,
    const WindowPtr& behind, bool goAway, Int refCon, Int itemsID);
void CloseDialog(const DialogPtr& dialog);
void DisposDialog(const DialogPtr& dialog);
void DisposeDialog(const DialogPtr& dialog);
void DrawDialog(const DialogPtr& dialog);
void UpdtDialog(const DialogPtr& dialog, const RgnHandle& rgn); ///< `rgn` is not looked at
/// Type 0, no handle and a zero rectangle if there is no such item.
void GetDItem(const DialogPtr& dialog, Int n, Int& type, DItemHandle& handle, Rect& rect);
void SetDItem(const DialogPtr& dialog, Int n, Int type, const DItemHandle& handle, const Rect& rect);
/// At most 255 characters; empty if it is no text.
void GetIText(const DItemHandle& handle, Str255& text);
void GetIText(const Handle& handle, Str255& text);
/// Replaces the text in place and draws it in every visible dialog that shows this block.
void SetIText(const DItemHandle& handle, const Str255& text);
void SetIText(const Handle& handle, const Str255& text);
void SelIText(const DialogPtr& dialog, Int n, Int start, Int end);
void HideDItem(const DialogPtr& dialog, Int n);
void ShowDItem(const DialogPtr& dialog, Int n);
bool IsDialogEvent(const EventRecord& event);
/// Runs the front window, if it is a dialog, until an enabled item is hit. @param itemHit  The item, from 1; 0 if the
/// front window is no dialog; 2 (1 in a dialog of one item) when the program is asked to quit.
void ModalDialog(const DialogFilter& filter, Int& itemHit);
/// Shows the alert `ALRT` `id` and waits. @return The item hit; -1, with nothing shown, if the alert is missing.
Int Alert(Int id, const DialogFilter& filter = {});
Int StopAlert(Int id, const DialogFilter& filter = {});
Int NoteAlert(Int id, const DialogFilter& filter = {});
Int CautionAlert(Int id, const DialogFilter& filter = {});

/// Draws a 32 by 32 icon into the rectangle, scaled; nothing for nil or fewer than 128 bytes.
void PlotIcon(const Rect& rect, const Handle& icon);
void PlotCIcon(const Rect& rect, const Handle& icon);
Handle GetIcon(Int id);
Handle GetCIcon(Int id);
inline void DisposCIcon(const Handle&) { }

} // namespace MacToolbox
