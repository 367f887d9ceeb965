#pragma once

#include "MacToolbox/QuickDraw/QuickDraw.h"

// Moving pixels from bitmap to bitmap, and the Toolbox's random numbers. Game thread only.

namespace MacToolbox {

/// `GrafPort::copyBits` on the current port.
void CopyBits(const BitMap& src, const BitMap& dst, const Rect& srcRect, const Rect& dstRect, Int mode,
    const RgnHandle& maskRgn = nullptr);
/// `GrafPort::copyMask` on the current port.
void CopyMask(const BitMap& src, const BitMap& mask, const BitMap& dst, const Rect& srcRect, const Rect& maskRect,
    const Rect& dstRect);
/// `GrafPort::scrollRect` on the current port; `updateRgn`, if not nil, gets what was erased.
void ScrollRect(const Rect& r, Int dh, Int dv, const RgnHandle& updateRgn);
/// Makes in `dst`, from its bounds' top left, the silhouette of `rect` of `src`: black, and white that black encloses
/// (diagonal gaps do not let through).
void CalcMask(const BitMap& src, const BitMap& dst, const Rect& rect);

/// The next number of the sequence in `qd.randSeed`, -32767 to 32767.
Int Random();

} // namespace MacToolbox
