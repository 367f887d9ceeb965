#pragma once

#include "MacToolbox/QuickDraw/BitMap.h"
#include "MacToolbox/QuickDraw/Pattern.h"

// The inner loops: rectangles of pixels by whole machine words. The rectangles that they are given are cut to the
// bitmaps' bounds; nothing else clips, and nobody tells the screen.

namespace MacToolbox {

/// What a source bit does to a pixel: the transfer mode and the two colours, worked out.
struct RasterOp {
    enum Kind : std::uint8_t {
        copy,  ///< the pixel becomes the bit
        set,   ///< 1 makes it black
        flip,  ///< 1 turns it over
        clear, ///< 1 makes it white
    };
    Kind kind = copy;
    bool invert = false;   ///< the source bit is turned over first
    bool constant = false; ///< the source does not matter: `set` blackens and `clear` whitens every pixel

    static constexpr RasterOp of(Int mode, bool fgDark, bool bkDark)
    {
        const bool inverted = (mode & 4) != 0;
        switch (mode & 3) {
        case 0:
            if (fgDark == bkDark)
                return {fgDark ? set : clear, false, true};
            return {copy, inverted != bkDark, false};
        case 1: return {fgDark ? set : clear, inverted, false};
        case 2: return {flip, inverted, false};
        default: return {bkDark ? set : clear, inverted, false};
        }
    }
    bool operator==(const RasterOp&) const = default;
};

/// Fills `r`; the pattern is aligned to the bitmap's top left.
void fillPixels(const BitMap& dst, const Rect& r, const Pattern& pattern, RasterOp op);
/// Applies the source pixels from `at` on to `r`. A source pixel outside the source counts as 0. The two must not share
/// bytes.
void blitPixels(const BitMap& dst, const Rect& r, const BitMap& src, Point at, RasterOp op);
/// Copies the source pixels from `at` on to `r` where the mask, from `maskAt` on, is 1. Nothing may share bytes.
void maskPixels(const BitMap& dst, const Rect& r, const BitMap& src, Point at, const BitMap& mask, Point maskAt);

/// Scales `srcRect` to `dstRect` by the nearest pixel up and left, and applies the part of it that is `r`, which lies
/// inside `dstRect`. As `blitPixels` otherwise.
void scalePixels(
    const BitMap& dst, const Rect& r, const Rect& dstRect, const BitMap& src, const Rect& srcRect, RasterOp op);

} // namespace MacToolbox
