#include "MacToolbox/QuickDraw/Picture.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/QuickDraw/FontMaker.h"

#include <gtest/gtest.h>
#include <random>

using namespace MacToolbox;

namespace {

/// A picture of frame (0, 0, 40, 60), opcode by opcode.
class Pict {
public:
    explicit Pict(Int version = 2, const Rect& frame = {0, 0, 40, 60}) : version_(version)
    {
        out_.u16(0);
        rect(frame);
        if (version == 1)
            out_.u16(0x1101);
        else
            u16(0x0011), u16(0x02FF);
    }
    Pict& op(Int code)
    {
        if (version_ == 1)
            out_.u8(code);
        else
            out_.pad(I(out_.bytes.size() + 1) & ~Int{1}), out_.u16(code);
        return *this;
    }
    Pict& u8(Int v) { return out_.u8(v), *this; }
    Pict& u16(Int v) { return out_.u16(v), *this; }
    Pict& u32(Int v) { return out_.u32(v), *this; }
    Pict& rect(const Rect& r) { return u16(r.top).u16(r.left).u16(r.bottom).u16(r.right); }
    Pict& pt(Int v, Int h) { return u16(v).u16(h); }
    Pict& raw(const Bytes& b) { return out_.raw(b), *this; }
    Pict& fill(Int n, Int byte) { return raw(Bytes(static_cast<std::size_t>(n), static_cast<std::uint8_t>(byte))); }
    Pict& end() { return op(0xFF); }
    Handle handle() const { return PtrToHand(out_.bytes); }
    const Bytes& bytes() const { return out_.bytes; }

private:
    Int version_;
    ByteWriter out_;
};

/// A port of 80 by 120 pixels, as the current one.
class PictureTest : public testing::Test {
protected:
    PictureTest() : port(std::make_shared<GrafPort>(Rect{0, 0, 80, 120})), saved(thePort) { SetPort(port); }
    ~PictureTest() override { SetPort(saved); }

    Int blackIn(const Rect& r) const
    {
        Int n = 0;
        for (Int v = r.top; v < r.bottom; ++v)
            for (Int h = r.left; h < r.right; ++h)
                n += port->portBits.get(h, v);
        return n;
    }
    Int all() const { return blackIn(port->portRect); }
    void wipe() { EraseRect(port->portRect); }
    /// Plays at the frame's own size, on white, and counts black.
    Int played(const Pict& p)
    {
        wipe();
        DrawPicture(p.handle(), {0, 0, 40, 60});
        return all();
    }

    GrafPtr port, saved;
};

/// The operands of a bit image of `bounds` up to its rows.
Pict& image(Pict& p, Int op, Int rowBytes, const Rect& bounds, const Rect& to, Int mode = srcCopy)
{
    return p.op(op).u16(rowBytes).rect(bounds).rect(bounds).rect(to).u16(mode);
}

} // namespace

TEST_F(PictureTest, ShapesFollowTheLowBitsAndRememberTheLastRectangle)
{
    const Rect r{10, 10, 30, 40};
    for (const Int version : {1, 2}) {
        EXPECT_EQ(played(Pict(version).op(0x31).rect(r).end()), 600);
        EXPECT_EQ(played(Pict(version).op(0x30).rect(r).end()), 2 * 30 + 2 * 18);
        EXPECT_EQ(played(Pict(version).op(0x31).rect(r).op(0x3A).end()), 0) << "erased again";
        EXPECT_EQ(played(Pict(version).op(0x33).rect(r).op(0x3B).end()), 0) << "inverted twice";
        EXPECT_EQ(played(Pict(version).op(0x0A).u32(0xAA55AA55).u32(0xAA55AA55).op(0x34).rect(r).end()), 300);
        const Int oval = played(Pict(version).op(0x51).rect(r).end());
        EXPECT_NEAR(static_cast<double>(oval), 471, 8);
        EXPECT_EQ(played(Pict(version).op(0x51).rect(r).op(0x39).end()), 600) << "the rectangle of the oval";
        EXPECT_EQ(played(Pict(version).op(0x0B).pt(0, 0).op(0x41).rect(r).end()), 600);
        EXPECT_EQ(played(Pict(version).op(0x61).fill(12, 0).op(0x69).fill(4, 0).op(0x31).rect(r).end()), 600)
            << "arcs are passed over";
        EXPECT_EQ(played(Pict(version).op(0x81).u16(14).rect(r).fill(4, 9).op(0x31).rect({0, 0, 1, 1}).end()), 601)
            << "a region is its box";
    }
}

TEST_F(PictureTest, LinesAndPolygons)
{
    EXPECT_EQ(played(Pict().op(0x20).pt(5, 5).pt(5, 14).end()), 10);
    EXPECT_EQ(played(Pict().op(0x20).pt(5, 5).pt(5, 14).op(0x21).pt(8, 14).end()), 13);
    EXPECT_EQ(played(Pict().op(0x22).pt(5, 5).u8(9).u8(0).op(0x23).u8(0).u8(-3).end()), 13);
    const auto triangle = [](Int op) {
        Pict p;
        return p.op(op).u16(22).rect({0, 0, 40, 60}).pt(0, 0).pt(0, 30).pt(30, 0);
    };
    EXPECT_EQ(played(triangle(0x71).end()), 465);
    EXPECT_EQ(played(triangle(0x71).op(0x7B).end()), 0);
    EXPECT_EQ(played(triangle(0x70).end()), 61) << "an open outline: no edge back to the start";
    EXPECT_EQ(played(Pict().op(0x71).u16(10).rect({0, 0, 9, 9}).end()), 0);
    EXPECT_EQ(played(Pict().op(0x07).pt(3, 2).op(0x20).pt(5, 5).pt(5, 5).end()), 6) << "a pen 3 high, 2 wide";
}

TEST_F(PictureTest, EverythingIsMappedButPenAndDeltas)
{
    const Handle p = Pict().op(0x20).pt(0, 0).pt(0, 30).op(0x31).rect({10, 10, 20, 20}).end().handle();
    EXPECT_EQ(picFrame(p), (Rect{0, 0, 40, 60}));
    DrawPicture(p, {0, 0, 80, 120});
    EXPECT_EQ(blackIn({0, 0, 1, 120}), 61) << "a line stays one pixel wide";
    EXPECT_EQ(blackIn({1, 0, 80, 120}), 400);
    wipe();
    DrawPicture(Pict(2, {0, 0, 0, 0}).op(0x31).rect({10, 10, 20, 20}).end().handle(), {0, 0, 80, 120});
    EXPECT_EQ(all(), 100) << "without an extent nothing is scaled";
    wipe();
    DrawPicture(p, {5, 5, 5, 5});
    EXPECT_LE(all(), 1);
}

TEST_F(PictureTest, TheClipIsThatOfThePortAndTheBoxTold)
{
    ClipRect({0, 0, 40, 20});
    const Pict p = Pict()
                       .op(0x01)
                       .u16(10)
                       .rect({0, 50, 40, 60})
                       .op(0x31)
                       .rect({0, 0, 40, 60})
                       .op(0x01)
                       .u16(12)
                       .rect({0, 10, 40, 60})
                       .u16(7)
                       .op(0x31)
                       .rect({0, 0, 40, 60})
                       .end();
    DrawPicture(p.handle(), {0, 0, 40, 60});
    EXPECT_EQ(all(), 40 * 10) << "nothing in the first, columns 10 to 19 in the second";
    EXPECT_EQ(port->clipRgn->region, Region(Rect{0, 0, 40, 20}));
}

TEST_F(PictureTest, ThePortIsAsBeforeHoweverItEnds)
{
    for (const Int last : {0xFF, 0x12, 0xB0}) {
        port->pnLoc = {3, 4};
        port->txSize = 9;
        port->bkPat = Pattern::gray;
        port->fgColor = RGBColor::white;
        const PenState pen = port->penState();
        const Pict p = Pict()
                           .op(0x02)
                           .fill(8, 1)
                           .op(0x03)
                           .u16(7)
                           .op(0x04)
                           .u8(3)
                           .u8(0)
                           .op(0x05)
                           .u16(2)
                           .op(0x06)
                           .u32(0x30000)
                           .op(0x07)
                           .pt(5, 5)
                           .op(0x08)
                           .u16(10)
                           .op(0x09)
                           .fill(8, 2)
                           .op(0x0D)
                           .u16(24)
                           .op(0x0E)
                           .u32(30)
                           .op(0x1B)
                           .fill(6, 0)
                           .op(0x20)
                           .pt(1, 1)
                           .pt(2, 2)
                           .op(last);
        DrawPicture(p.handle(), {0, 0, 40, 60});
        EXPECT_EQ(port->penState(), pen);
        EXPECT_TRUE(port->txFont == 0 && port->txFace == 0 && port->txMode == srcOr && port->txSize == 9);
        EXPECT_TRUE(
            port->bkPat == Pattern::gray && port->fgColor == RGBColor::white && port->bkColor == RGBColor::white);
        EXPECT_EQ(port->spExtra, 3) << "the width of spaces stays";
    }
}

TEST_F(PictureTest, UnknownOpcodesSkipOrEnd)
{
    const Rect r{0, 0, 10, 10};
    EXPECT_EQ(played(Pict(2).op(0x0200).u32(0xFFFFFFFF).op(0x0C00).fill(24, 0xFF).op(0x31).rect(r).end()), 100);
    EXPECT_EQ(played(Pict(2).op(0x9A).op(0x31).rect(r).end()), 0);
    EXPECT_EQ(played(Pict(2).op(0x8000).op(0x31).rect(r).end()), 0);
    EXPECT_EQ(played(Pict(1).op(0xB0).op(0x31).rect(r).end()), 0);
    EXPECT_EQ(played(Pict(1).op(0xA1).u16(1).u16(3).fill(3, 0xFF).op(0xA0).u16(0).op(0x31).rect(r).end()), 100);
    EXPECT_EQ(played(Pict(1).op(0x04).u8(1).op(0x31).rect(r).end()), 100) << "one byte of style in version 1";
    EXPECT_EQ(played(Pict(2).op(0x04).u8(1).u8(0xFF).op(0x31).rect(r).end()), 100) << "and a padding byte in version 2";
    EXPECT_EQ(played(Pict(2).op(0x31).rect(r)), 100) << "the end of the block is an end";
}

TEST_F(PictureTest, BitImagesAreRawOrPackedAndScaled)
{
    const Rect bounds{0, 0, 4, 16}, to{0, 0, 4, 16};
    Pict raw;
    image(raw, 0x90, 2, bounds, to).fill(8, 0xF0).end();
    EXPECT_EQ(played(raw), 32);
    Pict shortRows; // packed form, but rows of less than 8 bytes are raw
    image(shortRows, 0x98, 2, bounds, to).fill(8, 0xF0).end();
    EXPECT_EQ(played(shortRows), 32);
    Pict twice;
    image(twice, 0x90, 2, bounds, {0, 0, 8, 32}).fill(8, 0xF0).end();
    EXPECT_EQ(played(twice), 128);
    Pict packed;
    image(packed, 0x98, 8, {0, 0, 3, 60}, {0, 0, 3, 60});
    packed.u8(2).u8(-7).u8(0xFF);                        // a run of 8
    packed.u8(5).u8(1).u8(0xFF).u8(0).u8(0x99).u8(0x77); // two literals, then too few: the rest is white
    packed.u8(4).u8(-128).u8(-20).u8(0xFF).u8(0);        // a skip, and a run that overshoots
    packed.end();
    EXPECT_GE(played(packed), 60 + 8 + 60);
    EXPECT_EQ(blackIn({0, 0, 1, 60}), 60);
    EXPECT_EQ(blackIn({2, 0, 3, 60}), 60);
    Pict masked;
    image(masked, 0x91, 2, bounds, to).u16(10).rect({0, 0, 4, 2}).fill(8, 0xFF).end();
    EXPECT_EQ(played(masked), 8);
    Pict mode;
    image(mode.op(0x31).rect(to), 0x90, 2, bounds, to, srcXor).fill(8, 0xFF).end();
    EXPECT_EQ(played(mode), 0);
}

TEST_F(PictureTest, DeepPixelsAreReducedByAPlainThreshold)
{
    const auto pixelMap = [](Int depth, Int rowBytes, Int flags, const std::vector<std::pair<Int, Int>>& table,
                              Int mode = srcCopy) {
        Pict p;
        p.op(0x31).rect({0, 0, 2, 8}).op(0x90).u16(rowBytes | 0x8000).rect({0, 0, 2, 8});
        p.u16(0).u16(0).u32(0).u32(0).u32(0).u16(0).u16(depth).u16(1).u16(depth).u32(0).u32(0).u32(0); // bytes 10 to 45
        p.u32(0).u16(flags).u16(I(table.size()) - 1);
        for (const auto& [key, gray] : table)
            p.u16(key).u16(gray).u16(gray).u16(gray);
        return p.rect({0, 0, 2, 8}).rect({0, 0, 2, 8}).u16(mode);
    };
    EXPECT_EQ(played(pixelMap(8, 8, 0, {{5, 0}, {6, 0xFFFF}}).fill(8, 5).fill(8, 6).end()), 8);
    EXPECT_EQ(played(pixelMap(8, 8, 0, {{5, 0x7FFF}, {6, 0x8000}}).fill(8, 5).fill(8, 6).end()), 8)
        << "the threshold itself";
    EXPECT_EQ(played(pixelMap(8, 8, 0, {{6, 0xFFFF}}, srcOr).fill(16, 6).end()), 0)
        << "white throughout, whatever the mode";
    EXPECT_EQ(played(pixelMap(8, 8, 0, {{6, 0}}).fill(16, 9).end()), 0) << "a value without a colour is white";
    EXPECT_EQ(played(pixelMap(4, 4, 0x8000, {{0, 0xFFFF}, {0, 0}}).fill(8, 0x10).end()), 8) << "keyed by position";
    EXPECT_EQ(played(pixelMap(2, 2, 0, {{3, 0}}).fill(4, 0xC1).end()), 4);
    EXPECT_EQ(played(pixelMap(8, 8, 0, {{5, 0}}).fill(3, 5)), 3) << "what is missing reads as 0";
    EXPECT_EQ(played(pixelMap(8, 4, 0, {{5, 0}}).fill(4, 0).fill(4, 5).end()), 8)
        << "a short row runs on into the next";
    EXPECT_EQ(played(pixelMap(16, 16, 0, {{5, 0}}).fill(32, 5).end()), 16) << "deeper ones end the picture";
}

TEST_F(PictureTest, DamagedPicturesEndQuietly)
{
    DrawPicture(nullptr, {0, 0, 9, 9});
    for (Int n = 0; n < 13; ++n)
        DrawPicture(NewHandle(n), {0, 0, 9, 9});
    EXPECT_EQ(picFrame(nullptr), Rect{});
    EXPECT_EQ(picFrame(NewHandle(9)), Rect{});

    Pict whole;
    whole.op(0x01)
        .u16(10)
        .rect({0, 0, 40, 60})
        .op(0x28)
        .pt(9, 9)
        .u8(3)
        .raw({65, 66, 67})
        .op(0x71)
        .u16(22)
        .rect({0, 0, 9, 9})
        .pt(0, 0)
        .pt(9, 0)
        .pt(0, 9);
    image(whole, 0x99, 8, {0, 0, 4, 60}, {0, 0, 4, 60})
        .u16(10)
        .rect({0, 0, 4, 60})
        .fill(12, 0xFE)
        .op(0x2C)
        .u16(9)
        .fill(9, 0)
        .end();
    const Bytes& bytes = whole.bytes();
    for (std::size_t cut = 0; cut < bytes.size(); ++cut)
        DrawPicture(PtrToHand(std::span(bytes).first(cut)), {0, 0, 40, 60});
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        Bytes damaged = bytes;
        for (int i = 0; i < 3; ++i)
            damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
        DrawPicture(PtrToHand(damaged), {0, 0, 40, 60});
    }
    EXPECT_EQ(port->clipRgn->region, Region(kHugeRect));
}

TEST_F(PictureTest, HugeRequestsEndThePictureSoon)
{
    Pict vast; // 65535 rows of 16383 bytes that the block does not hold
    image(vast, 0x98, 0x3FFF, {-32768, 0, 32767, 32767}, {0, 0, 40, 60}).fill(4, 0).end();
    EXPECT_EQ(played(vast), 0);
    Pict endless;
    endless.op(0x71).u16(10 + 4 * 8000).rect({0, 0, 40, 60});
    for (Int i = 0; i < 8000; ++i)
        endless.pt(i % 2 == 0 ? -32000 : 32000, i);
    for (Int i = 0; i < 30000; ++i)
        endless.op(0x79);
    played(endless);
    Pict lines;
    for (Int i = 0; i < 20000; ++i)
        lines.op(0x20).pt(-32768, -32768).pt(32767, 32766);
    played(lines);
    Pict fonts; // each would be searched for through all files
    for (Int i = 0; i < 5000; ++i)
        fonts.op(0x03).u16(i).op(0x0D).u16(i).op(0x2B).u8(0).u8(0).u8(1).u8('x');
    EXPECT_EQ(played(fonts.op(0x31).rect({0, 0, 40, 60}).end()), 0);
    Pict few;
    for (Int i = 0; i < 500; ++i)
        few.op(0x03).u16(i).op(0x0D).u16(i).op(0x2B).u8(0).u8(0).u8(1).u8('x');
    EXPECT_EQ(played(few.op(0x31).rect({0, 0, 40, 60}).end()), 40 * 60);
    Pict copies; // of images without any bytes
    for (Int i = 0; i < 1000; ++i)
        image(copies, 0x90, 0, {0, 0, 342, 512}, {0, 0, 40, 60});
    EXPECT_EQ(played(copies.op(0x31).rect({0, 0, 40, 60}).end()), 0);
}

TEST_F(PictureTest, VastLettersInEveryStyleEndThePictureSoon)
{
    FontMaker::Font font;
    font.ascent = 16;
    const std::vector<std::string> rows(16, std::string(4000, '#'));
    for (Int i = 0; i < 3; ++i)
        font.glyphs.push_back({0, 9, rows});
    const auto lettersOfStyles = [](Int styles) {
        Pict p;
        for (Int face = 0; face < styles; ++face)
            p.op(0x04).u8(face).u8(0).op(0x2B).u8(0).u8(0).u8(2).u8(0).u8(1);
        return p.op(0x31).rect({0, 0, 40, 60}).end();
    };
    startRunAfresh(); // no search for a font has failed yet
    SetPort(port);
    const FontMaker::OpenFile file{{{os("FONT"), 12}, font.bytes()}};
    EXPECT_EQ(played(lettersOfStyles(3)), 40 * 60);
    EXPECT_LT(played(lettersOfStyles(1200)), 40 * 60);
}
