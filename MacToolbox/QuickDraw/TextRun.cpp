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
    };

    /// Adds `height` rows of a glyph's column, moved by `bits` to the right, or to the left if negative.
    template <bool flips>
    void addColumn(Word* to, const Word* from, Int height, Int bits)
    {
        Byte* out = reinterpret_cast<Byte*>(to);
        const Byte* in = reinterpret_cast<const Byte*>(from);
        for (Int y = 0; y < height; y += 2, out += 16, in += 16) {
            Chunk rows = load<Chunk>(in);
            rows = bits < 0 ? rows << -bits : rows >> bits;
            store(out, flips ? load<Chunk>(out) ^ rows : load<Chunk>(out) | rows);
        }
    }

    /// The part of a run inside `area` (which is not empty, and whose rows are those `firstRow` on of the glyphs).
    template <bool flips>
    const BitMap& assemble(const Run& run, const Rect& area, Int firstRow, Int phase)
    {
        Strip& strip = Strip::shared();
        const Int origin = area.left - phase, height = (area.height() + 1) & ~Int {1};
        const Int columns = ((area.right - origin) + 63) >> 6;
        strip.columns.assign(static_cast<std::size_t>(columns * height), 0);
        Word* const words = strip.columns.data();
        for (std::size_t i = 0; i < run.count; ++i) {
            const StyledGlyph& g = *run.placed[i].glyph;
            const Word* from = g.words.data() + firstRow;
            Int x = run.placed[i].left - origin;
            for (Int c = g.columns(); c > 0; --c, x += 64, from += g.columnHeight()) {
                const Int column = x >> 6, bits = x & 63;
                if (column >= 0 && column < columns)
                    addColumn<flips>(words + column * height, from, height, bits);
                if (bits && bits + g.width > 64 && column + 1 >= 0 && column + 1 < columns)
                    addColumn<flips>(words + (column + 1) * height, from, height, bits - 64);
            }
        }
        BitMap& rows = strip.rows;
        if (!rows.baseAddr)
            rows.baseAddr = NewHandle(0);
        rows.rowBytes = columns * 8;
        rows.bounds = {area.top, origin, area.bottom, origin + columns * 64};
        rows.baseAddr->bytes.resize(
            std::max(rows.baseAddr->bytes.size(), static_cast<std::size_t>(rows.rowBytes * area.height())));
        Byte* out = rows.baseAddr->bytes.data();
        for (Int y = 0; y < area.height(); ++y)
            for (Int c = 0; c < columns; ++c, out += 8)
                store(out, inMemoryOrder(words[c * height + y]));
        return rows;
    }

    /// Paints a run with the top of its images at `top`.
    void paintRun(const BitMap& bits, const ClipArea& clip, const Run& run, Int top, RasterOp op)
    {
        if (run.count == 0)
            return;
        const Rect area = clip.box().intersection({top, run.left, top + run.placed[0].glyph->height, run.right});
        if (area.isEmpty())
            return;
        const Int phase = (area.left - bits.bounds.left) & 7; // so that strip and bitmap share their bytes' edges
        const BitMap& strip = op.kind == RasterOp::flip ? assemble<true>(run, area, area.top - top, phase)
                                                        : assemble<false>(run, area, area.top - top, phase);
        if (clip.isRect())
            return blitPixels(bits, area, strip, area.topLeft(), op);
        clip.forEachRect([&](const Rect& r) {
            const Rect part = r.intersection(area);
            if (!part.isEmpty())
                blitPixels(bits, part, strip, part.topLeft(), op);
        });
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
            port.fill(Rect {start.v - strike->ascent, x, start.v + strike->descent, x + g.advance}, Pattern::white, patCopy);
        const Int left = x + g.left, right = left + g.width;
        if (g.width > 0 && left < clip.box().right && right > clip.box().left) { // same top and height in all of a style
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
