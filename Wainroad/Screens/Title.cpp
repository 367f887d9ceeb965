#include "Wainroad/Screens/Title.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Journal/LogText.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Screens/Setup.h"
#include "Wainroad/Simulation/Random.h"

namespace Wainroad {

namespace {

enum TitleItems : Int { kPictureItemNo = 1, kLoadItem = 2, kTravelItem = 3 };
constexpr Int kTitleImages = 9000, kTitleFrameCount = 67;
constexpr Int kTitleTicks = 7200; // two minutes to the legends
constexpr Int kFrameTicks = 2;    // an animation frame lasts 2 ticks

/// One moving part of the picture: frames `first` to `last` at (`h`, `v`), one step in `stepFrames` frames, `times`
/// runs and then a pause of `minWait` to `minWait + randWait - 1` frames.
struct AnimationSpec {
    bool swings;
    Int first, last, h, v, stepFrames, minWait, randWait, times;
};
constexpr std::array<AnimationSpec, 11> kAnimations{{
    {true, 1, 9, 222, 113, 15, 0, 0, 1},
    {false, 10, 12, 79, 152, 5, 40, 30, 3},
    {true, 13, 15, 19, 128, 90, 30, 40, 1},
    {false, 16, 17, 141, 158, 25, 80, 80, 1},
    {false, 18, 19, 109, 158, 30, 40, 80, 1},
    {false, 20, 29, 368, 162, 3, 40, 40, 1},
    {false, 30, 37, 438, 164, 2, 60, 50, 1},
    {false, 38, 40, 456, 196, 20, 50, 70, 1},
    {false, 41, 42, 296, 188, 15, 40, 40, 1},
    {true, 43, 44, 326, 275, 1, 40, 100, 3},
    {true, 45, 46, 212, 205, 1, 40, 60, 3},
}};

struct AnimationState {
    Int wait = 0;      // frames of pause left
    Int cycles = 0;    // runs left
    Int direction = 0; // of a swing, 1 or -1
};

struct TitleState {
    SpriteWorld world;
    Int nextFrame = 0; // tick
    std::array<AnimationState, kAnimations.size()> animations;
};
RunState<TitleState> sTitle;

/// Starts the pause between two rounds of an animation.
void pauseAnimation(Sprite& sprite, const AnimationSpec& spec, AnimationState& state)
{
    state.wait = RandomN(spec.randWait) + spec.minWait;
    state.cycles = spec.times;
    sprite.frameInterval = sprite.moveInterval = 0;
}

/// Counts a pause down, and sets the pace of the steps. @return True if the next frame is due.
bool stepIsDue(Sprite& sprite, const AnimationSpec& spec, AnimationState& state)
{
    if (state.wait != 0) {
        --state.wait;
        return false;
    }
    sprite.moveInterval = spec.stepFrames;
    return sprite.moveCounter == 0;
}

const AnimationSpec* specOf(const Sprite& sprite)
{
    return sprite.id >= 0 && sprite.id < I(kAnimations.size()) ? &kAnimations[static_cast<std::size_t>(sprite.id)]
                                                               : nullptr;
}
AnimationState& stateOf(const Sprite& sprite) { return sTitle->animations[static_cast<std::size_t>(sprite.id)]; }

void buildAnimations(SpriteWorld& world, const BitMapsRef& frames)
{
    for (std::size_t id = 0; id < kAnimations.size(); ++id) {
        const AnimationSpec& spec = kAnimations[id];
        const SpriteRef sprite = AddSprite(world, frames, nullptr, spec.first, spec.last, 0, spec.h, spec.v);
        sprite->id = I(id);
        sprite->moveProc = spec.swings ? SwingAnimation : LoopAnimation;
        sTitle->animations[id] = {RandomN(spec.randWait), spec.times, spec.swings ? 1 : 0};
    }
    const SpriteRef picture = AddSprite(world, frames, nullptr, 0, 0, 0, 9, 9);
    picture->id = I(kAnimations.size());
}

void openTitleItem(View& item)
{
    AddTimer(item, 0);
    const auto frames = std::make_shared<BitMaps>(LoadImages(kTitleImages, 0, kTitleFrameCount)->frames);
    sTitle->world = {};
    sTitle->world.bounds = item.r;
    SWOpenPort(sTitle->world);
    buildAnimations(sTitle->world, frames);
}

Int titleItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item))
            openTitleItem(item);
        return 1;
    case kMsgTimer:
        if (FrontWindow() == gWindow && !gInBackground && TickCount() >= sTitle->nextFrame) {
            SWAnimate(sTitle->world, nullptr, true, true);
            sTitle->nextFrame = TickCount() + kFrameTicks;
        }
        return 1;
    case kMsgDraw:
        if ((msg.param & 0xFFFF) != 0) {
            SendMsg(item, kMsgClose);
            SendMsg(item, kMsgOpen);
        }
        SWDraw(sTitle->world, sTitle->world.last().get(), thePort->visRgn->region.bounds(), true);
        return 1;
    case kMsgClick: return 0; // a picture
    case kMsgClose:
        SWDispose(sTitle->world);
        sTitle->world = {};
        RemoveTimer(item);
        return 1;
    default: return UserItem.fn(item, msg);
    }
}

/// Leaves the title for a journey: no introduction and no export while a party is made up.
void disableTitleMenus()
{
    DisableItem(GetMHandle(1003), 1);
    DisableItem(GetMHandle(1001), 4);
}

void openTitle(View& panel)
{
    ClearKeys();
    AddTimer(panel, kTitleTicks);
    InstallUserItem(panel, kPictureItemNo, titleItem);
    TextFont(6322);
    TextSize(14);
    TextFace(1);
    if (LogTextIsEmpty())
        DisableItem(GetMHandle(1001), 4);
    else
        EnableItem(GetMHandle(1001), 4);
}

Int titlePanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            openTitle(panel);
        } else {
            const Str255 none{0};
            ParamText(&none, nullptr, nullptr, nullptr);
        }
        return PanelDescriptor(1, 13, 9000);
    case kMsgClick:
        switch (MsgItem(msg)) {
        case kTravelItem:
            disableTitleMenus();
            TravelTheTrail();
            break;
        case kLoadItem:
            disableTitleMenus();
            LoadGame();
            break;
        default: OpenPanel(LegendsPanel);
        }
        return 1;
    case kMsgTimer: OpenPanel(LegendsPanel); return 1;
    case kMsgClose: RemoveTimer(panel); return 1;
    default: return 0;
    }
}

} // namespace

const ViewProc TitlePanel{titlePanelProc};
const ViewProc titleItem{titleItemProc};

void LoopAnimation(Sprite& sprite)
{
    const AnimationSpec* spec = specOf(sprite);
    if (!spec)
        return;
    AnimationState& state = stateOf(sprite);
    if (!stepIsDue(sprite, *spec, state))
        return;
    Int next = sprite.curFrame + 1;
    if (next > spec->last) {
        next = spec->first;
        --state.cycles;
    }
    SpriteSetFrame(sprite, next);
    if (next == spec->first && state.cycles == 0)
        pauseAnimation(sprite, *spec, state);
}

void SwingAnimation(Sprite& sprite)
{
    const AnimationSpec* spec = specOf(sprite);
    if (!spec)
        return;
    AnimationState& state = stateOf(sprite);
    if (!stepIsDue(sprite, *spec, state))
        return;
    Int next = sprite.curFrame + state.direction;
    if (next > spec->last) {
        next = spec->last - 1;
        state.direction = -1;
        --state.cycles;
    } else if (next < spec->first) {
        next = spec->first + 1;
        state.direction = 1;
    }
    SpriteSetFrame(sprite, next);
    if (next == spec->first && state.direction == -1 && state.cycles == 0)
        pauseAnimation(sprite, *spec, state);
}

} // namespace Wainroad
