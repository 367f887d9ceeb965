#include "Wainroad/Game/GameMenu.h"

#include "MacToolbox/Host/Misc.h"
#include "Wainroad/Frame/Alerts.h"
#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Screens/About.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Export.h"
#include "Wainroad/Screens/Introduction.h"
#include "Wainroad/Screens/Management.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Records.h"

namespace Wainroad {

static constexpr Int kManagementAlert = 2040;
static constexpr Int kQuitPause = 30; // ticks

static const Wagon& myWagon()
{
    return gState.wagon[static_cast<std::size_t>(gState.order[static_cast<std::size_t>(gMySlot & 31)] & 31)];
}

/// A store on the trail is left first, so that the model hears of it.
static void chooseQuit()
{
    if ((myWagon().flags & kFlagInStore) != 0)
        PressButton(gKeyPanel, gCancelItem);
    Int now = 0;
    Delay(kQuitPause, now);
    QuitGame();
}

static void fileCommand(Int item)
{
    switch (item) {
    case kFileOpen:
        DisableItem(GetMHandle(kPlayMenu), kPlayIntroduction); // the title brings it back
        LoadGame();
        break;
    case kFileSave:
        if ((gState.mode & kModeMoving) != 0)
            OpenPanel(OnlyInTimeOutPanel);
        else
            SaveGame();
        break;
    case kFileExport: ExportLog(); break;
    case kFileToTitle: ExitGame(); break;
    case kFileQuit: chooseQuit(); break;
    }
}

static void managementCommand(Int item)
{
    switch (item) {
    case kManageAbout: DCenteredAlert(kManagementAlert); break;
    case kManageSwitch: gManagement ? DisableManagement() : EnableManagement(); break;
    case kManageLegends: LegendsDialog(); break;
    case kManageTime: TimeDialog(); break;
    case kManageNetwork: NetworkDialog(); break;
    case kManagePassword: ChangePassword(); break;
    }
}

void DoMenu(Int choice)
{
    const Int item = LoWord(choice);
    switch (HiWord(choice)) {
    case kAppleMenu:
        if (item == kAppleAbout)
            About();
        break;
    case kFileMenu: fileCommand(item); break;
    case kEditMenu: RootEditCommand(item - 1); break;
    case kPlayMenu:
        if (item == kPlayIntroduction)
            Introduction();
        else if (item == kPlaySound)
            ToggleSound();
        break;
    case kManagementMenu: managementCommand(item); break;
    }
}

} // namespace Wainroad
