#include "MacToolbox/QuickDraw/Region.h"

#include <climits>
#include <cmath>
#include <cstring>

namespace MacToolbox {

using Number = std::int32_t;

Region::Numbers& Region::Numbers::operator=(const Numbers& o)
{
    if (this == &o)
        return *this;
    if (o.size > capacity) {
        data = std::make_unique_for_overwrite<Number[]>(static_cast<std::size_t>(o.size));
        capacity = o.size;
    }
    size = o.size;
    std::copy_n(o.data.get(), size, data.get());
    return *this;
}

void Region::Numbers::reserve(std::int64_t n, Number keep)
{
    if (n <= capacity)
        return;
    const Number bigger = static_cast<Number>(std::max<std::int64_t>(n, 2 * std::int64_t{capacity} + 32));
    auto fresh = std::make_unique_for_overwrite<Number[]>(static_cast<std::size_t>(bigger));
    std::copy_n(data.get(), keep, fresh.get());
    data = std::move(fresh);
    capacity = bigger;
}

/// Puts bands, from the top down, into a region whose old contents it overwrites, and keeps the shortest form.
class BandWriter {
public:
    explicit BandWriter(Region& out)
        : out_(out), base_(out.bands_.begin()), at_(base_), end_(base_ + out.bands_.capacity)
    {
    }

    /// Where the boundaries of the next band are to be put, with room for `count`.
    Number* row(std::ptrdiff_t count)
    {
        if (end_ - at_ < count + 3)
            grow(count + 3);
        return at_ + 3;
    }
    /// Ends a band of `count` boundaries, put at `row`.
    void add(Number top, Number bottom, Number count)
    {
        if (count == 0)
            return;
        const Number* edges = at_ + 3;
        left_ = std::min(left_, edges[0]);
        right_ = std::max(right_, edges[count - 1]);
        if (joins(top, edges, count)) {
            last_[1] = bottom;
            return;
        }
        at_[0] = top;
        at_[1] = bottom;
        at_[2] = count;
        last_ = at_;
        at_ += 3 + count;
    }
    void add(Number top, Number bottom, const Number* edges, Number count)
    {
        Number* to = row(count);
        for (Number i = 0; i < count; ++i)
            to[i] = edges[i];
        add(top, bottom, count);
    }
    void addSpan(Int top, Int bottom, Int left, Int right)
    {
        const Number t = Region::clampEdge(top), b = Region::clampEdge(bottom);
        Number* to = row(2);
        to[0] = Region::clampEdge(left);
        to[1] = Region::clampEdge(right);
        if (t < b && to[0] < to[1])
            add(t, b, 2);
    }
    /// Bands that are in the shortest form among themselves; none may touch what was written before.
    void copy(const Number* from, const Number* end)
    {
        if (from == end)
            return;
        const Number* lastOne = from;
        for (const Number* p = from; p < end; p += 3 + p[2]) {
            left_ = std::min(left_, p[3]);
            right_ = std::max(right_, p[2 + p[2]]);
            lastOne = p;
        }
        row(end - from);
        std::copy(from, end, at_);
        last_ = at_ + (lastOne - from);
        at_ += end - from;
    }
    void finish()
    {
        out_.becomeRect(last_ == nullptr ? Rect{} : Rect{base_[0], left_, last_[1], right_});
        if (last_ != base_ || (last_ != nullptr && base_[2] != 2))
            out_.bands_.size = static_cast<Number>(at_ - base_);
    }

private:
    bool joins(Number top, const Number* edges, Number count) const
    {
        if (last_ == nullptr || last_[1] != top || last_[2] != count)
            return false;
        for (Number i = 0; i < count; ++i)
            if (last_[3 + i] != edges[i])
                return false;
        return true;
    }
    [[gnu::noinline]] static void reserve(Region& out, std::ptrdiff_t used, std::ptrdiff_t more)
    {
        out.bands_.reserve(used + more, static_cast<Number>(used));
    }
    void grow(std::ptrdiff_t more)
    {
        const std::ptrdiff_t used = at_ - base_, last = last_ ? last_ - base_ : -1;
        reserve(out_, used, more);
        base_ = out_.bands_.begin();
        at_ = base_ + used;
        end_ = base_ + out_.bands_.capacity;
        last_ = last < 0 ? nullptr : base_ + last;
    }

    Region& out_;
    Number *base_, *at_, *end_;
    Number* last_ = nullptr; // the band written last
    Number left_ = INT_MAX, right_ = INT_MIN;
};

namespace {

struct Unite {
    static constexpr bool keepsA = true, keepsB = true;
    static bool in(bool a, bool b) { return a | b; }
};
struct Intersect {
    static constexpr bool keepsA = false, keepsB = false;
    static bool in(bool a, bool b) { return a & b; }
};
struct Subtract {
    static constexpr bool keepsA = true, keepsB = false;
    static bool in(bool a, bool b) { return a & !b; }
};
struct ExclusiveOr {
    static constexpr bool keepsA = true, keepsB = true;
    static bool in(bool a, bool b) { return a != b; }
};

/// The boundaries of two rows combined, into `out`. @return Their count.
template <typename Kind> Number sweep(const Number* a, Number countA, const Number* b, Number countB, Number* out)
{
    Number i = 0, j = 0, n = 0;
    bool state = false;
    while (i < countA || j < countB) {
        const Number xa = i < countA ? a[i] : INT_MAX, xb = j < countB ? b[j] : INT_MAX;
        const Number x = std::min(xa, xb);
        i += xa == x;
        j += xb == x;
        const bool now = Kind::in(i & 1, j & 1);
        out[n] = x;
        n += now != state;
        state = now;
    }
    return n;
}

// Rows of a single span, which most rows are.

Number combineSpans(Unite, Number al, Number ar, Number bl, Number br, Number* out)
{
    if (std::max(al, bl) <= std::min(ar, br)) {
        out[0] = std::min(al, bl);
        out[1] = std::max(ar, br);
        return 2;
    }
    const bool first = al < bl;
    out[0] = first ? al : bl;
    out[1] = first ? ar : br;
    out[2] = first ? bl : al;
    out[3] = first ? br : ar;
    return 4;
}
Number combineSpans(Intersect, Number al, Number ar, Number bl, Number br, Number* out)
{
    out[0] = std::max(al, bl);
    out[1] = std::min(ar, br);
    return out[0] < out[1] ? 2 : 0;
}
Number combineSpans(Subtract, Number al, Number ar, Number bl, Number br, Number* out)
{
    Number n = 0;
    out[0] = al;
    out[1] = std::min(ar, bl);
    n += out[0] < out[1] ? 2 : 0;
    out[n] = std::max(al, br);
    out[n + 1] = ar;
    return n + (out[n] < ar ? 2 : 0);
}
Number combineSpans(ExclusiveOr, Number al, Number ar, Number bl, Number br, Number* out)
{
    const Number x0 = std::min(al, bl), x3 = std::max(ar, br);
    const Number l = std::max(al, bl), r = std::min(ar, br);
    const Number x1 = std::min(l, r), x2 = std::max(l, r); // the overlap or the gap between the two
    Number n = 0;
    out[0] = x0;
    out[1] = x1;
    n += x0 < x1 ? 2 : 0;
    if (x1 == x2 && n) { // they touch
        out[1] = x3;
        return 2;
    }
    out[n] = x2;
    out[n + 1] = x3;
    return n + (x2 < x3 ? 2 : 0);
}

/// A row united with one span.
Number uniteSpan(const Number* a, Number count, Number left, Number right, Number* out)
{
    Number i = 0;
    while (i < count && a[i] < left)
        out[i] = a[i], ++i;
    Number n = i, j = i;
    out[n] = left;
    n += !(i & 1);
    while (j < count && a[j] <= right)
        ++j;
    out[n] = right;
    n += !(j & 1);
    while (j < count)
        out[n++] = a[j++];
    return n;
}

template <typename Kind> Number combineRows(const Number* a, const Number* b, Number* out)
{
    if (a[2] == 2 && b[2] == 2)
        return combineSpans(Kind{}, a[3], a[4], b[3], b[4], out);
    if constexpr (std::is_same_v<Kind, Unite>) {
        if (b[2] == 2)
            return uniteSpan(a + 3, a[2], b[3], b[4], out);
        if (a[2] == 2)
            return uniteSpan(b + 3, b[2], a[3], a[4], out);
    }
    return sweep<Kind>(a + 3, a[2], b + 3, b[2], out);
}

} // namespace

Region::Row Region::bandsIn(Number (&room)[5]) const
{
    if (!isRect())
        return {bands_.begin(), static_cast<std::size_t>(bands_.size)};
    room[0] = clampEdge(bounds_.top);
    room[1] = clampEdge(bounds_.bottom);
    room[2] = 2;
    room[3] = clampEdge(bounds_.left);
    room[4] = clampEdge(bounds_.right);
    return {room, room[0] < room[1] && room[3] < room[4] ? 5U : 0U};
}

template <typename Kind> void Region::combineAs(const Region& ra, const Region& rb, Region& out)
{
    Number roomA[5], roomB[5];
    const Row bandsA = ra.bandsIn(roomA), bandsB = rb.bandsIn(roomB);
    const Number *a = bandsA.data(), *aEnd = a + bandsA.size(), *b = bandsB.data(), *bEnd = b + bandsB.size();
    BandWriter to(out);

    // Bands of one operand wholly above the other go over in one piece, or are skipped.
    const auto above = [&to](const Number*& p, const Number* end, Number until, bool keeps) {
        const Number* from = p;
        while (p < end && p[1] < until)
            p += 3 + p[2];
        if (keeps)
            to.copy(from, p);
    };
    Number y = INT_MIN; // all rows above it are done
    if (a < aEnd && b < bEnd) {
        if (a[0] < b[0])
            above(a, aEnd, b[0], Kind::keepsA);
        else
            above(b, bEnd, a[0], Kind::keepsB);
        if (a < aEnd && b < bEnd)
            y = std::min(a[0], b[0]);
    }
    while (a < aEnd && b < bEnd) {
        const bool inA = a[0] <= y, inB = b[0] <= y;
        const Number next = std::min(inA ? a[1] : a[0], inB ? b[1] : b[0]);
        if (inA && inB) {
            Number* row = to.row(a[2] + b[2]);
            to.add(y, next, combineRows<Kind>(a, b, row));
        } else if (inA) {
            if (Kind::keepsA)
                to.add(y, next, a + 3, a[2]);
        } else if (inB) {
            if (Kind::keepsB)
                to.add(y, next, b + 3, b[2]);
        }
        y = next;
        if (inA && a[1] == y)
            a += 3 + a[2];
        if (inB && b[1] == y)
            b += 3 + b[2];
        if (a < aEnd && b < bEnd && a[0] > y && b[0] > y)
            y = std::min(a[0], b[0]);
    }
    // What is left of one operand goes over in one piece; its first band may be half done, or join the last.
    const auto rest = [&to, y](const Number* p, const Number* end) {
        if (p == end)
            return;
        to.add(std::max(y, p[0]), p[1], p + 3, p[2]);
        to.copy(p + 3 + p[2], end);
    };
    if (Kind::keepsA)
        rest(a, aEnd);
    if (Kind::keepsB)
        rest(b, bEnd);
    to.finish();
}

/// Two rectangles: at most three bands, of which the one that both have rows in is the only one to work out.
template <typename Kind> void Region::combineRects(const Region& ra, const Region& rb, Region& out)
{
    struct Box {
        Number top, bottom, left, right;
        explicit Box(const Rect& r)
            : top(clampEdge(r.top)), bottom(clampEdge(r.bottom)), left(clampEdge(r.left)), right(clampEdge(r.right))
        {
        }
        bool isEmpty() const { return top >= bottom || left >= right; }
    };
    const Box a(ra.bounds_), b(rb.bounds_);
    if (a.isEmpty() || b.isEmpty()) // beyond all reach
        return combineAs<Kind>(ra, rb, out);
    BandWriter to(out);
    const auto only = [&to](const Box& box, Number from, Number until, bool keeps) {
        if (!keeps || from >= until)
            return;
        Number* row = to.row(2);
        row[0] = box.left, row[1] = box.right;
        to.add(from, until, 2);
    };
    const Number top = std::max(a.top, b.top), bottom = std::min(a.bottom, b.bottom);
    const bool aFirst = a.top<b.top, aLast = a.bottom> b.bottom;
    only(aFirst ? a : b, aFirst ? a.top : b.top, std::min(top, aFirst ? a.bottom : b.bottom),
        aFirst ? Kind::keepsA : Kind::keepsB);
    if (top < bottom)
        to.add(top, bottom, combineSpans(Kind{}, a.left, a.right, b.left, b.right, to.row(4)));
    only(aLast ? a : b, std::max(bottom, aLast ? a.top : b.top), aLast ? a.bottom : b.bottom,
        aLast ? Kind::keepsA : Kind::keepsB);
    to.finish();
}

void Region::combineBands(Op op, const Region& a, const Region& b, Region& out)
{
    if (a.isEmpty() || b.isEmpty()) { // the other operand, but never the bounds of a moved empty region
        const Region& other = op == Op::subtract || !a.isEmpty() ? a : b;
        if (other.isEmpty() || op == Op::intersect)
            out.becomeRect({});
        else
            out = other;
        return;
    }
    if (op == Op::intersect && !a.bounds_.intersects(b.bounds_))
        return out.becomeRect({});
    if (&out == &a || &out == &b) {
        Region fresh;
        combineBands(op, a, b, fresh);
        return out.swap(fresh);
    }
    const auto run = [&]<typename Kind>(Kind) {
        if (a.isRect() && b.isRect())
            combineRects<Kind>(a, b, out);
        else
            combineAs<Kind>(a, b, out);
    };
    switch (op) {
    case Op::unite: return run(Unite{});
    case Op::intersect: return run(Intersect{});
    case Op::subtract: return run(Subtract{});
    case Op::exclusiveOr: return run(ExclusiveOr{});
    }
}

Region Region::intersection(const Rect& rect) const
{
    return isRect() && !isEmpty() ? Region(bounds_.intersection(rect)) : intersection(Region(rect));
}

Region Region::offsetBy(Int dh, Int dv) const
{
    if (isRect()) {
        Region moved;
        moved.bounds_ = bounds_.offsetBy(dh, dv);
        return moved;
    }
    const Rect box = bounds_.offsetBy(dh, dv);
    Region moved;
    if (box != box.intersection(kReach)) { // cut off
        const Rect kept = box.intersection(kReach).offsetBy(-dh, -dv);
        return kept.isEmpty() ? Region() : intersection(kept).offsetBy(dh, dv);
    }
    moved = *this;
    moved.bounds_ = box;
    const auto right = static_cast<Number>(dh), down = static_cast<Number>(dv);
    for (Number *p = moved.bands_.begin(), *end = moved.bands_.end(); p < end; p += 3 + p[2]) {
        p[0] += down;
        p[1] += down;
        for (Number i = 0; i < p[2]; ++i)
            p[3 + i] += right;
    }
    return moved;
}

bool Region::operator==(const Region& other) const
{
    return bounds_ == other.bounds_ && bands_.size == other.bands_.size
        && std::equal(bands_.begin(), bands_.end(), other.bands_.begin());
}

void Region::indexRows() const
{
    const Int height = bounds_.height();
    int shift = 0;
    while (height >> shift > 1024)
        ++shift;
    index_.shift = shift;
    index_.firstBand.resize(static_cast<std::size_t>((height >> shift) + 1));
    const Number* p = bands_.begin();
    Int v = bounds_.top;
    for (Number& first : index_.firstBand) {
        while (p < bands_.end() && p[1] <= v)
            p += 3 + p[2];
        first = static_cast<Number>(p - bands_.begin());
        v += Int{1} << shift;
    }
}

bool Region::contains(Int h, Int v) const
{
    if (!bounds_.contains(h, v))
        return false;
    if (isRect())
        return true;
    const Number* p = bandAt(v);
    if (p[0] > v)
        return false;
    const Number x = static_cast<Number>(h);
    Number passed = 0;
    for (Number i = 0; i < p[2]; ++i)
        passed += p[3 + i] <= x;
    return passed & 1;
}

bool Region::intersects(const Rect& rect) const
{
    const Rect box = bounds_.intersection(rect);
    if (box.isEmpty() || isRect())
        return !box.isEmpty();
    for (const Number *p = bandAt(box.top), *end = bands_.end(); p < end && p[0] < box.bottom; p += 3 + p[2])
        for (Number i = 3; i < 3 + p[2]; i += 2)
            if (p[i] < box.right && p[i + 1] > box.left)
                return true;
    return false;
}

std::vector<Int> Region::spans(Int v) const
{
    std::vector<Int> row;
    if (v >= bounds_.top && v < bounds_.bottom && !isEmpty() && isRect())
        row = {bounds_.left, bounds_.right};
    else
        forEachBand([&](Int top, Int bottom, Row edges) {
            if (v >= top && v < bottom)
                row.assign(edges.begin(), edges.end());
        });
    return row;
}

std::string Region::description() const { return "Region" + bounds_.description() + (isRect() ? "" : " complex"); }

// ---- shapes ----

Region Region::roundRect(const Rect& rect, Int ovalWidth, Int ovalHeight, const Rect& within)
{
    const Int ow = std::clamp<Int>(ovalWidth, 0, std::max<Int>(rect.width(), 0));
    const Int oh = std::clamp<Int>(ovalHeight, 0, std::max<Int>(rect.height(), 0));
    if (rect.isEmpty() || ow < 2 || oh < 2)
        return Region(rect);

    Region shape;
    BandWriter to(shape);
    const double a = static_cast<double>(ow) * 0.5, b = static_cast<double>(oh) * 0.5;
    const Int corner = oh >> 1, top = std::max(rect.top, within.top), bottom = std::min(rect.bottom, within.bottom);
    const auto curve = [&](Int from, Int until) {
        for (Int v = std::max(from, top); v < std::min(until, bottom); ++v) {
            const Int d = std::min(v - rect.top, rect.bottom - 1 - v); // from the nearer edge: top and bottom mirror
            const double t = b - (static_cast<double>(d) + 0.5);
            const double f = std::max(1 - t * t / (b * b), 0.0);
            const Int inset = static_cast<Int>(std::round(a - a * std::sqrt(f)));
            to.addSpan(v, v + 1, rect.left + inset, rect.right - inset);
        }
    };
    curve(rect.top, rect.top + corner);
    to.addSpan(std::max(rect.top + corner, top), std::min(rect.bottom - corner, bottom), rect.left, rect.right);
    curve(rect.bottom - corner, rect.bottom);
    to.finish();
    return shape;
}

Region Region::oval(const Rect& rect, const Rect& within)
{
    return roundRect(rect, rect.width(), rect.height(), within);
}

Region Region::fromEdges(std::span<const Edge> edges, const Rect& within)
{
    if (edges.empty())
        return {};
    Int top = edges[0].first.v, bottom = top;
    for (const auto& [p, q] : edges) {
        top = std::min({top, p.v, q.v});
        bottom = std::max({bottom, p.v, q.v});
    }
    Region shape;
    BandWriter to(shape);
    std::vector<double> crossings;
    for (Int v = std::max(top, within.top); v < std::min(bottom, within.bottom); ++v) {
        const double centre = static_cast<double>(v) + 0.5;
        crossings.clear();
        for (const auto& [p, q] : edges) {
            const auto& [upper, lower] = p.v < q.v ? std::tie(p, q) : std::tie(q, p);
            if (v < upper.v || v >= lower.v)
                continue;
            const double x = (centre - static_cast<double>(upper.v)) * static_cast<double>(lower.h - upper.h)
                    / static_cast<double>(lower.v - upper.v)
                + static_cast<double>(upper.h);
            crossings.push_back(std::clamp(x, static_cast<double>(kReach.left), static_cast<double>(kReach.right)));
        }
        std::sort(crossings.begin(), crossings.end());
        Number* row = to.row(static_cast<std::ptrdiff_t>(crossings.size()));
        Number n = 0;
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            const auto l = static_cast<Number>(std::round(crossings[i]));
            const auto r = static_cast<Number>(std::round(crossings[i + 1]));
            if (l >= r)
                continue;
            if (n && row[n - 1] == l)
                --n;
            else
                row[n++] = l;
            row[n++] = r;
        }
        to.add(static_cast<Number>(v), static_cast<Number>(v + 1), n);
    }
    to.finish();
    return shape;
}

Region Region::fromTest(const Rect& rect, const std::function<bool(Int h, Int v)>& inside)
{
    Region shape;
    BandWriter to(shape);
    const Rect area = rect.intersection(kReach);
    for (Int v = area.top; v < area.bottom; ++v) {
        Number* row = to.row(area.width() + 1);
        Number n = 0;
        for (Int h = area.left; h < area.right; ++h)
            if (inside(h, v) != ((n & 1) != 0))
                row[n++] = static_cast<Number>(h);
        if (n & 1)
            row[n++] = static_cast<Number>(area.right);
        to.add(static_cast<Number>(v), static_cast<Number>(v + 1), n);
    }
    to.finish();
    return shape;
}

Region Region::fromRows(Int top, std::span<const std::vector<Int>> rows)
{
    Region shape;
    BandWriter to(shape);
    for (const std::vector<Int>& edges : rows) {
        Number* row = to.row(static_cast<std::ptrdiff_t>(edges.size()));
        Number n = 0;
        for (std::size_t i = 0; i + 1 < edges.size(); i += 2) {
            row[n] = clampEdge(edges[i]);
            row[n + 1] = clampEdge(edges[i + 1]);
            n += row[n] < row[n + 1] ? 2 : 0;
        }
        if (top == clampEdge(top) && top < kReach.bottom)
            to.add(static_cast<Number>(top), static_cast<Number>(top + 1), n);
        ++top;
    }
    to.finish();
    return shape;
}

namespace {

/// `steps` times `slope` by `run`, rounded with halves up: how far the line has moved along its short axis.
Int alongShortAxis(Int steps, Int slope, Int run)
{
    if (run < Int{1} << 30)
        return (2 * steps * slope + run) / (2 * run);
    __extension__ using Wide = __int128;
    return static_cast<Int>((Wide{2} * steps * slope + run) / (Wide{2} * run));
}

/// The way of the integer line algorithm from one point to another, row by row: in each step the long axis moves by
/// one, the short one when the true line has passed the half.
struct LineWay {
    Int dx, dy, sx;
    Point from;

    LineWay(Point a, Point b) : dx(std::abs(b.h - a.h)), dy(std::abs(b.v - a.v)), sx(a.h < b.h ? 1 : -1), from(a) { }

    /// The first and last column that the way visits `row` rows from its start.
    std::pair<Int, Int> columns(Int row) const
    {
        if (dy >= dx) {
            const Int h = from.h + sx * (dy == 0 ? 0 : alongShortAxis(row, dx, dy));
            return {h, h};
        }
        // Step k is in row floor((2 k dy + dx) / 2 dx): solve for the first k of this row and of the next.
        return {from.h + sx * firstStep(row), from.h + sx * (std::min(firstStep(row + 1), dx + 1) - 1)};
    }

private:
    Int firstStep(Int row) const
    {
        if (row == 0)
            return 0;
        if (dy == 0)
            return dx + 1;
        __extension__ using Wide = __int128;
        const Wide twice = (Wide{2} * row - 1) * dx; // k is at least (2 row - 1) dx / 2 dy
        return static_cast<Int>((twice + 2 * dy - 1) / (Wide{2} * dy));
    }
};

} // namespace

Region Region::line(Point from, Point to, Point penSize, const Rect& within)
{
    if (penSize.v <= 0 || penSize.h <= 0)
        return {};
    if (from.v == to.v || from.h == to.h)
        return Region(Rect{std::min(from.v, to.v), std::min(from.h, to.h), std::max(from.v, to.v) + penSize.v,
            std::max(from.h, to.h) + penSize.h});

    const LineWay way(from, to);
    const bool down = from.v < to.v;
    const Int top = std::min(from.v, to.v), last = std::max(from.v, to.v);
    Region shape;
    BandWriter writer(shape);
    for (Int v = std::max(top, within.top); v < std::min(last + penSize.v, within.bottom); ++v) {
        // The pen covers this row from all places of the way in the rows above it that it reaches down from.
        const Int first = std::max(v - penSize.v + 1, top), until = std::min(v, last);
        const auto [a, b] = way.columns(down ? first - from.v : from.v - first);
        const auto [c, d] = way.columns(down ? until - from.v : from.v - until);
        writer.addSpan(v, v + 1, std::min({a, b, c, d}), std::max({a, b, c, d}) + penSize.h);
    }
    writer.finish();
    return shape;
}

// ---- the Toolbox's calls ----

static const Region& regionOf(const RgnHandle& r)
{
    static const Region none;
    return r ? r->region : none;
}

static void combineRgn(Region::Op op, const RgnHandle& a, const RgnHandle& b, const RgnHandle& dst)
{
    if (dst)
        Region::combine(op, regionOf(a), regionOf(b), dst->region);
}

RgnHandle NewRgn() { return std::make_shared<RgnRecord>(); }

void RectRgn(const RgnHandle& r, const Rect& rect)
{
    if (r)
        r->region = Region(rect);
}

void SetRectRgn(const RgnHandle& r, Int left, Int top, Int right, Int bottom)
{
    RectRgn(r, {top, left, bottom, right});
}

void CopyRgn(const RgnHandle& src, const RgnHandle& dst)
{
    if (dst)
        dst->region = regionOf(src);
}

void SetEmptyRgn(const RgnHandle& r) { RectRgn(r, {}); }

void OffsetRgn(const RgnHandle& r, Int dh, Int dv)
{
    if (r)
        r->region = r->region.offsetBy(dh, dv);
}

void SectRgn(const RgnHandle& a, const RgnHandle& b, const RgnHandle& dst)
{
    combineRgn(Region::Op::intersect, a, b, dst);
}
void UnionRgn(const RgnHandle& a, const RgnHandle& b, const RgnHandle& dst)
{
    combineRgn(Region::Op::unite, a, b, dst);
}
void DiffRgn(const RgnHandle& a, const RgnHandle& b, const RgnHandle& dst)
{
    combineRgn(Region::Op::subtract, a, b, dst);
}
void XorRgn(const RgnHandle& a, const RgnHandle& b, const RgnHandle& dst)
{
    combineRgn(Region::Op::exclusiveOr, a, b, dst);
}

bool EmptyRgn(const RgnHandle& r) { return regionOf(r).isEmpty(); }
bool PtInRgn(Point pt, const RgnHandle& r) { return regionOf(r).contains(pt); }
bool RectInRgn(const Rect& rect, const RgnHandle& r) { return regionOf(r).intersects(rect); }
bool EqualRgn(const RgnHandle& a, const RgnHandle& b) { return regionOf(a) == regionOf(b); }

} // namespace MacToolbox
