#include "Wainroad/Frame/Panels.h"

#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/Frame/FrameFixture.h"

using namespace Wainroad;

namespace {

constexpr Int kButtons = 500, kFields = 501;

/// What a panel of these tests answers and does; by letter.
struct Behaviour {
    Int descriptor = 0;
    std::function<void(View&, const Msg&)> act;
};
std::map<char, Behaviour> sBehaviour;

Int tell(char letter, View& view, Msg& msg)
{
    std::string word(1, letter);
    switch (msg.what) {
    case kMsgOpen: word += ItemsLoaded(view) ? "2" : "1"; break;
    case kMsgClick: word += ".click" + std::to_string(MsgItem(msg)); break;
    case kMsgClose: word += ".close"; break;
    case kMsgTimer: word += ".timer"; break;
    default: word += "." + std::to_string(msg.what);
    }
    sLog.log.push_back(word);
    if (const auto& act = sBehaviour[letter].act)
        act(view, msg);
    return sBehaviour[letter].descriptor;
}

template <char Letter> Int procOf(View& view, Msg& msg) { return tell(Letter, view, msg); }

const ViewProc A{procOf<'A'>}, B{procOf<'B'>}, C{procOf<'C'>}, D{procOf<'D'>};

class PanelsTest : public FrameTest {
protected:
    PanelsTest()
    {
        add("DITL", kButtons,
            ditl({{4, {10, 10, 30, 60}, bytesOf("One")}, {0, {40, 10, 60, 60}, {}},
                {4, {70, 10, 90, 60}, bytesOf("Two")}, {0x84, {10, 70, 30, 110}, bytesOf("No")}}));
        add("DITL", kFields, ditl({{16, {10, 10, 26, 90}, {}}}));
        useResources();
        sBehaviour.clear();
        place('A', 1, 2, kButtons);
        place('B', 1, 3, kButtons);
        place('C', 2, 13, kButtons);
        place('D', 3, 13, 0);
    }

    static void place(char letter, Int layer, Int location, Int items)
    {
        sBehaviour[letter].descriptor = PanelDescriptor(layer, location, items);
    }
    static std::string panels()
    {
        std::string all;
        for (const auto& child : gRootView->children)
            for (const auto& [proc, letter] : {std::pair(&A, 'A'), {&B, 'B'}, {&C, 'C'}, {&D, 'D'}})
                if (child->user == proc)
                    all += std::string(1, letter) + std::to_string(child->disabled);
        return all;
    }
};

} // namespace

TEST_F(PanelsTest, OpensTwiceAndPlacesItsItems)
{
    OpenPanel(A);
    EXPECT_EQ(panels(), "") << "it opens with the next event";
    pump();
    EXPECT_EQ(sLog.take(), "A1 A2");
    View& panel = *FindPanel(A);
    EXPECT_EQ(panel.r, (Rect{9, 64, 86, 326}));
    ASSERT_EQ(panel.children.size(), 4U);
    EXPECT_EQ(GetItem(panel, 1)->r, (Rect{19, 74, 39, 124})) << "the first item is the oldest, placed within the panel";
    EXPECT_EQ(GetItem(panel, 4)->type, -124) << "the type byte keeps its sign";
    EXPECT_EQ(GetItem(panel, 0), &panel);
    EXPECT_EQ(GetItem(panel, 5), nullptr);
    EXPECT_EQ(GetItem(panel, -1), nullptr);
    EXPECT_EQ(*panel.dataAs<Int>(), -1);
    OpenPanel(A);
    pump();
    EXPECT_EQ(sLog.take(), "") << "an open panel keeps its state";
}

TEST_F(PanelsTest, DrawsOnlyThroughUpdates)
{
    const Bytes before = screen();
    OpenPanel(A);
    OpenPending();
    EXPECT_EQ(screen(), before);
    pump(2);
    const Rect& r = gPanelRects[2];
    EXPECT_TRUE(black(r.left - 1, r.top + kTop - 1)) << "the black frame lies just outside";
    EXPECT_FALSE(black(r.left, r.top + kTop));
    const Int grey = blackIn({r.top + kTop - 2, r.left - 2, r.top + kTop - 1, r.right + 2});
    EXPECT_EQ(grey, (r.width() + 4) / 2) << "and a grey one round it";
}

TEST_F(PanelsTest, AnEqualLayerReplacesAndALowerOneIsCovered)
{
    open(A);
    open(B);
    EXPECT_EQ(panels(), "A0B0") << "side by side";
    sLog.take();
    place('A', 1, 10, 0);
    place('D', 1, 10, 0); // lies over both
    open(D);
    EXPECT_EQ(sLog.take(), "D1 B.close A.close D2");
    EXPECT_EQ(panels(), "D0");
}

TEST_F(PanelsTest, CoversAreCounted)
{
    open(A);
    open(B);
    open(C);
    EXPECT_EQ(panels(), "A1B1C0");
    EXPECT_EQ(GetItem(*FindPanel(A), 1)->disabled, 1);
    open(D);
    EXPECT_EQ(panels(), "A2B2C1D0");
    DisableView(*FindPanel(B));
    ClosePanel(D);
    EXPECT_EQ(panels(), "A1B2C0");
    ClosePanel(C);
    EXPECT_EQ(panels(), "A0B1");
    EXPECT_EQ(GetItem(*FindPanel(A), 1)->disabled, 0);
    EXPECT_EQ(GetItem(*FindPanel(B), 1)->disabled, 1) << "the items wait for their panel";
    EnableItem2(*FindPanel(A), 1);
    EXPECT_EQ(GetItem(*FindPanel(A), 1)->disabled, 0) << "never below 0";
}

TEST_F(PanelsTest, OpenedUnderACoverItIsOffAndHasNoFocus)
{
    place('A', 1, 2, kFields);
    open(C);
    const Bytes before = screen();
    View& hidden = open(A);
    EXPECT_EQ(panels(), "C0A1");
    EXPECT_EQ(gFocus, nullptr);
    EXPECT_EQ(screen(), before);
    sLog.take();
    click(hidden);
    EXPECT_EQ(sLog.take().find("A."), std::string::npos);
    ClosePanel(C);
    pump(3);
    EXPECT_EQ(panels(), "A0");
    EXPECT_NE(screen(), before);
}

TEST_F(PanelsTest, TheQueueHoldsTwentyFourAndGrowsWhileItOpens)
{
    sBehaviour['A'].act = [](View& view, const Msg& msg) {
        if (msg.what == kMsgOpen && ItemsLoaded(view))
            OpenPanel(B);
    };
    OpenPanel(A);
    pump();
    EXPECT_EQ(sLog.take(), "A1 A2 B1 B2") << "in the same pass";
    for (Int i = 0; i < 24; ++i)
        OpenPanel(A);
    OpenPanel(C);
    pump();
    EXPECT_EQ(panels(), "A0B0") << "the 25th is dropped";
}

TEST_F(PanelsTest, ABatchOpensInOrderEachWithItsOwnReplacements)
{
    place('B', 1, 2, 0);
    for (const ViewProc* proc : {&A, &B, &A})
        OpenPanel(*proc);
    pump();
    EXPECT_EQ(sLog.take(), "A1 A2 B1 A.close B2 A1 B.close A2");
}

TEST_F(PanelsTest, ClicksGoToTheNewestEnabledItem)
{
    View& panel = open(A);
    sLog.take();
    click(*GetItem(panel, 1));
    EXPECT_EQ(sLog.take(), "A.click1");
    click(*GetItem(panel, 4));
    EXPECT_EQ(sLog.take(), "") << "bit 7 takes no clicks";
    View* cover = AddChild(&panel, 0);
    cover->r = GetItem(panel, 1)->r;
    click(*GetItem(panel, 1));
    EXPECT_EQ(sLog.take(), "") << "what lies over it eats the click";
    DisableView(*cover);
    click(*GetItem(panel, 1));
    EXPECT_EQ(sLog.take(), "A.click1") << "unless it is off";
}

TEST_F(PanelsTest, PressButtonCountsPushButtonsFromTheEnd)
{
    View& panel = open(A);
    View& other = open(B);
    sLog.take();
    PressButton(&panel, 1);
    PressButton(&panel, 2);
    EXPECT_EQ(sLog.take(), "A.click3 A.click1");
    PressButton(&panel, 9); // no such button: the click falls on (1, 1), where nothing is
    PressButton(nullptr, 1);
    DisableView(other);
    PressButton(&other, 1);
    EXPECT_EQ(sLog.take(), "");
    DisableView(*GetItem(panel, 3));
    PressButton(&panel, 1);
    EXPECT_EQ(sLog.take(), "") << "a disabled button has nothing under it here";
}

TEST_F(PanelsTest, ReturnAndCommandPeriodPressTheKeyPanelsButtonsOnlyWhileItLives)
{
    View& panel = open(A);
    SetKeys(panel, 1, 1, 2);
    sLog.take();
    PressButton(gKeyPanel, gReturnItem);
    EXPECT_EQ(sLog.take(), "A.click3");
    PushKeys();
    EXPECT_EQ(gReturnItem, 0);
    gTELimitWidth = 1;
    PopKeys();
    PopKeys();
    EXPECT_EQ(gKeyPanel, &panel);
    EXPECT_EQ(gCancelItem, 2);
    EXPECT_EQ(gTELimitWidth, 1) << "not in the set";
    ClosePanel(A);
    EXPECT_EQ(gKeyPanel, nullptr);
    PopKeys();
    EXPECT_EQ(gKeyPanel, nullptr) << "a saved table forgets a panel that has gone";
    ClearKeys();
    EXPECT_EQ(gTELimitWidth, 0);
    EXPECT_EQ(gReturnItem, 0);
}

TEST_F(PanelsTest, TheRingOfTheDefaultButtonIsDrawnWithItsPanel)
{
    View& panel = open(A);
    const Rect& button = GetItem(panel, 3)->r;
    const auto ringed = [&] { return black((button.left + button.right) / 2, button.top - 3 + kTop); };
    EXPECT_FALSE(ringed());
    SetKeys(panel);
    InvalView(panel);
    pump(2);
    EXPECT_TRUE(ringed());
    EXPECT_FALSE(black(button.left + 20, panel.r.bottom + kTop + 3)) << "and stays inside it";
}

TEST_F(PanelsTest, APanelMayCloseItselfInItsClick)
{
    sBehaviour['A'].act = [](View&, const Msg& msg) {
        if (msg.what == kMsgClick) {
            ClosePanel(A);
            OpenPanel(B);
        }
    };
    View& panel = open(A);
    sLog.take();
    click(*GetItem(panel, 1));
    EXPECT_EQ(sLog.take(), "A.click1 A.close B1 B2");
    EXPECT_EQ(panels(), "B0");
}

TEST_F(PanelsTest, ACloseMayTakeAnotherPanelAlong)
{
    place('B', 0, 6, 0);
    open(B);
    open(A);
    sBehaviour['A'].act = [](View&, const Msg& msg) {
        if (msg.what == kMsgClose)
            ClosePanel(B);
    };
    sLog.take();
    RootClose(gWindow);
    EXPECT_EQ(sLog.take(), "A.close B.close") << "each once";
}

TEST_F(PanelsTest, TheWholeTreeMayGoInAClick)
{
    sBehaviour['A'].act = [](View&, const Msg& msg) {
        if (msg.what == kMsgClick)
            RootClose(gWindow);
    };
    View& panel = open(A);
    AddTimer(panel, 0);
    sLog.take();
    clickLater(2, {30 + kTop, 90});
    pump(4);
    EXPECT_EQ(sLog.take(), "A.click1 A.close") << "no timer runs without a root";
    EXPECT_EQ(gRootView, nullptr);
    EXPECT_EQ(TimerCount(), 0);
    OpenPanel(B);
    pump(2);
    EXPECT_EQ(sLog.take(), "");
}

TEST_F(PanelsTest, TimersCountStepsOnWhichTheTickHasMoved)
{
    View& panel = open(A);
    sLog.take();
    AddTimer(panel, 0);
    TimersRun();
    TimersRun();
    TimersRun();
    EXPECT_EQ(sLog.log.size(), 3U) << "interval 0: every time";
    RemoveTimer(panel);
    sLog.take();
    AddTimer(panel, 6);
    const Int start = TickCount();
    while (TickCount() < start + 60)
        pump();
    const auto steps = I(sLog.log.size());
    EXPECT_LE(steps, 10);
    EXPECT_GE(steps, 8);
}

TEST_F(PanelsTest, ThereAreSixteenTimersAndOneGoesWithItsView)
{
    View& panel = open(A);
    const Int own = TimerCount(); // the root's
    for (Int i = 0; i < 20; ++i)
        AddTimer(panel, 1);
    EXPECT_EQ(TimerCount(), 16);
    RemoveTimer(panel);
    EXPECT_EQ(TimerCount(), 15);
    ClosePanel(A);
    EXPECT_EQ(TimerCount(), own);
}

TEST_F(PanelsTest, ASlotUsedAnewInItsOwnStepStartsFromZero)
{
    sBehaviour['A'].act = [](View& view, const Msg& msg) {
        if (msg.what == kMsgTimer) {
            RemoveTimer(view);
            AddTimer(view, 1000);
        }
    };
    View& panel = open(A);
    AddTimer(panel, 2);
    sLog.take();
    const Int start = TickCount();
    while (TickCount() < start + 100)
        pump();
    EXPECT_EQ(sLog.take(), "A.timer");
}

TEST_F(PanelsTest, KeysGoToPanelsFromTheNewestAndAHeldReturnToNobody)
{
    place('A', 1, 2, kFields);
    open(A);
    ASSERT_NE(gFocus, nullptr);
    EventRecord event;
    event.what = autoKey;
    event.message = 13;
    EXPECT_FALSE(RootEvent(event));
    event.message = 'x';
    EXPECT_TRUE(RootEvent(event));
    event.modifiers = cmdKey;
    EXPECT_FALSE(RootEvent(event));
    event.what = keyDown;
    event.message = 'q';
    EXPECT_FALSE(RootEvent(event)) << "a command that the field has no use for goes on to the menus";
}

TEST_F(PanelsTest, ChildrenAreAddedWhereAskedFor)
{
    View root;
    root.disabled = 3;
    View* a = AddChild(&root, 0);
    View* b = AddChild(&root, 0);
    View* c = AddChild(&root, 1);
    View* d = AddChild(&root, 99);
    EXPECT_EQ(a->disabled, 3);
    std::vector<View*> order;
    for (const auto& child : root.children)
        order.push_back(child.get());
    EXPECT_EQ(order, (std::vector<View*>{d, a, c, b})) << "oldest first";
    EXPECT_EQ(AddChild(nullptr, 0), nullptr);
}
