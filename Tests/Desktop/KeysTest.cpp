// Keys and mouse, from the host's events to the Toolbox's queue.

#include "MacToolbox/Managers/Menus.h"
#include "Tests/Desktop/DesktopFixture.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>

using namespace MacToolbox;

namespace {

constexpr quint32 kScanBase = 8; // what the display server adds

struct Key {
    const char* name;
    int key;
    quint32 scan;
    Qt::KeyboardModifiers modifiers;
    const char* text;
    Int message; // character, and the classic code above it; -1 for no event
    Int bits;
};
const Qt::KeyboardModifiers kNone = Qt::NoModifier, kCtrl = Qt::ControlModifier, kShift = Qt::ShiftModifier;

const Key kKeys[] = {
    {"a letter", Qt::Key_A, 30, kNone, "a", 0 << 8 | 'a', 0},
    {"a capital", Qt::Key_A, 30, kShift, "A", 0 << 8 | 'A', shiftKey},
    {"with an accent", Qt::Key_Eacute, 3, kNone, "é", 19 << 8 | 0x8E, 0},
    {"composed of two scalars", Qt::Key_E, 18, kNone, "e\u0301", 14 << 8 | 0x8E, 0},
    {"a character that Mac OS Roman has not", Qt::Key_unknown, 30, kNone, "\u044F", -1, 0},
    {"Return", Qt::Key_Return, 28, kNone, "\r", 36 << 8 | 13, 0},
    {"Enter of the keypad", Qt::Key_Enter, 96, Qt::KeypadModifier, "\r", 76 << 8 | 3, 0},
    {"a digit of the keypad", Qt::Key_7, 71, Qt::KeypadModifier, "7", 89 << 8 | '7', 0},
    {"Home on the keypad", Qt::Key_Home, 71, Qt::KeypadModifier, "", 89 << 8 | 1, 0},
    {"Backspace", Qt::Key_Backspace, 14, kNone, "\b", 51 << 8 | 8, 0},
    {"Delete", Qt::Key_Delete, 111, kNone, "\x7f", 117 << 8 | 127, 0},
    {"Tab back", Qt::Key_Backtab, 15, kShift, "", 48 << 8 | 9, shiftKey},
    {"Escape is no Command-period", Qt::Key_Escape, 1, kNone, "\x1b", 53 << 8 | 27, 0},
    {"F5", Qt::Key_F5, 63, kNone, "", 96 << 8 | 16, 0},
    {"left", Qt::Key_Left, 105, kNone, "", 123 << 8 | 28, 0},
    {"page down", Qt::Key_PageDown, 109, kNone, "", 121 << 8 | 12, 0},
    {"Command", Qt::Key_S, 31, kCtrl, "\x13", 1 << 8 | 's', cmdKey},
    {"Command and shift", Qt::Key_S, 31, kCtrl | kShift, "\x13", 1 << 8 | 'S', cmdKey | shiftKey},
    {"Command-period", Qt::Key_Period, 52, kCtrl, ".", 47 << 8 | '.', cmdKey},
    {"Command where letters are not Latin", 0x0429, 24, kCtrl, "", 31 << 8 | 'o', cmdKey},
    {"Option", Qt::Key_B, 48, Qt::AltModifier, "b", 11 << 8 | 'b', optionKey},
    {"a key with no place", Qt::Key_X, 200, kNone, "x", 255 << 8 | 'x', 0},
    {"a modifier alone", Qt::Key_Shift, 42, kNone, "", -1, 0},
    {"Insert", Qt::Key_Insert, 110, kNone, "", -1, 0},
};

void send(Desktop::ScreenView& view, QEvent::Type type, const Key& key, bool again = false)
{
    QKeyEvent event(type, key.key, key.modifiers, key.scan + kScanBase, 0, 0, QString::fromUtf8(key.text), again);
    QApplication::sendEvent(&view, &event);
}

class Keys : public DesktopTest { };

} // namespace

TEST_F(Keys, BecomeTheCharactersOfTheToolbox)
{
    for (const Key& key : kKeys) {
        SCOPED_TRACE(key.name);
        send(view(), QEvent::KeyPress, key);
        send(view(), QEvent::KeyRelease, key);
        const auto events = taken();
        ASSERT_EQ(events.size(), key.message < 0 ? 0U : 1U);
        if (key.message >= 0) {
            EXPECT_EQ(events[0].what, keyDown);
            EXPECT_EQ(events[0].message, key.message);
            EXPECT_EQ(events[0].modifiers, key.bits | btnState);
        }
    }
}

TEST_F(Keys, RepeatUntilTheyAreReleased)
{
    const Key& a = kKeys[0];
    send(view(), QEvent::KeyPress, a);
    send(view(), QEvent::KeyRelease, a, true); // the display server's own way to repeat
    send(view(), QEvent::KeyPress, a, true);
    EXPECT_TRUE(Input::keysDown()[0]);
    const auto events = taken();
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[1].what, autoKey);
    send(view(), QEvent::KeyRelease, a);
    EXPECT_FALSE(Input::keysDown()[0]);

    send(view(), QEvent::KeyPress, a);
    QEvent away(QEvent::WindowDeactivate);
    QApplication::sendEvent(&delegate().window(), &away);
    EXPECT_FALSE(Input::keysDown()[0]) << "a key stays down when the window goes to the back";
}

TEST_F(Keys, AnInputMethodGivesOneEventACharacter)
{
    QInputMethodEvent event;
    event.setCommitString(QString::fromUtf8("ñ\u65E5ß"));
    QApplication::sendEvent(&view(), &event);
    const auto events = taken();
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].message & charCodeMask, 0x96);
    EXPECT_EQ(events[1].message & charCodeMask, 0xA7);
}

TEST_F(Keys, HostKeysNeverReachTheGame)
{
    for (const Key& key : {Key{"M", Qt::Key_M, 50, kCtrl, "", 0, 0}, Key{"H", Qt::Key_H, 35, kCtrl, "", 0, 0},
             Key{"F10", Qt::Key_F10, 68, kNone, "", 0, 0}, Key{"F11", Qt::Key_F11, 87, kNone, "", 0, 0}}) {
        send(view(), QEvent::KeyPress, key);
        EXPECT_TRUE(taken().empty()) << key.name;
        delegate().window().showNormal();
    }
}

TEST_F(Keys, TheMouseIsMappedByTheScaleOfThePicture)
{
    const auto mouse = [&](QEvent::Type type, double x, double y, Qt::MouseButton button) {
        QMouseEvent event(type, {x, y}, view().mapToGlobal(QPointF(x, y)), button, button, kNone);
        QApplication::sendEvent(&view(), &event);
    };
    delegate().setScale(2);
    settle();
    ASSERT_EQ(view().size(), QSize(1024, 644));
    Screen::shared().setViewport({21, 64, 342, 512});
    EXPECT_EQ(view().globalPoint({5, 5}), (Point{23, 66}));
    EXPECT_EQ(view().globalPoint({-0.5, 5.9}), (Point{23, 63}));
    Screen::shared().setViewport({20, 0, 342, 512});

    mouse(QEvent::MouseButtonPress, 100, 60, Qt::RightButton);
    EXPECT_TRUE(taken().empty());
    mouse(QEvent::MouseButtonPress, 100, 60, Qt::LeftButton);
    mouse(QEvent::MouseMove, 1100, -8, Qt::NoButton);
    EXPECT_EQ(Input::mouseLocation(), (Point{16, 550}));
    mouse(QEvent::MouseButtonRelease, 1100, -8, Qt::LeftButton);
    mouse(QEvent::MouseButtonDblClick, 100, 60, Qt::LeftButton);
    const auto events = taken();
    ASSERT_EQ(events.size(), 3U);
    EXPECT_EQ(events[0].what, mouseDown);
    EXPECT_EQ(events[0].where, (Point{50, 50}));
    EXPECT_EQ(events[1].what, mouseUp);
    EXPECT_EQ(events[2].what, mouseDown);
    mouse(QEvent::MouseButtonRelease, 100, 60, Qt::LeftButton);
    taken();

    // Three times as large with a border: a press on the border is none.
    delegate().setScale(3);
    delegate().window().resize(delegate().window().size() + QSize(200, 100));
    settle();
    EXPECT_EQ(view().globalPoint({100 + 30, 50 + 60}), (Point{40, 10}));
    mouse(QEvent::MouseButtonPress, 50, 200, Qt::LeftButton);
    EXPECT_TRUE(taken().empty());
}
