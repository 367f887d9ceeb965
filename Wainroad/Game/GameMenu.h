#pragma once

// The commands of the menu bar.

#include "MacToolbox/Managers/Menus.h"

namespace Wainroad {
using namespace MacToolbox;

enum MenuID : Int { kAppleMenu = 1000, kFileMenu, kEditMenu, kPlayMenu, kManagementMenu };
/// Items of the menus; what is not named here is a separator.
enum AppleItem : Int { kAppleAbout = 1 };
enum FileItem : Int { kFileOpen = 1, kFileSave = 2, kFileExport = 4, kFileToTitle = 6, kFileQuit = 7 };
enum EditCommand : Int { kEditUndo = 1 };
enum PlayItem : Int { kPlayIntroduction = 1, kPlaySound = 2 };
enum ManagementItem : Int {
    kManageAbout = 1,
    kManageSwitch = 2,
    kManageLegends = 4,
    kManageTime = 5,
    kManageNetwork = 6,
    kManagePassword = 7
};

/// Carries out a choice as `MenuSelect` and `MenuKey` give it: menu id in the high word, item in the low one. 0 and
/// items without a command do nothing.
void DoMenu(Int choice);

} // namespace Wainroad
