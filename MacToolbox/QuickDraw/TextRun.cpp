#include "MacToolbox/QuickDraw/ClipArea.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/Raster.h"
#include "MacToolbox/QuickDraw/Screen.h"
#include "MacToolbox/QuickDraw/Words.h"

// Drawing text: the glyphs of a run are put together in a strip of their own, and the strip is painted once.

namespace MacToolbox {

using namespace Words;

namespace {

struct Placed {
    const StyledGlyph* glyph;
    Int left; // of its image
};

/// Some glyphs of one style on one baseline.
struct Run {
    static constexpr std::size_t kMost = 128;
    Placed placed[kMost];
    std::size_t count = 0;
    Int left = 0, right = 0; // what they cover
};

/// Working memory, kept from run to run. Game thread only.
struct Strip {
    std::vector<Word> columns; // 64 pixels wide each, `columnHeight` words from the top down
    BitMap rows;               // the same, as a bitmap

    static Strip& shared()
    {
        static Strip& strip = *new Strip;
        return strip;
    }
    /// `rows` with those bounds, whole columns wide.
    const BitMap& shape(const Rect& bounds, bool white)
    {
        rows.rowBytes = bounds.width() / 8;
        rows.bounds = bounds;
        if (!rows.baseAddr)
            rows.baseAddr = NewHandle(0);
        const auto need = static_cast<std::size_t>(rows.rowBytes * bounds.height());
        Bytes& bytes = rows.baseAddr->bytes;
        if (bytes.size() < need)
            bytes.resize(need);
        if (white)
            std::fill_n(bytes.begin(), need, Byte{0});
        return rows;
    }
};

/// Puts `2 * N` rows of the glyphs' images, from `firstRow` on, into the strip's columns, `height` words each.
template <bool flips, int N>
void assembleRows(const Run& run, Int origin, Int firstRow, Word* words, Int columns, Int height)
{
    Chunk rows[N]{}; // of the column at hand
    Int current = -1;
    const auto putDown = [&] {
        if (current < 0 || current >= columns)
            return;
        Byte* to = reinterpret_cast<Byte*>(words + current * height);
        for (int k = 0; k < N; ++k, to += 16)
            store(to, flips ? load<Chunk>(to) ^ rows[k] : load<Chunk>(to) | rows[k]);
    };
    for (std::size_t i = 0; i < run.count; ++i) {
        const StyledGlyph& g = *run.placed[i].glyph;
        const Word* from = g.words.data() + firstRow;
        Int x = run.placed[i].left - origin;
        for (Int left = g.width; left > 0; left -= 64, x += 64, from += g.columnHeight()) {
            const auto bits = static_cast<unsigned>(x & 63);
            if (x >> 6 != current) {
                putDown();
                current = x >> 6;
                for (Chunk& row : rows)
                    row = Chunk{};
            }
            const Byte* in = reinterpret_cast<const Byte*>(from);
#pragma GCC unroll 8
            for (int k = 0; k < N; ++k) {
                const Chunk moved = load<Chunk>(in + 16 * k) >> bits;
                rows[k] = flips ? rows[k] ^ moved : rows[k] | moved;
            }
            if (I(bits) + std::min<Int>(left, 64) > 64) {
                putDown();
                ++current;
#pragma GCC unroll 8
                for (int k = 0; k < N; ++k)
                    rows[k] = load<Chunk>(in + 16 * k) << (64 - bits);
            }
        }
    }
    putDown();
}

template <bool flips> void assemble(const Run& run, Int origin, Int firstRow, Word* words, Int columns, Int height)
{
    for (Int row = 0; row < height; row += 16) {
        const auto part = [&]<int N> {
            assembleRows<flips, N>(run, origin, firstRow + row, words + row, columns, height);
        };
        switch (std::min<Int>(height - row, 16) / 2) {
        case 1: part.template operator()<1>(); break;
        case 2: part.template operator()<2>(); break;
        case 3: part.template operator()<3>(); break;
        case 4: part.template operator()<4>(); break;
        case 5: part.template operator()<5>(); break;
        case 6: part.template operator()<6>(); break;
        case 7: part.template operator()<7>(); break;
        default: part.template operator()<8>(); break;
        }
    }
}

/// Paints the part of a run that lies in `area`, with the top of its images at `top`.
void paintRun(const BitMap& bits, const ClipArea& clip, const Run& run, Int top, RasterOp op)
{
    if (run.count == 0)
        return;
    const Rect area = clip.box().intersection({top, run.left, top + run.placed[0].glyph->height, run.right});
    if (area.isEmpty())
        return;
    // Strip and bitmap share the edges of their bytes.
    const Int origin = area.left - ((area.left - bits.bounds.left) & 7);
    const Int height = (area.height() + 1) & ~Int{1}, columns = ((area.right - origin) + 63) >> 6;
    Strip& strip = Strip::shared();
    strip.columns.assign(static_cast<std::size_t>(columns * height), 0);
    Word* const words = strip.columns.data();
    if (op.kind == RasterOp::flip)
        assemble<true>(run, origin, area.top - top, words, columns, height);
    else
        assemble<false>(run, origin, area.top - top, words, columns, height);

    const BitMap& rows = strip.shape({area.top, origin, area.bottom, origin + columns * 64}, !clip.isRect());
    Byte* const out = rows.baseAddr->bytes.data();
    clip.forEachRect(area, [&](const Rect& r) { // only what the clip lets through
        const Int left = r.left - origin, right = r.right - origin;
        for (Int c = left >> 6; c << 6 < right; ++c) {
            Word keep = ~Word{0};
            if (!clip.isRect())
                keep = inMemoryOrder(maskOf(std::max<Int>(left - c * 64, 0), std::min<Int>(right - c * 64, 64)));
            const Word* in = words + c * height + (r.top - area.top);
            Byte* to = out + (r.top - area.top) * rows.rowBytes + c * 8;
            for (Int v = r.top; v < r.bottom; ++v, to += rows.rowBytes)
                store(to, (clip.isRect() ? Word{0} : load<Word>(to)) | inMemoryOrder(*in++ & keep));
        }
    });
    blitPixels(bits, area, rows, area.topLeft(), op);
}

/// Text modes paint the pixels of a glyph alone: bit 2 only changes the colour.
RasterOp textOp(const GrafPort& port)
{
    const bool dark = (port.txMode & 3) == 3 || (port.txMode & 4) ? port.bkColor.isBlack() : port.fgColor.isBlack();
    return {(port.txMode & 3) == 2 ? RasterOp::flip : dark ? RasterOp::set : RasterOp::clear, false, false};
}

} // namespace

void FontManager::draw(GrafPort& port, std::span<const std::uint8_t> characters)
{
    const auto [strike, face] = this->strike(port.txFont, port.txSize, port.txFace);
    if (!strike)
        return;
    if (port.recording) {
        port.pnLoc.h += width(port, characters);
        return;
    }
    ClipArea clip(port);
    Screen::shared().noteChange(port.portBits);
    const Point start = port.pnLoc;
    const RasterOp op = textOp(port);
    const bool erases = (port.txMode & 7) == srcCopy;
    const Int imageFace = face & ~underline;
    StyleTable& styles = table(strike, imageFace);

    Run run;
    Int x = start.h, top = start.v;
    const auto paint = [&] {
        paintRun(port.portBits, clip, run, top, op);
        run.count = 0;
    };
    for (const std::uint8_t c : characters) {
        const StyledGlyph& g = styles.glyph(c, imageFace);
        if (erases)
            port.fill(
                Rect{start.v - strike->ascent, x, start.v + strike->descent, x + g.advance}, Pattern::white, patCopy);
        const Int left = x + g.left, right = left + g.width;
        if (g.width > 0 && left < clip.box().right
            && right > clip.box().left) { // same top and height in all of a style
            top = start.v + g.top;
            run.left = run.count ? std::min(run.left, left) : left;
            run.right = run.count ? std::max(run.right, right) : right;
            run.placed[run.count++] = {&g, left};
            if (erases || run.count == Run::kMost)
                paint();
        }
        x += g.advance + (c == ' ' ? port.spExtra : 0);
    }
    paint();

    if (face & underline) {
        const PenState pen = port.penState();
        port.setPenState({{start.v + 1, start.h}, {1, 1}, patCopy, Pattern::black});
        port.lineTo(x - 1, start.v + 1);
        port.setPenState(pen);
    }
    port.pnLoc = {start.v, x};
}

} // namespace MacToolbox
