#pragma once

#include "MacToolbox/QuickDraw/QuickDraw.h"

#include <random>
#include <set>

// The slow, obvious versions of what the drawing code does fast: pixel by pixel, with nothing shared but `BitMap::get`
// and `set`.

namespace Plain {

using namespace MacToolbox;

/// The rows and columns that the tests look at.
inline constexpr Rect kWindow{-12, -12, 76, 148};

/// A region as a set of pixels.
class Pixels {
public:
    template <typename Test> static Pixels where(Test&& inside, const Rect& within = kWindow)
    {
        Pixels p;
        for (Int v = within.top; v < within.bottom; ++v)
            for (Int h = within.left; h < within.right; ++h)
                if (inside(h, v))
                    p.add(h, v);
        return p;
    }
    static Pixels of(const Region& r)
    {
        return where([&](Int h, Int v) { return r.contains(h, v); });
    }
    void add(Int h, Int v) { set_.insert({v, h}); }
    bool contains(Int h, Int v) const { return set_.count({v, h}) != 0; }
    bool operator==(const Pixels&) const = default;

    /// The same set as a region, built one pixel at a time.
    Region region() const
    {
        return Region::fromTest(kWindow, [this](Int h, Int v) { return contains(h, v); });
    }

private:
    std::set<std::pair<Int, Int>> set_;
};

/// The paint rule: what becomes of a pixel.
inline bool painted(bool pixel, bool s, Int mode, bool fgDark, bool bkDark)
{
    if (mode & 4)
        s = !s;
    switch (mode & 3) {
    case 0: return s ? fgDark : bkDark;
    case 1: return s ? fgDark : pixel;
    case 2: return s ? !pixel : pixel;
    default: return s ? bkDark : pixel;
    }
}

/// Chance for the tests; the same in every run.
class Chance {
public:
    explicit Chance(unsigned seed) : engine_(seed) { }
    /// From `low` to `high`, both included.
    Int in(Int low, Int high) { return low + I(engine_() % static_cast<std::uint64_t>(high - low + 1)); }
    bool oneIn(Int n) { return in(1, n) == 1; }
    Rect rect(const Rect& within = kWindow)
    {
        const Int t = in(within.top, within.bottom), b = in(within.top, within.bottom);
        const Int l = in(within.left, within.right), r = in(within.left, within.right);
        return {std::min(t, b), std::min(l, r), std::max(t, b), std::max(l, r)};
    }
    /// Anything from nothing over a rectangle to a heap of shapes with holes.
    Region region()
    {
        Region r;
        for (Int n = in(0, 4); n > 0; --n) {
            const Region more = oneIn(3) ? Region::oval(rect()) : Region(rect());
            r = oneIn(3) ? r.xorWith(more) : oneIn(4) ? r.subtracting(more) : r.unionWith(more);
        }
        return r;
    }
    Pattern pattern()
    {
        static const Pattern kStock[] = {Pattern::black, Pattern::white, Pattern::gray, Pattern::dkGray};
        return oneIn(2) ? Pattern(engine_()) : kStock[in(0, 3)];
    }
    /// A map of random pixels: sometimes in the middle of a block, with long rows, or cut short.
    BitMap bitmap(const Rect& bounds)
    {
        const Int need = (bounds.width() + 7) >> 3, rowBytes = need + (oneIn(2) ? 0 : in(0, 5));
        const Int offset = oneIn(2) ? 0 : in(0, 20);
        Int size = offset + std::max<Int>(bounds.height() - 1, 0) * rowBytes + need + (oneIn(2) ? 0 : in(0, 20));
        if (oneIn(8))
            size = in(0, size);
        BitMap map(NewHandle(size), offset, rowBytes, bounds);
        for (auto& byte : map.baseAddr->bytes)
            byte = static_cast<std::uint8_t>(engine_());
        return map;
    }

private:
    std::mt19937_64 engine_;
};

inline BitMap copyOf(const BitMap& map)
{
    BitMap copy = map;
    HandToHand(copy.baseAddr);
    return copy;
}

} // namespace Plain
