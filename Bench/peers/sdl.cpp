// SDL2: 8-bit indexed surfaces, 1 is black, as a game author would keep this picture.
#include "pictures.h"

#include <SDL2/SDL.h>

namespace peers {
namespace {

struct SdlImage {
    SDL_Surface* s;
    explicit SdlImage(const Mono& m)
    {
        s = SDL_CreateRGBSurfaceWithFormat(0, m.w, m.h, 8, SDL_PIXELFORMAT_INDEX8);
        static SDL_Palette* palette = [] {
            SDL_Palette* p = SDL_AllocPalette(256);
            SDL_Color c[256];
            for (int i = 0; i < 256; i++)
                c[i] = {0, 0, 0, 255};
            c[0] = {255, 255, 255, 255};
            SDL_SetPaletteColors(p, c, 0, 256);
            return p;
        }();
        SDL_SetSurfacePalette(s, palette);
        SDL_SetSurfaceBlendMode(s, SDL_BLENDMODE_NONE);
        for (int y = 0; y < m.h; y++)
            for (int x = 0; x < m.w; x++)
                static_cast<Uint8*>(s->pixels)[y * s->pitch + x] = m.get(x, y);
    }
    SdlImage(const SdlImage&) = delete;
    ~SdlImage() { SDL_FreeSurface(s); }
    Mono read() const
    {
        Mono m(s->w, s->h);
        for (int y = 0; y < m.h; y++)
            for (int x = 0; x < m.w; x++)
                m.set(x, y, static_cast<Uint8*>(s->pixels)[y * s->pitch + x] != 0);
        return m;
    }
};

} // namespace

void registerSdl()
{
    const std::string lib = "sdl2-8bit";
    using Image = std::shared_ptr<SdlImage>;
    auto make = [](const Mono& m) { return std::make_shared<SdlImage>(m); };
    auto at = [](Box b) { return SDL_Rect{b.left, b.top, b.width, b.height}; };

    for (const FillOp& op : kFills) {
        if (op.mode != kCopy)
            continue; // no exclusive or in this library
        auto d = make(screenBefore());
        auto check = [d, op] { return same(d->read(), expectFill(op)); };
        if (op.pattern == kBlack) {
            add(
                op.name, lib, [d, r = at(op.box)] { SDL_FillRect(d->s, &r, 1); }, check);
        } else {
            Image big = make(tiled(op.pattern)); // no pattern fill either: copied from a tiled surface
            add(
                op.name, lib,
                [d, big, r = at(op.box)] {
                    SDL_Rect to = r;
                    SDL_BlitSurface(big->s, &r, d->s, &to);
                },
                check);
        }
    }
    for (const BlitOp& op : kBlits) {
        if (op.mode != kCopy && op.mode != kOr)
            continue;
        auto d = make(screenBefore());
        Image s = make(sourceOf(op));
        if (op.mode == kOr)
            SDL_SetColorKey(s->s, SDL_TRUE, 0); // or: white is transparent
        add(
            op.name, lib,
            [d, s, b = op.box] {
                SDL_Rect from{0, 0, b.width, b.height}, to{b.left, b.top, b.width, b.height};
                SDL_BlitSurface(s->s, &from, d->s, &to);
            },
            [d, op] { return same(d->read(), expectBlit(op)); });
    }
    for (bool rle : {false, true}) { // masked by a colour key, index 2 outside the mask
        auto d = make(screenBefore());
        Image s = make(sprite());
        for (int y = 0; y < 30; y++)
            for (int x = 0; x < 40; x++)
                if (!spriteMask().get(x, y))
                    static_cast<Uint8*>(s->s->pixels)[y * s->s->pitch + x] = 2;
        SDL_SetColorKey(s->s, SDL_TRUE, 2);
        SDL_SetSurfaceRLE(s->s, rle);
        add(
            "sprite_masked_40x30", rle ? lib + "-rle" : lib,
            [d, s] {
                SDL_Rect to{kSprite.left, kSprite.top, 0, 0};
                SDL_BlitSurface(s->s, nullptr, d->s, &to);
            },
            [d] { return same(d->read(), expectSprite()); });
    }
    for (const ScaleOp& op : kScales) {
        auto check = [op](const Mono& got) { // corner or centre sampling both count as nearest
            for (int y = 0; y < kScreenH; y++)
                for (int x = 0; x < kScreenW; x++) {
                    const int u = x - op.dst.left, v = y - op.dst.top;
                    if (u < 0 || v < 0 || u >= op.dst.width || v >= op.dst.height) {
                        if (got.get(x, y) != screenBefore().get(x, y))
                            return std::string("wrote outside");
                        continue;
                    }
                    bool ok = false;
                    for (double cu : {0.0, 0.5})
                        for (double cv : {0.0, 0.5})
                            ok |= got.get(x, y)
                                == smallPicture().get(
                                    int((u + cu) * op.sw / op.dst.width), int((v + cv) * op.sh / op.dst.height));
                    if (!ok)
                        return "differs at h " + std::to_string(x) + ", v " + std::to_string(y);
                }
            return std::string();
        };
        auto d = make(screenBefore());
        Image s = make(smallPicture());
        // Not SDL_BlitScaled: it refuses 8-bit indexed surfaces (-1).
        add(
            op.name, lib + "-SoftStretch",
            [d, s, op, at] {
                SDL_Rect from{0, 0, op.sw, op.sh}, to = at(op.dst);
                SDL_SoftStretch(s->s, &from, d->s, &to);
            },
            [d, check] { return check(d->read()); });
    }
    for (bool rle : {false, true}) {
        auto d = make(screenBefore());
        auto glyphs = std::make_shared<std::vector<Image>>(128);
        for (int c = 32; c < 127; c++) {
            (*glyphs)[c] = make(glyphPicture(c));
            SDL_SetColorKey((*glyphs)[c]->s, SDL_TRUE, 0);
            SDL_SetSurfaceRLE((*glyphs)[c]->s, rle);
        }
        add(
            "text_80_glyphs_8x12", rle ? lib + "-rle" : lib,
            [d, glyphs] {
                for (int i = 0; i < kTextCount; i++) {
                    SDL_Rect to{kTextX + i * kTextAdvance, kTextY, 0, 0};
                    SDL_BlitSurface((*glyphs)[text()[i] & 127]->s, nullptr, d->s, &to);
                }
            },
            [d] { return same(d->read(), expectText()); });
    }
    {
        Mono frame(kScreenW, kFrameH);
        for (int y = 0; y < kFrameH; y++)
            for (int x = 0; x < kScreenW; x++)
                frame.set(x, y, picture().get(x, y + 20));
        Image s = make(frame);
        auto d = std::shared_ptr<SDL_Surface>(
            SDL_CreateRGBSurfaceWithFormat(0, kScreenW, kFrameH, 32, SDL_PIXELFORMAT_RGB888), SDL_FreeSurface);
        add(
            "expand32_512x322", lib, [d, s] { SDL_BlitSurface(s->s, nullptr, d.get(), nullptr); },
            [d, frame] {
                for (int y = 0; y < kFrameH; y++)
                    for (int x = 0; x < kScreenW; x++) {
                        const auto v =
                            reinterpret_cast<Uint32*>(static_cast<Uint8*>(d->pixels) + y * d->pitch)[x] & 0xFFFFFF;
                        if (v != (frame.get(x, y) ? 0u : 0xFFFFFFu))
                            return "wrong pixel";
                    }
                return "";
            });
    }
}

} // namespace peers
