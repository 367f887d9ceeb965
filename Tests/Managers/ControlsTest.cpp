#include "MacToolbox/Managers/Controls.h"

#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/QuickDraw/Screen.h"
#include "Tests/Managers/ToolboxFixture.h"

using namespace MacToolbox;

namespace {

class ControlsTest : public ToolboxTest {
protected:
    ControlsTest() : w(window({40, 40, 240, 240})) { }

    ControlHandle button(const Rect& r, Int procID = pushButProc) const
    {
        return NewControl(w, r, pstr("OK"), true, 0, 0, 1, procID, 0);
    }
    ControlHandle bar(Int min, Int max, Int value, const Rect& r = {10, 10, 170, 26}) const
    {
        return NewControl(w, r, {0}, true, value, min, max, scrollBarProc, 0);
    }
    /// A point of the window in global coordinates.
    static Point global(Int v, Int h) { return {v + 40, h + 40}; }

    WindowPtr w;
};

} // namespace

TEST_F(ControlsTest, ValuesAreKeptOrClampedByKind)
{
    const ControlHandle box = button({0, 0, 20, 80}, checkBoxProc);
    SetCtlValue(box, 5);
    EXPECT_EQ(GetCtlValue(box), 5) << "a button takes any value";
    EXPECT_TRUE(black(40 + 2 + 3, 40 + 10 - 6 + 3)) << "and shows its cross";

    const ControlHandle scroll = bar(0, 10, 0);
    SetCtlValue(scroll, 99);
    EXPECT_EQ(GetCtlValue(scroll), 10);
    const Int generation = Screen::shared().generation;
    SetCtlValue(scroll, 50);
    EXPECT_EQ(Screen::shared().generation, generation) << "the same value again draws nothing";
    SetCtlMin(scroll, 20);
    EXPECT_EQ(GetCtlValue(scroll), 10) << "a new minimum leaves the value alone";
    SetCtlValue(scroll, 3);
    EXPECT_EQ(GetCtlValue(scroll), 20) << "a minimum above the maximum wins";
    SetCtlMin(scroll, -5);
    SetCtlMax(scroll, 4);
    EXPECT_EQ(GetCtlValue(scroll), 4);
    SetCtlMax(scroll, -9);
    EXPECT_EQ(GetCtlValue(scroll), -5);
    EXPECT_EQ(GetCtlValue(nullptr), 0);
    SetCtlValue(nullptr, 1);
}

TEST_F(ControlsTest, ScrollBarPartsLieWhereTheThumbSays)
{
    const ControlHandle scroll = bar(0, 100, 50); // 160 long: thumb travels 112, from 16; now at 72
    const struct {
        Int v, part;
    } points[] = {{9, 0}, {10, inUpButton}, {25, inUpButton}, {26, inPageUp}, {81, inPageUp}, {82, inThumb},
        {97, inThumb}, {98, inPageDown}, {153, inPageDown}, {154, inDownButton}, {169, inDownButton}, {170, 0}};
    for (const auto& p : points)
        EXPECT_EQ(TestControl(scroll, {p.v, 15}), p.part) << p.v;
    SetCtlMax(scroll, 0);
    EXPECT_EQ(TestControl(scroll, {80, 15}), 0) << "no thumb, no track";
    EXPECT_EQ(TestControl(scroll, {12, 15}), inUpButton) << "but arrows";
    EXPECT_EQ(blackIn({40 + 30, 40 + 12, 40 + 150, 40 + 24}), 0) << "the track is white then";
    HiliteControl(scroll, 255);
    EXPECT_EQ(TestControl(scroll, {12, 15}), 0);
    EXPECT_EQ(TestControl(bar(0, 9, 5, {100, 100, 148, 116}), {124, 105}), 0) << "48 long holds no thumb";
    EXPECT_EQ(TestControl(bar(0, 9, 9, {100, 100, 116, 180}), {105, 155}), inThumb) << "a horizontal one";
}

TEST_F(ControlsTest, FindsTheNewestEnabledControl)
{
    const ControlHandle below = button({0, 0, 20, 80}), above = button({0, 0, 20, 80});
    ControlHandle found;
    EXPECT_EQ(FindControl({5, 5}, w, found), inButton);
    EXPECT_EQ(found, above);
    HiliteControl(above, 255);
    FindControl({5, 5}, w, found);
    EXPECT_EQ(found, below);
    HideControl(below);
    EXPECT_EQ(FindControl({5, 5}, w, found), 0);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(TestControl(above, {5, 5}), 0) << "a disabled one has no parts";
    EXPECT_EQ(FindControl({5, 5}, nullptr, found), 0);
}

TEST_F(ControlsTest, AButtonIsPressedWhereTheMouseGoesUp)
{
    const ControlHandle b = button({10, 10, 30, 90});
    const Bytes plain = screen();
    Bytes pressed;
    later(3, [&] { pressed = screen(); });
    clickLater(5, global(20, 50));
    EXPECT_EQ(TrackControl(b, {20, 50}, nullptr), inButton);
    EXPECT_NE(pressed, plain);
    EXPECT_EQ(screen(), plain);
    EXPECT_EQ(b->contrlHilite, 0);
    EXPECT_FALSE(Input::take(mUpMask, false)) << "the release is used up";

    Input::mouse(90, 60, true);
    mouseLater(3, {200, 90}, true); // outside, then up
    mouseLater(5, {200, 90}, false);
    EXPECT_EQ(TrackControl(b, {20, 50}, nullptr), 0);
    EXPECT_EQ(b->contrlHilite, 0);

    EXPECT_EQ(TrackControl(b, {20, 50}, nullptr), inButton) << "with no button held it is a press all the same";
    EXPECT_EQ(TrackControl(b, {0, 0}, nullptr), 0);
    EXPECT_EQ(TrackControl(nullptr, {0, 0}, nullptr), 0);
}

TEST_F(ControlsTest, AnActionRepeatsAfter24AndThenEvery4Ticks)
{
    const ControlHandle scroll = bar(0, 100, 50);
    std::vector<Int> calls;
    const Int start = TickCount();
    clickLater(41, global(15, 15));
    const Int part = TrackControl(scroll, {15, 15}, [&](const ControlHandle& c, Int in) {
        EXPECT_EQ(in, inUpButton);
        EXPECT_EQ(c->contrlHilite, inUpButton);
        calls.push_back(TickCount() - start);
    });
    EXPECT_EQ(part, inUpButton);
    ASSERT_EQ(calls.size(), 6u); // 0, 24, 28, 32, 36, 40
    EXPECT_EQ(calls[0], 0);
    for (std::size_t i = 1; i < calls.size(); ++i)
        EXPECT_NEAR(static_cast<double>(calls[i]), 20.0 + 4.0 * static_cast<double>(i), 1.0);

    calls.clear();
    Input::mouse(15 + 40, 15 + 40, true);
    mouseLater(10, {300, 300}, true);
    mouseLater(60, {300, 300}, false);
    scroll->contrlAction = [&](const ControlHandle&, Int) { calls.push_back(0); };
    EXPECT_EQ(TrackControl(scroll, {15, 15}, nullptr, true), 0);
    EXPECT_EQ(calls.size(), 1u) << "outside it rests";
}

TEST_F(ControlsTest, TheThumbFollowsTheMouse)
{
    const ControlHandle scroll = bar(0, 112, 0); // one value a pixel
    Input::mouse(50 + 8, 50 + 24, true);
    mouseLater(2, global(10 + 24 + 56, 18), true);
    Int middle = -1;
    later(4, [&] { middle = GetCtlValue(scroll); });
    mouseLater(5, global(900, 18), true);
    mouseLater(8, global(900, 18), false);
    EXPECT_EQ(TrackControl(scroll, {10 + 24, 18}, nullptr), inThumb);
    EXPECT_EQ(middle, 56);
    EXPECT_EQ(GetCtlValue(scroll), 112);
}

TEST_F(ControlsTest, ADefinitionIsToldAndCanBeAnything)
{
    std::vector<Int> messages;
    ControlManager::registerCdef(5, [&](Int variant, const ControlHandle& c, Int message, Int param) -> Int {
        messages.push_back(message);
        EXPECT_EQ(variant, 3);
        if (message == initCntl) {
            EXPECT_EQ(c->contrlVis, messages.size() == 1) << "hidden while it is made from a resource";
        } else if (message == drawCntl) {
            EXPECT_EQ(thePort, c->port);
        }
        return message == testCntl ? Point::fromLong(param).v : 0;
    });
    add("CNTL", 128, Form().rect({0, 0, 9, 9}).u16(4).u8(1).u8(0).u16(9).u16(2).u16(83).u32(-1).counted("T").bytes);
    useResources();
    const GrafPtr before = thePort;
    const ControlHandle made = NewControl(w, {0, 0, 9, 9}, {0}, true, 0, 0, 0, 83, 0);
    EXPECT_EQ(messages, (std::vector<Int>{initCntl, drawCntl}));
    EXPECT_EQ(TestControl(made, {-7, 3}), -7) << "a point keeps its sign";
    const ControlHandle read = GetNewControl(128, w);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->contrlValue, 4);
    EXPECT_EQ(read->contrlMax, 9);
    EXPECT_EQ(read->contrlMin, 2);
    EXPECT_EQ(GetCRefCon(read), -1);
    EXPECT_EQ(w->controls, (std::vector{read, made}));
    messages.clear();
    DisposeControl(read);
    EXPECT_EQ(messages, (std::vector<Int>{dispCntl}));
    KillControls(w);
    EXPECT_EQ(messages, (std::vector<Int>{dispCntl, dispCntl}));
    EXPECT_TRUE(w->controls.empty());
    EXPECT_EQ(thePort, before);
    EXPECT_EQ(NewControl(w, {0, 0, 20, 60}, {0}, true, 0, 0, 0, 1600, 0)->test({5, 5}), inButton)
        << "a key without a definition is a push button";
}

TEST_F(ControlsTest, AHiddenControlIsErasedAndInvalid)
{
    const ControlHandle b = button({10, 10, 30, 90});
    EXPECT_GT(blackIn({50, 50, 70, 130}), 0);
    w->updateRgn = {};
    HideControl(b);
    EXPECT_EQ(blackIn({50, 50, 70, 130}), 0);
    EXPECT_EQ(w->updateRgn, Region(Rect{50, 50, 70, 130}));
    ShowControl(b);
    EXPECT_GT(blackIn({50, 50, 70, 130}), 0);
}

TEST_F(ControlsTest, CutResourcesAreRefusedOrReadAsFarAsTheyGo)
{
    const Bytes whole = Form().rect({0, 0, 20, 60}).u16(0).u8(1).u8(0).u16(1).u16(0).u16(0).u32(0).counted("Go").bytes;
    for (std::size_t cut = 0; cut <= whole.size(); ++cut)
        add("CNTL", I(cut), Bytes(whole.begin(), whole.begin() + I(cut)));
    add("CNTL", 99,
        Form().rect({0, 0, 20, 60}).u16(0).u8(1).u8(0).u16(1).u16(0).u16(-32768).u32(0).u8(255).text("x").bytes);
    useResources();
    for (std::size_t cut = 0; cut <= whole.size(); ++cut)
        EXPECT_EQ(GetNewControl(I(cut), w) == nullptr, cut < 22) << cut;
    EXPECT_TRUE(GetNewControl(99, w));
}
