#pragma once

#include "MacToolbox/Base/Memory.h"

namespace Wainroad {

/// What kind of machine this is, as the about box tells it. The start fills it in.
struct MachineFacts {
    MacToolbox::Int machine = 0, processor = 0;
    MacToolbox::Int systemVersion = 0; ///< binary-coded decimal
    MacToolbox::Int networkVersion = 0;
};
extern MachineFacts gMachineFacts;

/// The version of the program, from its own resource file. `Fatal` with "GetVersNumber" if it has none.
MacToolbox::Str255 GetVersion();
/// Shows who made the game; a double click on the caption shows the machine instead. Nothing without its dialog.
void About();

} // namespace Wainroad
