#include "Wainroad/Screens/Setup.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/EditItems.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Journal/LogText.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Screens/Store.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Lobby.h"
#include "Wainroad/Simulation/Model.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace Wainroad {

namespace {

constexpr Int kFileMenu = 1001;

// ---- The letter

Int introPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            SetKeys(panel, 1, 1, 0);
        return PanelDescriptor(1, 13, 9220);
    case kMsgClick:
        if (MsgItem(msg) == 1) {
            ClosePanel(IntroPanel);
            OpenPanel(PartyPanel2);
        }
        return 1;
    default: return 0;
    }
}

// ---- The party

enum PartyItems : Int {
    kDone = 1,
    kLeaderName = 2,
    kFirstFamilyName = 3,
    kFrame = 7,
    kOccupations = 8,
    kAboutOccupations = 9,
    kFirstFigure = 12
};
constexpr Int kFamily = 4, kProposals = 10;
constexpr Int kNameWidth = 117; // pixels that a name may take
constexpr Int kNameKeys = 31;
constexpr Int kOccupationButtons = 9022; // the item list of the radio group
constexpr std::array<Int, 4> kFigureFrames{0, 2, 3, 4};

/// Puts four of the ten names on offer into the fields of the family.
void proposeNames(View& panel)
{
    std::array<Int, kProposals> list{};
    std::iota(list.begin(), list.end(), 0);
    for (Int i = 0; i < kProposals; ++i) {
        const Int j = std::abs(Random()) % kProposals;
        if (j != i)
            std::swap(list[static_cast<std::size_t>(i)], list[static_cast<std::size_t>(j)]);
    }
    for (Int i = 0; i < kFamily; ++i) {
        Str255 name;
        GetIndString(name, 3006, list[static_cast<std::size_t>(i) + 1] + 1);
        SetItemText(panel, kFirstFamilyName + i, characters(name));
    }
}

void openParty(View& panel)
{
    ClearKeys();
    SetKeys(panel, 0, 0, 0);
    gTENumeric = 0;
    gEditItems = 1 + kFamily;
    gTEMaxChars = kNameKeys;
    gTELimitWidth = 1;
    gTEMaxWidth = kNameWidth;
    ReadConfig();
    InstallUserItem(panel, kFrame, FrameItem, 0, qd.black);
    InstallUserItem(panel, kOccupations, RadioGroup, kOccupationButtons);
    for (std::size_t i = 0; i < kFigureFrames.size(); ++i)
        InstallUserItem(panel, kFirstFigure + I(i), ImageItemProc, 0,
            ImageSpec{9010, 19010, kFigureFrames[i], 1, std::min<Int>(gScreenDepth, 8)});
    gOccupation = 0;
    gTrainChoice = 0;
    proposeNames(panel);
}

void acceptParty(View& panel)
{
    std::array<Str255, 1 + kFamily> names;
    for (std::size_t i = 0; i < names.size(); ++i)
        GetItemText(panel, kLeaderName + I(i), names[i]);
    if (!EnterParty(names)) {
        OpenPanel(NoNamePanel);
        return;
    }
    gFormingShown = true;
    gTELimitWidth = 0;
    OpenPanel(StorePanel);
}

Int partyPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            openParty(panel);
        return PanelDescriptor(1, 13, 9020);
    case kMsgClick:
        switch (MsgItem(msg)) {
        case kAboutOccupations: OpenPanel(OccupationsInfoPanel); break;
        case kOccupations: gOccupation = MsgResult(msg) - 1; break;
        case kDone: acceptParty(panel); break;
        }
        return 1;
    default: return 0;
    }
}

Int noNamePanelProc(View& panel, Msg& msg)
{
    const Int answer = InfoPanel(panel, msg, NoNamePanel, PanelDescriptor(2, 13, 9019));
    if (msg.what == kMsgOpen && ItemsLoaded(panel))
        SetItemJust(panel, 2, 1);
    return answer;
}

Int occupationsInfoPanelProc(View& panel, Msg& msg)
{
    if (msg.what == kMsgOpen)
        panel.style = kInfoStyle;
    return InfoPanel(panel, msg, OccupationsInfoPanel, PanelDescriptor(2, 13, 9021));
}

// ---- The month

Int monthPanelProc(View&, Msg& msg)
{
    constexpr Int kFirstMonth = 3, kLastMonth = 12; // March, and what the climate knows
    switch (msg.what) {
    case kMsgOpen: return PanelDescriptor(1, 13, 9080);
    case kMsgClick: {
        const Int month = MsgItem(msg) - 1 + kFirstMonth;
        if (month > kLastMonth)
            return 1;
        BeginMonth(month);
        ShowTravelScreen();
        gPlaying = 2;
        for (const Int item : {4, 2, 6, 7})
            EnableItem(GetMHandle(kFileMenu), item);
        return 1;
    }
    default: return 0;
    }
}

} // namespace

const ViewProc IntroPanel{introPanelProc};
const ViewProc PartyPanel2{partyPanelProc};
const ViewProc NoNamePanel{noNamePanelProc};
const ViewProc OccupationsInfoPanel{occupationsInfoPanelProc};
const ViewProc MonthPanel{monthPanelProc};

Int InfoPanel(View& panel, Msg& msg, const ViewProc& proc, Int descriptor)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            PushKeys();
            SetKeys(panel, 1, 1, 0);
        }
        return descriptor;
    case kMsgClick:
        PopKeys();
        ClosePanel(proc);
        return 1;
    default: return 0;
    }
}

void TravelTheTrail()
{
    EnableItem(GetMHandle(kFileMenu), 6);
    DisableItem(GetMHandle(kFileMenu), 1);
    OpenLobby();
    OpenPanel(IntroPanel);
}

void LeaveLobby()
{
    CloseLobby();
    EnableItem(GetMHandle(kFileMenu), 7);
}

void StartSolo()
{
    BeginSolo();
    gCrossing = false;
    ClearLogText();
    OpenPanel(MonthPanel);
}

} // namespace Wainroad
