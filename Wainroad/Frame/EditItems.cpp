#include "Wainroad/Frame/EditItems.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Managers/Controls.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/Managers/Sound.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"

#include <algorithm>

namespace Wainroad {

enum Character : Int {
    kEnter = 3,
    kBackspace = 8,
    kReturn = 13,
    kEscape = 27,
    kLeft = 28,
    kRight = 29,
    kUp = 30,
    kDown = 31,
    kForwardDelete = 127
};
static constexpr Int kDefaultMaxChars = 10;
static constexpr Int kWholeText = 32767;

// ---- The focus

static void deactivateFocus()
{
    if (gFocus && gFocus->disabled == 0)
        TEDeactivate(gTE);
}

bool SetEditStyle(View& item)
{
    if (&item != gFocus || !gTE)
        return false;
    const StyleScope style(item.style);
    FontInfo info;
    GetFontInfo(info);
    gTE->txFont = item.style.font;
    gTE->txFace = item.style.face & 0xFF;
    gTE->txMode = item.style.mode;
    gTE->txSize = item.style.size;
    gTE->just = item.style.just;
    gTE->lineHeight = info.ascent + info.descent + info.leading;
    gTE->fontAscent = info.ascent;
    TECalText(gTE);
    return true;
}

static bool takeFocus(View& item)
{
    if (&item == gFocus || item.disabled != 0)
        return true;
    const Handle* text = item.dataAs<Handle>();
    if (!gTE || !text || !*text)
        return false;
    deactivateFocus();
    gFocus = &item;
    gTE->hText = *text;
    gTE->viewRect = gTE->destRect = item.r;
    SetEditStyle(item);
    const bool singleLine = item.r.height() < gTE->lineHeight * 3 / 2;
    gTE->autoView = singleLine;
    if (singleLine)
        gTE->destRect.right = 32767;
    TECalText(gTE);
    TESetSelect(0, 0, gTE);
    TEActivate(gTE);
    return true;
}

static bool loseFocus(View& item)
{
    if (&item != gFocus)
        return false;
    deactivateFocus();
    gFocus = nullptr;
    return true;
}

/// Gives an edit item the focus and selects all its text.
static bool focusWhole(View* item)
{
    if (!item || !EditTE(item, kMsgActivate))
        return false;
    TESetSelect(0, kWholeText, gTE);
    return true;
}

static bool isEdit(const View& view) { return view.kind() == kEditItem && view.handler == &EditItem; }

/// The place of the focus among its panel's items; -1 if it is none of this panel's.
static Int focusIndex(const View& panel)
{
    if (!gFocus || gFocus->parent != &panel)
        return -1;
    const auto& list = panel.children;
    return std::find_if(list.begin(), list.end(), [](const auto& child) { return child.get() == gFocus; })
        - list.begin();
}

bool NextEditItem(View& panel)
{
    const Int at = focusIndex(panel), count = I(panel.children.size());
    if (at < 0)
        return false;
    for (Int step = 1; step <= count; ++step) {
        View& item = *panel.children[static_cast<std::size_t>((at + step) % count)];
        if (isEdit(item))
            return focusWhole(&item);
    }
    return false;
}

static void previousEditItem(View& panel)
{
    const Int at = focusIndex(panel), count = I(panel.children.size());
    if (at < 0)
        return;
    for (Int step = 1; step <= count; ++step) {
        View& item = *panel.children[static_cast<std::size_t>((at - step + count) % count)];
        if (isEdit(item)) {
            focusWhole(&item);
            return;
        }
    }
}

Int EditItemNumber(const View& item)
{
    if (!item.parent || item.kind() != kEditItem)
        return 0;
    Int number = 0;
    for (const auto& child : item.parent->children) {
        number += child->kind() == kEditItem;
        if (child.get() == &item)
            return number;
    }
    return 0;
}

void SelectItemText(View& panel, Int item, Int start, Int end)
{
    View* view = item == 0 ? nullptr : GetItem(panel, item);
    if (!view || view->kind() != kEditItem)
        return;
    const ViewPortScope port(*view);
    if (EditTE(view, kMsgActivate) && view == gFocus)
        TESetSelect(start, end, gTE);
}

// ---- What may be typed

static Str255 countedPart(const Bytes& bytes, Int from, Int to)
{
    const Int size = I(bytes.size());
    from = std::clamp<Int>(from, 0, size);
    to = std::clamp<Int>(to, from, size);
    return PStrOf(std::span(bytes).subspan(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)));
}

bool TEFitsWidth(std::uint8_t character, bool useScrap, Int maxWidth, const TEHandle& te)
{
    if (!te || !te->hText)
        return false;
    const StyleScope style({te->txFont, te->txFace, te->txMode, te->txSize, 0});
    const Bytes& text = te->hText->bytes;
    const Str255 added = useScrap ? countedPart(TEScrap::bytes(), 0, 255) : Str255{1, character};
    const Int width = StringWidth(added) + StringWidth(countedPart(text, 0, 255))
        - StringWidth(countedPart(text, te->selStart, te->selEnd));
    return width <= maxWidth;
}

bool ScrapFits() { return gTE && gTE->teLength() + TEScrpLength() - (gTE->selEnd - gTE->selStart) <= gTEMaxChars; }

/// Whether the fields' rules let the character in.
static bool accepts(std::uint8_t c)
{
    if (gTE->teLength() - (gTE->selEnd - gTE->selStart) >= gTEMaxChars)
        return false;
    if (gTENumeric != 0)
        return c >= '0' && c <= '9';
    return gTELimitWidth == 0 || TEFitsWidth(c, false, gTEMaxWidth, gTE);
}

static void paste()
{
    if (ScrapFits() && (gTELimitWidth == 0 || TEFitsWidth(0, true, gTEMaxWidth, gTE)))
        TEPaste(gTE);
    else
        SysBeep(1);
}

static bool commandKey(View& item, Int c)
{
    if (c >= 'a' && c <= 'z')
        c -= 'a' - 'A';
    switch (c) {
    case '.':
        if (gCancelItem != 0)
            PressButton(item.parent, gCancelItem);
        return true;
    case 'C': TECopy(gTE); return true;
    case 'X': TECut(gTE); return true;
    case 'V': paste(); return true;
    }
    return false;
}

static bool plainKey(View& item, Int c)
{
    switch (c) {
    case kEnter:
    case kReturn:
        if (gEditItems < 2 && gReturnItem != 0)
            PressButton(item.parent, gReturnItem);
        else if (item.parent)
            NextEditItem(*item.parent);
        return true;
    case kBackspace:
    case kEscape:
    case kForwardDelete: TEKey(kBackspace, gTE); return true;
    case kLeft:
    case kRight: TEKey(c, gTE); return true;
    case kUp:
        if (item.parent)
            previousEditItem(*item.parent);
        return true;
    case kDown:
        if (item.parent)
            NextEditItem(*item.parent);
        return true;
    }
    if (c < 32)
        return true;
    if (accepts(static_cast<std::uint8_t>(c)))
        TEKey(c, gTE);
    else
        SysBeep(1);
    return true;
}

static bool key(View& item, const Msg& msg)
{
    if (FrontWindow() != gWindow || item.disabled != 0)
        return true;
    if (&item != gFocus || !gTE)
        return false;
    if (gTEMaxChars < 1)
        gTEMaxChars = kDefaultMaxChars;
    return (msg.modifiers & cmdKey) != 0 ? commandKey(item, msg.character()) : plainKey(item, msg.character());
}

// ---- The engine

static bool forAll(const Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        gTE = TENew(thePort->portRect, thePort->portRect);
        if (gTE)
            gTE->hText = nullptr;
        return true;
    case kMsgClose:
        gTE = nullptr;
        gFocus = nullptr;
        return true;
    }
    if (!gTE || !gFocus || gFocus->disabled != 0)
        return false;
    switch (msg.what) {
    case kMsgTimer: TEIdle(gTE); return true;
    case kMsgActivate: TEActivate(gTE); return true;
    case kMsgDeactivate: TEDeactivate(gTE); return true;
    }
    return false;
}

bool EditTE(View* item, const Msg& msg)
{
    if (!item)
        return forAll(msg);
    switch (msg.what) {
    case kMsgActivate: return takeFocus(*item);
    case kMsgDeactivate: return loseFocus(*item);
    case kMsgKey: return key(*item, msg);
    case kMsgClick:
        if (item != gFocus)
            return false;
        TEClick(msg.point(), (msg.modifiers & shiftKey) != 0, gTE);
        return true;
    case kMsgDraw:
        if (item != gFocus)
            return false;
        TEUpdate(thePort->visRgn->rgnBBox(), gTE);
        return true;
    }
    return false;
}

bool EditTE(View* item, Int what) { return EditTE(item, Msg{what, 0, 0, {}}); }

// ---- The item

static void drawEdit(View& view, const Msg& msg)
{
    const PenScope pen;
    PenNormal();
    const Rect& r = view.r;
    FrameRect({r.top - 3, r.left - 4, r.bottom + 3, r.right + 4});
    EraseRect(r);
    if (EditTE(&view, msg))
        return;
    if (const Handle* text = view.dataAs<Handle>(); text && *text) {
        const StyleScope style(view.style);
        const Bytes bytes = (*text)->bytes;
        TextBox(bytes, I(bytes.size()), r, view.style.just);
    }
}

static Int editItem(View& view, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (!view.data.has_value()) {
            const Bytes* text = std::any_cast<Bytes>(&msg.obj);
            view.data = PtrToHand(text ? *text : Bytes());
        }
        return 1;
    case kMsgDraw: drawEdit(view, msg); return 1;
    case kMsgClick: EditTE(&view, kMsgActivate); return EditTE(&view, msg);
    case kMsgKey:
        if (view.user && view.user->fn(view, msg) == 0)
            return 0;
        return EditTE(&view, msg);
    case kMsgClose:
        EditTE(&view, kMsgDeactivate);
        view.data.reset();
        return 1;
    case kMsgTimer: return 1;
    }
    return 0;
}

const ViewProc EditItem{editItem};

} // namespace Wainroad
