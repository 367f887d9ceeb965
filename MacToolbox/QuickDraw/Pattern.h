#pragma once

#include "MacToolbox/Base/Memory.h"

#include <array>

namespace MacToolbox {

/// Eight rows of eight pixels, repeated over the whole bitmap from its top left. Bit 7 of a row is its leftmost column.
struct Pattern {
    std::array<std::uint8_t, 8> rows{};

    constexpr Pattern() = default; ///< white
    /// The first eight bytes, padded with zeros.
    explicit Pattern(std::span<const std::uint8_t> bytes)
    {
        std::copy_n(bytes.begin(), std::min<std::size_t>(bytes.size(), 8), rows.begin());
    }
    /// The top byte of `hex` is row 0.
    explicit constexpr Pattern(std::uint64_t hex)
    {
        for (std::size_t i = 0; i < 8; ++i)
            rows[i] = static_cast<std::uint8_t>(hex >> (56 - 8 * i));
    }

    constexpr bool bit(Int x, Int y) const { return rows[static_cast<std::size_t>(y & 7)] >> (7 - (x & 7)) & 1; }
    bool operator==(const Pattern&) const = default;

    static const Pattern white, black, gray, ltGray, dkGray;
};

inline constexpr Pattern Pattern::white{};
inline constexpr Pattern Pattern::black{0xFFFFFFFFFFFFFFFFULL};
inline constexpr Pattern Pattern::gray{0xAA55AA55AA55AA55ULL};
inline constexpr Pattern Pattern::ltGray{0x8822882288228822ULL};
inline constexpr Pattern Pattern::dkGray{0x77DD77DD77DD77DDULL};

/// Transfer modes. Only `mode & 3` (copy, or, xor, bic) and `mode & 4` (source inverted) are looked at.
enum : Int {
    srcCopy = 0,
    srcOr = 1,
    srcXor = 2,
    srcBic = 3,
    notSrcCopy = 4,
    notSrcOr = 5,
    notSrcXor = 6,
    notSrcBic = 7,
    patCopy = 8,
    patOr = 9,
    patXor = 10,
    patBic = 11,
    notPatCopy = 12,
    notPatOr = 13,
    notPatXor = 14,
    notPatBic = 15,
    transparent = 36,
    ditherCopy = 64
};

/// Colours of `ForeColor` and `BackColor`, which know black and white only.
enum : Int {
    blackColor = 33,
    whiteColor = 30,
    redColor = 205,
    greenColor = 341,
    blueColor = 409,
    cyanColor = 273,
    magentaColor = 137,
    yellowColor = 69
};

/// A colour of 16 bits a component. Reduced to black or white when a pixel is written.
struct RGBColor {
    std::uint16_t red = 0, green = 0, blue = 0;

    constexpr RGBColor() = default; ///< black
    /// Keeps the low 16 bits of each.
    constexpr RGBColor(Int r, Int g, Int b)
        : red(static_cast<std::uint16_t>(r)), green(static_cast<std::uint16_t>(g)), blue(static_cast<std::uint16_t>(b))
    {
    }

    /// Dark enough to give a black pixel.
    constexpr bool isBlack() const { return I(red) * 30 + I(green) * 59 + I(blue) * 11 < 3276800; }
    bool operator==(const RGBColor&) const = default;

    static const RGBColor black, white;
};

inline constexpr RGBColor RGBColor::black{};
inline constexpr RGBColor RGBColor::white{0xFFFF, 0xFFFF, 0xFFFF};

} // namespace MacToolbox
