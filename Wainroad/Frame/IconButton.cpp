#include "Wainroad/Frame/IconButton.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "Wainroad/Frame/Utils.h"

#include <algorithm>

namespace Wainroad {

static constexpr Int kButtonImages = 129, kButtonColor = 10129;
static constexpr Int kIconButtonProc = 160; // definition 10
static constexpr Int kKeyWidth = 42, kKeyHeight = 46, kTitleLeft = 47;
static constexpr Int kIconBytes = 128;
static constexpr Int kInactive = 254, kGreyTitle = 255; // values of `hilite`

ImageListRef gButtonImages;

static const AtRunStart sRenew([] { gButtonImages = nullptr; });

void LoadButtonImages()
{
    gButtonImages = std::make_shared<ImageList>();
    gButtonImages->resID = kButtonImages;
    gButtonImages->colorID = kButtonColor;
    gButtonImages->count = 2;
    gButtonImages->depth = std::min<Int>(gScreenDepth, 4);
    LoadAllFrames(*gButtonImages);
}

std::shared_ptr<IconButtonRec> iconButton(View& view)
{
    const auto* record = view.dataAs<std::shared_ptr<IconButtonRec>>();
    return record ? *record : nullptr;
}

// ---- Drawing

Rect IconKeyRect(const Rect& r)
{
    const Int top = (r.top + r.bottom - kKeyHeight) / 2;
    return {top, r.left, top + kKeyHeight, r.width() > kKeyWidth ? r.left + kKeyWidth : r.right};
}

void DrawButtonFrame(View& view, Int state)
{
    const auto record = iconButton(view);
    if (!record)
        return;
    const bool down = state >= 1 && state < kInactive;
    const Rect key = IconKeyRect(view.r);
    DrawImageFrame(gButtonImages, down, key, srcCopy);
    if (state >= kInactive || !record->icon || record->icon->count() < kIconBytes)
        return;
    const BitMap icon(record->icon, 0, 4, {0, 0, 32, 32});
    const Int left = view.r.left + (down ? 8 : 4);
    CopyBits(icon, thePort->portBits, icon.bounds, {key.top + 7, left, key.top + 39, left + 32}, srcOr);
}

Int CountLines(const Str255& title)
{
    const auto text = characters(title);
    return std::count(text.begin(), text.end(), 13) + 1;
}

void DrawTitleLines(const Rect& r, const Str255& title)
{
    FontInfo info;
    GetFontInfo(info);
    const Int lineHeight = info.ascent + info.descent + info.leading;
    const auto text = characters(title);
    Int baseline = r.bottom - (r.height() - CountLines(title) * lineHeight) / 2 - info.leading - info.descent;
    for (Int end = I(text.size());;) {
        Int start = end;
        while (start > 0 && text[static_cast<std::size_t>(start - 1)] != 13)
            --start;
        MoveTo(r.left + kTitleLeft, baseline);
        DrawText(text, start, end - start);
        if (start == 0)
            break;
        end = start - 1;
        baseline -= lineHeight;
    }
}

void DrawButtonTitle(View& view)
{
    const auto record = iconButton(view);
    const Rect& r = view.r;
    if (!record || characters(record->title).empty() || r.left + kTitleLeft >= r.right)
        return;
    const StyleScope style(view.style);
    DrawTitleLines(r, record->title);
    if (record->hilite == kGreyTitle) {
        const PenScope pen;
        PenPat(Pattern::gray);
        PenMode(patBic);
        PaintRect({r.top, r.left + kTitleLeft, r.bottom, r.right});
    }
}

// ---- The item

static Handle iconResource(Int id) { return GetResource(os("ICON"), id); }

static Int openButton(View& view, const Msg& msg)
{
    if (iconButton(view))
        return 1;
    const Handle control = GetResource(os("CNTL"), LoWord(msg.param));
    if (!control)
        return 1;
    ByteReader in(control->bytes);
    in.pos = 10;
    const bool visible = in.u8() != 0;
    in.pos = 16;
    if (in.s16() != kIconButtonProc)
        return 0;
    auto record = std::make_shared<IconButtonRec>();
    record->iconID = LoWord(in.u32());
    const Int length = in.u8();
    const Int room = std::max<Int>(control->count() - in.pos, 0);
    record->title = PStrOf(in.raw(std::min(length, room)));
    record->icon = iconResource(record->iconID);
    view.handler = &IconButtonHandler;
    view.data = record;
    if (!visible)
        ++view.disabled;
    return 1;
}

/// Follows the mouse while the button is held. Time goes on, and the panel may go meanwhile.
static Int trackButton(View& view)
{
    const auto record = iconButton(view);
    if (!record || record->hilite >= kInactive)
        return 0;
    DrawButtonFrame(view, 1);
    bool inside = true;
    while (StillDown()) {
        TimersRun();
        if (iconButton(view) != record)
            return 0;
        Point mouse;
        GetMouse(mouse);
        if (view.r.contains(mouse) != inside) {
            inside = !inside;
            DrawButtonFrame(view, inside);
        }
    }
    if (!inside)
        return 0;
    DrawButtonFrame(view, 0);
    return 1;
}

static void drawButton(View& view, const Msg& msg)
{
    const auto record = iconButton(view);
    if (!record)
        return;
    if (const Int depth = std::min<Int>(msg.param & 0xFFFF, 4); depth != 0 && gButtonImages)
        gButtonImages->depth = depth;
    if (!record->icon)
        record->icon = iconResource(record->iconID);
    DrawButtonFrame(view, record->hilite);
    DrawButtonTitle(view);
}

Int CustomControlItem(View& view, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen: return openButton(view, msg);
    case kMsgDraw: drawButton(view, msg); return 1;
    case kMsgClick: return trackButton(view);
    case kMsgClose: view.data.reset(); return 1;
    }
    return 0;
}

const ViewProc IconButtonHandler{CustomControlItem};

void SetIconButtonIcon(View& panel, Int item, Int iconID, bool now)
{
    View* view = item == 0 ? nullptr : GetItem(panel, item);
    const auto record = view ? iconButton(*view) : nullptr;
    if (!record || record->iconID == iconID)
        return;
    record->iconID = iconID;
    record->icon = iconResource(iconID);
    if (view->disabled != 0)
        return;
    const ViewPortScope port(*view);
    if (now)
        DrawButtonFrame(*view, record->hilite);
    else
        InvalRect(IconKeyRect(view->r));
}

} // namespace Wainroad
