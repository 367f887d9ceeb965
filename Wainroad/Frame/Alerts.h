#pragma once

// What the game's modal dialogs and alerts share.

#include "MacToolbox/Managers/Dialogs.h"

namespace Wainroad {
using namespace MacToolbox;

/// Makes item `button` the default and item `outlineItem` its ring.
void SetDefaultButton(const DialogPtr& dialog, Int button, Int outlineItem);
/// Draws the ring of a user item.
void DrawDefaultOutline(const DialogPtr& dialog, Int item);
/// Filter for `ModalDialog`: Return and Enter press the default button, Tab moves to the next field.
bool StdFilter(const DialogPtr& dialog, EventRecord& event, Int& item);
/// Switches the controls of the items `first` to `last`: on for `on`, off for the others.
void SetRadioGroup(const DialogPtr& dialog, Int first, Int last, Int on);
/// True if the item is a control that is on, can be seen and is not greyed.
bool RadioIsOn(const DialogPtr& dialog, Int item);

/// Shows dialog `id` in the middle and waits, after the sounds have ended. Takes the `ALRT` of that id if there is no
/// `DLOG`; `Fatal` with "DCenteredAlert" if both are missing. @return The item hit.
Int DCenteredAlert(Int id);
/// Makes `text` what alert 2003 says, and centres it. `Fatal` with "GetAlert" if it is missing.
void SetAlertText(const Str255& text);
/// Centres the rectangle of an alert in place. @return False if the `ALRT` is missing or too short.
bool CenterAlert(Int id);

} // namespace Wainroad
