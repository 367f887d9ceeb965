#include "Tools/rsrc/Forms.h"

#include "MacToolbox/Base/Strings.h"

#include <map>
#include <sstream>

namespace Rsrc {

namespace {

constexpr Int kStrikeHeader = 26, kNoGlyph = -1;
constexpr Int kLargestGlyph = Int{1} << 20; // pixels; a larger one is taken for damage

struct Glyph {
    Int width = 0, height = 0, left = 0, bottom = 0, advance = 0;
    Bits bits;
};

/// The parts of a BDF file that a strike needs. Glyph -1 is the one for missing characters.
struct BdfFont {
    Int ascent = 0, descent = 0;
    std::map<Int, Glyph> glyphs;
};

/// Reads the lines of a BDF file.
class BdfReader {
public:
    explicit BdfReader(const Source& name) : name_(name), path_(name.path())
    {
        const Bytes bytes = fileContents(path_, name);
        in_.str(std::string(bytes.begin(), bytes.end()));
    }

    BdfFont read()
    {
        std::string word;
        while (nextLine(word)) {
            if (word == "FONT_ASCENT")
                font_.ascent = number();
            else if (word == "FONT_DESCENT")
                font_.descent = number();
            else if (word == "DEFAULT_CHAR")
                defaultChar_ = number();
            else if (word == "CHARSET_REGISTRY")
                unicode_ = line_.str().find("ISO10646") != std::string::npos;
            else if (word == "STARTCHAR")
                readGlyph();
        }
        if (font_.glyphs.empty())
            fail("there are no glyphs");
        if (!font_.glyphs.count(kNoGlyph) && font_.glyphs.count(defaultChar_))
            font_.glyphs[kNoGlyph] = font_.glyphs[defaultChar_];
        return std::move(font_);
    }

private:
    [[noreturn]] void fail(const std::string& text) const
    {
        name_.fail(path_ + ':' + std::to_string(lineNumber_) + ": " + text);
    }

    bool nextLine(std::string& word)
    {
        std::string text;
        do {
            if (!std::getline(in_, text))
                return false;
            ++lineNumber_;
            line_.clear();
            line_.str(text);
        } while (!(line_ >> word));
        return true;
    }

    Int number()
    {
        Int n = 0;
        if (!(line_ >> n) || n < -32768 || n > 32767)
            fail("a number is wanted");
        return n;
    }

    /// The Mac OS Roman code of an encoding, or nothing for a character outside the set.
    std::optional<Int> code(Int encoding) const
    {
        if (encoding < 0 || encoding < 128 || !unicode_)
            return encoding > 255 ? std::nullopt : std::optional(std::max<Int>(encoding, kNoGlyph));
        std::string text;
        if (encoding < 0x800)
            text = {static_cast<char>(0xC0 | encoding >> 6), static_cast<char>(0x80 | (encoding & 0x3F))};
        else
            text = {static_cast<char>(0xE0 | encoding >> 12), static_cast<char>(0x80 | (encoding >> 6 & 0x3F)),
                static_cast<char>(0x80 | (encoding & 0x3F))};
        const auto roman = macRomanStrict(text);
        return roman ? std::optional<Int>((*roman)[0]) : std::nullopt;
    }

    void readGlyph()
    {
        std::string word, glyphName;
        line_ >> glyphName;
        Glyph glyph;
        Int encoding = kNoGlyph;
        while (nextLine(word) && word != "BITMAP") {
            if (word == "ENCODING")
                encoding = number();
            else if (word == "DWIDTH")
                glyph.advance = number();
            else if (word == "BBX")
                glyph.width = number(), glyph.height = number(), glyph.left = number(), glyph.bottom = number();
        }
        if (glyph.width < 0 || glyph.height < 0 || glyph.width > 255 || glyph.height > 255 || glyph.advance < 0
            || glyph.advance > 254)
            fail("the size of " + glyphName + " is not possible");
        glyph.bits = Bits(glyph.height, glyph.width);
        for (Int v = 0; v < glyph.height; ++v)
            readRow(glyph, v);
        if (!nextLine(word) || word != "ENDCHAR")
            fail(glyphName + " has more rows than its box");
        const std::optional<Int> at = glyphName == ".notdef" ? std::optional(kNoGlyph) : code(encoding);
        if (at && !font_.glyphs.emplace(*at, glyph).second)
            fail("a second glyph for code " + std::to_string(*at));
    }

    void readRow(Glyph& glyph, Int v)
    {
        std::string hex;
        if (!nextLine(hex) || I(hex.size()) * 4 < glyph.width)
            fail("a row of the glyph is missing or short");
        for (Int h = 0; h < I(hex.size()) * 4; ++h) {
            const char c = hex[static_cast<std::size_t>(h / 4)];
            const int digit = c >= '0' && c <= '9' ? c - '0'
                : c >= 'A' && c <= 'F'             ? c - 'A' + 10
                : c >= 'a' && c <= 'f'             ? c - 'a' + 10
                                                   : -1;
            if (digit < 0)
                fail("a row is hexadecimal");
            if ((digit >> (3 - h % 4) & 1) == 0)
                continue;
            if (h >= glyph.width)
                fail("a pixel lies outside the box of the glyph");
            glyph.bits.set(v, h);
        }
    }

    const Source& name_;
    std::string path_;
    std::istringstream in_, line_;
    Int lineNumber_ = 0, defaultChar_ = -2;
    bool unicode_ = false;
    BdfFont font_;
};

Bytes compileStrike(const Source& entry, Int)
{
    entry.allow({"bdf", "ascent", "descent", "leading"});
    const Source name = entry.at("bdf");
    const BdfFont font = BdfReader(name).read();
    const Int ascent = entry.number("ascent", 0, 127, font.ascent),
              descent = entry.number("descent", 0, 127, font.descent);
    const Int height = ascent + descent;
    const auto firstReal = font.glyphs.lower_bound(0);
    if (firstReal == font.glyphs.end())
        name.fail("there are no glyphs");
    const Int first = firstReal->first, last = font.glyphs.rbegin()->first;
    Int kern = 0, widest = 0, widestImage = 0, bitWidth = 0;
    for (const auto& [code, glyph] : font.glyphs) {
        kern = std::min(kern, glyph.left);
        widest = std::max(widest, glyph.advance);
        widestImage = std::max(widestImage, glyph.width);
        bitWidth += glyph.width;
        if (glyph.height > 0 && (glyph.bottom + glyph.height > ascent || glyph.bottom < -descent))
            name.fail("the glyph of code " + std::to_string(code) + " reaches beyond ascent or descent");
    }
    Bits strip(height, bitWidth);
    ByteWriter locations, offsets;
    Int pen = 0;
    for (Int code = first; code <= last + 1; ++code) { // one more: the missing glyph
        const auto it = font.glyphs.find(code > last ? kNoGlyph : code);
        locations.u16(pen);
        if (it == font.glyphs.end()) {
            offsets.u16(kNoGlyph);
            continue;
        }
        const Glyph& glyph = it->second;
        strip.paint(glyph.bits, ascent - glyph.bottom - glyph.height, pen);
        pen += glyph.width;
        offsets.u8(glyph.left - kern);
        offsets.u8(glyph.advance);
    }
    locations.u16(pen);
    offsets.u16(kNoGlyph);
    const Int tableWords = (kStrikeHeader + I(strip.rows.size() + locations.bytes.size()) - 16) / 2;
    if (bitWidth > 65535)
        name.fail("the glyphs are too wide together");
    ByteWriter out;
    out.u16(0x9000);
    for (const Int field : {first, last, widest, kern, tableWords > 0xFFFF ? tableWords >> 16 : -descent, widestImage,
             height, tableWords & 0xFFFF, ascent, descent, entry.number("leading", 0, 127, 0), strip.rowBytes() / 2})
        out.u16(field);
    out.raw(strip.rows);
    out.raw(locations.bytes);
    out.raw(offsets.bytes);
    return out.bytes;
}

std::optional<Bits> pictureOfStrike(const Bytes& data)
{
    if (I(data.size()) < kStrikeHeader)
        return std::nullopt;
    const Block b(data);
    const Int height = b.s16(14), rowBytes = 2 * b.s16(24);
    if (height <= 0 || rowBytes <= 0 || I(data.size()) < kStrikeHeader + height * rowBytes)
        return std::nullopt;
    return bitsFrom(std::span(data).subspan(kStrikeHeader), rowBytes, height, rowBytes * 8);
}

std::optional<std::string> showStrike(Int id, const Bytes& data)
{
    const auto strike = strikeOf(data);
    if (!strike)
        return std::nullopt;
    return " {bdf: NFNT" + std::to_string(id) + ".bdf, ascent: " + std::to_string(strike->ascent)
        + ", descent: " + std::to_string(strike->descent) + ", leading: " + std::to_string(strike->leading)
        + "} # codes " + std::to_string(strike->first) + " to " + std::to_string(strike->last);
}

constexpr Int kFamilyHeader = 52;

Bytes compileFamily(const Source& entry, Int id)
{
    entry.allow({"strikes"});
    const std::vector<Source> strikes = entry.at("strikes").list();
    ByteWriter out;
    out.u16(0);
    out.u16(id);
    out.pad(kFamilyHeader);
    out.u16(I(strikes.size()) - 1);
    for (const Source& strike : strikes) {
        strike.allow({"size", "style", "id"});
        out.u16(strike.at("size").number(1, 127));
        out.u16(strike.number("style", 0, 127, 0));
        out.u16(strike.at("id").number(-32768, 32767));
    }
    return out.bytes;
}

std::optional<std::string> showFamily(Int, const Bytes& data)
{
    ByteReader in(data, kFamilyHeader);
    const Int count = in.s16() + 1;
    if (count < 1 || I(data.size()) != kFamilyHeader + 2 + 6 * count)
        return std::nullopt;
    std::string out = "\n    strikes:";
    for (Int i = 0; i < count; ++i) {
        out += "\n      - {size: " + std::to_string(in.s16());
        out += ", style: " + std::to_string(in.s16());
        out += ", id: " + std::to_string(in.s16()) + '}';
    }
    return out;
}

} // namespace

Int Strike::width(std::span<const std::uint8_t> text, bool bold) const
{
    Int sum = 0;
    for (const std::uint8_t c : text)
        sum += has(c) ? widths[static_cast<std::size_t>(c - first)] + (bold ? 1 : 0) : 0;
    return sum;
}

bool Strike::has(Int code) const
{
    return code >= first && code <= last && widths[static_cast<std::size_t>(code - first)] >= 0;
}

std::optional<Strike> strikeOf(const Bytes& data)
{
    if (I(data.size()) < kStrikeHeader)
        return std::nullopt;
    const Block b(data);
    Strike strike{b.s16(2), b.s16(4), b.s16(18), b.s16(20), b.s16(22), {}};
    const Int high = std::max<Int>(b.s16(10), 0), table = ((high << 16) + b.u16(16)) * 2 + 16;
    if (strike.last < strike.first || I(data.size()) < kStrikeHeader + 2 * b.s16(24) * b.s16(14))
        return std::nullopt;
    for (Int i = 0; i <= strike.last - strike.first; ++i) {
        const bool there = table + 2 * i + 2 <= b.count();
        strike.widths.push_back(!there || b.s16(table + 2 * i) == kNoGlyph ? -1 : b.u8(table + 2 * i + 1));
    }
    return strike;
}

std::vector<StrikeGlyph> strikeGlyphs(const Bytes& data)
{
    std::vector<StrikeGlyph> glyphs(256);
    const auto strike = strikeOf(data);
    if (!strike)
        return glyphs;
    const Block b(data);
    const Int kern = b.s16(8), height = b.s16(14), rowBytes = 2 * b.s16(24), codes = strike->last - strike->first + 1;
    const Int locations = kStrikeHeader + height * rowBytes, offsets = locations + 2 * (codes + 2);
    if (height <= 0 || rowBytes <= 0 || b.count() < offsets + 2 * codes)
        return glyphs;
    const Bits strip = bitsFrom(std::span(data).subspan(kStrikeHeader), rowBytes, height, rowBytes * 8);
    for (Int code = std::max<Int>(strike->first, 0); code <= std::min<Int>(strike->last, 255); ++code) {
        const Int at = 2 * (code - strike->first), left = b.u16(locations + at), right = b.u16(locations + at + 2);
        if (strike->has(code) && left <= right && right <= strip.width && (right - left) * height <= kLargestGlyph)
            glyphs[static_cast<std::size_t>(code)] = {
                strip.part({0, left, height, right}), kern + b.u8(offsets + at), b.u8(offsets + at + 1)};
    }
    return glyphs;
}

std::vector<Form> fontForms()
{
    return {{"FOND", compileFamily, showFamily}, {"NFNT", compileStrike, showStrike, pictureOfStrike},
        {"FONT", compileStrike, showStrike, pictureOfStrike}};
}

} // namespace Rsrc
