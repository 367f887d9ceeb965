#include "Tests/Walk/Surface.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "Wainroad/Frame/IconButton.h"
#include "Wainroad/Frame/Items.h"

#include <algorithm>

namespace Harness {

using namespace MacToolbox;
using namespace Wainroad;

namespace {

constexpr Int kRing = 4; // from a default button to the outside of its ring
constexpr Int kButtonMargin = 8,
              kBoxMargin = 18;    // beside the title of a push button, and of a check box or radio button
constexpr Int kKeyTitleLeft = 47; // of an icon button

// ---- What a text needs

Int lineHeight()
{
    FontInfo font;
    GetFontInfo(font);
    return font.ascent + font.descent + font.leading;
}

/// Height and width of a text set in the current port's font between the edges of `r`. A word that is too wide for a
/// line makes the width larger than that of `r`.
Point wrappedSize(std::span<const std::uint8_t> text, const Rect& r)
{
    TERec te(r, r, thePort);
    te.hText = PtrToHand(text);
    te.calc();
    Int width = 0;
    if (text.empty())
        return {0, 0};
    for (Int line = 0; line < te.nLines(); ++line) {
        const Int end = te.lineStart(line + 1);
        const std::uint8_t last = text[static_cast<std::size_t>(end - 1)];
        width = std::max(width, te.width(te.lineStart(line), end));
        if (end < I(text.size()) && last != ' ' && last != '\r' && last != '-')
            width = r.width() + 1;
        else if (last == ' ')
            width = std::min(width, r.width()); // a blank may hang over
    }
    return {te.nLines() * te.lineHeight, width};
}

Point titleSize(const Str255& title, Int margin) { return {lineHeight() - 2, StringWidth(title) + margin}; }

Point controlSize(const ControlHandle& control, Int kind)
{
    return control ? titleSize(control->contrlTitle, kind == kButtonItem ? kButtonMargin : kBoxMargin) : Point{0, 0};
}

Point keySize(const IconButtonRec& key)
{
    Int width = 0;
    std::size_t start = 1;
    for (std::size_t i = 1; i <= key.title.size(); ++i)
        if (i == key.title.size() || key.title[i] == '\r') {
            width = std::max(width, TextWidth(key.title, I(start), I(i - start)));
            start = i + 1;
        }
    const Int left = characters(key.title).empty() ? 42 : kKeyTitleLeft;
    return {std::max<Int>(46, CountLines(key.title) * lineHeight()), left + width};
}

// ---- What an item draws

/// What is black when the item alone draws itself.
BitMap drawnBy(View& item)
{
    const BitMap screen = thePort->portBits;
    const RgnHandle visible = thePort->visRgn, clip = thePort->clipRgn;
    thePort->portBits = BitMap(screen.bounds);
    thePort->visRgn = NewRgn();
    thePort->visRgn->region = Region(screen.bounds);
    ClipRect(screen.bounds);
    SendMsg(item, kMsgDraw);
    const BitMap drawn = thePort->portBits;
    thePort->portBits = screen;
    thePort->visRgn = visible;
    thePort->clipRgn = clip;
    return drawn;
}

Rect boundsOf(const BitMap& drawn)
{
    Rect ink;
    for (Int v = drawn.bounds.top; v < drawn.bounds.bottom; ++v)
        for (Int h = drawn.bounds.left; h < drawn.bounds.right; ++h)
            if (drawn.get(h, v))
                ink = ink.isEmpty() ? Rect{v, h, v + 1, h + 1} : ink.unionWith({v, h, v + 1, h + 1});
    return ink;
}

// ---- Panels

Point needsOf(View& item)
{
    const StyleScope style(item.style);
    switch (item.kind()) {
    case kTextItem:
        if (const Handle* text = item.dataAs<Handle>(); text && *text)
            return wrappedSize((*text)->bytes, item.r);
        return {0, 0};
    case kEditItem: return {lineHeight(), 0};
    case kButtonItem:
    case kCheckItem:
    case kRadioItem: {
        const ControlHandle* control = item.dataAs<ControlHandle>();
        const TextScope system;
        TextFont(systemFont);
        TextSize(12);
        TextFace(normal);
        return control ? controlSize(*control, item.kind()) : Point{0, 0};
    }
    case kControlItem:
        if (const auto key = iconButton(item))
            return keySize(*key);
        return {0, 0};
    default: return {0, 0};
    }
}

void addItem(View& item, Int number, std::vector<Box>& boxes)
{
    if (item.disabled != 0)
        return;
    if (item.handler == &RadioGroup) {
        for (std::size_t n = 0; n < item.children.size(); ++n)
            addItem(*item.children[n], number * 100 + I(n) + 1, boxes);
        return;
    }
    Box box{number, item.r, item.r, needsOf(item), {}, item.type >= 0 && item.kind() != kTextItem, false, false};
    box.ground = item.kind() == kUserItem || item.kind() == kPictureItem;
    if (item.kind() == kUserItem && item.handler != &UserItem) {
        box.drawn = drawnBy(item);
        box.ink = item.r.unionWith(boundsOf(box.drawn));
    }
    boxes.push_back(box);
}

/// The push button with a ring round it: the `gOutlineItem`-th, counted from the last item.
const View* ringedButton(const View& panel)
{
    Int left = gKeyPanel == &panel ? gOutlineItem : 0;
    for (auto item = panel.children.rbegin(); left > 0 && item != panel.children.rend(); ++item)
        if ((*item)->type == kButtonItem && --left == 0)
            return item->get();
    return nullptr;
}

// ---- Dialogs

Point needsOf(const DItem& item)
{
    using Kind = DItemHandle::Kind;
    if (item.handle.is(Kind::control))
        return controlSize(item.handle.ctl, item.kind());
    if (!item.handle.is(Kind::text) || !item.handle.block)
        return {0, 0};
    if (item.kind() == editText)
        return {lineHeight(), 0};
    return wrappedSize(expandParams(item.handle.block->bytes), item.rect);
}

// ---- Faults

std::string named(const Box& box) { return "item " + std::to_string(box.number) + " " + box.r.description(); }

bool holds(const Rect& outer, const Rect& inner) { return outer.unionWith(inner) == outer; }

/// True if one of them is a ground that the other stands on.
bool standsOn(const Box& a, const Box& b)
{
    const auto carries = [](const Box& ground, const Box& other) {
        return (ground.ground || ground.through) && holds(ground.ink, other.ink);
    };
    return carries(a, b) || carries(b, a);
}

/// True if black pixels of `a` lie on those of `b`, or within `b` where its pixels are not known.
bool inkMeets(const Box& a, const Box& b)
{
    const Rect both = a.ink.intersection(b.ink);
    const auto black = [](const Box& box, Int h, Int v) {
        return box.drawn.baseAddr ? box.drawn.get(h, v) : box.ink.contains(h, v);
    };
    for (Int v = both.top; v < both.bottom; ++v)
        for (Int h = both.left; h < both.right; ++h)
            if (black(a, h, v) && black(b, h, v))
                return true;
    return false;
}

bool overlap(const Box& a, const Box& b)
{
    if (standsOn(a, b))
        return false;
    const bool known = a.drawn.baseAddr || b.drawn.baseAddr;
    return a.r.intersects(b.r) || (known ? inkMeets(a, b) : a.ink.intersects(b.ink));
}

const Box* topmost(const std::vector<Box>& boxes, Point at)
{
    for (auto box = boxes.rbegin(); box != boxes.rend(); ++box)
        if (!box->through && box->r.contains(at))
            return &*box;
    return nullptr;
}

/// True if the middle and more than half of a box answer to the mouse.
bool isReachable(const Surface& surface, const Box& box)
{
    const auto reaches = [&](Point at) { return surface.room.contains(at) && topmost(surface.boxes, at) == &box; };
    Int points = 0, reached = 0;
    for (Int v = box.r.top; v < box.r.bottom; v += 3)
        for (Int h = box.r.left; h < box.r.right; h += 3, ++points)
            reached += reaches({v, h});
    return reaches({(box.r.top + box.r.bottom) / 2, (box.r.left + box.r.right) / 2}) && reached * 2 > points;
}

} // namespace

Surface surfaceOf(const std::string& name, View& panel)
{
    const ViewPortScope port(panel);
    Surface surface{name, panel.r, {}};
    for (std::size_t n = 0; n < panel.children.size(); ++n)
        addItem(*panel.children[n], I(n) + 1, surface.boxes);
    if (const View* button = ringedButton(panel); button && button->disabled == 0) {
        const Rect ring = button->r.insetBy(-kRing, -kRing);
        surface.boxes.push_back({0, ring, ring, {0, 0}, {}, false, false, true});
    }
    return surface;
}

Surface surfaceOf(const std::string& name, const DialogPtr& dialog)
{
    constexpr Int kFieldFrame = 3;
    const PortScope port(dialog->port);
    Surface surface{name, dialog->portRect(), {}};
    if (dialog->alertIcon) {
        const Rect icon{10, 20, 42, 52};
        surface.boxes.push_back({0, icon, icon, {0, 0}, {}, false, false, true});
    }
    for (Int n = 1; n <= I(dialog->items.size()); ++n) {
        const DItem& item = *dialog->item(n);
        if (item.hidden)
            continue;
        const Rect ink = item.kind() == editText ? item.rect.insetBy(-kFieldFrame, -kFieldFrame) : item.rect;
        const bool text = item.kind() == statText, user = item.kind() == userItem;
        surface.boxes.push_back(
            {n, item.rect, ink, needsOf(item), {}, !item.disabled() && !text, user, user && item.disabled()});
    }
    return surface;
}

std::vector<std::string> faultsOf(const Surface& surface)
{
    std::vector<std::string> faults;
    const auto fault = [&](const std::string& text) { faults.push_back(surface.name + ": " + text); };
    for (std::size_t i = 0; i < surface.boxes.size(); ++i) {
        const Box& box = surface.boxes[i];
        if (!holds(surface.room, box.ink))
            fault(named(box) + " lies outside " + surface.room.description() + ": " + box.ink.description());
        if (box.needs.v > box.r.height() || box.needs.h > box.r.width())
            fault(named(box) + " cuts its text, which needs " + std::to_string(box.needs.v) + " by "
                + std::to_string(box.needs.h));
        if (box.clicks && !isReachable(surface, box))
            fault(named(box) + " cannot be reached by the mouse");
        for (std::size_t j = i + 1; j < surface.boxes.size(); ++j)
            if (const Box& other = surface.boxes[j]; overlap(box, other))
                fault(named(box) + " overlaps " + named(other));
    }
    return faults;
}

} // namespace Harness
