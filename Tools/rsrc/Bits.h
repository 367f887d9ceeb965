#pragma once

#include "Tools/rsrc/Source.h"

#include <string>
#include <vector>

namespace Rsrc {

/// A black and white picture. `rows` holds `rowBytes()` bytes for each row, most significant bit leftmost, 1 is black.
struct Bits {
    Int height = 0, width = 0;
    Bytes rows;

    Bits() = default;
    Bits(Int h, Int w) : height(h), width(w), rows(static_cast<std::size_t>(h * rowBytesOf(w))) { }

    static Int rowBytesOf(Int w) { return (w + 15) / 16 * 2; }
    Int rowBytes() const { return rowBytesOf(width); }
    bool black(Int v, Int h) const { return rows[index(v, h)] >> (7 - h % 8) & 1; }
    void set(Int v, Int h) { rows[index(v, h)] |= static_cast<std::uint8_t>(0x80 >> h % 8); }
    /// That part, shifted to the left edge of whole words.
    Bits part(const Rect& r) const;
    Bits mirrored() const;
    /// Paints the black pixels of `other` with its corner at (v, h); what does not fit is left out.
    void paint(const Bits& other, Int v, Int h);
    bool operator==(const Bits&) const = default;

private:
    std::size_t index(Int v, Int h) const { return static_cast<std::size_t>(v * rowBytes() + h / 8); }
};

/// A picture from rows of `rowBytes` bytes; rows that are cut short end in white.
Bits bitsFrom(std::span<const std::uint8_t> bytes, Int rowBytes, Int height, Int width);

/// A PNG file: what is black, and what is opaque.
struct PngImage {
    Bits black, opaque;
    bool hasTransparency = false;
};
/// Reads the file that the source names. A pixel that is neither black nor white nor transparent is a fault.
PngImage readPng(const Source& name);
/// Reads it and checks its size.
Bits readBits(const Source& name, Int height, Int width);
/// @return False if the file cannot be written.
bool writePng(const std::string& path, const Bits& bits);

} // namespace Rsrc
