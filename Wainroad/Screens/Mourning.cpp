#include "Wainroad/Screens/Mourning.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"

namespace Wainroad {

namespace {

constexpr Int kMourningSound = 9001, kMourningImage = 9150;
constexpr Int kFirstTicks = 60, kLongTicks = 540;

struct MourningState {
    bool isLong = false; // the second, long span has begun
};
RunState<MourningState> sMourning;

void endMourning()
{
    ClosePanel(MourningPanel);
    ShowTravelScreen();
}

void openMourning(View& panel)
{
    QueueSound(kMourningSound);
    InstallUserItem(panel, 1, ImageItemProc, 0, ImageSpec{kMourningImage, 19150, 0, 1, gScreenDepth});
    AddTimer(panel, kFirstTicks);
    sMourning->isLong = false;
}

Int mourningProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        gMourning = false;
        if (ItemsLoaded(panel))
            openMourning(panel);
        return PanelDescriptor(1, 4, 5300);
    case kMsgTimer:
        if (sMourning->isLong) {
            endMourning();
        } else {
            sMourning->isLong = true;
            RemoveTimer(panel);
            AddTimer(panel, kLongTicks);
        }
        return 1;
    case kMsgClick: endMourning(); return 1;
    case kMsgClose:
        gMourning = false;
        RemoveTimer(panel);
        return 1;
    default: return 0;
    }
}

Int mourningTextProc(View& panel, Msg& msg)
{
    if (msg.what != kMsgOpen)
        return 0;
    if (ItemsLoaded(panel)) {
        SetItemJust(panel, 1, 1);
    } else {
        Str255 text;
        GetIndString(text, 2050, 1);
        ParamText(&text, nullptr, nullptr, nullptr);
    }
    return PanelDescriptor(1, 5, 5400);
}

} // namespace

const ViewProc MourningPanel{mourningProc};
const ViewProc MourningTextPanel{mourningTextProc};

} // namespace Wainroad
