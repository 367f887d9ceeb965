#pragma once

#include "MacToolbox/QuickDraw/BitMap.h"
#include "MacToolbox/QuickDraw/Pattern.h"
#include "MacToolbox/QuickDraw/Region.h"

#include <memory>

// Ports, the pen, and the shapes. All drawing is clipped by the port's `visRgn`, `clipRgn` and the bitmap's bounds, in
// the port's local coordinates, and lands at once. No call fails: what is empty, clipped away or without pixels draws
// nothing. Game thread only.

namespace MacToolbox {

struct WindowRecord;

struct PenState {
    Point pnLoc;
    Point pnSize{1, 1}; ///< v is the height
    Int pnMode = patCopy;
    Pattern pnPat = Pattern::black;

    bool operator==(const PenState&) const = default;
};

/// A drawing environment onto a bitmap.
struct GrafPort {
    BitMap portBits;
    Rect portRect;     ///< local; takes no part in clipping
    RgnHandle visRgn;  ///< never nil
    RgnHandle clipRgn; ///< never nil
    Point pnLoc;
    Point pnSize{1, 1}; ///< v is the height; not negative
    Int pnMode = patCopy;
    Pattern pnPat = Pattern::black;
    Int pnVis = 0; ///< negative hides the pen
    Pattern bkPat = Pattern::white;
    Pattern fillPat = Pattern::black; ///< kept only
    Int txFont = 0;
    Int txFace = 0; ///< style bits
    Int txMode = srcOr;
    Int txSize = 0;  ///< 0 is the default size
    Int spExtra = 0; ///< extra width of a space, pixels
    RGBColor fgColor = RGBColor::black;
    RGBColor bkColor = RGBColor::white;
    std::weak_ptr<WindowRecord> window;
    std::unique_ptr<RegionRecorder> recording; ///< set between `OpenRgn` and `CloseRgn`

    explicit GrafPort(BitMap bits);
    /// On a new white bitmap.
    explicit GrafPort(const Rect& bounds) : GrafPort(BitMap(bounds)) { }

    PenState penState() const { return {pnLoc, pnSize, pnMode, pnPat}; }
    void setPenState(const PenState& s) { pnLoc = s.pnLoc, pnSize = s.pnSize, pnMode = s.pnMode, pnPat = s.pnPat; }

    /// The one way in which a shape is painted. Recorded instead while a region is open.
    void fill(const Region& shape, const Pattern& pattern, Int mode);
    void fill(const Rect& rect, const Pattern& pattern, Int mode);
    void paint(const Region& shape); ///< with the pen's pattern and mode, unless it is hidden
    void erase(const Region& shape) { fill(shape, bkPat, patCopy); }
    void invert(const Region& shape) { fill(shape, Pattern::black, patXor); }
    void fillShape(const Region& shape, const Pattern& pattern) { fill(shape, pattern, patCopy); }
    /// Paints what `outer` has and `inner` has not, unless the pen is hidden.
    void frame(const Region& outer, const Region& inner);
    void frameRect(const Rect& r);
    void frameRoundRect(const Rect& r, Int ovalWidth, Int ovalHeight);
    void frameOval(const Rect& r) { frameRoundRect(r, r.width(), r.height()); }
    void frameRgn(const Region& rgn);
    /// Draws from the pen's location, which moves there even if the pen is hidden.
    void lineTo(Int h, Int v);

    /// Copies pixels, scaled by the nearest pixel if the rectangles differ in size. The port's colours apply; its
    /// regions only if `dst` is the port's own bitmap.
    /// @param maskRgn  In `dst` coordinates; nil for none.
    void copyBits(const BitMap& src, const BitMap& dst, const Rect& srcRect, const Rect& dstRect, Int mode,
        const RgnHandle& maskRgn);
    /// Copies the pixels whose mask pixel is black, unscaled, without colours and modes.
    void copyMask(const BitMap& src, const BitMap& mask, const BitMap& dst, const Rect& srcRect, const Rect& maskRect,
        const Rect& dstRect);
    /// Moves the pixels of `r`, and erases and returns what they leave.
    Region scrollRect(const Rect& r, Int dh, Int dv);

    /// The rows and columns that drawing can reach: the overlap of `visRgn`, `clipRgn` and the bitmap, as a rectangle;
    /// everything while a region is open. Shapes for this port need no pixel outside it.
    Rect reach() const;
};
using GrafPtr = std::shared_ptr<GrafPort>;

/// The current port; never nil. At first one of 1 by 1 pixels.
extern GrafPtr thePort;

/// The names that programs read from the classic globals.
struct QDGlobals {
    GrafPtr& thePort;
    BitMap screenBits; ///< shares the screen's block
    Pattern white = Pattern::white, black = Pattern::black, gray = Pattern::gray, ltGray = Pattern::ltGray,
            dkGray = Pattern::dkGray;
    Int randSeed = 1;
};
extern QDGlobals qd;

struct GDevice {
    Rect gdRect{0, 0, 342, 512};
    Int pixelSize = 1;
};
using GDHandle = std::shared_ptr<GDevice>;
/// The one screen.
const GDHandle& mainDevice();

// Ports

inline void InitGraf() { }
inline void OpenPort(const GrafPtr&) { }
inline void ClosePort(const GrafPtr&) { }
void SetPort(const GrafPtr& port); ///< nil: nothing
/// Makes the window's port current; nil: nothing.
void SetPort(const std::shared_ptr<WindowRecord>& window);
inline void GetPort(GrafPtr& port) { port = thePort; }
void SetPortBits(const BitMap& bits);
void PortSize(Int width, Int height);
/// Renumbers the pixels: `portRect`'s top left becomes (h, v). `clipRgn` and the pen stay.
void SetOrigin(Int h, Int v);
void LocalToGlobal(Point& pt);
void GlobalToLocal(Point& pt);
void ClipRect(const Rect& r);       ///< installs a new region
void SetClip(const RgnHandle& rgn); ///< installs a copy
void GetClip(const RgnHandle& rgn); ///< copies into `rgn`
inline GDHandle GetDeviceList() { return mainDevice(); }
inline GDHandle GetMainDevice() { return mainDevice(); }
inline GDHandle GetGDevice() { return mainDevice(); }
inline GDHandle GetMaxDevice(const Rect&) { return mainDevice(); }
inline GDHandle GetNextDevice(const GDHandle&) { return nullptr; }
inline void SetGDevice(const GDHandle&) { }

// Pen and colours

void MoveTo(Int h, Int v);
void Move(Int dh, Int dv);
void LineTo(Int h, Int v);
void Line(Int dh, Int dv);
void GetPen(Point& pt);
void PenSize(Int width, Int height);
void PenPat(const Pattern& pat);
void PenMode(Int mode);
void BackPat(const Pattern& pat);
void PenNormal(); ///< location and visibility stay
void HidePen();
void ShowPen();
void GetPenState(PenState& state);
void SetPenState(const PenState& state);
void ForeColor(Int color); ///< all but `whiteColor` give black
void BackColor(Int color); ///< all but `blackColor` give white
void RGBForeColor(const RGBColor& color);
void RGBBackColor(const RGBColor& color);
void GetForeColor(RGBColor& color);
void GetBackColor(RGBColor& color);

// Shapes

void PaintRect(const Rect& r);
void EraseRect(const Rect& r);
void InvertRect(const Rect& r);
inline void InverRect(const Rect& r) { InvertRect(r); }
void FillRect(const Rect& r, const Pattern& pat);
void FrameRect(const Rect& r);
void PaintRoundRect(const Rect& r, Int ovalWidth, Int ovalHeight);
void EraseRoundRect(const Rect& r, Int ovalWidth, Int ovalHeight);
void InvertRoundRect(const Rect& r, Int ovalWidth, Int ovalHeight);
inline void InverRoundRect(const Rect& r, Int ow, Int oh) { InvertRoundRect(r, ow, oh); }
void FillRoundRect(const Rect& r, Int ovalWidth, Int ovalHeight, const Pattern& pat);
void FrameRoundRect(const Rect& r, Int ovalWidth, Int ovalHeight);
void PaintOval(const Rect& r);
void EraseOval(const Rect& r);
void InvertOval(const Rect& r);
void FillOval(const Rect& r, const Pattern& pat);
void FrameOval(const Rect& r);
void PaintRgn(const RgnHandle& rgn);
void EraseRgn(const RgnHandle& rgn);
void InvertRgn(const RgnHandle& rgn);
inline void InverRgn(const RgnHandle& rgn) { InvertRgn(rgn); }
void FillRgn(const RgnHandle& rgn, const Pattern& pat);
void FrameRgn(const RgnHandle& rgn);

/// From here on, shapes and lines drawn in the current port become part of a region and draw nothing.
void OpenRgn();
/// Ends that: `dst` gets the exclusive-or of the shapes and of what the lines enclose; empty if none was open.
void CloseRgn(const RgnHandle& dst);

// Scopes: changes that end with the block

/// Makes `port` the current port; nil leaves it.
class PortScope {
public:
    explicit PortScope(const GrafPtr& port) : saved_(thePort) { SetPort(port); }
    ~PortScope() { SetPort(saved_); }
    PortScope(const PortScope&) = delete;
    PortScope& operator=(const PortScope&) = delete;

private:
    GrafPtr saved_;
};

/// Puts back the clip region of the port that was current at its start.
class ClipScope {
public:
    ClipScope() : port_(thePort), saved_(port_->clipRgn->region) { }
    /// Clips to `r` as well as by what the port has.
    explicit ClipScope(const Rect& r) : ClipScope()
    {
        port_->clipRgn = std::make_shared<RgnRecord>(saved_.intersection(r));
    }
    ~ClipScope() { port_->clipRgn = std::make_shared<RgnRecord>(std::move(saved_)); }
    ClipScope(const ClipScope&) = delete;
    ClipScope& operator=(const ClipScope&) = delete;

private:
    GrafPtr port_;
    Region saved_;
};

/// Puts back location, size, mode and pattern of the pen of the port that was current at its start.
class PenScope {
public:
    PenScope() : port_(thePort), saved_(port_->penState()) { }
    ~PenScope() { port_->setPenState(saved_); }
    PenScope(const PenScope&) = delete;
    PenScope& operator=(const PenScope&) = delete;

private:
    GrafPtr port_;
    PenState saved_;
};

} // namespace MacToolbox
