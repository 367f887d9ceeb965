#include "Wainroad/Frame/EditItems.h"

#include "MacToolbox/Managers/TextEdit.h"
#include "Tests/Frame/FrameFixture.h"

using namespace Wainroad;

namespace {

constexpr Int kFields = 500;
std::string sPressed;
std::function<void(View&)> sSetUp;

Int panelProc(View& view, Msg& msg)
{
    if (msg.what == kMsgOpen && ItemsLoaded(view)) {
        ClearKeys();
        SetKeys(view, 1, 1, 2);
        if (sSetUp)
            sSetUp(view);
    }
    if (msg.what == kMsgClick)
        sPressed += std::to_string(MsgItem(msg));
    return PanelDescriptor(1, 10, kFields);
}
const ViewProc FieldsPanel{panelProc};

class EditItemsTest : public FrameTest {
protected:
    static constexpr Int kFirst = 2, kSecond = 3, kThird = 5; // items

    View& openFields(std::function<void(View&)> setUp = nullptr)
    {
        sPressed.clear();
        sSetUp = std::move(setUp);
        add("DITL", kFields,
            ditl({{4, {10, 150, 30, 200}, bytesOf("No")}, {16, {10, 10, 26, 90}, bytesOf("one")},
                {16, {40, 10, 56, 90}, bytesOf("two")}, {4, {70, 150, 90, 200}, bytesOf("OK")},
                {16, {70, 10, 120, 90}, {}}}));
        useResources();
        return open(FieldsPanel);
    }
    static Int focusItem(View& panel)
    {
        for (Int n = 1; n <= I(panel.children.size()); ++n)
            if (GetItem(panel, n) == gFocus)
                return n;
        return 0;
    }
};

} // namespace

TEST_F(EditItemsTest, TheFirstFieldHasTheFocusWithAllSelected)
{
    View& panel = openFields();
    EXPECT_EQ(focusItem(panel), kFirst);
    EXPECT_EQ(gTE->selEnd - gTE->selStart, 3);
    type("x");
    EXPECT_EQ(text(panel, kFirst), "x");
    EXPECT_TRUE(gTE->autoView) << "a low field is one line that scrolls";
    press(30);
    EXPECT_EQ(focusItem(panel), kThird) << "up from the first goes to the last";
    EXPECT_FALSE(gTE->autoView);
    EXPECT_EQ(gTE->destRect, GetItem(panel, kThird)->r) << "a high one wraps";
    EXPECT_EQ(EditItemNumber(*GetItem(panel, kThird)), 3);
    EXPECT_EQ(EditItemNumber(*GetItem(panel, 1)), 0);
}

TEST_F(EditItemsTest, TabAndArrowsMoveTheFocusRound)
{
    View& panel = openFields();
    std::vector<Int> way;
    for (const Int c : {9, 31, 9, 30, 30, 30}) {
        press(c);
        way.push_back(focusItem(panel));
    }
    EXPECT_EQ(way, (std::vector<Int>{3, 5, 2, 5, 3, 2}));
    click(*GetItem(panel, kSecond));
    EXPECT_EQ(focusItem(panel), kSecond);
    SelectItemText(panel, kThird, 0, 0);
    EXPECT_EQ(focusItem(panel), kThird);
}

TEST_F(EditItemsTest, ReturnPressesUnlessThereAreFieldsToGoThrough)
{
    View& panel = openFields();
    press(13);
    EXPECT_EQ(sPressed, "4");
    gEditItems = 2;
    press(13);
    EXPECT_EQ(sPressed, "4");
    EXPECT_EQ(focusItem(panel), kSecond);
    press('.', cmdKey);
    EXPECT_EQ(sPressed, "41");
    gCancelItem = 0;
    press('.', cmdKey);
    EXPECT_EQ(sPressed, "41");
}

TEST_F(EditItemsTest, TheNumberOfCharactersIsLimited)
{
    View& panel = openFields();
    type("abcdefghijklm");
    EXPECT_EQ(text(panel, kFirst), "abcdefghij") << "ten if nothing is said";
    platform.drain();
    EXPECT_EQ(platform.beeps, 3);
    gTEMaxChars = 12;
    type("XYZ");
    EXPECT_EQ(text(panel, kFirst), "abcdefghijXY");
    press(8);
    press(27);
    press(127);
    EXPECT_EQ(text(panel, kFirst), "abcdefghi") << "all three delete backwards";
}

TEST_F(EditItemsTest, NumericFieldsTakeDigitsOnlyButPasteAnything)
{
    View& panel = openFields([](View&) { gTENumeric = 1; });
    type("4a2-");
    EXPECT_EQ(text(panel, kFirst), "42");
    TEScrap::bytes() = bytesOf("-5");
    press('v', cmdKey);
    EXPECT_EQ(text(panel, kFirst), "42-5");
    TEScrap::bytes() = bytesOf("1234567");
    press('V', cmdKey);
    EXPECT_EQ(text(panel, kFirst), "42-5") << "too long";
}

TEST_F(EditItemsTest, TheWidthIsLimitedInPixels)
{
    View& panel = openFields([](View&) {
        gTEMaxChars = 31;
        gTELimitWidth = 1;
        gTEMaxWidth = 5 * kChar + 4;
    });
    const Int each = 7; // an emboldened character is a pixel wider
    gTEMaxWidth = 5 * each;
    type("abcdefg");
    EXPECT_EQ(text(panel, kFirst), "abcde");
    TESetSelect(1, 3, gTE);
    EXPECT_TRUE(TEFitsWidth('x', false, 4 * each, gTE)) << "it takes the place of the selection";
    EXPECT_FALSE(TEFitsWidth('x', false, 4 * each - 1, gTE));
    TEScrap::bytes() = bytesOf("123");
    EXPECT_TRUE(TEFitsWidth(0, true, 6 * each, gTE));
    EXPECT_FALSE(TEFitsWidth(0, true, 6 * each - 1, gTE));
    press('v', cmdKey);
    EXPECT_EQ(text(panel, kFirst), "abcde");
}

TEST_F(EditItemsTest, AFilterDropsKeys)
{
    static const ViewProc kNoX{[](View&, Msg& msg) -> Int { return msg.character() != 'x'; }};
    View& panel = openFields([](View& view) { GetItem(view, kFirst)->user = &kNoX; });
    type("axb");
    EXPECT_EQ(text(panel, kFirst), "ab");
}

TEST_F(EditItemsTest, CutCopyPasteByKeyAndMenu)
{
    View& panel = openFields();
    press('x', cmdKey);
    EXPECT_EQ(text(panel, kFirst), "");
    EXPECT_EQ(RootEditCommand(4), 1);
    RootEditCommand(4);
    EXPECT_EQ(text(panel, kFirst), "oneone");
    RootEditCommand(5);
    EXPECT_EQ(text(panel, kFirst), "");
    SelectItemText(panel, kSecond, 0, 2);
    RootEditCommand(3);
    EXPECT_EQ(TEScrap::bytes(), bytesOf("tw"));
    DisableView(*GetItem(panel, kSecond));
    EXPECT_EQ(RootEditCommand(5), 1);
    EXPECT_EQ(text(panel, kSecond), "two") << "a field that is off stays as it is";
}

TEST_F(EditItemsTest, ACoveredFieldHearsNothingAndClosingClearsTheFocus)
{
    View& panel = openFields();
    DisableView(panel);
    type("z");
    EXPECT_EQ(text(panel, kFirst), "one");
    EnableChildren(*gRootView);
    type("z");
    EXPECT_EQ(text(panel, kFirst), "z");
    ClosePanel(FieldsPanel);
    EXPECT_EQ(gFocus, nullptr);
    type("q");
    pump(40);
}
