#pragma once

#include "MacToolbox/Base/Geometry.h"

#include <optional>

#include <QKeyEvent>

// From the host's keyboard to the Toolbox's. Command is Ctrl, Option is Alt and Control is the Super key; AltGr belongs
// to the layout and is no modifier.

namespace Desktop {

using MacToolbox::Int;

/// The Toolbox's modifier bits of the host's.
Int macModifiers(Qt::KeyboardModifiers host);

/// The modifier bits after a key event: the host tells those before it. Caps lock is read where the host tells it.
Int macModifiers(const QKeyEvent& event);

/// The classic code (0 to 127) of the key in that place of a PC keyboard; 255 for a key that has none.
Int macKeyCode(const QKeyEvent& event);

/// The Mac OS Roman character of a key event; nothing if the key has none. With Command the layout's plain letter, or
/// that of a US keyboard where the layout writes no Latin letters.
std::optional<Int> macChar(const QKeyEvent& event);

/// The Mac OS Roman character of a scalar; nothing if it has none.
std::optional<Int> macChar(char32_t scalar);

} // namespace Desktop
