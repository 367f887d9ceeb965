#include "Wainroad/Game/Messages.h"

#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Menus.h"
#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Game/GameMenu.h"
#include "Wainroad/Journal/LogView.h"
#include "Wainroad/Screens/Arrival.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Hunt.h"
#include "Wainroad/Screens/Mourning.h"
#include "Wainroad/Screens/Raft.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Lobby.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Records.h"

namespace Wainroad {

/// The leader of the train has set off: this wagon goes along.
static void follow(const ModelMessage& message)
{
    BeginMonth(message.a);
    for (GameState* state : {&gTrain, &gState})
        state->day = state->startDay = message.b;
    gPlaying = 2;
    for (const Int item : {kFileSave, kFileExport, kFileToTitle, kFileQuit})
        EnableItem(GetMHandle(kFileMenu), item);
    if (gMyID != gState.leader)
        gLeaderStart = TickCount();
    ShowTravelScreen();
}

/// The train has arrived.
static void arrive()
{
    gPlaying = gLeaderStart = 0;
    gState.mode = 0;
    ClosePanel(LogPanel);
    OpenPanel(ArrivalPanel);
}

/// This wagon is at its end.
static void end()
{
    gPlaying = gLeaderStart = 0;
    gState.mode = gPrev.mode = 0;
    CopyState(gPrev, gState);
    ClosePanel(LogPanel);
    OpenPanel(GameOverPanel);
}

static void mourn()
{
    if (gPlaying == 0)
        return;
    gMourning = true;
    gTrain.mode &= ~I(kModeMoving);
    if (gCrossing)
        return;
    OpenPanel(MourningPanel);
    OpenPanel(MourningTextPanel);
}

/// The journey ends for everybody; the program that the message names saves it first.
static void saveIfAsked(const ModelMessage& message)
{
    gLeaderStart = 0;
    if (message.b == gMyID)
        SaveGame();
}

static void apply(const ModelMessage& message)
{
    switch (message.kind) {
    case kMessageHunt: StartHunt(); break;
    case kMessageStart: follow(message); break;
    case kMessageTravel: ShowTravelScreen(); break;
    case kMessageArrival: arrive(); break;
    case kMessageExit:
        saveIfAsked(message);
        ToTitle();
        break;
    case kMessageQuit:
        saveIfAsked(message);
        Quit();
        break;
    case kMessageGone: end(); break;
    case kMessageRaft: StartRaft(); break;
    case kMessageDeath: mourn(); break;
    }
}

void ApplyMessages()
{
    if (gMessageCount < 1)
        return;
    for (ModelMessage& entry : gMessages) {
        if (entry.kind == 0)
            continue;
        const ModelMessage message = entry;
        apply(message);
        entry = {};
        --gMessageCount;
    }
}

} // namespace Wainroad
