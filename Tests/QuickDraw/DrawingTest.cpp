#include "MacToolbox/QuickDraw/QuickDraw.h"

#include "MacToolbox/QuickDraw/Screen.h"
#include "Tests/QuickDraw/PlainPixels.h"

#include <gtest/gtest.h>

using namespace MacToolbox;
using Plain::Chance;
using Plain::Pixels;

namespace {

std::vector<Rect> kPlaces = {{0, 0, 64, 136}, {-3, -5, 60, 100}, {5, 3, 70, 17}, {0, 0, 9, 700}, {2, 1, 40, 65}};

/// A port on a random map with random clips and colours.
GrafPtr randomPort(Chance& chance)
{
    const auto port = std::make_shared<GrafPort>(chance.bitmap(kPlaces[static_cast<std::size_t>(chance.in(0, 4))]));
    if (chance.oneIn(2))
        port->visRgn->region = chance.region();
    if (chance.oneIn(2))
        port->clipRgn->region = chance.region();
    port->fgColor = chance.oneIn(3) ? RGBColor::white : RGBColor::black;
    port->bkColor = chance.oneIn(3) ? RGBColor::black : RGBColor::white;
    return port;
}

/// Fills `shape` into a copy of the port's pixels, one at a time, and compares with what the port holds now.
void expectFilled(const GrafPort& port, const BitMap& before, const Region& shape, const Pattern& pattern, Int mode)
{
    const Rect& bounds = port.portBits.bounds;
    for (Int v = bounds.top; v < bounds.bottom; ++v)
        for (Int h = bounds.left; h < bounds.right; ++h)
            if (shape.contains(h, v) && port.visRgn->region.contains(h, v) && port.clipRgn->region.contains(h, v))
                before.set(h, v,
                    Plain::painted(before.get(h, v), pattern.bit(h - bounds.left, v - bounds.top), mode,
                        port.fgColor.isBlack(), port.bkColor.isBlack()));
    ASSERT_EQ(port.portBits.baseAddr->bytes, before.baseAddr->bytes);
}

} // namespace

TEST(Drawing, FillsAgreeWithEachPixel)
{
    Chance chance(11);
    for (int round = 0; round < 3000; ++round) {
        const GrafPtr port = randomPort(chance);
        const BitMap before = Plain::copyOf(port->portBits);
        const Pattern pattern = chance.pattern();
        const Int mode = chance.in(0, 64);
        SCOPED_TRACE("round " + std::to_string(round) + " mode " + std::to_string(mode));
        const Rect rect = chance.rect({-12, -12, 76, chance.oneIn(3) ? 720 : 148});
        const Region shape = chance.oneIn(2) ? Region(rect) : chance.region();
        if (shape.isRect() && chance.oneIn(2))
            port->fill(shape.bounds(), pattern, mode);
        else
            port->fill(shape, pattern, mode);
        ASSERT_NO_FATAL_FAILURE(expectFilled(*port, before, shape, pattern, mode));
    }
}

TEST(Drawing, CallsUseTheirOwnPatternAndModeAndMindThePen)
{
    const auto port = std::make_shared<GrafPort>(Rect{0, 0, 40, 40});
    const PortScope scope(port);
    const Rect r{4, 4, 30, 33};
    const auto count = [&] {
        Int black = 0;
        for (Int v = 0; v < 40; ++v)
            for (Int h = 0; h < 40; ++h)
                black += port->portBits.get(h, v);
        return black;
    };
    HidePen(), HidePen(), ShowPen();
    PaintRect(r), FrameRect(r), PaintOval(r), MoveTo(1, 1), LineTo(20, 5);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(port->pnLoc, (Point{5, 20})); // it moves all the same
    FillRect(r, Pattern::black);
    EXPECT_EQ(count(), r.width() * r.height());
    EraseRect(r);
    EXPECT_EQ(count(), 0);
    ShowPen();

    PenPat(Pattern::gray), PenMode(patXor);
    PaintRect(r), InvertRect(r), InvertRect(r), PaintRect(r);
    EXPECT_EQ(count(), 0);
    PenNormal();
    EXPECT_EQ(port->penState(), (PenState{{5, 20}, {1, 1}, patCopy, Pattern::black}));
    ForeColor(redColor), PaintRect(r);
    EXPECT_EQ(count(), r.width() * r.height());
    BackColor(redColor), EraseRect(r);
    EXPECT_EQ(count(), 0);
    ForeColor(whiteColor), BackColor(blackColor), EraseRect(r);
    EXPECT_EQ(count(), r.width() * r.height());
    EXPECT_TRUE(RGBColor(0x7FFF, 0x7FFF, 0x7FFF).isBlack());
    EXPECT_FALSE(RGBColor(0x8000, 0x8000, 0x8000).isBlack());
}

TEST(Drawing, ThePatternStaysOnThePixels)
{
    const auto port = std::make_shared<GrafPort>(BitMap(Rect{0, 3, 16, 35}));
    const PortScope scope(port);
    const Pattern corner(0x8000000000000000U);
    FillRect({0, 0, 16, 40}, corner);
    EXPECT_TRUE(port->portBits.get(3, 0));
    EXPECT_TRUE(port->portBits.get(11, 8));
    const Bytes before = port->portBits.baseAddr->bytes;
    SetOrigin(100, 50);
    EXPECT_EQ(port->portRect, (Rect{50, 100, 66, 132}));
    EXPECT_EQ(port->visRgn->rgnBBox(), port->portBits.bounds);
    FillRect({40, 90, 70, 140}, corner);
    EXPECT_EQ(port->portBits.baseAddr->bytes, before);
    SetOrigin(100, 50);
    EXPECT_EQ(port->portRect, (Rect{50, 100, 66, 132}));
    Point p{50, 100};
    LocalToGlobal(p);
    EXPECT_EQ(p, (Point{0, 0}));
    GlobalToLocal(p);
    EXPECT_EQ(p, (Point{50, 100}));
}

TEST(Drawing, FramesAreWhatThePenLeavesOfTheInside)
{
    Chance chance(12);
    for (int round = 0; round < 200; ++round) {
        const GrafPtr port = randomPort(chance);
        const PortScope scope(port);
        const Rect r = chance.rect();
        const Int pw = chance.in(0, 6), ph = chance.in(0, 6), ow = chance.in(0, 30), oh = chance.in(0, 30);
        PenSize(pw, ph);
        const auto inset = [&](const Rect& outer) {
            const Rect inner{outer.top + ph, outer.left + pw, outer.bottom - ph, outer.right - pw};
            return inner.isEmpty() ? Rect{} : inner;
        };
        const BitMap before = Plain::copyOf(port->portBits);
        Region shape;
        switch (chance.in(0, 3)) {
        case 0:
            FrameRect(r);
            shape = Region(r).subtracting(Region(inset(r)));
            break;
        case 1:
            FrameRoundRect(r, ow, oh);
            shape = Region::roundRect(r, ow, oh).subtracting(
                Region::roundRect(inset(r), std::max<Int>(ow - 2 * pw, 0), std::max<Int>(oh - 2 * ph, 0)));
            break;
        case 2:
            FrameOval(r);
            shape = Region::oval(r).subtracting(Region::roundRect(
                inset(r), std::max<Int>(r.width() - 2 * pw, 0), std::max<Int>(r.height() - 2 * ph, 0)));
            break;
        default: {
            const RgnHandle rgn = std::make_shared<RgnRecord>(chance.region());
            FrameRgn(rgn);
            const Region& all = rgn->region;
            // A pixel stays inside if its neighbours a pen's width away on all four sides are in the region too.
            shape = Region::fromTest(Plain::kWindow, [&](Int h, Int v) {
                return all.contains(h, v)
                    && !(all.contains(h - pw, v) && all.contains(h + pw, v) && all.contains(h, v - ph)
                        && all.contains(h, v + ph));
            });
        }
        }
        SCOPED_TRACE("round " + std::to_string(round));
        ASSERT_NO_FATAL_FAILURE(expectFilled(*port, before, shape, Pattern::black, patCopy));
    }
}

TEST(Drawing, AnExclusiveOrLineFlipsEachPixelOnce)
{
    const auto port = std::make_shared<GrafPort>(Rect{0, 0, 40, 40});
    const PortScope scope(port);
    PenSize(3, 2), PenMode(patXor);
    MoveTo(2, 3), LineTo(30, 21);
    const BitMap once = Plain::copyOf(port->portBits);
    const Region line = Region::line({3, 2}, {21, 30}, {2, 3});
    for (Int v = 0; v < 40; ++v)
        for (Int h = 0; h < 40; ++h)
            ASSERT_EQ(once.get(h, v), line.contains(h, v));
    MoveTo(2, 3), Line(28, 18);
    EXPECT_EQ(port->portBits.baseAddr->bytes, BitMap(Rect{0, 0, 40, 40}).baseAddr->bytes);
    PenNormal();
    MoveTo(0, 0), LineTo(3, 1);
    EXPECT_TRUE(
        port->portBits.get(0, 0) && port->portBits.get(1, 0) && port->portBits.get(2, 1) && port->portBits.get(3, 1));
}

TEST(Drawing, AnOpenRegionCollectsShapesInsteadOfPixels)
{
    const auto port = std::make_shared<GrafPort>(Rect{0, 0, 60, 60});
    const PortScope scope(port);
    FillRect({0, 0, 60, 60}, Pattern::gray);
    const Bytes before = port->portBits.baseAddr->bytes;
    const RgnHandle rgn = NewRgn();

    ClipRect({0, 0, 5, 5}); // plays no part
    HidePen();              // nor does this
    OpenRgn();
    PaintRect({0, 0, 20, 20});
    EraseRect({10, 10, 30, 30});
    FrameOval({40, 40, 50, 50});
    CloseRgn(rgn);
    EXPECT_EQ(rgn->region,
        Region(Rect{0, 0, 20, 20}).xorWith(Region(Rect{10, 10, 30, 30})).xorWith(Region::oval({40, 40, 50, 50})));

    OpenRgn();
    MoveTo(5, 0), LineTo(10, 5), LineTo(0, 5), LineTo(5, 0);
    CloseRgn(rgn);
    EXPECT_EQ(rgn->region.spans(4), (std::vector<Int>{1, 10}));
    EXPECT_EQ(port->portBits.baseAddr->bytes, before);

    CloseRgn(rgn); // none is open
    EXPECT_EQ(rgn->region, Region());
}

TEST(Drawing, OnlyWhatReachesTheScreenCounts)
{
    Screen& screen = Screen::shared();
    const auto port = std::make_shared<GrafPort>(screen.bits);
    const auto other = std::make_shared<GrafPort>(Rect{0, 0, 342, 512});
    const Int before = screen.generation;
    other->fill(Rect{0, 0, 9, 9}, Pattern::black, patCopy);
    port->fill(Rect{}, Pattern::black, patCopy);
    port->fill(Rect{-9, 0, 0, 9}, Pattern::black, patCopy);
    port->clipRgn->region = Region(Rect{0, 0, 20, 20}).subtracting(Region(Rect{5, 5, 15, 15}));
    port->fill(Rect{6, 6, 14, 14}, Pattern::black, patCopy); // in the hole of the clip
    EXPECT_EQ(screen.generation, before);
    port->frameRect({0, 0, 30, 30});
    EXPECT_EQ(screen.generation, before + 1);
    screen.startAfresh();
}

TEST(Drawing, ScopesPutBackWhatTheyChanged)
{
    const GrafPtr old = thePort;
    const auto port = std::make_shared<GrafPort>(Rect{0, 0, 8, 8});
    {
        const PortScope scope(port);
        const ClipScope clip(Rect{2, 2, 6, 20});
        EXPECT_EQ(port->clipRgn->region, Region(Rect{2, 2, 6, 20}));
        const PenScope pen;
        PenSize(5, 5), MoveTo(3, 3);
    }
    EXPECT_EQ(thePort, old);
    EXPECT_EQ(port->clipRgn->region, Region(kHugeRect));
    EXPECT_EQ(port->penState(), PenState());
    SetPort(GrafPtr());
    EXPECT_EQ(thePort, old);

    const PortScope scope(port);
    ClipRect({3, 3, 3, 9});
    PaintRect({0, 0, 8, 8});
    EXPECT_EQ(port->portBits.baseAddr->bytes, Bytes(16, 0));
}

TEST(BitMap, RowsAreEvenAndPixelsKeepToTheBlock)
{
    EXPECT_EQ(BitMap(Rect{0, 0, 3, 1}).rowBytes, 2);
    EXPECT_EQ(BitMap(Rect{0, 0, 3, 16}).rowBytes, 2);
    EXPECT_EQ(BitMap(Rect{0, 0, 3, 17}).rowBytes, 4);
    EXPECT_EQ(BitMap(Rect{0, 0, 3, 0}).rowBytes, 0);
    EXPECT_EQ(BitMap(Rect{0, 50, 3, 0}).rowBytes, 0);
    EXPECT_EQ(BitMap(Rect{3, 0, 0, 16}).baseAddr->count(), 0);

    const BitMap map(Rect{10, 20, 30, 40});
    map.set(20, 10, true);
    EXPECT_EQ(map.baseAddr->u8(0), 0x80);
    map.set(19, 10, true), map.set(40, 10, true), map.set(20, 30, true);
    EXPECT_FALSE(map.get(40, 10));
    const BitMap cut(NewHandle(3), 1, 2, {0, 0, 4, 16});
    cut.set(0, 0, true), cut.set(0, 1, true), cut.set(8, 1, true);
    EXPECT_EQ(cut.baseAddr->bytes, (Bytes{0, 0x80, 0}));
    EXPECT_FALSE(cut.get(0, 1));
    BitMap().set(0, 0, true);
    EXPECT_FALSE(BitMap().get(0, 0));
    EXPECT_TRUE(BitMap(cut.baseAddr, 1, 2, {}).sameStorage(cut));
}
