#include "Wainroad/Screens/Resume.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Managers/Lists.h"
#include "Wainroad/Frame/DialogItems.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Journal/LogView.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Repair.h"

namespace Wainroad {

namespace {

enum ResumeItems : Int { kGo = 1, kCancel = 2, kWagons = 3 };

struct ResumeState {
    ListHandle list;
    ResumeSlots slots{};
    Int rows = 0;
    Int choice = -1; // row
};
RunState<ResumeState> s;

void openResume(View& panel)
{
    SetKeys(panel, 2, 2, 1);
    gTENumeric = 0;
    gTEMaxChars = 1;
    gEditItems = 0;
    InstallUserItem(panel, kWagons, ListItem, lOnlyOne);
    View* item = GetItem(panel, kWagons);
    s->list = item ? ItemList(*item) : nullptr;
    s->choice = -1;
    s->rows = ListResumeWagons(s->list, s->slots, s->choice);
    AddTimer(panel, 15);
}

/// The wagon of the chosen row becomes this player's, and the only one.
void takeWagon()
{
    if (s->choice < 0 || s->choice >= s->rows)
        return;
    gLoaded = true;
    gLoadedTrain = true;
    gMySlot = s->slots[static_cast<std::size_t>(s->choice)];
    KeepOneWagon(gTrain, gMySlot);
    gTrain.wagon[0].node = gMyID;
    StandStill();
}

Int resumeProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            openResume(panel);
        return PanelDescriptor(1, 13, 9180);
    case kMsgClick:
        switch (MsgItem(msg)) {
        case kWagons:
            s->choice = (MsgResult(msg) < 0 ? -MsgResult(msg) : MsgResult(msg)) - 1;
            if (MsgResult(msg) > 0)
                takeWagon();
            break;
        case kGo: takeWagon(); break;
        case kCancel:
            gResume = nullptr;
            ToTitle();
            break;
        }
        return 1;
    case kMsgClose:
        s->list = nullptr;
        ClearKeys();
        RemoveTimer(panel);
        return 1;
    default: return 0;
    }
}

} // namespace

const ViewProc ResumePanel{resumeProc};

Int ListResumeWagons(const ListHandle& list, ResumeSlots& slots, Int& choice)
{
    const Int chosenSlot = choice >= 0 && choice < I(slots.size()) ? slots[static_cast<std::size_t>(choice)] : -1;
    Int rows = 0;
    choice = -1;
    for (Int slot = 0; gResume && slot < I(slots.size()); ++slot) {
        if (gResume->u8(kResumeFreeAt + slot) != 0)
            continue;
        if (list) {
            const Str255 name = gResume->pstr(kResumeNamesAt + kResumeNameBytes * slot);
            LAddRow(1, rows, list);
            LSetCell(characters(name), I(characters(name).size()), Cell{rows, 0}, list);
        }
        if (slot == chosenSlot)
            choice = rows;
        slots[static_cast<std::size_t>(rows++)] = slot;
    }
    if (rows == 1)
        choice = 0;
    if (choice >= 0 && list)
        LSetSelect(true, Cell{choice, 0}, list);
    return rows;
}

} // namespace Wainroad
