#include "MacToolbox/QuickDraw/Region.h"

#include "Tests/QuickDraw/PlainPixels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <new>

using namespace MacToolbox;
using Plain::Chance;
using Plain::Pixels;

static long sAllocations = 0;

[[gnu::noinline]] void* operator new(std::size_t size)
{
    ++sAllocations;
    if (void* p = std::malloc(size ? size : 1))
        return p;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* p) noexcept { std::free(p); }
[[gnu::noinline]] void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace {

/// Fails unless `r` is in its one shortest form.
void expectShortestForm(const Region& r)
{
    Rect seen;
    Int lastBottom = INT32_MIN;
    std::vector<std::int32_t> last;
    Int bands = 0;
    bool oneSpan = true;
    r.forEachBand([&](Int top, Int bottom, Region::Row row) {
        ++bands;
        ASSERT_LT(top, bottom);
        ASSERT_GE(top, lastBottom);
        ASSERT_GE(row.size(), 2U);
        ASSERT_EQ(row.size() % 2, 0U);
        for (std::size_t i = 1; i < row.size(); ++i)
            ASSERT_LT(row[i - 1], row[i]);
        const std::vector<std::int32_t> edges(row.begin(), row.end());
        EXPECT_FALSE(top == lastBottom && edges == last) << "two bands could be one";
        oneSpan = oneSpan && edges.size() == 2;
        seen = seen.unionWith({top, row.front(), bottom, row.back()});
        lastBottom = bottom;
        last = edges;
    });
    EXPECT_EQ(r.bounds(), seen);
    EXPECT_EQ(r.isRect(), bands == 0 || (bands == 1 && oneSpan));
}

} // namespace

TEST(Region, OperationsAgreeWithEachPixelAndStayShort)
{
    const struct {
        Region::Op op;
        bool (*in)(bool, bool);
    } kOps[] = {
        {Region::Op::unite, [](bool a, bool b) { return a || b; }},
        {Region::Op::intersect, [](bool a, bool b) { return a && b; }},
        {Region::Op::subtract, [](bool a, bool b) { return a && !b; }},
        {Region::Op::exclusiveOr, [](bool a, bool b) { return a != b; }},
    };
    Chance chance(1);
    Region reused;
    for (int round = 0; round < 150; ++round) {
        const Region a = chance.region(), b = chance.oneIn(10) ? a : chance.region();
        const Pixels pa = Pixels::of(a), pb = Pixels::of(b);
        for (const auto& [op, in] : kOps) {
            SCOPED_TRACE(a.description() + " " + b.description() + " op " + std::to_string(static_cast<int>(op)));
            Region::combine(op, a, b, reused);
            const Pixels want = Pixels::where([&](Int h, Int v) { return in(pa.contains(h, v), pb.contains(h, v)); });
            ASSERT_EQ(Pixels::of(reused), want);
            expectShortestForm(reused);
            EXPECT_EQ(reused, want.region());
            Region aliased = a;
            Region::combine(op, aliased, b, aliased);
            EXPECT_EQ(aliased, reused);
        }
    }
}

TEST(Region, RectanglesThatMakeARectangleAreOne)
{
    const RgnHandle a = NewRgn(), b = NewRgn(), want = NewRgn();
    SetRectRgn(a, 0, 0, 10, 10);
    SetRectRgn(b, 10, 0, 20, 10);
    SetRectRgn(want, 0, 0, 20, 10);
    UnionRgn(a, b, a);
    EXPECT_TRUE(a->region.isRect());
    EXPECT_TRUE(EqualRgn(a, want));
    DiffRgn(a, want, a);
    EXPECT_TRUE(EmptyRgn(a));
    EXPECT_EQ(a->rgnBBox(), Rect());
    EXPECT_EQ(a->region, Region());

    const Region ring = Region(Rect{0, 0, 10, 10}).subtracting(Region(Rect{3, 3, 7, 7}));
    EXPECT_EQ(ring.spans(4), (std::vector<Int>{0, 3, 7, 10}));
    EXPECT_EQ(ring.spans(2), (std::vector<Int>{0, 10}));
    EXPECT_EQ(ring.bounds(), (Rect{0, 0, 10, 10}));
    const Region gap = Region(Rect{0, 0, 2, 5}).unionWith(Region(Rect{4, 0, 6, 5}));
    EXPECT_TRUE(gap.spans(3).empty());
    EXPECT_FALSE(gap.isRect());
}

TEST(Region, AMovedEmptyRegionKeepsItsPlaceButAddsNothing)
{
    const RgnHandle moved = NewRgn(), fresh = NewRgn();
    OffsetRgn(moved, 5, 5);
    EXPECT_TRUE(EmptyRgn(moved));
    EXPECT_FALSE(EqualRgn(moved, fresh));
    const Region other = Region::oval({0, 0, 30, 30});
    EXPECT_EQ(moved->region.unionWith(other), other);
    EXPECT_EQ(other.xorWith(moved->region), other);
    EXPECT_EQ(moved->region.unionWith(moved->region), Region());
    EXPECT_EQ(Region().subtracting(moved->region), Region());
}

TEST(Region, MovesByAnyAmount)
{
    Chance chance(2);
    for (int round = 0; round < 40; ++round) {
        const Region r = chance.region();
        const Int dh = chance.in(-5, 5), dv = chance.in(-5, 5);
        const Region moved = r.offsetBy(dh, dv);
        for (Int v = -20; v < 80; ++v)
            for (Int h = -20; h < 150; ++h)
                ASSERT_EQ(moved.contains(h, v), r.contains(h - dh, v - dv));
        if (!r.isEmpty()) {
            EXPECT_EQ(moved.offsetBy(-dh, -dv), r);
        }
    }
    const Region disc = Region::oval({0, 0, 20, 20});
    EXPECT_TRUE(disc.offsetBy(Int{1} << 40, 0).isEmpty());
    expectShortestForm(disc.offsetBy((1 << 30) - 10, 0));
    EXPECT_EQ(Region(Rect{0, 0, 5, 5}).offsetBy(Int{1} << 40, 0).bounds().left, Int{1} << 40);
}

TEST(Region, PointsAndRectanglesAreFoundInTallRegionsToo)
{
    Chance chance(3);
    const Region tall = Region(Rect{-30000, 0, 30000, 40})
                            .xorWith(Region(Rect{-5, 10, 5, 20}))
                            .xorWith(Region(Rect{100, 5, 20000, 8}))
                            .unionWith(Region(Rect{31000, -10, 31001, 50}));
    for (int round = 0; round < 2000; ++round) {
        const Int h = chance.in(-2, 45), v = chance.oneIn(2) ? chance.in(-20, 120) : chance.in(-31000, 31005);
        const bool want = (v >= -30000 && v < 30000 && h >= 0 && h < 40 && !(v >= -5 && v < 5 && h >= 10 && h < 20)
                              && !(v >= 100 && v < 20000 && h >= 5 && h < 8))
            || (v == 31000 && h >= -10 && h < 50);
        ASSERT_EQ(tall.contains(h, v), want) << h << ',' << v;
    }
    const RgnHandle r = std::make_shared<RgnRecord>(tall);
    EXPECT_TRUE(RectInRgn({30990, 0, 31010, 1}, r));
    EXPECT_FALSE(RectInRgn({30000, 0, 31000, 40}, r));
    EXPECT_FALSE(RectInRgn({-4, 11, 4, 19}, r));
    EXPECT_TRUE(RectInRgn({-4, 11, 6, 19}, r));
}

TEST(Region, TheDefaultClipCostsNoRows)
{
    const Region screen = Region::oval({20, 0, 342, 512}), clip(kHugeRect);
    const Region ring = clip.subtracting(screen);
    Int bands = 0;
    ring.forEachBand([&](Int, Int, Region::Row) { ++bands; });
    EXPECT_LT(bands, 330);
    EXPECT_EQ(screen.intersection(clip), screen);
    EXPECT_EQ(clip.subtracting(ring), screen);
}

TEST(Region, RectanglesIntersectAndShapesAreUsedAgainWithoutAllocation)
{
    const Region a(Rect{0, 0, 50, 50}), b(Rect{20, 30, 90, 90});
    const Region disc = Region::oval({0, 0, 60, 60}), other = Region::oval({10, 10, 80, 80});
    Region out = disc.unionWith(other).xorWith(a);
    out = disc.xorWith(other);
    const long before = sAllocations;
    Region box = a.intersection(b);
    Region::combine(Region::Op::intersect, box, a, box);
    Region::combine(Region::Op::intersect, disc, other, out);
    const long after = sAllocations;
    EXPECT_EQ(after, before);
    EXPECT_EQ(box, Region(Rect{20, 30, 50, 50}));
    EXPECT_EQ(out, other.intersection(disc));
}

TEST(Region, OvalsAndRoundCornersFollowTheEllipse)
{
    const Region four = Region::oval({0, 0, 4, 4});
    EXPECT_EQ(four.spans(0), (std::vector<Int>{1, 3}));
    EXPECT_EQ(four.spans(1), (std::vector<Int>{0, 4}));
    EXPECT_EQ(four.spans(2), (std::vector<Int>{0, 4}));
    EXPECT_EQ(four.spans(3), (std::vector<Int>{1, 3}));
    EXPECT_TRUE(Region::oval({0, 0, 1, 1}).isRect());
    EXPECT_TRUE(Region::oval({0, 0, 50, 1}).isRect());
    EXPECT_EQ(Region::roundRect({0, 0, 9, 12}, 99, 6), Region::roundRect({0, 0, 9, 12}, 12, 6));

    Chance chance(4);
    for (int round = 0; round < 100; ++round) {
        const Rect r = chance.rect();
        const Int ovalWidth = chance.in(-3, 60), ovalHeight = chance.in(-3, 60);
        const Region shape = Region::roundRect(r, ovalWidth, ovalHeight);
        expectShortestForm(shape);
        const double a = 0.5 * static_cast<double>(std::clamp<Int>(ovalWidth, 0, r.width()));
        const double b = 0.5 * static_cast<double>(std::clamp<Int>(ovalHeight, 0, r.height()));
        for (Int v = r.top; v < r.bottom; ++v) {
            const double fromEdge = static_cast<double>(std::min(v - r.top, r.bottom - 1 - v)) + 0.5;
            Int inset = 0;
            if (a >= 1 && b >= 1 && fromEdge < std::floor(b)) {
                const double t = (b - fromEdge) * (b - fromEdge) / (b * b);
                inset = static_cast<Int>(std::round(a - a * std::sqrt(std::max(1 - t, 0.0))));
            }
            const std::vector<Int> want = r.left + inset < r.right - inset
                ? std::vector<Int>{r.left + inset, r.right - inset}
                : std::vector<Int>{};
            ASSERT_EQ(shape.spans(v), want) << "row " << v << " of " << r.description();
        }
        const Rect within = chance.rect();
        EXPECT_EQ(Region::roundRect(r, ovalWidth, ovalHeight, within).intersection(within), shape.intersection(within));
    }
}

TEST(Region, OutlinesFillByTheEvenOddRule)
{
    const auto polygon = [](const std::vector<Point>& points) {
        std::vector<Region::Edge> edges;
        for (std::size_t i = 0; i < points.size(); ++i)
            edges.emplace_back(points[i], points[(i + 1) % points.size()]);
        return edges;
    };
    const Region triangle = Region::fromEdges(polygon({{0, 5}, {5, 0}, {5, 10}}));
    EXPECT_EQ(triangle.bounds().bottom, 5);
    EXPECT_EQ(triangle.spans(4), (std::vector<Int>{1, 10})); // 0.5 and 9.5: halves go away from zero
    EXPECT_EQ(Region::fromEdges(polygon({{3, 0}, {3, 9}})), Region());
    EXPECT_EQ(Region::fromEdges({}), Region());

    Chance chance(5);
    for (int round = 0; round < 60; ++round) {
        std::vector<Point> points;
        for (Int n = chance.in(2, 9); n > 0; --n)
            points.push_back({chance.in(-12, 75), chance.in(-12, 140)});
        const auto edges = polygon(points);
        const Region shape = Region::fromEdges(edges);
        expectShortestForm(shape);
        for (Int v = -12; v < 76; ++v) {
            std::vector<double> cuts;
            for (auto [p, q] : edges) {
                if (p.v > q.v)
                    std::swap(p, q);
                const double y = static_cast<double>(v) + 0.5;
                if (p.v != q.v && y >= static_cast<double>(p.v) && y < static_cast<double>(q.v))
                    cuts.push_back(
                        (y - static_cast<double>(p.v)) * static_cast<double>(q.h - p.h) / static_cast<double>(q.v - p.v)
                        + static_cast<double>(p.h));
            }
            std::sort(cuts.begin(), cuts.end());
            for (Int h = -12; h < 148; ++h) {
                bool inside = false;
                for (std::size_t i = 0; i + 1 < cuts.size(); i += 2)
                    inside = inside
                        || (std::round(cuts[i]) <= static_cast<double>(h)
                            && static_cast<double>(h) < std::round(cuts[i + 1]));
                ASSERT_EQ(shape.contains(h, v), inside) << h << ',' << v;
            }
        }
        const Rect within = chance.rect();
        EXPECT_EQ(Region::fromEdges(edges, within).intersection(within), shape.intersection(within));
    }
}

TEST(Region, LinesAreWhatThePenStampsOnItsWay)
{
    const auto stamped = [](Point from, Point to, Point pen) {
        Pixels pixels;
        const Int dx = std::abs(to.h - from.h), dy = std::abs(to.v - from.v);
        const Int sx = from.h < to.h ? 1 : -1, sy = from.v < to.v ? 1 : -1;
        Int err = dx - dy, x = from.h, y = from.v;
        for (;;) {
            for (Int v = y; v < y + pen.v; ++v)
                for (Int h = x; h < x + pen.h; ++h)
                    pixels.add(h, v);
            if (x == to.h && y == to.v)
                return pixels;
            const Int e2 = 2 * err;
            if (e2 >= -dy)
                err -= dy, x += sx;
            if (e2 <= dx)
                err += dx, y += sy;
        }
    };
    Chance chance(6);
    for (int round = 0; round < 400; ++round) {
        const Int reach = chance.oneIn(2) ? 6 : 60;
        const Point from{chance.in(0, reach), chance.in(0, reach)}, to{chance.in(0, reach), chance.in(0, reach)};
        const Point pen{chance.in(0, 4), chance.in(0, 4)};
        SCOPED_TRACE(from.description() + " to " + to.description() + " pen " + pen.description());
        const Region line = Region::line(from, to, pen);
        ASSERT_EQ(Pixels::of(line), stamped(from, to, pen));
        expectShortestForm(line);
        const Rect within = chance.rect();
        EXPECT_EQ(Region::line(from, to, pen, within).intersection(within), line.intersection(within));
    }
    const Region far = Region::line({0, 0}, {3000000000, 9000000000}, {1, 1}, {0, 0, 4, 512});
    EXPECT_EQ(far.spans(0), (std::vector<Int>{0, 2}));
    EXPECT_EQ(far.spans(3), (std::vector<Int>{8, 11}));
}

TEST(Region, RowsGivenAreTakenAsTheyAre)
{
    const std::vector<Int> rows[] = {{}, {1, 3}, {1, 3}, {}, {0, 2, 5, 9}, {}};
    const Region r = Region::fromRows(10, rows);
    expectShortestForm(r);
    EXPECT_EQ(r.bounds(), (Rect{11, 0, 15, 9}));
    EXPECT_EQ(r.spans(12), rows[2]);
    EXPECT_EQ(r.spans(14), rows[4]);
    EXPECT_EQ(r.description(), "Region(t11 l0 b15 r9) complex");
}
