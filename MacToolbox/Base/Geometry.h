#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

namespace MacToolbox {

/// The integer of every Toolbox interface: 64 bits, signed, also where the classic interface had 16 or 32.
using Int = std::int64_t;
/// A result code; 0 is success.
using OSErr = Int;

/// Any integer type as `Int`.
template <typename T> constexpr Int I(T x) { return static_cast<Int>(x); }

/// Bits 16 to 31 of `x`, sign-extended from 16 bits.
constexpr Int HiWord(Int x) { return static_cast<std::int16_t>(static_cast<std::uint64_t>(x) >> 16); }
/// Bits 0 to 15 of `x`, sign-extended from 16 bits.
constexpr Int LoWord(Int x) { return static_cast<std::int16_t>(x); }

/// A point; `v` grows downward, `h` to the right.
struct Point {
    Int v = 0, h = 0;

    bool operator==(const Point&) const = default;

    /// From a packed long: `v` in bits 16 to 31, `h` in bits 0 to 15, each sign-extended.
    static constexpr Point fromLong(Int packed) { return {HiWord(packed), LoWord(packed)}; }
    /// Packs both halves, sign-extended from 32 bits.
    constexpr Int toLong() const
    {
        return static_cast<std::int32_t>(
            (static_cast<std::uint32_t>(v) << 16) | (static_cast<std::uint32_t>(h) & 0xFFFFU));
    }
    /// "(h,v)".
    std::string description() const;
};

/// A rectangle of pixels; `bottom` and `right` are exclusive.
struct Rect {
    Int top = 0, left = 0, bottom = 0, right = 0;

    bool operator==(const Rect&) const = default;

    constexpr Int width() const { return right - left; }
    constexpr Int height() const { return bottom - top; }
    constexpr bool isEmpty() const { return top >= bottom || left >= right; }
    constexpr Point topLeft() const { return {top, left}; }
    constexpr Point botRight() const { return {bottom, right}; }
    constexpr bool contains(Point p) const { return p.v >= top && p.v < bottom && p.h >= left && p.h < right; }
    constexpr bool contains(Int h, Int v) const { return contains(Point{v, h}); }

    constexpr Rect offsetBy(Int dh, Int dv) const { return {top + dv, left + dh, bottom + dv, right + dh}; }
    constexpr void offset(Int dh, Int dv) { *this = offsetBy(dh, dv); }
    /// All four sides moved inward; all zeros if nothing is left.
    constexpr Rect insetBy(Int dh, Int dv) const
    {
        const Rect r{top + dv, left + dh, bottom - dv, right - dh};
        return r.isEmpty() ? Rect{} : r;
    }
    constexpr void inset(Int dh, Int dv) { *this = insetBy(dh, dv); }
    /// The overlap, or all zeros if there is none.
    constexpr Rect intersection(const Rect& o) const
    {
        const Rect r{
            std::max(top, o.top), std::max(left, o.left), std::min(bottom, o.bottom), std::min(right, o.right)};
        return r.isEmpty() ? Rect{} : r;
    }
    constexpr bool intersects(const Rect& o) const { return !intersection(o).isEmpty(); }
    /// The smallest rectangle holding both; of two empty ones this one.
    constexpr Rect unionWith(const Rect& o) const
    {
        if (o.isEmpty())
            return *this;
        if (isEmpty())
            return o;
        return {std::min(top, o.top), std::min(left, o.left), std::max(bottom, o.bottom), std::max(right, o.right)};
    }
    /// "(t1 l2 b3 r4)".
    std::string description() const;
};

/// The conventional "infinite" rectangle.
inline constexpr Rect kHugeRect{-32767, -32767, 32767, 32767};

/// Stores the four values, with no normalising.
inline void SetRect(Rect& r, Int left, Int top, Int right, Int bottom) { r = {top, left, bottom, right}; }
inline void OffsetRect(Rect& r, Int dh, Int dv) { r.offset(dh, dv); }
/// An empty result becomes all zeros.
inline void InsetRect(Rect& r, Int dh, Int dv) { r.inset(dh, dv); }
/// Stores the overlap, all zeros if there is none. @return True if there is one.
bool SectRect(const Rect& a, const Rect& b, Rect& dst);
/// Stores the smallest rectangle holding both. If `a` is empty that is `b`, even if empty.
void UnionRect(const Rect& a, const Rect& b, Rect& dst);
/// The rectangle with the two points as opposite corners.
void Pt2Rect(Point a, Point b, Rect& dst);
inline bool PtInRect(Point p, const Rect& r) { return r.contains(p); }
/// Compares all four fields: two different empty rectangles are not equal.
inline bool EqualRect(const Rect& a, const Rect& b) { return a == b; }
inline bool EmptyRect(const Rect& r) { return r.isEmpty(); }

inline void SetPt(Point& p, Int h, Int v) { p = {v, h}; }
inline void AddPt(Point src, Point& dst) { dst = {dst.v + src.v, dst.h + src.h}; }
/// `dst` becomes `dst - src`.
inline void SubPt(Point src, Point& dst) { dst = {dst.v - src.v, dst.h - src.h}; }
inline bool EqualPt(Point a, Point b) { return a == b; }

} // namespace MacToolbox
