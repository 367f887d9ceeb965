#include "MacToolbox/QuickDraw/Fonts.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/Resources.h"

#include <cstdlib>

namespace MacToolbox {

// ---- strikes ----

std::shared_ptr<const FontStrike> FontStrike::parse(std::span<const std::uint8_t> bytes, Int ownFace)
{
    constexpr Int kHeader = 26;
    if (I(bytes.size()) < kHeader)
        return nullptr;
    Bytes data(bytes.begin(), bytes.end());
    data.insert(data.end(), 4, 0xFF);
    ByteReader in(data, 2);
    const auto strike = std::make_shared<FontStrike>();
    strike->firstChar = in.s16();
    strike->lastChar = in.s16();
    strike->widMax = in.s16();
    strike->kernMax = in.s16();
    const Int high = in.s16();
    in.skip(2);
    strike->fRectHeight = in.s16();
    const Int tableOffset = (std::max<Int>(high, 0) << 16 | in.u16()) * 2 + 16;
    strike->ascent = in.s16();
    strike->descent = in.s16();
    strike->leading = in.s16();
    strike->rowBytes = in.s16() * 2;
    const Int imageSize = strike->rowBytes * strike->fRectHeight;
    if (strike->lastChar < strike->firstChar || strike->rowBytes < 0 || strike->fRectHeight < 0
        || I(bytes.size()) < kHeader + imageSize)
        return nullptr;

    strike->image = in.raw(imageSize);
    const Int entries = strike->lastChar - strike->firstChar + 3;
    for (Int i = 0; i < entries; ++i)
        strike->loc.push_back(in.u16());
    in.pos = tableOffset;
    for (Int i = 0; i < entries; ++i)
        strike->ow.push_back(in.pos + 2 <= I(data.size()) ? in.s16() : -1);
    strike->ownFace = ownFace;
    static Int sSerial = 0;
    strike->serial = ++sSerial;
    return strike;
}

Int FontStrike::indexOf(Int c) const
{
    if (c >= firstChar && c <= lastChar && ow[static_cast<std::size_t>(c - firstChar)] != -1)
        return c - firstChar;
    const Int missing = lastChar - firstChar + 1;
    return ow[static_cast<std::size_t>(missing)] != -1 ? missing : -1;
}

// ---- finding a strike ----

static RunState<FontManager> sFonts;

FontManager& FontManager::shared() { return *sFonts; }

FontManager::Choice FontManager::strike(Int family, Int size, Int face)
{
    if (family == applFont)
        family = geneva;
    if (size == 0)
        size = 12;
    const auto key = std::tuple(family, size, face & bold);
    auto known = strikes_.find(key);
    if (known == strikes_.end()) {
        StrikePtr found = find(family, size, face & bold);
        if (!found && family != systemFont)
            found = strike(systemFont, size, face).strike;
        known = strikes_.emplace(key, std::move(found)).first;
    }
    if (!known->second)
        return {};
    return {known->second, face & ~known->second->ownFace};
}

namespace {

struct SizeEntry {
    Int size, style, id;
};

std::vector<SizeEntry> sizeEntries(const Handle& fond)
{
    std::vector<SizeEntry> entries;
    if (!fond || fond->count() <= 54)
        return entries;
    ByteReader in(fond->bytes, 52);
    for (Int left = in.s16() + 1; left > 0 && in.pos + 6 <= I(in.bytes().size()); --left) {
        const Int size = in.s16(), style = in.s16(), id = in.s16();
        entries.push_back({size, style, id});
    }
    return entries;
}

/// The entry of the size nearest to the one wanted, in the style wanted or else plain.
const SizeEntry* bestEntry(const std::vector<SizeEntry>& entries, Int size, Int style)
{
    const auto nearest = std::min_element(entries.begin(), entries.end(),
        [size](const auto& a, const auto& b) { return std::abs(a.size - size) < std::abs(b.size - size); });
    for (const Int wanted : {style, Int{normal}})
        for (const SizeEntry& entry : entries)
            if (entry.size == nearest->size && entry.style == wanted)
                return &entry;
    return nullptr;
}

/// The number of the resource FONT of the family whose size is nearest, or nothing.
std::optional<Int> nearestFont(Int family, Int size)
{
    std::optional<Int> best;
    for (Int s = 1; s <= 127; ++s)
        if ((!best || std::abs(s - size) < std::abs(*best - size))
            && ResourceManager::shared().exists(os("FONT"), family * 128 + s))
            best = s;
    return best ? std::optional(family * 128 + *best) : std::nullopt;
}

std::shared_ptr<const FontStrike> parse(const Handle& h, Int ownFace)
{
    return h ? FontStrike::parse(h->bytes, ownFace) : nullptr;
}

} // namespace

StrikePtr FontManager::find(Int family, Int size, Int style)
{
    StrikePtr strike;
    const std::vector<SizeEntry> entries = sizeEntries(GetResource(os("FOND"), family));
    if (const SizeEntry* entry = entries.empty() ? nullptr : bestEntry(entries, size, style)) {
        Handle h = GetResource(os("NFNT"), entry->id);
        if (!h)
            h = GetResource(os("FONT"), entry->id);
        strike = parse(h, entry->style);
    }
    if (!strike)
        if (const auto id = nearestFont(family, size))
            strike = parse(GetResource(os("FONT"), *id), normal);
    return strike;
}

// ---- styles ----

Int FontManager::extraWidth(Int face)
{
    return (face & bold ? 1 : 0) + (face & (outline | shadow) ? 1 : 0) + (face & shadow ? 1 : 0)
        + (face & extend ? 1 : 0) - (face & condense ? 1 : 0);
}

namespace {

/// A blank glyph of that size, elsewhere like `like`. One too large to be drawn gets no columns.
StyledGlyph blank(const StyledGlyph& like, Int width, Int height)
{
    constexpr Int kMostPixels = 1 << 17;
    StyledGlyph g;
    g.left = like.left, g.top = like.top, g.advance = like.advance;
    g.height = height; // the same for all of a strike, also without any pixels
    g.width = width > 0 && width <= kMostPixels / std::max<Int>(height, 1) ? width : 0;
    g.words.resize(static_cast<std::size_t>(g.columns() * g.columnHeight()));
    return g;
}

/// A glyph of that size with the pixels for which `on(x, y)` holds.
template <typename Test> StyledGlyph drawn(const StyledGlyph& like, Int width, Int height, Test&& on)
{
    StyledGlyph g = blank(like, width, height);
    for (Int y = 0; y < g.height; ++y)
        for (Int x = 0; x < g.width; ++x)
            if (on(x, y))
                g.setBit(x, y);
    return g;
}

StyledGlyph plainGlyph(const FontStrike& strike, Int index, Int face)
{
    const auto i = static_cast<std::size_t>(index);
    StyledGlyph g;
    g.left = strike.kernMax + (strike.ow[i] >> 8 & 0xFF);
    g.top = -strike.ascent;
    g.advance = (strike.ow[i] & 0xFF) + FontManager::extraWidth(face);
    const Int from = strike.loc[i], rowBits = strike.rowBytes * 8;
    const Int width = std::min(strike.loc[i + 1], rowBits) - from; // beyond the row there are no pixels
    return drawn(g, width, strike.fRectHeight, [&](Int x, Int y) {
        const Int column = from + x;
        return strike.image[static_cast<std::size_t>(y * strike.rowBytes + (column >> 3))] >> (7 - (column & 7)) & 1;
    });
}

StyledGlyph emboldened(const StyledGlyph& g)
{
    return drawn(g, g.width + 1, g.height, [&](Int x, Int y) { return g.bit(x, y) || g.bit(x - 1, y); });
}

/// Leans to the right above the baseline and to the left below it.
StyledGlyph slanted(const StyledGlyph& g, Int ascent, Int descent)
{
    const Int padLeft = std::max<Int>((descent + 1) / 2, 0), padRight = (ascent + 1) / 2;
    StyledGlyph leaning = drawn(g, g.width + padLeft + padRight, g.height,
        [&](Int x, Int y) { return g.bit(x - padLeft - (ascent - y) / 2, y); });
    leaning.left -= padLeft;
    return leaning;
}

/// Hollow, with a line around it, and with `shade` a second one to the right and below.
StyledGlyph outlined(const StyledGlyph& g, bool shade)
{
    const auto inked = [&](Int x, Int y) { return g.bit(x - 1, y - 1); };
    const auto near = [&](Int x, Int y) {
        for (Int dy = -1; dy <= 1; ++dy)
            for (Int dx = -1; dx <= 1; ++dx)
                if (inked(x + dx, y + dy))
                    return true;
        return false;
    };
    const auto shaded = [&](Int x, Int y) {
        return inked(x - 2, y - 2) || inked(x - 2, y - 1) || inked(x - 1, y - 2) || inked(x - 2, y) || inked(x, y - 2);
    };
    const Int more = shade ? 3 : 2;
    StyledGlyph hollow = drawn(g, g.width + more, g.height + more,
        [&](Int x, Int y) { return !inked(x, y) && (near(x, y) || (shade && shaded(x, y))); });
    --hollow.left;
    --hollow.top;
    return hollow;
}

StyledGlyph styledGlyph(const FontStrike& strike, Int c, Int face)
{
    const Int index = strike.indexOf(c);
    if (index < 0)
        return {};
    StyledGlyph g = plainGlyph(strike, index, face);
    if (face & bold)
        g = emboldened(g);
    if (face & italic)
        g = slanted(g, strike.ascent, strike.descent);
    if (face & (outline | shadow))
        g = outlined(g, (face & shadow) != 0);
    return g;
}

} // namespace

FontManager::StyleTable& FontManager::table(const StrikePtr& strike, Int face)
{
    StyleTable& styles = tables_[{strike->serial, face}];
    if (!styles.owner)
        styles.owner = strike;
    return styles;
}

const StyledGlyph& FontManager::StyleTable::glyph(Int c, Int face)
{
    std::unique_ptr<const StyledGlyph>& g = glyphs[static_cast<std::size_t>(c)];
    if (!g)
        g = std::make_unique<const StyledGlyph>(styledGlyph(*owner, c, face));
    return *g;
}

const StyledGlyph& FontManager::styled(const StrikePtr& strike, Int c, Int face)
{
    return table(strike, face).glyph(c & 0xFF, face);
}

// ---- measuring ----

FontInfo FontManager::info(const GrafPort& port)
{
    const auto [strike, face] = this->strike(port.txFont, port.txSize, port.txFace);
    if (!strike)
        return {};
    FontInfo info{strike->ascent, strike->descent, strike->widMax + extraWidth(face), strike->leading};
    if (face & (outline | shadow)) {
        info.ascent += 1;
        info.descent += face & shadow ? 2 : 1;
    }
    return info;
}

Int FontManager::width(const GrafPort& port, std::span<const std::uint8_t> characters)
{
    const auto [strike, face] = this->strike(port.txFont, port.txSize, port.txFace);
    if (!strike)
        return 0;
    const Int extra = extraWidth(face);
    Int sum = 0;
    for (const std::uint8_t c : characters) {
        const Int index = strike->indexOf(c);
        if (index >= 0)
            sum += (strike->ow[static_cast<std::size_t>(index)] & 0xFF) + extra;
        if (c == ' ')
            sum += port.spExtra;
    }
    return sum;
}

// ---- the calls on the current port ----

void TextFont(Int font) { thePort->txFont = font; }
void TextFace(Int face) { thePort->txFace = face & 127; }
void TextMode(Int mode) { thePort->txMode = mode; }
void TextSize(Int size) { thePort->txSize = size; }
void SpaceExtra(Int extra) { thePort->spExtra = extra >> 16; }
void GetFontInfo(FontInfo& info) { info = FontManager::shared().info(*thePort); }

void GetFNum(const Str255& name, Int& num)
{
    num = 0;
    const auto wanted = characters(name);
    for (const auto& [id, bytes] : ResourceManager::shared().named(os("FOND")))
        if (std::equal(bytes.begin(), bytes.end(), wanted.begin(), wanted.end()))
            num = id;
}

static std::span<const std::uint8_t> part(std::span<const std::uint8_t> buf, Int first, Int count)
{
    const Int from = std::clamp<Int>(first, 0, I(buf.size()));
    return buf.subspan(
        static_cast<std::size_t>(from), static_cast<std::size_t>(std::clamp<Int>(count, 0, I(buf.size()) - from)));
}

void DrawChar(Int c)
{
    const auto code = static_cast<std::uint8_t>(c);
    FontManager::shared().draw(*thePort, {&code, 1});
}

void DrawString(const Str255& s)
{
    if (!s.empty())
        FontManager::shared().draw(*thePort, characters(s));
}

void DrawText(std::span<const std::uint8_t> buf, Int first, Int count)
{
    const auto text = part(buf, first, count);
    if (!text.empty())
        FontManager::shared().draw(*thePort, text);
}

Int CharWidth(Int c)
{
    const auto code = static_cast<std::uint8_t>(c);
    return FontManager::shared().width(*thePort, {&code, 1});
}

Int StringWidth(const Str255& s) { return FontManager::shared().width(*thePort, characters(s)); }

Int TextWidth(std::span<const std::uint8_t> buf, Int first, Int count)
{
    return FontManager::shared().width(*thePort, part(buf, first, count));
}

void MeasureText(Int count, std::span<const std::uint8_t> buf, Int start, std::vector<Int>& locs)
{
    locs.assign(1, 0);
    for (Int i = 0; i < count; ++i)
        locs.push_back(locs.back() + (start + i < 0 ? 0 : TextWidth(buf, start + i, 1)));
}

} // namespace MacToolbox
