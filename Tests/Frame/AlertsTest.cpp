#include "Wainroad/Frame/Alerts.h"

#include "MacToolbox/App/ManualRun.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Misc.h"
#include "Tests/Frame/FrameFixture.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Utils.h"

using namespace Wainroad;

namespace {

Bytes dialogForm(const Rect& r, Int items)
{
    return Form().rect(r).u16(1).u8(0).u8(0).u8(0).u8(0).u32(0).u16(items).counted("").bytes;
}
Bytes alertForm(const Rect& r, Int items) { return Form().rect(r).u16(items).u16(0x5555).bytes; }
Bytes textList(const std::vector<std::string>& texts)
{
    Form form;
    form.u16(I(texts.size()));
    for (const std::string& text : texts)
        form.counted(text);
    return form.bytes;
}

class AlertsTest : public FrameTest {
protected:
    AlertsTest()
    {
        add("DITL", 600,
            ditl({{4, {60, 200, 80, 280}, bytesOf("OK")}, {0x80, {0, 0, 0, 0}, {}},
                {0x88, {10, 10, 50, 280}, bytesOf("^0 / ^1 / ^2 / ^3")}}));
        add("DLOG", 600, dialogForm({0, 0, 100, 300}, 600));
        add("ALRT", 601, alertForm({0, 0, 100, 300}, 600));
        add("ALRT", 1001, alertForm({0, 0, 100, 300}, 600));
        add("ALRT", 2003, alertForm({0, 0, 100, 300}, 600));
        add("STR#", 1000, textList({"-33,folder full", "-34,disk full", "-3,short", "", "-1,beyond"}));
        useResources();
    }
};

} // namespace

TEST_F(AlertsTest, TheDefaultButtonCanBeClickedAndReturned)
{
    // the middle of the screen below the menu bar: 131 to 231 by 106 to 406
    clickLater(3, {131 + 70, 106 + 240});
    EXPECT_EQ(DCenteredAlert(600), 1);
    key(13);
    EXPECT_EQ(DCenteredAlert(600), 1);
    key(3);
    EXPECT_EQ(DCenteredAlert(601), 1) << "without a dialog, the alert of that id";
    EXPECT_EQ(FrontWindow(), gWindow);
}

TEST_F(AlertsTest, ADialogFindsItsFieldsItsRingAndItsRadioButtons)
{
    add("DITL", 610,
        ditl({{4, {60, 200, 80, 280}, bytesOf("OK")}, {0, {}, {}}, {16, {10, 10, 26, 100}, {}},
            {6, {30, 10, 46, 100}, bytesOf("A")}, {16, {50, 10, 66, 100}, {}}, {6, {70, 10, 86, 100}, bytesOf("B")}}));
    useResources();
    const DialogPtr dialog = NewDialog(nullptr, {50, 50, 170, 350}, {0}, true, 1, nullptr, false, 0, 610);
    SetDefaultButton(dialog, 1, 2);
    EXPECT_EQ(dialog->item(2)->rect, (Rect{56, 196, 84, 284}));
    EXPECT_EQ(dialog->item(2)->type, 0x80);
    SetDefaultButton(dialog, 1, 99);
    SetDefaultButton(nullptr, 1, 2);

    EXPECT_EQ(dialog->editField, 2);
    EventRecord event;
    event.what = keyDown;
    event.message = 9;
    Int item = 0;
    EXPECT_TRUE(StdFilter(dialog, event, item));
    EXPECT_EQ(dialog->editField, 4);
    event.what = autoKey;
    EXPECT_TRUE(StdFilter(dialog, event, item));
    EXPECT_EQ(dialog->editField, 2);
    event.message = 13;
    EXPECT_FALSE(StdFilter(dialog, event, item)) << "a held Return presses nothing";
    event.what = keyDown;
    const Int start = TickCount();
    EXPECT_TRUE(StdFilter(dialog, event, item));
    EXPECT_EQ(item, 1);
    EXPECT_GE(TickCount() - start, 8) << "the button flashes";

    SetRadioGroup(dialog, 4, 6, 6);
    EXPECT_FALSE(RadioIsOn(dialog, 4));
    EXPECT_TRUE(RadioIsOn(dialog, 6));
    HideDItem(dialog, 6);
    EXPECT_FALSE(RadioIsOn(dialog, 6));
    EXPECT_FALSE(RadioIsOn(dialog, 3));
    EXPECT_FALSE(RadioIsOn(dialog, 99));
    DisposDialog(dialog);
}

TEST_F(AlertsTest, AlertTextGoesToTheMiddle)
{
    SetAlertText(pstr("Hello"));
    EXPECT_EQ(GetResource(os("ALRT"), 2003)->rect(0), (Rect{131, 106, 231, 406}));
    EXPECT_EQ(expandParams(bytesOf("^0")), bytesOf("Hello"));
    EXPECT_FALSE(CenterAlert(555));
}

TEST_F(AlertsTest, ErrorsFindTheirWords)
{
    Str255 words = pstr("none");
    EXPECT_TRUE(ErrorMessage(-34, words));
    EXPECT_EQ(string(words), "disk full");
    EXPECT_TRUE(ErrorMessage(-3, words));
    EXPECT_EQ(string(words), "short");
    EXPECT_FALSE(ErrorMessage(-1, words)) << "an empty entry ends the list";
    EXPECT_EQ(string(words), "short");
    Str255 number = pstr("error ");
    AppendNumber(-108, number);
    EXPECT_EQ(string(number), "error -108");

    errorHooks().centerRect = CenterRect;
    key(13);
    DiskError(-33, false);
    EXPECT_EQ(expandParams(bytesOf("^0")), bytesOf("folder full"));
    EXPECT_EQ(GetResource(os("ALRT"), 1001)->rect(0).topLeft(), (Point{131, 106}));
}

TEST(Ends, FatalShowsItsWordsOnceAndEndsTheRun)
{
    const auto end = [](std::function<void()> body, std::string& words) {
        ManualRun machine;
        machine.platform.variables.emplace();
        testing::internal::CaptureStderr();
        const int status = machine.run([&] {
            errorHooks() = {};
            body();
            ADD_FAILURE() << "it came back";
        });
        words = testing::internal::GetCapturedStderr();
        errorHooks() = {};
        return status;
    };
    std::string words, steps;
    EXPECT_EQ(end(
                  [&] {
                      errorHooks().centeredAlert = [&](Int id) { steps += "alert" + std::to_string(id); };
                      errorHooks().flushConfig = [&] { steps += " flush"; };
                      errorHooks().closeNetwork = [&] { steps += " close"; };
                      Fatal(-192, "GetNewWindow");
                  },
                  words),
        0);
    EXPECT_EQ(steps, "alert1000 flush close");
    EXPECT_EQ(words, "wainroad: error -192 in GetNewWindow\n");

    EXPECT_EQ(end(
                  [] {
                      errorHooks().centeredAlert = [](Int id) { DCenteredAlert(id); };
                      Fatal(-192, "GetNewMBar");
                  },
                  words),
        1)
        << "without any resources the alert itself is fatal";
    EXPECT_EQ(words, "wainroad: error -192 in GetNewMBar\nwainroad: error -192 in DCenteredAlert\n");

    EXPECT_EQ(end(
                  [] {
                      errorHooks().centeredAlert = [](Int) { Fatal(1, "First"); };
                      errorHooks().flushConfig = [] { Fatal(2, "Second"); };
                      Fatal(-1, "Zeroth");
                  },
                  words),
        1)
        << "nor do the last steps go round";
    EXPECT_EQ(words, "wainroad: error -1 in Zeroth\nwainroad: error 1 in First\nwainroad: error 2 in Second\n");

    EXPECT_EQ(end([] { DiskError(-77, false); }, words), 0);
    EXPECT_EQ(words, "wainroad: error -77 in DiskError\n") << "an error without words";
}

TEST_F(AlertsTest, RectanglesAreCentredInTheWindowOrOnTheScreen)
{
    Rect r{0, 0, 100, 200};
    CenterRect(r);
    EXPECT_EQ(r, (Rect{131, 156, 231, 356}));
    r = {0, 0, 400, 600};
    CenterRect(r);
    EXPECT_EQ(r, (Rect{-19, -44, 381, 556})) << "too large for anything";
    gWindow = nullptr;
    r = {0, 0, 100, 200};
    CenterRect(r);
    EXPECT_EQ(r, (Rect{121, 156, 221, 356}));
}

TEST(Utils, CountedStringsAreCutAndJoined)
{
    const struct {
        const char* text;
        Int start, length;
        const char *with, *result;
    } cases[] = {
        {"the wide river", 0, 4, "", "wide river"},
        {"abc", 3, 0, "d", "abcd"},
        {"abc", 4, 0, "d", "abc"},
        {"abc", 1, 99, "X", "aX"},
        {"", 0, 0, "x", "x"},
        {"abc", -1, 1, "x", "abc"},
    };
    for (const auto& c : cases) {
        Str255 s = pstr(c.text);
        StrReplace(s, c.start, c.length, pstr(c.with));
        EXPECT_EQ(string(s), c.result);
    }
    Str255 longOne = pstr(std::string(250, 'a'));
    StrReplace(longOne, 250, 0, pstr("0123456789"));
    EXPECT_EQ(longOne.size(), 256U);
    EXPECT_EQ(longOne[0], 255);
    StrReplace(longOne, 0, 255, nullptr);
    EXPECT_EQ(longOne, Str255{0});

    EXPECT_EQ(PStrPos(pstr("ri"), pstr("the river")), 4);
    EXPECT_EQ(PStrPos(pstr("x"), pstr("the river")), -1);
    EXPECT_EQ(PStrPos({0}, pstr("the river")), -1);
    EXPECT_EQ(PStrPos(pstr("long"), pstr("lo")), -1);
    Str255 copy;
    PStrCopy({}, copy);
    EXPECT_EQ(copy, Str255{0});
}

TEST(Utils, NumbersGetCommasAndCents)
{
    const std::pair<Int, const char*> numbers[] = {{0, "0"}, {999, "999"}, {1000, "1,000"}, {1234567, "1,234,567"},
        {-1000, "-1,000"}, {-999, "-999"}, {100000, "100,000"}};
    for (const auto& [n, text] : numbers) {
        Str255 s;
        NumToCommas(n, s);
        EXPECT_EQ(string(s), text);
    }
    const std::pair<Int, const char*> amounts[] = {
        {0, "0.00"}, {5, "0.05"}, {123456, "1,234.56"}, {-5, "-0.05"}, {-250, "-2.50"}};
    for (const auto& [n, text] : amounts) {
        Str255 s;
        CentsToString(n, s);
        EXPECT_EQ(string(s), text);
    }
}
