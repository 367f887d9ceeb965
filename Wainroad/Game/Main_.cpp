#include "Wainroad/Game/Main_.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Managers/Cursors.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/Managers/Menus.h"
#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Game/GameMenu.h"
#include "Wainroad/Game/Init.h"
#include "Wainroad/Game/Messages.h"
#include "Wainroad/Journal/LogText.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Simulation/Model.h"

namespace Wainroad {

static constexpr Int kFirstFlush = 900; // ticks after the start

RgnHandle gMouseRgn;
bool gStartNow = false;

static const AtRunStart sRenew([] {
    gStartNow = false;
    gMouseRgn = nullptr;
});

void main_()
{
    gInBackground = false;
    Initialize();
    WaitForSound();
    ClearLogText();
    OpenPanel(TitlePanel);
    gQuit = false;
    gMouseRgn = NewRgn();
    while (!gQuit)
        DoEvent();
    ExitToShell();
}

// ---- Events that the view tree leaves

static void clickOutside(const EventRecord& event)
{
    WindowPtr window;
    switch (FindWindow(event.where, window)) {
    case inMenuBar: DoMenu(MenuSelect(event.where)); break;
    case inContent:
        if (window != FrontWindow())
            SelectWindow(window);
        break;
    }
}

static void keyOutside(const EventRecord& event)
{
    const Int character = event.message & charCodeMask;
    if ((event.modifiers & cmdKey) != 0) {
        if (character == '.' && gCancelItem != 0)
            PressButton(gKeyPanel, gCancelItem);
        else
            DoMenu(MenuKey(character));
    } else if ((character == 13 || character == 3) && gReturnItem != 0) {
        PressButton(gKeyPanel, gReturnItem);
    }
}

static void dispatch(const EventRecord& event)
{
    switch (event.what) {
    case mouseDown: clickOutside(event); break;
    case keyDown: keyOutside(event); break;
    case updateEvt:
        if (const WindowPtr window = event.window()) {
            BeginUpdate(window);
            EndUpdate(window);
        }
        break;
    case activateEvt: ActivateWindow(event.window(), (event.modifiers & activeFlag) != 0); break;
    }
}

void DoEvent()
{
    SoundTask();
    if (gConfigChanged && TickCount() >= kFirstFlush)
        FlushConfig();
    ApplyMessages();
    if (gQuit)
        return;
    if (gStartNow) {
        gStartNow = false;
        DoMenu(packMenuChoice(kFileMenu, kFileOpen));
    }
    MenuBar::syncIfNeeded();
    EventRecord event;
    const bool any = WaitNextEvent(everyEvent, event, 0, gMouseRgn);
    if (!RootEvent(event) && any && !gQuit)
        dispatch(event);
}

void ActivateWindow(const WindowPtr& window, bool active)
{
    if (!window || window != gWindow || active != gInBackground)
        return;
    gInBackground = !active;
    const MenuHandle file = GetMHandle(kFileMenu), edit = GetMHandle(kEditMenu);
    const MenuHandle play = GetMHandle(kPlayMenu), management = GetMHandle(kManagementMenu);
    const auto set = [](const MenuHandle& menu, Int item, bool on) {
        on ? EnableItem(menu, item) : DisableItem(menu, item);
    };
    set(file, kFileToTitle, active && gPlaying != 0);
    set(file, kFileOpen, active && gPlaying == 0);
    set(edit, kEditUndo, !active);
    set(play, 0, active);
    set(management, 0, active);
    if (!active)
        StopSound();
    DrawMenuBar();
    if (active)
        InitCursor();
}

} // namespace Wainroad
