// What the fonts of the game have to keep when somebody draws a letter anew, beyond what `rsrc check` asks.

#include "Tests/Tools/GameResources.h"
#include "Tools/rsrc/Forms.h"

#include "MacToolbox/Base/Strings.h"

#include <gtest/gtest.h>

using namespace Rsrc;

namespace {

constexpr Int kStrikes[] = {12, 393, 2574, 6322, 6323};

/// The columns of a glyph that hold ink, from the first to the one behind the last; equal ones for none.
std::pair<Int, Int> inkOf(const Bits& bits)
{
    Int first = bits.width, last = 0;
    for (Int v = 0; v < bits.height; ++v)
        for (Int h = 0; h < bits.width; ++h)
            if (bits.black(v, h))
                first = std::min(first, h), last = std::max(last, h + 1);
    return {std::min(first, last), last};
}

const StrikeGlyph& glyphOf(const std::vector<StrikeGlyph>& glyphs, Int code)
{
    return glyphs[static_cast<std::size_t>(code)];
}

} // namespace

TEST(Fonts, FiguresAreOfOneWidth)
{
    for (const Int id : kStrikes) {
        const auto glyphs = strikeGlyphs(gameResource("NFNT", id));
        for (Int code = '1'; code <= '9'; ++code)
            EXPECT_EQ(glyphOf(glyphs, code).advance, glyphOf(glyphs, '0').advance)
                << "NFNT " << id << ", " << char(code);
    }
}

// Bold is drawn by doubling each column to the right, so a letter ends one white column before the next; with more than
// one the letter would stand apart.
TEST(Fonts, LettersAreSpacedEvenly)
{
    for (const Int id : kStrikes) {
        const auto glyphs = strikeGlyphs(gameResource("NFNT", id));
        for (Int code = '!'; code <= '~'; ++code) {
            SCOPED_TRACE(testing::Message() << "NFNT " << id << ", " << char(code));
            const StrikeGlyph& glyph = glyphOf(glyphs, code);
            const auto [first, last] = inkOf(glyph.bits);
            ASSERT_LT(first, last) << "nothing is drawn";
            const Int right = glyph.advance - glyph.left - last;
            EXPECT_GE(glyph.left + first, 0);
            EXPECT_GE(right, 1);
            if (isalpha(static_cast<int>(code))) {
                EXPECT_EQ(right, 1);
                EXPECT_EQ(glyph.left + first, 0);
            }
        }
    }
}

TEST(Fonts, AccentsChangeNoLetter)
{
    const struct {
        const char* plain;
        const char* accented;
    } kLetters[] = {
        {"A", "ÄÅÀÃÂÁ"},
        {"C", "Ç"},
        {"E", "ÉÊËÈ"},
        {"I", "ÍÎÏÌ"},
        {"N", "Ñ"},
        {"O", "ÖÕÓÔÒ"},
        {"U", "ÜÚÛÙ"},
        {"Y", "Ÿ"},
        {"a", "áàâäãå"},
        {"c", "ç"},
        {"e", "éèêë"},
        {"n", "ñ"},
        {"o", "óòôöõ"},
        {"u", "úùûü"},
        {"y", "ÿ"},
    };
    for (const Int id : kStrikes) {
        const auto glyphs = strikeGlyphs(gameResource("NFNT", id));
        for (const auto& letter : kLetters)
            for (const std::uint8_t code : macRoman(letter.accented)) {
                SCOPED_TRACE(testing::Message() << "NFNT " << id << ", code " << int(code));
                const StrikeGlyph &plain = glyphOf(glyphs, letter.plain[0]), &accented = glyphOf(glyphs, code);
                EXPECT_EQ(accented.advance, plain.advance);
                EXPECT_NE(accented.bits, plain.bits);
            }
    }
}

TEST(Fonts, NoTwoCharactersLookAlike)
{
    for (const Int id : kStrikes) {
        const auto glyphs = strikeGlyphs(gameResource("NFNT", id));
        const auto look = [](const StrikeGlyph& glyph) {
            const auto [first, last] = inkOf(glyph.bits);
            return glyph.bits.part({0, first, glyph.bits.height, last});
        };
        for (Int a = '!'; a <= '~'; ++a)
            for (Int b = '!'; b < a; ++b)
                EXPECT_NE(look(glyphOf(glyphs, a)), look(glyphOf(glyphs, b)))
                    << "NFNT " << id << ": " << char(a) << " and " << char(b);
        // The tilde is no double acute.
        EXPECT_NE(glyphOf(glyphs, 0x84).bits, glyphOf(glyphs, 0x83).bits);
    }
}
