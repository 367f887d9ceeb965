// pixman: A1 (one bit, leftmost least significant on this machine) and A8.
#include "pictures.h"

#include <pixman.h>

namespace peers {
namespace {

struct PixImage {
    pixman_image_t* image;
    std::vector<std::uint32_t> bits;
    int bpp, w, h, stride; // stride in words
    PixImage(const Mono& m, int bpp)
        : bits((m.w * bpp + 31) / 32 * std::size_t(m.h)), bpp(bpp), w(m.w), h(m.h), stride((m.w * bpp + 31) / 32)
    {
        for (int y = 0; y < h; y++)
            for (int x = 0; x < w; x++)
                if (m.get(x, y)) {
                    if (bpp == 1)
                        bits[y * stride + x / 32] |= 1u << (x & 31);
                    else
                        reinterpret_cast<std::uint8_t*>(&bits[y * stride])[x] = 0xFF;
                }
        image = pixman_image_create_bits(bpp == 1 ? PIXMAN_a1 : PIXMAN_a8, w, h, bits.data(), stride * 4);
    }
    PixImage(const PixImage&) = delete;
    ~PixImage() { pixman_image_unref(image); }
    Mono read() const
    {
        Mono m(w, h);
        for (int y = 0; y < h; y++)
            for (int x = 0; x < w; x++)
                m.set(x, y,
                    bpp == 1 ? bits[y * stride + x / 32] >> (x & 31) & 1
                             : reinterpret_cast<const std::uint8_t*>(&bits[y * stride])[x] > 127);
        return m;
    }
};
using Pix = std::shared_ptr<PixImage>;

// The port's modes as operators on alpha: or is add, xor is xor, bic is dest minus source.
pixman_op_t pixOp(Mode m)
{
    switch (m) {
    case kCopy: return PIXMAN_OP_SRC;
    case kOr: return PIXMAN_OP_ADD;
    case kXor: return PIXMAN_OP_XOR;
    default: return PIXMAN_OP_OUT_REVERSE;
    }
}

} // namespace

void registerPixman(int bpp)
{
    const std::string lib = bpp == 1 ? "pixman-a1" : "pixman-a8";
    auto make = [bpp](const Mono& m) { return std::make_shared<PixImage>(m, bpp); };
    const pixman_color_t opaque{0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF};
    auto solid = pixman_image_create_solid_fill(&opaque);

    for (const FillOp& op : kFills) {
        auto d = make(screenBefore());
        auto check = [d, op] { return same(d->read(), expectFill(op)); };
        const Box b = op.box;
        if (op.pattern == kBlack && op.mode == kCopy) {
            add(
                op.name, lib,
                [d, b] { pixman_fill(d->bits.data(), d->stride, d->bpp, b.left, b.top, b.width, b.height, ~0u); },
                check);
            continue;
        }
        if (op.pattern == kBlack) {
            add(
                op.name, lib,
                [d, b, solid, o = pixOp(op.mode)] {
                    pixman_image_composite32(o, solid, nullptr, d->image, 0, 0, 0, 0, b.left, b.top, b.width, b.height);
                },
                check);
            continue;
        }
        Pix tile = make(patternPicture(op.pattern));
        pixman_image_set_repeat(tile->image, PIXMAN_REPEAT_NORMAL);
        add(
            op.name, lib,
            [d, b, tile, o = pixOp(op.mode)] {
                pixman_image_composite32(
                    o, tile->image, nullptr, d->image, b.left, b.top, 0, 0, b.left, b.top, b.width, b.height);
            },
            check);
        d = make(screenBefore());
        Pix big = make(tiled(op.pattern));
        add(
            op.name, lib + "-pretiled",
            [d, b, big, o = pixOp(op.mode)] {
                pixman_image_composite32(
                    o, big->image, nullptr, d->image, b.left, b.top, 0, 0, b.left, b.top, b.width, b.height);
            },
            [d, op] { return same(d->read(), expectFill(op)); });
    }

    for (const BlitOp& op : kBlits) {
        auto d = make(screenBefore());
        Pix s = make(sourceOf(op));
        add(
            op.name, lib,
            [d, s, b = op.box, o = pixOp(op.mode)] {
                pixman_image_composite32(o, s->image, nullptr, d->image, 0, 0, 0, 0, b.left, b.top, b.width, b.height);
            },
            [d, op] { return same(d->read(), expectBlit(op)); });
    }

    { // masked copy on alpha: take the mask away, then add the sprite
        auto d = make(screenBefore());
        Pix s = make(sprite()), m = make(spriteMask());
        add(
            "sprite_masked_40x30", lib,
            [d, s, m] {
                const Box b = kSprite;
                pixman_image_composite32(
                    PIXMAN_OP_OUT_REVERSE, m->image, nullptr, d->image, 0, 0, 0, 0, b.left, b.top, b.width, b.height);
                pixman_image_composite32(
                    PIXMAN_OP_ADD, s->image, nullptr, d->image, 0, 0, 0, 0, b.left, b.top, b.width, b.height);
            },
            [d] { return same(d->read(), expectSprite()); });
    }

    { // only the exact doubling: pixman samples at pixel centres, ours at corners
        const ScaleOp& op = kScales[0];
        auto d = make(screenBefore());
        Pix s = make(smallPicture());
        pixman_transform_t t;
        pixman_transform_init_scale(&t, pixman_double_to_fixed(double(op.sw) / op.dst.width),
            pixman_double_to_fixed(double(op.sh) / op.dst.height));
        pixman_image_set_transform(s->image, &t);
        pixman_image_set_filter(s->image, PIXMAN_FILTER_NEAREST, nullptr, 0);
        add(
            op.name, lib,
            [d, s, b = op.dst] {
                pixman_image_composite32(
                    PIXMAN_OP_SRC, s->image, nullptr, d->image, 0, 0, 0, 0, b.left, b.top, b.width, b.height);
            },
            [d, op] { return same(d->read(), expectScale(op)); });
    }

    {
        auto glyphs = std::make_shared<std::vector<Pix>>(128);
        auto cache = std::shared_ptr<pixman_glyph_cache_t>(pixman_glyph_cache_create(), [](pixman_glyph_cache_t* c) {
            pixman_glyph_cache_thaw(c);
            pixman_glyph_cache_destroy(c);
        });
        pixman_glyph_cache_freeze(cache.get());
        static int font; // only its address counts
        for (int c = 32; c < 127; c++) {
            (*glyphs)[c] = make(glyphPicture(c));
            pixman_glyph_cache_insert(
                cache.get(), &font, reinterpret_cast<void*>(std::intptr_t(c)), 0, 0, (*glyphs)[c]->image);
        }
        auto d = make(screenBefore());
        add(
            "text_80_glyphs_8x12", lib + "-glyph-cache",
            [d, cache, solid] {
                pixman_glyph_t g[kTextCount];
                for (int i = 0; i < kTextCount; i++)
                    g[i] = {kTextX + i * kTextAdvance, kTextY,
                        pixman_glyph_cache_lookup(
                            cache.get(), &font, reinterpret_cast<void*>(std::intptr_t(text()[i])))};
                pixman_composite_glyphs_no_mask(
                    PIXMAN_OP_OVER, solid, d->image, 0, 0, 0, 0, cache.get(), kTextCount, g);
            },
            [d] { return same(d->read(), expectText()); });
        d = make(screenBefore());
        add(
            "text_80_glyphs_8x12", lib,
            [d, glyphs] {
                for (int i = 0; i < kTextCount; i++)
                    pixman_image_composite32(PIXMAN_OP_ADD, (*glyphs)[text()[i] & 127]->image, nullptr, d->image, 0, 0,
                        0, 0, kTextX + i * kTextAdvance, kTextY, 8, 12);
            },
            [d] { return same(d->read(), expectText()); });
    }
}

namespace {

struct PixRegion {
    pixman_region32_t r;
    PixRegion() { pixman_region32_init(&r); }
    explicit PixRegion(const std::vector<Box>& boxes)
    {
        std::vector<pixman_box32_t> v;
        for (const Box& b : boxes)
            v.push_back({b.left, b.top, b.right(), b.bottom()});
        pixman_region32_init_rects(&r, v.data(), int(v.size()));
    }
    PixRegion(const PixRegion&) = delete;
    ~PixRegion() { pixman_region32_fini(&r); }
    template <class Want> std::string check(Want want)
    {
        for (int y = -1; y <= kScreenH; y++)
            for (int x = -1; x <= kScreenW; x++)
                if (bool(pixman_region32_contains_point(&r, x, y, nullptr)) != want(x, y))
                    return "differs at h " + std::to_string(x) + ", v " + std::to_string(y);
        return "";
    }
};

} // namespace

void registerPixmanRegions()
{
    for (const RegionOp& op : regionOps()) {
        auto a = std::make_shared<PixRegion>(op.a), b = std::make_shared<PixRegion>(op.b);
        auto out = std::make_shared<PixRegion>(), tmp = std::make_shared<PixRegion>();
        add(
            op.name, "pixman",
            [a, b, out, tmp, c = op.op] {
                switch (c) {
                case '|': pixman_region32_union(&out->r, &a->r, &b->r); break;
                case '&': pixman_region32_intersect(&out->r, &a->r, &b->r); break;
                case '-': pixman_region32_subtract(&out->r, &a->r, &b->r); break;
                default: // no exclusive or: the union less the intersection
                    pixman_region32_union(&out->r, &a->r, &b->r);
                    pixman_region32_intersect(&tmp->r, &a->r, &b->r);
                    pixman_region32_subtract(&out->r, &out->r, &tmp->r);
                }
            },
            [out, &op] { return out->check([&op](int x, int y) { return inRegionOp(op, x, y); }); });
    }
    auto sum = std::make_shared<PixRegion>();
    add(
        "region_union_200_random", "pixman",
        [sum] {
            pixman_region32_clear(&sum->r);
            for (const Box& b : randomBoxes())
                pixman_region32_union_rect(&sum->r, &sum->r, b.left, b.top, b.width, b.height);
        },
        [sum] { return sum->check(inRandomBoxes); });
    const RegionOp& discs = discUnion();
    auto all = discs.a;
    all.insert(all.end(), discs.b.begin(), discs.b.end());
    auto region = std::make_shared<PixRegion>(all);
    auto hits = std::make_shared<int>();
    int want = 0;
    for (auto [x, y] : randomPoints())
        want += inRegionOp(discs, x, y);
    add(
        "region_1024_points_in_discs", "pixman",
        [region, hits] {
            int n = 0;
            for (auto [x, y] : randomPoints())
                n += pixman_region32_contains_point(&region->r, x, y, nullptr);
            *hits = n;
        },
        [hits, want] { return *hits == want ? "" : "wrong count"; });
}

} // namespace peers
