// The project's own drawing in the stand: `project` is the public call on a port, with its clipping; `project-kernel`
// is the inner routine on a bitmap.
#include "Bench/peers/peers.h"

#include "MacToolbox/App/Png.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/Raster.h"
#include "MacToolbox/QuickDraw/Screen.h"
#include "Tests/QuickDraw/FontMaker.h"

namespace peers {

using namespace MacToolbox;

namespace {

BitMap mapOf(const Mono& m)
{
    const BitMap map(Rect{0, 0, m.h, m.w});
    for (int v = 0; v < m.h; ++v)
        std::copy_n(m.row(v), (m.w + 7) / 8, map.baseAddr->bytes.data() + v * map.rowBytes);
    return map;
}

Mono monoOf(const BitMap& map)
{
    Mono m(static_cast<int>(map.bounds.width()), static_cast<int>(map.bounds.height()));
    for (int v = 0; v < m.h; ++v)
        for (int h = 0; h < m.w; ++h)
            m.set(h, v, map.get(h, v));
    return m;
}

Rect rectOf(const Box& b) { return {b.top, b.left, b.bottom(), b.right()}; }

Region regionOf(const std::vector<Box>& boxes)
{
    Region r;
    for (const Box& b : boxes)
        r = r.unionWith(Region(rectOf(b)));
    return r;
}

GrafPtr portBefore() { return std::make_shared<GrafPort>(mapOf(screenBefore())); }

void registerFills()
{
    for (const FillOp& op : kFills) {
        const Rect r = rectOf(op.box);
        const Pattern pattern(std::span(op.pattern, 8));
        GrafPtr port = portBefore();
        port->pnPat = pattern;
        port->pnMode = Int{op.mode} + patCopy;
        add(
            op.name, "project",
            [port, r] {
                thePort = port;
                PaintRect(r);
            },
            [port, op] { return same(monoOf(port->portBits), expectFill(op)); });
        const BitMap map = mapOf(screenBefore());
        const RasterOp raster = RasterOp::of(op.mode, true, false);
        add(
            op.name, "project-kernel", [map, r, pattern, raster] { fillPixels(map, r, pattern, raster); },
            [map, op] { return same(monoOf(map), expectFill(op)); });
    }
}

void registerBlits()
{
    for (const BlitOp& op : kBlits) {
        const BitMap src = mapOf(op.source == Source::icon ? icon() : picture());
        const Rect from{0, 0, op.box.height, op.box.width}, to = rectOf(op.box);
        GrafPtr port = portBefore();
        add(
            op.name, "project",
            [port, src, from, to, op] {
                thePort = port;
                CopyBits(src, port->portBits, from, to, op.mode);
            },
            [port, op] { return same(monoOf(port->portBits), expectBlit(op)); });
        const BitMap map = mapOf(screenBefore());
        const RasterOp raster = RasterOp::of(op.mode, true, false);
        add(
            op.name, "project-kernel",
            [map, src, to, raster] {
                blitPixels(map, to, src, {0, 0}, raster);
            },
            [map, op] { return same(monoOf(map), expectBlit(op)); });
    }
    const BitMap image = mapOf(sprite()), mask = mapOf(spriteMask());
    const Rect to = rectOf(kSprite), from{0, 0, kSprite.height, kSprite.width};
    GrafPtr port = portBefore();
    add(
        "sprite_masked_40x30", "project",
        [=] {
            thePort = port;
            CopyMask(image, mask, port->portBits, from, from, to);
        },
        [port] { return same(monoOf(port->portBits), expectSprite()); });
    const BitMap map = mapOf(screenBefore());
    add(
        "sprite_masked_40x30", "project-kernel",
        [=] {
            maskPixels(map, to, image, {0, 0}, mask, {0, 0});
        },
        [map] { return same(monoOf(map), expectSprite()); });
}

void registerScales()
{
    for (const ScaleOp& op : kScales) {
        const BitMap src = mapOf(smallPicture());
        const Rect from{0, 0, op.sh, op.sw}, to = rectOf(op.dst);
        GrafPtr port = portBefore();
        add(
            op.name, "project",
            [=] {
                thePort = port;
                CopyBits(src, port->portBits, from, to, srcCopy);
            },
            [port, op] { return same(monoOf(port->portBits), expectScale(op)); });
        const BitMap map = mapOf(screenBefore());
        add(
            op.name, "project-kernel", [=] { scalePixels(map, to, to, src, from, {}); },
            [map, op] { return same(monoOf(map), expectScale(op)); });
    }
}

/// Puts the stand's glyphs into a resource file as a font with a number not used before, and selects it.
void openFont(GrafPort& port)
{
    static std::optional<FontMaker::OpenFile> file;
    static Int number = 100;
    FontMaker::Font font;
    font.firstChar = 32, font.ascent = 12, font.widMax = 8;
    for (int c = 32; c < 128; ++c) {
        FontMaker::Glyph g{0, kTextAdvance, {}};
        for (int y = 0; y < 12; ++y) {
            g.rows.emplace_back();
            for (int x = 0; x < 8; ++x)
                g.rows.back() += glyph(c & 127).rows[y] >> (7 - x) & 1 && c < 127 ? '#' : '.';
        }
        font.glyphs.push_back(g);
    }
    file.reset();
    file.emplace(std::initializer_list<FontMaker::OpenFile::Entry>{{{os("FONT"), ++number * 128 + 12}, font.bytes()}});
    port.txFont = number;
}

void registerText()
{
    const auto variant = [](const char* name, const Region& clip) {
        GrafPtr port = portBefore();
        port->clipRgn->region = clip;
        const std::string& s = text();
        const Bytes characters(s.begin(), s.end());
        add(
            "text_80_glyphs_8x12", name,
            [port, characters] {
                thePort = port;
                MoveTo(kTextX, kTextY + 12);
                DrawText(characters, 0, kTextCount);
                if (port->pnLoc.h == kTextX) { // no font: a run was started afresh
                    openFont(*port);
                    DrawText(characters, 0, kTextCount);
                }
            },
            [port, clip] {
                Mono want = expectText();
                for (int v = 0; v < want.h; ++v)
                    for (int h = 0; h < want.w; ++h)
                        if (!clip.contains(h, v))
                            want.set(h, v, screenBefore().get(h, v));
                return same(monoOf(port->portBits), want);
            });
    };
    variant("project", Region(kHugeRect));
    variant("project-clip-rect", Region(Rect{103, 30, 110, 400}));
    variant("project-clip-disc", Region::oval({60, 20, 160, 480}));
}

template <typename Want> std::string checkRegion(const Region& r, Want&& want)
{
    for (int y = -1; y <= kScreenH; y++)
        for (int x = -1; x <= kScreenW; x++)
            if (r.contains(x, y) != want(x, y))
                return "differs at h " + std::to_string(x) + ", v " + std::to_string(y);
    return "";
}

void registerRegions()
{
    for (const RegionOp& op : regionOps()) {
        const auto want = [&op](int x, int y) { return inRegionOp(op, x, y); };
        const RgnHandle a = std::make_shared<RgnRecord>(regionOf(op.a)),
                        b = std::make_shared<RgnRecord>(regionOf(op.b));
        const RgnHandle out = NewRgn();
        const auto call = op.op == '|' ? UnionRgn : op.op == '&' ? SectRgn : op.op == '-' ? DiffRgn : XorRgn;
        add(
            op.name, "project", [=] { call(a, b, out); }, [=] { return checkRegion(out->region, want); });
        const Region::Op kind = op.op == '|' ? Region::Op::unite
            : op.op == '&'                   ? Region::Op::intersect
            : op.op == '-'                   ? Region::Op::subtract
                                             : Region::Op::exclusiveOr;
        const auto result = std::make_shared<Region>();
        add(
            op.name, "project-kernel", [=] { Region::combine(kind, a->region, b->region, *result); },
            [=] { return checkRegion(*result, want); });
    }
    const auto sum = std::make_shared<Region>();
    add(
        "region_union_200_random", "project",
        [sum] {
            static Region next;
            *sum = Region();
            for (const Box& b : randomBoxes()) {
                Region::combine(Region::Op::unite, *sum, Region(rectOf(b)), next);
                sum->swap(next);
            }
        },
        [sum] { return checkRegion(*sum, inRandomBoxes); });

    const RegionOp& discs = discUnion();
    const RgnHandle both = std::make_shared<RgnRecord>(regionOf(discs.a).unionWith(regionOf(discs.b)));
    const auto hits = std::make_shared<int>();
    int want = 0;
    for (auto [x, y] : randomPoints())
        want += inRegionOp(discs, x, y);
    add(
        "region_1024_points_in_discs", "project",
        [both, hits] {
            int n = 0;
            for (auto [x, y] : randomPoints())
                n += PtInRgn({y, x}, both);
            *hits = n;
        },
        [hits, want] { return *hits == want ? "" : "wrong count"; });
}

void registerPublication()
{
    Screen& screen = Screen::shared();
    const BitMap frame = mapOf(picture());
    blitPixels(screen.bits, frame.bounds, frame, {0, 0}, {});
    const auto check = [&screen] {
        const FramePtr shown = screen.snapshot();
        for (int i = 0; i < kScreenW * kFrameH; ++i)
            if (shown->pixels[static_cast<std::size_t>(i)] != picture().get(i % kScreenW, 20 + i / kScreenW))
                return "wrong pixel";
        return "";
    };
    add(
        "unpack_512x322", "project",
        [&screen] {
            ++screen.generation;
            screen.publish(false);
        },
        check);
    add(
        "publish_unchanged", "project", [&screen] { screen.publish(false); }, check);
    const FramePtr shown = screen.snapshot();
    const auto size = static_cast<double>(makePNG(*shown)->size());
    add(
        "png_512x322", "project", [shown] { benchmark::DoNotOptimize(makePNG(*shown)); }, [] { return ""; }, size);
}

} // namespace

void registerProject()
{
    registerFills();
    registerBlits();
    registerScales();
    registerText();
    registerRegions();
    registerPublication();
}

} // namespace peers
