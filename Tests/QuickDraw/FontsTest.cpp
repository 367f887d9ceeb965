#include "MacToolbox/QuickDraw/Fonts.h"

#include "MacToolbox/Base/RunState.h"
#include "Tests/QuickDraw/FontMaker.h"
#include "Tests/QuickDraw/PlainPixels.h"

#include <gtest/gtest.h>

#include <set>

using namespace MacToolbox;
using FontMaker::Font;
using FontMaker::Glyph;
using Plain::Chance;

namespace {

constexpr OSType kFond = os("FOND"), kNfnt = os("NFNT"), kFont = os("FONT");

/// "A" to "C", a narrow one that draws nothing, none for "E"; a space and the sign for missing characters.
Font sampleFont(Int ascent = 3)
{
    const auto box = [ascent](Int width, const char* row) {
        return Glyph{0, width + 1, std::vector<std::string>(static_cast<std::size_t>(ascent + 1), row)};
    };
    Font font;
    font.firstChar = 'A', font.ascent = ascent, font.descent = 1, font.leading = 2, font.widMax = 9;
    font.glyphs = {box(3, "###"), box(4, "#..#"), box(1, "#"), box(0, ""), {-1, -1, {}}, box(2, "##")};
    for (auto& row : font.glyphs[4].rows)
        row = "";
    return font;
}

Bytes text(const std::string& s) { return {s.begin(), s.end()}; }

class Text : public testing::Test {
protected:
    void SetUp() override { startRunAfresh(); }
    void TearDown() override { startRunAfresh(); }

    Int width(const std::string& s, Int face = 0)
    {
        TextFace(face);
        return TextWidth(text(s), 0, I(s.size()));
    }
};

using Ink = std::set<std::pair<Int, Int>>; // (x, y) from the pen on the baseline

/// The ink of one character by the rules of each style, as sets of points.
Ink inkOf(const FontStrike& strike, Int c, Int face)
{
    const Int index = strike.indexOf(c);
    Ink ink;
    if (index < 0)
        return ink;
    const auto i = static_cast<std::size_t>(index);
    const Int left = strike.kernMax + (strike.ow[i] >> 8 & 0xFF);
    for (Int y = 0; y < strike.fRectHeight; ++y)
        for (Int x = strike.loc[i]; x < strike.loc[i + 1]; ++x) {
            const Int byte = y * strike.rowBytes + (x >> 3);
            if (x < strike.rowBytes * 8 && strike.image[static_cast<std::size_t>(byte)] >> (7 - (x & 7)) & 1)
                ink.insert({left + x - strike.loc[i], y - strike.ascent});
        }
    if (face & bold) {
        const Ink thin = ink;
        for (const auto& [x, y] : thin)
            ink.insert({x + 1, y});
    }
    if (face & italic) {
        const Ink upright = ink;
        ink.clear();
        for (const auto& [x, y] : upright)
            ink.insert({x + -y / 2, y}); // y is negative above the baseline
    }
    if (face & (outline | shadow)) {
        const Ink solid = ink;
        ink.clear();
        for (const auto& [x, y] : solid) {
            for (Int dy = -1; dy <= 1; ++dy)
                for (Int dx = -1; dx <= 1; ++dx)
                    ink.insert({x + dx, y + dy});
            if (face & shadow)
                for (const auto& [dx, dy] : {std::pair<Int, Int>{2, 2}, {2, 1}, {1, 2}, {2, 0}, {0, 2}})
                    ink.insert({x + dx, y + dy});
        }
        for (const auto& point : solid)
            ink.erase(point);
    }
    return ink;
}

/// A strike of random ink: empty and very wide glyphs, glyphs that hang over, characters without any.
Font randomFont(Chance& chance)
{
    Font font;
    font.firstChar = chance.in(0, 70), font.kernMax = chance.in(-3, 1);
    font.ascent = chance.in(1, 14), font.descent = chance.in(0, 5), font.widMax = 12;
    for (Int n = chance.in(2, 60); n > 0; --n) {
        Glyph g{chance.in(0, 4), chance.in(0, 12), {}};
        const Int inkWidth = chance.oneIn(12) ? chance.in(60, 140) : chance.in(0, 11);
        for (Int y = 0; y < font.ascent + font.descent; ++y) {
            g.rows.emplace_back();
            for (Int x = 0; x < inkWidth; ++x)
                g.rows.back() += chance.oneIn(3) ? '#' : '.';
        }
        if (chance.oneIn(6))
            g.advance = g.offset = -1;
        font.glyphs.push_back(g);
    }
    return font;
}

} // namespace

TEST_F(Text, AgreesWithEachPixelInEveryStyleAndMode)
{
    Chance chance(41);
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        startRunAfresh();
        const FontMaker::OpenFile file{{{kFont, 12 + 128 * 7}, randomFont(chance).bytes()}};
        const Rect bounds{-20, -9, 60, chance.in(20, 180)};
        GrafPort port(chance.bitmap(bounds));
        if (chance.oneIn(2))
            port.clipRgn->region = chance.region();
        port.txFont = 7, port.txFace = chance.oneIn(3) ? chance.in(0, 127) : chance.in(0, 3);
        port.txMode = chance.in(0, 7), port.spExtra = chance.in(-2, 6);
        port.fgColor = chance.oneIn(4) ? RGBColor::white : RGBColor::black;
        port.bkColor = chance.oneIn(4) ? RGBColor::black : RGBColor::white;
        port.pnLoc = {chance.in(-10, 40), chance.in(-20, 100)};
        Bytes words;
        for (Int n = chance.oneIn(9) ? chance.in(120, 300) : chance.in(0, 20); n > 0; --n)
            words.push_back(static_cast<std::uint8_t>(chance.oneIn(5) ? 32 : chance.in(0, 140)));

        const StrikePtr strike = FontManager::shared().strike(7, 0, port.txFace).strike;
        ASSERT_NE(strike, nullptr);
        const BitMap slow = Plain::copyOf(port.portBits);
        const auto put = [&](Int h, Int v, bool flip, bool dark) {
            if (port.clipRgn->region.contains(h, v))
                slow.set(h, v, flip ? !slow.get(h, v) : dark);
        };
        const Int y = port.pnLoc.v;
        Int x = port.pnLoc.h;
        for (const std::uint8_t c : words) {
            const Int index = strike->indexOf(c);
            const Int advance = index < 0
                ? 0
                : (strike->ow[static_cast<std::size_t>(index)] & 0xFF) + FontManager::extraWidth(port.txFace);
            if ((port.txMode & 7) == 0)
                for (Int v = y - strike->ascent; v < y + strike->descent; ++v)
                    for (Int h = x; h < x + advance; ++h)
                        put(h, v, false, port.bkColor.isBlack());
            const bool swapped = (port.txMode & 4) != 0 || (port.txMode & 3) == 3;
            for (const auto& [dx, dy] : inkOf(*strike, c, port.txFace))
                put(x + dx, y + dy, (port.txMode & 3) == 2, swapped ? port.bkColor.isBlack() : port.fgColor.isBlack());
            x += advance + (c == ' ' ? port.spExtra : 0);
        }
        if (port.txFace & underline)
            for (Int h = std::min(port.pnLoc.h, x - 1); h <= std::max(port.pnLoc.h, x - 1); ++h)
                put(h, y + 1, false, port.fgColor.isBlack());

        EXPECT_EQ(FontManager::shared().width(port, words), x - port.pnLoc.h);
        FontManager::shared().draw(port, words);
        EXPECT_EQ(port.pnLoc, (Point{y, x}));
        ASSERT_EQ(port.portBits.baseAddr->bytes, slow.baseAddr->bytes);
    }
}

TEST_F(Text, FindsTheNearestSizeAndStyle)
{
    const FontMaker::OpenFile file{
        {{kFond, 3}, FontMaker::fond({{9, 0, 200}, {12, 0, 201}, {12, 1, 202}})},
        {{kNfnt, 200}, sampleFont(2).bytes()},
        {{kNfnt, 201}, sampleFont(3).bytes()},
        {{kFont, 202}, sampleFont(4).bytes()},
        {{kFond, 20}, FontMaker::fond({{14, 0, 210}})},
        {{kNfnt, 210}, sampleFont(5).bytes()},
        {{kFont, 7 * 128 + 10}, sampleFont(6).bytes()},
        {{kFont, 7 * 128 + 14}, sampleFont(7).bytes()},
        {{kFond, 8}, FontMaker::fond({{12, 0, 999}})},
        {{kFont, 8 * 128 + 99}, sampleFont(8).bytes()},
        {{kFont, 12}, sampleFont(9).bytes()},
    };
    FontManager& fonts = FontManager::shared();
    const struct {
        Int family, size, face, ascent, residual;
    } kCases[] = {
        {applFont, 0, 0, 3, 0},
        {3, 9, 0, 2, 0},
        {3, 10, 0, 2, 0},
        {3, 60, italic, 3, italic},
        {3, 12, bold | italic, 4, italic}, // the bold strike: nothing to synthesise
        {3, 9, bold, 2, bold},             // only a plain one in that size
        {20, 12, bold | shadow, 5, bold | shadow},
        {7, 12, 0, 6, 0},
        {7, 13, 0, 7, 0}, // equally near: the smaller
        {8, 12, 0, 8, 0}, // its family names a strike that is missing
        {99, 12, bold, 9, bold},
        {0, 0, 0, 9, 0},
    };
    for (int again = 0; again < 2; ++again)
        for (const auto& c : kCases) {
            SCOPED_TRACE(std::to_string(c.family) + " " + std::to_string(c.size));
            const auto [strike, residual] = fonts.strike(c.family, c.size, c.face);
            ASSERT_NE(strike, nullptr);
            EXPECT_EQ(strike->ascent, c.ascent);
            EXPECT_EQ(residual, c.residual);
        }
}

TEST_F(Text, MeasuresStylesSpacesAndMissingCharacters)
{
    Font font = sampleFont();
    const FontMaker::OpenFile file{{{kFont, 12}, font.bytes()}};
    EXPECT_EQ(width("AB"), 4 + 5);
    EXPECT_EQ(width("AB", bold), 4 + 5 + 2);
    EXPECT_EQ(width("A", bold | shadow | extend), 4 + 4);
    EXPECT_EQ(width("A", condense), 3);
    EXPECT_EQ(width("A", underline), 4);
    EXPECT_EQ(width("Ez"), 3 + 3); // both show the missing character
    SpaceExtra(0x2FFFF);
    EXPECT_EQ(width("A A"), 4 + 3 + 2 + 4);
    TextFace(255);
    EXPECT_EQ(thePort->txFace, 127);

    std::vector<Int> locs;
    TextFace(0);
    MeasureText(4, text("AB"), -1, locs);
    EXPECT_EQ(locs, (std::vector<Int>{0, 0, 4, 9, 9}));
    EXPECT_EQ(TextWidth(text("ABC"), 1, 99), 5 + 2);
    EXPECT_EQ(TextWidth(text("ABC"), -7, 1), 4);
    EXPECT_EQ(TextWidth(text("ABC"), 5, -1), 0);
    EXPECT_EQ(StringWidth(pstr("AAA")), 12);
    EXPECT_EQ(StringWidth({}), 0);

    TextFace(shadow);
    FontInfo info;
    GetFontInfo(info);
    EXPECT_EQ(info, (FontInfo{3 + 1, 1 + 2, 9 + 2, 2}));

    font.glyphs.back().advance = -1; // not even a sign for missing characters
    startRunAfresh();
    const FontMaker::OpenFile open{{{kFont, 12}, font.bytes()}};
    thePort->spExtra = 2;
    EXPECT_EQ(width("zz zz", bold), 2);
}

TEST_F(Text, WithoutAnyFontDoesNothing)
{
    ResourceManager::shared().reset();
    MoveTo(5, 5);
    DrawString(pstr("Nothing"));
    EXPECT_EQ(thePort->pnLoc, (Point{5, 5}));
    EXPECT_EQ(width("Nothing"), 0);
    FontInfo info{1, 1, 1, 1};
    GetFontInfo(info);
    EXPECT_EQ(info, FontInfo());
}

TEST_F(Text, MovesThePenOnlyWhileARegionIsOpen)
{
    const FontMaker::OpenFile file{{{kFont, 12}, sampleFont().bytes()}};
    const auto port = std::make_shared<GrafPort>(Rect{0, 0, 30, 60});
    const PortScope scope(port);
    MoveTo(4, 10), OpenRgn();
    DrawString(pstr("AB"));
    CloseRgn(NewRgn());
    EXPECT_EQ(port->pnLoc, (Point{10, 13}));
    HidePen(), TextFace(underline);
    DrawString(pstr("A")); // the pen's visibility is for the underline alone
    EXPECT_TRUE(port->portBits.get(13, 9));
    EXPECT_FALSE(port->portBits.get(16, 11));
    ShowPen();
    MoveTo(20, 20), DrawString(pstr(""));
    EXPECT_TRUE(port->portBits.get(19, 21) && port->portBits.get(20, 21));
    EXPECT_FALSE(port->portBits.get(18, 21) || port->portBits.get(21, 21));
}

TEST_F(Text, DamagedStrikesAreRefusedOrCutShort)
{
    const Bytes whole = sampleFont().bytes();
    EXPECT_EQ(FontStrike::parse(Bytes(25), 0), nullptr);
    for (const auto& [at, value] :
        {std::pair<std::size_t, std::uint8_t>{4, 0x80}, {14, 0x80}, {14, 0x70}, {24, 0x80}, {24, 0x70}}) {
        Bytes bad = whole; // last character, height, row length
        bad[at] = value;
        EXPECT_EQ(FontStrike::parse(bad, 0), nullptr) << at;
    }
    for (std::size_t cut = 1; cut <= 8; ++cut) { // the table of widths ends early: those characters are missing
        const auto strike = FontStrike::parse(std::span(whole).first(whole.size() - cut), 0);
        ASSERT_NE(strike, nullptr);
        EXPECT_EQ(strike->ow.size(), 7U);
        EXPECT_EQ(strike->indexOf('A'), 0);
        EXPECT_EQ(strike->ow[6], -1);
        if (cut > 4) {
            EXPECT_EQ(strike->indexOf('z'), -1);
        }
    }
    Bytes huge = whole;
    huge[18] = 0x7F, huge[20] = 0x7F; // ascent and descent; a slanted glyph would be enormous
    const auto strike = FontStrike::parse(huge, 0);
    ASSERT_NE(strike, nullptr);
    const StyledGlyph& g = FontManager::shared().styled(strike, 'A', italic | outline);
    EXPECT_LT(g.words.size() * 8, 1U << 20);
}

TEST_F(Text, FamiliesAreFoundByTheirExactName)
{
    const FontMaker::OpenFile file{{{kFond, 3}, FontMaker::fond({}), "Plain"},
        {{kFond, 20}, FontMaker::fond({}), "Sign"}, {{kFond, 40}, FontMaker::fond({}), "Sign"}};
    for (const auto& [name, want] : {std::pair<const char*, Int>{"Plain", 3}, {"Sign", 40}, {"sign", 0}, {"Sig", 0}}) {
        Int number = 5;
        GetFNum(pstr(name), number);
        EXPECT_EQ(number, want) << name;
    }
}
