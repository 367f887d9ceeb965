#include "Wainroad/Screens/Rest.h"

#include "Wainroad/Frame/EditItems.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/News.h"

namespace Wainroad {

namespace {

enum RestItems : Int { kOK = 1, kCancel = 2, kDays = 4 };
constexpr Int kJournalRest = 4;

void setRestKeys(View& panel)
{
    SetKeys(panel, 2, 2, 1);
    gTENumeric = 1;
    gTEMaxChars = 1;
    gEditItems = 0;
}

void rest(View& panel)
{
    Str255 text;
    GetItemText(panel, kDays, text);
    if (text.size() != 2 || text[1] < '1' || text[1] > '9') {
        OpenPanel(RestRangePanel);
        return;
    }
    const Int days = text[1] - '0';
    SendAction(kJournalRest, days);
    SendRest(days);
    ShowTravelScreen();
}

Int restPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            ClearKeys();
            setRestKeys(panel);
            PushKeys(); // so that the panel about the range can give them back
            setRestKeys(panel);
        }
        return PanelDescriptor(1, 3, 5220);
    case kMsgClick:
        switch (MsgItem(msg)) {
        case kOK: rest(panel); break;
        case kCancel: ShowTravelScreen(); break;
        }
        return 1;
    default: return 0;
    }
}

Int restRangePanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            PushKeys();
            SetKeys(panel, 1, 1, 0);
            SetItemJust(panel, 2, 1);
        }
        return PanelDescriptor(1, 3, 5221);
    case kMsgClick:
        PopKeys();
        OpenPanel(RestPanel);
        return 1;
    default: return 0;
    }
}

} // namespace

const ViewProc RestPanel{restPanelProc};
const ViewProc RestRangePanel{restRangePanelProc};

} // namespace Wainroad
