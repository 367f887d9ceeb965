#include "MacToolbox/Managers/Menus.h"

#include "MacToolbox/Host/Input.h"
#include "Tests/Managers/ToolboxFixture.h"

using namespace MacToolbox;

namespace {

/// A `MENU` resource from its items.
struct MenuForm {
    struct Item {
        const char* text;
        char key = 0;
        Int mark = 0;
    };
    static Bytes make(Int id, Int flags, std::string_view title, const std::vector<Item>& items)
    {
        Form form;
        form.u16(id).zeros(8).u32(flags).counted(title);
        for (const Item& item : items)
            form.counted(item.text).u8(7).u8(item.key).u8(item.mark).u8(1);
        return form.u8(0).bytes;
    }
};

class MenusTest : public ToolboxTest {
protected:
    MenusTest()
    {
        add("MENU", 1000, MenuForm::make(1000, -1, "\x14", {{"About the Wainroad"}, {"-"}}));
        add("MENU", 1001,
            MenuForm::make(
                1001, ~Int{1 << 2 | 1 << 3}, "File", {{"New", 'N'}, {"-"}, {"Open\xC9", 'o'}, {"Quit", 'q', 18}}));
        add("MBAR", 128, Form().u16(3).u16(1000).u16(7).u16(1001).bytes);
        useResources();
        SetMenuBar(GetNewMBar(128));
        DrawMenuBar();
    }
};

} // namespace

TEST_F(MenusTest, TheBarIsReadAndDumped)
{
    EXPECT_EQ(MenuBar::menus().size(), 2u) << "the missing one is left out";
    EXPECT_EQ(MenuBar::dump(), "\x14\n  About the Wainroad\n  -\nFile\n  New\n  - -\n  Open… -\n  Quit *\n");
    EXPECT_EQ(platform.menuChanges, 1);
}

TEST_F(MenusTest, ChangesShowAtTheNextDrawingAndEqualOnesTellNobody)
{
    const MenuHandle file = GetMHandle(1001);
    DrawMenuBar();
    EXPECT_EQ(platform.menuChanges, 1) << "nothing visible has changed";
    const std::string before = MenuBar::dump();
    EnableItem(file, 3);
    CheckItem(file, 4, false);
    SetItem(file, 1, pstr("Begin"));
    DisableItem(file, 0);
    EXPECT_EQ(MenuBar::dump(), before);
    DrawMenuBar();
    EXPECT_EQ(MenuBar::dump(), "\x14\n  About the Wainroad\n  -\nFile -\n  Begin\n  - -\n  Open…\n  Quit\n");
    EXPECT_EQ(platform.menuChanges, 2);
    DisableItem(file, 9);
    EnableItem(file, -1);
    SetItemMark(file, 5, checkMark);
    EnableItem(nullptr, 1);
    DrawMenuBar();
    EXPECT_EQ(platform.menuChanges, 2) << "no such items";
    EnableItem(file, 0);
    EXPECT_TRUE(file->enabled && !file->items[1].enabled) << "the menu alone";
    ClearMenuBar();
    DrawMenuBar();
    EXPECT_EQ(MenuBar::dump(), "");
}

TEST_F(MenusTest, KeysFindTheFirstMatchInEitherCase)
{
    EXPECT_EQ(MenuKey('Q'), packMenuChoice(1001, 4));
    EXPECT_EQ(MenuKey('n'), packMenuChoice(1001, 1));
    EXPECT_EQ(MenuKey('n' | 0x4500), packMenuChoice(1001, 1)) << "the low byte counts";
    EXPECT_EQ(MenuKey('x'), 0);
    EXPECT_EQ(MenuKey(0), 0);
    const MenuHandle extra = NewMenu(5, pstr("Extra"));
    AppendMenu(extra, pstr("Other/O;(Off/W!x;/W"));
    InsertMenu(extra, 0);
    EXPECT_EQ(MenuKey('o'), 0) << "a disabled match ends the search";
    EXPECT_EQ(MenuKey('w'), 0);
    DisableItem(GetMHandle(1001), 0);
    EXPECT_EQ(MenuKey('o'), packMenuChoice(5, 1)) << "a disabled menu is passed over";
}

TEST_F(MenusTest, AppendedItemsFollowTheNotation)
{
    const MenuHandle menu = NewMenu(5, pstr("Extra"));
    AppendMenu(menu, pstr("One/A;(Two!x<B^c\rThree;"));
    ASSERT_EQ(CountMItems(menu), 4) << "the last one is there even when empty";
    EXPECT_EQ(menu->items[0].key, 'A');
    EXPECT_TRUE(!menu->items[1].enabled && menu->items[1].mark == 'x' && menu->items[1].icon == 'c');
    Str255 text;
    GetItem(menu, 2, text);
    EXPECT_EQ(string(text), "Two");
    GetItem(menu, 5, text);
    EXPECT_EQ(text, Str255{0});
    AppendMenu(menu, pstr("x/"));
    AppendMenu(nullptr, pstr("x"));
}

TEST_F(MenusTest, MenusAreFoundInTheBarOrPutAway)
{
    const MenuHandle file = GetMenu(1001);
    EXPECT_EQ(file, MenuBar::menus()[1]) << "made once";
    DeleteMenu(1001);
    EXPECT_EQ(MenuBar::menus().size(), 1u);
    EXPECT_EQ(GetMHandle(1001), file);
    const MenuHandle parked = NewMenu(9, pstr("Speeds"));
    InsertMenu(parked, -1);
    EXPECT_EQ(MenuBar::menus().size(), 1u);
    EXPECT_EQ(GetMHandle(9), parked);
    InsertMenu(file, 1000);
    InsertMenu(file, 0);
    EXPECT_EQ(MenuBar::menus(), (std::vector{file, GetMHandle(1000)})) << "before 1000, and once only";
    EXPECT_EQ(GetMHandle(77), nullptr);
    EXPECT_EQ(GetMenu(77), nullptr);
}

TEST_F(MenusTest, ItemsFrom31OnAreAlwaysEnabled)
{
    const std::vector<MenuForm::Item> items(32, {"x"});
    add("MENU", 200, MenuForm::make(200, 0, "Long", items));
    useResources();
    const MenuHandle menu = GetMenu(200);
    ASSERT_EQ(CountMItems(menu), 32);
    EXPECT_FALSE(menu->enabled || menu->items[29].enabled);
    EXPECT_TRUE(menu->items[30].enabled && menu->items[31].enabled);
}

TEST_F(MenusTest, CutMenusAreReadAsFarAsTheyGo)
{
    const Bytes whole = MenuForm::make(300, -1, "Trail", {{"Rest", 'R'}, {"Go", 'G'}});
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        const Int id = 400 + I(cut);
        Bytes part(whole.begin(), whole.begin() + I(cut));
        if (cut > 1)
            part[0] = static_cast<std::uint8_t>(id >> 8), part[1] = static_cast<std::uint8_t>(id);
        add("MENU", id, part);
    }
    add("MBAR", 5, Form().u16(0xFFFF).u16(1000).u8(3).bytes);
    useResources();
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        const MenuHandle menu = GetMenu(400 + I(cut));
        EXPECT_EQ(menu == nullptr, cut < 15) << cut;
        EXPECT_LE(CountMItems(menu), 2);
        if (menu) {
            EXPECT_LE(string(menu->title).size(), cut - 15) << cut;
        }
    }
    EXPECT_EQ(GetNewMBar(5).size(), 1u);
    EXPECT_TRUE(GetNewMBar(6).empty());
}

TEST_F(MenusTest, APopUpFollowsTheMouseAndPutsTheScreenBack)
{
    const WindowPtr w = window({40, 40, 300, 400});
    const PortScope scope(w->port);
    FillRect(w->portRect(), qd.gray);
    const Bytes before = screen();
    const MenuHandle menu = NewMenu(12, pstr("Times"));
    AppendMenu(menu, pstr("One;Two;(Three;-;Five"));
    constexpr Int kRow = kLine + 4;
    const struct {
        Int row, answer;
    } rows[] = {{0, 1}, {1, 2}, {2, 0}, {3, 0}, {4, 5}, {-1, 0}, {5, 0}};
    for (const auto& r : rows) {
        Bytes shown;
        Input::mouse(110, 100, true); // on item 2
        later(3, [&] { shown = screen(); });
        mouseLater(4, {100 + (r.row - 1) * kRow + 2, 110}, true);
        mouseLater(8, {100 + (r.row - 1) * kRow + 2, 110}, false);
        const Int choice = PopUpMenuSelect(menu, 100, 100, 2);
        EXPECT_EQ(choice, r.answer == 0 ? 0 : packMenuChoice(12, r.answer)) << r.row;
        EXPECT_NE(shown, before);
        EXPECT_EQ(screen(), before);
        EXPECT_FALSE(Input::take(mUpMask, false));
    }
    clickLater(4, {22, 110});
    EXPECT_EQ(PopUpMenuSelect(menu, 30, 100, 5), packMenuChoice(12, 1)) << "moved down to the menu bar's edge";
    clickLater(4, {340, 110});
    EXPECT_EQ(PopUpMenuSelect(menu, 335, 100, 1), packMenuChoice(12, 5)) << "and up to the screen's";
    EXPECT_EQ(PopUpMenuSelect(nullptr, 0, 0, 1), 0);
    EXPECT_EQ(screen(), before);
}
