#include "MacToolbox/Managers/Lists.h"

#include "MacToolbox/Managers/Events.h"
#include "Tests/Managers/ToolboxFixture.h"

using namespace MacToolbox;

namespace {

/// A list at global (50, 50), four rows high unless told otherwise.
class ListsTest : public ToolboxTest {
protected:
    ListsTest() : w(window({40, 40, 240, 340})) { SetPort(w); }

    ListHandle list(Int rows, Int rowsInView = 4, bool drawIt = true)
    {
        const ListHandle l =
            LNew({10, 10, 10 + rowsInView * kLine, 110}, {0, 0, rows, 1}, {0, 0}, 0, w, drawIt, false, false, true);
        for (Int row = 0; row < rows; ++row)
            LSetCell(bytesOf("row"), 3, {row, 0}, l);
        return l;
    }
    static std::vector<Int> selected(const ListHandle& l)
    {
        std::vector<Int> rows;
        for (Cell c; LGetSelect(true, c, l); ++c.v)
            rows.push_back(c.v);
        return rows;
    }
    /// A point of a row in view, local.
    static Point at(Int rowInView) { return {10 + rowInView * kLine + 5, 30}; }
    static Point global(Point local) { return {local.v + 40, local.h + 40}; }
    bool click(const ListHandle& l, Point local, Int modifiers = 0)
    {
        clickLater(2, global(local));
        return LClick(local, modifiers, l);
    }

    WindowPtr w;
};

using Rows = std::vector<Int>;

} // namespace

TEST_F(ListsTest, SizesComeFromTheFontAndTheView)
{
    const ListHandle l = list(3);
    EXPECT_EQ(l->cellSize, (Point{kLine, 100}));
    EXPECT_EQ(l->indent, (Point{9, 4}));
    EXPECT_EQ(l->dataBounds, (Rect{0, 0, 3, 1}));
    EXPECT_EQ(l->visible, (Rect{0, 0, 4, 1}));
    EXPECT_EQ(l->vScroll->contrlRect, (Rect{9, 110, 10 + 4 * kLine + 1, 126}));
    EXPECT_EQ(l->vScroll->contrlMax, 0) << "nothing to scroll";
    EXPECT_EQ(list(9)->vScroll->contrlMax, 5);
    const ListHandle flat = LNew({10, 10, 15, 110}, {5, 7, 2, 0}, {0, 0}, 0, w, true, false, false, false);
    EXPECT_EQ(flat->dataBounds, (Rect{0, 0, 2, 1})) << "only the counts are taken";
    EXPECT_EQ(flat->rows(), 1) << "a view lower than a row shows one";
    EXPECT_EQ(flat->vScroll, nullptr);
    EXPECT_FALSE(list(9, 4, false)->vScroll->contrlVis);
}

TEST_F(ListsTest, RowsComeGoAndKeepTheirPlace)
{
    const ListHandle l = list(6);
    LSetSelect(true, {5, 0}, l);
    EXPECT_EQ(LAddRow(2, 99, l), 6);
    EXPECT_EQ(LAddRow(1, -5, l), 0);
    EXPECT_EQ(selected(l), Rows{6});
    EXPECT_EQ(l->dataBounds.bottom, 9);
    LScroll(0, 99, l);
    EXPECT_EQ(l->visible.top, 5);
    LDelRow(3, 7, l);
    EXPECT_EQ(l->rowCount(), 7);
    EXPECT_EQ(l->visible.top, 3) << "pulled back to the last page";
    EXPECT_EQ(l->vScroll->contrlValue, 3);
    LDelRow(2, -1, l);
    EXPECT_EQ(selected(l), Rows{5});
    LDelRow(0, 3, l);
    EXPECT_EQ(l->rowCount(), 0);
    EXPECT_EQ(l->visible.top, 0);
    EXPECT_EQ(LAddRow(-3, 0, l), 0);
    EXPECT_EQ(l->rowCount(), 0);
    Bytes bytes;
    Int count = 9;
    LGetCell(bytes, count, {0, 0}, l);
    EXPECT_EQ(count, 0);
    LAddRow(1, 0, l);
    LSetCell(bytesOf("Wainroad"), 4, {0, 7}, l);
    count = 3;
    LGetCell(bytes, count, {0, 0}, l);
    EXPECT_EQ(bytes, bytesOf("Wai"));
}

TEST_F(ListsTest, ClicksSelectByTheKindOfList)
{
    const ListHandle l = list(6);
    click(l, at(1));
    EXPECT_EQ(selected(l), Rows{1});
    click(l, at(3), cmdKey);
    click(l, at(0), shiftKey);
    EXPECT_EQ(selected(l), (Rows{0, 1, 3}));
    click(l, at(1), cmdKey);
    EXPECT_EQ(selected(l), (Rows{0, 3}));
    click(l, at(2));
    EXPECT_EQ(selected(l), Rows{2});
    l->selFlags = lOnlyOne;
    click(l, at(3), cmdKey | shiftKey);
    EXPECT_EQ(selected(l), Rows{3});
    LSetSelect(true, {0, 0}, l);
    EXPECT_EQ(selected(l), Rows{0});
    LSetSelect(false, {2, 0}, l);
    EXPECT_EQ(selected(l), Rows{0}) << "taking off leaves the others";
    EXPECT_FALSE(click(list(2), at(3))) << "below the last row";
    EXPECT_FALSE(LClick({0, 0}, 0, l));
    EXPECT_EQ(selected(l), Rows{0});
}

TEST_F(ListsTest, TwoQuickClicksOnARowAreADoubleClick)
{
    const ListHandle l = list(6);
    EXPECT_EQ(LLastClick(l), (Cell{-1, -1}));
    EXPECT_FALSE(click(l, at(1)));
    EXPECT_TRUE(click(l, at(1)));
    EXPECT_EQ(LLastClick(l), (Cell{1, 0}));
    EXPECT_FALSE(click(l, at(2))) << "another row";
    clock.sleep(40 * kTickNanos);
    EXPECT_FALSE(click(l, at(2))) << "too late";
}

TEST_F(ListsTest, DraggingExtendsAndScrollsPastTheEnds)
{
    const ListHandle l = list(10);
    LScroll(0, 3, l);
    const Point press = global(at(2));
    Input::mouse(press.h, press.v, true); // row 5
    mouseLater(2, global(at(3)), true);
    Rows middle;
    later(4, [&] { middle = selected(l); });
    mouseLater(5, {20, press.h}, true); // above the view
    mouseLater(30, {20, press.h}, false);
    LClick(at(2), 0, l);
    EXPECT_EQ(middle, (Rows{5, 6}));
    EXPECT_EQ(l->visible.top, 0);
    EXPECT_EQ(selected(l), (Rows{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(LLastClick(l).v, 0);
    l->selFlags = lOnlyOne;
    Input::mouse(press.h, press.v, true);
    mouseLater(5, {300, press.h}, true);
    mouseLater(40, {300, press.h}, false);
    LClick(at(2), 0, l);
    EXPECT_EQ(selected(l), Rows{9});
}

TEST_F(ListsTest, TheScrollBarScrolls)
{
    const ListHandle l = list(20, 6); // bar 74 long, thumb travels 26 of 14 rows
    const auto press = [&](Int v) { click(l, {9 + v, 115}); };
    press(70);
    EXPECT_EQ(l->visible.top, 1);
    press(55);
    EXPECT_EQ(l->visible.top, 6) << "a page less a row";
    press(18);
    EXPECT_EQ(l->visible.top, 1);
    press(5);
    press(5);
    EXPECT_EQ(l->visible.top, 0);
    EXPECT_EQ(selected(l), Rows{});
    const Point thumb{9 + 20, 115};
    Input::mouse(155, 69, true);
    mouseLater(2, {40 + 9 + 24 + 13, 155}, true);
    mouseLater(5, {40 + 9 + 24 + 13, 155}, false);
    EXPECT_FALSE(LClick(thumb, 0, l));
    EXPECT_EQ(l->visible.top, 7);
    LSetSelect(true, {19, 0}, l);
    LAutoScroll(l);
    EXPECT_EQ(l->visible.top, 14);
    LAutoScroll(l);
    EXPECT_EQ(l->visible.top, 14) << "it is in view";
    const ListHandle one = list(9, 1);
    click(one, {10 + 6, 115});
    EXPECT_EQ(one->visible.top, 0) << "a page of one row does not move";
}

TEST_F(ListsTest, DrawingIsHeldBackClippedAndInverted)
{
    const ListHandle l = list(6, 4, false);
    EXPECT_EQ(blackIn({41, 41, 200, 300}), 0);
    LDoDraw(true, l);
    EXPECT_GT(blackIn({50, 50, 50 + 4 * kLine, 150}), 0);
    EXPECT_EQ(blackIn({50 + 4 * kLine + 1, 41, 239, 339}), 0);
    const Int plain = blackIn({50, 50, 62, 150});
    LSetSelect(true, {0, 0}, l);
    EXPECT_EQ(blackIn({50, 50, 62, 150}), 12 * 100 - plain);
    Rect r;
    LRect(r, {5, 0}, l);
    EXPECT_EQ(r, Rect{});
    LRect(r, {1, 0}, l);
    EXPECT_EQ(r, (Rect{22, 10, 34, 110}));
    EXPECT_EQ(w->port->clipRgn->region, Region(kHugeRect));
    LDispose(l);
    EXPECT_TRUE(w->controls.empty());
}

TEST_F(ListsTest, AListDefinitionDrawsInPlaceOfTheText)
{
    std::vector<std::pair<Int, Int>> told; // message, row
    const ListDef def = [&](Int message, bool on, const Rect& rect, Cell cell, std::span<const std::uint8_t> bytes,
                            const ListHandle& l) {
        told.emplace_back(message, cell.v);
        if (message == lDrawMsg) {
            EXPECT_EQ(thePort, l->port);
            EXPECT_EQ(l->port->clipRgn->region, Region(l->rView));
            EXPECT_EQ(rect, l->cellRect(cell.v));
        } else if (message == lHiliteMsg) {
            EXPECT_TRUE(on);
        } else {
            EXPECT_TRUE(bytes.empty() && rect == Rect{});
        }
    };
    const ListHandle l = LNew({10, 10, 58, 110}, {0, 0, 2, 1}, {0, 0}, 0, w, true, false, false, false, def);
    EXPECT_EQ(told, (std::vector<std::pair<Int, Int>>{{lInitMsg, 0}, {lDrawMsg, 0}, {lDrawMsg, 1}}));
    told.clear();
    LSetSelect(true, {1, 0}, l);
    LSetSelect(true, {1, 0}, l);
    LDispose(l);
    EXPECT_EQ(told, (std::vector<std::pair<Int, Int>>{{lHiliteMsg, 1}, {lCloseMsg, 0}}));
    LClick({12, 12}, 0, nullptr);
    LAddRow(1, 0, nullptr);
}
