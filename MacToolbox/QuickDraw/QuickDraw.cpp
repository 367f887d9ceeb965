#include "MacToolbox/QuickDraw/QuickDraw.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/QuickDraw/ClipArea.h"
#include "MacToolbox/QuickDraw/Raster.h"
#include "MacToolbox/QuickDraw/Screen.h"

namespace MacToolbox {

static GrafPtr firstPort() { return std::make_shared<GrafPort>(Rect{0, 0, 1, 1}); }

GrafPtr thePort = firstPort();
QDGlobals qd{thePort, Screen::shared().bits};

static const AtRunStart sAfresh([] {
    thePort = firstPort();
    qd.screenBits = Screen::shared().bits;
    qd.white = Pattern::white, qd.black = Pattern::black;
    qd.gray = Pattern::gray, qd.ltGray = Pattern::ltGray, qd.dkGray = Pattern::dkGray;
    qd.randSeed = 1;
});

GrafPort::GrafPort(BitMap bits)
    : portBits(std::move(bits)), portRect(portBits.bounds),
      visRgn(std::make_shared<RgnRecord>(Region(portBits.bounds))),
      clipRgn(std::make_shared<RgnRecord>(Region(kHugeRect)))
{
}

Rect GrafPort::reach() const
{
    if (recording)
        return Region::kReach;
    return portBits.bounds.intersection(visRgn->region.bounds()).intersection(clipRgn->region.bounds());
}

// ---- painting ----

static void fillArea(const GrafPort& port, const ClipArea& area, const Pattern& pattern, Int mode)
{
    if (area.isEmpty() || !port.portBits.baseAddr)
        return;
    Screen::shared().noteChange(port.portBits);
    const RasterOp op = RasterOp::of(mode, port.fgColor.isBlack(), port.bkColor.isBlack());
    area.forEachRect([&](const Rect& r) { fillPixels(port.portBits, r, pattern, op); });
}

void GrafPort::fill(const Region& shape, const Pattern& pattern, Int mode)
{
    if (recording) {
        Region::combine(Region::Op::exclusiveOr, recording->areas, shape, recording->areas);
        return;
    }
    ClipArea area(*this);
    area.cut(shape);
    fillArea(*this, area, pattern, mode);
}

void GrafPort::fill(const Rect& rect, const Pattern& pattern, Int mode)
{
    if (recording)
        return fill(Region(rect), pattern, mode);
    ClipArea area(*this);
    area.cut(rect);
    fillArea(*this, area, pattern, mode);
}

void GrafPort::paint(const Region& shape)
{
    if (pnVis >= 0 || recording)
        fill(shape, pnPat, pnMode);
}

void GrafPort::frame(const Region& outer, const Region& inner)
{
    if (recording) {
        Region::combine(Region::Op::exclusiveOr, recording->areas, outer, recording->areas);
        return;
    }
    if (pnVis >= 0)
        fill(outer.subtracting(inner), pnPat, pnMode);
}

/// `r` without a border of the pen's size; an empty rectangle if nothing is left.
static Rect insidePen(const Rect& r, Point pen)
{
    const Rect inner{r.top + pen.v, r.left + pen.h, r.bottom - pen.v, r.right - pen.h};
    return inner.isEmpty() ? Rect{} : inner;
}

void GrafPort::frameRect(const Rect& r)
{
    if (!r.isEmpty())
        frame(Region(r), Region(insidePen(r, pnSize)));
}

void GrafPort::frameRoundRect(const Rect& r, Int ovalWidth, Int ovalHeight)
{
    if (r.isEmpty())
        return;
    const Rect within = reach();
    const Int innerWidth = std::max<Int>(ovalWidth - 2 * pnSize.h, 0);
    const Int innerHeight = std::max<Int>(ovalHeight - 2 * pnSize.v, 0);
    frame(Region::roundRect(r, ovalWidth, ovalHeight, within),
        Region::roundRect(insidePen(r, pnSize), innerWidth, innerHeight, within));
}

void GrafPort::frameRgn(const Region& rgn)
{
    Region inner = rgn.offsetBy(pnSize.h, 0).intersection(rgn);
    inner = rgn.offsetBy(-pnSize.h, 0).intersection(inner);
    inner = rgn.offsetBy(0, pnSize.v).intersection(inner);
    inner = rgn.offsetBy(0, -pnSize.v).intersection(inner);
    frame(rgn, inner);
}

void GrafPort::lineTo(Int h, Int v)
{
    const Point from = pnLoc;
    pnLoc = {v, h};
    if (recording)
        recording->edges.emplace_back(from, pnLoc);
    else if (pnVis >= 0)
        fill(Region::line(from, pnLoc, pnSize, reach()), pnPat, pnMode);
}

// ---- ports ----

const GDHandle& mainDevice()
{
    static const GDHandle& device = *new GDHandle(std::make_shared<GDevice>());
    return device;
}

void SetPort(const GrafPtr& port)
{
    if (port)
        thePort = port;
}

void SetPortBits(const BitMap& bits) { thePort->portBits = bits; }

void PortSize(Int width, Int height)
{
    Rect& r = thePort->portRect;
    r.bottom = r.top + height;
    r.right = r.left + width;
}

void SetOrigin(Int h, Int v)
{
    GrafPort& port = *thePort;
    const Int dh = h - port.portRect.left, dv = v - port.portRect.top;
    if (dh == 0 && dv == 0)
        return;
    port.portRect.offset(dh, dv);
    port.portBits.bounds.offset(dh, dv);
    port.visRgn->region = port.visRgn->region.offsetBy(dh, dv);
}

void LocalToGlobal(Point& pt) { SubPt(thePort->portBits.bounds.topLeft(), pt); }
void GlobalToLocal(Point& pt) { AddPt(thePort->portBits.bounds.topLeft(), pt); }

void ClipRect(const Rect& r) { thePort->clipRgn = std::make_shared<RgnRecord>(Region(r)); }

void SetClip(const RgnHandle& rgn)
{
    if (rgn)
        thePort->clipRgn = std::make_shared<RgnRecord>(rgn->region);
}

void GetClip(const RgnHandle& rgn) { CopyRgn(thePort->clipRgn, rgn); }

// ---- pen and colours ----

void MoveTo(Int h, Int v) { thePort->pnLoc = {v, h}; }
void Move(Int dh, Int dv) { AddPt({dv, dh}, thePort->pnLoc); }
void LineTo(Int h, Int v) { thePort->lineTo(h, v); }
void Line(Int dh, Int dv) { thePort->lineTo(thePort->pnLoc.h + dh, thePort->pnLoc.v + dv); }
void GetPen(Point& pt) { pt = thePort->pnLoc; }
void PenSize(Int width, Int height) { thePort->pnSize = {height, width}; }
void PenPat(const Pattern& pat) { thePort->pnPat = pat; }
void PenMode(Int mode) { thePort->pnMode = mode; }
void BackPat(const Pattern& pat) { thePort->bkPat = pat; }

void PenNormal()
{
    thePort->pnSize = {1, 1};
    thePort->pnMode = patCopy;
    thePort->pnPat = Pattern::black;
}

void HidePen() { --thePort->pnVis; }
void ShowPen() { ++thePort->pnVis; }
void GetPenState(PenState& state) { state = thePort->penState(); }
void SetPenState(const PenState& state) { thePort->setPenState(state); }
void ForeColor(Int color) { thePort->fgColor = color == whiteColor ? RGBColor::white : RGBColor::black; }
void BackColor(Int color) { thePort->bkColor = color == blackColor ? RGBColor::black : RGBColor::white; }
void RGBForeColor(const RGBColor& color) { thePort->fgColor = color; }
void RGBBackColor(const RGBColor& color) { thePort->bkColor = color; }
void GetForeColor(RGBColor& color) { color = thePort->fgColor; }
void GetBackColor(RGBColor& color) { color = thePort->bkColor; }

// ---- shapes ----

static Region roundShape(const Rect& r, Int ow, Int oh) { return Region::roundRect(r, ow, oh, thePort->reach()); }
static Region ovalShape(const Rect& r) { return Region::oval(r, thePort->reach()); }

void PaintRect(const Rect& r)
{
    if (thePort->pnVis >= 0 || thePort->recording)
        thePort->fill(r, thePort->pnPat, thePort->pnMode);
}
void EraseRect(const Rect& r) { thePort->fill(r, thePort->bkPat, patCopy); }
void InvertRect(const Rect& r) { thePort->fill(r, Pattern::black, patXor); }
void FillRect(const Rect& r, const Pattern& pat) { thePort->fill(r, pat, patCopy); }
void FrameRect(const Rect& r) { thePort->frameRect(r); }

void PaintRoundRect(const Rect& r, Int ow, Int oh) { thePort->paint(roundShape(r, ow, oh)); }
void EraseRoundRect(const Rect& r, Int ow, Int oh) { thePort->erase(roundShape(r, ow, oh)); }
void InvertRoundRect(const Rect& r, Int ow, Int oh) { thePort->invert(roundShape(r, ow, oh)); }
void FillRoundRect(const Rect& r, Int ow, Int oh, const Pattern& pat)
{
    thePort->fillShape(roundShape(r, ow, oh), pat);
}
void FrameRoundRect(const Rect& r, Int ow, Int oh) { thePort->frameRoundRect(r, ow, oh); }

void PaintOval(const Rect& r) { thePort->paint(ovalShape(r)); }
void EraseOval(const Rect& r) { thePort->erase(ovalShape(r)); }
void InvertOval(const Rect& r) { thePort->invert(ovalShape(r)); }
void FillOval(const Rect& r, const Pattern& pat) { thePort->fillShape(ovalShape(r), pat); }
void FrameOval(const Rect& r) { thePort->frameOval(r); }

void PaintRgn(const RgnHandle& rgn)
{
    if (rgn)
        thePort->paint(rgn->region);
}
void EraseRgn(const RgnHandle& rgn)
{
    if (rgn)
        thePort->erase(rgn->region);
}
void InvertRgn(const RgnHandle& rgn)
{
    if (rgn)
        thePort->invert(rgn->region);
}
void FillRgn(const RgnHandle& rgn, const Pattern& pat)
{
    if (rgn)
        thePort->fillShape(rgn->region, pat);
}
void FrameRgn(const RgnHandle& rgn)
{
    if (rgn)
        thePort->frameRgn(rgn->region);
}

void OpenRgn() { thePort->recording = std::make_unique<RegionRecorder>(); }

void CloseRgn(const RgnHandle& dst)
{
    const std::unique_ptr<RegionRecorder> recorder = std::move(thePort->recording);
    if (!dst)
        return;
    dst->region = recorder ? recorder->areas : Region();
    if (recorder && !recorder->edges.empty())
        dst->region = dst->region.xorWith(Region::fromEdges(recorder->edges));
}

} // namespace MacToolbox
