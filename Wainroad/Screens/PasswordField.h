#pragma once

// A field that shows bullets: an invisible text record beside it takes the real characters.

#include "MacToolbox/Managers/Dialogs.h"

namespace Wainroad {
using namespace MacToolbox;

/// Shadows the edit text `item` of the dialog, until `RemovePasswordTE`.
void InstallPasswordTE(const DialogPtr& dialog, Int item);
void RemovePasswordTE();
/// What was really typed.
Str255 PasswordText();
/// Filter for `ModalDialog`: turns the characters of the shadowed field into bullets, and lets no blank through.
bool PasswordFilter(const DialogPtr& dialog, EventRecord& event, Int& item);

} // namespace Wainroad
