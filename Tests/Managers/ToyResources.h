#pragma once

#include "MacToolbox/Base/Memory.h"

#include <algorithm>
#include <string_view>
#include <vector>

// Small resources made by hand.

namespace MacToolbox {

/// Big-endian bytes from text and numbers: `Form().u16(3).text("ab").bytes`.
struct Form {
    Bytes bytes;

    Form& u8(Int v) { return put(v, 1); }
    Form& u16(Int v) { return put(v, 2); }
    Form& u32(Int v) { return put(v, 4); }
    Form& rect(const Rect& r) { return u16(r.top).u16(r.left).u16(r.bottom).u16(r.right); }
    Form& raw(const Bytes& more) { return bytes.insert(bytes.end(), more.begin(), more.end()), *this; }
    Form& text(std::string_view s) { return bytes.insert(bytes.end(), s.begin(), s.end()), *this; }
    Form& counted(std::string_view s) { return u8(I(s.size())).text(s); }
    Form& zeros(Int n) { return bytes.resize(bytes.size() + static_cast<std::size_t>(n)), *this; }

private:
    Form& put(Int v, int size)
    {
        while (size-- > 0)
            bytes.push_back(static_cast<std::uint8_t>(v >> 8 * size));
        return *this;
    }
};

inline Bytes bytesOf(std::string_view s) { return Bytes(s.begin(), s.end()); }

struct ToyResource {
    OSType type;
    Int id;
    Bytes data;
};

/// The bytes of a resource file.
inline Bytes resourceFile(const std::vector<ToyResource>& resources)
{
    Form data, types, references;
    std::vector<OSType> seen;
    for (const ToyResource& r : resources)
        if (std::find(seen.begin(), seen.end(), r.type) == seen.end())
            seen.push_back(r.type);
    types.u16(I(seen.size()) - 1);
    for (const OSType type : seen) {
        const Int count =
            std::count_if(resources.begin(), resources.end(), [&](const ToyResource& r) { return r.type == type; });
        types.u32(type).u16(count - 1).u16(2 + I(seen.size()) * 8 + I(references.bytes.size()));
        for (const ToyResource& r : resources) {
            if (r.type != type)
                continue;
            references.u16(r.id).u16(0xFFFF).u32(I(data.bytes.size())).u32(0);
            data.u32(I(r.data.size())).raw(r.data);
        }
    }
    const Int dataSize = I(data.bytes.size()), listSize = I(types.bytes.size() + references.bytes.size());
    Form file;
    file.u32(16).u32(16 + dataSize).u32(dataSize).u32(28 + listSize).raw(data.bytes);
    file.zeros(24).u16(28).u16(28 + listSize).raw(types.bytes).raw(references.bytes);
    return file.bytes;
}

/// A strike of 256 boxes, 5 by 9 pixels, and nothing for the space: every character 6 wide, ascent 9, descent 2,
/// leading 1.
inline Bytes boxFont()
{
    constexpr Int kGlyphs = 257, kRow = (kGlyphs * 6 + 15) / 16; // words
    Form font;
    font.u16(0x9000).u16(0).u16(255).u16(6).u16(0).u16(-2).u16(6).u16(11);
    font.u16(5 + kRow * 11 + kGlyphs + 1).u16(9).u16(2).u16(1).u16(kRow);
    for (Int y = 0; y < 11; ++y) {
        Bytes row(static_cast<std::size_t>(kRow * 2));
        for (Int x = 0; x < kGlyphs * 6; ++x) {
            const Int column = x % 6, c = x / 6;
            const bool on = c != 32 && y < 9 && column < 5 && (y == 0 || y == 8 || column == 0 || column == 4);
            row[static_cast<std::size_t>(x >> 3)] |= static_cast<std::uint8_t>(on ? 0x80 >> (x & 7) : 0);
        }
        font.raw(row);
    }
    for (Int c = 0; c <= kGlyphs; ++c)
        font.u16(c * 6);
    for (Int c = 0; c < kGlyphs; ++c)
        font.u16(6);
    return font.u16(0xFFFF).bytes;
}

} // namespace MacToolbox
