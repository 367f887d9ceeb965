#include "Wainroad/Screens/Scene.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Trail.h"

#include <algorithm>

namespace Wainroad {

namespace {

constexpr Int kSceneImages = 5100, kSceneFrameCount = 22;
constexpr Int kBackdropFrame = 0, kCloudFrame = 1, kGroundFrame = 2, kFirstOxenFrame = 3, kLastOxenFrame = 6;
constexpr Int kFirstLandmarkFrame = 8, kLastLandmarkFrame = 21;
constexpr Int kLeftEdge = 64, kRightEdge = 326; // of the scene, in window coordinates
constexpr Int kGroundTop = 81, kCloudTop = 32;
constexpr Int kLandmarkEnd = 254; // right edge of a landmark that is reached
constexpr Int kMilePixels = 3;
constexpr Int kFrameTicks = 3;
constexpr Int kOutOfSight = 1000;

struct SceneState {
    SpriteWorld world;
    SpriteRef landmark;
    Int shownToNext = -1, totalTicks = 0, frames = 0, lastTick = 0, landmarkH = 0;
    Int nextFrame = 0; // tick
};
RunState<SceneState> sScene;

Int widthOf(const Sprite& sprite) { return sprite.cur.src.width(); }
Int heightOf(const Sprite& sprite) { return sprite.cur.src.height(); }
Int endOf(const Sprite& landmark) { return kLandmarkEnd - widthOf(landmark); }

void place(Sprite& sprite, Int h, Int v)
{
    sprite.cur.pos = {v, h};
    sprite.cur.dst = sprite.cur.src.offsetBy(h, v);
    sprite.changed = true;
}

bool landmarkIsReached() { return sScene->landmark && sScene->landmark->cur.pos.h == endOf(*sScene->landmark); }

bool someoneIsCrossing() { return CountAilments(gState, -1, 0, kFlag2Crossing) > 0; }

/// Shows the landmark ahead, as far away as it is.
void showLandmark(Sprite& sprite)
{
    SpriteSetFrame(sprite, gLandmarkPictures[TrailRow(gPrev.landmark + 1)] + kFirstLandmarkFrame - 1);
    const bool hidden = someoneIsCrossing() || gPrev.landmark < 0;
    const Int h = kLandmarkEnd - (hidden ? kOutOfSight : widthOf(sprite) + kMilePixels * gPrev.toNext);
    place(sprite, h, (35 - heightOf(sprite)) / 2 + 46);
}

void openScene(View& item)
{
    AddTimer(item, 0);
    const auto frames = std::make_shared<BitMaps>(LoadImages(kSceneImages, 0, kSceneFrameCount)->frames);
    *sScene = {};
    SpriteWorld& world = sScene->world;
    world.bounds = item.r;
    SWOpenPort(world);

    const SpriteRef oxen = AddSprite(world, frames, nullptr, kFirstOxenFrame, kLastOxenFrame, 0, 256, 54);
    oxen->moveProc = OxenMove;
    oxen->frameInterval = 3 - gState.pace;

    sScene->landmark = AddSprite(world, frames, nullptr, kFirstLandmarkFrame, kLastLandmarkFrame, 0, 0, 0);
    sScene->landmark->moveProc = LandmarkMove;
    sScene->landmark->moveInterval = 1;
    showLandmark(*sScene->landmark);

    const SpriteRef ground = AddSprite(world, frames, nullptr, kGroundFrame, kGroundFrame, 0, 0, 0);
    place(*ground, kRightEdge - widthOf(*ground), kGroundTop);
    ground->moveProc = WagonMove;
    ground->moveInterval = 1;
    ground->moveDH = gState.pace + 1;

    const SpriteRef cloud = AddSprite(world, frames, nullptr, kCloudFrame, kCloudFrame, 0, 0, 0);
    place(*cloud, kRightEdge - widthOf(*cloud), kCloudTop);
    cloud->moveProc = CloudMove;
    cloud->moveInterval = 3 - gState.pace;
    cloud->moveDH = 1;

    AddSprite(world, frames, nullptr, kBackdropFrame, kBackdropFrame, 0, kLeftEdge, 9);
}

void closeScene(View& item)
{
    SWDispose(sScene->world);
    *sScene = {};
    RemoveTimer(item);
}

Int sceneItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item))
            openScene(item);
        return 1;
    case kMsgTimer:
        if (gPrev.mode == (kModeLive | kModeMoving) && TickCount() >= sScene->nextFrame) {
            sScene->nextFrame = TickCount() + kFrameTicks;
            const ViewPortScope port(item);
            SWAnimate(sScene->world, nullptr, true, item.disabled == 0);
        }
        return 1;
    case kMsgDraw:
        if ((msg.param & 0xFFFF) != 0) {
            SendMsg(item, kMsgClose);
            SendMsg(item, kMsgOpen);
        }
        SWDraw(sScene->world, sScene->world.last().get(), thePort->visRgn->region.bounds(), true);
        return 1;
    case kMsgClose: closeScene(item); return 1;
    default: return UserItem.fn(item, msg);
    }
}

Int travelSceneProc(View& panel, Msg& msg)
{
    if (msg.what != kMsgOpen)
        return 0;
    if (ItemsLoaded(panel))
        InstallUserItem(panel, 1, sceneItem);
    return PanelDescriptor(1, 2, 5100);
}

/// Lets a strip pass: back by its period at the left edge, at rest at a landmark.
void passBy(Sprite& strip, Int top, Int interval, Int step)
{
    if (strip.cur.pos.h >= kLeftEdge)
        place(strip, kRightEdge - widthOf(strip), top);
    strip.moveInterval = landmarkIsReached() ? 0 : interval;
    strip.moveDH = step;
}

/// Counts this frame. @return The average ticks of a frame, at least 1.
Int averageFrame()
{
    SceneState& s = *sScene;
    ++s.frames;
    Int average = 5;
    if (s.totalTicks == 0) {
        s.totalTicks = 5;
    } else {
        s.totalTicks += std::min<Int>(TickCount() - s.lastTick, 15);
        average = std::max<Int>(s.totalTicks / s.frames, 1);
    }
    s.lastTick = TickCount();
    return average;
}

/// Begins the slide of a day: to where the landmark stands in the middle of the day's miles.
void beginSlide(Sprite& sprite, Int average)
{
    const Int dayTicks = gState.speed * 60;
    Int distance =
        kLandmarkEnd - (widthOf(sprite) + kMilePixels * (gPrev.toNext - gPrev.milesToday / 2)) - sprite.cur.pos.h;
    if (distance < 1)
        distance = kMilePixels * (10 * gState.pace + 20);
    const Int steps = distance < 176 ? dayTicks / average : 0;
    sScene->shownToNext = gPrev.toNext;
    SpriteMove(sprite, steps, std::min<Int>(distance, 70), 0);
}

} // namespace

const ViewProc TravelScenePanel{travelSceneProc};
const ViewProc sceneItem{sceneItemProc};

void OxenMove(Sprite& sprite) { sprite.frameInterval = landmarkIsReached() ? 0 : 3 - gState.pace; }

void WagonMove(Sprite& sprite) { passBy(sprite, kGroundTop, 1, gState.pace + 1); }

void CloudMove(Sprite& sprite) { passBy(sprite, kCloudTop, 3 - gState.pace, 1); }

void LandmarkMove(Sprite& sprite)
{
    SceneState& s = *sScene;
    const Int average = averageFrame();
    if (s.shownToNext < gPrev.toNext) {
        showLandmark(sprite);
        s.landmarkH = -999;
    }
    if (s.shownToNext != gPrev.toNext)
        beginSlide(sprite, average);
    SpriteStep(sprite);
    if (sprite.cur.pos.h < s.landmarkH)
        place(sprite, s.landmarkH + 5, sprite.cur.pos.v);
    if (sprite.cur.pos.h > endOf(sprite))
        place(sprite, endOf(sprite), sprite.cur.pos.v);
    s.landmarkH = sprite.cur.pos.h;
}

} // namespace Wainroad
