#include "MacToolbox/Base/Memory.h"

namespace MacToolbox {

Int MemErr = 0;

namespace {

std::size_t sizeFor(Int n) { return static_cast<std::size_t>(std::max<Int>(n, 0)); }

} // namespace

std::string Block::description() const { return "Handle(" + std::to_string(bytes.size()) + " bytes)"; }

Str255 Block::pstr(Int o) const
{
    const Int end = std::min(o + 1 + u8(o), count());
    return {bytes.begin() + o, bytes.begin() + end};
}

Int ByteReader::u8()
{
    const Int at = pos++;
    return at >= 0 && at < I(bytes_.size()) ? bytes_[static_cast<std::size_t>(at)] : 0;
}

Int ByteReader::u16()
{
    const Int high = u8();
    return high << 8 | u8();
}

Int ByteReader::u32()
{
    const Int high = u16();
    return high << 16 | u16();
}

Bytes ByteReader::raw(Int n)
{
    Bytes out(sizeFor(n));
    const Int from = std::max<Int>(pos, 0), size = I(bytes_.size());
    if (pos >= 0 && from < size)
        std::copy_n(bytes_.begin() + from, std::min(I(out.size()), size - from), out.begin());
    pos += I(out.size());
    return out;
}

void ByteWriter::zeros(Int n) { bytes.resize(bytes.size() + sizeFor(n)); }

Handle NewHandle(Int n)
{
    MemErr = noErr;
    return std::make_shared<Block>(Bytes(sizeFor(n)));
}

Handle NewHandleClear(Int n) { return NewHandle(n); }

Int GetHandleSize(const Handle& h) { return h ? h->count() : 0; }

void SetHandleSize(const Handle& h, Int n)
{
    if (!h)
        return;
    h->bytes.resize(sizeFor(n));
    MemErr = noErr;
}

void EmptyHandle(const Handle& h)
{
    if (h)
        h->bytes.clear();
}

void ReallocHandle(const Handle& h, Int n)
{
    if (h)
        h->bytes.assign(sizeFor(n), 0);
}

OSErr HandToHand(Handle& h)
{
    if (h)
        h = std::make_shared<Block>(h->bytes);
    return noErr;
}

Handle PtrToHand(std::span<const std::uint8_t> bytes)
{
    return std::make_shared<Block>(Bytes(bytes.begin(), bytes.end()));
}

void BlockMove(const Ptr& src, const Ptr& dst, Int n)
{
    if (n < 1)
        return;
    const auto from = src.block->bytes.begin() + src.offset;
    const Bytes aside(from, from + n);
    std::copy(aside.begin(), aside.end(), dst.block->bytes.begin() + dst.offset);
}

std::string osString(OSType code)
{
    std::string out;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const unsigned c = code >> shift & 0xFF;
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else {
            out += static_cast<char>(0xC0 | c >> 6);
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

} // namespace MacToolbox
