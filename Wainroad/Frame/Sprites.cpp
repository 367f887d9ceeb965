#include "Wainroad/Frame/Sprites.h"

#include "MacToolbox/QuickDraw/CopyBits.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"

#include <algorithm>

namespace Wainroad {

Int SWOpenPort(SpriteWorld& world)
{
    world.useColor = false;
    world.depth = 1;
    world.port = std::make_shared<GrafPort>(world.bounds);
    return world.depth;
}

SpriteRef SWAddSprite(SpriteWorld& world, SpriteRef sprite)
{
    if (!sprite)
        sprite = std::make_shared<Sprite>();
    world.sprites.push_back(sprite);
    return sprite;
}

SpriteRef SWInsertSprite(SpriteWorld& world, SpriteRef sprite, Int position)
{
    if (!sprite)
        sprite = std::make_shared<Sprite>();
    const Int at = std::clamp<Int>(position, 0, I(world.sprites.size()));
    world.sprites.insert(std::next(world.sprites.begin(), at), sprite);
    return sprite;
}

void SWRemoveSprite(SpriteWorld& world, const SpriteRef& sprite) { world.sprites.remove(sprite); }

void SWDispose(SpriteWorld& world)
{
    for (const SpriteRef& sprite : world.sprites)
        sprite->script.reset();
    world.sprites.clear();
}

// ---- Drawing

void FastEraseRect(const Rect& rect)
{
    const ClipScope clip;
    const Pattern background = thePort->bkPat;
    ClipRect(kHugeRect);
    BackPat(Pattern::white);
    EraseRect(rect);
    BackPat(background);
}

/// Draws one state into the current port, the world's, within its clip.
static void blit(const SpriteState& state)
{
    const BitMap& to = thePort->portBits;
    if (state.mode != -1) {
        CopyBits(state.image, to, state.src, state.dst, state.mode & 7);
        return;
    }
    if (state.mask.baseAddr)
        CopyBits(state.mask, to, state.src, state.dst, srcBic);
    if (state.image.baseAddr)
        CopyBits(state.image, to, state.src, state.dst, srcXor);
}

void DrawSpriteNow(SpriteWorld& world, const Sprite& sprite, const Rect& rect)
{
    if (!world.port)
        return;
    const PortScope port(world.port);
    const ClipScope clip(rect);
    blit(sprite.cur);
}

/// Composes the rectangle in the world's port, which is current and clipped to it.
static void compose(const SpriteWorld& world, const Sprite* sprite, const Rect& rect, bool drawIt)
{
    if (world.drawBackground)
        world.drawBackground(rect);
    else
        FastEraseRect(rect);
    auto at = world.sprites.rbegin();
    for (; at != world.sprites.rend() && at->get() != sprite; ++at)
        if ((*at)->old.visible && (*at)->old.dst.intersects(rect))
            blit((*at)->old);
    if (at == world.sprites.rend())
        return;
    if (drawIt && sprite->cur.visible)
        blit(sprite->cur);
    for (++at; at != world.sprites.rend(); ++at)
        if ((*at)->cur.visible && (*at)->cur.dst.intersects(rect))
            blit((*at)->cur);
}

void SWDraw(SpriteWorld& world, const Sprite* sprite, Rect rect, bool drawIt)
{
    rect = rect.intersection(world.bounds);
    if (rect.isEmpty() || !world.port)
        return;
    {
        const PortScope port(world.port);
        ClipRect(rect);
        compose(world, sprite, rect, drawIt);
    }
    CopyBits(world.port->portBits, thePort->portBits, rect, rect, srcCopy);
}

// ---- Moving

void SpriteMove(Sprite& sprite, Int steps, Int dh, Int dv)
{
    if (steps == 0) {
        sprite.cur.pos.h += dh;
        sprite.cur.pos.v += dv;
        sprite.cur.dst.offset(dh, dv);
        sprite.changed |= sprite.cur.pos != sprite.old.pos;
        return;
    }
    sprite.fixH = sprite.cur.pos.h * 65536;
    sprite.fixV = sprite.cur.pos.v * 65536;
    sprite.stepH = dh * 65536 / steps;
    sprite.stepV = dv * 65536 / steps;
}

/// The nearest whole number of a fixed-point one, as a signed 16-bit value.
static Int roundFixed(Int fixed) { return LoWord((fixed + 0x8000) >> 16); }

void SpriteStep(Sprite& sprite)
{
    sprite.fixH += sprite.stepH;
    sprite.fixV += sprite.stepV;
    const Point to{roundFixed(sprite.fixV), roundFixed(sprite.fixH)};
    sprite.cur.dst.offset(to.h - sprite.cur.pos.h, to.v - sprite.cur.pos.v);
    sprite.cur.pos = to;
    sprite.changed |= to != sprite.old.pos;
}

void SpriteSetFrame(Sprite& sprite, Int n)
{
    const Int range = sprite.lastFrame - sprite.firstFrame + 1;
    if (n < sprite.firstFrame)
        n += range;
    else if (n > sprite.lastFrame)
        n -= range;
    if (n == sprite.curFrame)
        return;
    sprite.curFrame = n;
    if (sprite.frames)
        sprite.cur.image = sprite.frames->at(n);
    if (sprite.masks)
        sprite.cur.mask = sprite.masks->at(n);
    sprite.cur.src = sprite.cur.image.bounds;
    sprite.cur.dst = sprite.cur.src.offsetBy(sprite.cur.pos.h, sprite.cur.pos.v);
    sprite.changed = true;
}

SpriteRef AddSprite(
    SpriteWorld& world, BitMapsRef frames, BitMapsRef masks, Int firstFrame, Int lastFrame, Int mode, Int h, Int v)
{
    const SpriteRef sprite = SWAddSprite(world);
    if (frames)
        sprite->cur.image = frames->at(0);
    if (masks)
        sprite->cur.mask = masks->at(0);
    sprite->cur.src = sprite->cur.dst = sprite->cur.image.bounds;
    sprite->cur.mode = mode;
    sprite->frames = std::move(frames);
    sprite->masks = std::move(masks);
    sprite->firstFrame = firstFrame;
    sprite->lastFrame = lastFrame;
    SpriteSetFrame(*sprite, firstFrame);
    SpriteMove(*sprite, 0, h - sprite->cur.pos.h, v - sprite->cur.pos.v);
    sprite->cur.visible = sprite->changed = true;
    return sprite;
}

// ---- Frames

/// The changes that a sprite without a script makes by itself.
static void moveByItself(Sprite& sprite)
{
    sprite.old = sprite.cur;
    if (sprite.moveProc)
        sprite.moveProc(sprite);
    if (sprite.frameInterval != 0 && ++sprite.frameCounter >= sprite.frameInterval) {
        sprite.frameCounter = 0;
        SpriteSetFrame(sprite, sprite.curFrame + 1);
    }
    if (sprite.moveInterval != 0 && ++sprite.moveCounter >= sprite.moveInterval) {
        sprite.moveCounter = 0;
        SpriteMove(sprite, 0, sprite.moveDH, sprite.moveDV);
    }
}

static void drawChanged(SpriteWorld& world, const Sprite& sprite)
{
    if (sprite.old.visible && sprite.cur.visible)
        SWDraw(world, &sprite, sprite.old.dst.unionWith(sprite.cur.dst), true);
    else if (sprite.old.visible)
        SWDraw(world, &sprite, sprite.old.dst, false);
    else if (sprite.cur.visible)
        SWDraw(world, &sprite, sprite.cur.dst, true);
}

static void finishFrame(SpriteWorld& world)
{
    for (auto at = world.sprites.begin(); at != world.sprites.end();) {
        const SpriteRef sprite = *at;
        if (sprite->postProc)
            sprite->postProc(*sprite);
        if (!sprite->dead) {
            ++at;
            continue;
        }
        sprite->script.reset();
        at = world.sprites.erase(at);
    }
}

void SWAnimate(SpriteWorld& world, const Rect* rect, bool move, bool draw)
{
    const PortScope port(thePort);
    if (move) {
        for (const SpriteRef& sprite : world.sprites) {
            sprite->changed = false;
            if (sprite->script)
                SWRunScript(world, *sprite);
            else
                moveByItself(*sprite);
        }
    }
    if (draw) {
        if (rect) {
            SWDraw(world, world.last().get(), *rect, true);
        } else {
            for (const SpriteRef& sprite : world.sprites)
                if (sprite->changed)
                    drawChanged(world, *sprite);
        }
    }
    if (move)
        finishFrame(world);
}

} // namespace Wainroad
