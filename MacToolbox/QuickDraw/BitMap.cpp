#include "MacToolbox/QuickDraw/BitMap.h"

namespace MacToolbox {

BitMap::BitMap(const Rect& mapBounds)
    : rowBytes(std::max<Int>((mapBounds.width() + 15) >> 3 & ~Int{1}, 0)), bounds(mapBounds)
{
    baseAddr = NewHandle(rowBytes * std::max<Int>(mapBounds.height(), 0));
}

Int BitMap::byteOf(Int h, Int v) const
{
    if (!baseAddr || !bounds.contains(h, v))
        return -1;
    const Int at = offset + (v - bounds.top) * rowBytes + ((h - bounds.left) >> 3);
    return at < baseAddr->count() ? at : -1;
}

bool BitMap::get(Int h, Int v) const
{
    const Int at = byteOf(h, v);
    return at >= 0 && (baseAddr->bytes[static_cast<std::size_t>(at)] >> (7 - ((h - bounds.left) & 7)) & 1);
}

void BitMap::set(Int h, Int v, bool on) const
{
    const Int at = byteOf(h, v);
    if (at < 0)
        return;
    const auto bit = static_cast<std::uint8_t>(0x80 >> ((h - bounds.left) & 7));
    std::uint8_t& byte = baseAddr->bytes[static_cast<std::size_t>(at)];
    byte = static_cast<std::uint8_t>(on ? byte | bit : byte & ~bit);
}

} // namespace MacToolbox
