// cairo: A1 and A8 image surfaces.
#include "pictures.h"

#include <cairo/cairo.h>

namespace peers {
namespace {

struct CairoImage {
    cairo_surface_t* surface;
    cairo_t* cr;
    bool one;
    int w, h;
    CairoImage(const Mono& m, bool one) : one(one), w(m.w), h(m.h)
    {
        surface = cairo_image_surface_create(one ? CAIRO_FORMAT_A1 : CAIRO_FORMAT_A8, w, h);
        cairo_surface_flush(surface);
        unsigned char* data = cairo_image_surface_get_data(surface);
        const int stride = cairo_image_surface_get_stride(surface);
        for (int y = 0; y < h; y++)
            for (int x = 0; x < w; x++)
                if (m.get(x, y)) {
                    if (one)
                        data[y * stride + x / 8] |= 1 << (x & 7);
                    else
                        data[y * stride + x] = 0xFF;
                }
        cairo_surface_mark_dirty(surface);
        cr = cairo_create(surface);
        cairo_set_antialias(cr, CAIRO_ANTIALIAS_NONE);
    }
    CairoImage(const CairoImage&) = delete;
    ~CairoImage()
    {
        cairo_destroy(cr);
        cairo_surface_destroy(surface);
    }
    Mono read() const
    {
        cairo_surface_flush(surface);
        const unsigned char* data = cairo_image_surface_get_data(surface);
        const int stride = cairo_image_surface_get_stride(surface);
        Mono m(w, h);
        for (int y = 0; y < h; y++)
            for (int x = 0; x < w; x++)
                m.set(x, y, one ? data[y * stride + x / 8] >> (x & 7) & 1 : data[y * stride + x] > 127);
        return m;
    }
};
cairo_operator_t cairoOp(Mode m)
{
    switch (m) {
    case kCopy: return CAIRO_OPERATOR_SOURCE;
    case kOr: return CAIRO_OPERATOR_ADD;
    case kXor: return CAIRO_OPERATOR_XOR;
    default: return CAIRO_OPERATOR_DEST_OUT;
    }
}

} // namespace

void registerCairo(bool one)
{
    const std::string lib = one ? "cairo-a1" : "cairo-a8";
    auto make = [one](const Mono& m) { return std::make_shared<CairoImage>(m, one); };
    using Image = std::shared_ptr<CairoImage>;

    for (const FillOp& op : kFills) {
        auto d = make(screenBefore());
        cairo_pattern_t* p;
        if (op.pattern == kBlack) {
            p = cairo_pattern_create_rgba(1, 1, 1, 1);
        } else {
            Image tile = make(patternPicture(op.pattern));
            p = cairo_pattern_create_for_surface(tile->surface); // holds its own reference
            cairo_pattern_set_extend(p, CAIRO_EXTEND_REPEAT);
            cairo_pattern_set_filter(p, CAIRO_FILTER_NEAREST);
        }
        cairo_set_operator(d->cr, cairoOp(op.mode));
        add(
            op.name, lib,
            [d, p, b = op.box] {
                cairo_set_source(d->cr, p);
                cairo_rectangle(d->cr, b.left, b.top, b.width, b.height);
                cairo_fill(d->cr);
            },
            [d, op] { return same(d->read(), expectFill(op)); });
    }
    for (const BlitOp& op : kBlits) {
        auto d = make(screenBefore());
        Image s = make(sourceOf(op));
        cairo_set_operator(d->cr, cairoOp(op.mode));
        add(
            op.name, lib,
            [d, s, b = op.box] {
                cairo_set_source_surface(d->cr, s->surface, b.left, b.top);
                cairo_rectangle(d->cr, b.left, b.top, b.width, b.height);
                cairo_fill(d->cr);
            },
            [d, op] { return same(d->read(), expectBlit(op)); });
    }
    {
        auto d = make(screenBefore());
        Image s = make(sprite()), m = make(spriteMask());
        cairo_set_operator(d->cr, CAIRO_OPERATOR_SOURCE);
        add(
            "sprite_masked_40x30", lib,
            [d, s, m] { // source through a mask is the bounded masked copy
                cairo_set_source_surface(d->cr, s->surface, kSprite.left, kSprite.top);
                cairo_mask_surface(d->cr, m->surface, kSprite.left, kSprite.top);
            },
            [d] { return same(d->read(), expectSprite()); });
    }
    {
        const ScaleOp& op = kScales[0];
        auto d = make(screenBefore());
        Image s = make(smallPicture());
        cairo_set_operator(d->cr, CAIRO_OPERATOR_SOURCE);
        auto* p = cairo_pattern_create_for_surface(s->surface);
        cairo_pattern_set_filter(p, CAIRO_FILTER_NEAREST);
        cairo_matrix_t t;
        cairo_matrix_init_scale(&t, double(op.sw) / op.dst.width, double(op.sh) / op.dst.height);
        cairo_pattern_set_matrix(p, &t);
        add(
            op.name, lib,
            [d, p, b = op.dst] {
                cairo_set_source(d->cr, p);
                cairo_rectangle(d->cr, b.left, b.top, b.width, b.height);
                cairo_fill(d->cr);
            },
            [d, op] { return same(d->read(), expectScale(op)); });
    }
    {
        auto d = make(screenBefore());
        auto glyphs = std::make_shared<std::vector<Image>>(128);
        for (int c = 32; c < 127; c++)
            (*glyphs)[c] = make(glyphPicture(c));
        cairo_set_source_rgba(d->cr, 1, 1, 1, 1);
        cairo_set_operator(d->cr, CAIRO_OPERATOR_OVER);
        add(
            "text_80_glyphs_8x12", lib,
            [d, glyphs] {
                for (int i = 0; i < kTextCount; i++)
                    cairo_mask_surface(d->cr, (*glyphs)[text()[i] & 127]->surface, kTextX + i * kTextAdvance, kTextY);
            },
            [d] { return same(d->read(), expectText()); });
    }
}

} // namespace peers
