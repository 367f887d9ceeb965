#include "Wainroad/Frame/Items.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Controls.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/DialogItems.h"
#include "Wainroad/Frame/EditItems.h"
#include "Wainroad/Frame/IconButton.h"
#include "Wainroad/Frame/Images.h"
#include "Wainroad/Frame/Utils.h"

#include <algorithm>

namespace Wainroad {

// ---- The list of items

static constexpr Int kItemHeader = 14; // bytes before the data of an item

/// Which proc serves a kind of item; nil for an unknown one.
static const ViewProc* procOfKind(Int kind)
{
    switch (kind) {
    case kUserItem: return &UserItem;
    case kButtonItem:
    case kCheckItem:
    case kRadioItem:
    case kControlItem: return &ControlItem;
    case kTextItem: return &TextItem;
    case kEditItem: return &EditItem;
    case kIconItem: return &IconItem;
    case kPictureItem: return &PictureItem;
    }
    return nullptr;
}

static bool opensById(Int kind) { return kind == kControlItem || kind == kIconItem || kind == kPictureItem; }

Int LoadItems(View& view, Int id)
{
    const Handle list = GetResource(os("DITL"), id);
    if (!list)
        return ResError();
    const Bytes bytes = list->bytes;
    ByteReader in(bytes);
    const Int count = (in.u16() + 1) & 0xFFFF;
    for (Int n = 0; n < count; ++n) {
        if (in.pos + kItemHeader > I(bytes.size()))
            break;
        in.skip(4);
        Rect r;
        r.top = in.s16(), r.left = in.s16(), r.bottom = in.s16(), r.right = in.s16();
        const Int type = in.s8();
        const Int length = in.u8();
        if (in.pos + length > I(bytes.size()))
            break;
        const Bytes data = in.raw(length);
        in.pos += in.pos & 1;

        View& item = *AddChild(&view, 0);
        item.type = type;
        item.r = r.offsetBy(view.r.left, view.r.top);
        Msg msg{kMsgOpen, 0, 0, {}};
        if (opensById(item.kind()))
            msg.param = ByteReader(data).u16();
        else
            msg.obj = data;
        const ViewProc* proc = procOfKind(item.kind());
        if (!proc)
            return -1;
        if (item.kind() == kControlItem && CustomControlItem(item, msg) != 0)
            continue;
        item.handler = proc;
        SendMsg(item, msg);
    }
    return 0;
}

void InstallUserItem(View& panel, Int item, const ViewProc& proc, Int param, std::any obj)
{
    View* view = GetItem(panel, item);
    if (!view || item == 0 || view->kind() != kUserItem)
        return;
    const ViewPortScope port(*view);
    view->handler = &proc;
    Msg msg{kMsgOpen, param, 0, std::move(obj)};
    SendMsg(*view, msg);
    if (!view->data.has_value())
        view->data = Int{-1};
}

// ---- Text of items

/// The item if it holds text.
static View* textItem(View& panel, Int item)
{
    View* view = item == 0 ? nullptr : GetItem(panel, item);
    return view && (view->kind() == kTextItem || view->kind() == kEditItem) ? view : nullptr;
}

void GetItemText(View& panel, Int item, Str255& out)
{
    View* view = textItem(panel, item);
    if (!view)
        return;
    out = {0};
    const Handle* text = view->dataAs<Handle>();
    if (!text || !*text)
        return;
    out = PStrOf((*text)->bytes);
}

void SetItemText(View& panel, Int item, std::span<const std::uint8_t> text)
{
    View* view = textItem(panel, item);
    if (!view)
        return;
    Bytes bytes(text.begin(), text.end());
    if (view->kind() == kEditItem)
        EditTE(view, kMsgDeactivate);
    else
        bytes = expandParams(bytes);
    if (Handle* held = view->dataAs<Handle>(); held && *held)
        (*held)->bytes = std::move(bytes); // the block may be shared with the text record
    else
        view->data = PtrToHand(bytes);
    if (view->disabled == 0)
        InvalView(*view);
}

static void setStyleField(View& panel, Int item, Int TextStyleRec::*field, Int value)
{
    View* view = item == 0 ? nullptr : GetItem(panel, item);
    if (!view || view->style.*field == value)
        return;
    view->style.*field = value;
    if (view->kind() == kEditItem)
        SetEditStyle(*view);
    if (view->disabled == 0)
        InvalView(*view);
}

void SetItemSize(View& panel, Int item, Int size) { setStyleField(panel, item, &TextStyleRec::size, size); }

void SetItemFace(View& panel, Int item, Int face) { setStyleField(panel, item, &TextStyleRec::face, face); }

void SetItemJust(View& panel, Int item, Int just) { setStyleField(panel, item, &TextStyleRec::just, just); }

// ---- Plain items

bool TrackView(View& view)
{
    if (view.type < 0)
        return false;
    while (StillDown()) { }
    const ViewPortScope port(view);
    Point mouse;
    GetMouse(mouse);
    return view.r.contains(mouse);
}

bool TrackItem(View& panel, Int item)
{
    View* view = GetItem(panel, item);
    return view && TrackView(*view);
}

static Int userItem(View& view, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
    case kMsgDraw:
    case kMsgClose:
    case kMsgTimer: return 1;
    case kMsgClick: return TrackView(view);
    }
    return 0;
}

Int TimedItem(View& view, Msg& msg)
{
    if (msg.what == kMsgClose)
        RemoveTimer(view);
    return userItem(view, msg);
}

static Int textItemProc(View& view, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (!view.data.has_value()) {
            const Bytes* text = std::any_cast<Bytes>(&msg.obj);
            view.data = PtrToHand(expandParams(text ? *text : Bytes()));
        }
        return 1;
    case kMsgDraw:
        if (const Handle* text = view.dataAs<Handle>(); text && *text) {
            const StyleScope style(view.style);
            const Bytes bytes = (*text)->bytes;
            TextBox(bytes, I(bytes.size()), view.r, view.style.just);
        }
        return 1;
    case kMsgClick: return TrackView(view);
    case kMsgClose: view.data.reset(); return 1;
    case kMsgTimer: return 1;
    }
    return 0;
}

static Int frameItem(View& view, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (!view.data.has_value()) {
            const Pattern* pattern = std::any_cast<Pattern>(&msg.obj);
            view.data = pattern ? *pattern : Pattern::black;
        }
        return 1;
    case kMsgDraw:
        if (const Pattern* pattern = view.dataAs<Pattern>()) {
            const PenScope pen;
            PenNormal();
            PenPat(*pattern);
            FrameRect(view.r);
        }
        return 1;
    case kMsgClick: return TrackView(view);
    case kMsgClose: view.data.reset(); return 1;
    case kMsgTimer: return 1;
    }
    return 0;
}

static void drawImage(View& view, const Msg& msg)
{
    const ImageListRef* list = view.dataAs<ImageListRef>();
    if (!list || !*list)
        return;
    if (const Int depth = std::min<Int>(msg.param & 0xFFFF, 8); depth != 0 && depth != (*list)->depth) {
        (*list)->depth = depth;
        LoadAllFrames(**list);
    }
    DrawImageFrame(*list, 0, {view.r.top, view.r.left, view.r.top, view.r.left}, 0);
}

static Int imageItem(View& view, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (const ImageSpec* spec = std::any_cast<ImageSpec>(&msg.obj); spec && !view.data.has_value()) {
            auto list = std::make_shared<ImageList>();
            list->resID = spec->resID, list->colorID = spec->colorID;
            list->first = spec->first, list->count = spec->count;
            list->depth = std::min<Int>(spec->depth, 8);
            LoadAllFrames(*list);
            view.data = list;
        }
        return 1;
    case kMsgDraw: drawImage(view, msg); return 1;
    case kMsgClick: return TrackView(view);
    case kMsgClose: view.data.reset(); return 1;
    case kMsgTimer:
    case kMsgDisable:
    case kMsgEnable: return 1;
    }
    return 0;
}

// ---- Controls

/// The control that follows the mouse now.
struct Tracking {
    View* view = nullptr;
    Int part = 0;
};
static RunState<Tracking> sTracking;

static ControlHandle controlOf(View& view)
{
    const ControlHandle* control = view.dataAs<ControlHandle>();
    return control ? *control : nullptr;
}

/// The action of controls whose item has a proc: time goes on, and the proc hears of the part.
static void controlAction(const ControlHandle&, Int part)
{
    TimersRun();
    View* view = sTracking->view;
    if (!view || !view->parent || !view->user)
        return;
    Msg msg{kMsgClick, (part & 0xFFFF) | sTracking->part << 16, 0, {}};
    view->user->fn(*view, msg);
}

static ControlHandle makeControl(View& view, const Msg& msg)
{
    const StyleScope style(view.style);
    if (view.kind() == kControlItem) {
        const ControlHandle control = GetNewControl(LoWord(msg.param), thePort);
        MoveControl(control, view.r.left, view.r.top);
        SizeControl(control, view.r.width(), view.r.height());
        return control;
    }
    const Bytes* text = std::any_cast<Bytes>(&msg.obj);
    return NewControl(thePort, view.r, text ? PStrOf(*text) : Str255{0}, true, 0, 0, 1, view.type & 3, 0);
}

static void openControl(View& view, const Msg& msg)
{
    if (!view.data.has_value())
        view.data = makeControl(view, msg);
    else if (const ControlHandle control = controlOf(view); control && view.user)
        SetCtlAction(control, controlAction);
}

static Int clickControl(View& view, const Msg& msg)
{
    const ControlHandle control = controlOf(view);
    if (!control || view.type < 0)
        return 0;
    // The item's own control is asked: one that belongs to a disabled item may lie in the same place.
    *sTracking = {&view, TestControl(control, msg.point())};
    const Int part = sTracking->part == 0 ? 0
        : sTracking->part == inThumb      ? TrackControl(control, msg.point(), nullptr)
                                          : TrackControl(control, msg.point(), nullptr, true);
    *sTracking = {};
    if (!view.parent || !view.data.has_value())
        return 0; // closed meanwhile
    if (part != 0 && (view.type & 3) == checkBoxProc)
        SetCtlValue(control, GetCtlValue(control) == 0);
    return part;
}

static void closeControl(View& view)
{
    const ControlHandle control = controlOf(view);
    view.data.reset();
    if (!control)
        return;
    if (view.disabled == 0) {
        DisposeControl(control);
        return;
    }
    // It does not show: nothing may be erased on its place.
    const GrafPtr port = control->port;
    RgnHandle nothing = NewRgn();
    std::swap(port->visRgn, nothing);
    DisposeControl(control);
    std::swap(port->visRgn, nothing);
}

static Int controlItem(View& view, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen: openControl(view, msg); return 1;
    case kMsgDraw:
        if (view.disabled == 0) {
            const StyleScope style(view.style);
            Draw1Control(controlOf(view));
        }
        return 1;
    case kMsgClick: return clickControl(view, msg);
    case kMsgClose: closeControl(view); return 1;
    case kMsgTimer: return 1;
    }
    return 0;
}

// ---- Groups of radio buttons

/// Switches control `n` of the group on and the others off.
static void choose(View& group, Int n)
{
    for (Int i = 1; i <= I(group.children.size()); ++i)
        SetCtlValue(controlOf(*GetItem(group, i)), i == n);
}

static Int radioGroup(View& view, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (!view.data.has_value()) {
            if ((msg.param & 0xFFFF) != 0)
                LoadItems(view, LoWord(msg.param));
        } else {
            for (std::size_t n = view.children.size(); n > 0; --n)
                SendMsg(*view.children[n - 1], msg);
            if (View* first = view.children.empty() ? nullptr : GetItem(view, 1))
                SetCtlValue(controlOf(*first), 1);
        }
        return 1;
    case kMsgClick: {
        const Int chosen = ClickChild(view, msg) & 0xFFFF;
        if (chosen != 0)
            choose(view, chosen);
        return chosen;
    }
    case kMsgDraw: DrawChildren(view, msg); return 1;
    case kMsgClose:
        CloseChildren(view);
        view.data.reset();
        return 1;
    case kMsgDisable: DisableChildren(view); return 1;
    case kMsgEnable: EnableChildren(view); return 1;
    }
    return 0;
}

const ViewProc UserItem{userItem};
const ViewProc ControlItem{controlItem};
const ViewProc TextItem{textItemProc};
const ViewProc FrameItem{frameItem};
const ViewProc ImageItemProc{imageItem};
const ViewProc RadioGroup{radioGroup};

} // namespace Wainroad
