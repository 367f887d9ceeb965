#include "Wainroad/Screens/Route.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"
#include "Wainroad/Simulation/Trail.h"

namespace Wainroad {

namespace {

constexpr Int kToll = 500; // cents
constexpr Int kJournalRoute = 66;
constexpr Int kOtherWay = 3;

/// Takes the other way of a fork, or the raft.
void takeOtherWay()
{
    switch (gState.landmark) {
    case kFirstFork: SetOff(gState.route | 1); break;
    case kSecondFork: SetOff(gState.route | 2); break;
    default: SendMessage(kMessageRaft, 0, 0, 0, kAllNodes);
    }
}

/// Takes the usual way; at the toll road it is paid for. @return False if the money does not reach.
bool takeUsualWay()
{
    if (gState.landmark == kTollLandmark) {
        if (WagonOf(gState, gMySlot).money < kToll) {
            OpenPanel(NoTollPanel);
            return false;
        }
        WagonOf(gTrain, gMySlot).money -= kToll;
    }
    SetOff(gState.route);
    return true;
}

Int routePanelProc(View&, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        return PanelDescriptor(1, 10,
            gState.landmark == kFirstFork        ? 6270
                : gState.landmark == kSecondFork ? 6280
                                                 : 6281);
    case kMsgClick: {
        if (SettingOff())
            return 1;
        const bool other = MsgItem(msg) == kOtherWay;
        if (other)
            takeOtherWay();
        else if (!takeUsualWay())
            return 1;
        SendAction(kJournalRoute, gState.landmark + (other ? 3 : 2));
        ShowTravelScreen();
        return 1;
    }
    default: return 0;
    }
}

Int noTollPanelProc(View& panel, Msg& msg) { return BackToTravelPanel(panel, msg, PanelDescriptor(1, 10, 6191)); }

/// Why this wagon cannot go on: 1 oxen, 2 to 4 a part, 5 hunting, 6 in a store, 7 anything else; 0 if it can.
Int reasonOf(const Wagon& wagon)
{
    if ((wagon.flags & kFlagOxenGone) != 0 || wagon.supply[kOxen] == 0)
        return 1;
    for (Int part = 0; part < 3; ++part)
        if ((wagon.flags & kFlagFirstBroken << part) != 0)
            return 2 + part;
    if ((wagon.flags & kFlagHunting) != 0)
        return 5;
    return (wagon.flags & kFlagInStore) != 0 ? 6 : 7;
}

Int firstReason()
{
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        if (SlotUsed(gState, slot) && StopsTheTrain(WagonOf(gState, slot)))
            return reasonOf(WagonOf(gState, slot));
    return 7;
}

void setReasonTexts()
{
    Str255 who, reason;
    GetIndString(who, 1500, 2);
    GetIndString(reason, 3020, firstReason());
    Str255 lower = who;
    if (lower.size() > 1 && lower[1] >= 'A' && lower[1] <= 'Z')
        lower[1] = static_cast<std::uint8_t>(lower[1] + 'a' - 'A');
    ParamText(&who, &lower, &reason, nullptr);
}

Int cantContinuePanelProc(View& panel, Msg& msg)
{
    if (msg.what == kMsgOpen && !ItemsLoaded(panel))
        setReasonTexts();
    return BackToTravelPanel(panel, msg, PanelDescriptor(1, 10, 6190));
}

Int onlyFortsPanelProc(View& panel, Msg& msg)
{
    if (msg.what == kMsgOpen && !ItemsLoaded(panel)) {
        Str255 text;
        GetIndString(text, 3024, 1);
        ParamText(&text, nullptr, nullptr, nullptr);
    }
    if (msg.what == kMsgClick)
        ClosePanel(OnlyFortsPanel);
    return BackToTravelPanel(panel, msg, PanelDescriptor(1, 10, 6320));
}

} // namespace

const ViewProc RoutePanel{routePanelProc};
const ViewProc NoTollPanel{noTollPanelProc};
const ViewProc CantContinuePanel{cantContinuePanelProc};
const ViewProc OnlyFortsPanel{onlyFortsPanelProc};

Int BackToTravelPanel(View& panel, Msg& msg, Int descriptor)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            SetKeys(panel, 1, 1, 0);
        return descriptor;
    case kMsgClick:
        ClearKeys();
        ShowTravelScreen();
        return 1;
    default: return 0;
    }
}

} // namespace Wainroad
