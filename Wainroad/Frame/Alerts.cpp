#include "Wainroad/Frame/Alerts.h"

#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Frame/Utils.h"

namespace Wainroad {

static constexpr Int kTextAlert = 2003;
static constexpr Int kFlashTicks = 8;
static constexpr Int kWholeText = 32767;

static Rect outset(const Rect& r, Int by) { return {r.top - by, r.left - by, r.bottom + by, r.right + by}; }

void SetDefaultButton(const DialogPtr& dialog, Int button, Int outlineItem)
{
    if (!dialog || !dialog->item(button) || !dialog->item(outlineItem))
        return;
    const Rect ring = outset(dialog->item(button)->rect, 4);
    const Rect old = dialog->item(outlineItem)->rect;
    SetDItem(dialog, outlineItem, userItem | itemDisable, DItemHandle::user(DrawDefaultOutline), ring);
    dialog->aDefItem = button;
    if (ring == old || !dialog->visible)
        return;
    const PortScope port(dialog->port);
    InvalRect(old);
    ValidRect(old.insetBy(4, 4));
    InvalRect(ring);
}

void DrawDefaultOutline(const DialogPtr& dialog, Int item)
{
    const DItem* ring = dialog ? dialog->item(item) : nullptr;
    if (!ring)
        return;
    const PortScope port(dialog->port);
    const PenScope pen;
    PenNormal();
    PenSize(3, 3);
    FrameRoundRect(ring->rect, 16, 16);
}

/// Selects the text of the edit item after the focused one, round the end. @return False if there is no field.
static bool nextField(const DialogPtr& dialog)
{
    const Int count = I(dialog->items.size());
    if (dialog->editField < 0 || count == 0)
        return false;
    for (Int step = 1; step <= count; ++step) {
        const Int n = (dialog->editField + step) % count + 1;
        if (dialog->item(n)->kind() == editText) {
            SelIText(dialog, n, 0, kWholeText);
            return true;
        }
    }
    return false;
}

bool StdFilter(const DialogPtr& dialog, EventRecord& event, Int& item)
{
    if (!dialog || (event.what != keyDown && event.what != autoKey))
        return false;
    const Int character = event.message & charCodeMask;
    if (character == 9)
        return nextField(dialog);
    if (event.what != keyDown || (character != 13 && character != 3))
        return false;
    item = dialog->aDefItem;
    if (const DItem* button = dialog->item(item); button && button->handle.is(DItemHandle::Kind::control)) {
        Int now = 0;
        HiliteControl(button->handle.ctl, 1);
        Delay(kFlashTicks, now);
        HiliteControl(button->handle.ctl, 0);
    }
    return true;
}

void SetRadioGroup(const DialogPtr& dialog, Int first, Int last, Int on)
{
    for (Int n = first; dialog && n <= last; ++n) {
        const DItem* item = dialog->item(n);
        if (!item || !item->handle.is(DItemHandle::Kind::control))
            continue;
        const ControlHandle& control = item->handle.ctl;
        if ((GetCtlValue(control) != 0) != (n == on))
            SetCtlValue(control, n == on);
    }
}

bool RadioIsOn(const DialogPtr& dialog, Int n)
{
    const DItem* item = dialog ? dialog->item(n) : nullptr;
    if (!item || !item->handle.is(DItemHandle::Kind::control) || !item->handle.ctl)
        return false;
    const ControlRecord& control = *item->handle.ctl;
    return control.contrlValue != 0 && control.contrlHilite != 255 && control.contrlVis && !item->hidden
        && dialog->portRect().contains(item->rect.topLeft());
}

/// A dialog made of what an alert's resource tells; nil if that is missing.
static DialogPtr dialogFromAlert(Int id)
{
    const Handle alert = GetResource(os("ALRT"), id);
    if (!alert || alert->count() < 10)
        return nullptr;
    return NewDialog(nullptr, alert->rect(0), {0}, false, dBoxProc, nullptr, false, 0, alert->s16(8));
}

Int DCenteredAlert(Int id)
{
    WaitForSound();
    MenuBar::syncIfNeeded();
    DialogPtr dialog = GetNewDialog(id);
    const Int error = ResError();
    if (!dialog)
        dialog = dialogFromAlert(id);
    if (!dialog)
        Fatal(error, "DCenteredAlert");
    const PortScope port(dialog->port);
    Rect r = dialog->portRect();
    CenterRect(r);
    MoveWindow(dialog, r.left, r.top, false);
    SetDefaultButton(dialog, 1, 2);
    ShowWindow(dialog);
    Int hit = 0;
    ModalDialog({}, hit);
    DisposDialog(dialog);
    return hit;
}

bool CenterAlert(Int id)
{
    const Handle alert = GetResource(os("ALRT"), id);
    if (!alert || alert->count() < 8)
        return false;
    Rect r = alert->rect(0);
    CenterRect(r);
    alert->set16(0, r.top), alert->set16(2, r.left), alert->set16(4, r.bottom), alert->set16(6, r.right);
    return true;
}

void SetAlertText(const Str255& text)
{
    WaitForSound();
    ParamText(&text, nullptr, nullptr, nullptr);
    if (!CenterAlert(kTextAlert))
        Fatal(ResError(), "GetAlert");
}

} // namespace Wainroad
