// leptonica: one-bit raster operations on 32-bit words, the nearest peer in kind.
#include "pictures.h"

#include <leptonica/allheaders.h>

namespace peers {
namespace {

struct LeptImage {
    PIX* p;
    explicit LeptImage(const Mono& m) : p(pixCreate(m.w, m.h, 1))
    {
        for (int y = 0; y < m.h; y++)
            for (int x = 0; x < m.w; x++)
                if (m.get(x, y))
                    pixSetPixel(p, x, y, 1);
    }
    LeptImage(const LeptImage&) = delete;
    ~LeptImage() { pixDestroy(&p); }
    static Mono read(PIX* p)
    {
        Mono m(pixGetWidth(p), pixGetHeight(p));
        for (int y = 0; y < m.h; y++)
            for (int x = 0; x < m.w; x++) {
                l_uint32 v = 0;
                pixGetPixel(p, x, y, &v);
                m.set(x, y, v);
            }
        return m;
    }
    Mono read() const { return read(p); }
};
int leptOp(Mode m)
{
    switch (m) {
    case kCopy: return PIX_SRC;
    case kOr: return PIX_SRC | PIX_DST;
    case kXor: return PIX_SRC ^ PIX_DST;
    default: return PIX_NOT(PIX_SRC) & PIX_DST;
    }
}

} // namespace

void registerLeptonica()
{
    const std::string lib = "leptonica";
    using Image = std::shared_ptr<LeptImage>;
    auto make = [](const Mono& m) { return std::make_shared<LeptImage>(m); };
    for (const FillOp& op : kFills) {
        auto d = make(screenBefore());
        auto check = [d, op] { return same(d->read(), expectFill(op)); };
        const Box b = op.box;
        if (op.pattern == kBlack) {
            const int o = op.mode == kXor ? PIX_NOT(PIX_DST) : PIX_SET;
            add(
                op.name, lib, [d, b, o] { pixRasterop(d->p, b.left, b.top, b.width, b.height, o, nullptr, 0, 0); },
                check);
        } else {
            Image big = make(tiled(op.pattern)); // no pattern fill: copied from a tiled picture
            add(
                op.name, lib,
                [d, b, big, o = leptOp(op.mode)] {
                    pixRasterop(d->p, b.left, b.top, b.width, b.height, o, big->p, b.left, b.top);
                },
                check);
        }
    }
    for (const BlitOp& op : kBlits) {
        auto d = make(screenBefore());
        Image s = make(sourceOf(op));
        add(
            op.name, lib,
            [d, s, b = op.box, o = leptOp(op.mode)] {
                pixRasterop(d->p, b.left, b.top, b.width, b.height, o, s->p, 0, 0);
            },
            [d, op] { return same(d->read(), expectBlit(op)); });
    }
    {
        auto d = make(screenBefore());
        Image s = make(sprite()), m = make(spriteMask());
        add(
            "sprite_masked_40x30", lib,
            [d, s, m] {
                const Box b = kSprite;
                pixRasterop(d->p, b.left, b.top, b.width, b.height, PIX_NOT(PIX_SRC) & PIX_DST, m->p, 0, 0);
                pixRasterop(d->p, b.left, b.top, b.width, b.height, PIX_SRC | PIX_DST, s->p, 0, 0);
            },
            [d] { return same(d->read(), expectSprite()); });
    }
    { // makes a new picture at each call; the allocation is part of its interface
        const ScaleOp& op = kScales[0];
        Mono part(op.sw, op.sh);
        for (int y = 0; y < op.sh; y++)
            for (int x = 0; x < op.sw; x++)
                part.set(x, y, smallPicture().get(x, y));
        Image s = make(part);
        auto kept = std::make_shared<std::shared_ptr<PIX>>();
        add(
            op.name, lib,
            [s, kept] {
                PIX* p = pixExpandBinaryPower2(s->p, 2);
                *kept = std::shared_ptr<PIX>(p, [](PIX* q) { pixDestroy(&q); });
            },
            [kept, op] { return same(LeptImage::read(kept->get()), expectScale(op)); });
    }
    {
        auto d = make(screenBefore());
        auto glyphs = std::make_shared<std::vector<Image>>(128);
        for (int c = 32; c < 127; c++)
            (*glyphs)[c] = make(glyphPicture(c));
        add(
            "text_80_glyphs_8x12", lib,
            [d, glyphs] {
                for (int i = 0; i < kTextCount; i++)
                    pixRasterop(d->p, kTextX + i * kTextAdvance, kTextY, 8, 12, PIX_SRC | PIX_DST,
                        (*glyphs)[text()[i] & 127]->p, 0, 0);
            },
            [d] { return same(d->read(), expectText()); });
    }
    {
        Mono frame(kScreenW, kFrameH);
        for (int y = 0; y < kFrameH; y++)
            for (int x = 0; x < kScreenW; x++)
                frame.set(x, y, picture().get(x, y + 20));
        Image s = make(frame);
        auto d = std::shared_ptr<PIX>(pixCreate(kScreenW, kFrameH, 8), [](PIX* q) { pixDestroy(&q); });
        add(
            "unpack_512x322", lib, [s, d] { pixConvert1To8(d.get(), s->p, 0, 1); },
            [d, frame] {
                for (int y = 0; y < kFrameH; y++)
                    for (int x = 0; x < kScreenW; x++) {
                        l_uint32 v = 9;
                        pixGetPixel(d.get(), x, y, &v);
                        if (v != frame.get(x, y))
                            return "wrong pixel";
                    }
                return "";
            });
    }
}

} // namespace peers
