#include "Tools/rsrc/Sheet.h"

#include "Tools/rsrc/Forms.h"

#include <algorithm>

namespace Rsrc {

namespace {

constexpr Int kSheetWidth = 1000, kMargin = 6, kGap = 8;
constexpr Int kFrame = 2;                   // pixels from a picture to the outside of its frame
constexpr Int kLargestSheet = Int{1} << 28; // pixels
constexpr Int kLargestGlyph = 256;          // pixels a side, of a strike that has a specimen
constexpr Int kDigitHeight = 5, kDigitWidth = 3, kDigitStep = kDigitWidth + 1, kCaption = kDigitHeight + 2;

/// Five rows of three pixels, one octal digit a row.
Int digitRows(char c)
{
    constexpr Int kDigits[] = {075557, 026227, 071747, 071717, 055711, 074717, 074757, 071111, 075757, 075717};
    return c >= '0' && c <= '9' ? kDigits[c - '0'] : c == '-' ? 000700 : c == ':' ? 002020 : 0;
}

void paintCaption(Bits& sheet, const std::string& text, Int top, Int left)
{
    for (std::size_t i = 0; i < text.size(); ++i)
        for (Int bit = 0; bit < kDigitHeight * kDigitWidth; ++bit)
            if (digitRows(text[i]) >> (kDigitHeight * kDigitWidth - 1 - bit) & 1)
                sheet.set(top + bit / kDigitWidth, left + I(i) * kDigitStep + bit % kDigitWidth);
}

/// Dots one pixel outside the picture.
void paintFrame(Bits& sheet, const Rect& r)
{
    for (Int h = r.left - 1; h <= r.right; h += 2)
        sheet.set(r.top - 1, h), sheet.set(r.bottom, h);
    for (Int v = r.top - 1; v <= r.bottom; v += 2)
        sheet.set(v, r.left - 1), sheet.set(v, r.right);
}

Int cellWidth(const SheetPicture& picture)
{
    return std::max(picture.bits.width, I(picture.caption.size()) * kDigitStep - 1) + 2 * kFrame;
}

// Strikes.

/// Draws text with its pen at `h`. @return Where the pen ends.
Int paintText(
    Bits& out, const std::vector<StrikeGlyph>& glyphs, std::span<const std::uint8_t> text, Int top, Int h, bool bold)
{
    for (const std::uint8_t code : text) {
        const StrikeGlyph& glyph = glyphs[code];
        if (glyph.advance < 0)
            continue;
        out.paint(glyph.bits, top, h + glyph.left);
        if (bold)
            out.paint(glyph.bits, top, h + glyph.left + 1);
        h += glyph.advance + (bold ? 1 : 0);
    }
    return h;
}

Bytes textOf(const char* text) { return Bytes(text, text + std::char_traits<char>::length(text)); }

} // namespace

Bits specimen(const Bytes& data)
{
    const auto strike = strikeOf(data);
    if (!strike)
        return {};
    const Int height = strike->ascent + strike->descent;
    if (height <= 0 || height > kLargestGlyph)
        return {};
    const std::vector<StrikeGlyph> glyphs = strikeGlyphs(data);
    Int widest = 0;
    for (const StrikeGlyph& glyph : glyphs)
        widest = std::max({widest, glyph.advance, glyph.bits.width});
    if (widest > kLargestGlyph)
        return {};
    constexpr Int kColumns = 16;
    const char* const kLines[] = {"The quick brown fox jumps over the lazy dog. 0123456789",
        "SPHINX OF BLACK QUARTZ, JUDGE MY VOW! $1,600.00 (25%)", "minimum illumination: hill, Ill, 11; rn m cl d vv w",
        "August 31, 1848: 2,083 miles; 411 pounds of food"};
    constexpr Int kLineCount = 4;
    const Int cell = widest + 4, row = height + 4, top = 256 / kColumns * row + kGap;
    Int width = kColumns * cell;
    for (const char* line : kLines)
        width = std::max(width, strike->width(textOf(line), true) + 4);
    Bits out(top + 2 * kLineCount * row, width);
    for (Int code = 0; code < 256; ++code) {
        const auto one = static_cast<std::uint8_t>(code);
        paintText(out, glyphs, std::span(&one, 1), code / kColumns * row + 2, code % kColumns * cell + 2, false);
    }
    for (Int i = 0; i < kLineCount; ++i) {
        paintText(out, glyphs, textOf(kLines[i]), top + 2 * i * row, 2, false);
        paintText(out, glyphs, textOf(kLines[i]), top + (2 * i + 1) * row, 2, true);
    }
    return out;
}

std::vector<SheetPicture> sheetPictures(OSType type, Int id, const Bytes& data)
{
    std::vector<SheetPicture> pictures;
    const std::string caption = std::to_string(id);
    if (type == os("Imag")) {
        const auto frames = imageFrames(data);
        if (frames)
            for (const Frame& frame : *frames)
                pictures.push_back({frames->size() == 1 ? caption : caption + ':' + std::to_string(pictures.size()),
                    frame.bits, pictures.empty()});
        return pictures;
    }
    const Form* form = findForm(type);
    const bool isStrike = type == os("NFNT") || type == os("FONT");
    auto bits = isStrike ? std::optional(specimen(data)) : form && form->picture ? form->picture(data) : std::nullopt;
    if (bits && bits->height > 0 && bits->width > 0)
        pictures.push_back({caption, std::move(*bits), isStrike});
    return pictures;
}

Bits contactSheet(const std::vector<SheetPicture>& pictures)
{
    Int inner = kSheetWidth - 2 * kMargin;
    for (const SheetPicture& picture : pictures)
        inner = std::max(inner, cellWidth(picture));
    std::vector<Point> places; // the top left of each picture
    Int top = kMargin, left = 0, tallest = 0, used = 0;
    for (const SheetPicture& picture : pictures) {
        const Int width = cellWidth(picture);
        if (left > 0 && (picture.startsRow || left + width > inner)) {
            top += tallest + kGap;
            left = tallest = 0;
        }
        places.push_back({top + kFrame, kMargin + left + kFrame});
        tallest = std::max(tallest, picture.bits.height + 2 * kFrame + kCaption);
        used = std::max(used, left + width);
        left += width + kGap;
    }
    if (pictures.empty() || (top + tallest + kMargin) * (used + 2 * kMargin) > kLargestSheet)
        return {};
    Bits sheet(top + tallest + kMargin, used + 2 * kMargin);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const Bits& bits = pictures[i].bits;
        const Point at = places[i];
        sheet.paint(bits, at.v, at.h);
        paintFrame(sheet, {at.v, at.h, at.v + bits.height, at.h + bits.width});
        paintCaption(sheet, pictures[i].caption, at.v + bits.height + kFrame + 1, at.h);
    }
    return sheet;
}

} // namespace Rsrc
