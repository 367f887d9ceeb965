#pragma once

// Frames of `Imag` resources: one-bit bitmaps, packed by columns of bytes.

#include "MacToolbox/Base/Memory.h"
#include "MacToolbox/QuickDraw/BitMap.h"

#include <memory>
#include <vector>

namespace Wainroad {
using namespace MacToolbox;

/// A set of bitmaps. Out of range it reads as empty, and writing there does nothing.
struct BitMaps {
    std::vector<BitMap> m;

    BitMaps() = default;
    explicit BitMaps(Int count) : m(static_cast<std::size_t>(count < 0 ? 0 : count)) { }
    explicit BitMaps(std::vector<BitMap> frames) : m(std::move(frames)) { }

    Int count() const { return I(m.size()); }
    BitMap at(Int n) const { return n >= 0 && n < count() ? m[static_cast<std::size_t>(n)] : BitMap(); }
    void set(Int n, const BitMap& bitmap)
    {
        if (n >= 0 && n < count())
            m[static_cast<std::size_t>(n)] = bitmap;
    }
};
using BitMapsRef = std::shared_ptr<BitMaps>;

/// A run of frames of one `Imag`.
struct ImageList {
    Int resID = 0, colorID = 0; ///< `colorID` is kept only
    Int first = 0, count = 0;   ///< first frame, and how many
    Int depth = 1;
    std::vector<BitMap> frames; ///< what `LoadAllFrames` read

    /// Frame `n` of `frames`; empty out of range.
    BitMap frame(Int n) const
    {
        return n >= 0 && n < I(frames.size()) ? frames[static_cast<std::size_t>(n)] : BitMap();
    }
};
using ImageListRef = std::shared_ptr<ImageList>;

/// True: frames are mirrored left to right as they are unpacked.
extern bool gMirror;

/// Reads the frames `first` to `first + count - 1` into `frames`. `Fatal` with "ImagToBitMap" if the `Imag` is missing.
/// An index beyond the last frame gives the last; a frame that is damaged is empty.
void LoadAllFrames(ImageList& list);
/// A list with its frames loaded.
ImageListRef LoadImages(Int resID, Int first, Int count);
/// Decodes the frame record at `position`, which ends behind its packed bits. What is cut off reads as white; a
/// negative `rowBytes`, or more than 1 MiB of pixels, gives an empty bitmap.
void UnpackFrame(const Handle& imag, Int& position, BitMap& bitmap);
/// Turns each row left to right within `width` pixels.
void MirrorBits(const Handle& bits, Int rowBytes, Int height, Int width);
/// Copies a frame into `thePort`. A rectangle without height or width takes the frame's own. Nothing for nil, depth 0
/// or a frame out of range.
void DrawImageFrame(const ImageList* list, Int frame, const Rect& rect, Int mode);
inline void DrawImageFrame(const ImageListRef& list, Int frame, const Rect& rect, Int mode)
{
    DrawImageFrame(list.get(), frame, rect, mode);
}

/// Puts the silhouette of frame `index` of `frames` (`CalcMask`) into `masks`.
void MakeMask(const BitMaps& frames, Int index, BitMaps& masks);
/// Empties `count` entries from `first` on.
void DisposeBitMaps(BitMaps& set, Int first, Int count);

} // namespace Wainroad
