#include "MacToolbox/Base/Memory.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"

#include <gtest/gtest.h>

using namespace MacToolbox;

TEST(ByteReader, GivesZerosBeyondTheEndAndKeepsCounting)
{
    const Bytes one{0x12};
    ByteReader in(one);
    EXPECT_EQ(in.u16(), 0x1200);
    EXPECT_EQ(in.u8(), 0);
    EXPECT_EQ(in.raw(3), Bytes(3));
    EXPECT_EQ(in.pos, 6);

    const Bytes two{1, 0xFF};
    ByteReader cut(two);
    EXPECT_EQ(cut.raw(4), (Bytes{1, 0xFF, 0, 0}));
    ByteReader behind(two, -1);
    EXPECT_EQ(behind.s32(), 0x0001FF00);
    ByteReader none(two, 1);
    EXPECT_EQ(none.s8(), -1);
    EXPECT_EQ(none.raw(-5), Bytes());
}

TEST(ByteWriter, WritesBigEndianLowBits)
{
    ByteWriter out;
    out.u8(0x1FF);
    out.u16(-2);
    out.u32(0x1'0203'0405);
    out.pad(9);
    out.pad(3);
    EXPECT_EQ(out.bytes, (Bytes{0xFF, 0xFF, 0xFE, 2, 3, 4, 5, 0, 0}));
}

TEST(Handles, SizesNilAndStringsThatRunOut)
{
    for (const Int n : {Int(0), Int(-1)})
        EXPECT_EQ(GetHandleSize(NewHandle(n)), 0);
    EXPECT_EQ(GetHandleSize(nullptr), 0);
    SetHandleSize(nullptr, 4);
    Handle h = PtrToHand(Bytes{200, 'a', 'b'});
    EXPECT_EQ(h->pstr(0), (Bytes{200, 'a', 'b'}));
    h->resType = os("TEXT");
    const Handle first = h;
    HandToHand(h);
    EXPECT_FALSE(h->isResource());
    EXPECT_NE(h, first);
    EXPECT_EQ(h->bytes, first->bytes);
    EXPECT_EQ(first->description(), "Handle(3 bytes)");
}

TEST(BlockMove, OverlapsDoNotSmear)
{
    const Handle h = PtrToHand(Bytes{1, 2, 3, 4, 5});
    BlockMove({h, 0}, {h, 1}, 4);
    EXPECT_EQ(h->bytes, (Bytes{1, 1, 2, 3, 4}));
    BlockMove({h, 1}, {h, 0}, 4);
    EXPECT_EQ(h->bytes, (Bytes{1, 2, 3, 4, 4}));
    BlockMove({h, 0}, {h, 3}, -1);
    EXPECT_EQ(h->u32(1), 0x02030404);
}

TEST(FourCharacterCodes, ShortAndLongTexts)
{
    EXPECT_EQ(os("AB"), 0x4142U);
    EXPECT_EQ(os("ABCDE"), os("ABCD"));
    EXPECT_EQ(os(""), 0U);
    EXPECT_EQ(osString(0x41FF2020), "A\xC3\xBF  ");
}

TEST(Geometry, EmptyRectanglesAndPackedPoints)
{
    Rect r{0, 0, 10, 10};
    InsetRect(r, 5, 5);
    EXPECT_EQ(r, Rect{});
    const Rect a{5, 5, 5, 5}, b{7, 7, 2, 2};
    UnionRect(a, b, r);
    EXPECT_EQ(r, b);
    EXPECT_EQ(a.unionWith(b), a);
    EXPECT_FALSE(SectRect({0, 0, 4, 4}, {4, 0, 8, 4}, r));
    EXPECT_EQ(r, Rect{});
    EXPECT_EQ(Point::fromLong(0xFFFE0003), (Point{-2, 3}));
    EXPECT_EQ((Point{-2, 3}).toLong(), I(static_cast<std::int32_t>(0xFFFE0003)));
    EXPECT_EQ(LoWord(0xFFFF), -1);
    EXPECT_EQ(HiWord(0x8000'0000), -32768);
}

TEST(MacRoman, EveryByteGoesThereAndBack)
{
    Bytes all(256);
    for (std::size_t i = 0; i < 256; ++i)
        all[i] = static_cast<std::uint8_t>(i);
    EXPECT_EQ(macRoman(fromMacRoman(all)), all);
}

TEST(MacRoman, OneScalarOutsideTurnsAllAccentsToQuestionMarks)
{
    EXPECT_EQ(macRoman("é"), Bytes{0x8E});
    EXPECT_EQ(macRoman("é\xE4\xB8\xAD"
                       "a"),
        (Bytes{'?', '?', 'a'}));
    EXPECT_FALSE(macRomanStrict("\xE4\xB8\xAD"));
    EXPECT_FALSE(macRomanStrict("\xC3")); // cut short
    EXPECT_FALSE(macRomanStrict("\xC0\x80"));
}

TEST(CountedStrings, CutAndShort)
{
    EXPECT_EQ(pstr(std::string(300, 'x')).size(), 256U);
    EXPECT_EQ(string(Bytes{}), "");
    EXPECT_EQ(string(Bytes{9, 'a', 'b'}), "ab");
}

TEST(Numbers, ReadWithoutChecking)
{
    const struct {
        const char* text;
        Int value;
    } kCases[] = {{"+12", 12}, {"-", 0}, {"-7", -7}, {"", 0}, {"1a", 59}, {"4294967295", -1}};
    for (const auto& c : kCases) {
        Int n = 99;
        StringToNum(pstr(c.text), n);
        EXPECT_EQ(n, c.value) << c.text;
    }
    Str255 s;
    NumToString(0x1'8000'0000, s);
    EXPECT_EQ(string(s), "-2147483648");
}

TEST(ParamTexts, OnePassAndAbsentOnesStay)
{
    startRunAfresh();
    const Str255 a = pstr("^1"), c = pstr("see");
    ParamText(pstr("x"), pstr("bee"), pstr("y"), pstr("z"));
    ParamText(&a, nullptr, &c, nullptr);
    const auto expanded = [](std::string_view text) { return fromMacRoman(expandParams(macRoman(text))); };
    EXPECT_EQ(expanded("^0^1^2^3^4^"), "^1beeseez^4^");
    startRunAfresh();
    EXPECT_EQ(expanded("[^1]"), "[]");
}

TEST(EqualString, CaseAndAccents)
{
    EXPECT_TRUE(EqualString(pstr("abc"), pstr("ABC"), false, true));
    EXPECT_FALSE(EqualString(pstr("abc"), pstr("ABC"), true, true));
    EXPECT_TRUE(EqualString(Bytes{1, 0x8A}, Bytes{1, 0x80}, false, true));
    EXPECT_FALSE(EqualString(Bytes{1, 0x80}, Bytes{1, 'A'}, false, true));
    EXPECT_TRUE(EqualString(Bytes{1, 0x80}, Bytes{1, 'A'}, true, false));
    EXPECT_TRUE(EqualString(Bytes{}, Bytes{0}, true, true));
    EXPECT_FALSE(EqualString(Bytes{}, Bytes{1, 'a'}, true, true));
    EXPECT_FALSE(EqualString(Bytes{5, 'a'}, Bytes{5, 'a', 'b'}, true, true)); // cut short
}
