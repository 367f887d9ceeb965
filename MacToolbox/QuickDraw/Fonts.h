#pragma once

#include "MacToolbox/QuickDraw/QuickDraw.h"

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <tuple>
#include <unordered_map>
#include <vector>

// Text, drawn from bitmap strikes in the resource files. Characters are bytes of Mac OS Roman. A font that cannot be
// found draws nothing and measures 0. Game thread only.

namespace MacToolbox {

enum : Int {
    systemFont = 0,
    applFont = 1,
    newYork = 2,
    geneva = 3,
    monaco = 4,
    venice = 5,
    london = 6,
    athens = 7,
    sanFran = 8,
    toronto = 9,
    cairo = 11,
    losAngeles = 12,
    times = 20,
    helvetica = 21,
    courier = 22,
    symbol = 23,
    mobile = 24
};
/// Style bits of `txFace`.
enum : Int { normal = 0, bold = 1, italic = 2, underline = 4, outline = 8, shadow = 16, condense = 32, extend = 64 };

struct FontInfo {
    Int ascent = 0, descent = 0, widMax = 0, leading = 0;

    bool operator==(const FontInfo&) const = default;
};

/// One bitmap font of one size, as its resource holds it.
struct FontStrike {
    Int firstChar = 0, lastChar = -1;
    Int widMax = 0, kernMax = 0;
    Int fRectHeight = 0; ///< rows of the image
    Int ascent = 0, descent = 0, leading = 0;
    Int rowBytes = 0; ///< of the image
    Bytes image;
    std::vector<Int> loc; ///< bit column of each glyph, and of the missing glyph after the last; one more for its end
    std::vector<Int> ow;  ///< offset (high byte) and width (low byte) of each glyph; -1 for none
    Int ownFace = 0;      ///< style bits that the strike already has
    Int serial = 0;       ///< a number of its own

    /// Reads a FONT or NFNT resource; nil if it is damaged. A table that is cut short has no glyphs there.
    static std::shared_ptr<const FontStrike> parse(std::span<const std::uint8_t> bytes, Int ownFace);

    /// The place of character `c` in the tables, that of the missing glyph if it has none, or -1 without that too.
    Int indexOf(Int c) const;
};
using StrikePtr = std::shared_ptr<const FontStrike>;

/// The picture of one character in one style. `left` and `top` lead from the pen on the baseline to its corner.
struct StyledGlyph {
    Int left = 0, top = 0, width = 0, height = 0;
    Int advance = 0;
    /// The pixels in columns of 64, each `columnHeight` words from the top down; the leftmost pixel is the top bit.
    /// The words below the last row are 0.
    std::vector<std::uint64_t> words;

    Int columns() const { return (width + 63) >> 6; }
    Int columnHeight() const { return (height + 2) & ~Int{1}; }
    bool bit(Int x, Int y) const
    {
        return x >= 0 && y >= 0 && x < width && y < height && words[wordOf(x, y)] >> (63 - (x & 63)) & 1;
    }
    void setBit(Int x, Int y) { words[wordOf(x, y)] |= std::uint64_t{1} << (63 - (x & 63)); }

private:
    std::size_t wordOf(Int x, Int y) const { return static_cast<std::size_t>((x >> 6) * columnHeight() + y); }
};

/// Finds strikes, draws styles and keeps both. Starts afresh with the run.
class FontManager {
public:
    /// A strike, nil if there is none, and the style bits that it does not have by itself.
    struct Choice {
        StrikePtr strike;
        Int residualFace = 0;
    };

    static FontManager& shared();

    /// The strike for a font number, a size and a style; family 0 stands in for a family without any.
    Choice strike(Int family, Int size, Int face);
    /// The glyph of `c` in the styles of `face`; the reference stays good.
    const StyledGlyph& styled(const StrikePtr& strike, Int c, Int face);

    FontInfo info(const GrafPort& port);
    Int width(const GrafPort& port, std::span<const std::uint8_t> characters);
    /// Draws from the pen, which moves by the width. Only moves it while a region is open.
    void draw(GrafPort& port, std::span<const std::uint8_t> characters);

    /// What the styles of `face` add to the width of each character.
    static Int extraWidth(Int face);

private:
    /// The glyphs of one strike in one style, as far as they have been asked for.
    struct StyleTable {
        StrikePtr owner;
        std::array<std::unique_ptr<const StyledGlyph>, 256> glyphs;

        const StyledGlyph& glyph(Int c, Int face);
    };

    StrikePtr find(Int family, Int size, Int style);
    StyleTable& table(const StrikePtr& strike, Int face);

    std::map<std::tuple<Int, Int, Int>, StrikePtr> strikes_; // by family, size, bold; nil if the search failed
    std::map<std::pair<Int, Int>, StyleTable> tables_;       // by the strike's serial number, and style
};

inline void InitFonts() { }
void TextFont(Int font);
void TextFace(Int face);
void TextMode(Int mode);
void TextSize(Int size);
void SpaceExtra(Int extra); ///< 16.16 fixed-point; the fraction is dropped
void GetFontInfo(FontInfo& info);
/// The number of the font family named `name` (a counted string), 0 if there is none.
void GetFNum(const Str255& name, Int& num);

void DrawChar(Int c);
void DrawString(const Str255& s);
/// `count` bytes of `buf` from `first`, as far as there are any.
void DrawText(std::span<const std::uint8_t> buf, Int first, Int count);
Int CharWidth(Int c);
Int StringWidth(const Str255& s);
Int TextWidth(std::span<const std::uint8_t> buf, Int first, Int count);
/// `locs` becomes `count + 1` pen positions, from 0; what lies outside `buf` adds nothing.
void MeasureText(Int count, std::span<const std::uint8_t> buf, Int start, std::vector<Int>& locs);

/// Puts back font, style, mode, size and space of the port that was current at its start.
class TextScope {
public:
    TextScope()
        : port_(thePort), font_(port_->txFont), face_(port_->txFace), mode_(port_->txMode), size_(port_->txSize),
          space_(port_->spExtra)
    {
    }
    ~TextScope()
    {
        port_->txFont = font_, port_->txFace = face_, port_->txMode = mode_, port_->txSize = size_;
        port_->spExtra = space_;
    }
    TextScope(const TextScope&) = delete;
    TextScope& operator=(const TextScope&) = delete;

private:
    GrafPtr port_;
    Int font_, face_, mode_, size_, space_;
};

} // namespace MacToolbox
