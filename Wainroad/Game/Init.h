#pragma once

// Start-up: each step depends on the one before.

#include "MacToolbox/Base/Geometry.h"

namespace Wainroad {
using namespace MacToolbox;

extern bool gHasAppleEvents;
extern Int gMachine, gProcessor, gSystemVersion, gATalkVersion;
extern bool gColorQD;

void Initialize();
/// Asks what the machine is. One that is too old is told so, and the run ends.
void CheckMachine();
/// `Fatal` without a `WIND` 1000. From here on only the window's content is published.
void OpenGameWindow();
/// Says where the configuration file is.
void FindLaunchFiles();
/// `Fatal` without an `MBAR` 1000.
void MenusInit();
/// The three states of the journey, the model, and the pictures of the keys.
void StatesInit();

} // namespace Wainroad
