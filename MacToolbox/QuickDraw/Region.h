#pragma once

#include "MacToolbox/Base/Geometry.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace MacToolbox {

/// A set of pixels. A plain rectangle is held as its bounds alone; anything else as bands of equal rows in one flat
/// array. Every operation gives the shortest form, so that == compares pixels (and the bounds of moved empty regions).
/// A region that is no rectangle lies within `kReach`; what would fall beyond is cut off.
class Region {
public:
    using Edge = std::pair<Point, Point>;
    enum class Op { unite, intersect, subtract, exclusiveOr };
    /// The largest region that is no rectangle.
    static constexpr Rect kReach{-(1 << 30), -(1 << 30), 1 << 30, 1 << 30};
    /// The horizontal boundaries of a row, l0, r0, l1, r1 and so on, rising; the pixels l to r - 1 are inside.
    using Row = std::span<const std::int32_t>;

    Region() = default; ///< empty, bounds all zeros
    /// An empty rectangle gives the empty region.
    explicit Region(const Rect& rect) : bounds_(rect.isEmpty() ? Rect{} : rect) { }
    Region(const Region&) = default;
    Region& operator=(const Region&) = default;
    Region(Region&& other) noexcept { swap(other); }
    Region& operator=(Region&& other) noexcept { return swap(other), *this; }

    // The shapes can be very tall; rows outside `within` are left out.

    /// A rectangle whose corners are quarters of an ellipse of the given extent.
    static Region roundRect(const Rect& rect, Int ovalWidth, Int ovalHeight, const Rect& within = kReach);
    static Region oval(const Rect& rect, const Rect& within = kReach);
    /// The inside of closed outlines by the even-odd rule; the edges may come in any order.
    static Region fromEdges(std::span<const Edge> edges, const Rect& within = kReach);
    /// The pixels of `rect` for which `inside(h, v)` holds, asked row by row from the left.
    static Region fromTest(const Rect& rect, const std::function<bool(Int h, Int v)>& inside);
    /// Rows from `top` down, each a list of boundaries in strictly rising order.
    static Region fromRows(Int top, std::span<const std::vector<Int>> rows);
    /// The pixels that a pen of `penSize` covers on its way, its top left following the line; both ends are covered.
    static Region line(Point from, Point to, Point penSize, const Rect& within = kReach);

    const Rect& bounds() const { return bounds_; }
    bool isEmpty() const { return bounds_.isEmpty(); }
    /// True for the empty region too.
    bool isRect() const { return bands_.size == 0; }
    bool contains(Point p) const { return contains(p.h, p.v); }
    bool contains(Int h, Int v) const;
    bool intersects(const Rect& rect) const;
    /// The boundaries of row `v`; none outside the vertical extent.
    std::vector<Int> spans(Int v) const;
    /// "Region(t1 l2 b3 r4)", then " complex" if it is no rectangle.
    std::string description() const;
    /// Moved empty regions, whose bounds are not zeros, differ from `Region()`.
    bool operator==(const Region& other) const;

    Region unionWith(const Region& other) const { return combined(Op::unite, other); }
    Region intersection(const Region& other) const { return combined(Op::intersect, other); }
    Region intersection(const Rect& rect) const;
    Region subtracting(const Region& other) const { return combined(Op::subtract, other); }
    Region xorWith(const Region& other) const { return combined(Op::exclusiveOr, other); }
    /// Moves the bounds of an empty region too.
    Region offsetBy(Int dh, Int dv) const;

    /// `a` op `b` into `out`, whose storage is used again; `out` may be `a` or `b`.
    static void combine(Op op, const Region& a, const Region& b, Region& out)
    {
        if (op == Op::intersect && a.isRect() && b.isRect())
            out.becomeRect(a.bounds_.intersection(b.bounds_));
        else
            combineBands(op, a, b, out);
    }

    /// Calls `visit(top, bottom, row)` for each run of equal rows that is not empty, from the top down.
    template <typename Visit> void forEachBand(Visit&& visit) const { forEachBand(bounds_.top, bounds_.bottom, visit); }
    /// The same for the bands that have rows from `top` to `bottom - 1`; the first and last may have others too.
    template <typename Visit> void forEachBand(Int top, Int bottom, Visit&& visit) const
    {
        top = std::max(top, bounds_.top);
        bottom = std::min(bottom, bounds_.bottom);
        if (top >= bottom || isEmpty())
            return;
        if (isRect())
            return visitRect(visit);
        for (const std::int32_t *p = bandAt(top), *end = bands_.end(); p < end && p[0] < bottom; p += 3 + p[2])
            visit(I(p[0]), I(p[1]), Row(p + 3, static_cast<std::size_t>(p[2])));
    }

    void swap(Region& other) noexcept
    {
        std::swap(bounds_, other.bounds_);
        bands_.swap(other.bands_);
        index_.asked = other.index_.asked = 0;
    }

private:
    friend class BandWriter;

    /// An array of numbers that keeps its memory when it gets shorter.
    struct Numbers {
        std::unique_ptr<std::int32_t[]> data;
        std::int32_t size = 0, capacity = 0;

        Numbers() = default;
        Numbers(const Numbers& o) { *this = o; }
        Numbers& operator=(const Numbers& o);
        std::int32_t* begin() const { return data.get(); }
        std::int32_t* end() const { return data.get() + size; }
        /// Room for `n` numbers; keeps the first `keep`.
        void reserve(std::int64_t n, std::int32_t keep);
        void swap(Numbers& o) noexcept { data.swap(o.data), std::swap(size, o.size), std::swap(capacity, o.capacity); }
    };

    /// Where to start looking for a row. Made when rows are asked for often, and worth nothing after a change.
    struct RowIndex {
        static constexpr int kOften = 8;
        int asked = 0; // the index is good when this is above `kOften`
        int shift = 0;
        std::vector<std::int32_t> firstBand; // a position in `bands_` for each 2^shift rows from bounds.top

        RowIndex() = default;
        RowIndex(const RowIndex&) { } // a copy counts afresh
        RowIndex& operator=(const RowIndex&) { return asked = 0, *this; }
    };

    template <typename Visit> void visitRect(Visit&& visit) const
    {
        const std::int32_t edges[2] = {clampEdge(bounds_.left), clampEdge(bounds_.right)};
        if (edges[0] < edges[1])
            visit(bounds_.top, bounds_.bottom, Row(edges, 2));
    }
    static constexpr std::int32_t clampEdge(Int x)
    {
        return static_cast<std::int32_t>(std::clamp(x, kReach.left, kReach.right));
    }
    Region combined(Op op, const Region& other) const
    {
        Region out;
        combine(op, *this, other, out);
        return out;
    }
    /// The bands of this region; those of a rectangle are put into `room`.
    Row bandsIn(std::int32_t (&room)[5]) const;
    static void combineBands(Op op, const Region& a, const Region& b, Region& out);
    template <typename Kind> static void combineAs(const Region& a, const Region& b, Region& out);
    template <typename Kind> static void combineRects(const Region& a, const Region& b, Region& out);
    void becomeRect(const Rect& r) { bounds_ = r, bands_.size = 0, index_.asked = 0; }
    /// The first band that does not end above row `v`, which lies inside the bounds of a region that is no rectangle.
    const std::int32_t* bandAt(Int v) const
    {
        const std::int32_t* p = bands_.begin();
        if (index_.asked > RowIndex::kOften)
            p += index_.firstBand[static_cast<std::size_t>((v - bounds_.top) >> index_.shift)];
        else if (v > bounds_.top && ++index_.asked > RowIndex::kOften)
            indexRows();
        while (p[1] <= v) // ends with the last band at the latest: its bottom is that of the bounds
            p += 3 + p[2];
        return p;
    }
    void indexRows() const;

    Rect bounds_;
    Numbers
        bands_; // each band: top, bottom, count of boundaries, boundaries; empty rows are left out. None: a rectangle
    mutable RowIndex index_;
};

/// The Toolbox's region object.
struct RgnRecord {
    Region region;

    RgnRecord() = default;
    explicit RgnRecord(Region r) : region(std::move(r)) { }
    const Rect& rgnBBox() const { return region.bounds(); }
};
using RgnHandle = std::shared_ptr<RgnRecord>;

/// What the drawing calls leave between `OpenRgn` and `CloseRgn`.
struct RegionRecorder {
    Region areas;                    ///< the recorded shapes, by exclusive-or
    std::vector<Region::Edge> edges; ///< the lines
};

// Game thread only. Nil handles do nothing and count as empty.

RgnHandle NewRgn();
inline void DisposRgn(const RgnHandle&) { }  ///< nothing: the region goes with its last reference
inline void DisposeRgn(const RgnHandle&) { } ///< nothing: the region goes with its last reference
void RectRgn(const RgnHandle& r, const Rect& rect);
void SetRectRgn(const RgnHandle& r, Int left, Int top, Int right, Int bottom);
void CopyRgn(const RgnHandle& src, const RgnHandle& dst);
void SetEmptyRgn(const RgnHandle& r);
void OffsetRgn(const RgnHandle& r, Int dh, Int dv);
// `dst` may be one of the operands.
void SectRgn(const RgnHandle& a, const RgnHandle& b, const RgnHandle& dst);
void UnionRgn(const RgnHandle& a, const RgnHandle& b, const RgnHandle& dst);
void DiffRgn(const RgnHandle& a, const RgnHandle& b, const RgnHandle& dst);
void XorRgn(const RgnHandle& a, const RgnHandle& b, const RgnHandle& dst);
bool EmptyRgn(const RgnHandle& r);
bool PtInRgn(Point pt, const RgnHandle& r);
/// True if they share a pixel.
bool RectInRgn(const Rect& rect, const RgnHandle& r);
bool EqualRgn(const RgnHandle& a, const RgnHandle& b);

} // namespace MacToolbox
