#include "Wainroad/Frame/DialogItems.h"

#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Dialogs.h"
#include "MacToolbox/Managers/Lists.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/Picture.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"

namespace Wainroad {

static constexpr Int kScrollBarWidth = 16;

/// What icons and pictures share.
/// @param type  Of the resource that the item shows.
static Int resourceItem(View& view, Msg& msg, OSType type, void (*draw)(const Rect&, const Handle&))
{
    switch (msg.what) {
    case kMsgOpen:
        if (!view.data.has_value())
            view.data = GetResource(type, LoWord(msg.param));
        return 1;
    case kMsgDraw:
        if (const Handle* shown = view.dataAs<Handle>(); shown && *shown && (*shown)->count() > 0)
            draw(view.r, *shown);
        return 1;
    case kMsgClick: return TrackView(view);
    case kMsgClose: view.data.reset(); return 1;
    case kMsgTimer: return 1;
    }
    return 0;
}

static Int iconProc(View& view, Msg& msg) { return resourceItem(view, msg, os("ICON"), PlotIcon); }

static Int pictureProc(View& view, Msg& msg)
{
    return resourceItem(view, msg, os("PICT"), [](const Rect& r, const Handle& picture) { DrawPicture(picture, r); });
}

ListHandle ItemList(View& view)
{
    const ListHandle* list = view.dataAs<ListHandle>();
    return list ? *list : nullptr;
}

static void openList(View& view, const Msg& msg)
{
    FontInfo info;
    GetFontInfo(info);
    const Int rowHeight = info.ascent + info.descent + info.leading;
    if (rowHeight > 0)
        view.r.bottom -= view.r.height() % rowHeight - 2;
    Rect rows = view.r;
    rows.right -= kScrollBarWidth - 1;
    rows.inset(1, 1);
    const ListHandle list = LNew(rows, {0, 0, 0, 1}, {rowHeight, rows.width()}, 0, gWindow, false, false, false, true);
    if (list)
        list->selFlags = msg.param & 0xFF;
    LSetSelect(true, {0, 0}, list);
    view.data = list;
}

static void drawList(const View& view, const ListHandle& list)
{
    const Rect& r = view.r;
    FrameRect(r);
    MoveTo(r.right - kScrollBarWidth, r.top);
    LineTo(r.right - kScrollBarWidth, r.bottom - 1);
    LUpdate(thePort->visRgn, list);
}

static Int clickList(View& view, const Msg& msg)
{
    const ListHandle list = ItemList(view);
    if (!list)
        return -1;
    const bool twice = LClick(msg.point(), msg.modifiers, list);
    const Int row = LLastClick(list).v + 1;
    return twice ? row : -row;
}

static Int listProc(View& view, Msg& msg)
{
    const StyleScope style(view.style);
    const ListHandle list = ItemList(view);
    switch (msg.what) {
    case kMsgOpen:
        if (!view.data.has_value()) {
            openList(view, msg);
        } else if (list) {
            LDoDraw(true, list);
            ShowControl(list->vScroll); // made hidden, since the list was made without drawing
        }
        return 1;
    case kMsgDraw: drawList(view, list); return 1;
    case kMsgClick: return clickList(view, msg);
    case kMsgActivate:
        if (list)
            list->lActive = true;
        return 1;
    case kMsgDeactivate:
        if (list) {
            list->lActive = false;
            FrameRect({view.r.top, view.r.right - kScrollBarWidth, view.r.bottom, view.r.right});
        }
        return 1;
    case kMsgClose:
        LDispose(list);
        view.data.reset();
        return 1;
    case kMsgTimer: return 1;
    }
    return 0;
}

const ViewProc IconItem{iconProc};
const ViewProc PictureItem{pictureProc};
const ViewProc ListItem{listProc};

} // namespace Wainroad
