#include "MacToolbox/QuickDraw/Raster.h"
#include "MacToolbox/QuickDraw/Words.h"

#include <vector>

namespace MacToolbox {

using namespace Words;

namespace {

    /// For each byte its bits twice, as two bytes in memory order.
    struct DoubleTable {
        std::uint16_t twice[256];

        constexpr DoubleTable() : twice()
        {
            for (unsigned byte = 0; byte < 256; ++byte) {
                unsigned w = 0;
                for (unsigned i = 0; i < 8; ++i)
                    w |= (byte >> i & 1) * 3U << 2 * i;
                const bool little = std::endian::native == std::endian::little;
                twice[byte] = static_cast<std::uint16_t>(little ? (w >> 8 | w << 8) : w);
            }
        }
    };
    constexpr DoubleTable kDouble;

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
        BitMap source;                  // the source pixels in question, from a byte's edge on
        BitMap scaled;                  // those rows, scaled across
        std::vector<std::uint32_t> column; // where in `wide` each pixel of a scaled row comes from
        std::vector<Byte> wide;         // a source row, a byte a pixel

        static Workshop& shared()
        {
            static Workshop& shop = *new Workshop;
            return shop;
        }
        /// A map of that size in the block of `map`; what it holds is left over.
        static void shape(BitMap& map, Int width, Int height)
        {
            if (!map.baseAddr)
                map.baseAddr = NewHandle(0);
            map.bounds = {0, 0, height, width};
            map.rowBytes = ((width + 127) >> 7) * 16; // whole chunks
            const auto need = static_cast<std::size_t>(map.rowBytes * height);
            if (map.baseAddr->bytes.size() < need)
                map.baseAddr->bytes.resize(need);
        }
        static Byte* row(const BitMap& map, Int y)
        {
            return map.baseAddr->bytes.data() + static_cast<std::size_t>(y * map.rowBytes);
        }
    };

    /// The source row or column of one in the destination.
    struct Axis {
        Int dstFrom, dstSize, srcFrom, srcSize;

        Int source(Int at) const { return srcFrom + (at - dstFrom) * srcSize / dstSize; }
    };

    /// Exactly twice as wide and as high: each source byte becomes two, each row is put down twice.
    void scaleTwice(const BitMap& dst, const Rect& r, const Axis& across, const Axis& down, const BitMap& src, RasterOp op)
    {
        Workshop& shop = Workshop::shared();
        const Int left = across.source(r.left), right = across.source(r.right - 1) + 1;
        const Int top = down.source(r.top), bottom = down.source(r.bottom - 1) + 1;
        const Int width = right - left, skip = r.left - (across.dstFrom + 2 * (left - across.srcFrom));
        shop.shape(shop.source, width, 1);
        shop.shape(shop.scaled, 2 * width, 1);
        for (Int v = top; v < bottom; ++v) {
            blitPixels(shop.source, shop.source.bounds, src, {v, left}, {});
            const Byte* in = shop.row(shop.source, 0);
            Byte* out = shop.row(shop.scaled, 0);
            for (Int i = 0; i < (width + 7) >> 3; ++i)
                store(out + 2 * i, kDouble.twice[in[i]]);
            const Int first = down.dstFrom + 2 * (v - down.srcFrom);
            for (Int y = std::max(first, r.top); y < std::min(first + 2, r.bottom); ++y)
                blitPixels(dst, {y, r.left, y + 1, r.right}, shop.scaled, {0, skip}, op);
        }
    }

} // namespace

void scalePixels(const BitMap& dst, const Rect& r, const Rect& dstRect, const BitMap& src, const Rect& srcRect, RasterOp op)
{
    const Rect area = r.intersection(dst.bounds).intersection(dstRect);
    if (area.isEmpty() || srcRect.isEmpty())
        return;
    const Axis across {dstRect.left, dstRect.width(), srcRect.left, srcRect.width()};
    const Axis down {dstRect.top, dstRect.height(), srcRect.top, srcRect.height()};
    if (across.dstSize == 2 * across.srcSize && down.dstSize == 2 * down.srcSize)
        return scaleTwice(dst, area, across, down, src, op);

    // Only source pixels inside its bounds are fetched; the rest reads as 0 from one more byte behind them.
    Workshop& shop = Workshop::shared();
    const Int left = std::max(across.source(area.left), src.bounds.left);
    const Int right = std::min(across.source(area.right - 1) + 1, src.bounds.right);
    const Int width = std::max<Int>(right - left, 0), lead = (area.left - dst.bounds.left) & 7;
    const Int count = (lead + area.width() + 7) & ~Int {7};
    shop.shape(shop.source, std::max<Int>(width, 1), 1);
    shop.shape(shop.scaled, count, 1);
    shop.column.resize(static_cast<std::size_t>(count));
    shop.wide.resize(static_cast<std::size_t>(((width + 7) & ~Int {7}) + 1));
    const auto nothing = static_cast<std::uint32_t>(shop.wide.size() - 1);
    for (Int i = 0; i < count; ++i) {
        const Int x = across.source(std::clamp(area.left - lead + i, area.left, area.right - 1)) - left;
        shop.column[static_cast<std::size_t>(i)] = x >= 0 && x < width ? static_cast<std::uint32_t>(x) : nothing;
    }
    Byte* const wide = shop.wide.data();
    wide[nothing] = 0;
    Int held = src.bounds.top - 1; // the source row that `scaled` holds; none yet
    bool first = true;
    for (Int y = area.top; y < area.bottom; ++y) {
        const Int from = down.source(y);
        if (first || from != held) {
            first = false;
            held = from;
            blitPixels(shop.source, {0, 0, 1, width}, src, {from, left}, {});
            const Byte* in = shop.row(shop.source, 0);
            for (Int i = 0; i < (width + 7) >> 3; ++i)
                store(wide + 8 * i, kSpread.bits[in[i]]);
            const std::uint32_t* column = shop.column.data();
            Byte* out = shop.row(shop.scaled, 0);
            for (Int i = 0; i < count; i += 8, column += 8) {
                unsigned v = wide[column[0]];
                for (int k = 1; k < 8; ++k)
                    v = v * 2 + wide[column[k]];
                *out++ = static_cast<Byte>(v);
            }
        }
        blitPixels(dst, {y, area.left, y + 1, area.right}, shop.scaled, {0, lead}, op);
    }
}

} // namespace MacToolbox
