#include "MacToolbox/QuickDraw/Raster.h"

#include "MacToolbox/QuickDraw/Words.h"

namespace MacToolbox {

using namespace Words;

RasterOp RasterOp::of(Int mode, bool fgDark, bool bkDark)
{
    const bool invert = (mode & 4) != 0;
    switch (mode & 3) {
    case 0:
        if (fgDark == bkDark)
            return {fgDark ? set : clear, false, true};
        return {copy, invert != bkDark, false};
    case 1: return {fgDark ? set : clear, invert, false};
    case 2: return {flip, invert, false};
    default: return {bkDark ? set : clear, invert, false};
    }
}

namespace {

    using Kind = RasterOp::Kind;

    /// `s` applied to `d` where `m` is 1.
    template <Kind K, typename T>
    T mix(T d, T s, T m)
    {
        if constexpr (K == Kind::copy)
            return d ^ ((d ^ s) & m);
        else if constexpr (K == Kind::set)
            return d | (s & m);
        else if constexpr (K == Kind::flip)
            return d ^ (s & m);
        else
            return d & ~(s & m);
    }
    template <Kind K, typename T>
    T mix(T d, T s)
    {
        if constexpr (K == Kind::copy)
            return s;
        else if constexpr (K == Kind::set)
            return d | s;
        else if constexpr (K == Kind::flip)
            return d ^ s;
        else
            return d & ~s;
    }

    /// Calls `run.operator()<K>()` for the kind.
    template <typename Run>
    void forKind(Kind kind, Run&& run)
    {
        switch (kind) {
        case Kind::copy: return run.template operator()<Kind::copy>();
        case Kind::set: return run.template operator()<Kind::set>();
        case Kind::flip: return run.template operator()<Kind::flip>();
        case Kind::clear: return run.template operator()<Kind::clear>();
        }
    }

    /// A rectangle of a bitmap in words or chunks from the byte of its left edge on.
    struct Target {
        Byte* to;   // first row, first byte
        Int stride;
        Int height;
        Int x0, x1; // the columns, from the left of that byte
        Byte *begin, *end;

        Target(const Rows& rows, Int x, Int y, Int width, Int rowCount)
            : to(rows.row(y) + (x >> 3)), stride(rows.stride), height(rowCount), x0(x & 7), x1(x0 + width),
              begin(rows.begin), end(rows.end)
        {
        }
    };

    /// How many rows at the end, of `height` from `p` on, reach beyond `end` when `length` bytes of each are touched.
    Int rowsBeyond(const Byte* p, Int stride, Int height, Int length, const Byte* end)
    {
        Int count = 0;
        for (Int room = end - (p + (height - 1) * stride); count < height && room < length; room += stride)
            ++count;
        return count;
    }

    /// A word of which some bytes may lie outside the block; these are 0. The block has 8 bytes at least.
    Word loadNear(const Byte* p, const Byte* begin, const Byte* end)
    {
        const Byte* q = std::clamp(p, begin, end - 8);
        return moveBytes(load<Word>(q), p - q);
    }

    // ---- sources of pixels ----

    struct PatternSource {
        Word rows[8]; // a byte, repeated, for each row from the first on

        PatternSource(const Pattern& pattern, Int firstRow, bool invert)
        {
            for (Int i = 0; i < 8; ++i)
                rows[i] = (pattern.rows[static_cast<std::size_t>((firstRow + i) & 7)] ^ (invert ? 0xFFU : 0U)) * kEveryByte;
        }
        void skipBytes(Int) {}

        struct Row {
            Word word;
            template <typename T>
            T at(Int) const
            {
                if constexpr (std::is_same_v<T, Chunk>)
                    return Chunk {word, word};
                else
                    return word;
            }
        };
        Row row(Int y) const { return {rows[y & 7]}; }
        Row nearRow(Int y) const { return row(y); }
    };

    template <bool shifted>
    struct BitmapSource {
        const Byte* in; // may lie before the block
        Int stride;
        Shift shift;
        Word invert; // all ones to turn the pixels over
        const Byte *begin, *end;

        /// The pixels from (x, y) on, such that they come to lie `lead` pixels from the left of the first byte.
        BitmapSource(const Rows& rows, Int x, Int y, Int lead, bool inverted)
            : in(rows.row(y) + ((x - lead) >> 3)), stride(rows.stride), shift((x - lead) & 7),
              invert(inverted ? ~Word {0} : 0), begin(rows.begin), end(rows.end)
        {
        }
        void skipBytes(Int count) { in += count; }
        /// What a load of `size` bytes at a place touches from there on.
        static constexpr Int reach(Int size) { return size + shifted; }

        struct Row {
            const Byte* p;
            const Shift& shift;
            Word invert;
            template <typename T>
            T at(Int byte) const
            {
                const T here = load<T>(p + byte);
                if constexpr (shifted)
                    return shift(here, load<T>(p + byte + 1)) ^ invert;
                else
                    return here ^ invert;
            }
        };
        Row row(Int y) const { return {in + y * stride, shift, invert}; }

        struct NearRow {
            const BitmapSource& source;
            const Byte* p;
            template <typename T>
            Word at(Int byte) const
            {
                const Word here = loadNear(p + byte, source.begin, source.end);
                if constexpr (shifted)
                    return source.shift(here, loadNear(p + byte + 1, source.begin, source.end)) ^ source.invert;
                else
                    return here ^ source.invert;
            }
        };
        NearRow nearRow(Int y) const { return {*this, in + y * stride}; }
    };

    // ---- the loops ----

    /// One word of one row, of which some bytes may lie outside the block.
    template <Kind K, typename SourceRow>
    void paintNear(const Target& t, Byte* p, const SourceRow& source, Word mask)
    {
        Byte* q = std::clamp(p, t.begin, t.end - 8);
        const Int moved = q - p;
        store(q, mix<K>(load<Word>(q), moveBytes(source.template at<Word>(0), moved), moveBytes(mask, moved)));
    }

    /// A rectangle of at most 64 columns from the left of its first byte on.
    template <Kind K, typename Source>
    void paintWords(Target t, Source source, Int lead, Int trail)
    {
        const Word mask = maskOf(t.x0, t.x1);
        Byte* to = t.to;
        for (Int y = 0; y < lead; ++y)
            paintNear<K>(t, to + y * t.stride, source.nearRow(y), mask);
        const Int stop = t.height - trail;
        for (Int y = lead; y < stop; ++y) {
            Byte* p = to + y * t.stride;
            store(p, mix<K>(load<Word>(p), source.row(y).template at<Word>(0), mask));
        }
        for (Int y = std::max(stop, lead); y < t.height; ++y)
            paintNear<K>(t, to + y * t.stride, source.nearRow(y), mask);
    }

    /// Whole rows of chunks; only the first and the last have pixels to keep.
    struct Extent {
        Int chunks;
        Chunk first, last;

        Extent(Int x0, Int x1) : chunks((((x1 + 7) >> 3) + 15) >> 4)
        {
            const Int tail = x1 - (chunks - 1) * 128;
            first = Chunk {maskOf(x0, 64), ~Word {0}};
            last = tail <= 64 ? Chunk {maskOf(0, tail), 0} : Chunk {~Word {0}, maskOf(0, tail - 64)};
            if (chunks == 1)
                first &= last;
        }
        bool isWhole() const
        {
            const Chunk both = first & last;
            return (both[0] & both[1]) == ~Word {0};
        }
    };

    template <Kind K, Int N, typename Source>
    void paintChunks(const Target& t, const Source& given, const Extent& extent, Int from, Int until)
    {
        const Source source = given;
        const Chunk first = extent.first, last = extent.last;
        const Int chunks = N ? N : extent.chunks;
        Byte* to = t.to + from * t.stride;
        if (K != Kind::copy || !extent.isWhole()) {
            for (Int y = from; y < until; ++y, to += t.stride) {
                const auto row = source.row(y);
                store(to, mix<K>(load<Chunk>(to), row.template at<Chunk>(0), first));
#pragma GCC unroll 8
                for (Int i = 1; i < chunks - 1; ++i)
                    store(to + 16 * i, mix<K>(load<Chunk>(to + 16 * i), row.template at<Chunk>(16 * i)));
                if (chunks > 1) {
                    const Int tail = 16 * (chunks - 1);
                    store(to + tail, mix<K>(load<Chunk>(to + tail), row.template at<Chunk>(tail), last));
                }
            }
            return;
        }
        for (Int y = from; y < until; ++y, to += t.stride) {
            const auto row = source.row(y);
#pragma GCC unroll 8
            for (Int i = 0; i < chunks; ++i)
                store(to + 16 * i, row.template at<Chunk>(16 * i));
        }
    }

    /// Some rows, too near the block's edge for whole chunks, a word at a time.
    template <Kind K, typename Source>
    void paintNearRows(const Target& t, Source source, Int from, Int until)
    {
        for (Int y = from; y < until; ++y) {
            Source rest = source;
            for (Int x = 0; x < t.x1; x += 64) {
                const Word mask = maskOf(x ? 0 : t.x0, std::min<Int>(t.x1 - x, 64));
                paintNear<K>(t, t.to + y * t.stride + (x >> 3), rest.nearRow(y), mask);
                rest.skipBytes(8);
            }
        }
    }

    /// Paints the target; `lead` and `trail` rows at its ends must not be touched by whole words.
    template <Kind K, typename Source>
    void paintRows(const Target& t, const Source& source, const Extent& extent, Int lead, Int trail)
    {
        const Int until = std::max(t.height - trail, lead);
        paintNearRows<K>(t, source, 0, lead);
        switch (extent.chunks) {
        case 1: paintChunks<K, 1>(t, source, extent, lead, until); break;
        case 2: paintChunks<K, 2>(t, source, extent, lead, until); break;
        case 3: paintChunks<K, 3>(t, source, extent, lead, until); break;
        case 4: paintChunks<K, 4>(t, source, extent, lead, until); break;
        case 5: paintChunks<K, 5>(t, source, extent, lead, until); break;
        default: paintChunks<K, 0>(t, source, extent, lead, until); break;
        }
        paintNearRows<K>(t, source, until, t.height);
    }

    template <Kind K>
    void fillTarget(const Target& t, const PatternSource& source)
    {
        if (t.x1 <= 64)
            return paintWords<K>(t, source, 0, rowsBeyond(t.to, t.stride, t.height, 8, t.end));
        const Extent extent(t.x0, t.x1);
        paintRows<K>(t, source, extent, 0, rowsBeyond(t.to, t.stride, t.height, 16 * extent.chunks, t.end));
    }

    template <Kind K, bool shifted>
    void blitTarget(const Target& t, const BitmapSource<shifted>& source)
    {
        const Int bytes = t.x1 <= 64 ? 8 : 16 * ((((t.x1 + 7) >> 3) + 15) >> 4);
        const Int lead = source.in < source.begin ? 1 : 0; // at most a byte before the first row, so at most one row
        const Int trail = std::max(rowsBeyond(t.to, t.stride, t.height, bytes, t.end),
            rowsBeyond(source.in, source.stride, t.height, source.reach(bytes), source.end));
        if (t.x1 <= 64)
            return paintWords<K>(t, source, std::min(lead, t.height), trail);
        paintRows<K>(t, source, Extent(t.x0, t.x1), std::min(lead, t.height), trail);
    }

    bool isSmall(const Rows& rows) { return rows.end - rows.begin < 8; }

    /// One pixel, the plain way.
    void paintPixel(const BitMap& dst, Int h, Int v, bool s, RasterOp op)
    {
        s = op.constant || s != op.invert;
        switch (op.kind) {
        case Kind::copy: dst.set(h, v, s); break;
        case Kind::set: if (s) dst.set(h, v, true); break;
        case Kind::flip: if (s) dst.set(h, v, !dst.get(h, v)); break;
        case Kind::clear: if (s) dst.set(h, v, false); break;
        }
    }

    template <typename Source>
    void paintEachPixel(const BitMap& dst, const Rect& r, RasterOp op, Source&& source)
    {
        if (!dst.baseAddr)
            return;
        for (Int v = r.top; v < r.bottom; ++v)
            for (Int h = r.left; h < r.right; ++h)
                paintPixel(dst, h, v, source(h, v), op);
    }

    void blitInside(const BitMap& dst, const Rect& r, const BitMap& src, Point at, RasterOp op)
    {
        Rows to, from;
        if (!Rows::of(dst, to) || !Rows::of(src, from) || isSmall(to) || isSmall(from))
            return paintEachPixel(dst, r, op,
                [&](Int h, Int v) { return src.get(at.h + h - r.left, at.v + v - r.top); });
        const Target t(to, r.left - dst.bounds.left, r.top - dst.bounds.top, r.width(), r.height());
        const Int x = at.h - src.bounds.left, y = at.v - src.bounds.top;
        forKind(op.kind, [&]<Kind K> {
            if ((x - t.x0) & 7)
                blitTarget<K>(t, BitmapSource<true>(from, x, y, t.x0, op.invert));
            else
                blitTarget<K>(t, BitmapSource<false>(from, x, y, t.x0, op.invert));
        });
    }

    /// Calls `visit` for the up to four rectangles of `r` outside `inner`, which lies in it and is not empty.
    template <typename Visit>
    void around(const Rect& r, const Rect& inner, Visit&& visit)
    {
        const Rect parts[] = {{r.top, r.left, inner.top, r.right}, {inner.top, r.left, inner.bottom, inner.left},
            {inner.top, inner.right, inner.bottom, r.right}, {inner.bottom, r.left, r.bottom, r.right}};
        for (const Rect& part : parts)
            if (!part.isEmpty())
                visit(part);
    }

} // namespace

void fillPixels(const BitMap& dst, const Rect& r, const Pattern& pattern, RasterOp op)
{
    if (op.constant)
        return fillPixels(dst, r, op.kind == Kind::set ? Pattern::black : Pattern::white, {});
    const Rect area = r.intersection(dst.bounds);
    if (area.isEmpty())
        return;
    const Int x = area.left - dst.bounds.left, y = area.top - dst.bounds.top;
    Rows to;
    if (!Rows::of(dst, to) || isSmall(to))
        return paintEachPixel(dst, area, op,
            [&](Int h, Int v) { return pattern.bit(h - dst.bounds.left, v - dst.bounds.top); });
    const Target t(to, x, y, area.width(), area.height());
    const PatternSource source(pattern, y, op.invert);
    forKind(op.kind, [&]<Kind K> { fillTarget<K>(t, source); });
}

void blitPixels(const BitMap& dst, const Rect& r, const BitMap& src, Point at, RasterOp op)
{
    const Rect area = r.intersection(dst.bounds);
    if (area.isEmpty())
        return;
    if (op.constant)
        return fillPixels(dst, area, Pattern::black, op);
    const Int dh = r.left - at.h, dv = r.top - at.v;
    const Rect inner = src.baseAddr ? area.intersection(src.bounds.offsetBy(dh, dv)) : Rect {};
    const auto outside = [&](const Rect& part) {
        if (op.kind == Kind::copy || op.invert)
            fillPixels(dst, part, Pattern::white, op);
    };
    if (inner.isEmpty())
        return outside(area);
    if (inner != area)
        around(area, inner, outside);
    blitInside(dst, inner, src, {inner.top - dv, inner.left - dh}, op);
}

namespace {

    /// One column of words of a masked copy.
    template <typename Image, typename Mask>
    void maskColumn(const Target& t, const Image& image, const Mask& mask, Word edge)
    {
        const Int lead = std::min<Int>(image.in < image.begin || mask.in < mask.begin ? 1 : 0, t.height);
        const Int trail = std::max({rowsBeyond(t.to, t.stride, t.height, 8, t.end),
            rowsBeyond(image.in, image.stride, t.height, image.reach(8), image.end),
            rowsBeyond(mask.in, mask.stride, t.height, mask.reach(8), mask.end)});
        const auto near = [&](Int from, Int until) {
            for (Int y = from; y < until; ++y)
                paintNear<Kind::copy>(t, t.to + y * t.stride, image.nearRow(y),
                    mask.nearRow(y).template at<Word>(0) & edge);
        };
        const Int stop = std::max(t.height - trail, lead);
        near(0, lead);
        for (Int y = lead; y < stop; ++y) {
            Byte* p = t.to + y * t.stride;
            const Word m = mask.row(y).template at<Word>(0) & edge;
            store(p, mix<Kind::copy>(load<Word>(p), image.row(y).template at<Word>(0), m));
        }
        near(stop, t.height);
    }

} // namespace

void maskPixels(const BitMap& dst, const Rect& r, const BitMap& src, Point at, const BitMap& mask, Point maskAt)
{
    const Int maskH = r.left - maskAt.h, maskV = r.top - maskAt.v, dh = r.left - at.h, dv = r.top - at.v;
    const Rect area = r.intersection(dst.bounds).intersection(mask.bounds.offsetBy(maskH, maskV));
    if (area.isEmpty() || !mask.baseAddr || !dst.baseAddr)
        return;
    const Rect inner = src.baseAddr ? area.intersection(src.bounds.offsetBy(dh, dv)) : Rect {};
    const RasterOp clear {Kind::clear, false, false};
    if (inner.isEmpty()) // a source of zeros
        return blitPixels(dst, area, mask, {area.top - maskV, area.left - maskH}, clear);
    if (inner != area)
        around(area, inner,
            [&](const Rect& part) { blitPixels(dst, part, mask, {part.top - maskV, part.left - maskH}, clear); });

    Rows to, image, cut;
    if (!Rows::of(dst, to) || !Rows::of(src, image) || !Rows::of(mask, cut) || isSmall(to) || isSmall(image)
        || isSmall(cut)) {
        for (Int v = inner.top; v < inner.bottom; ++v)
            for (Int h = inner.left; h < inner.right; ++h)
                if (mask.get(h - maskH, v - maskV))
                    dst.set(h, v, src.get(h - dh, v - dv));
        return;
    }
    Target t(to, inner.left - dst.bounds.left, inner.top - dst.bounds.top, inner.width(), inner.height());
    BitmapSource<true> imageSource(
        image, inner.left - dh - src.bounds.left, inner.top - dv - src.bounds.top, t.x0, false);
    BitmapSource<true> maskSource(
        cut, inner.left - maskH - mask.bounds.left, inner.top - maskV - mask.bounds.top, t.x0, false);
    for (Int x = 0; x < t.x1; x += 64) {
        maskColumn(t, imageSource, maskSource, maskOf(x ? 0 : t.x0, std::min<Int>(t.x1 - x, 64)));
        t.to += 8;
        imageSource.skipBytes(8);
        maskSource.skipBytes(8);
    }
}

} // namespace MacToolbox
