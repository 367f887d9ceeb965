#include "Wainroad/Screens/HuntScene.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Cursors.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Random.h"

#include <algorithm>
#include <cstdlib>

namespace Wainroad {

bool gHuntOver = false;

namespace {

enum HuntItems : Int { kNewSpot = 1, kEndHunt = 2, kField = 3 };
enum HuntSound : Int { kShotSound = 9002, kHitSound = 9003, kEmptySound = 9004 };
constexpr Int kSceneryImages = 9160, kSceneryFrames = 20, kAnimalImages = 9161;
constexpr Int kBulletFrame = 3, kStripFrame = 2;
constexpr Int kCrosshair = 128;
constexpr Int kLeft = 9, kRight = 503, kTop = 59, kDepth = 166; // the field in window coordinates
constexpr Int kBackdropTop = 34, kStripTop = 225;
constexpr Point kMuzzle{228, 256};
constexpr Int kShotSpeed = 20; // pixels a frame
constexpr Int kMostBullets = 20, kMostAnimalsOut = 2, kMostHits = 4;
constexpr Int kFrameTicks = 3;
constexpr Int kSceneryID = 2; // an `id` above it is a shot animal, a negative one lives

struct HuntState {
    SpriteWorld world;
    BitMapsRef scenery, sceneryMasks;
    std::array<std::array<BitMapsRef, 2>, kAnimalKinds> animals, animalMasks; // set 0 faces right, 1 left
    CursHandle crosshair;
    Int oddsTotal = 0;
    Int bullets = 0, shots = 0, pounds = 0;
    bool shooting = false;
    Int shotSteps = 0;
    Int animalsOut = 0, animalsShot = 0;
    Int huntTicks = 0, huntEnd = 0, nextFrame = 0;
};
RunState<HuntState> s;
const AtRunStart sFreshStart([] { gHuntOver = false; });

constexpr std::size_t at(Int kind) { return static_cast<std::size_t>(kind); }

Int liveKind(const Sprite& sprite) { return sprite.id + 8; }
Int shotKind(const Sprite& sprite) { return sprite.id - 3; }

void hideAndDie(Sprite& sprite)
{
    sprite.cur.visible = false;
    sprite.changed = true;
    sprite.dead = true;
}

void moveTo(Sprite& sprite, Int h, Int v)
{
    sprite.cur.pos = {v, h};
    sprite.cur.dst = sprite.cur.src.offsetBy(h, v);
}

// ---- Images

BitMapsRef masksOf(const BitMaps& frames, Int first, Int last)
{
    const auto masks = std::make_shared<BitMaps>(frames.count());
    for (Int frame = first; frame <= last; ++frame)
        MakeMask(frames, frame, *masks);
    return masks;
}

BitMapsRef framesOf(Int resID, Int count, bool mirrored)
{
    gMirror = mirrored;
    const auto frames = std::make_shared<BitMaps>(LoadImages(resID, 0, count)->frames);
    gMirror = false;
    return frames;
}

void loadHuntImages()
{
    s->scenery = framesOf(kSceneryImages, kSceneryFrames, false);
    s->sceneryMasks = masksOf(*s->scenery, kBulletFrame + 1, kSceneryFrames - 1);
    for (Int kind = 0; kind < kAnimalKinds; ++kind) {
        if (gAnimalOdds[at(kind)] == 0)
            continue;
        for (std::size_t set = 0; set < 2; ++set) {
            s->animals[at(kind)][set] = framesOf(kAnimalImages + kind, gAnimalFrames[at(kind)] + 1, set == 1);
            s->animalMasks[at(kind)][set] = masksOf(*s->animals[at(kind)][set], 0, gAnimalFrames[at(kind)]);
        }
    }
}

// ---- The field

/// Puts a sprite where it belongs in depth: what stands lower on the screen is in front.
void sortIn(const SpriteRef& sprite)
{
    SWRemoveSprite(s->world, sprite);
    Int position = 0;
    for (const SpriteRef& other : s->world.sprites) {
        if (other->id != 0 && other->cur.dst.bottom < sprite->cur.dst.bottom)
            break;
        ++position;
    }
    SWInsertSprite(s->world, sprite, position);
}

Int widthOf(const Sprite& sprite) { return sprite.cur.src.width(); }
Int heightOf(const Sprite& sprite) { return sprite.cur.src.height(); }

void placeBushes()
{
    if (gHuntGround.noBushes)
        return;
    const Int n = RandomN(3) + (gHuntGround.hasGround ? 1 : 4);
    for (Int i = 0; i < n; ++i)
        AddScenery(gHuntSnow ? 12 : 4, 2, kSceneryID, -1);
}

void placeGround()
{
    const Int n = RandomN(3) + (gHuntGround.noBushes ? 3 : 1);
    const bool firstSet = !gHuntSnow && (gHuntGround.mountains || !gHuntGround.desert);
    const Int base = firstSet ? 0 : 8;
    for (Int i = 0; gHuntGround.hasGround && i < n; ++i)
        gHuntGround.mountains ? AddScenery(base + 9, 3, kSceneryID, -1) : AddScenery(base + 7, 1, kSceneryID, -1);
}

// ---- The scene item

void openHunt(View& item)
{
    AddTimer(item, 0);
    *s = {};
    loadHuntImages();
    for (const Int odds : gAnimalOdds)
        s->oddsTotal += odds;
    s->world.bounds = item.r;
    SWOpenPort(s->world);
    s->huntTicks = 60 * gHuntSeconds[at(std::clamp<Int>(gState.huntTime, 0, I(gHuntSeconds.size()) - 1))];
    s->huntEnd = TickCount() + s->huntTicks;
    AddSprite(s->world, s->scenery, nullptr, gHuntGround.backdrop, gHuntGround.backdrop, 0, kLeft, kBackdropTop);
    AddSprite(s->world, s->scenery, nullptr, kStripFrame, kStripFrame, 0, kLeft, kStripTop);
    s->crosshair = GetCursor(kCrosshair);
    PlaceScenery();
}

void closeHunt(View& item)
{
    RemoveTimer(item);
    InitCursor();
    SWDispose(s->world);
    *s = {};
}

/// Makes the scene anew without losing the hunt.
void reopenHunt(View& item)
{
    const Int ticks = s->huntTicks, shots = s->shots, pounds = s->pounds;
    SendMsg(item, kMsgClose);
    SendMsg(item, kMsgOpen);
    s->huntTicks = ticks;
    s->shots = shots;
    s->pounds = pounds;
}

void trackCursor(const View& item)
{
    if (FrontWindow() != gWindow)
        return;
    Point mouse;
    GetMouse(mouse);
    if (item.r.contains(mouse) && s->crosshair)
        SetCursor(s->crosshair);
    else
        InitCursor();
}

void endHunt()
{
    ShowTravelScreen();
    gHuntShot = s->pounds;
    const Int pounds = std::min(s->pounds, gHuntCarried), shots = s->shots;
    HuntOver(pounds, shots);
    ClosePanel(HuntPanel);
}

void animateHunt(const View& item)
{
    if (TickCount() < s->nextFrame)
        return;
    if (s->huntTicks == 0) {
        endHunt();
        return;
    }
    s->nextFrame = TickCount() + kFrameTicks;
    if (TickCount() > s->huntEnd && !s->shooting)
        s->huntTicks = 0;
    const Int lot = RandomN(HuntPlaceIsFresh() ? 50 : 150);
    if (lot == 7 && s->nextFrame + 177 < s->huntEnd)
        NewAnimal();
    SWAnimate(s->world, nullptr, true, item.disabled == 0);
    if (gHuntOver) {
        PlaceScenery();
        SWAnimate(s->world, nullptr, true, item.disabled == 0);
    }
}

Int huntItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item))
            openHunt(item);
        return 1;
    case kMsgClick: Shoot(msg.point().v, msg.point().h); return 1;
    case kMsgDraw:
        if ((msg.param & 0xFFFF) != 0)
            reopenHunt(item);
        SWDraw(s->world, s->world.last().get(), thePort->visRgn->region.bounds(), true);
        return 1;
    case kMsgTimer: {
        const ViewPortScope port(item);
        trackCursor(item);
        animateHunt(item);
        return 1;
    }
    case kMsgClose: closeHunt(item); return 1;
    default: return UserItem.fn(item, msg);
    }
}

Int huntPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            InstallUserItem(panel, kField, huntItem);
        return PanelDescriptor(3, 13, 9160);
    case kMsgClick:
        switch (MsgItem(msg)) {
        case kNewSpot: gHuntOver = true; break;
        case kEndHunt: s->huntTicks = 0; break;
        }
        return 1;
    default: return 0;
    }
}

// ---- Animals and shots

void faceTheOtherWay(Sprite& sprite)
{
    const Int kind = liveKind(sprite);
    sprite.moveDH = -sprite.moveDH;
    const std::size_t set = sprite.moveDH < 0 ? 1 : 0;
    sprite.frames = s->animals[at(kind)][set];
    sprite.masks = s->animalMasks[at(kind)][set];
    sprite.curFrame = -1;
    SpriteSetFrame(sprite, 0);
}

/// The frame after the hit: stops the animal and gives it its last images.
void beginDeath(Sprite& sprite)
{
    const Int kind = shotKind(sprite), last = gAnimalFrames[at(kind)];
    sprite.firstFrame = last - gAnimalDeathFrames[at(kind)] + 1;
    sprite.lastFrame = last;
    sprite.moveInterval = sprite.moveDH = sprite.moveDV = 0;
    --s->animalsOut;
}

void walkOn(Sprite& sprite)
{
    const Rect& dst = sprite.cur.dst;
    const bool gone = sprite.moveDH < 0 ? sprite.cur.pos.h <= kLeft - widthOf(sprite) : sprite.cur.pos.h >= kRight;
    if (gone) {
        sprite.dead = true;
        --s->animalsOut;
    }
    if (Chance(2) && dst.left >= kLeft && dst.right <= kRight)
        faceTheOtherWay(sprite);
}

/// What a bullet at `place` meets first: an animal that lives or a piece of scenery.
SpriteRef firstHit(const Sprite& bullet)
{
    for (const SpriteRef& sprite : s->world.sprites)
        if (sprite.get() != &bullet && (sprite->id < 0 || sprite->id == kSceneryID)
            && sprite->cur.dst.contains(bullet.cur.pos))
            return sprite;
    return nullptr;
}

/// There are fewer of a kind that was shot, but for the two smallest.
void thinOut(Int kind)
{
    if (kind == 2 || kind == 3)
        return;
    Int& odds = gAnimalOdds[at(kind)];
    Int lost = odds / 2;
    if (HuntPlaceIsFresh() && odds - lost == 1)
        ++lost;
    odds -= lost;
    s->oddsTotal -= lost;
}

void hit(Sprite& animal)
{
    const Int kind = liveKind(animal);
    thinOut(kind);
    s->pounds += gAnimalFoodMin[at(kind)] + RandomN(gAnimalFoodRand[at(kind)]);
    animal.id += 11;
    ++s->animalsShot;
    StopSound();
    QueueSound(kHitSound);
}

Int pickKind()
{
    Int r = RandomN(s->oddsTotal);
    for (Int kind = kAnimalKinds - 1; kind >= 0; --kind) {
        if (r < gAnimalOdds[at(kind)])
            return kind;
        r -= gAnimalOdds[at(kind)];
    }
    return -1;
}

} // namespace

const ViewProc HuntPanel{huntPanelProc};
const ViewProc huntItem{huntItemProc};

void PlaceScenery()
{
    gHuntOver = false;
    s->animalsShot = s->animalsOut = 0;
    s->bullets = std::min(WagonOf(gState, gMySlot).supply[kBullets], kMostBullets);
    placeBushes();
    placeGround();
}

void AddScenery(Int first, Int range, Int id, Int mode)
{
    const Int frame = first + RandomN(range);
    const SpriteRef sprite = AddSprite(s->world, s->scenery, s->sceneryMasks, frame, frame, mode, 0, 0);
    sprite->id = id;
    sprite->moveProc = SceneryMove;
    const Int h = kLeft + RandomN(kRight - kLeft - widthOf(*sprite));
    const Int v = kTop + RandomN(kDepth - heightOf(*sprite));
    moveTo(*sprite, h, v);
    sortIn(sprite);
}

void SceneryMove(Sprite& sprite)
{
    if (!sprite.cur.visible) {
        sprite.cur.visible = true;
        sprite.changed = true;
    }
    if (gHuntOver)
        hideAndDie(sprite);
}

void NewAnimal()
{
    if (s->animalsOut >= kMostAnimalsOut || s->animalsShot >= kMostHits)
        return;
    const Int kind = pickKind();
    if (kind < 0 || !s->animals[at(kind)][0])
        return;
    ++s->animalsOut;
    const bool fromRight = (Random() & 1) == 0;
    const std::size_t set = fromRight ? 1 : 0;
    const SpriteRef sprite = AddSprite(s->world, s->animals[at(kind)][set], s->animalMasks[at(kind)][set], 0,
        gAnimalFrames[at(kind)] - gAnimalDeathFrames[at(kind)], -1, 0, 0);
    sprite->id = kind - 8;
    sprite->moveProc = AnimalMove;
    sprite->moveDH = fromRight ? -gAnimalSpeed[at(kind)] : gAnimalSpeed[at(kind)];
    sprite->moveInterval = 1;
    sprite->frameInterval = gAnimalFrameRate[at(kind)];
    moveTo(*sprite, fromRight ? kRight : kLeft - widthOf(*sprite), kTop + RandomN(kDepth - heightOf(*sprite)));
    sortIn(sprite);
}

void AnimalMove(Sprite& sprite)
{
    if (sprite.dead || gHuntOver) {
        hideAndDie(sprite);
        --s->animalsOut;
        return;
    }
    if (sprite.id <= kSceneryID) {
        walkOn(sprite);
    } else if (sprite.moveDH != 0) {
        beginDeath(sprite);
    } else if (sprite.curFrame == sprite.lastFrame) {
        sprite.frameInterval = 0;
    }
}

void Shoot(Int v, Int h)
{
    if (s->shooting)
        return;
    StopSound();
    if (s->shots >= s->bullets) {
        QueueSound(kEmptySound);
        return;
    }
    QueueSound(kShotSound);
    ++s->shots;
    const SpriteRef bullet =
        AddSprite(s->world, s->scenery, nullptr, kBulletFrame, kBulletFrame, 1, kMuzzle.h, kMuzzle.v);
    bullet->moveProc = BulletMove;
    SWRemoveSprite(s->world, bullet);
    SWInsertSprite(s->world, bullet, 1);
    s->shotSteps = std::max(std::abs(kMuzzle.h - h), std::abs(kMuzzle.v - v)) / kShotSpeed;
    SpriteMove(*bullet, s->shotSteps, h - kMuzzle.h, v - kMuzzle.v);
    s->shooting = true;
}

void BulletMove(Sprite& sprite)
{
    if (!s->shooting)
        return;
    if (!gHuntOver && s->shotSteps != 0) {
        SpriteStep(sprite);
        --s->shotSteps;
        return;
    }
    hideAndDie(sprite);
    s->shooting = false;
    if (gHuntOver)
        return;
    if (const SpriteRef target = firstHit(sprite); target && target->id != kSceneryID)
        hit(*target);
}

} // namespace Wainroad
