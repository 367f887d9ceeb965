#include "Wainroad/Screens/Travel.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Misc.h"
#include "Wainroad/Frame/IconButton.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Journal/LogView.h"
#include "Wainroad/Screens/Choices.h"
#include "Wainroad/Screens/Guide.h"
#include "Wainroad/Screens/Hunt.h"
#include "Wainroad/Screens/Party.h"
#include "Wainroad/Screens/Rest.h"
#include "Wainroad/Screens/River.h"
#include "Wainroad/Screens/Route.h"
#include "Wainroad/Screens/Scene.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Store.h"
#include "Wainroad/Screens/Talk.h"
#include "Wainroad/Screens/Trade.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Lobby.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"
#include "Wainroad/Simulation/Trail.h"

#include <algorithm>

namespace Wainroad {

Int gShownLandmark = -1;
Int gArrivedAt = -2;
bool gCrossing = false;

namespace {

constexpr Int kRationsIcon = 6030, kPaceIcon = 6050; // icon of the first choice
constexpr Int kSetOffTicks = 120;

struct TravelState {
    Int shownRations = 0, shownPace = 0;    // on the two keys that show a choice
    Int setOffUntil = 0;                    // tick; 0 when no setting off is under way
    Int setOffToNext = 0, setOffMoving = 0; // what `gState` showed then
};
RunState<TravelState> sTravel;
const AtRunStart sFreshStart([] {
    gShownLandmark = -1;
    gArrivedAt = -2;
    gCrossing = false;
});

bool standsAtLandmark() { return gState.toNext == 0 && gState.landmark <= kTollLandmark; }

/// Opens the picture of the place, or the trail view, whichever is due.
void openCentre()
{
    const bool mayShowPlace = standsAtLandmark() && gState.landmark != gArrivedAt;
    const bool showsPlace = !FindPanel(TravelPanel) && FindPanel(LandmarkPanel);
    if (mayShowPlace && !showsPlace) {
        OpenPanel(LandmarkPanel);
        OpenPanel(LandmarkNamePanel);
    } else {
        OpenPanel(TravelScenePanel);
        OpenPanel(TravelPanel);
    }
}

// ---- The keys at the sides

/// Shows the icon of a choice on key 5 of a column; `shown` keeps which.
void showChoice(View& panel, Int firstIcon, Int choice, Int& shown, bool now)
{
    shown = choice;
    SetIconButtonIcon(panel, 5, firstIcon + choice, now);
}

void installColumn(View& panel, Int imageID, Int colorID)
{
    InstallUserItem(panel, 1, ImageItemProc, 0, ImageSpec{imageID, colorID, 0, 1, gScreenDepth});
    AddTimer(panel, 8);
}

Int leftButtonsProc(View& panel, Msg& msg)
{
    const Int rations = WagonOf(gState, gMySlot).rations;
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            installColumn(panel, 5000, 15000);
            showChoice(panel, kRationsIcon, rations, sTravel->shownRations, false);
        }
        return PanelDescriptor(1, 1, 5000);
    case kMsgTimer:
        if (rations != sTravel->shownRations)
            showChoice(panel, kRationsIcon, rations, sTravel->shownRations, true);
        return 1;
    case kMsgClose: RemoveTimer(panel); return 1;
    case kMsgClick:
        switch (MsgItem(msg)) {
        case 2: ShowTravelScreen(); break;
        case 3:
            OpenPanel(GuidePanel);
            OpenPanel(LogPanel);
            break;
        case 4:
            OpenPanel(TravelScenePanel);
            OpenPanel(LogPanel);
            OpenPanel(PartyPanel);
            break;
        case 5:
            OpenPanel(RationsPanel);
            OpenPanel(LogPanel);
            break;
        case 6: BuySupplies(); break;
        }
        return 1;
    default: return 0;
    }
}

void huntIfWeatherAllows()
{
    constexpr Int kSevere = 7; // this weather and worse
    if (gState.weather >= kSevere) {
        OpenPanel(SevereWeatherPanel);
        OpenPanel(LogPanel);
    } else if (CountAilments(gState, -1, kFlagTalking, 0) == 0)
        Hunt();
}

Int rightButtonsProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            installColumn(panel, 5800, 15800);
            showChoice(panel, kPaceIcon, gState.pace, sTravel->shownPace, false);
        }
        return PanelDescriptor(1, 9, 5800);
    case kMsgTimer:
        if (gState.pace != sTravel->shownPace)
            showChoice(panel, kPaceIcon, gState.pace, sTravel->shownPace, true);
        return 1;
    case kMsgClose: RemoveTimer(panel); return 1;
    case kMsgClick:
        switch (MsgItem(msg)) {
        case 2:
            if (gState.wagons == 1) {
                gTradeWithEmigrant = true;
                OpenPanel(TradeWantPanel);
            }
            OpenPanel(LogPanel);
            break;
        case 3:
            StartTalk();
            OpenPanel(LogPanel);
            break;
        case 4:
            OpenPanel(RestPanel);
            OpenPanel(TravelScenePanel);
            OpenPanel(LogPanel);
            break;
        case 5:
            OpenPanel(PacePanel);
            OpenPanel(LogPanel);
            break;
        case 6: huntIfWeatherAllows(); break;
        }
        return 1;
    default: return 0;
    }
}

// ---- The map's panel and the place's

Int travelPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            InstallUserItem(panel, 1, ImageItemProc, 0, ImageSpec{5200, 15200, 0, 1, gScreenDepth});
            InstallUserItem(panel, 2, TrailItem);
            AddTimer(panel, 15);
        }
        return PanelDescriptor(1, 3, 5200);
    case kMsgTimer:
        if (gState.landmark != gShownLandmark && standsAtLandmark() && gState.landmark != gArrivedAt) {
            gShownLandmark = gState.landmark;
            ShowTravelScreen();
        }
        return 1;
    case kMsgClose: RemoveTimer(panel); return 1;
    default: return 0;
    }
}

void openLandmark(View& panel)
{
    const Int picture = gLandmarkPictures[TrailRow(gState.landmark + 1)];
    InstallUserItem(
        panel, 1, ImageItemProc, 0, ImageSpec{5300 + picture / 2, 15300 + picture / 2, picture % 2, 1, gScreenDepth});
    AddTimer(panel, 4);
    gShownLandmark = gState.landmark;
}

Int landmarkPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            openLandmark(panel);
        return PanelDescriptor(1, 4, 5300);
    case kMsgTimer:
        if (gState.toNext != 0) {
            OpenPanel(TravelScenePanel);
            OpenPanel(TravelPanel);
        }
        return 1;
    case kMsgClose: RemoveTimer(panel); return 1;
    default: return 0;
    }
}

/// The name of the place; a river's goes without its article.
Str255 placeName()
{
    const Int index = gState.landmark + 2;
    Str255 name;
    GetIndString(name, 3002, index);
    if (IsRiver(gState.landmark)) {
        const Str255 article = pstr("the ");
        const Int found = PStrPos(article, name);
        if (found >= 0)
            StrReplace(name, found, I(article[0]), nullptr);
    }
    return name;
}

Int landmarkNameProc(View& panel, Msg& msg)
{
    if (msg.what != kMsgOpen)
        return 0;
    if (ItemsLoaded(panel)) {
        SetItemJust(panel, 1, 1);
    } else {
        const Str255 name = placeName();
        ParamText(&name, nullptr, nullptr, nullptr);
    }
    return PanelDescriptor(1, 5, 5400);
}

// ---- Setting off and halting

Int continuePanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            AddTimer(panel, 6);
        return PanelDescriptor(1, 8, 5710);
    case kMsgTimer:
        if ((gState.mode & kModeMoving) != 0)
            OpenPanel(TimeOutPanel);
        return 1;
    case kMsgClick:
        if (SettingOff())
            return 1;
        if (CantContinue())
            OpenPanel(CantContinuePanel);
        else
            Continue(2);
        return 1;
    case kMsgClose: RemoveTimer(panel); return 1;
    default: return 0;
    }
}

Int timeOutPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            AddTimer(panel, 6);
        return PanelDescriptor(1, 8, 5700);
    case kMsgTimer:
        if ((gState.mode & kModeMoving) == 0)
            OpenPanel(ContinuePanel);
        return 1;
    case kMsgClick:
        SendCommand(kCommandStop, 0, 0);
        SendAction(1, 0);
        if (gState.wagons != 1)
            ShowTravelScreen();
        return 1;
    case kMsgClose: RemoveTimer(panel); return 1;
    default: return 0;
    }
}

} // namespace

const ViewProc LeftButtonsPanel{leftButtonsProc};
const ViewProc RightButtonsPanel{rightButtonsProc};
const ViewProc TravelPanel{travelPanelProc};
const ViewProc LandmarkPanel{landmarkPanelProc};
const ViewProc LandmarkNamePanel{landmarkNameProc};
const ViewProc ContinuePanel{continuePanelProc};
const ViewProc TimeOutPanel{timeOutPanelProc};

void ShowTravelScreen()
{
    if (!CrossingPanelIsOpen())
        gCrossing = false;
    if (gState.landmark < gShownLandmark) {
        gShownLandmark = -1;
        gArrivedAt = -2;
    }
    OpenPanel(LeftButtonsPanel);
    openCentre();
    OpenPanel(LogPanel);
    OpenPanel(StatusPanel);
    OpenPanel((gState.mode & kModeMoving) != 0 ? TimeOutPanel : ContinuePanel);
    OpenPanel(RightButtonsPanel);
    ClearKeys();
}

void SetOff(Int route)
{
    sTravel->setOffUntil = TickCount() + kSetOffTicks;
    sTravel->setOffToNext = gState.toNext;
    sTravel->setOffMoving = gState.mode & kModeMoving;
    SendCommand(kCommandContinue, route, 0);
}

bool SettingOff()
{
    const bool unchanged =
        gState.toNext == sTravel->setOffToNext && (gState.mode & kModeMoving) == sTravel->setOffMoving;
    if (!unchanged || TickCount() >= sTravel->setOffUntil)
        sTravel->setOffUntil = 0;
    return sTravel->setOffUntil != 0;
}

void Continue(Int item)
{
    if (item != 2)
        return;
    SendAction(2, 0);
    if (gState.toNext == 0 && IsRiver(gState.landmark)) {
        OpenPanel(RiverPanel);
        return;
    }
    if (gState.toNext == 0
        && (gState.landmark == kFirstFork || gState.landmark == kSecondFork || gState.landmark == kTollLandmark)) {
        OpenPanel(RoutePanel);
        return;
    }
    SetOff(gState.route);
    if (gState.wagons != 1)
        ShowTravelScreen();
}

void BuySupplies()
{
    constexpr std::array<Int, 7> kHearths{-1, 2, 4, 7, 10, 12, 14};
    if (gState.toNext == 0 && std::find(kHearths.begin(), kHearths.end(), gState.landmark) != kHearths.end()) {
        gFormingShown = false;
        OpenPanel(StorePanel);
    } else {
        OpenPanel(OnlyFortsPanel);
    }
}

} // namespace Wainroad
