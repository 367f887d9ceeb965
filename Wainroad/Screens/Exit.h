#pragma once

// Leaving a journey, for the title or for good.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

extern bool gQuit; ///< the main loop ends when it is true

extern const ViewProc ExitPanel, QuitPanel;
extern const ViewProc OnlyInTimeOutPanel; ///< a journey is saved at rest only

/// Ends the journey and shows the title.
void ToTitle();
/// File menu, back to the title: on the trail a panel asks first.
void ExitGame();
/// File menu, quit: on the trail a panel asks first. @return True if the game is at its end.
bool QuitGame();
/// The orderly shutdown: sound, model, packets, configuration, windows. The view tree is gone when it returns.
void Quit();

} // namespace Wainroad
