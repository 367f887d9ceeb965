#include "MacToolbox/Managers/ModalDialog.h"

#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Dialogs.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/Managers/Sound.h"

#include <algorithm>

// The modal loop, and the alerts that run in it.

namespace MacToolbox {

namespace {

constexpr Int kReturn = 13, kEnter = 3, kTab = 9, kEscape = 27;
constexpr Int kFlash = 8;  // ticks that the default button stays pressed
constexpr Int kBlink = 32; // ticks between two changes of the caret

using Kind = DItemHandle::Kind;

DialogPtr asDialog(const WindowPtr& w) { return std::dynamic_pointer_cast<DialogRecord>(w); }

/// The item under a local point, from 1; 0 for none. The last one lies on top. A disabled user item only draws, and
/// lets clicks through to what it is drawn round.
Int itemUnder(const DialogPtr& dialog, Point local)
{
    for (Int n = I(dialog->items.size()); n >= 1; --n) {
        const DItem& item = *dialog->item(n);
        if (item.kind() == userItem && item.disabled())
            continue;
        if (!item.hidden && item.rect.contains(local))
            return n;
    }
    return 0;
}

// Each of the handlers below answers the item that ends the dialog, or 0.

Int ifEnabled(const DialogPtr& dialog, Int n)
{
    const DItem* const item = dialog->item(n);
    return item && !item->disabled() ? n : 0;
}

Int clicked(const DialogPtr& dialog, const EventRecord& event)
{
    const Point local = dialog->toLocal(event.where);
    const Int n = itemUnder(dialog, local);
    if (n == 0)
        return 0;
    const DItem item = *dialog->item(n);
    if (item.kind() >= ctrlItem && item.kind() <= ctrlItem + resCtrl) {
        if (!item.handle.is(Kind::control) || TrackControl(item.handle.ctl, local, nullptr, true) == 0)
            return 0;
    } else if (item.kind() == editText) {
        const PortScope scope(dialog->port);
        if (dialog->editField != n - 1)
            focusItem(dialog, n - 1, false);
        TEClick(local, (event.modifiers & shiftKey) != 0, dialog->textH);
    }
    return ifEnabled(dialog, n);
}

void commandKey(const DialogPtr& dialog, Int key)
{
    if (dialog->editField < 0)
        return;
    const PortScope scope(dialog->port);
    switch (key | 32) {
    case 'c': TECopy(dialog->textH); break;
    case 'x': TECut(dialog->textH); break;
    case 'v': TEPaste(dialog->textH); break;
    default: break;
    }
}

bool canPress(const DialogPtr& dialog, Int n)
{
    const DItem* const item = dialog->item(n);
    return item && !item->disabled() && item->handle.is(Kind::control) && item->handle.ctl
        && item->handle.ctl->contrlHilite != 255;
}

/// Presses a button for the eye, and answers it if it can be pressed.
Int press(const DialogPtr& dialog, Int n)
{
    if (!canPress(dialog, n))
        return 0;
    const ControlHandle button = dialog->item(n)->handle.ctl;
    HiliteControl(button, 1);
    const Int end = TickCount() + kFlash;
    while (TickCount() < end && !Input::quitRequested) {
        GameThread::service();
        Input::wait(1);
    }
    HiliteControl(button, 0);
    return n;
}

bool isCancelKey(const EventRecord& event)
{
    return escapeCancels && event.what == keyDown && (event.message & charCodeMask) == kEscape
        && (event.modifiers & cmdKey) == 0;
}

/// The button that changes nothing: the default one under a stop sign, else the second, else the only one.
Int cancelItem(const DialogPtr& dialog)
{
    constexpr Int kStop = 0, kSecond = 2;
    return dialog->alertIcon != kStop && canPress(dialog, kSecond) ? kSecond : dialog->aDefItem;
}

void nextField(const DialogPtr& dialog)
{
    std::vector<Int> fields;
    for (Int i = 0; i < I(dialog->items.size()); ++i) {
        const DItem& item = *dialog->item(i + 1);
        if (item.kind() == editText && !item.hidden)
            fields.push_back(i);
    }
    const auto here = std::find(fields.begin(), fields.end(), dialog->editField);
    if (here == fields.end() || fields.size() == 1)
        return;
    const PortScope scope(dialog->port);
    focusItem(dialog, here + 1 == fields.end() ? fields.front() : here[1], true);
}

Int keyPressed(const DialogPtr& dialog, const EventRecord& event)
{
    const Int key = event.message & charCodeMask;
    if ((event.modifiers & cmdKey) != 0) {
        commandKey(dialog, key);
        return 0;
    }
    if (key == kReturn || key == kEnter)
        return press(dialog, dialog->aDefItem);
    if (key == kTab) {
        nextField(dialog);
        return 0;
    }
    if (dialog->editField < 0 || !dialog->textH)
        return 0;
    {
        const PortScope scope(dialog->port);
        TEKey(key, dialog->textH);
    }
    return ifEnabled(dialog, dialog->editField + 1);
}

void idle(const DialogPtr& dialog)
{
    const TEHandle& te = dialog->textH;
    if (dialog->editField < 0 || !te || !te->active || te->selStart != te->selEnd
        || TickCount() - te->caretTime < kBlink)
        return;
    const PortScope scope(dialog->port);
    te->showCaret(!te->caretShown);
}

void update(const DialogPtr& dialog)
{
    const PortScope scope(dialog->port);
    BeginUpdate(dialog);
    DrawDialog(dialog);
    EndUpdate(dialog);
}

void activate(const DialogPtr& dialog, bool active)
{
    if (dialog->editField < 0)
        return;
    const PortScope scope(dialog->port);
    if (active)
        TEActivate(dialog->textH);
    else
        TEDeactivate(dialog->textH);
}

Int handle(const DialogPtr& dialog, const EventRecord& event)
{
    switch (event.what) {
    case nullEvent: idle(dialog); return 0;
    case mouseDown: return clicked(dialog, event);
    case keyDown:
    case autoKey: return keyPressed(dialog, event);
    case updateEvt:
        if (event.window() == dialog)
            update(dialog);
        return 0;
    case activateEvt:
        if (event.window() == dialog)
            activate(dialog, (event.modifiers & activeFlag) != 0);
        return 0;
    default: return 0;
    }
}

bool isQuitKey(const EventRecord& event)
{
    return event.what == keyDown && (event.modifiers & cmdKey) != 0 && (event.message & charCodeMask) == 'q';
}

/// An update that nobody here draws: it must not come again and again.
bool dropForeignUpdate(const DialogPtr& dialog, const EventRecord& event)
{
    const WindowPtr w = event.what == updateEvt ? event.window() : nullptr;
    if (!w || w == dialog)
        return false;
    BeginUpdate(w);
    EndUpdate(w);
    return true;
}

Int runAlert(Int id, std::optional<Int> icon, const DialogFilter& filter)
{
    const Handle h = GetResource(os("ALRT"), id);
    if (!h || h->count() < 10)
        return -1;
    const DialogPtr dialog = makeWindow<DialogRecord>(h->rect(0), dBoxProc);
    dialog->alertIcon = icon;
    WindowManager::shared().add(dialog, nullptr);
    loadItems(dialog, h->s16(8));
    const Int stages = h->count() >= 12 ? h->u16(10) & 15 : 0;
    dialog->aDefItem = (stages & 8) != 0 ? 2 : 1;
    if ((stages & 3) != 0)
        SysBeep(1);
    Int item = 0;
    {
        const PortScope scope(thePort);
        ShowWindow(dialog);
        WindowManager::shared().select(dialog);
        DrawDialog(dialog);
        outlineDefault(dialog);
        ModalDialog(filter, item);
    }
    CloseDialog(dialog);
    return item;
}

} // namespace

std::atomic<bool> escapeCancels = false;

bool IsDialogEvent(const EventRecord& event)
{
    return asDialog(event.window()) || asDialog(WindowManager::shared().front());
}

void ModalDialog(const DialogFilter& filter, Int& itemHit)
{
    const DialogPtr dialog = asDialog(WindowManager::shared().front());
    itemHit = 0;
    if (!dialog)
        return;
    const Input::Unseen unseen;
    for (;;) {
        EventRecord event;
        Events::nextEvent(everyEvent, event, true, 0);
        if (Input::quitRequested) {
            if (isQuitKey(event))
                Input::putBack(event); // the program still has to see it
            itemHit = dialog->items.size() < 2 ? 1 : 2;
            return;
        }
        if (dropForeignUpdate(dialog, event))
            continue;
        itemHit = isCancelKey(event) ? press(dialog, cancelItem(dialog)) : 0;
        if (itemHit != 0)
            return;
        if (filter && filter(dialog, event, itemHit))
            return;
        itemHit = handle(dialog, event);
        if (itemHit != 0)
            return;
    }
}

Int Alert(Int id, const DialogFilter& filter) { return runAlert(id, std::nullopt, filter); }
Int StopAlert(Int id, const DialogFilter& filter) { return runAlert(id, 0, filter); }
Int NoteAlert(Int id, const DialogFilter& filter) { return runAlert(id, 1, filter); }
Int CautionAlert(Int id, const DialogFilter& filter) { return runAlert(id, 2, filter); }

} // namespace MacToolbox
