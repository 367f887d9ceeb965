#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Managers/Controls.h"
#include "MacToolbox/QuickDraw/Fonts.h"

#include <algorithm>
#include <optional>

// The two built-in control definitions.

namespace MacToolbox {

namespace {

constexpr Int kBox = 16; // an arrow box or a thumb, along the bar, pixels

/// Pen and text settings of a control's port, set for drawing a control and put back at the end.
class DrawingScope {
public:
    explicit DrawingScope(GrafPort& port)
        : port_(port), pen_(port.penState()), font_(port.txFont), face_(port.txFace), mode_(port.txMode),
          size_(port.txSize)
    {
        port.pnSize = {1, 1};
        port.pnMode = patCopy;
        port.pnPat = Pattern::black;
        port.txMode = srcOr;
    }
    ~DrawingScope()
    {
        port_.setPenState(pen_);
        port_.txFont = font_, port_.txFace = face_, port_.txMode = mode_, port_.txSize = size_;
    }
    DrawingScope(const DrawingScope&) = delete;
    DrawingScope& operator=(const DrawingScope&) = delete;

private:
    GrafPort& port_;
    PenState pen_;
    Int font_, face_, mode_, size_;
};

void drawTitle(GrafPort& port, const ControlRecord& c, Int h, Int v)
{
    port.pnLoc = {v, h};
    FontManager::shared().draw(port, characters(c.contrlTitle));
}

Int titleBaseline(const GrafPort& port, const Rect& r)
{
    const FontInfo info = FontManager::shared().info(port);
    return info.ascent + (r.top + r.bottom - info.ascent - info.descent) / 2;
}

void drawPushButton(GrafPort& port, const ControlRecord& c)
{
    const Rect& r = c.contrlRect;
    const Rect reach = port.reach();
    port.fill(Region::roundRect(r, 16, 16, reach), port.bkPat, patCopy);
    port.frameRoundRect(r, 16, 16);
    const Int width = FontManager::shared().width(port, characters(c.contrlTitle));
    drawTitle(port, c, (r.left + r.right - width) / 2, titleBaseline(port, r));
    if (c.contrlHilite == 0)
        return;
    const Region inner = Region::roundRect(r.insetBy(1, 1), 14, 14, reach);
    if (c.contrlHilite == 255)
        port.fill(inner, Pattern::gray, patBic);
    else
        port.fill(inner, Pattern::black, patXor);
}

void drawRadioMark(GrafPort& port, const ControlRecord& c, const Rect& box, bool pressed)
{
    port.frameRoundRect(box, 12, 12);
    if (pressed)
        port.frameRoundRect(box.insetBy(1, 1), 10, 10);
    if (c.contrlValue != 0)
        port.paint(Region::roundRect(box.insetBy(3, 3), 6, 6, port.reach()));
}

void drawCheckMark(GrafPort& port, const ControlRecord& c, const Rect& box, bool pressed)
{
    port.frameRect(box);
    if (pressed)
        port.frameRect(box.insetBy(1, 1));
    if (c.contrlValue == 0)
        return;
    port.pnLoc = {box.top, box.left};
    port.lineTo(box.right - 1, box.bottom - 1);
    port.pnLoc = {box.bottom - 1, box.left};
    port.lineTo(box.right - 1, box.top);
}

void drawMarkedButton(GrafPort& port, const ControlRecord& c, bool radio)
{
    const Rect& r = c.contrlRect;
    port.fill(r, port.bkPat, patCopy);
    const Int mid = (r.top + r.bottom) / 2;
    const Rect box{mid - 6, r.left + 2, mid + 6, r.left + 14};
    const bool pressed = c.contrlHilite != 0 && c.contrlHilite != 255;
    if (radio)
        drawRadioMark(port, c, box, pressed);
    else
        drawCheckMark(port, c, box, pressed);
    drawTitle(port, c, r.left + 18, titleBaseline(port, r));
    if (c.contrlHilite == 255)
        port.fill(r, Pattern::gray, patBic);
}

void drawButton(Int variant, const ControlRecord& c)
{
    GrafPort& port = *c.port;
    const DrawingScope scope(port);
    if ((variant & useWFont) == 0) {
        port.txFont = systemFont;
        port.txFace = normal;
        port.txSize = 12;
    }
    const Int kind = variant & 3;
    if (kind == pushButProc)
        drawPushButton(port, c);
    else
        drawMarkedButton(port, c, kind == radioButProc);
}

bool isLive(const ControlRecord& c, Point p)
{
    return c.contrlVis && c.contrlHilite != 255 && c.contrlRect.contains(p);
}

/// A scroll bar, told along its length.
struct Bar {
    explicit Bar(const ControlRecord& control)
        : c(control), r(control.contrlRect), horizontal(r.width() >= r.height()),
          length(std::max(r.width(), r.height()))
    {
    }

    /// The part of the bar from `from` to `to` along it, at full thickness less `margin` at either side.
    Rect part(Int from, Int to, Int margin = 0) const
    {
        return horizontal ? Rect{r.top + margin, r.left + from, r.bottom - margin, r.left + to}
                          : Rect{r.top + from, r.left + margin, r.top + to, r.right - margin};
    }
    /// Where the thumb begins along the bar; nothing if there is none.
    std::optional<Int> thumb() const
    {
        const Int usable = length - 3 * kBox;
        if (c.contrlMin >= c.contrlMax || c.contrlHilite == 255 || usable < 1)
            return std::nullopt;
        return kBox + (c.contrlValue - c.contrlMin) * usable / (c.contrlMax - c.contrlMin);
    }
    Int along(Point p) const { return horizontal ? p.h - r.left : p.v - r.top; }

    const ControlRecord& c;
    const Rect r;
    const bool horizontal;
    const Int length;
};

Int scrollBarPart(const Bar& bar, Point p)
{
    const Int pos = bar.along(p);
    if (pos < kBox)
        return inUpButton;
    if (pos >= bar.length - kBox)
        return inDownButton;
    const std::optional<Int> thumb = bar.thumb();
    if (!thumb)
        return 0;
    if (pos < *thumb)
        return inPageUp;
    return pos < *thumb + kBox ? inThumb : inPageDown;
}

/// The upward arrow in the middle of a box, or its mirror image.
Region arrow(const Rect& box, bool down)
{
    const Int c = (box.left + box.right) / 2;
    std::vector<std::vector<Int>> rows;
    for (Int i = 0; i < 6; ++i)
        rows.push_back({c - i, c + i + 1});
    for (Int i = 0; i < 4; ++i)
        rows.push_back({c - 2, c + 3});
    if (down)
        std::reverse(rows.begin(), rows.end());
    return Region::fromRows((box.top + box.bottom) / 2 - 5, rows);
}

void drawArrow(GrafPort& port, const Region& outer, bool filled)
{
    if (filled) {
        port.paint(outer);
        return;
    }
    const Region inner = outer.intersection(outer.offsetBy(1, 0))
                             .intersection(outer.offsetBy(-1, 0))
                             .intersection(outer.offsetBy(0, 1))
                             .intersection(outer.offsetBy(0, -1));
    port.frame(outer, inner);
}

void drawScrollBar(const ControlRecord& c)
{
    GrafPort& port = *c.port;
    const DrawingScope scope(port);
    const Bar bar(c);
    const Rect first = bar.part(0, kBox), last = bar.part(bar.length - kBox, bar.length);
    port.fill(c.contrlRect, port.bkPat, patCopy);
    port.frameRect(c.contrlRect);
    port.frameRect(first);
    port.frameRect(last);
    if (!bar.horizontal) {
        drawArrow(port, arrow(first, false), c.contrlHilite == inUpButton);
        drawArrow(port, arrow(last, true), c.contrlHilite == inDownButton);
    }
    if (const std::optional<Int> thumb = bar.thumb()) {
        const Rect box = bar.part(*thumb, *thumb + kBox);
        port.fill(bar.part(kBox, bar.length - kBox, 1), Pattern::gray, patCopy);
        port.fill(box, port.bkPat, patCopy);
        port.frameRect(box);
    }
}

} // namespace

Int ControlManager::standardButton(Int variant, const ControlHandle& control, Int message, Int param)
{
    if (message == testCntl)
        return !isLive(*control, Point::fromLong(param)) ? 0 : (variant & 3) == pushButProc ? inButton : inCheckBox;
    if (message == drawCntl && control->contrlVis)
        drawButton(variant, *control);
    return 0;
}

Int ControlManager::scrollBar(Int, const ControlHandle& control, Int message, Int param)
{
    const Point p = Point::fromLong(param);
    if (message == testCntl)
        return isLive(*control, p) ? scrollBarPart(Bar(*control), p) : 0;
    if (message == drawCntl && control->contrlVis)
        drawScrollBar(*control);
    return 0;
}

} // namespace MacToolbox
