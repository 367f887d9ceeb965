#include "MacToolbox/QuickDraw/Raster.h"

#include "MacToolbox/QuickDraw/Paint.h"

namespace MacToolbox {

using namespace Words;

namespace {

// ---- the plain way, for bitmaps that do not lie in their block as they should ----

void paintPixel(const BitMap& dst, Int h, Int v, bool s, RasterOp op)
{
    s = s != op.invert;
    switch (op.kind) {
    case Kind::copy: dst.set(h, v, s); break;
    case Kind::set:
        if (s)
            dst.set(h, v, true);
        break;
    case Kind::flip:
        if (s)
            dst.set(h, v, !dst.get(h, v));
        break;
    case Kind::clear:
        if (s)
            dst.set(h, v, false);
        break;
    }
}

template <typename Source>
[[gnu::noinline]] void paintEachPixel(const BitMap& dst, const Rect& r, RasterOp op, Source&& source)
{
    if (!dst.baseAddr)
        return;
    for (Int v = r.top; v < r.bottom; ++v)
        for (Int h = r.left; h < r.right; ++h)
            paintPixel(dst, h, v, source(h, v), op);
}

/// True if `r` is not empty and lies in `outer`.
bool holds(const Rect& outer, const Rect& r)
{
    return r.top >= outer.top && r.left >= outer.left && r.bottom <= outer.bottom && r.right <= outer.right
        && !r.isEmpty();
}

// The loops keep what they need in variables of their own: a store of bytes could change anything else.

// ---- fills ----

template <Kind K> void fillWords(const Target& t, const PatternSource& source)
{
    const Word mask = maskOf(t.x0, t.x1);
    const Int whole = t.height - rowsBeyond(t.to, t.stride, t.height, 8, t.end);
    Byte* to = t.to;
    const Int stride = t.stride;
    for (Int y = source.top, end = y + whole; y < end; ++y, to += stride)
        store(to, mix<K>(load<Word>(to), source.rows[y & 7], mask));
    if (whole < t.height)
        paintNearRows<K>(t, source, whole, t.height);
}

/// Words that are all black; `K` is `set`, `flip` or `clear`.
template <Kind K> void fillSolidWords(const Target& t)
{
    const Word mask = maskOf(t.x0, t.x1);
    const Int near = rowsBeyond(t.to, t.stride, t.height, 8, t.end), stride = t.stride;
    Byte* to = t.to;
    for (Int n = t.height - near; n > 0; --n, to += stride)
        store(to, mix<K>(load<Word>(to), mask));
    for (Int n = near; n > 0; --n, to += stride)
        paintNear<K>(t, to, ~Word{0}, mask);
}

template <Kind K> void fillTarget(const Target& t, const PatternSource& source)
{
    if (t.x1 <= 64)
        return fillWords<K>(t, source);
    paintRows<K, true>(t, source, 0, rowsBeyond(t.to, t.stride, t.height, 16 * Extent::chunksOf(t.x1), t.end));
}

// ---- copies ----

/// A target whose rows are one word, from rows that are one word.
template <Kind K, typename Source> void blitWords(const Target& t, const Source& given)
{
    const Source source = given;
    const Word mask = maskOf(t.x0, t.x1);
    const Int whole = t.height
        - std::max(rowsBeyond(t.to, t.stride, t.height, 8, t.end),
            rowsBeyond(source.in, source.stride, t.height, 8, source.end));
    Byte* to = t.to;
    const Int stride = t.stride;
    for (Int y = 0; y < whole; ++y, to += stride)
        store(to, mix<K>(load<Word>(to), source.word(y), mask));
    for (Int y = whole; y < t.height; ++y)
        paintNear<K>(t, t.to + y * t.stride, source.nearWord(y), mask);
}

/// The same for at most 32 columns that need no move: an icon at a byte's edge, whose rows are the whole of its block.
template <Kind K> void blitHalfWords(const Target& t, const WordSource<0>& source)
{
    using Half = std::uint32_t;
    const Word wordMask = maskOf(t.x0, t.x1), wordInvert = source.invert;
    const Half mask = load<Half>(reinterpret_cast<const Byte*>(&wordMask));
    const Half invert = load<Half>(reinterpret_cast<const Byte*>(&wordInvert));
    const Int whole = t.height
        - std::max(rowsBeyond(t.to, t.stride, t.height, 4, t.end),
            rowsBeyond(source.in, source.stride, t.height, 4, source.end));
    Byte* to = t.to;
    const Byte* in = source.in;
    const Int stride = t.stride, inStride = source.stride;
    if (K == Kind::copy && mask == ~Half{0})
        for (Int y = 0; y < whole; ++y, to += stride, in += inStride)
            store(to, load<Half>(in) ^ invert);
    else
        for (Int y = 0; y < whole; ++y, to += stride, in += inStride)
            store(to, mix<K>(load<Half>(to), load<Half>(in) ^ invert, mask));
    for (Int y = whole; y < t.height; ++y)
        paintNear<K>(t, t.to + y * stride, source.nearWord(y), wordMask);
}

template <Kind K, bool shifted, bool inverted>
void blitChunks(const Target& t, const BitmapSource<shifted, inverted>& source)
{
    const Int bytes = 16 * Extent::chunksOf(t.x1);
    const Int lead = source.in < source.begin ? 1 : 0; // at most a byte before the first row, so at most one row
    const Int trail = std::max(rowsBeyond(t.to, t.stride, t.height, bytes, t.end),
        rowsBeyond(source.in, source.stride, t.height, source.reach(bytes), source.end));
    paintRows<K, !inverted>(t, source, lead, std::min(trail, t.height - lead));
}

template <Kind K> void blitTarget(const Target& t, const Rows& from, Int x, Int y, bool invert)
{
    if (t.x1 <= 32 && (x & 7) == t.x0)
        return blitHalfWords<K>(t, {from, x, y, t.x0, invert});
    if (withWordSource(from, x, y, t, invert, [&](const auto& source) { blitWords<K>(t, source); }))
        return;
    if ((x - t.x0) & 7) {
        if (invert)
            blitChunks<K>(t, BitmapSource<true, true>(from, x, y, t.x0));
        else
            blitChunks<K>(t, BitmapSource<true, false>(from, x, y, t.x0));
    } else if (invert) {
        blitChunks<K>(t, BitmapSource<false, true>(from, x, y, t.x0));
    } else {
        blitChunks<K>(t, BitmapSource<false, false>(from, x, y, t.x0));
    }
}

void blitInside(const BitMap& dst, const Rect& r, const BitMap& src, Point at, RasterOp op)
{
    Rows to, from;
    if (!Rows::of(dst, to) || !Rows::of(src, from))
        return paintEachPixel(dst, r, op, [&](Int h, Int v) { return src.get(at.h + h - r.left, at.v + v - r.top); });
    const Target t(to, r.left - dst.bounds.left, r.top - dst.bounds.top, r.width(), r.height());
    const Int x = at.h - src.bounds.left, y = at.v - src.bounds.top;
    forKind(op.kind, [&]<Kind K> { blitTarget<K>(t, from, x, y, op.invert); });
}

/// Calls `visit` for the up to four rectangles of `r` outside `inner`, which lies in it and is not empty.
template <typename Visit> void around(const Rect& r, const Rect& inner, Visit&& visit)
{
    const Rect parts[] = {{r.top, r.left, inner.top, r.right}, {inner.top, r.left, inner.bottom, inner.left},
        {inner.top, inner.right, inner.bottom, r.right}, {inner.bottom, r.left, r.bottom, r.right}};
    for (const Rect& part : parts)
        if (!part.isEmpty())
            visit(part);
}

// ---- masked copies ----

/// Columns of words, whatever the moves of image and mask.
void maskColumns(Target t, const BitmapSource<true, false>& image, const BitmapSource<true, false>& mask)
{
    const auto trailOf = [&](const auto& source, Int byte) {
        return rowsBeyond(source.in + byte, source.stride, t.height, source.reach(8), source.end);
    };
    for (Int x = 0; x < t.x1; x += 64, t.to += 8) {
        const Word edge = maskOf(x ? 0 : t.x0, std::min<Int>(t.x1 - x, 64));
        const Int byte = x >> 3;
        const Int lead = image.in + byte < image.begin || mask.in + byte < mask.begin ? 1 : 0;
        const Int trail =
            std::max({rowsBeyond(t.to, t.stride, t.height, 8, t.end), trailOf(image, byte), trailOf(mask, byte)});
        for (Int y = 0; y < t.height; ++y) {
            Byte* p = t.to + y * t.stride;
            if (y >= lead && y < t.height - trail)
                store(
                    p, mix<Kind::copy>(load<Word>(p), image.row(y).at<Word>(byte), mask.row(y).at<Word>(byte) & edge));
            else
                paintNear<Kind::copy>(t, p, image.nearWord(y, byte), mask.nearWord(y, byte) & edge);
        }
    }
}

template <typename Image, typename Mask> void maskWords(const Target& t, const Image& givenImage, const Mask& givenMask)
{
    const Image image = givenImage;
    const Mask mask = givenMask;
    const Word edge = maskOf(t.x0, t.x1);
    const Int whole = t.height
        - std::max(
            {rowsBeyond(t.to, t.stride, t.height, 8, t.end), rowsBeyond(image.in, image.stride, t.height, 8, image.end),
                rowsBeyond(mask.in, mask.stride, t.height, 8, mask.end)});
    Byte* to = t.to;
    const Int stride = t.stride;
    for (Int y = 0; y < whole; ++y, to += stride)
        store(to, mix<Kind::copy>(load<Word>(to), image.word(y), mask.word(y) & edge));
    for (Int y = whole; y < t.height; ++y)
        paintNear<Kind::copy>(t, t.to + y * t.stride, image.nearWord(y), mask.nearWord(y) & edge);
}

void maskTarget(const Target& t, const Rows& image, Int x, Int y, const Rows& mask, Int maskX, Int maskY)
{
    const bool done = withWordSource(mask, maskX, maskY, t, false, [&](const auto& maskSource) {
        if (!withWordSource(
                image, x, y, t, false, [&](const auto& imageSource) { maskWords(t, imageSource, maskSource); }))
            maskColumns(t, {image, x, y, t.x0}, {mask, maskX, maskY, t.x0});
    });
    if (!done)
        maskColumns(t, {image, x, y, t.x0}, {mask, maskX, maskY, t.x0});
}

} // namespace

void fillPixels(const BitMap& dst, const Rect& r, const Pattern& pattern, RasterOp op)
{
    if (op.constant)
        return fillPixels(dst, r, op.kind == Kind::set ? Pattern::black : Pattern::white, {});
    if (!holds(dst.bounds, r)) {
        const Rect area = r.intersection(dst.bounds);
        if (!area.isEmpty())
            fillPixels(dst, area, pattern, op);
        return;
    }
    const Int x = r.left - dst.bounds.left, y = r.top - dst.bounds.top;
    Rows to;
    if (!Rows::of(dst, to))
        return paintEachPixel(
            dst, r, op, [&](Int h, Int v) { return pattern.bit(h - dst.bounds.left, v - dst.bounds.top); });
    const Target t(to, x, y, r.width(), r.height());
    const Word bits = load<Word>(pattern.rows.data()) ^ (op.invert ? ~Word{0} : 0);
    if (t.x1 <= 64 && bits + 1 <= 1) { // all white or all black
        if (bits == 0)
            return op.kind == Kind::copy ? fillSolidWords<Kind::clear>(t) : void();
        if (op.kind == Kind::flip)
            return fillSolidWords<Kind::flip>(t);
        return op.kind == Kind::clear ? fillSolidWords<Kind::clear>(t) : fillSolidWords<Kind::set>(t);
    }
    const PatternSource source(pattern, y, op.invert);
    forKind(op.kind, [&]<Kind K> { fillTarget<K>(t, source); });
}

void blitPixels(const BitMap& dst, const Rect& r, const BitMap& src, Point at, RasterOp op)
{
    if (op.constant)
        return fillPixels(dst, r, Pattern::black, op);
    const Int dh = r.left - at.h, dv = r.top - at.v;
    if (holds(dst.bounds, r) && holds(src.bounds, r.offsetBy(-dh, -dv)) && src.baseAddr)
        return blitInside(dst, r, src, at, op);
    const Rect area = r.intersection(dst.bounds);
    if (area.isEmpty())
        return;
    const Rect inner = src.baseAddr ? area.intersection(src.bounds.offsetBy(dh, dv)) : Rect{};
    if (inner != area) { // outside the source its pixels count as 0
        const auto outside = [&](const Rect& part) {
            if (op.kind == Kind::copy || op.invert)
                fillPixels(dst, part, Pattern::white, op);
        };
        if (inner.isEmpty())
            return outside(area);
        around(area, inner, outside);
    }
    blitInside(dst, inner, src, {inner.top - dv, inner.left - dh}, op);
}

void maskPixels(const BitMap& dst, const Rect& r, const BitMap& src, Point at, const BitMap& mask, Point maskAt)
{
    const Int maskH = r.left - maskAt.h, maskV = r.top - maskAt.v, dh = r.left - at.h, dv = r.top - at.v;
    const Rect area = r.intersection(dst.bounds).intersection(mask.bounds.offsetBy(maskH, maskV));
    if (area.isEmpty() || !mask.baseAddr || !dst.baseAddr)
        return;
    const Rect inner = src.baseAddr ? area.intersection(src.bounds.offsetBy(dh, dv)) : Rect{};
    if (inner != area) { // outside the source its pixels count as 0
        const auto outside = [&](const Rect& part) {
            blitPixels(dst, part, mask, {part.top - maskV, part.left - maskH}, {Kind::clear, false, false});
        };
        if (inner.isEmpty())
            return outside(area);
        around(area, inner, outside);
    }
    Rows to, image, cut;
    if (Rows::of(dst, to) && Rows::of(src, image) && Rows::of(mask, cut)) {
        const Target t(to, inner.left - dst.bounds.left, inner.top - dst.bounds.top, inner.width(), inner.height());
        return maskTarget(t, image, inner.left - dh - src.bounds.left, inner.top - dv - src.bounds.top, cut,
            inner.left - maskH - mask.bounds.left, inner.top - maskV - mask.bounds.top);
    }
    for (Int v = inner.top; v < inner.bottom; ++v)
        for (Int h = inner.left; h < inner.right; ++h)
            if (mask.get(h - maskH, v - maskV))
                dst.set(h, v, src.get(h - dh, v - dv));
}

} // namespace MacToolbox
