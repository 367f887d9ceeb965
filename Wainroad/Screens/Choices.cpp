#include "Wainroad/Screens/Choices.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "Wainroad/Screens/Route.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"

namespace Wainroad {

namespace {

constexpr Int kChoices = 3, kInformation = 4;
constexpr Int kPaceWords = 3009, kRationsWords = 3010;
constexpr Int kJournalRations = 43, kJournalPace = 5;

std::uint8_t lowered(std::uint8_t c) { return c >= 'A' && c <= 'Z' ? static_cast<std::uint8_t>(c + 'a' - 'A') : c; }

void setChoiceText(Int list, Int choice, bool lowerAll)
{
    Str255 word;
    GetIndString(word, list, choice + 1);
    for (std::size_t i = 1; i < word.size() && (lowerAll || i == 1); ++i)
        word[i] = lowered(word[i]);
    ParamText(&word, nullptr, nullptr, nullptr);
}

void chooseRations(Int rations)
{
    if (rations == WagonOf(gState, gMySlot).rations) {
        OpenPanel(SameRationsPanel);
        return;
    }
    SendCommand(kCommandRations, rations, 0);
    ByteWriter news;
    WriteDate(news, gTrain);
    news.u8(kJournalRations);
    news.u8(gMySlot + 32 * rations);
    QueuePackets(kPacketNews, kAllNodes, news.bytes, I(news.bytes.size()), 0);
    ShowTravelScreen();
}

void choosePace(Int pace)
{
    if (pace == gState.pace) {
        OpenPanel(SamePacePanel);
        return;
    }
    SendAction(kJournalPace, pace);
    SendCommand(kCommandPace, pace, 0);
    ShowTravelScreen();
}

/// Serves a panel of three choices and a key for information.
Int choicePanel(Msg& msg, Int ditl, const ViewProc& information, void (*choose)(Int))
{
    if (msg.what == kMsgOpen)
        return PanelDescriptor(1, 10, ditl);
    if (msg.what != kMsgClick)
        return 0;
    if (MsgItem(msg) == kInformation)
        OpenPanel(information);
    else if (MsgItem(msg) >= 1 && MsgItem(msg) <= kChoices)
        choose(MsgItem(msg) - 1);
    return 1;
}

/// Serves the explanation of a choice, whose button leads back to it.
Int explanationPanel(View& panel, Msg& msg, Int ditl, const ViewProc& back)
{
    switch (msg.what) {
    case kMsgOpen:
        panel.style = kInfoStyle;
        if (ItemsLoaded(panel))
            SetKeys(panel, 1, 1, 0);
        return PanelDescriptor(1, 10, ditl);
    case kMsgClick:
        ClearKeys();
        OpenPanel(back);
        return 1;
    default: return 0;
    }
}

Int rationsPanelProc(View&, Msg& msg) { return choicePanel(msg, 6030, RationsInfoPanel, chooseRations); }
Int pacePanelProc(View&, Msg& msg) { return choicePanel(msg, 6050, PaceInfoPanel, choosePace); }
Int rationsInfoProc(View& panel, Msg& msg) { return explanationPanel(panel, msg, 6040, RationsPanel); }
Int paceInfoProc(View& panel, Msg& msg) { return explanationPanel(panel, msg, 6060, PacePanel); }

Int sameRationsProc(View& panel, Msg& msg)
{
    if (msg.what == kMsgOpen && !ItemsLoaded(panel))
        setChoiceText(kRationsWords, WagonOf(gState, gMySlot).rations, true);
    return BackToTravelPanel(panel, msg, PanelDescriptor(1, 10, 6031));
}

Int samePaceProc(View& panel, Msg& msg)
{
    if (msg.what == kMsgOpen && !ItemsLoaded(panel))
        setChoiceText(kPaceWords, gState.pace, false);
    return BackToTravelPanel(panel, msg, PanelDescriptor(1, 10, 6051));
}

} // namespace

const ViewProc RationsPanel{rationsPanelProc};
const ViewProc SameRationsPanel{sameRationsProc};
const ViewProc RationsInfoPanel{rationsInfoProc};
const ViewProc PacePanel{pacePanelProc};
const ViewProc SamePacePanel{samePaceProc};
const ViewProc PaceInfoPanel{paceInfoProc};

} // namespace Wainroad
