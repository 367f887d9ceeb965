#include "Wainroad/Screens/Talk.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Lists.h"
#include "Wainroad/Frame/DialogItems.h"
#include "Wainroad/Frame/EditItems.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"

namespace Wainroad {

Int gTalkTurn = 0;

namespace {

constexpr Int kTalks = 3101; // + landmark: a picture and a text for each of three talks
constexpr Int kFaces = 6080, kBesideFrame = 9;
constexpr Int kJournalSayTo = 118, kJournalSayAll = 119;
constexpr Int kEverybody = 255;
constexpr Int kLineLength = 31;

struct TalkState {
    ListHandle list;
    Int rows = 0;
    WagonMap map{};
    std::array<Int, 33> to{}; // slots that a line goes to; 255 first for everybody
    Int toCount = 0;
};
RunState<TalkState> s;
const AtRunStart sFreshStart([] { gTalkTurn = 0; });

Str255 talkString(Int index)
{
    Str255 text;
    GetIndString(text, kTalks + gState.landmark, index);
    return text;
}

void setText(const Str255& a, const Str255& b = {0}) { ParamText(a, b, Str255{0}, Str255{0}); }

ImageSpec faceSpec(Int frame) { return {kFaces, 16080, frame, 1, gScreenDepth}; }

Int talkPanelProc(View& panel, Msg& msg)
{
    if (msg.what != kMsgOpen)
        return 0;
    if (ItemsLoaded(panel)) {
        const Str255 picture = talkString(2 * gTalkTurn - 1);
        InstallUserItem(panel, 1, ImageItemProc, 0, faceSpec(picture.size() > 1 ? picture[1] - '0' : 0));
        InstallUserItem(panel, 2, ImageItemProc, 0, faceSpec(kBesideFrame));
    } else {
        panel.style.face = 0;
        panel.style.size = 12;
        const Str255 talk = talkString(2 * gTalkTurn);
        ParamText(&talk, nullptr, nullptr, nullptr);
    }
    return PanelDescriptor(1, 10, 6080);
}

void turnTalk() { gTalkTurn = gTalkTurn >= 3 ? 1 : gTalkTurn + 1; }

Int talkChoiceProc(View&, Msg& msg)
{
    if (msg.what == kMsgOpen)
        return PanelDescriptor(1, 10, 6070);
    if (msg.what != kMsgClick)
        return 0;
    switch (MsgItem(msg)) {
    case 1: {
        Str255 heading;
        GetIndString(heading, 3015, 1);
        setText(heading);
        OpenPanel(TalkToPanel);
        break;
    }
    case 2: SendCommand(kCommandTalk, kEverybody, gMyID); break;
    case 3:
        turnTalk();
        OpenPanel(TalkPanel);
        break;
    }
    return 1;
}

// ---- To whom

enum TalkToItems : Int { kTalkTo = 1, kTalkCancel = 2, kWagonList = 3, kTalkHeading = 4, kTalkToAll = 5 };

void openTalkTo(View& panel)
{
    SetItemSize(panel, kWagonList, 12);
    SetItemFace(panel, kWagonList, 0);
    SetItemSize(panel, kTalkHeading, 14);
    SetItemFace(panel, kTalkHeading, 0);
    InstallUserItem(panel, kWagonList, ListItem);
    View* item = GetItem(panel, kWagonList);
    s->list = item ? ItemList(*item) : nullptr;
    s->rows = ListWagons(s->list, 2, s->map);
    SetKeys(panel, 3, 3, 2);
    gTENumeric = 0;
    gTEMaxChars = kLineLength;
    gEditItems = 0;
}

bool rowIsSelected(Int row)
{
    Cell cell{row, 0};
    return LGetSelect(false, cell, s->list);
}

void takeSelectedWagons()
{
    s->toCount = 0;
    for (Int row = 0; row < s->rows; ++row) {
        const Int slot = s->map[static_cast<std::size_t>(row)];
        if (rowIsSelected(row) && SlotUsed(gState, slot))
            s->to[static_cast<std::size_t>(s->toCount++)] = slot;
    }
}

void goOnToSay()
{
    takeSelectedWagons();
    setText(Str255{0});
    if (s->toCount == 0) {
        OpenPanel(TalkChoicePanel);
        return;
    }
    if (s->toCount == 1)
        setText(pstr(" to "), gState.names[static_cast<std::size_t>(s->to[0] & 31)]);
    else if (s->toCount == gState.wagons - 1) {
        s->toCount = 1;
        s->to[0] = kEverybody;
    }
    OpenPanel(SayPanel);
}

Int talkToProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            openTalkTo(panel);
        return PanelDescriptor(1, 10, 6090);
    case kMsgClick:
        switch (MsgItem(msg)) {
        case kTalkToAll:
            for (Int row = 0; row < s->rows; ++row)
                LSetSelect(true, Cell{row, 0}, s->list);
            break;
        case kTalkCancel:
            ClearKeys();
            ShowTravelScreen();
            break;
        case kWagonList:
            if (MsgResult(msg) > 0)
                goOnToSay();
            break;
        case kTalkTo: goOnToSay(); break;
        }
        return 1;
    case kMsgClose: s->list = nullptr; return 1;
    default: return 0;
    }
}

// ---- What

enum SayItems : Int { kSay = 1, kSayDone = 2, kLine = 4 };

void setSayKeys(View& panel)
{
    SetKeys(panel, 2, 2, 1);
    gTENumeric = 0;
    gTEMaxChars = kLineLength;
    gEditItems = 0;
}

void sendLine(const Str255& line)
{
    const bool toAll = s->to[0] == kEverybody;
    ByteWriter news;
    WriteDate(news, gTrain);
    news.u8(toAll ? kJournalSayAll : kJournalSayTo);
    news.u8(gMySlot);
    news.raw(line);
    if (!toAll) {
        news.u8(s->toCount);
        for (Int i = 0; i < s->toCount; ++i)
            news.u8(s->to[static_cast<std::size_t>(i)]);
    }
    QueuePackets(kPacketNews, kAllNodes, news.bytes, I(news.bytes.size()), kBroadcastFlags);
}

void say(View& panel)
{
    setSayKeys(panel);
    Str255 line;
    GetItemText(panel, kLine, line);
    if (line.size() < 2)
        return;
    sendLine(line);
    SetItemText(panel, kLine, {});
    SelectItemText(panel, kLine, 0, 32000);
}

Int sayProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            setSayKeys(panel);
        return PanelDescriptor(1, 10, 6100);
    case kMsgClick:
        switch (MsgItem(msg)) {
        case kSay: say(panel); break;
        case kSayDone: ShowTravelScreen(); break;
        }
        return 1;
    case kMsgClose: ClearKeys(); return 1;
    default: return 0;
    }
}

} // namespace

const ViewProc TalkPanel{talkPanelProc};
const ViewProc TalkChoicePanel{talkChoiceProc};
const ViewProc TalkToPanel{talkToProc};
const ViewProc SayPanel{sayProc};

void NextTalk()
{
    turnTalk();
    ClosePanel(TalkPanel); // so that it comes up anew
    OpenPanel(TalkPanel);
}

void StartTalk()
{
    if (gState.wagons < 2 || gState.opt248 == 0)
        NextTalk();
    else
        OpenPanel(TalkChoicePanel);
}

Int ListWagons(const ListHandle& list, Int flags, WagonMap& map)
{
    map.fill(-1);
    Int rows = 0, seen = 0;
    for (Int slot = 0; slot < kMaxWagons && seen < gState.wagons; ++slot) {
        if (!SlotUsed(gState, slot))
            continue;
        ++seen;
        const bool noRequest = WagonOf(gState, slot).x5E == kNobody;
        if (((flags & 1) != 0 && noRequest) || ((flags & 2) != 0 && slot == gMySlot))
            continue;
        map[static_cast<std::size_t>(rows)] = slot;
        if (list) {
            const Str255 name = gState.names[static_cast<std::size_t>(slot)];
            LAddRow(1, rows, list);
            LSetCell(characters(name), name[0], Cell{rows, 0}, list);
        }
        ++rows;
    }
    if (list && rows > 0)
        LSetSelect(true, Cell{0, 0}, list);
    return rows;
}

} // namespace Wainroad
