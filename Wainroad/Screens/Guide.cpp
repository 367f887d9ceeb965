#include "Wainroad/Screens/Guide.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Controls.h"
#include "MacToolbox/Managers/Lists.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/DialogItems.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Simulation/Records.h"

#include <array>

namespace Wainroad {

Int gGuidePage = 0;

namespace {

enum GuideItems : Int { kPaper = 1, kCorner = 2, kRule = 3, kTitle = 4, kText = 5, kTab = 6, kPageNumber = 7 };
enum TopicsItems : Int { kGo = 1, kBack = 2, kTopics = 3, kTopicsHeading = 4 };
constexpr Int kTitles = 3150, kTexts = 3151, kTextsEach = 3;
constexpr Int kNextPart = 1, kPreviousPart = 2; // of the page corner

struct GuideState {
    Int choice = 0; // the page picked in the list of topics
};
RunState<GuideState> sGuide;
const AtRunStart sFreshStart([] { gGuidePage = 0; });

/// The page on the way to a place and the page at it. -1 and -2 stand for what depends on the way taken.
constexpr Int kByFirstFork = -1, kBySecondFork = -2;
struct Pages {
    Int onTheWay, there;
};
constexpr std::array<Pages, 18> kPagesByPlace{{{33, 33}, {33, 37}, {37, 7}, {7, 26}, {26, 13}, {13, 27}, {27, 34},
    {34, 54}, {54, kByFirstFork}, {kByFirstFork, 32}, {32, 53}, {53, 25}, {25, 52}, {52, 23}, {23, 30},
    {30, kBySecondFork}, {kBySecondFork, 17}, {17, 61}}};

void turnPage(View& panel, Int part)
{
    if (part == kNextPart && gGuidePage < kGuidePages)
        ++gGuidePage;
    else if (part == kPreviousPart && gGuidePage > 1)
        --gGuidePage;
    else
        return;
    const ViewPortScope port(panel);
    for (const Int item : {kTitle, kText, kPageNumber})
        if (const View* view = GetItem(panel, item))
            InvalRect(view->r);
}

void showItemControl(View& panel, Int item)
{
    View* view = GetItem(panel, item);
    if (ControlHandle* control = view ? view->dataAs<ControlHandle>() : nullptr)
        ShowControl(*control);
}

void openGuide(View& panel)
{
    showItemControl(panel, kCorner);
    showItemControl(panel, kTab);
    InstallUserItem(panel, kPaper, ImageItemProc, 0, ImageSpec{6010, 16010, 0, 1, gScreenDepth});
    InstallUserItem(panel, kRule, FrameItem, 0, qd.gray);
    InstallUserItem(panel, kTitle, GuideTitleItem);
    InstallUserItem(panel, kText, GuideTextItem);
    InstallUserItem(panel, kPageNumber, GuidePageItem);
    if (gGuidePage < 0)
        gGuidePage = -gGuidePage;
    else
        GuideStartPage();
}

Int guidePanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            openGuide(panel);
        return PanelDescriptor(1, 10, 6020);
    case kMsgClick:
        switch (MsgItem(msg)) {
        case kTab: OpenPanel(GuideTopicsPanel); break;
        case kCorner: turnPage(panel, MsgResult(msg)); break;
        }
        return 1;
    default: return 0;
    }
}

// ---- What stands on a page

Int titleItem(View& item, Msg& msg)
{
    if (msg.what != kMsgDraw)
        return UserItem.fn(item, msg);
    const StyleScope style({6322, 1, 0, 14, 0});
    Str255 title;
    GetIndString(title, kTitles, gGuidePage);
    FontInfo font;
    GetFontInfo(font);
    MoveTo(item.r.left, item.r.top + font.ascent);
    DrawString(title);
    return 1;
}

Int textItem(View& item, Msg& msg)
{
    if (msg.what != kMsgDraw)
        return UserItem.fn(item, msg);
    const StyleScope style({6322, 0, 0, 12, 0});
    if (const Handle text = GetLongString(kTexts + (gGuidePage - 1) / kTextsEach, (gGuidePage - 1) % kTextsEach + 1))
        TextBox(text->bytes, text->count(), item.r, 0);
    return 1;
}

Int pageNumberItem(View& item, Msg& msg)
{
    if (msg.what != kMsgDraw)
        return UserItem.fn(item, msg);
    const StyleScope style({6322, 0, 0, 12, 0});
    MoveTo(item.r.left, item.r.top + 12);
    DrawString(pstr((gGuidePage < 10 ? "  " : "") + std::to_string(gGuidePage) + " of 61"));
    return 1;
}

// ---- Topics

void setTopicsKeys(View& panel)
{
    SetKeys(panel, 2, 2, 1);
    gTENumeric = 0;
    gTEMaxChars = 1;
    gEditItems = 0;
}

void fillTopics(const ListHandle& list)
{
    LAddRow(kGuidePages, 0, list);
    for (Int page = 1; page <= kGuidePages; ++page) {
        Str255 title;
        GetIndString(title, kTitles, page);
        LSetCell(characters(title), title[0], Cell{page - 1, 0}, list);
    }
    LSetSelect(true, Cell{gGuidePage - 1, 0}, list);
    LAutoScroll(list);
}

void openTopics(View& panel)
{
    SetItemSize(panel, kTopics, 12);
    SetItemFace(panel, kTopics, 0);
    SetItemSize(panel, kTopicsHeading, 14);
    SetItemFace(panel, kTopicsHeading, 0);
    InstallUserItem(panel, kTopics, ListItem);
    sGuide->choice = gGuidePage;
    if (View* item = GetItem(panel, kTopics))
        if (const ListHandle list = ItemList(*item)) {
            list->selFlags = lOnlyOne;
            fillTopics(list);
        }
    setTopicsKeys(panel);
}

Int topicsProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            openTopics(panel);
        return PanelDescriptor(1, 10, 6170);
    case kMsgClick:
        if (MsgItem(msg) == kTopics && MsgResult(msg) < 0) {
            sGuide->choice = -MsgResult(msg);
            return 1;
        }
        gGuidePage = MsgItem(msg) == kBack ? -gGuidePage : -sGuide->choice;
        ClearKeys();
        OpenPanel(GuidePanel);
        return 1;
    default: return 0;
    }
}

} // namespace

const ViewProc GuidePanel{guidePanelProc};
const ViewProc GuideTopicsPanel{topicsProc};
const ViewProc GuideTitleItem{titleItem};
const ViewProc GuideTextItem{textItem};
const ViewProc GuidePageItem{pageNumberItem};

Int GuidePageFor(Int place, bool onTheWay, Int route)
{
    if (place < 0 || place >= I(kPagesByPlace.size()))
        return 1;
    const Pages& pages = kPagesByPlace[static_cast<std::size_t>(place)];
    const Int page = onTheWay ? pages.onTheWay : pages.there;
    if (page == kByFirstFork)
        return (route & 1) != 0 ? 54 : 24;
    return page == kBySecondFork ? (route & 2) + 28 : page;
}

void GuideStartPage() { gGuidePage = GuidePageFor(gState.landmark + 1, gState.toNext != 0, gState.route); }

Handle GetLongString(Int id, Int index)
{
    const Handle texts = GetResource(os("WST#"), id);
    if (!texts || index < 1)
        return nullptr;
    ByteReader in(texts->bytes);
    if (index > in.s16())
        return nullptr;
    for (;; --index) {
        if (in.atEnd())
            return nullptr;
        const Int length = in.u16();
        if (index == 1)
            return PtrToHand(in.raw(std::max<Int>(std::min(length, texts->count() - in.pos), 0)));
        in.skip(length + length % 2);
    }
}

} // namespace Wainroad
