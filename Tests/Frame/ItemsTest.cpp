#include "Wainroad/Frame/Items.h"

#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Controls.h"
#include "MacToolbox/Managers/Lists.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/Frame/FrameFixture.h"
#include "Wainroad/Frame/DialogItems.h"
#include "Wainroad/Frame/EditItems.h"

using namespace Wainroad;

namespace {

constexpr Int kItems = 500, kRadios = 501, kLists = 502;
std::vector<std::pair<Int, Int>> sClicks; // item and result
std::function<void(View&)> sInstall;

Int panelProc(View& view, Msg& msg)
{
    if (msg.what == kMsgOpen) {
        if (!ItemsLoaded(view))
            ParamText(pstr("Ann"), {0}, {0}, {0});
        else if (sInstall)
            sInstall(view);
    }
    if (msg.what == kMsgClick)
        sClicks.emplace_back(MsgItem(msg), MsgResult(msg));
    return PanelDescriptor(1, 10, kItems);
}
const ViewProc ItemsPanel{panelProc};

class ItemsTest : public FrameTest {
protected:
    ItemsTest()
    {
        sClicks.clear();
        sInstall = nullptr;
    }
    View& openWith(const std::vector<ItemSpec>& items)
    {
        add("DITL", kItems, ditl(items));
        useResources();
        return open(ItemsPanel);
    }
    static Int value(View& view, Int item) { return GetCtlValue(*GetItem(view, item)->dataAs<ControlHandle>()); }
    using Clicks = std::vector<std::pair<Int, Int>>;
};

} // namespace

TEST_F(ItemsTest, ADamagedListGivesItsWholeItems)
{
    const Bytes whole = ditl({{136, {0, 0, 10, 10}, bytesOf("abc")}, {4, {20, 0, 40, 50}, bytesOf("OK")}});
    Int last = -1;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        View parent;
        add("DITL", 600 + I(length), Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(length)));
        useResources();
        EXPECT_EQ(LoadItems(parent, 600 + I(length)), 0);
        EXPECT_GE(I(parent.children.size()), last);
        last = I(parent.children.size());
    }
    EXPECT_EQ(last, 2);

    add("DITL", 700, Form().u16(0xFFFF).raw(whole).bytes);
    add("DITL", 701, ditl({{8, {0, 0, 9, 9}, {}}, {9, {0, 0, 9, 9}, {}}, {8, {0, 0, 9, 9}, {}}}));
    useResources();
    View none, unknown, missing;
    EXPECT_EQ(LoadItems(none, 700), 0);
    EXPECT_TRUE(none.children.empty()) << "a count of -1 is none";
    EXPECT_EQ(LoadItems(unknown, 701), -1);
    EXPECT_EQ(unknown.children.size(), 2U) << "loading ends after the unknown item";
    EXPECT_EQ(LoadItems(missing, 799), resNotFound);
}

TEST_F(ItemsTest, TextIsExpandedOnceAndReadBackCut)
{
    View& panel = openWith({{136, {0, 0, 40, 200}, bytesOf("Dear ^0!")}, {16, {50, 10, 66, 100}, bytesOf("^0")},
        {128, {80, 0, 90, 10}, {}}});
    EXPECT_EQ(text(panel, 1), "Dear Ann!");
    EXPECT_EQ(text(panel, 2), "^0") << "what is typed is not";
    Str255 untouched = pstr("same");
    GetItemText(panel, 3, untouched);
    EXPECT_EQ(untouched, pstr("same"));
    SetItemText(panel, 1, bytesOf("Mrs. ^0"));
    EXPECT_EQ(text(panel, 1), "Mrs. Ann");
    SetItemText(panel, 2, Bytes(400, 'x'));
    EXPECT_EQ(text(panel, 2).size(), 255U);
    EXPECT_EQ(gFocus, nullptr) << "a field that is set loses the focus";
    SetItemText(panel, 9, bytesOf("nobody"));
}

TEST_F(ItemsTest, CheckBoxesToggleAndAnswerTheirPart)
{
    View& panel = openWith({{5, {10, 10, 28, 100}, bytesOf("Check")}, {4, {40, 10, 60, 100}, bytesOf("OK")}});
    click(*GetItem(panel, 1));
    EXPECT_EQ(value(panel, 1), 1);
    click(*GetItem(panel, 1));
    EXPECT_EQ(value(panel, 1), 0);
    click(*GetItem(panel, 2));
    EXPECT_EQ(value(panel, 2), 0);
    EXPECT_EQ(sClicks, (Clicks{{1, inCheckBox}, {1, inCheckBox}, {2, inButton}}));
}

TEST_F(ItemsTest, TheTwinThatIsOffLeavesTheClickToTheOther)
{
    const Rect same{10, 10, 30, 100};
    View& panel = openWith({{4, same, bytesOf("One")}, {4, same, bytesOf("Two")}});
    DisableView(*GetItem(panel, 2));
    click(*GetItem(panel, 1));
    DisableView(*GetItem(panel, 1));
    EnableItem2(panel, 2);
    click(*GetItem(panel, 2));
    EXPECT_EQ(sClicks, (Clicks{{1, inButton}, {2, inButton}}));
}

TEST_F(ItemsTest, OnlyUserItemsAreInstalledOver)
{
    View& panel = openWith({{0, {10, 10, 40, 40}, {}}, {136, {50, 10, 70, 60}, {}}});
    InstallUserItem(panel, 1, FrameItem, 0, Pattern::gray);
    InstallUserItem(panel, 2, FrameItem);
    InstallUserItem(panel, 3, FrameItem);
    EXPECT_EQ(GetItem(panel, 1)->handler, &FrameItem);
    EXPECT_EQ(GetItem(panel, 2)->handler, &TextItem);
    InvalView(panel);
    pump(2);
    const Rect& r = GetItem(panel, 1)->r;
    EXPECT_EQ(blackIn({r.top + kTop, r.left, r.top + kTop + 1, r.right}), 15) << "every second pixel of a side";
    InstallUserItem(panel, 1, UserItem);
    click(*GetItem(panel, 1));
    EXPECT_EQ(sClicks, (Clicks{{1, 1}}));
}

TEST_F(ItemsTest, ARadioGroupTellsWhichButtonIsOn)
{
    add("DITL", kRadios,
        ditl({{6, {0, 0, 16, 80}, bytesOf("Red")}, {6, {20, 0, 36, 80}, bytesOf("Blue")},
            {6, {40, 0, 56, 80}, bytesOf("White")}}));
    sInstall = [](View& view) { InstallUserItem(view, 2, RadioGroup, kRadios); };
    View& panel = openWith({{136, {0, 0, 10, 100}, bytesOf("Hue")}, {0, {20, 20, 90, 120}, {}}});
    View& group = *GetItem(panel, 2);
    ASSERT_EQ(group.children.size(), 3U);
    EXPECT_EQ(GetItem(group, 1)->r.topLeft(), (Point{panel.r.top + 20, panel.r.left + 20}));
    EXPECT_EQ(value(group, 1), 1) << "the first is on at first";
    click(*GetItem(group, 3));
    EXPECT_EQ(sClicks, (Clicks{{2, 3}}));
    EXPECT_EQ(value(group, 1) * 100 + value(group, 2) * 10 + value(group, 3), 1);
    DisableView(group);
    EXPECT_EQ(GetItem(group, 2)->disabled, 1);
    EnableItem2(panel, 2);
    EXPECT_EQ(GetItem(group, 2)->disabled, 0);
    ClosePanel(ItemsPanel);
    EXPECT_TRUE(gWindow->controls.empty());
}

TEST_F(ItemsTest, AListAnswersItsRowsAndHasAScrollBarThatCanBeSeen)
{
    sInstall = [](View& view) {
        InstallUserItem(view, 1, ListItem, lOnlyOne);
        const ListHandle list = ItemList(*GetItem(view, 1));
        LAddRow(9, 0, list);
        for (Int row = 0; row < 9; ++row)
            LSetCell(bytesOf("row " + std::to_string(row)), 5, {row, 0}, list);
    };
    View& panel = openWith({{0, {10, 10, 77, 120}, {}}});
    View& item = *GetItem(panel, 1);
    EXPECT_EQ(item.r.height(), 5 * kLine + 2) << "whole rows";
    const ListHandle list = ItemList(item);
    ASSERT_TRUE(list);
    EXPECT_TRUE(list->vScroll->contrlVis);
    const auto rowPoint = [&](Int row) { return Point{item.r.top + 1 + row * kLine + 5, item.r.left + 20}; };
    click(rowPoint(3));
    EXPECT_EQ(sClicks, (Clicks{{1, -4}})) << "a single click";
    click(rowPoint(3));
    EXPECT_EQ(sClicks.back(), (std::pair<Int, Int>{1, 4})) << "a double click";
    const Int top = list->visible.top;
    click(Point{item.r.bottom - 5, item.r.right - 8});
    EXPECT_GT(list->visible.top, top) << "its arrow scrolls";
}

TEST_F(ItemsTest, MissingPicturesIconsAndControlsAreEmptyItems)
{
    add("CNTL", 12, Form().u32(0).bytes); // far too short
    View& panel = openWith(
        {{32, {0, 0, 32, 32}, idBytes(900)}, {64, {40, 0, 72, 32}, idBytes(900)}, {7, {80, 0, 112, 32}, idBytes(900)},
            {7, {120, 0, 150, 32}, idBytes(12)}, {7, {160, 0, 180, 32}, {}}, {32, {0, 100, 32, 132}, {}}});
    ASSERT_EQ(panel.children.size(), 6U);
    for (Int n = 3; n <= 5; ++n)
        click(*GetItem(panel, n));
    EXPECT_TRUE(sClicks.empty());
    click(*GetItem(panel, 1));
    EXPECT_EQ(sClicks, (Clicks{{1, 1}})) << "an icon takes its click all the same";
}

TEST_F(ItemsTest, StyleChangesRedrawAndReachTheTextRecord)
{
    View& panel = openWith({{16, {10, 10, 26, 100}, bytesOf("abc")}, {136, {50, 10, 70, 100}, bytesOf("abc")}});
    ASSERT_EQ(gFocus, GetItem(panel, 1));
    SetItemJust(panel, 1, 1);
    EXPECT_EQ(gTE->just, 1);
    SetItemSize(panel, 1, 9);
    EXPECT_EQ(gTE->txSize, 9);
    SetItemFace(panel, 2, 4);
    EXPECT_EQ(GetItem(panel, 2)->style.face, 4);
    EXPECT_EQ(panel.style, kDefaultStyle);
}
