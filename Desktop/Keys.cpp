#include "Desktop/Keys.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Host/Input.h"

#include <array>
#include <string_view>

namespace Desktop {

using namespace MacToolbox;

namespace {

constexpr Int kUnknownKey = 255;
constexpr quint32 kFirstScanCode = 8; // both display servers count from here
constexpr quint32 kNativeCapsLock = 2;

/// A key of a PC keyboard: scan code, classic code, and its character on a US keyboard or 0.
struct PlacedKey {
    std::uint8_t scan, code;
    char letter;
};
constexpr PlacedKey kKeys[] = {
    {1, 53, 0},
    {2, 18, '1'},
    {3, 19, '2'},
    {4, 20, '3'},
    {5, 21, '4'},
    {6, 23, '5'},
    {7, 22, '6'},
    {8, 26, '7'},
    {9, 28, '8'},
    {10, 25, '9'},
    {11, 29, '0'},
    {12, 27, '-'},
    {13, 24, '='},
    {14, 51, 0},
    {15, 48, 0},
    {16, 12, 'q'},
    {17, 13, 'w'},
    {18, 14, 'e'},
    {19, 15, 'r'},
    {20, 17, 't'},
    {21, 16, 'y'},
    {22, 32, 'u'},
    {23, 34, 'i'},
    {24, 31, 'o'},
    {25, 35, 'p'},
    {26, 33, '['},
    {27, 30, ']'},
    {28, 36, 0},
    {30, 0, 'a'},
    {31, 1, 's'},
    {32, 2, 'd'},
    {33, 3, 'f'},
    {34, 5, 'g'},
    {35, 4, 'h'},
    {36, 38, 'j'},
    {37, 40, 'k'},
    {38, 37, 'l'},
    {39, 41, ';'},
    {40, 39, '\''},
    {41, 50, '`'},
    {43, 42, '\\'},
    {44, 6, 'z'},
    {45, 7, 'x'},
    {46, 8, 'c'},
    {47, 9, 'v'},
    {48, 11, 'b'},
    {49, 45, 'n'},
    {50, 46, 'm'},
    {51, 43, ','},
    {52, 47, '.'},
    {53, 44, '/'},
    {55, 67, 0},
    {57, 49, ' '},
    {59, 122, 0},
    {60, 120, 0},
    {61, 99, 0},
    {62, 118, 0},
    {63, 96, 0},
    {64, 97, 0},
    {65, 98, 0},
    {66, 100, 0},
    {67, 101, 0},
    {68, 109, 0},
    {69, 71, 0},
    {71, 89, 0},
    {72, 91, 0},
    {73, 92, 0},
    {74, 78, 0},
    {75, 86, 0},
    {76, 87, 0},
    {77, 88, 0},
    {78, 69, 0},
    {79, 83, 0},
    {80, 84, 0},
    {81, 85, 0},
    {82, 82, 0},
    {83, 65, 0},
    {86, 10, 0},
    {87, 103, 0},
    {88, 111, 0},
    {96, 76, 0},
    {98, 75, 0},
    {102, 115, 0},
    {103, 126, 0},
    {104, 116, 0},
    {105, 123, 0},
    {106, 124, 0},
    {107, 119, 0},
    {108, 125, 0},
    {109, 121, 0},
    {110, 114, 0},
    {111, 117, 0},
    {117, 81, 0},
};

const PlacedKey* placedKey(const QKeyEvent& event)
{
    const quint32 native = event.nativeScanCode();
    for (const PlacedKey& key : kKeys)
        if (native >= kFirstScanCode && key.scan == native - kFirstScanCode)
            return &key;
    return nullptr;
}

/// Keys that mean the same on every layout, with any modifier.
std::optional<Int> namedKey(int key)
{
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35)
        return 16;
    switch (key) {
    case Qt::Key_Up: return 30;
    case Qt::Key_Down: return 31;
    case Qt::Key_Left: return 28;
    case Qt::Key_Right: return 29;
    case Qt::Key_Delete: return 127;
    case Qt::Key_Home: return 1;
    case Qt::Key_End: return 4;
    case Qt::Key_PageUp: return 11;
    case Qt::Key_PageDown: return 12;
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return 9;
    case Qt::Key_Return: return 13;
    case Qt::Key_Enter: return 3;
    case Qt::Key_Escape: return 27;
    default: return std::nullopt;
    }
}

/// The character of a key held with Command.
std::optional<Int> commandChar(const QKeyEvent& event)
{
    const int key = event.key();
    if (key >= 'A' && key <= 'Z')
        return (event.modifiers() & Qt::ShiftModifier) != 0 ? key : key + 32;
    if (key >= 32 && key < 127)
        return key;
    if (const PlacedKey* const placed = placedKey(event); placed && placed->letter && key < Qt::Key_Escape)
        return placed->letter;
    return std::nullopt;
}

/// The modifier that a key is itself.
Int ownModifier(int key)
{
    switch (key) {
    case Qt::Key_Control: return cmdKey;
    case Qt::Key_Shift: return shiftKey;
    case Qt::Key_Alt: return optionKey;
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R: return controlKey;
    default: return 0;
    }
}

} // namespace

Int macModifiers(Qt::KeyboardModifiers host)
{
    Int bits = 0;
    if (host & Qt::ControlModifier)
        bits |= cmdKey;
    if (host & Qt::ShiftModifier)
        bits |= shiftKey;
    if (host & Qt::AltModifier)
        bits |= optionKey;
    if (host & Qt::MetaModifier)
        bits |= controlKey;
    return bits;
}

Int macModifiers(const QKeyEvent& event)
{
    const Int own = ownModifier(event.key());
    Int bits = macModifiers(event.modifiers());
    bits = event.type() == QEvent::KeyRelease ? bits & ~own : bits | own;
    if (event.nativeModifiers() & kNativeCapsLock)
        bits |= alphaLock;
    return bits;
}

Int macKeyCode(const QKeyEvent& event)
{
    const PlacedKey* const key = placedKey(event);
    return key ? key->code : kUnknownKey;
}

std::optional<Int> macChar(char32_t scalar)
{
    if (scalar < 128)
        return static_cast<Int>(scalar);
    const auto roman = macRomanStrict(QString::fromUcs4(&scalar, 1).toStdString());
    return roman && roman->size() == 1 ? std::optional<Int>(roman->front()) : std::nullopt;
}

std::optional<Int> macChar(const QKeyEvent& event)
{
    if (const auto named = namedKey(event.key()))
        return named;
    if (event.modifiers() & Qt::ControlModifier)
        return commandChar(event);
    const auto scalars = event.text().normalized(QString::NormalizationForm_C).toUcs4();
    return scalars.isEmpty() ? std::nullopt : macChar(static_cast<char32_t>(scalars.front()));
}

} // namespace Desktop
