#pragma once

#include "MacToolbox/Base/Memory.h"

namespace MacToolbox {

/// A view of one-bit pixels in a shared block; a copy of it sees the same pixels. The most significant bit of a byte is
/// its leftmost pixel, counted from `bounds.left`; 1 is black. A pixel whose byte lies outside the block reads as white
/// and swallows what is written.
struct BitMap {
    Handle baseAddr;  ///< the pixels; nil for none
    Int offset = 0;   ///< byte position of the first row in the block
    Int rowBytes = 0; ///< bytes from one row to the next, even in maps made here
    Rect bounds;      ///< the coordinates of the pixels

    BitMap() = default;
    /// A new white map. A negative extent counts as 0.
    explicit BitMap(const Rect& mapBounds);
    /// Wraps existing bytes.
    BitMap(Handle block, Int firstByte, Int bytesPerRow, const Rect& mapBounds)
        : baseAddr(std::move(block)), offset(firstByte), rowBytes(bytesPerRow), bounds(mapBounds)
    {
    }

    /// False outside `bounds` or without pixels.
    bool get(Int h, Int v) const;
    /// Nothing outside `bounds` or without pixels.
    void set(Int h, Int v, bool on) const;
    /// The same block (or none in both), offset and row length; `bounds` may differ.
    bool sameStorage(const BitMap& other) const
    {
        return baseAddr == other.baseAddr && offset == other.offset && rowBytes == other.rowBytes;
    }

private:
    /// The index of the byte that holds a pixel of `bounds`, or -1 if the block does not reach there.
    Int byteOf(Int h, Int v) const;
};

} // namespace MacToolbox
