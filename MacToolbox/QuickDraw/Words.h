#pragma once

#include "MacToolbox/QuickDraw/BitMap.h"

#include <bit>
#include <cstring>

// What the inner loops are made of: pixels as machine words. A word holds 64 pixels as they lie in memory, so that
// moving them by 0 to 7 pixels stays inside bytes and needs no swapping; whole bytes are moved by the address.

namespace MacToolbox::Words {

using Byte = std::uint8_t;
using Word = std::uint64_t;
/// 128 pixels.
using Chunk = Word __attribute__((vector_size(16)));

template <typename T> T load(const Byte* p)
{
    T value;
    std::memcpy(&value, p, sizeof value);
    return value;
}
template <typename T> void store(Byte* p, T value) { std::memcpy(p, &value, sizeof value); }

constexpr Word kEveryByte = 0x0101010101010101;

/// A word whose leftmost pixel is its top bit, as it lies in memory; and back.
constexpr Word inMemoryOrder(Word leftmostOnTop)
{
    return std::endian::native == std::endian::little ? __builtin_bswap64(leftmostOnTop) : leftmostOnTop;
}

/// The pixels `from` to `to - 1` of a word, 0 <= from < to <= 64.
constexpr Word maskOf(Int from, Int to)
{
    Word mask = ~Word{0} >> from;
    if (to < 64)
        mask &= ~(~Word{0} >> to);
    return inMemoryOrder(mask);
}

/// The word moved by whole bytes, to the left for positive `bytes` (-8 to 8); zeros come in.
constexpr Word moveBytes(Word w, Int bytes)
{
    if (bytes >= 8 || bytes <= -8)
        return 0;
    const bool up = (bytes < 0) == (std::endian::native == std::endian::little);
    const Int bits = 8 * (bytes < 0 ? -bytes : bytes);
    return up ? w << bits : w >> bits;
}

/// Moves pixels to the left by 0 to 7, taking in the next byte.
struct Shift {
    unsigned left, right;
    Word high, low; // the bits of each byte that come from the byte itself, and from the next

    explicit Shift(Int pixels)
        : left(static_cast<unsigned>(pixels)), right(8 - left), high((0xFFU << left & 0xFFU) * kEveryByte), low(~high)
    {
    }
    template <typename T> T operator()(T here, T next) const { return (here << left & high) | (next >> right & low); }
};

/// The rows of a bitmap whose every pixel lies inside its block.
struct Rows {
    Byte* first; // the byte of the bitmap's top left pixel
    Int stride;
    Byte *begin, *end; // the block, 8 bytes at least

    Byte* row(Int y) const { return first + y * stride; }
    /// False for a bitmap without pixels, with rows that overlap, that reaches outside its block, or with a tiny block.
    static bool of(const BitMap& map, Rows& rows)
    {
        const Block* block = map.baseAddr.get();
        if (block == nullptr)
            return false;
        const Int size = I(block->bytes.size()), lastRow = map.bounds.height() - 1, lastColumn = map.bounds.width() - 1;
        // None of these is below 0 or above 2^31, so nothing overflows from here on.
        if (static_cast<Word>(map.offset | map.rowBytes | lastRow | lastColumn | size) >> 31)
            return false;
        const Int used = (lastColumn >> 3) + 1;
        if (used > map.rowBytes || map.offset + lastRow * map.rowBytes + used > size || size < 8)
            return false;
        Byte* begin = const_cast<Byte*>(block->bytes.data());
        rows = {begin + map.offset, map.rowBytes, begin, begin + size};
        return true;
    }
};

} // namespace MacToolbox::Words
