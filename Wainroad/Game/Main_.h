#pragma once

// The game's one loop. Game thread.

#include "MacToolbox/Managers/Windows.h"

namespace Wainroad {
using namespace MacToolbox;

extern RgnHandle gMouseRgn; ///< passed to `WaitNextEvent`
extern bool gStartNow;      ///< the next pass opens a saved game; nothing sets it

/// The game, from start-up to the end of the process. Returns to nobody: it ends in `ExitToShell`.
void main_();
/// One pass of the loop: sound, pending writes, messages of the model, one event.
void DoEvent();
/// The game window was activated or deactivated: sets the menus accordingly, and stops the sound.
void ActivateWindow(const WindowPtr& window, bool active);

} // namespace Wainroad
