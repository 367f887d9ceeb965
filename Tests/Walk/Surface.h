#pragma once

#include "MacToolbox/Managers/Dialogs.h"
#include "MacToolbox/QuickDraw/BitMap.h"
#include "Wainroad/Frame/Panels.h"

#include <string>
#include <vector>

namespace Harness {

using MacToolbox::Int;
using MacToolbox::Point;
using MacToolbox::Rect;

/// One item of a panel or a dialog, as it lies on the screen. Coordinates are the window's.
struct Box {
    Int number = 0;
    Rect r;                   ///< where the mouse finds it
    Rect ink;                 ///< what it draws: `r` and what reaches beyond it
    Point needs{0, 0};        ///< height and width of the text that stands in it
    MacToolbox::BitMap drawn; ///< its own black pixels, if it draws more than its text
    bool clicks = false;      ///< answers to the mouse
    bool ground = false;      ///< a picture or a drawing of its own: others may stand on it
    bool through = false;     ///< lets clicks through, as the ring round a default button does
};

/// The items of a panel or a dialog, the last one on top.
struct Surface {
    std::string name;
    Rect room; ///< that all of it must keep within
    std::vector<Box> boxes;
};

/// The enabled items of a panel, those of its groups of radio buttons too (number 100 * item + button).
Surface surfaceOf(const std::string& name, Wainroad::View& panel);
/// The items of a dialog that are not hidden.
Surface surfaceOf(const std::string& name, const MacToolbox::DialogPtr& dialog);

/// What is wrong with it: items that overlap, lie outside, cannot be reached, and texts that are cut.
std::vector<std::string> faultsOf(const Surface& surface);

} // namespace Harness
