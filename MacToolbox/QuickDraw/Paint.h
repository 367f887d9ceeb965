#pragma once

#include "MacToolbox/QuickDraw/Raster.h"
#include "MacToolbox/QuickDraw/Words.h"

// The loops over words and chunks, made for each kind of operation and each source of pixels. A source gives, for a row
// counted from the target's first, the pixels of a word or chunk some bytes from the target's first byte.

namespace MacToolbox::Words {

using Kind = RasterOp::Kind;

/// `s` applied to `d` where `m` is 1.
template <Kind K, typename T> T mix(T d, T s, T m)
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
template <Kind K, typename T> T mix(T d, T s)
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
template <typename Run> void forKind(Kind kind, Run&& run)
{
    switch (kind) {
    case Kind::copy: return run.template operator()<Kind::copy>();
    case Kind::set: return run.template operator()<Kind::set>();
    case Kind::flip: return run.template operator()<Kind::flip>();
    case Kind::clear: return run.template operator()<Kind::clear>();
    }
}

/// A rectangle of a bitmap, from the byte of its left edge on.
struct Target {
    Byte* to; // first row, first byte
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
inline Int rowsBeyond(const Byte* p, Int stride, Int height, Int length, const Byte* end)
{
    Int count = 0;
    for (Int room = end - (p + (height - 1) * stride); room < length && count < height; room += stride)
        ++count;
    return count;
}

/// A word of which some bytes may lie outside the block; these are 0.
inline Word loadNear(const Byte* p, const Byte* begin, const Byte* end)
{
    const Byte* q = std::clamp(p, begin, end - 8);
    return moveBytes(load<Word>(q), p - q);
}

/// `source` applied to a word of the target, of which some bytes may lie outside the block.
template <Kind K> void paintNear(const Target& t, Byte* p, Word source, Word mask)
{
    Byte* q = std::clamp(p, t.begin, t.end - 8);
    const Int moved = q - p;
    store(q, mix<K>(load<Word>(q), moveBytes(source, moved), moveBytes(mask, moved)));
}

/// The columns of a target as chunks; only the first and the last have pixels to keep.
struct Extent {
    Int chunks;
    Chunk first, last;

    static Int chunksOf(Int x1) { return (((x1 + 7) >> 3) + 15) >> 4; }
    Extent(Int x0, Int x1) : chunks(chunksOf(x1))
    {
        const Int tail = x1 - (chunks - 1) * 128;
        first = Chunk{maskOf(x0, 64), ~Word{0}};
        last = tail <= 64 ? Chunk{maskOf(0, tail), 0} : Chunk{~Word{0}, maskOf(0, tail - 64)};
        if (chunks == 1)
            first &= last;
    }
    bool isWhole() const
    {
        const Chunk both = first & last;
        return (both[0] & both[1]) == ~Word{0};
    }
};

/// Rows `from` to `until - 1`, of `N` chunks, or of any number for 0.
template <Kind K, Int N, typename Source>
void paintChunks(const Target& t, const Source& given, const Extent& extent, Int from, Int until)
{
    const Source source = given;
    const Chunk first = extent.first, last = extent.last;
    const Int chunks = N ? N : extent.chunks, stride = t.stride;
    Byte* to = t.to + from * stride;
    if (K == Kind::copy && extent.isWhole()) {
        for (Int y = from; y < until; ++y, to += stride) {
            const auto row = source.row(y);
#pragma GCC unroll 8
            for (Int i = 0; i < chunks; ++i)
                store(to + 16 * i, row.template at<Chunk>(16 * i));
        }
        return;
    }
    for (Int y = from; y < until; ++y, to += stride) {
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
}

/// Rows too near the block's edge for whole chunks, a word at a time.
template <Kind K, typename Source>
[[gnu::noinline]] void paintNearRows(const Target& t, const Source& source, Int from, Int until)
{
    for (Int y = from; y < until; ++y)
        for (Int x = 0; x < t.x1; x += 64)
            paintNear<K>(t, t.to + y * t.stride + (x >> 3), source.nearWord(y, x >> 3),
                maskOf(x ? 0 : t.x0, std::min<Int>(t.x1 - x, 64)));
}

/// Paints the target; `lead` and `trail` rows at its ends must not be touched by whole chunks.
template <Kind K, bool unrolled, typename Source>
void paintRows(const Target& t, const Source& source, Int lead, Int trail)
{
    const Extent extent(t.x0, t.x1);
    const Int until = std::max(t.height - trail, lead);
    if (lead > 0)
        paintNearRows<K>(t, source, 0, lead);
    switch (unrolled ? extent.chunks : 0) {
    case 1: paintChunks<K, 1>(t, source, extent, lead, until); break;
    case 2: paintChunks<K, 2>(t, source, extent, lead, until); break;
    case 3: paintChunks<K, 3>(t, source, extent, lead, until); break;
    case 4: paintChunks<K, 4>(t, source, extent, lead, until); break;
    case 5: paintChunks<K, 5>(t, source, extent, lead, until); break;
    default: paintChunks<K, 0>(t, source, extent, lead, until); break;
    }
    if (until < t.height)
        paintNearRows<K>(t, source, until, t.height);
}

/// A pattern, aligned to the bitmap's top.
struct PatternSource {
    Word rows[8]; // each a byte, repeated
    Int top;      // of the target

    PatternSource(const Pattern& pattern, Int firstRow, bool invert) : top(firstRow)
    {
        const unsigned flip = invert ? 0xFFU : 0U;
        for (std::size_t i = 0; i < 8; ++i)
            rows[i] = (pattern.rows[i] ^ flip) * kEveryByte;
    }

    struct Row {
        Word word;
        template <typename T> T at(Int) const
        {
            if constexpr (std::is_same_v<T, Chunk>)
                return Chunk{word, word};
            else
                return word;
        }
    };
    Row row(Int y) const { return {rows[(top + y) & 7]}; }
    Word nearWord(Int y, Int) const { return rows[(top + y) & 7]; }
};

/// The rows of another bitmap.
template <bool shifted, bool inverted> struct BitmapSource {
    const Byte* in; // may lie a byte before the block
    Int stride;
    Shift shift;
    const Byte *begin, *end;

    /// The pixels from (x, y) on, such that they come to lie `lead` pixels from the left of the first byte.
    BitmapSource(const Rows& rows, Int x, Int y, Int lead)
        : in(rows.row(y) + ((x - lead) >> 3)), stride(rows.stride), shift((x - lead) & 7), begin(rows.begin),
          end(rows.end)
    {
    }
    /// How many bytes of a row are touched when `size` bytes are asked for.
    static constexpr Int reach(Int size) { return size + shifted; }

    struct Row {
        const Byte* p;
        const Shift& shift;
        template <typename T> T at(Int byte) const
        {
            T pixels = load<T>(p + byte);
            if constexpr (shifted)
                pixels = shift(pixels, load<T>(p + byte + 1));
            return inverted ? ~pixels : pixels;
        }
    };
    Row row(Int y) const { return {in + y * stride, shift}; }
    Word nearWord(Int y, Int byte) const
    {
        const Byte* p = in + y * stride + byte;
        Word pixels = loadNear(p, begin, end);
        if constexpr (shifted)
            pixels = shift(pixels, loadNear(p + 1, begin, end));
        return inverted ? ~pixels : pixels;
    }
};

/// The rows of another bitmap, for targets of which a row is one word and needs no more than one word of the source.
template <int direction> // of the move: -1 to the left, 1 to the right, 0 for none
struct WordSource {
    const Byte* in;
    Int stride;
    unsigned pixels; // 0 to 7
    Word invert;
    const Byte *begin, *end;

    WordSource(const Rows& rows, Int x, Int y, Int lead, bool inverted)
        : in(rows.row(y) + (x >> 3)), stride(rows.stride),
          pixels(static_cast<unsigned>(direction < 0 ? (x & 7) - lead : lead - (x & 7))),
          invert(inverted ? ~Word{0} : 0), begin(rows.begin), end(rows.end)
    {
    }
    Word moved(Word w) const
    {
        if constexpr (direction < 0)
            w = inMemoryOrder(inMemoryOrder(w) << pixels);
        else if constexpr (direction > 0)
            w = inMemoryOrder(inMemoryOrder(w) >> pixels);
        return w ^ invert;
    }
    Word word(Int y) const { return moved(load<Word>(in + y * stride)); }
    Word nearWord(Int y) const { return moved(loadNear(in + y * stride, begin, end)); }
};

/// Calls `run` with the source that fits: the pixels from (x, y) on, for a target of at most 64 columns from its first
/// byte on. @return False if a row takes more than a word of the source.
template <typename Run> bool withWordSource(const Rows& rows, Int x, Int y, const Target& t, bool inverted, Run&& run)
{
    const Int move = (x & 7) - t.x0;
    if (t.x1 > 64 || move + t.x1 > 64)
        return false;
    if (move == 0)
        run(WordSource<0>(rows, x, y, t.x0, inverted));
    else if (move < 0)
        run(WordSource<1>(rows, x, y, t.x0, inverted));
    else
        run(WordSource<-1>(rows, x, y, t.x0, inverted));
    return true;
}

} // namespace MacToolbox::Words
