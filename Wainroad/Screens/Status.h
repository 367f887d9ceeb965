#pragma once

// Date, weather, way and state of the wain, as last broadcast. Here `gState` moves into `gPrev`.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

extern const ViewProc StatusPanel;
extern const ViewProc StatusItem, ThermometerItem;

/// Draws the values in the item; with `full` also heading and labels. Each call turns the blink of the warnings.
void DrawStatus(View& item, bool full);
/// Draws a line of `width` pixels with its text in the middle, and wipes what stood there. `baseline` in the item.
void DrawCentered(const Str255& text, Int baseline, Int width);

} // namespace Wainroad
