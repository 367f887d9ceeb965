#include "MacToolbox/QuickDraw/Raster.h"

#include "MacToolbox/QuickDraw/Paint.h"

#include <vector>

namespace MacToolbox {

using namespace Words;

namespace {

/// The source row or column of one in the destination.
struct Axis {
    Int dstFrom, dstSize, srcFrom, srcSize;

    Int source(Int at) const { return srcFrom + (at - dstFrom) * srcSize / dstSize; }
};

// ---- exactly twice as wide and as high ----

/// Each of the 64 pixels in the lower place of a pair, the other place empty.
Chunk spread(Word pixels)
{
    using Bytes16 = Byte __attribute__((vector_size(16)));
    constexpr Bytes16 first{15, 0, 15, 0, 15, 0, 15, 0, 15, 0, 15, 0, 15, 0, 15, 0}; // halves of each byte
    constexpr Bytes16 second{0, 15, 0, 15, 0, 15, 0, 15, 0, 15, 0, 15, 0, 15, 0, 15};
    const Bytes16 bytes = reinterpret_cast<Bytes16>(Chunk{pixels, 0});
    Chunk v =
        reinterpret_cast<Chunk>(__builtin_shufflevector(bytes, bytes, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7));
    v = (v >> 4 & reinterpret_cast<Chunk>(first)) | (v & reinterpret_cast<Chunk>(second));
    v = (v | v << 2) & 0x33 * kEveryByte;
    return (v | v << 1) & 0x55 * kEveryByte;
}

/// The rows of a bitmap, each pixel four times. `plain` is for rows that begin with a byte.
template <bool plain> struct DoubledSource {
    struct Place {
        const Byte* in; // may lie a byte before the block
        Shift shift;
        Place(const Rows& rows, Int x, Int y) : in(rows.row(y) + (x >> 3)), shift(x & 7) { }
    };
    Place even, odd; // where the pixels in the first and second place of each pair come from
    Int stride;
    Int phase; // 1 if the first row is the second one of its source row
    Word invert;
    const Byte *begin, *end;

    /// @param x  The source column of the first byte's first pair; with `half` that byte begins within the pair.
    DoubledSource(const Rows& rows, Int x, bool half, Int y, Int rowPhase, bool inverted)
        : even(rows, x, y), odd(rows, x + half, y), stride(rows.stride), phase(rowPhase),
          invert(inverted ? ~Word{0} : 0), begin(rows.begin), end(rows.end)
    {
    }
    /// How many bytes of a source row are touched when `size` bytes are asked for.
    static constexpr Int reach(Int size) { return size / 2 + (plain ? 0 : 2); }

    template <typename Load> Chunk chunk(Int at, Load&& get) const
    {
        if constexpr (plain) {
            const Chunk v = spread(get(even.in + at));
            return (v | v << 1) ^ invert;
        }
        const Chunk a = spread(even.shift(get(even.in + at), get(even.in + at + 1)));
        const Chunk b = spread(odd.shift(get(odd.in + at), get(odd.in + at + 1)));
        return (a << 1 | b) ^ invert;
    }
    struct Row {
        const DoubledSource& source;
        Int offset;
        template <typename T> Chunk at(Int byte) const { return source.chunk(offset + (byte >> 1), load<Word>); }
    };
    Row row(Int y) const { return {*this, ((phase + y) >> 1) * stride}; }
    Word nearWord(Int y, Int byte) const
    {
        const auto near = [this](const Byte* p) { return loadNear(p, begin, end); };
        return chunk(((phase + y) >> 1) * stride + (byte >> 1), near)[0];
    }
};

/// Whole pairs of rows from `from` on, each made once.
template <Kind K, bool whole, typename Source>
void paintPairs(const Target& t, const Source& source, const Extent& extent, Int from, Int until)
{
    const Chunk first = extent.first, last = extent.last;
    const Int chunks = extent.chunks, stride = t.stride;
    for (Int y = from; y < until; y += 2) {
        const auto row = source.row(y);
        Byte* to = t.to + y * stride;
        for (Int i = 0; i < chunks; ++i, to += 16) {
            const Chunk pixels = row.template at<Chunk>(16 * i);
            if (whole) {
                store(to, mix<K>(load<Chunk>(to), pixels));
                store(to + stride, mix<K>(load<Chunk>(to + stride), pixels));
            } else {
                const Chunk mask = i == 0 ? first : i == chunks - 1 ? last : ~Chunk{0, 0};
                store(to, mix<K>(load<Chunk>(to), pixels, mask));
                store(to + stride, mix<K>(load<Chunk>(to + stride), pixels, mask));
            }
        }
    }
}

template <Kind K, typename Source> void paintDoubled(const Target& t, const Source& source)
{
    const Extent extent(t.x0, t.x1);
    const Int bytes = 16 * extent.chunks, sourceRows = (source.phase + t.height + 1) >> 1;
    const Int lead = source.even.in < source.begin ? 2 - source.phase : source.phase;
    const Int trail = std::max(rowsBeyond(t.to, t.stride, t.height, bytes, t.end),
        2 * rowsBeyond(source.odd.in, source.stride, sourceRows, source.reach(bytes), source.end));
    const Int from = std::min(lead, t.height);
    const Int until = from + (std::max<Int>(t.height - trail - from, 0) & ~Int{1});
    paintNearRows<K>(t, source, 0, from);
    if (extent.isWhole())
        paintPairs<K, true>(t, source, extent, from, until);
    else
        paintPairs<K, false>(t, source, extent, from, until);
    paintNearRows<K>(t, source, until, t.height);
}

/// @return False if the bitmaps are not fit for it, or if it would read outside the source.
bool scaleTwice(const BitMap& dst, const Rect& r, const Axis& across, const Axis& down, const BitMap& src, RasterOp op)
{
    const Rect needed{
        down.source(r.top), across.source(r.left), down.source(r.bottom - 1) + 1, across.source(r.right - 1) + 1};
    Rows to, from;
    if (op.constant || needed != needed.intersection(src.bounds) || !Rows::of(dst, to) || !Rows::of(src, from))
        return false;
    const Target t(to, r.left - dst.bounds.left, r.top - dst.bounds.top, r.width(), r.height());
    const Int ahead = r.left - t.x0 - across.dstFrom; // pixels from the copy's left to the first byte's
    const Int x = across.srcFrom - src.bounds.left + (ahead >> 1), y = needed.top - src.bounds.top;
    const bool half = (ahead & 1) != 0;
    const Int phase = (r.top - down.dstFrom) & 1;
    forKind(op.kind, [&]<Kind K> {
        if (!half && (x & 7) == 0)
            paintDoubled<K>(t, DoubledSource<true>(from, x, half, y, phase, op.invert));
        else
            paintDoubled<K>(t, DoubledSource<false>(from, x, half, y, phase, op.invert));
    });
    return true;
}

// ---- any other size: rows of a byte a pixel, picked through a table of columns ----

/// For each byte its eight bits, a byte each, leftmost first.
struct SpreadTable {
    Word bits[256];

    constexpr SpreadTable() : bits()
    {
        for (Word byte = 0; byte < 256; ++byte) {
            Word w = 0;
            for (int i = 0; i < 8; ++i)
                w |= (byte >> (7 - i) & 1) << (56 - 8 * i);
            bits[byte] = inMemoryOrder(w);
        }
    }
};
constexpr SpreadTable kSpread;

/// Working memory of a scaled copy, kept from call to call. Game thread only.
struct Workshop {
    std::vector<std::uint32_t> column; // where in `wide` each pixel of a scaled row comes from
    std::vector<Byte> wide;            // a source row, a byte a pixel, and a 0 at its end
    std::vector<Byte> line;            // a scaled row, from the byte of the destination's left edge on
    BitMap source;                     // a source row, for sources that do not lie in their block as they should

    static Workshop& shared()
    {
        static Workshop& shop = *new Workshop;
        return shop;
    }
};

struct LineSource {
    const Byte* line;

    struct Row {
        const Byte* line;
        template <typename T> T at(Int byte) const { return load<T>(line + byte); }
    };
    Row row(Int) const { return {line}; }
    Word nearWord(Int, Int byte) const { return load<Word>(line + byte); }
};

/// Puts one row after another into the same columns of a bitmap.
class RowPainter {
public:
    RowPainter(const BitMap& dst, Int left, Int right, RasterOp op)
        : dst_(dst), left_(left), right_(right), x_(left - dst.bounds.left),
          extent_(x_ & 7, (x_ & 7) + right - left), op_{op.kind, false, false}, direct_(Rows::of(dst, rows_))
    {
    }
    /// `line` holds whole chunks, from the byte of the left edge on.
    void paint(Int v, const std::vector<Byte>& line)
    {
        if (!direct_) {
            const Handle block = std::make_shared<Block>(line);
            const BitMap map(block, 0, I(line.size()), {v, left_ - (x_ & 7), v + 1, right_});
            return blitPixels(dst_, {v, left_, v + 1, right_}, map, {v, left_}, op_);
        }
        const Target t(rows_, x_, v - dst_.bounds.top, right_ - left_, 1);
        const LineSource source{line.data()};
        forKind(op_.kind, [&]<Kind K> {
            if (t.end - t.to >= 16 * extent_.chunks)
                paintChunks<K, 0>(t, source, extent_, 0, 1);
            else
                paintNearRows<K>(t, source, 0, 1);
        });
    }

private:
    const BitMap& dst_;
    Int left_, right_, x_;
    Extent extent_;
    RasterOp op_;
    Rows rows_{};
    bool direct_;
};

/// The bytes of a source row that hold columns `left` to `right - 1`; the first holds `left - skip`.
const Byte* sourceBytes(const BitMap& src, Int v, Int left, Int right, Int skip)
{
    Rows rows;
    if (v < src.bounds.top || v >= src.bounds.bottom || left >= right)
        return nullptr;
    if (Rows::of(src, rows))
        return rows.row(v - src.bounds.top) + ((left - src.bounds.left) >> 3);
    BitMap& copy = Workshop::shared().source;
    const Rect row{v, left - skip, v + 1, right};
    copy = BitMap(row);
    blitPixels(copy, row, src, row.topLeft(), {});
    return copy.baseAddr->bytes.data();
}

} // namespace

void scalePixels(
    const BitMap& dst, const Rect& r, const Rect& dstRect, const BitMap& src, const Rect& srcRect, RasterOp op)
{
    const Rect area = r.intersection(dst.bounds).intersection(dstRect);
    if (area.isEmpty() || srcRect.isEmpty())
        return;
    if (op.constant)
        return fillPixels(dst, area, Pattern::black, op);
    const Axis across{dstRect.left, dstRect.width(), srcRect.left, srcRect.width()};
    const Axis down{dstRect.top, dstRect.height(), srcRect.top, srcRect.height()};
    if (across.dstSize == 2 * across.srcSize && down.dstSize == 2 * down.srcSize
        && scaleTwice(dst, area, across, down, src, op))
        return;

    // Only columns inside the source are fetched; for the others there is a 0 behind them.
    Workshop& shop = Workshop::shared();
    const Int left = std::max(across.source(area.left), src.bounds.left);
    const Int right = std::max(std::min(across.source(area.right - 1) + 1, src.bounds.right), left);
    const Int skip = (left - src.bounds.left) & 7, bytes = (skip + right - left + 7) >> 3;
    const Int lead = (area.left - dst.bounds.left) & 7, count = (lead + area.width() + 7) & ~Int{7};
    shop.line.assign(static_cast<std::size_t>(16 * Extent::chunksOf(count)), 0);
    shop.wide.resize(static_cast<std::size_t>(8 * bytes + 1));
    shop.column.resize(static_cast<std::size_t>(count));
    Byte* const wide = shop.wide.data();
    const auto nothing = static_cast<std::uint32_t>(8 * bytes);
    wide[nothing] = 0;
    for (Int i = 0; i < count; ++i) {
        const Int h = across.source(std::clamp(area.left - lead + i, area.left, area.right - 1));
        shop.column[static_cast<std::size_t>(i)] =
            h >= left && h < right ? static_cast<std::uint32_t>(h - left + skip) : nothing;
    }

    RowPainter painter(dst, area.left, area.right, op);
    const unsigned flip = op.invert ? 0xFFU : 0U;
    Int held = down.source(area.top) - 1; // the source row in `line`; none yet
    for (Int v = area.top; v < area.bottom; ++v) {
        const Int from = down.source(v);
        if (from != held) {
            held = from;
            const Byte* in = sourceBytes(src, from, left, right, skip);
            for (Int i = 0; i < bytes; ++i)
                store(wide + 8 * i, in ? kSpread.bits[in[i]] : Word{0});
            const std::uint32_t* column = shop.column.data();
            Byte* out = shop.line.data();
            for (Int i = 0; i < count; i += 8, column += 8) {
                unsigned pixels = wide[column[0]];
                for (int k = 1; k < 8; ++k)
                    pixels = pixels * 2 + wide[column[k]];
                *out++ = static_cast<Byte>(pixels ^ flip);
            }
        }
        painter.paint(v, shop.line);
    }
}

} // namespace MacToolbox
