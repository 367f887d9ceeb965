#include "Wainroad/Screens/ModalDialogs.h"

#include "MacToolbox/Data/Resources.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Alerts.h"
#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Frame/Utils.h"

namespace Wainroad {

DialogPtr OpenModalDialog(Int id)
{
    WaitForSound();
    const DialogPtr dialog = GetNewDialog(id);
    if (!dialog)
        Fatal(ResError(), "OpenModalDialog");
    Rect place = dialog->portRect();
    CenterRect(place);
    MoveWindow(dialog, place.left, place.top, false);
    ShowWindow(dialog);
    return dialog;
}

void CloseModalDialog(const DialogPtr& dialog)
{
    DisposDialog(dialog);
    if (gRootView)
        InvalView(*gRootView);
}

ControlHandle DialogControl(const DialogPtr& dialog, Int item)
{
    const DItem* found = dialog ? dialog->item(item) : nullptr;
    return found && found->handle.is(DItemHandle::Kind::control) ? found->handle.ctl : nullptr;
}

Str255 DialogText(const DialogPtr& dialog, Int item)
{
    Str255 text{0};
    if (const DItem* found = dialog ? dialog->item(item) : nullptr)
        GetIText(found->handle, text);
    return text;
}

void SetDialogText(const DialogPtr& dialog, Int item, const Str255& text)
{
    if (const DItem* found = dialog ? dialog->item(item) : nullptr)
        SetIText(found->handle, text);
}

void SetDialogDrawing(const DialogPtr& dialog, Int item, UserItemProc draw)
{
    if (const DItem* found = dialog ? dialog->item(item) : nullptr)
        SetDItem(dialog, item, userItem, DItemHandle::user(std::move(draw)), found->rect);
}

void HiliteDialogButton(const DialogPtr& dialog, Int item, Int hilite)
{
    if (const ControlHandle control = DialogControl(dialog, item))
        HiliteControl(control, hilite);
}

void ShowNote(const Str255& text)
{
    constexpr Int kGeneralAlert = 2003;
    WaitForSound();
    SetAlertText(text);
    NoteAlert(kGeneralAlert);
}

} // namespace Wainroad
