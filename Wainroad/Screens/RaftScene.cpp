#include "Wainroad/Screens/RaftScene.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Simulation/Random.h"

#include <algorithm>
#include <cstdlib>

namespace Wainroad {

namespace {

constexpr Int kRaftImages = 9200, kBankImages = 9201, kImageFrames = 11;
constexpr Int kMapFrame = 0, kMarkerFrame = 1, kStraightFrame = 3, kFirstRockFrame = 5, kLastRockFrame = 10;
constexpr Int kBankLastFrame = 10;
enum SpriteID : Int { kLeftBank = -1, kRightBank = -2, kRaftID = -3, kMarkerID = -4, kFirstRockID = -5 };
constexpr Int kRunFrames = 1340, kCalmFrames = 150; // no new rock in the last 150
constexpr Int kRaftTop = 210, kRaftMinH = 9, kRaftMaxH = 351, kSteerPixels = 4;
constexpr Int kRockTop = 39, kRockGone = 314, kRockWaitFrames = 20;
constexpr std::size_t kRockSlots = 3;
constexpr Int kNoLane = -999;
constexpr Int kFrameTicks = 3, kPauseTicks = 2;
constexpr Int kPauseStart = 100, kPauseEnd = 1; // of `crashPause`
constexpr Int kBlackColor = 33, kWhiteColor = 30;

/// Rows of the raft's outline, in window coordinates, and its edges in each, relative to the raft's left edge.
struct Band {
    Int top, bottom;
};
constexpr std::array<Band, 4> kRaftBand{{{210, 217}, {218, 222}, {222, 240}, {240, 253}}};
struct Edge {
    Int left, right;
};
constexpr std::array<std::array<Edge, 4>, 3> kRaftEdge{{
    // by `steer` + 1
    {{{21, 41}, {12, 40}, {8, 48}, {6, 58}}},
    {{{16, 36}, {17, 45}, {11, 50}, {5, 57}}},
    {{{26, 46}, {23, 49}, {13, 53}, {5, 57}}},
}};

struct Rock {
    bool used = false;
    float drift = 0;    // sideways, pixels in half a frame
    float fraction = 0; // drift not yet made
};

struct RunOfRaft {
    SpriteWorld world;
    BitMapsRef frames, masks, leftBank, rightBank;
    Int riverLeft = 0;  // frames
    Int nextFrame = 0;  // tick
    Int crashPause = 0; // 0 runs; 100 a fresh crash, 1 the end of its report
    Int steer = 0;      // -1, 0 or 1
    Int raftH = 0, raftWidth = 0;
    Int rockWait = 0, rocks = 0, maxRocks = 0, lastRockX = kNoLane;
    std::array<Rock, kRockSlots> rock;
    bool repaint = false; // the next background is drawn whole
};
RunState<RunOfRaft> s;

Rock& rockOf(const Sprite& sprite)
{
    return s->rock[static_cast<std::size_t>(std::clamp<Int>(kFirstRockID - sprite.id, 0, I(kRockSlots) - 1))];
}

void showFrame(Sprite& sprite, Int frame)
{
    if (sprite.curFrame == frame && sprite.firstFrame == frame)
        return;
    sprite.firstFrame = sprite.lastFrame = frame;
    SpriteSetFrame(sprite, frame);
}

void removeRock(Sprite& sprite)
{
    sprite.dead = true;
    rockOf(sprite).used = false;
    --s->rocks;
}

// ---- Opening

void loadRaftImages()
{
    s->frames = std::make_shared<BitMaps>(LoadImages(kRaftImages, 0, kImageFrames)->frames);
    s->masks = std::make_shared<BitMaps>(kImageFrames);
    for (Int frame = kMarkerFrame + 1; frame < kImageFrames; ++frame)
        MakeMask(*s->frames, frame, *s->masks);
    s->rightBank = std::make_shared<BitMaps>(LoadImages(kBankImages, 0, kImageFrames)->frames);
    gMirror = true;
    s->leftBank = std::make_shared<BitMaps>(LoadImages(kBankImages, 0, kImageFrames)->frames);
    gMirror = false;
}

/// The more it rained, the fewer rocks stand out of the water.
Int mostRocks()
{
    const Int rain = Held16(gTrain.rain);
    return rain < 700 ? 3 : rain < 850 ? 2 : 1;
}

void openRaft(View& item)
{
    AddTimer(item, 0);
    *s = {};
    loadRaftImages();
    s->world.bounds = item.r;
    SWOpenPort(s->world);
    s->riverLeft = kRunFrames;
    s->rockWait = kRockWaitFrames;
    NewRaft();
    NewMarker();
    NewBanks();
    NewRock();
    AddSprite(s->world, s->frames, nullptr, kMapFrame, kMapFrame, 0, 416, 8);
    s->maxRocks = mostRocks();
    s->lastRockX = kNoLane;
    s->repaint = true;
}

void closeRaft(View& item)
{
    SWDispose(s->world);
    *s = {};
    RemoveTimer(item);
}

void reopenRaft(View& item)
{
    const Int left = s->riverLeft;
    SendMsg(item, kMsgClose);
    SendMsg(item, kMsgOpen);
    s->riverLeft = left;
}

// ---- Running

void readMouse()
{
    s->steer = 0;
    if (FrontWindow() != gWindow || gInBackground)
        return;
    Point mouse;
    GetMouse(mouse);
    s->steer = mouse.h > s->raftH + s->raftWidth ? 1 : mouse.h < s->raftH ? -1 : 0;
}

void maybeNewRock()
{
    const Int lot = RandomN(40);
    if ((s->rocks == 0 || lot == 7) && s->rockWait == 0 && s->riverLeft > kCalmFrames && s->rocks < s->maxRocks) {
        s->rockWait = kRockWaitFrames;
        NewRock();
    }
}

/// One pass of the run's timer.
void runRaft(View& item)
{
    if (s->crashPause == kPauseStart || s->crashPause == kPauseEnd) {
        --s->crashPause;
        SendMsg(item, kMsgDraw);
    }
    if (TickCount() < s->nextFrame)
        return;
    if (s->crashPause != 0) {
        --s->crashPause;
        s->nextFrame = TickCount() + kPauseTicks;
        return;
    }
    readMouse();
    if (s->rockWait != 0)
        --s->rockWait;
    if (s->riverLeft == 0 || gRaftWagon.people == 0) {
        FinishRaft();
        return;
    }
    --s->riverLeft;
    s->nextFrame = TickCount() + kFrameTicks;
    maybeNewRock();
    SWAnimate(s->world, nullptr, true, true);
}

Int raftItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item))
            openRaft(item);
        return 1;
    case kMsgTimer: {
        const ViewPortScope port(item);
        runRaft(item);
        return 1;
    }
    case kMsgClick:
        if (s->crashPause != 0)
            s->crashPause = kPauseEnd;
        return 1;
    case kMsgDraw:
        item.style = {6322, 0, 1, 12, 0};
        if ((msg.param & 0xFFFF) != 0)
            reopenRaft(item);
        s->repaint = true;
        if (s->crashPause != 0)
            DrawRaftLosses();
        else
            SWDraw(s->world, s->world.last().get(), thePort->visRgn->region.bounds(), true);
        return 1;
    case kMsgClose: closeRaft(item); return 1;
    default: return UserItem.fn(item, msg);
    }
}

/// Where the marker stands after `q` frames: along the river as the map shows it.
float markerColumn(Int q)
{
    const auto p = static_cast<float>(q / 5);
    if (q < 95)
        return p * 0.166666667F + 464;
    if (q < 230)
        return 466;
    if (q < 575)
        return (p - 46) * 0.144927537F + 466;
    if (q < 770)
        return (p - 115) * -0.333333334F + 475;
    if (q < 960)
        return (p - 154) * -0.105263158F + 462;
    if (q < 1105)
        return (p - 192) * -0.379310345F + 457;
    return 446;
}

/// A lane at least 14 from the last rock's.
Int drawLane()
{
    Int lane = 0;
    do {
        lane = 23 - 7 * (std::abs(Random()) & 7);
        if (s->lastRockX == kNoLane)
            s->lastRockX = lane;
    } while (std::abs(lane - s->lastRockX) <= 14);
    s->lastRockX = lane;
    return lane;
}

/// Puts a rock right behind the raft, so that it is drawn below it.
void placeBehindRaft(const SpriteRef& rock)
{
    SWRemoveSprite(s->world, rock);
    Int position = 0;
    for (const SpriteRef& sprite : s->world.sprites) {
        ++position;
        if (sprite->id == kRaftID)
            break;
    }
    SWInsertSprite(s->world, rock, position);
}

} // namespace

const ViewProc raftItem{raftItemProc};

void NewRaft()
{
    const SpriteRef raft = AddSprite(s->world, s->frames, s->masks, kStraightFrame, kStraightFrame, -1, 0, 0);
    raft->id = kRaftID;
    raft->moveProc = MoveRaft;
    raft->moveInterval = 1;
    s->raftWidth = raft->cur.src.width();
    s->raftH = 190 - s->raftWidth / 2;
    SpriteMove(*raft, 0, s->raftH - raft->cur.pos.h, kRaftTop - raft->cur.pos.v);
}

void MoveRaft(Sprite& sprite)
{
    sprite.moveDH = s->steer * kSteerPixels;
    sprite.moveDV = 0;
    s->raftH += sprite.moveDH;
    if (s->raftH <= kRaftMinH || s->raftH >= kRaftMaxH) {
        s->raftH = s->raftH <= kRaftMinH ? kRaftMinH + 1 : kRaftMaxH - 1;
        s->steer = 0;
        sprite.moveDH = 0;
    }
    showFrame(sprite, s->steer + kStraightFrame);
}

void NewMarker()
{
    const SpriteRef marker = AddSprite(s->world, s->frames, nullptr, kMarkerFrame, kMarkerFrame, 0, 462, 290);
    marker->id = kMarkerID;
    marker->moveProc = MoveMarker;
    marker->moveDV = -1;
    marker->moveInterval = 1;
}

void MoveMarker(Sprite& sprite)
{
    const Int q = kRunFrames - s->riverLeft;
    sprite.moveDH = static_cast<Int>(markerColumn(q) - static_cast<float>(sprite.cur.pos.h));
    sprite.moveDV = (290 - q / 5) - sprite.cur.pos.v;
}

void NewBanks()
{
    s->world.drawBackground = DrawRiver;
    const struct {
        const BitMapsRef& frames;
        Int id, frameInterval, h;
    } kBanks[] = {{s->leftBank, kLeftBank, 1, 7}, {s->rightBank, kRightBank, 5, 327}};
    for (const auto& spec : kBanks) {
        const SpriteRef bank = AddSprite(s->world, spec.frames, nullptr, 0, kBankLastFrame, 0, spec.h, 9);
        bank->id = spec.id;
        bank->moveProc = SlowBank;
        bank->frameInterval = spec.frameInterval;
    }
}

void SlowBank(Sprite& sprite)
{
    // The first step of the left bank comes at once, so that the two banks run out of step.
    if (sprite.curFrame != 0 || sprite.id == kRightBank)
        sprite.frameInterval = 5;
}

void DrawRiver(const Rect&)
{
    const Rect water{36, 9, 313, 414};
    if (s->repaint) {
        ForeColor(kWhiteColor);
        PenNormal();
        PaintRect({9, 88, 36, 327});
        MoveTo(415, 9);
        LineTo(415, 313);
        ForeColor(kBlackColor);
    }
    PenPat(qd.gray);
    PaintRect(water);
    ForeColor(kBlackColor);
    PenNormal();
    if (s->repaint) {
        MoveTo(414, 9);
        LineTo(414, 313);
        s->repaint = false;
    }
}

void NewRock()
{
    const auto slot = std::find_if(s->rock.begin(), s->rock.end(), [](const Rock& rock) { return !rock.used; });
    if (slot == s->rock.end())
        return;
    ++s->rocks;
    const Int lane = drawLane();
    *slot = {true, static_cast<float>(lane) * 0.0178F, 0};
    const SpriteRef rock =
        AddSprite(s->world, s->frames, s->masks, kLastRockFrame, kLastRockFrame, -1, 2 * lane + 189, kRockTop);
    rock->id = kFirstRockID - I(slot - s->rock.begin());
    rock->moveProc = MoveRock;
    rock->moveInterval = 1;
    placeBehindRaft(rock);
}

void MoveRock(Sprite& sprite)
{
    if (RockHits(sprite)) {
        s->crashPause = kPauseStart;
        StrikeRock();
        removeRock(sprite);
        return;
    }
    Rock& rock = rockOf(sprite);
    rock.fraction += 2 * rock.drift;
    sprite.frameInterval = 0;
    sprite.moveDV = 2;
    sprite.moveDH = 0;
    if (rock.drift < 0 && rock.fraction < -2) {
        sprite.moveDH = -2;
        rock.fraction += 2;
    } else if (rock.drift > 0 && rock.fraction > 2) {
        sprite.moveDH = 2;
        rock.fraction -= 2;
    }
    const Int v = sprite.cur.pos.v;
    if (v >= kRockGone) {
        sprite.cur.visible = false;
        sprite.changed = true;
        removeRock(sprite);
        return;
    }
    showFrame(sprite, v < 64 ? kLastRockFrame : std::max(kLastRockFrame - (v - kRockTop) / 12, kFirstRockFrame));
}

bool RockHits(const Sprite& sprite)
{
    const Int v = sprite.cur.pos.v, h = sprite.cur.pos.h;
    const bool mayHit = v + 5 < 255 && v + 31 > 209 && s->raftH <= h + 64 && h + 1 <= s->raftH + 60;
    if (!mayHit)
        return false;
    const Rect upper{v + 5, h + 21, v + 21, h + 49}, lower{v + 21, h + 1, v + 31, h + 64};
    const auto& edges = kRaftEdge[static_cast<std::size_t>(s->steer + 1)];
    for (std::size_t band = 0; band < kRaftBand.size(); ++band) {
        const Rect raft{
            kRaftBand[band].top, s->raftH + edges[band].left, kRaftBand[band].bottom, s->raftH + edges[band].right};
        if (raft.intersects(upper) || raft.intersects(lower))
            return true;
    }
    return false;
}

} // namespace Wainroad
