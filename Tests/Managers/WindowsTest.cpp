#include "MacToolbox/Managers/Windows.h"

#include "MacToolbox/QuickDraw/Screen.h"
#include "Tests/Managers/ToolboxFixture.h"

#include <random>

using namespace MacToolbox;

namespace {

class WindowsTest : public ToolboxTest {
protected:
    static WindowManager& manager() { return WindowManager::shared(); }
    static Int part(Int v, Int h, WindowPtr& w) { return FindWindow({v, h}, w); }

    /// Repaints what is to be updated in every visible window, each in its own colour, as a program would.
    static void serveUpdates()
    {
        for (const WindowPtr& w : manager().windows) {
            if (!w->visible)
                continue;
            const PortScope scope(w->port);
            BeginUpdate(w);
            FillRect(w->portRect(), w->refCon != 0 ? qd.black : qd.white);
            EndUpdate(w);
        }
    }

    /// What must be seen at a pixel: the colour of the front window there or of the desktop; -1 for a frame that is not
    /// plain black.
    static Int expectedAt(Int h, Int v)
    {
        for (const WindowPtr& w : manager().windows) {
            if (!w->visible || !w->structRect().contains(h, v))
                continue;
            if (w->contentRect.contains(h, v))
                return w->refCon != 0;
            return w->procID == plainDBoxProc ? 1 : -1;
        }
        return qd.gray.bit(h, v);
    }
};

} // namespace

TEST_F(WindowsTest, PointsFindTheirPart)
{
    const WindowPtr w = window({60, 40, 120, 140}, documentProc);
    const struct {
        Int v, h, part;
        bool found;
    } points[] = {
        {19, 50, inMenuBar, false},
        {-3, 50, inMenuBar, false},
        {20, 50, inDesk, false},
        {41, 50, inDrag, true},
        {40, 50, inDesk, false},
        {59, 40, inDrag, true},
        {60, 40, inContent, true},
        {119, 139, inContent, true},
        {120, 139, inDrag, true},
        {119, 140, inDrag, true},
        {121, 139, inDesk, false},
        {60, 39, inDrag, true},
        {60, 38, inDesk, false},
    };
    for (const auto& p : points) {
        WindowPtr found;
        EXPECT_EQ(part(p.v, p.h, found), p.part) << p.v << ',' << p.h;
        EXPECT_EQ(found, p.found ? w : nullptr) << p.v << ',' << p.h;
    }
    MoveWindow(w, 40, 10, false);
    WindowPtr found = w;
    EXPECT_EQ(part(19, 50, found), inMenuBar) << "the menu bar lies over every window";
    EXPECT_EQ(found, nullptr);
}

TEST_F(WindowsTest, StructureFollowsTheFrame)
{
    const Rect c{100, 100, 150, 200};
    const struct {
        Int procID;
        Rect structure;
    } frames[] = {{0, {81, 99, 151, 201}}, {1, {92, 92, 158, 208}}, {2, {99, 99, 151, 201}}, {3, {99, 99, 153, 203}},
        {4, {81, 99, 151, 201}}, {5, {81, 99, 151, 201}}, {17, {92, 92, 158, 208}}};
    for (const auto& f : frames)
        EXPECT_EQ(makeWindow<WindowRecord>(c, f.procID)->structRect(), f.structure) << f.procID;
}

TEST_F(WindowsTest, EachPixelShowsTheFrontWindowAfterAnyMoves)
{
    manager().relayout(Region(Screen::bounds));
    std::mt19937 random(7);
    const auto upTo = [&](Int n) { return static_cast<Int>(random() % static_cast<unsigned>(n)); };
    std::vector<WindowPtr> all;
    for (Int i = 0; i < 6; ++i) {
        const Int top = 30 + upTo(200), left = 10 + upTo(350);
        all.push_back(window({top, left, top + 20 + upTo(120), left + 20 + upTo(160)}, upTo(5), i % 2 == 0));
        SetWRefCon(all.back(), i & 1);
    }
    for (Int step = 0; step < 180; ++step) {
        const WindowPtr& w = all[static_cast<std::size_t>(upTo(6))];
        switch (upTo(5)) {
        case 0: ShowWindow(w); break;
        case 1: HideWindow(w); break;
        case 2: SelectWindow(w); break;
        default: MoveWindow(w, upTo(480) - 20, 20 + upTo(300), upTo(2) == 1);
        }
        if (step % 3 != 2)
            continue; // updates add up, and move along
        serveUpdates();
        Int wrong = 0;
        for (Int v = 0; v < 342; ++v)
            for (Int h = 0; h < 512; ++h) {
                const Int expected = expectedAt(h, v);
                wrong += expected >= 0 && expected != Int{black(h, v)};
            }
        ASSERT_EQ(wrong, 0) << "after step " << step;
    }
}

TEST_F(WindowsTest, DrawingStopsAtWhatLiesInFront)
{
    const WindowPtr back = window({50, 50, 150, 250}), front = window({80, 100, 120, 200}, dBoxProc);
    const Bytes before = screen();
    const PortScope scope(front->port);
    FillRect({-50, -50, 200, 300}, qd.black);
    EXPECT_EQ(blackIn(front->contentRect), 40 * 100);
    EXPECT_EQ(blackIn({50, 50, 150, 92}), 0) << "nothing of the front window falls on the back one";
    SetPort(back);
    FillRect(back->portRect(), qd.black);
    FillRect(back->portRect(), qd.white);
    EXPECT_EQ(blackIn(front->contentRect), 40 * 100) << "nor the other way round";
    EXPECT_NE(screen(), before);
}

TEST_F(WindowsTest, ShowingBehindLeavesTheFrontPixelsAndMarksTheRest)
{
    const WindowPtr front = window({80, 100, 120, 200});
    const PortScope scope(front->port);
    FillRect(front->portRect(), qd.black);
    front->updateRgn = {};
    const WindowPtr back = NewWindow(nullptr, {50, 50, 150, 250}, {0}, true, plainDBoxProc, front, false, 0);
    EXPECT_EQ(manager().windows.back(), back);
    EXPECT_EQ(blackIn(front->contentRect), 40 * 100);
    EXPECT_TRUE(front->updateRgn.isEmpty());
    EXPECT_EQ(back->updateRgn.bounds(), back->contentRect);
    EXPECT_EQ(FrontWindow(), front);
}

TEST_F(WindowsTest, ActivationsComeInPairsAndLeaveWithTheirWindow)
{
    const WindowPtr a = window({50, 50, 90, 90}), b = window({60, 60, 100, 100});
    const auto& pending = manager().pendingActivates;
    ASSERT_EQ(pending.size(), 3u);
    EXPECT_TRUE(pending[0].window == a && pending[0].active);
    EXPECT_TRUE(pending[1].window == a && !pending[1].active) << "deactivation first";
    EXPECT_TRUE(pending[2].window == b && pending[2].active);
    EXPECT_TRUE(b->hilited && !a->hilited);
    manager().pendingActivates.clear();
    HideWindow(b);
    ASSERT_EQ(pending.size(), 2u);
    EXPECT_TRUE(pending[0].window == b && !pending[0].active);
    EXPECT_TRUE(pending[1].window == a && pending[1].active);
    ShowWindow(b);
    CloseWindow(b);
    for (const auto& entry : pending)
        EXPECT_NE(entry.window, b);
    EXPECT_EQ(manager().lastActive, a);
    CloseWindow(a);
    EXPECT_TRUE(pending.empty());
    EXPECT_EQ(FrontWindow(), nullptr);
    CloseWindow(a);
    CloseWindow(nullptr);
}

TEST_F(WindowsTest, AListElementMayBeGivenToEveryCall)
{
    const WindowPtr a = window({50, 50, 90, 90}), b = window({60, 60, 100, 100});
    MoveWindow(manager().windows[1], 70, 70, true);
    EXPECT_EQ(a->contentRect, (Rect{70, 70, 110, 110}));
    EXPECT_EQ(FrontWindow(), a);
    SelectWindow(manager().windows[1]);
    EXPECT_EQ(FrontWindow(), b);
    CloseWindow(manager().windows.front());
    EXPECT_EQ(manager().windows, std::vector{a});
}

TEST_F(WindowsTest, InvalidatingIsClippedAndMoved)
{
    const WindowPtr w = window({50, 60, 90, 120});
    w->updateRgn = {};
    const PortScope scope(w->port);
    InvalRect({-10, -10, 5, 5});
    EXPECT_EQ(w->updateRgn, Region(Rect{50, 60, 55, 65}));
    MoveWindow(w, 70, 60, false);
    w->updateRgn = {};
    InvalRect({0, 0, 5, 5});
    EXPECT_EQ(w->updateRgn, Region(Rect{60, 70, 65, 75}));
    SetOrigin(100, 100);
    ValidRect({90, 90, 105, 103});
    EXPECT_EQ(w->updateRgn, Region(Rect{60, 73, 65, 75})) << "local coordinates follow the origin";
    InvalRgn(std::make_shared<RgnRecord>(Region(Rect{90, 90, 95, 95})));
    EXPECT_TRUE(w->updateRgn.contains(Point{50, 60})) << "a region is not clipped";
    HideWindow(w);
    w->updateRgn = Region(Rect{60, 70, 65, 75});
    MoveWindow(w, 80, 70, false);
    EXPECT_EQ(w->updateRgn, Region(Rect{70, 80, 75, 85})) << "what is invalid moves along";
    SetPort(std::make_shared<GrafPort>(Rect{0, 0, 9, 9}));
    InvalRect({0, 0, 9, 9});
}

TEST_F(WindowsTest, UpdatingDrawsOnlyWhatIsInvalid)
{
    const WindowPtr w = window({50, 60, 90, 120});
    const PortScope scope(w->port);
    BeginUpdate(w);
    EndUpdate(w);
    const Region full = w->port->visRgn->region;
    InvalRect({10, 10, 20, 20});
    BeginUpdate(w);
    EXPECT_EQ(w->port->visRgn->region, Region(Rect{10, 10, 20, 20}));
    FillRect(w->portRect(), qd.black);
    EndUpdate(w);
    EXPECT_EQ(w->port->visRgn->region, full);
    EXPECT_EQ(blackIn(w->contentRect), 100);
    BeginUpdate(w);
    EXPECT_TRUE(w->port->visRgn->region.isEmpty()) << "nothing to update, nothing to see";
    EndUpdate(w);
    EndUpdate(w);
    EXPECT_EQ(w->port->visRgn->region, full);
}

TEST_F(WindowsTest, WindowResourcesAreReadWithoutTrust)
{
    const Bytes whole = Form().rect({40, 50, 140, 250}).u16(4).u16(1).u16(1).u32(-7).counted("Trail").bytes;
    add("WIND", 128, whole);
    for (std::size_t cut = 0; cut < whole.size(); ++cut)
        add("WIND", 1000 + I(cut), Bytes(whole.begin(), whole.begin() + I(cut)));
    add("WIND", 129, Form().rect({40, 50, 20, 10}).u16(-1).u16(1).u16(0).u32(0).u8(255).bytes);
    useResources();
    const WindowPtr w = GetNewWindow(128, nullptr, nullptr);
    ASSERT_TRUE(w);
    EXPECT_TRUE(w->visible && w->goAwayFlag);
    EXPECT_EQ(w->refCon, -7);
    EXPECT_EQ(string(w->title), "Trail");
    EXPECT_EQ(GetNewWindow(999, nullptr, nullptr), nullptr);
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        const WindowPtr part = GetNewWindow(1000 + I(cut), nullptr, nullptr);
        EXPECT_EQ(part == nullptr, cut < 18) << cut;
        CloseWindow(part);
    }
    CloseWindow(GetNewWindow(129, nullptr, nullptr));
    EXPECT_EQ(manager().windows.size(), 1u);
}
