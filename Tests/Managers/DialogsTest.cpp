#include "MacToolbox/Managers/Dialogs.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/Managers/ModalDialog.h"
#include "Tests/Managers/ToolboxFixture.h"

using namespace MacToolbox;

namespace {

/// An item list, item by item.
struct ItemList {
    struct Item {
        Int type;
        Rect rect;
        Bytes data;
    };
    static Bytes make(const std::vector<Item>& items)
    {
        Form form;
        form.u16(I(items.size()) - 1);
        for (const Item& item : items) {
            form.u32(0).rect(item.rect).u8(item.type).u8(I(item.data.size())).raw(item.data);
            form.zeros(I(item.data.size()) & 1);
        }
        return form.bytes;
    }
};

constexpr Int kButton = ctrlItem + btnCtrl;

/// The dialog's content is at global (100, 100).
class DialogsTest : public ToolboxTest {
protected:
    static constexpr Rect kFirst{100, 150, 120, 210}, kSecond{100, 60, 120, 120}; // two buttons
    static constexpr Rect kName{20, 20, 32, 120}, kTown{50, 20, 62, 120};         // two fields

    /// Makes and shows a dialog with these items.
    DialogPtr dialog(const std::vector<ItemList::Item>& items)
    {
        add("DITL", 200, ItemList::make(items));
        useResources();
        const DialogPtr d = NewDialog(nullptr, {100, 100, 260, 360}, {0}, true, dBoxProc, nullptr, false, 0, 200);
        return d;
    }
    DialogPtr twoFields()
    {
        return dialog({{kButton, kFirst, bytesOf("OK")}, {kButton, kSecond, bytesOf("Cancel")},
            {editText | itemDisable, kName, bytesOf("Ann")},
            {statText | itemDisable, {0, 0, 12, 100}, bytesOf("Names")}, {editText | itemDisable, kTown, bytesOf("")}});
    }
    /// Runs the dialog until an item is hit; the quit flag ends a run that hits none.
    Int hit(const DialogFilter& filter = {})
    {
        Int item = -1;
        ModalDialog(filter, item);
        return item;
    }
    /// Presses and releases the mouse at a point of the dialog.
    void click(Int v, Int h)
    {
        Input::mouse(h + 100, v + 100, false); // the end of an earlier click
        Input::mouse(h + 100, v + 100, true);
        mouseLater(2, {v + 100, h + 100}, false);
    }
    static std::string text(const DialogPtr& d, Int n)
    {
        Int type;
        Rect r;
        DItemHandle handle;
        GetDItem(d, n, type, handle, r);
        Str255 s;
        GetIText(handle, s);
        return string(s);
    }
    static void quitSoon() { Input::quitRequested = true; }
};

} // namespace

TEST_F(DialogsTest, ItemListsBecomeItems)
{
    add("ICON", 5, Bytes(128, 0xFF));
    add("PICT", 6, Bytes(20));
    add("CNTL", 7, Form().rect({0, 0, 1, 1}).u16(3).u8(0).u8(0).u16(9).u16(0).u16(16).u32(0).u8(0).bytes);
    const DialogPtr d = dialog({{kButton, kFirst, bytesOf("OK")}, {ctrlItem + chkCtrl, {0, 0, 16, 90}, bytesOf("Odd")},
        {ctrlItem + resCtrl, {0, 230, 100, 246}, Form().u16(7).bytes},
        {ctrlItem + resCtrl, {0, 0, 9, 9}, Form().u16(8).bytes}, {iconItem, {0, 0, 32, 32}, Form().u16(5).bytes},
        {iconItem, {0, 0, 32, 32}, {}}, {picItem, {0, 0, 9, 9}, Form().u16(6).bytes}, {userItem, {0, 0, 9, 9}, {}},
        {editText, kName, bytesOf("Ann")}, {statText, {0, 0, 9, 9}, bytesOf("^0")}});
    using Kind = DItemHandle::Kind;
    const Kind kinds[] = {Kind::control, Kind::control, Kind::control, Kind::none, Kind::icon, Kind::none,
        Kind::picture, Kind::user, Kind::text, Kind::text};
    ASSERT_EQ(d->items.size(), 10u);
    for (Int n = 1; n <= 10; ++n)
        EXPECT_EQ(d->item(n)->handle.kind, kinds[n - 1]) << n;
    EXPECT_EQ(string(d->item(2)->handle.ctl->contrlTitle), "Odd");
    EXPECT_EQ(d->item(2)->handle.ctl->contrlMax, 1);
    const ControlHandle bar = d->item(3)->handle.ctl;
    EXPECT_TRUE(bar->contrlVis) << "an item shows its control, whatever the resource says";
    EXPECT_EQ(bar->contrlRect, d->item(3)->rect);
    EXPECT_EQ(d->editField, 8);
    EXPECT_EQ(d->textH->selStart, 0);
    EXPECT_EQ(d->textH->selEnd, 3);
    EXPECT_EQ(d->windowKind, dialogKind);
    CloseDialog(d);
    EXPECT_TRUE(d->controls.empty());
    EXPECT_EQ(FrontWindow(), nullptr);
}

TEST_F(DialogsTest, CutItemListsGiveWhatIsWhole)
{
    const Bytes whole = ItemList::make({{statText, {0, 0, 9, 9}, bytesOf("abc")}, {kButton, kFirst, bytesOf("OK")}});
    for (std::size_t cut = 0; cut < whole.size(); ++cut)
        add("DITL", 500 + I(cut), Bytes(whole.begin(), whole.begin() + I(cut)));
    add("DITL", 400, Form().u16(-1).bytes);
    add("DITL", 401, Form().u16(0x7FFF).zeros(40).bytes);
    useResources();
    const auto count = [](Int list) {
        const DialogPtr d = NewDialog(nullptr, {100, 100, 200, 300}, {0}, true, 1, nullptr, false, 0, list);
        DrawDialog(d);
        const std::size_t n = d->items.size();
        CloseDialog(d);
        return I(n);
    };
    for (std::size_t cut = 0; cut < whole.size(); ++cut)
        EXPECT_EQ(count(500 + I(cut)), cut < 16 ? 0 : cut < 34 ? 1 : 2) << cut;
    EXPECT_EQ(count(400), 0);
    EXPECT_EQ(count(401), 2);
    EXPECT_EQ(count(999), 0);
}

TEST_F(DialogsTest, DialogAndAlertResourcesMayBeCut)
{
    const Bytes dlog = Form().rect({50, 50, 90, 200}).u16(1).u8(1).u8(0).u16(0).u32(77).u16(200).counted("T").bytes;
    const Bytes alrt = Form().rect({50, 50, 90, 200}).u16(200).u16(0).bytes;
    for (std::size_t cut = 0; cut < dlog.size(); ++cut)
        add("DLOG", I(cut), Bytes(dlog.begin(), dlog.begin() + I(cut)));
    for (std::size_t cut = 0; cut < alrt.size(); ++cut)
        add("ALRT", I(cut), Bytes(alrt.begin(), alrt.begin() + I(cut)));
    add("DITL", 200, ItemList::make({{kButton, kFirst, bytesOf("OK")}}));
    useResources();
    for (std::size_t cut = 0; cut < dlog.size(); ++cut) {
        const DialogPtr d = GetNewDialog(I(cut));
        EXPECT_EQ(d == nullptr, cut < 20) << cut;
        if (d) {
            EXPECT_TRUE(d->visible && d->refCon == 77);
        }
        CloseDialog(d);
    }
    quitSoon();
    for (std::size_t cut = 0; cut < alrt.size(); ++cut)
        EXPECT_EQ(Alert(I(cut)), cut < 10 ? -1 : 1) << cut;
    EXPECT_EQ(Alert(999), -1);
    EXPECT_EQ(FrontWindow(), nullptr);
}

TEST_F(DialogsTest, ClicksHitTheTopmostEnabledItem)
{
    const DialogPtr d = dialog({{statText | itemDisable, {0, 0, 40, 40}, bytesOf("a")}, {userItem, {0, 50, 40, 90}, {}},
        {userItem, {20, 70, 60, 110}, {}}, {kButton, kFirst, bytesOf("OK")}});
    click(10, 10); // a disabled text: goes on
    later(10, [&] { click(30, 80); });
    EXPECT_EQ(hit(), 3) << "the later of two items";
    clock.sleep(5 * kTickNanos);
    click(30, 60);
    EXPECT_EQ(hit(), 2);
    HideDItem(d, 3);
    click(30, 80);
    EXPECT_EQ(hit(), 2) << "a hidden one is not there";
    clock.sleep(5 * kTickNanos);
    click(110, 160);
    EXPECT_EQ(hit(), 4);
    HiliteControl(d->item(4)->handle.ctl, 255);
    click(110, 160);
    later(20, [&] { click(30, 60); });
    EXPECT_EQ(hit(), 2) << "a dimmed button is deaf";
}

TEST_F(DialogsTest, ARingDrawnOverItsButtonLetsClicksThrough)
{
    const DialogPtr d =
        dialog({{kButton, kFirst, bytesOf("OK")}, {kButton, kSecond, bytesOf("Cancel")}, {userItem, {0, 0, 1, 1}, {}}});
    Int drawn = 0;
    SetDItem(d, 3, userItem | itemDisable, DItemHandle::user([&](const DialogPtr&, Int n) { drawn = n; }),
        kFirst.insetBy(-4, -4));
    click(110, 160);
    EXPECT_EQ(hit(), 1);
    DrawDialog(d);
    EXPECT_EQ(drawn, 3);
}

TEST_F(DialogsTest, ReturnPressesTheDefaultForEightTicks)
{
    const DialogPtr d = twoFields();
    for (const Int code : {13, 3}) {
        d->aDefItem = code == 13 ? 1 : 2;
        key(code);
        const Int start = TickCount();
        bool pressed = false;
        later(4, [&] { pressed = d->item(d->aDefItem)->handle.ctl->contrlHilite == 1; });
        EXPECT_EQ(hit(), d->aDefItem);
        EXPECT_TRUE(pressed);
        EXPECT_EQ(d->item(d->aDefItem)->handle.ctl->contrlHilite, 0);
        EXPECT_NEAR(static_cast<double>(TickCount() - start), 8, 1);
    }
    for (const Int item : {4, 0, 99}) { // a text, and no items
        d->aDefItem = item;
        key(13);
        later(30, quitSoon);
        EXPECT_EQ(hit(), 2) << "only the quit request ends it";
        EXPECT_EQ(text(d, 3), "Ann");
        Input::quitRequested = false;
    }
    d->aDefItem = 1;
    HiliteControl(d->item(1)->handle.ctl, 255);
    key(13);
    later(30, quitSoon);
    EXPECT_EQ(hit(), 2);
}

TEST_F(DialogsTest, EscapeTakesTheCancelItemWhereTheHostSaysSo)
{
    const DialogPtr fields = twoFields();
    const auto escape = [] { Input::key(27, 53, 0, true); };
    const DialogFilter unseen = [](const DialogPtr&, EventRecord& e, Int& item) {
        return e.what == keyDown && (item = 77) != 0;
    };
    escape();
    EXPECT_EQ(hit(unseen), 77) << "a key like any other";

    escapeCancels = true;
    escape();
    EXPECT_EQ(hit(unseen), 2);
    Input::key(27, 53, cmdKey, true);
    EXPECT_EQ(hit(unseen), 77) << "with Command";
    fields->item(2)->handle.ctl->contrlHilite = 255;
    escape();
    EXPECT_EQ(hit(), 1) << "no second button can be pressed";
    fields->item(1)->handle.ctl->contrlHilite = 255;
    escape();
    EXPECT_EQ(hit(unseen), 77) << "no button can be pressed";
    DisposDialog(fields);

    // Under a stop sign the default button is the one that changes nothing.
    add("DITL", 201, ItemList::make({{kButton, kFirst, bytesOf("Cancel")}, {kButton, kSecond, bytesOf("Go on")}}));
    add("ALRT", 201, Form().rect({100, 100, 260, 360}).u16(201).u16(0).bytes);
    useResources();
    escape();
    EXPECT_EQ(StopAlert(201), 1);
    escape();
    EXPECT_EQ(CautionAlert(201), 2);
    escapeCancels = false;
}

TEST_F(DialogsTest, KeysGoToTheFocusedFieldAndTabMovesOn)
{
    const DialogPtr d = twoFields();
    for (const char c : std::string("Ben\tTroy"))
        key(c);
    later(60, quitSoon);
    hit();
    Input::quitRequested = false;
    EXPECT_EQ(text(d, 3), "Ben") << "what was selected is replaced";
    EXPECT_EQ(text(d, 5), "Troy");
    EXPECT_EQ(d->editField, 4);
    key(9);
    key('x');
    later(60, quitSoon);
    hit();
    Input::quitRequested = false;
    EXPECT_EQ(text(d, 3), "x") << "round to the first, all of it selected";
    HideDItem(d, 5);
    key('y');
    key(9);
    key('z');
    later(60, quitSoon);
    hit();
    Input::quitRequested = false;
    EXPECT_EQ(text(d, 3), "xyz") << "with one field Tab leaves the selection alone";
    d->item(3)->type = editText;
    key('!');
    EXPECT_EQ(hit(), 3) << "an enabled field answers each key";
    click(25, 40);
    EXPECT_EQ(hit(), 3);
}

TEST_F(DialogsTest, CommandKeysCopyCutAndPaste)
{
    const DialogPtr d = twoFields();
    for (const char c : {'x', 'q', 'V', 'v'})
        key(c, cmdKey);
    later(30, quitSoon);
    Input::key(9, 0, 0, true);
    later(10, [] { Input::key('v', 0, cmdKey, true); });
    platform.setPasteboard("x");
    const DialogFilter drain = [this](const DialogPtr&, EventRecord&, Int&) {
        platform.drain();
        return false;
    };
    hit(drain);
    EXPECT_EQ(text(d, 3), "AnnAnn");
    EXPECT_EQ(text(d, 5), "Ann");
}

TEST_F(DialogsTest, TheFilterSeesAndMayChangeEverything)
{
    const DialogPtr d = twoFields();
    key('1');
    EXPECT_EQ(
        hit([](const DialogPtr&, EventRecord& e, Int& item) { return e.what == keyDown && (item = 77) != 0; }), 77);
    key('2');
    EXPECT_EQ(hit([](const DialogPtr&, EventRecord& e, Int&) {
        if (e.what == keyDown)
            e.message = 13;
        return false;
    }),
        1);
    EXPECT_EQ(text(d, 3), "Ann");
}

TEST_F(DialogsTest, AQuitRequestEndsItAndTheKeyIsNotLost)
{
    const DialogPtr d = twoFields();
    later(20, [] { Input::requestQuit(); });
    EXPECT_EQ(hit(), 2);
    const auto left = Input::take(keyDownMask, true);
    ASSERT_TRUE(left) << "the program still has to see Command-Q";
    EXPECT_EQ(left->message & 255, 'q');
    d->items.resize(1);
    EXPECT_EQ(hit(), 1) << "one item";
    CloseDialog(d);
    EXPECT_EQ(hit(), 0) << "no dialog in front";
    window({30, 30, 60, 60});
    EXPECT_EQ(hit(), 0);
}

TEST_F(DialogsTest, OtherWindowsUpdatesAreDroppedAndOwnOnesDrawn)
{
    const WindowPtr other = window({30, 30, 90, 90});
    const DialogPtr d = twoFields();
    EXPECT_EQ(blackIn({100, 100, 112, 136}), 0);
    later(10, quitSoon);
    hit([](const DialogPtr&, EventRecord& e, Int&) {
        EXPECT_TRUE(e.what != updateEvt || std::dynamic_pointer_cast<DialogRecord>(e.window()));
        return false;
    });
    EXPECT_TRUE(other->updateRgn.isEmpty() && !other->savedVis);
    EXPECT_TRUE(d->updateRgn.isEmpty());
    EXPECT_GT(blackIn({100, 100, 112, 136}), 0) << "the text is drawn";
    EventRecord event;
    event.setWindow(d);
    EXPECT_TRUE(IsDialogEvent(event));
    event.setWindow(other);
    EXPECT_TRUE(IsDialogEvent(event)) << "a dialog is in front";
    SelectWindow(other);
    EXPECT_FALSE(IsDialogEvent(event));
}

TEST_F(DialogsTest, TextsAreReplacedInPlaceAndDrawn)
{
    const DialogPtr d = twoFields();
    DrawDialog(d);
    SetIText(d->item(3)->handle, pstr("Benjamin"));
    EXPECT_EQ(d->textH->selStart, 8) << "the focused field's caret goes to the end";
    EXPECT_EQ(d->textH->selEnd, 8);
    EXPECT_GT(blackIn({120, 120 + 6 * 6, 132, 120 + 8 * 6}), 0);
    HideDItem(d, 3);
    EXPECT_EQ(blackIn({120, 120, 132, 220}), 0);
    const Bytes before = screen();
    SetIText(d->item(3)->handle, pstr("Zed"));
    EXPECT_EQ(screen(), before) << "a hidden one draws nothing";
    EXPECT_EQ(text(d, 3), "Zed");
    ShowDItem(d, 3);
    EXPECT_FALSE(d->updateRgn.isEmpty());
    SelIText(d, 5, 0, 32767);
    EXPECT_EQ(d->editField, 4);
    SelIText(d, 4, 1, 3);
    EXPECT_EQ(d->editField, 3) << "any text can have it";
    SelIText(d, 9, 0, 1);
    Str255 none{1, 2};
    GetIText(d->item(1)->handle, none);
    EXPECT_EQ(none, Str255{0});
    Int type = 9;
    Rect r{1, 1, 1, 1};
    DItemHandle handle = DItemHandle::text(NewHandle(1));
    GetDItem(d, 0, type, handle, r);
    EXPECT_TRUE(type == 0 && r == Rect{} && handle.is(DItemHandle::Kind::none));
}

TEST_F(DialogsTest, TheCaretBlinksWhileNothingHappens)
{
    const DialogPtr d = twoFields();
    SelIText(d, 3, 3, 3);
    Int changes = 0;
    bool last = d->textH->caretShown;
    later(32 * 6 + 16, quitSoon);
    hit([&](const DialogPtr&, EventRecord&, Int&) {
        changes += d->textH->caretShown != last;
        last = d->textH->caretShown;
        return false;
    });
    EXPECT_NEAR(static_cast<double>(changes), 6, 1);
}

TEST_F(DialogsTest, AlertsAskBeepAndLeaveNoTrace)
{
    add("ALRT", 900, Form().rect({60, 60, 200, 330}).u16(900).u16(0x555D).bytes); // second button, one beep
    add("DITL", 900,
        ItemList::make({{kButton, {100, 180, 120, 240}, bytesOf("OK")}, {kButton, {100, 100, 120, 160}, bytesOf("No")},
            {statText | itemDisable, {10, 70, 60, 260}, bytesOf("No ^0 left.")}}));
    add("ICON", 2, Bytes(128, 0xFF));
    useResources();
    const WindowPtr behind = window({30, 30, 300, 400});
    ParamText(pstr("food"), {0}, {0}, {0});
    SetPort(behind);
    const GrafPtr before = thePort;
    Bytes shown;
    Int icon = 0, ring = 0;
    later(20, [&] {
        icon = blackIn({70, 80, 102, 112});
        ring = blackIn({60 + 96, 60 + 110, 60 + 99, 60 + 150});
        key(13);
    });
    EXPECT_EQ(CautionAlert(900), 2);
    EXPECT_EQ(icon, 32 * 32);
    EXPECT_EQ(ring, 3 * 40) << "round item 2";
    EXPECT_EQ(thePort, before);
    EXPECT_EQ(FrontWindow(), behind);
    platform.drain();
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_FALSE(behind->updateRgn.isEmpty());
}

TEST_F(DialogsTest, IconsScaleAndShortOnesDrawNothing)
{
    const WindowPtr w = window({40, 40, 240, 240});
    const PortScope scope(w->port);
    PlotIcon({0, 0, 64, 64}, std::make_shared<Block>(Bytes(128, 0xFF)));
    EXPECT_EQ(blackIn({40, 40, 240, 240}), 64 * 64);
    PlotIcon({100, 100, 132, 132}, std::make_shared<Block>(Bytes(127, 0xFF)));
    PlotIcon({100, 100, 132, 132}, nullptr);
    EXPECT_EQ(blackIn({40, 40, 240, 240}), 64 * 64);
}
