#include "Wainroad/Screens/Raft.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Journal/Names.h"
#include "Wainroad/Screens/Losses.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"
#include "Wainroad/Simulation/Random.h"

#include <algorithm>

namespace Wainroad {

Wagon gRaftWagon;
LossPacket gRaftLoss;
std::array<bool, kMaxPeople> gRaftDrowned{};

namespace {

constexpr Int kMessages = 3021, kArrivingTexts = 3026;
constexpr Int kCrashSound = 9006, kMourningSound = 9001;
constexpr Int kRaft = 1; // bit of `flags2`

struct RaftState {
    bool sent = false; // the losses of the whole run have been sent
};
RunState<RaftState> s;
const AtRunStart sFreshStart([] {
    gRaftWagon = {};
    gRaftLoss = {};
    gRaftDrowned = {};
});

void closeClip() { SetClip(NewRgn()); } // the next panel opens it again

void fetchCrashSound() { GetResource(os("snd "), kCrashSound); }

void sendRaftLoss(Int command) { SendLossPacket(command, gRaftLoss.supplies, gRaftLoss.drowned); }

void drownMember(std::size_t member)
{
    gRaftLoss.drowned[member] = 1;
    gRaftWagon.illness[member] = kDead;
    gRaftDrowned[member] = true;
    --gRaftWagon.people;
}

/// What the whole run has cost.
void sumLosses()
{
    const Wagon& before = WagonOf(gState, gMySlot);
    for (std::size_t slot = 0; slot < kSupplyCount; ++slot)
        gRaftLoss.supplies[slot] = HeldS16(before.supply[slot] - gRaftWagon.supply[slot]);
    for (std::size_t member = 0; member < kMaxPeople; ++member)
        gRaftLoss.drowned[member] = gRaftDrowned[member] ? 1 : 0;
}

// ---- Panels

Int raftIntroProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            AddTimer(panel, 30);
            fetchCrashSound();
        } else {
            panel.style = kDefaultStyle;
            panel.style.just = 1;
        }
        return PanelDescriptor(3, 13, 9201);
    case kMsgTimer:
        RemoveTimer(panel);
        OpenPanel(RaftPanel);
        return 1;
    default: return 0;
    }
}

Int raftPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            InstallUserItem(panel, 1, raftItem);
        return PanelDescriptor(3, 13, 9200);
    case kMsgClose: closeClip(); return 1;
    default: return 0;
    }
}

void endJourney(View& panel)
{
    RemoveTimer(panel);
    if (gMyID == gState.leader) {
        SendMessage(kMessageArrival, 0, 0, 0, kAllNodes);
        gTrain.mode = kModeOver;
    }
    fetchCrashSound();
    closeClip();
}

Int arrivingProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            AddTimer(panel, 60);
            s->sent = false;
        } else {
            const Str255 text = ListString(kArrivingTexts, gState.wagons == 1 ? 1 : 2);
            ParamText(&text, nullptr, nullptr, nullptr);
            panel.style = kDefaultStyle;
            panel.style.just = 1;
        }
        return PanelDescriptor(3, 13, 9202);
    case kMsgTimer:
        if (!s->sent) {
            sendRaftLoss(kCommandRafted);
            s->sent = true;
        } else if (CountAilments(gState, -1, 0, kRaft) == 0) { // nobody is on the water any more
            endJourney(panel);
        }
        return 1;
    default: return 0;
    }
}

// ---- The report of a rock

/// Draws lines in columns of the box.
struct ColumnDrawer {
    Rect box;
    Int h, top, v, step;

    void draw(const Str255& text)
    {
        constexpr Int kColumnWidth = 200;
        MoveTo(h, v);
        DrawString(text);
        v += step;
        if (v > box.bottom) {
            h += kColumnWidth;
            v = top;
        }
    }
};

/// Clears and frames the box of the report. @return What is inside the frame.
Rect drawReportBox()
{
    constexpr Int kBlackColor = 33, kWhiteColor = 30;
    Rect box{150, 9, 300, 414};
    ForeColor(kWhiteColor);
    PenNormal();
    PaintRect(box);
    ForeColor(kBlackColor);
    PenNormal();
    FrameRect(box);
    box.inset(3, 3);
    PenSize(2, 2);
    FrameRect(box);
    PenSize(1, 1);
    box.inset(3, 3);
    return box;
}

Str255 drownedLine(Str255 name)
{
    PStrAppend(name, pstr(" "));
    PStrAppend(name, ListString(kMessages, 8));
    return name;
}

void drawLossColumns(const Rect& box, Int top, Int lineHeight)
{
    ColumnDrawer lines{box, box.left + 30, top, top, lineHeight};
    for (Int slot = 0; slot < kSupplyCount; ++slot) {
        const Int lost = gRaftLoss.supplies[static_cast<std::size_t>(slot)];
        if (lost == 0)
            continue;
        Str255 text{0};
        AppendAmount(text, slot, slot == kOxen ? (lost + 1) / 2 : lost);
        lines.draw(text);
    }
    if (gRaftLoss.drowned[0] != 0)
        lines.draw(drownedLine(
            gState.names[static_cast<std::size_t>(gState.order[static_cast<std::size_t>(gMySlot & 31)] & 31)]));
    for (std::size_t member = 1; member < kMaxPeople; ++member)
        if (gRaftLoss.drowned[member] != 0)
            lines.draw(drownedLine(gRaftWagon.family[member - 1]));
}

} // namespace

const ViewProc RaftIntroPanel{raftIntroProc};
const ViewProc RaftPanel{raftPanelProc};
const ViewProc ArrivingPanel{arrivingProc};

void StartRaft()
{
    for (const Int item : {6, 2, 4})
        DisableItem(GetMHandle(1001), item);
    gRaftLoss = {};
    sendRaftLoss(kCommandRaft);
    gRaftWagon.copy(WagonOf(gState, gMySlot));
    gRaftDrowned = {};
    OpenPanel(RaftIntroPanel);
}

void FinishRaft()
{
    StopSound();
    sumLosses();
    if (gRaftWagon.people > 0) {
        OpenPanel(ArrivingPanel);
        return;
    }
    sendRaftLoss(kCommandRafted);
    ClosePanel(RaftPanel);
    fetchCrashSound();
}

void LoseSupplies3(Int percent) { LoseSupplies2(gRaftWagon, percent, gRaftLoss); }

void LoseOxen2(Int percent) { LoseOxen(gRaftWagon, percent, gRaftLoss); }

void Drown2(Int percent)
{
    const auto members = static_cast<std::size_t>(std::clamp<Int>(gRaftWagon.startPeople, 0, kMaxPeople));
    for (std::size_t member = 1; member < members; ++member)
        if (gRaftWagon.illness[member] != kDead && Chance(percent))
            drownMember(member);
    if (gRaftWagon.people == 1 && gRaftWagon.illness[0] != kDead && Chance(percent))
        drownMember(0);
}

void StrikeRock()
{
    StopSound();
    PlaySound(kCrashSound);
    gRaftLoss.drowned = {};
    gRaftLoss.supplies = {};
    LoseSupplies3(50);
    LoseOxen2(40);
    Drown2(40);
    for (std::size_t slot = 0; slot < kSupplyCount; ++slot) {
        gRaftLoss.supplies[slot] = std::min(gRaftLoss.supplies[slot], gRaftWagon.supply[slot]);
        gRaftWagon.supply[slot] -= gRaftLoss.supplies[slot];
    }
}

void DrawRaftLosses()
{
    const StyleScope style({6322, 1, 0, 12, 0});
    const Rect box = drawReportBox();
    FontInfo font;
    GetFontInfo(font);
    const Int line = font.ascent + font.descent + font.leading;
    const Int h = box.left + 10, v = box.top + 10 + line;
    MoveTo(h, v);
    if (NothingLost(gRaftLoss)) {
        DrawString(ListString(kMessages, 5));
        MoveTo(h, v + line);
        DrawString(ListString(kMessages, 6));
        return;
    }
    DrawString(ListString(kMessages, 7));
    drawLossColumns(box, v + line, line);
    const auto drowned = [](Int flag) { return flag != 0; };
    if (std::any_of(gRaftLoss.drowned.begin(), gRaftLoss.drowned.end(), drowned))
        PlaySound(kMourningSound);
}

} // namespace Wainroad
