#include "Wainroad/Screens/Arrival.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Journal/LogText.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Raft.h"
#include "Wainroad/Screens/Score.h"
#include "Wainroad/Simulation/Model.h"

#include <algorithm>

namespace Wainroad {

namespace {

constexpr Int kFileMenu = 1001;

Int imageDepth() { return std::min<Int>(gScreenDepth, 8); }

Int arrivalProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            InstallUserItem(panel, 1, ImageItemProc, 0, ImageSpec{9090, 19090, 0, 1, imageDepth()});
            SetKeys(panel, 1, 1, 0);
            gTEMaxChars = kLegendNameLength;
        } else {
            DisableItem(GetMHandle(kFileMenu), 6);
            DisableItem(GetMHandle(kFileMenu), 2);
            EnableItem(GetMHandle(kFileMenu), 4);
            ClosePanel(ArrivingPanel);
            Str255 line;
            GetIndString(line, 3004, 25);
            PStrAppend(line, pstr("."));
            LogAppendString(gLogTE, line, true);
        }
        return PanelDescriptor(1, 13, 9090);
    case kMsgClick: OpenPanel(ScorePanel); return 1;
    default: return 0;
    }
}

Int gameOverProc(View& panel, Msg& msg)
{
    constexpr Int kPicture = 3, kFrame = 4;
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            InstallUserItem(panel, kFrame, FrameItem, 0, qd.black);
            InstallUserItem(panel, kPicture, ImageItemProc, 0, ImageSpec{9150, 19150, 0, 1, imageDepth()});
            AddTimer(panel, 60);
            SetKeys(panel, 1, 1, 0);
        } else {
            gMourning = false;
            DisableItem(GetMHandle(kFileMenu), 6);
            DisableItem(GetMHandle(kFileMenu), 2);
        }
        return PanelDescriptor(3, 13, 9150);
    case kMsgClick:
        ClosePanel(GameOverPanel);
        ToTitle();
        return 1;
    case kMsgClose:
        gMourning = false;
        ToTitle();
        RemoveTimer(panel);
        return 1;
    default: return 0;
    }
}

} // namespace

const ViewProc ArrivalPanel{arrivalProc};
const ViewProc GameOverPanel{gameOverProc};

} // namespace Wainroad
