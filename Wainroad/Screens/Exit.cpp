#include "Wainroad/Screens/Exit.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/IconButton.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Journal/LogText.h"
#include "Wainroad/Journal/LogView.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Screens/Route.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Screens/Scene.h"
#include "Wainroad/Screens/Setup.h"
#include "Wainroad/Screens/Store.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"

namespace Wainroad {

bool gQuit = false;

namespace {

const AtRunStart sFreshStart([] { gQuit = false; });

constexpr Int kFileMenu = 1001, kIntroductionMenu = 1003;
constexpr Int kLeaveItem = 3;               // leaves without saving
constexpr Int kExitText = 2, kQuitText = 3; // of STR# 3000

/// Serves the panel that asks before the journey is left. With several wagons the others are told first.
Int leavePanel(View& panel, Msg& msg, Int text, MessageKind message, void (*leave)())
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            SetKeys(panel, 2, 2, 1);
            gTENumeric = 0;
            gTEMaxChars = 1;
            gEditItems = 0;
        } else {
            Str255 question;
            GetIndString(question, 3000, text);
            ParamText(&question, nullptr, nullptr, nullptr);
        }
        return PanelDescriptor(1, 3, 5230);
    case kMsgClick:
        if (MsgItem(msg) != kLeaveItem && (gState.mode & kModeMoving) != 0) {
            OpenPanel(OnlyInTimeOutPanel);
        } else if (MsgItem(msg) != kLeaveItem && !SaveGame()) {
            ShowTravelScreen();
        } else if (gState.wagons == 1) {
            leave();
        } else {
            SendMessage(message, 0, 0, 0, kAllNodes);
        }
        return 1;
    default: return 0;
    }
}

Int exitPanelProc(View& panel, Msg& msg) { return leavePanel(panel, msg, kExitText, kMessageExit, ToTitle); }
Int quitPanelProc(View& panel, Msg& msg) { return leavePanel(panel, msg, kQuitText, kMessageQuit, Quit); }

Int onlyInTimeOutProc(View& panel, Msg& msg)
{
    if (msg.what == kMsgOpen && !ItemsLoaded(panel)) {
        Str255 text;
        GetIndString(text, 3024, 2);
        ParamText(&text, nullptr, nullptr, nullptr);
    }
    if (msg.what == kMsgClick)
        ClosePanel(OnlyInTimeOutPanel);
    return BackToTravelPanel(panel, msg, PanelDescriptor(1, 10, 6320));
}

} // namespace

const ViewProc ExitPanel{exitPanelProc};
const ViewProc QuitPanel{quitPanelProc};
const ViewProc OnlyInTimeOutPanel{onlyInTimeOutProc};

void ToTitle()
{
    gMachines = 0;
    gTrain.mode = gState.mode = 0;
    gState.captain = gState.leader = kNobody;
    gState.order.fill(kNobody);
    for (Wagon& wagon : gState.wagon)
        wagon.node = kNobody;
    gPlaying = 0;
    gCrossing = false;
    DisableItem(GetMHandle(kFileMenu), 2);
    DisableItem(GetMHandle(kFileMenu), 6);
    EnableItem(GetMHandle(kFileMenu), 1);
    EnableItem(GetMHandle(kIntroductionMenu), 1);
    ClosePanel(LogPanel);
    OpenPanel(TitlePanel);
}

void ExitGame()
{
    gResume = nullptr;
    switch (gPlaying) {
    case 2:
        OpenPanel(TravelScenePanel);
        OpenPanel(ExitPanel);
        return;
    case 1:
        LeaveLobby();
        for (const ViewProc* panel :
            {&OccupationsInfoPanel, &NoNamePanel, &StoreHelpPanel, &CantAffordPanel, &TooManyPanel, &NeedOxenFoodPanel})
            ClosePanel(*panel);
        break;
    }
    ToTitle();
}

bool QuitGame()
{
    gResume = nullptr;
    if (gPlaying == 2) {
        OpenPanel(TravelScenePanel);
        OpenPanel(QuitPanel);
        return false;
    }
    if (gPlaying == 1)
        LeaveLobby();
    Quit();
    return true;
}

void Quit()
{
    constexpr Int kUpdatesHeld = 2; // the mode in which the configuration stays open
    StopSound();
    for (const Int type : {kPacketState, kPacketCommand, kPacketSystem})
        RemoveFilter(type);
    ModelClose();
    gLogTE = nullptr;
    CloseNetwork();
    if (gConfigMode == kUpdatesHeld)
        FlushConfig();
    RootClose(gWindow);
    while (const WindowPtr window = FrontWindow())
        CloseWindow(window);
    gButtonImages = nullptr;
    if (gSavePort)
        SetPort(gSavePort);
    gQuit = true;
}

} // namespace Wainroad
