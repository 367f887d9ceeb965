#include "Wainroad/Frame/IconButton.h"

#include "MacToolbox/Managers/Controls.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/Frame/FrameFixture.h"
#include "Wainroad/Frame/Controls.h"

using namespace Wainroad;

namespace {

constexpr Int kItems = 500, kIcon = 700, kOtherIcon = 701;
Int sClicks = 0, sTimer = 0;
std::function<void()> sOnTimer;

Int panelProc(View& view, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(view))
            AddTimer(view, 1);
        break;
    case kMsgClick: ++sClicks; break;
    case kMsgTimer:
        ++sTimer;
        if (sOnTimer)
            sOnTimer();
        break;
    }
    return PanelDescriptor(1, 10, kItems);
}
const ViewProc ButtonsPanel{panelProc};

class IconButtonTest : public FrameTest {
protected:
    IconButtonTest()
    {
        sClicks = sTimer = 0;
        sOnTimer = nullptr;
        add("CNTL", 20, cntl(160, kIcon, "Two\rlines"));
        add("CNTL", 21, cntl(160, kIcon, "", false));
        add("CNTL", 22, cntl(0, kIcon, "Plain"));
        add("ICON", kIcon, Bytes(128, 0xFF));
        add("ICON", kOtherIcon, Bytes(127, 0xFF));
        add("DITL", kItems,
            ditl({{7, {10, 10, 60, 52}, idBytes(20)}, {7, {10, 100, 60, 142}, idBytes(21)},
                {7, {70, 10, 90, 90}, idBytes(22)}, {7, {70, 100, 120, 240}, idBytes(20)}}));
        useResources();
        RegisterControls();
        LoadButtonImages();
    }
    View& button() { return *GetItem(open(ButtonsPanel), 1); }
    /// The picture of the key: "up", "down" or "off".
    std::string state(View& view)
    {
        const Rect key = IconKeyRect(view.r);
        const Int top = key.top + kTop;
        const bool icon =
            black(key.left + 10, top + 20) && black(key.left + 11, top + 20) && black(key.left + 12, top + 21);
        const bool down =
            black(key.left + 1, top + 1) && black(key.left + 12, top + 1) && black(key.left + 1, top + 44);
        return down ? "down" : icon ? "up" : "off";
    }
};

} // namespace

TEST_F(IconButtonTest, OnlyItsOwnDefinitionIsClaimed)
{
    View& panel = open(ButtonsPanel);
    ASSERT_TRUE(iconButton(*GetItem(panel, 1)));
    EXPECT_EQ(iconButton(*GetItem(panel, 1))->title, pstr("Two\rlines"));
    EXPECT_EQ(iconButton(*GetItem(panel, 1))->iconID, kIcon);
    EXPECT_EQ(GetItem(panel, 2)->disabled, 1) << "an invisible one starts off";
    EXPECT_FALSE(iconButton(*GetItem(panel, 3)));
    const ControlHandle plain = *GetItem(panel, 3)->dataAs<ControlHandle>();
    EXPECT_EQ(plain->contrlRect, GetItem(panel, 3)->r) << "a plain control takes the item's place and size";
    EXPECT_EQ(gWindow->controls.size(), 1U);
}

TEST_F(IconButtonTest, TheKeyFollowsTheMouseAndTimeGoesOn)
{
    View& view = button();
    std::vector<std::string> seen;
    const auto note = [&] { seen.push_back(state(view)); };
    const Point inside{view.r.top + 20 + kTop, view.r.left + 20}, outside{view.r.top + 100 + kTop, view.r.left};
    note();
    later(2, note);
    mouseLater(3, outside, true);
    later(6, note);
    mouseLater(7, inside, true);
    later(10, note);
    mouseLater(11, inside, false);
    Input::mouse(inside.h, inside.v, true);
    const Int before = sTimer;
    pump(3);
    note();
    EXPECT_EQ(seen, (std::vector<std::string>{"up", "down", "up", "down", "up"}));
    EXPECT_EQ(sClicks, 1);
    EXPECT_GT(sTimer, before + 5);

    mouseLater(3, outside, true);
    mouseLater(6, outside, false);
    Input::mouse(inside.h, inside.v, true);
    pump(3);
    EXPECT_EQ(sClicks, 1) << "let go outside";
}

TEST_F(IconButtonTest, ItsPanelMayGoWhileItIsHeld)
{
    View& view = button();
    sOnTimer = [] { ClosePanel(ButtonsPanel); };
    clickLater(10, {view.r.top + 20 + kTop, view.r.left + 20});
    pump(3);
    EXPECT_EQ(sClicks, 0);
    EXPECT_EQ(FindPanel(ButtonsPanel), nullptr);
}

TEST_F(IconButtonTest, AnInactiveKeyHasNoIconAndTakesNoClick)
{
    View& view = button();
    iconButton(view)->hilite = 254;
    InvalView(view);
    pump(2);
    EXPECT_EQ(state(view), "off");
    click(view);
    EXPECT_EQ(sClicks, 0);

    View& titled = *GetItem(*view.parent, 4);
    const Rect column{titled.r.top + kTop, titled.r.left + 47, titled.r.bottom + kTop, titled.r.right};
    const Int full = blackIn(column);
    iconButton(titled)->hilite = 255;
    InvalView(titled);
    pump(2);
    EXPECT_GT(blackIn(column), full / 4);
    EXPECT_LT(blackIn(column), full * 3 / 4) << "a grey title";
}

TEST_F(IconButtonTest, TheTitleIsCentredAsABlockOfLines)
{
    View& view = *GetItem(*button().parent, 4);
    EXPECT_EQ(CountLines(pstr("Two\rlines")), 2);
    EXPECT_EQ(CountLines({0}), 1);
    const auto rowUsed = [&](Int row) {
        return blackIn({view.r.top + row + kTop, view.r.left + 47, view.r.top + row + 1 + kTop, view.r.right}) > 0;
    };
    // 50 high, two lines of 12: baselines 13 + 9 = 22 and 34, glyphs 9 high
    std::vector<Int> used;
    for (Int row = 0; row < 50; ++row)
        if (rowUsed(row))
            used.push_back(row);
    EXPECT_EQ(used.front(), 13);
    EXPECT_EQ(used.back(), 33);
    EXPECT_EQ(used.size(), 18U);
}

TEST_F(IconButtonTest, AnIconIsChangedOnce)
{
    View& view = button();
    View& panel = *view.parent;
    SetIconButtonIcon(panel, 1, kOtherIcon, true);
    EXPECT_EQ(iconButton(view)->iconID, kOtherIcon);
    EXPECT_EQ(state(view), "off") << "an icon that is too short is not drawn";
    const Handle held = iconButton(view)->icon;
    SetIconButtonIcon(panel, 1, kOtherIcon, true);
    EXPECT_EQ(iconButton(view)->icon, held);
    SetIconButtonIcon(panel, 1, kIcon, false);
    EXPECT_EQ(state(view), "off") << "at the next update";
    pump(2);
    EXPECT_EQ(state(view), "up");
    SetIconButtonIcon(panel, 3, kIcon, true);
    SetIconButtonIcon(panel, 99, kIcon, true);
}

TEST_F(IconButtonTest, ThePageCornerIsCutAlongItsDiagonal)
{
    const ControlHandle corner = NewControl(gWindow, Rect{10, 10, 40, 40}, {0}, true, 0, 0, 1, 8 << 4, 0);
    EXPECT_EQ(TestControl(corner, {38, 11}), 1) << "bottom left";
    EXPECT_EQ(TestControl(corner, {11, 38}), 2) << "top right";
    EXPECT_EQ(TestControl(corner, {41, 11}), 0);
    HiliteControl(corner, 255);
    EXPECT_EQ(TestControl(corner, {38, 11}), 0);
    HiliteControl(corner, 0);
    const Int plain = blackIn({30, 10, 60, 40});
    HiliteControl(corner, 1);
    const Int lower = blackIn({30, 10, 60, 40});
    HiliteControl(corner, 2);
    EXPECT_GT(lower, plain + 200);
    EXPECT_TRUE(black(36, 20 + 14)) << "now the upper half is black";
    EXPECT_FALSE(black(14, 20 + 36));
}

TEST_F(IconButtonTest, TheGuideTabIsTheLeftEndOfARoundedRectangle)
{
    const ControlHandle tab = NewControl(gWindow, Rect{10, 10, 60, 40}, {0}, true, 0, 0, 1, 14 << 4, 0);
    EXPECT_EQ(TestControl(tab, {30, 20}), 10);
    EXPECT_FALSE(black(11, 20 + 11)) << "outside the corner";
    EXPECT_TRUE(black(39, 20 + 30)) << "the line at the right";
    const Int up = blackIn({30, 10, 80, 40});
    HiliteControl(tab, 10);
    EXPECT_GT(blackIn({30, 10, 80, 40}), up * 2);
    EXPECT_FALSE(black(11, 20 + 11)) << "nothing outside the outline is inverted";
}

TEST_F(IconButtonTest, AsAControlItTakesItsPictureFromTheResource)
{
    const ControlHandle key = NewControl(gWindow, Rect{10, 10, 60, 52}, {0}, true, 0, 0, 1, 160, 0);
    EXPECT_EQ(TestControl(key, {30, 30}), 10);
    EXPECT_EQ(blackIn({30, 10, 80, 52}), 0) << "white without the resource";
    EXPECT_EQ(IconButtonDef(0, key, 7, 0), 0);
    key->contrlData = PtrToHand(Bytes(128, 0xFF));
    Draw1Control(key);
    EXPECT_EQ(blackIn({30, 10, 80, 52}), 32 * 32);
}
