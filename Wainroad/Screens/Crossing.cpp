#include "Wainroad/Screens/Crossing.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Sprites.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Journal/Names.h"
#include "Wainroad/Screens/Losses.h"
#include "Wainroad/Screens/Mourning.h"
#include "Wainroad/Screens/River.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Random.h"

namespace Wainroad {

namespace {

constexpr Int kMessages = 3021;
constexpr Int kCrossingID = 5310, kCrossingFrames = 18; // of the frames and of the scripts
constexpr std::array<Int, 3> kMaskedFrames{7, 9, 12};
constexpr Int kFrameTicks = 3;
constexpr Int kReportTicks = 180;
constexpr TextStyleRec kListStyle{6322, 0, 1, 12, 0};

struct CrossingState {
    SpriteWorld world;
    bool showing = false;
    Int frames = 0, nextFrame = 0;
    bool hasLosses = false;       // the report lists losses
    Int wait = 0, secondWait = 0; // the spans of the report's timer
    Int waitUntil = 0;            // for the other wagons
};
RunState<CrossingState> s;

Str255 message(Int index) { return ListString(kMessages, index); }

// ---- The scene

/// Script `n` of the resource; nothing if it is not there whole.
std::optional<Bytes> crossingScript(Int n)
{
    const Handle scripts = GetResource(os("Scpt"), kCrossingID);
    if (!scripts)
        return std::nullopt;
    ByteReader in(scripts->bytes, 2);
    for (; !in.atEnd(); --n) {
        const Int length = in.s32() - 4;
        if (length < 0 || length > scripts->count() - in.pos)
            return std::nullopt;
        if (n == 0)
            return in.raw(length);
        in.skip(length);
    }
    return std::nullopt;
}

void addActor(const BitMapsRef& frames, const BitMapsRef& masks, Int script)
{
    const SpriteRef sprite = AddSprite(s->world, frames, masks, 0, kCrossingFrames - 1, masks ? -1 : 0, 0, 0);
    sprite->script = crossingScript(script);
    sprite->dead = !sprite->script; // without a script it would never leave
}

/// Puts the actors on, front to back.
void castScene(const BitMapsRef& frames, const BitMapsRef& masks)
{
    const Int method = gCrossMethod == kFord ? 2 : gCrossMethod == kFloat ? 0 : 1;
    if (gCrossOutcome == 0) {
        addActor(frames, masks, method + 7);
        addActor(frames, nullptr, 1);
    } else {
        for (Int script = 3; script <= 6; ++script)
            addActor(frames, nullptr, script);
        addActor(frames, masks, method + 10);
    }
    addActor(frames, nullptr, 2);
    addActor(frames, nullptr, 0);
}

void openCrossing(View& item)
{
    AddTimer(item, 0);
    const auto frames = std::make_shared<BitMaps>(LoadImages(kCrossingID, 0, kCrossingFrames)->frames);
    const auto masks = std::make_shared<BitMaps>(kCrossingFrames);
    for (const Int frame : kMaskedFrames)
        MakeMask(*frames, frame, *masks);
    s->world = {};
    s->world.bounds = item.r;
    SWOpenPort(s->world);
    castScene(frames, masks);
    s->showing = true;
    SWAnimate(s->world, nullptr, true, false);
    s->frames = 0;
}

void closeCrossing(View& item)
{
    SWDispose(s->world);
    s->world = {};
    RemoveTimer(item);
    for (const Int menuItem : {6, 7, 2, 4})
        EnableItem(GetMHandle(1001), menuItem);
}

/// Makes the scene anew and brings it to where it was.
void reopenCrossing(View& item)
{
    const Int frames = s->frames;
    SendMsg(item, kMsgClose);
    SendMsg(item, kMsgOpen);
    for (; s->frames < frames; ++s->frames)
        SWAnimate(s->world, nullptr, true, false);
}

void animateCrossing(const View& item)
{
    if (!s->showing)
        return;
    if (s->world.sprites.empty()) {
        s->showing = false;
        ClosePanel(CrossingPanel);
        ClosePanel(CrossingTextPanel);
        OpenPanel(CrossingResultPanel);
        return;
    }
    if (item.disabled != 0 || TickCount() < s->nextFrame)
        return;
    s->nextFrame = TickCount() + kFrameTicks;
    const ViewPortScope port(const_cast<View&>(item));
    SWAnimate(s->world, nullptr, true, true);
    ++s->frames;
}

Int crossingItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item))
            openCrossing(item);
        return 1;
    case kMsgDraw:
        if ((msg.param & 0xFFFF) != 0)
            reopenCrossing(item);
        if (s->showing)
            SWDraw(s->world, s->world.last().get(), item.r, true);
        return 1;
    case kMsgTimer: animateCrossing(item); return 1;
    case kMsgClose: closeCrossing(item); return 1;
    default: return UserItem.fn(item, msg);
    }
}

Int crossingPanelProc(View& panel, Msg& msg)
{
    if (msg.what != kMsgOpen)
        return 0;
    if (ItemsLoaded(panel)) {
        SendCommand(kCommandCross, 0, 0);
        InstallUserItem(panel, 1, crossingItem);
    }
    return PanelDescriptor(3, 4, 5310);
}

Int crossingTextProc(View& panel, Msg& msg)
{
    if (msg.what != kMsgOpen)
        return 0;
    if (ItemsLoaded(panel)) {
        SetItemJust(panel, 1, 1);
    } else {
        const Str255 text = message(4);
        ParamText(&text, nullptr, nullptr, nullptr);
    }
    return PanelDescriptor(3, 5, 5400);
}

// ---- The wait for the other wagons

enum WaitItems : Int { kWaitingCount = 2, kCrossedCount = 3 };

void drawCount(View& panel, Int item, Int n)
{
    const View* place = GetItem(panel, item);
    if (!place)
        return;
    const StyleScope style({6322, 1, 1, 14, 0});
    FontInfo font;
    GetFontInfo(font);
    EraseRect(place->r);
    MoveTo(place->r.left, place->r.top + font.ascent);
    DrawString(pstr(std::to_string(n)));
}

void watchOthers(View& panel)
{
    Int crossed = 0;
    const Int all = UsedSlots(gState);
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        if (SlotUsed(gState, slot) && (WagonOf(gState, slot).flags2 & kFlag2CrossingChosen) != 0)
            ++crossed;
    const ViewPortScope port(panel);
    drawCount(panel, kWaitingCount, all - crossed);
    drawCount(panel, kCrossedCount, crossed);
    const bool left = (WagonOf(gState, gMySlot).flags2 & kFlag2CrossingChosen) == 0;
    if (all == crossed || (TickCount() > s->waitUntil && left) || gState.leader != gTrain.leader)
        ClosePanel(CrossWaitPanel);
}

Int crossWaitProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            s->waitUntil = TickCount() + 300;
            for (Int item = 1; GetItem(panel, item); ++item) {
                SetItemSize(panel, item, 14);
                SetItemFace(panel, item, 1);
            }
            AddTimer(panel, 15);
        }
        return PanelDescriptor(3, 10, 6360);
    case kMsgTimer: watchOthers(panel); return 1;
    case kMsgClose:
        RemoveTimer(panel);
        OpenPanel(CrossingPanel);
        OpenPanel(CrossingTextPanel);
        return 1;
    default: return 0;
    }
}

// ---- The report

void prepareReport(View& panel)
{
    s->hasLosses = gCrossResult == kCrossLosses1 || gCrossResult == kCrossLosses2;
    if (s->hasLosses) {
        ComputeCrossingLosses();
        s->wait = RandomN(kReportTicks);
        panel.style = kListStyle;
    } else {
        s->wait = 3;
        const Str255 text = message(gCrossResult == kCrossMud ? 2 : gCrossResult == kCrossWet ? 3 : 1);
        ParamText(&text, nullptr, nullptr, nullptr);
    }
    s->secondWait = 0;
    gArrivedAt = gState.landmark - 1;
}

/// The first span ends in a second one, that in the travel screen.
void endSpan(View& panel)
{
    if (s->secondWait != 0) {
        ShowTravelScreen();
        return;
    }
    s->secondWait = kReportTicks - s->wait;
    RemoveTimer(panel);
    AddTimer(panel, s->secondWait);
    if (s->secondWait == 0)
        s->secondWait = 1;
}

void closeReport(View& panel)
{
    gCrossing = false;
    RemoveTimer(panel);
    SendCrossingLosses();
    if (gMourning) {
        gTrain.mode &= ~I(kModeMoving);
        OpenPanel(MourningPanel);
        OpenPanel(MourningTextPanel);
    }
}

Int crossingResultProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            if (s->hasLosses)
                InstallUserItem(panel, 3, LossesItem);
            AddTimer(panel, s->wait);
            SetKeys(panel, 1, 1, 0);
        } else {
            prepareReport(panel);
        }
        return PanelDescriptor(1, 10, s->hasLosses ? 6330 : 6320);
    case kMsgClick:
        s->secondWait = 0;
        s->wait = kReportTicks;
        endSpan(panel);
        return 1;
    case kMsgTimer: endSpan(panel); return 1;
    case kMsgClose: closeReport(panel); return 1;
    default: return 0;
    }
}

/// Draws lines one under the other.
struct LineDrawer {
    Int h, v, step;

    void draw(const Str255& text)
    {
        MoveTo(h, v);
        DrawString(text);
        v += step;
    }
};

void drawGoodsLost(LineDrawer& lines)
{
    for (Int slot = 0; slot < kSupplyCount; ++slot) {
        const Int lost = gCrossLoss.supplies[static_cast<std::size_t>(slot)];
        Str255 text{0};
        AppendAmount(text, slot, slot == kOxen ? (lost + 1) / 2 : lost);
        if (lost != 0)
            lines.draw(text);
    }
}

void drawDrowned(LineDrawer& lines)
{
    if (gCrossLoss.drowned[0] != 0) {
        Str255 everyone;
        GetIndString(everyone, 1522, 25);
        lines.draw(everyone);
        return;
    }
    const Wagon& wagon = WagonOf(gState, gMySlot);
    for (std::size_t member = 1; member < kMaxPeople; ++member) {
        if (gCrossLoss.drowned[member] == 0)
            continue;
        Str255 text = wagon.family[member - 1];
        PStrAppend(text, pstr(" "));
        PStrAppend(text, message(8));
        lines.draw(text);
    }
}

void drawLosses(const View& item)
{
    const StyleScope style(kListStyle);
    FontInfo font;
    GetFontInfo(font);
    LineDrawer lines{item.r.left, item.r.top + font.ascent, font.ascent + font.descent + font.leading};
    if (NothingLost(gCrossLoss)) {
        lines.draw(message(5));
        lines.draw(message(6));
        return;
    }
    MoveTo(lines.h, lines.v);
    DrawString(message(7));
    lines.h += 50;
    drawGoodsLost(lines);
    drawDrowned(lines);
}

Int lossesItemProc(View& item, Msg& msg)
{
    if (msg.what != kMsgDraw)
        return UserItem.fn(item, msg);
    drawLosses(item);
    return 1;
}

} // namespace

const ViewProc CrossingPanel{crossingPanelProc};
const ViewProc CrossingTextPanel{crossingTextProc};
const ViewProc CrossWaitPanel{crossWaitProc};
const ViewProc CrossingResultPanel{crossingResultProc};
const ViewProc crossingItem{crossingItemProc};
const ViewProc LossesItem{lossesItemProc};

} // namespace Wainroad
