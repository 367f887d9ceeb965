#include "Wainroad/Game/Init.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Cursors.h"
#include "MacToolbox/Managers/Dialogs.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/Screen.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Alerts.h"
#include "Wainroad/Frame/IconButton.h"
#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Game/Main_.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Screens/About.h"
#include "Wainroad/Simulation/Lobby.h"
#include "Wainroad/Simulation/Model.h"

namespace Wainroad {

static constexpr Int kWindow = 1000, kMenuBar = 1000, kOldMachineAlert = 2003;
static constexpr Int kMachineTexts = 1001, kOldSystemText = 4, kOldMachineText = 5;
static constexpr Int kFileTexts = 3000, kConfigNameText = 5;
static constexpr Int kOldestSystem = 0x0602;

bool gHasAppleEvents = false;
Int gMachine = 0, gProcessor = 0, gSystemVersion = 0, gATalkVersion = 0;
bool gColorQD = false;

static const AtRunStart sRenew([] {
    gHasAppleEvents = gColorQD = false;
    gMachine = gProcessor = gSystemVersion = gATalkVersion = 0;
});

void Initialize()
{
    FlushEvents(everyEvent, 0);
    InitCursor();
    CheckMachine();
    if (PacketsInit() != noErr) {
        CloseNetwork();
        ExitToShell();
    }
    gPrefersColor = false;
    PanelsInit();
    MessagesInit();
    OpenGameWindow();
    FindLaunchFiles();
    ConfigInit();
    MenusInit();
    GetDateTime(qd.randSeed);
    SoundInit();
    StatesInit();
}

static Int ask(OSType selector)
{
    Int answer = 0;
    Gestalt(selector, answer);
    return answer;
}

[[noreturn]] static void refuseMachine(Int text)
{
    Str255 words;
    GetIndString(words, kMachineTexts, text);
    PrintError(words);
    SetAlertText(words);
    StopAlert(kOldMachineAlert);
    ExitToShell();
}

void CheckMachine()
{
    gHasAppleEvents = (ask(gestaltAppleEventsAttr) & 1) != 0;
    gMachine = ask(gestaltMachineType) - 2;
    gProcessor = ask(gestaltProcessorType);
    gSystemVersion = ask(gestaltSystemVersion);
    gATalkVersion = ask(gestaltAppleTalkVersion);
    gColorQD = ask(gestaltQuickdrawVersion) >= 256;
    gMachineFacts = {gMachine, gProcessor, gSystemVersion, gATalkVersion};
    if (gSystemVersion < kOldestSystem)
        refuseMachine(kOldSystemText);
    if (gMachine < 0)
        refuseMachine(kOldMachineText);
}

void OpenGameWindow()
{
    gWindow = GetNewWindow(kWindow, nullptr, nullptr);
    if (!gWindow)
        Fatal(ResError(), "GetNewWindow");
    gSavePort = thePort;
    SetPort(gWindow);
    TextFont(kDefaultStyle.font);
    TextSize(kDefaultStyle.size);
    TextFace(kDefaultStyle.face);
    RootOpen(gWindow, true);
    Screen::shared().setViewport(gWindow->contentRect);
}

void FindLaunchFiles()
{
    gConfigVRef = -1;
    gConfigDirID = 2;
    GetIndString(gConfigName, kFileTexts, kConfigNameText);
    if (!gHasAppleEvents)
        gStartNow = false;
}

void MenusInit()
{
    const auto menus = GetNewMBar(kMenuBar);
    if (menus.empty())
        Fatal(ResError(), "GetNewMBar");
    SetMenuBar(menus);
    DrawMenuBar();
}

void StatesInit()
{
    gTrain = gState = gPrev = GameState{};
    gLobbyState = kLobbyNone;
    ModelInit();
    LoadButtonImages();
}

} // namespace Wainroad
