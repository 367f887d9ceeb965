#include "MacToolbox/Managers/Dialogs.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/Picture.h"

#include <algorithm>

// Dialogs, their items, and the calls on them. The modal loop and the alerts are in ModalDialog.cpp.

namespace MacToolbox {

namespace {

constexpr Int kDlogSize = 20;   // of a `DLOG`, before its title
constexpr Int kItemHeader = 14; // of a `DITL` item, before its data
constexpr Int kIconBytes = 128;
constexpr Rect kIconRect{0, 0, 32, 32};

using Kind = DItemHandle::Kind;

DialogPtr asDialog(const WindowPtr& w) { return std::dynamic_pointer_cast<DialogRecord>(w); }

void copyIcon(const Handle& icon, const Rect& rect)
{
    CopyBits(BitMap(icon, 0, 4, kIconRect), thePort->portBits, kIconRect, rect, srcCopy);
}

DItemHandle resourceItem(OSType type, Int id, Kind kind)
{
    const Handle h = GetResource(type, id);
    if (!h)
        return {};
    return kind == Kind::icon ? DItemHandle::icon(h) : DItemHandle::picture(h);
}

DItemHandle buttonItem(const DialogPtr& dialog, const DItem& item, std::span<const std::uint8_t> title)
{
    const auto c = std::make_shared<ControlRecord>(dialog->port, item.rect, item.kind() - ctrlItem);
    c->contrlTitle.assign(1, static_cast<std::uint8_t>(title.size()));
    c->contrlTitle.insert(c->contrlTitle.end(), title.begin(), title.end());
    c->contrlVis = false;
    c->contrlMax = 1;
    ControlManager::enlist(c);
    c->send(initCntl);
    c->contrlVis = true;
    return DItemHandle::control(c);
}

DItemHandle controlItem(const DialogPtr& dialog, const DItem& item, Int id)
{
    const ControlHandle c = GetNewControl(id, WindowPtr(dialog));
    if (!c)
        return {};
    c->contrlRect = item.rect;
    c->contrlVis = true;
    return DItemHandle::control(c);
}

/// What an item of the list shows, made from its data.
DItemHandle makeHandle(const DialogPtr& dialog, const DItem& item, std::span<const std::uint8_t> data)
{
    const Int id = data.size() >= 2 ? ByteReader(data).s16() : 0;
    switch (item.kind()) {
    case iconItem: return resourceItem(os("ICON"), id, Kind::icon);
    case picItem: return resourceItem(os("PICT"), id, Kind::picture);
    case statText:
    case editText: return DItemHandle::text(PtrToHand(data));
    case ctrlItem + resCtrl: return controlItem(dialog, item, id);
    case ctrlItem + btnCtrl:
    case ctrlItem + chkCtrl:
    case ctrlItem + radCtrl: return buttonItem(dialog, item, data);
    default: return DItemHandle::user({});
    }
}

/// Reads the item list: a count less one (2), then items of 4 bytes not read, rectangle (8), type (1), counted data
/// and a pad byte if its length is odd. An item whose header is cut off ends the list.
void readItems(const DialogPtr& dialog, const Handle& list)
{
    const std::span<const std::uint8_t> bytes(list->bytes);
    if (bytes.size() < 2)
        return;
    Int at = 2;
    for (Int left = list->s16(0) + 1; left > 0 && at + kItemHeader <= I(bytes.size()); --left) {
        DItem item;
        item.rect = list->rect(at + 4);
        item.type = list->u8(at + 12);
        const Int length = list->u8(at + 13);
        at += kItemHeader;
        const Int present = std::min(length, I(bytes.size()) - at);
        item.handle =
            makeHandle(dialog, item, bytes.subspan(static_cast<std::size_t>(at), static_cast<std::size_t>(present)));
        dialog->items.push_back(std::move(item));
        at += length + (length & 1);
    }
}

void focusFirstEdit(const DialogPtr& dialog)
{
    for (std::size_t i = 0; i < dialog->items.size(); ++i)
        if (dialog->items[i].kind() == editText) {
            focusItem(dialog, I(i), true);
            return;
        }
}

void drawEditText(const DialogPtr& dialog, Int index, const DItem& item)
{
    GrafPort& port = *dialog->port;
    {
        const PenScope pen;
        PenNormal();
        const Rect ring{item.rect.top - 3, item.rect.left - 3, item.rect.bottom + 3, item.rect.right + 3};
        port.frame(Region(ring), Region(ring.insetBy(1, 1)));
    }
    if (index == dialog->editField && dialog->textH) {
        EraseRect(item.rect);
        dialog->textH->calc();
        dialog->textH->draw();
    } else {
        TextBox(item.handle.block->bytes, item.handle.block->count(), item.rect, teJustLeft);
    }
}

/// Draws an item again under its dialog's port, if both can be seen.
void refreshItem(const DialogPtr& dialog, Int index)
{
    const DItem& item = dialog->items[static_cast<std::size_t>(index)];
    if (!dialog->visible || item.hidden)
        return;
    const PortScope scope(dialog->port);
    EraseRect(item.rect);
    drawItem(dialog, index);
}

DialogPtr newDialog(const Rect& bounds, const Str255& title, Int procID, const WindowPtr& behind, Int refCon)
{
    const DialogPtr dialog = makeWindow<DialogRecord>(bounds, procID);
    dialog->title = title;
    dialog->refCon = refCon;
    WindowManager::shared().add(dialog, behind);
    return dialog;
}

} // namespace

DialogRecord::DialogRecord(const Rect& bounds, Int windowProcID) : WindowRecord(bounds, windowProcID)
{
    windowKind = dialogKind;
    port->txFont = systemFont;
    port->txSize = 12;
}

DItem* DialogRecord::item(Int n)
{
    return n >= 1 && n <= I(items.size()) ? &items[static_cast<std::size_t>(n - 1)] : nullptr;
}

void loadItems(const DialogPtr& dialog, Int ditlID)
{
    const Handle list = dialog ? GetResource(os("DITL"), ditlID) : nullptr;
    if (!list)
        return;
    readItems(dialog, list);
    dialog->textH = std::make_shared<TERec>(Rect{}, Rect{}, dialog->port);
    focusFirstEdit(dialog);
}

void focusItem(const DialogPtr& dialog, Int index, bool selectAll)
{
    const DItem* const item = dialog ? dialog->item(index + 1) : nullptr;
    if (!item || !item->handle.is(Kind::text) || !dialog->textH)
        return;
    TERec& te = *dialog->textH;
    if (te.active)
        TEDeactivate(dialog->textH);
    dialog->editField = index;
    te.hText = item->handle.block;
    te.destRect = te.viewRect = item->rect;
    te.txFont = dialog->port->txFont;
    te.txFace = dialog->port->txFace;
    te.txSize = dialog->port->txSize;
    te.measureFont();
    te.calc();
    te.selEnd = te.teLength();
    te.selStart = selectAll ? 0 : te.selEnd;
    if (dialog->visible)
        TEActivate(dialog->textH);
    else
        te.active = true;
}

void drawItem(const DialogPtr& dialog, Int index)
{
    DItem* const found = dialog ? dialog->item(index + 1) : nullptr;
    if (!found || found->hidden)
        return;
    const DItem item = *found; // a user item's procedure may change the list
    const DItemHandle& handle = item.handle;
    switch (handle.kind) {
    case Kind::text:
        if (!handle.block)
            return;
        if (item.kind() == editText) {
            drawEditText(dialog, index, item);
        } else if (item.kind() == statText) {
            const Bytes text = expandParams(handle.block->bytes);
            TextBox(text, I(text.size()), item.rect, teJustLeft);
        }
        return;
    case Kind::icon:
        if (item.kind() == iconItem)
            PlotIcon(item.rect, handle.block);
        return;
    case Kind::picture:
        if (item.kind() == picItem)
            DrawPicture(handle.block, item.rect);
        return;
    case Kind::control:
        if (handle.ctl && item.kind() >= ctrlItem && item.kind() <= ctrlItem + resCtrl)
            handle.ctl->draw();
        return;
    case Kind::user:
        if (handle.proc)
            handle.proc(dialog, index + 1);
        return;
    case Kind::none: return;
    }
}

void outlineDefault(const DialogPtr& dialog)
{
    const DItem* const item = dialog ? dialog->item(dialog->aDefItem) : nullptr;
    if (!item || !item->handle.is(Kind::control))
        return;
    const PortScope scope(dialog->port);
    const PenScope pen;
    PenSize(3, 3);
    const Rect& r = item->rect;
    FrameRoundRect({r.top - 4, r.left - 4, r.bottom + 4, r.right + 4}, 16, 16);
}

DialogPtr GetNewDialog(Int id, const void*, const WindowPtr& behind)
{
    const Handle h = GetResource(os("DLOG"), id);
    if (!h || h->count() < kDlogSize)
        return nullptr;
    const Str255 title = h->count() > kDlogSize ? h->pstr(kDlogSize) : Str255{0};
    const DialogPtr dialog = newDialog(h->rect(0), title, h->s16(8), behind, h->s32(14));
    loadItems(dialog, h->s16(18));
    if (h->u8(10) != 0)
        ShowWindow(dialog);
    return dialog;
}

DialogPtr NewDialog(const void*, const Rect& bounds, const Str255& title, bool visible, Int procID,
    const WindowPtr& behind, bool goAway, Int refCon, Int itemsID)
{
    const DialogPtr dialog = newDialog(bounds, title, procID, behind, refCon);
    dialog->goAwayFlag = goAway;
    loadItems(dialog, itemsID);
    if (visible)
        ShowWindow(dialog);
    return dialog;
}

void CloseDialog(const DialogPtr& dialog)
{
    KillControls(dialog);
    WindowManager::shared().close(dialog);
}

void DisposDialog(const DialogPtr& dialog) { CloseDialog(dialog); }
void DisposeDialog(const DialogPtr& dialog) { CloseDialog(dialog); }

void DrawDialog(const DialogPtr& dialog)
{
    if (!dialog)
        return;
    const PortScope scope(dialog->port);
    if (dialog->alertIcon)
        PlotIcon({10, 20, 42, 52}, GetIcon(*dialog->alertIcon));
    for (Int i = 0; i < I(dialog->items.size()); ++i)
        drawItem(dialog, i);
}

void UpdtDialog(const DialogPtr& dialog, const RgnHandle&) { DrawDialog(dialog); }

void GetDItem(const DialogPtr& dialog, Int n, Int& type, DItemHandle& handle, Rect& rect)
{
    const DItem* const item = dialog ? dialog->item(n) : nullptr;
    type = item ? item->type : 0;
    handle = item ? item->handle : DItemHandle{};
    rect = item ? item->rect : Rect{};
}

void SetDItem(const DialogPtr& dialog, Int n, Int type, const DItemHandle& handle, const Rect& rect)
{
    if (DItem* const item = dialog ? dialog->item(n) : nullptr) {
        item->type = type;
        item->handle = handle;
        item->rect = rect;
    }
}

void GetIText(const DItemHandle& handle, Str255& text)
{
    GetIText(handle.is(Kind::text) ? handle.block : nullptr, text);
}

void GetIText(const Handle& handle, Str255& text)
{
    const std::size_t length = handle ? std::min<std::size_t>(handle->bytes.size(), 255) : 0;
    text.assign(1, static_cast<std::uint8_t>(length));
    if (length > 0)
        text.insert(text.end(), handle->bytes.begin(), handle->bytes.begin() + static_cast<std::ptrdiff_t>(length));
}

void SetIText(const DItemHandle& handle, const Str255& text)
{
    SetIText(handle.is(Kind::text) ? handle.block : nullptr, text);
}

void SetIText(const Handle& handle, const Str255& text)
{
    if (!handle)
        return;
    const auto chars = characters(text);
    handle->bytes.assign(chars.begin(), chars.end());
    const auto windows = WindowManager::shared().windows;
    for (const WindowPtr& w : windows) {
        const DialogPtr dialog = asDialog(w);
        for (Int i = 0; dialog && i < I(dialog->items.size()); ++i) {
            const DItemHandle& shown = dialog->items[static_cast<std::size_t>(i)].handle;
            if (!shown.is(Kind::text) || shown.block != handle)
                continue;
            if (i == dialog->editField && dialog->textH) {
                dialog->textH->calc();
                dialog->textH->selStart = dialog->textH->selEnd = dialog->textH->teLength();
            }
            refreshItem(dialog, i);
        }
    }
}

void SelIText(const DialogPtr& dialog, Int n, Int start, Int end)
{
    if (!dialog || !dialog->item(n))
        return;
    const PortScope scope(dialog->port);
    focusItem(dialog, n - 1, false);
    TESetSelect(start, end, dialog->textH);
}

void HideDItem(const DialogPtr& dialog, Int n)
{
    DItem* const item = dialog ? dialog->item(n) : nullptr;
    if (!item || item->hidden)
        return;
    item->hidden = true;
    if (item->handle.is(Kind::control))
        HideControl(item->handle.ctl);
    if (!dialog->visible)
        return;
    const PortScope scope(dialog->port);
    EraseRect(item->rect);
    InvalRect(item->rect);
}

void ShowDItem(const DialogPtr& dialog, Int n)
{
    DItem* const item = dialog ? dialog->item(n) : nullptr;
    if (!item || !item->hidden)
        return;
    item->hidden = false;
    if (item->handle.is(Kind::control))
        ShowControl(item->handle.ctl);
    if (!dialog->visible)
        return;
    const PortScope scope(dialog->port);
    InvalRect(item->rect);
}

void PlotIcon(const Rect& rect, const Handle& icon)
{
    if (icon && icon->count() >= kIconBytes)
        copyIcon(icon, rect);
}

void PlotCIcon(const Rect& rect, const Handle& icon) { PlotIcon(rect, icon); }
Handle GetIcon(Int id) { return GetResource(os("ICON"), id); }
Handle GetCIcon(Int id) { return GetIcon(id); }

} // namespace MacToolbox
