#pragma once

#include "MacToolbox/Managers/Dialogs.h"

namespace Wainroad {
using namespace MacToolbox;

/// Lets the sounds end, then shows dialog `id` in the middle. `Fatal` with "OpenModalDialog" if it is missing.
DialogPtr OpenModalDialog(Int id);
/// Disposes of the dialog and has the game's window drawn anew: a modal dialog answers the updates of what lies behind
/// it with nothing drawn, so an alert over it may have left white there.
void CloseModalDialog(const DialogPtr& dialog);
/// The control of an item, or nil.
ControlHandle DialogControl(const DialogPtr& dialog, Int item);
/// The text of an item, empty if it has none.
Str255 DialogText(const DialogPtr& dialog, Int item);
void SetDialogText(const DialogPtr& dialog, Int item, const Str255& text);
/// Makes an item a user item with this drawing procedure; it keeps its place.
void SetDialogDrawing(const DialogPtr& dialog, Int item, UserItemProc draw);
/// Dims or enables the button of an item: 255 or 0.
void HiliteDialogButton(const DialogPtr& dialog, Int item, Int hilite);
/// Shows the general alert with a text, centred, as a note.
void ShowNote(const Str255& text);

} // namespace Wainroad
