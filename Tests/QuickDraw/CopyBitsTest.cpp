#include "MacToolbox/QuickDraw/CopyBits.h"

#include "MacToolbox/QuickDraw/Screen.h"
#include "Tests/QuickDraw/PlainPixels.h"

#include <gtest/gtest.h>

using namespace MacToolbox;
using Plain::Chance;

namespace {

struct Copy {
    BitMap src, dst;
    Rect srcRect, dstRect;
    Int mode = 0;
    RgnHandle mask;
};

/// Copies one pixel after the other, from a copy of the source.
void copySlowly(const GrafPort& port, const Copy& c)
{
    const BitMap src = Plain::copyOf(c.src);
    if (c.srcRect.isEmpty() || c.dstRect.isEmpty())
        return;
    const bool own = c.dst.sameStorage(port.portBits) && c.dst.bounds == port.portBits.bounds;
    const Rect area = c.dstRect.intersection(c.dst.bounds);
    for (Int v = area.top; v < area.bottom; ++v)
        for (Int h = area.left; h < area.right; ++h) {
            if (own && !(port.visRgn->region.contains(h, v) && port.clipRgn->region.contains(h, v)))
                continue;
            if (c.mask && !c.mask->region.contains(h, v))
                continue;
            const Int x = c.srcRect.left + (h - c.dstRect.left) * c.srcRect.width() / c.dstRect.width();
            const Int y = c.srcRect.top + (v - c.dstRect.top) * c.srcRect.height() / c.dstRect.height();
            c.dst.set(h, v,
                Plain::painted(c.dst.get(h, v), src.get(x, y), c.mode, port.fgColor.isBlack(), port.bkColor.isBlack()));
        }
}

Rect randomBounds(Chance& chance)
{
    const Int top = chance.in(-5, 5), left = chance.in(-5, 5);
    return {top, left, top + chance.in(1, 60), left + (chance.oneIn(6) ? chance.in(130, 700) : chance.in(1, 140))};
}

} // namespace

TEST(CopyBits, AgreesWithEachPixel)
{
    Chance chance(21);
    for (int round = 0; round < 5000; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Copy c;
        c.dst = chance.bitmap(randomBounds(chance));
        c.src = chance.oneIn(20) ? BitMap() : chance.bitmap(randomBounds(chance));
        if (chance.oneIn(5)) { // another view of the same block
            c.src = c.dst;
            if (chance.oneIn(3)) {
                c.src.bounds = c.src.bounds.offsetBy(chance.in(-9, 9), chance.in(-9, 9));
                c.src.offset += chance.in(0, 3);
            }
        }
        c.dstRect = chance.rect(c.dst.bounds.insetBy(-6, -6));
        switch (chance.in(0, 3)) {
        case 0: c.srcRect = chance.rect(c.src.bounds.insetBy(-6, -6)); break;
        case 1: // half the size
            c.srcRect = {chance.in(-4, 9), chance.in(-4, 9), 0, 0};
            c.srcRect.bottom = c.srcRect.top + c.dstRect.height() / 2,
            c.srcRect.right = c.srcRect.left + c.dstRect.width() / 2;
            c.dstRect.bottom = c.dstRect.top + 2 * c.srcRect.height(),
            c.dstRect.right = c.dstRect.left + 2 * c.srcRect.width();
            break;
        default: c.srcRect = c.dstRect.offsetBy(chance.in(-20, 20), chance.in(-9, 9));
        }
        c.mode = chance.oneIn(8) ? chance.in(8, 70) : chance.in(0, 7);
        if (chance.oneIn(4))
            c.mask = std::make_shared<RgnRecord>(chance.region());
        const auto port = std::make_shared<GrafPort>(chance.oneIn(2) ? c.dst : BitMap(Rect{0, 0, 5, 5}));
        if (chance.oneIn(4))
            port->portBits.bounds.offset(1, 2); // the port's storage, but not its map: unclipped
        if (chance.oneIn(3))
            port->visRgn->region = chance.region();
        port->clipRgn->region = chance.oneIn(3) ? chance.region() : Region(kHugeRect);
        port->fgColor = chance.oneIn(4) ? RGBColor::white : RGBColor::black;
        port->bkColor = chance.oneIn(4) ? RGBColor::black : RGBColor::white;

        Copy slow = c;
        slow.dst = Plain::copyOf(c.dst);
        if (c.src.baseAddr == c.dst.baseAddr)
            slow.src.baseAddr = slow.dst.baseAddr;
        else if (c.src.baseAddr)
            slow.src = Plain::copyOf(c.src);
        GrafPort twin(port->portBits.baseAddr == c.dst.baseAddr ? slow.dst : port->portBits);
        twin.portBits.bounds = port->portBits.bounds;
        twin.visRgn = port->visRgn, twin.clipRgn = port->clipRgn;
        twin.fgColor = port->fgColor, twin.bkColor = port->bkColor;
        copySlowly(twin, slow);
        {
            const PortScope scope(port);
            CopyBits(c.src, c.dst, c.srcRect, c.dstRect, c.mode, c.mask);
        }
        ASSERT_EQ(c.dst.baseAddr->bytes, slow.dst.baseAddr->bytes);
    }
}

TEST(CopyBits, MasksAgreeWithEachPixelAlsoWithinOneBlock)
{
    Chance chance(22);
    for (int round = 0; round < 3000; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const BitMap dst = chance.bitmap(randomBounds(chance));
        BitMap src = chance.oneIn(20) ? BitMap() : chance.bitmap(randomBounds(chance));
        BitMap mask = chance.oneIn(20) ? BitMap() : chance.bitmap(randomBounds(chance));
        const bool ownSrc = chance.oneIn(10), ownMask = chance.oneIn(10);
        if (ownSrc)
            src = dst;
        if (ownMask)
            mask = dst;
        const Rect dstRect = chance.rect(dst.bounds.insetBy(-6, -6));
        const Rect srcRect = chance.rect(dst.bounds).offsetBy(chance.in(-3, 3), 0);
        const Rect maskRect = chance.oneIn(5) ? Rect{} : chance.rect(dst.bounds);
        const auto port = std::make_shared<GrafPort>(dst);
        if (chance.oneIn(2))
            port->clipRgn->region = chance.region();

        const BitMap slow = Plain::copyOf(dst);
        const BitMap slowSrc = ownSrc ? slow : src, slowMask = ownMask ? slow : mask;
        if (!srcRect.isEmpty())
            for (Int v = dstRect.top; v < dstRect.bottom; ++v)
                for (Int h = dstRect.left; h < dstRect.right; ++h) {
                    const Int dx = h - dstRect.left, dy = v - dstRect.top;
                    if (port->clipRgn->region.contains(h, v) && slowMask.get(maskRect.left + dx, maskRect.top + dy))
                        slow.set(h, v, slowSrc.get(srcRect.left + dx, srcRect.top + dy));
                }
        port->copyMask(src, mask, dst, srcRect, maskRect, dstRect);
        ASSERT_EQ(dst.baseAddr->bytes, slow.baseAddr->bytes);
    }
}

TEST(CopyBits, ScrollsAndErasesWhatItLeaves)
{
    Chance chance(23);
    for (int round = 0; round < 500; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const auto port = std::make_shared<GrafPort>(chance.bitmap(randomBounds(chance)));
        if (chance.oneIn(2))
            port->visRgn->region = chance.region();
        port->bkPat = chance.pattern();
        port->bkColor = chance.oneIn(3) ? RGBColor::black : RGBColor::white;
        const BitMap before = Plain::copyOf(port->portBits), want = Plain::copyOf(port->portBits);
        const Rect& bounds = want.bounds;
        const Rect r = chance.rect(bounds.insetBy(-4, -4));
        const Int dh = chance.in(-30, 30), dv = chance.in(-20, 20);
        const auto in = [&](Int h, Int v) {
            return r.contains(h, v) && bounds.contains(h, v) && port->visRgn->region.contains(h, v);
        };
        for (Int v = bounds.top; v < bounds.bottom; ++v)
            for (Int h = bounds.left; h < bounds.right; ++h)
                if (in(h, v))
                    want.set(h, v,
                        in(h - dh, v - dv) ? before.get(h - dh, v - dv)
                                           : Plain::painted(false, port->bkPat.bit(h - bounds.left, v - bounds.top),
                                               patCopy, true, port->bkColor.isBlack()));
        const PortScope scope(port);
        const RgnHandle update = NewRgn();
        ScrollRect(r, dh, dv, chance.oneIn(2) ? update : nullptr);
        ASSERT_EQ(port->portBits.baseAddr->bytes, want.baseAddr->bytes);
        ScrollRect(r, 1000, 0, update);
        EXPECT_EQ(update->region, port->visRgn->region.intersection(r.intersection(bounds)));
    }
}

TEST(CopyBits, CountsOnceForTheScreenAndNeverForNothing)
{
    Screen& screen = Screen::shared();
    const Int before = screen.generation;
    const BitMap icon(Rect{0, 0, 32, 32});
    const auto port = std::make_shared<GrafPort>(screen.bits);
    const PortScope scope(port);
    CopyBits(icon, screen.bits, {}, icon.bounds, srcCopy);
    CopyBits(icon, screen.bits, icon.bounds, icon.bounds.offsetBy(600, 0), srcCopy);
    CopyBits(icon, screen.bits, icon.bounds, icon.bounds, srcCopy, NewRgn());
    CopyBits(screen.bits, icon, icon.bounds, icon.bounds, srcCopy);
    EXPECT_EQ(screen.generation, before);
    CopyBits(icon, screen.bits, icon.bounds, icon.bounds, srcCopy);
    CopyMask(icon, icon, screen.bits, icon.bounds, icon.bounds, icon.bounds);
    EXPECT_EQ(screen.generation, before + 2);
    screen.startAfresh();
}

TEST(CalcMask, IsTheSilhouette)
{
    const auto mask = [](const std::vector<std::string>& picture, const Rect& rect) {
        const BitMap src(Rect{0, 0, I(picture.size()), I(picture[0].size())});
        for (Int v = 0; v < src.bounds.bottom; ++v)
            for (Int h = 0; h < src.bounds.right; ++h)
                src.set(h, v, picture[static_cast<std::size_t>(v)][static_cast<std::size_t>(h)] == '#');
        const BitMap dst(Rect{5, 5, 5 + rect.height(), 5 + rect.width()});
        CalcMask(src, dst, rect);
        std::vector<std::string> out(static_cast<std::size_t>(rect.height()));
        for (Int v = 0; v < rect.height(); ++v)
            for (Int h = 0; h < rect.width(); ++h)
                out[static_cast<std::size_t>(v)] += dst.get(5 + h, 5 + v) ? '#' : '.';
        return out;
    };
    using Picture = std::vector<std::string>;
    const Picture ring{"......", ".####.", ".#..#.", ".#..#.", ".####.", "......"};
    const Picture disc{"......", ".####.", ".####.", ".####.", ".####.", "......"};
    const Picture gap{"......", ".#.##.", ".#..#.", ".#..#.", ".####.", "......"};
    const Picture diagonal{"..#...", ".#.#..", "#...#.", ".#.#..", "..#...", "......"};
    const Picture diamond{"..#...", ".###..", "#####.", ".###..", "..#...", "......"};
    EXPECT_EQ(mask(ring, {0, 0, 6, 6}), disc);
    EXPECT_EQ(mask(gap, {0, 0, 6, 6}), gap);
    EXPECT_EQ(mask(diagonal, {0, 0, 6, 6}), diamond);
    EXPECT_EQ(mask(ring, {1, 1, 5, 5}), Picture(4, "####"));
    EXPECT_EQ(mask(ring, {2, 2, 4, 4}), Picture(2, "..")); // the border of the rectangle lets the flood in
    EXPECT_EQ(mask(ring, {-1, -2, 6, 6})[3], "...####.");
    CalcMask(BitMap(Rect{0, 0, 4, 4}), BitMap(), {0, 0, 4, 4});
    CalcMask(BitMap(), BitMap(Rect{0, 0, 4, 4}), {0, 0, 1 << 20, 1 << 20});
}

TEST(Random, IsTheLehmerSequence)
{
    qd.randSeed = 1;
    for (const Int want : {16807, 15089, -21287, 3114})
        EXPECT_EQ(Random(), want);
    EXPECT_EQ(qd.randSeed, 984943658);
    qd.randSeed = 0;
    EXPECT_EQ(Random(), 16807);
    qd.randSeed = 0x7FFFFFFF;
    EXPECT_EQ(Random(), 0);
    EXPECT_EQ(qd.randSeed, 0);
    for (int i = 0; i < 300000; ++i)
        ASSERT_GE(Random(), -32767);
    qd.randSeed = 1;
}
