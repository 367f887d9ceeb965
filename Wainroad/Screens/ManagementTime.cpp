#include "Wainroad/Screens/Management.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Screens/ModalDialogs.h"
#include "Wainroad/Simulation/Records.h"

namespace Wainroad {

namespace {

constexpr Int kDialog = 2047, kOK = 1, kCancel = 2, kFirstSpeed = 3, kLastSpeed = 5;
constexpr Int kPopupHit = 998; // what the filter answers for a click on the pop-up
constexpr Int kPopupMenu = 52, kWords = 2048;
constexpr Int kCheckMark = 18;
constexpr Int kTop = 130, kBottom = 150, kRight = 194, kBaseline = 145, kLabelLeft = 13;
constexpr Rect kSpeedFrame{37, 41, 111, 173};
constexpr Int kFlashTicks = 10;

struct TimeState {
    Int huntTime = 0;
    Int popupLeft = 0;
    Rect popup;
    bool popupOnly = false; // draw the pop-up alone
};
RunState<TimeState> s;

Str255 word(Int index) { return ListString(kWords, index); }

Int radioOfSpeed(Int speed) { return speed == 8 ? 5 : speed == 4 ? 4 : 3; }
Int speedOfRadio(Int item) { return item == 5 ? 8 : item == 4 ? 4 : 2; }

void drawFrames(const DialogPtr& dialog)
{
    if (const DItem* ok = dialog->item(kOK)) {
        PenSize(3, 3);
        FrameRoundRect(ok->rect.insetBy(-4, -4), 16, 16);
    }
    PenNormal();
    PenPat(qd.gray);
    FrameRect(kSpeedFrame);
    PenNormal();
}

void drawChoice()
{
    EraseRect(s->popup);
    FrameRect(s->popup);
    MoveTo(s->popup.left + 8, kBaseline);
    DrawString(word(s->huntTime + 1));
}

void drawTimeDialog(const DialogPtr& dialog)
{
    const PortScope port(dialog->port);
    if (!s->popupOnly)
        drawFrames(dialog);
    TextFont(0);
    TextSize(12);
    const Str255 label = word(1);
    s->popupLeft = StringWidth(label) + 18;
    s->popup = {kTop, s->popupLeft, kBottom, kRight};
    MoveTo(kLabelLeft, kBaseline);
    DrawString(label);
    drawChoice();
    MoveTo(s->popup.left + 3, s->popup.bottom);
    LineTo(s->popup.right, s->popup.bottom);
    LineTo(s->popup.right, s->popup.top + 3);
}

void flash(const DialogPtr& dialog, Int item)
{
    Int now = 0;
    HiliteDialogButton(dialog, item, 10);
    Delay(kFlashTicks, now);
    HiliteDialogButton(dialog, item, 0);
}

bool keyEnds(const DialogPtr& dialog, const EventRecord& event, Int& item)
{
    const Int character = event.message & charCodeMask;
    if (character == 13 || character == 3)
        item = kOK;
    else if (character == '.' && (event.modifiers & cmdKey) != 0)
        item = kCancel;
    else
        return false;
    flash(dialog, item);
    return true;
}

bool timeFilter(const DialogPtr& dialog, EventRecord& event, Int& item)
{
    switch (event.what) {
    case updateEvt:
        if (event.window() == dialog) {
            BeginUpdate(dialog);
            drawTimeDialog(dialog);
            DrawDialog(dialog);
            EndUpdate(dialog);
        }
        return false;
    case keyDown: return keyEnds(dialog, event, item);
    case mouseDown:
        if (!s->popup.contains(dialog->toLocal(event.where)))
            return false;
        item = kPopupHit;
        return true;
    default: return false;
    }
}

/// Lets the player pick the length of a hunt.
void runPopup(const DialogPtr& dialog)
{
    const PortScope port(dialog->port);
    TextFont(0);
    TextSize(12);
    const MenuHandle menu = GetMenu(kPopupMenu);
    if (!menu)
        return;
    InsertMenu(menu, -1);
    SetItemMark(menu, s->huntTime, kCheckMark);
    InvertRect(s->popup);
    Point corner{kTop, s->popupLeft};
    LocalToGlobal(corner);
    const Int choice = LoWord(PopUpMenuSelect(menu, corner.v, corner.h, s->huntTime));
    SetItemMark(menu, s->huntTime, 0);
    if (choice >= 1 && choice != s->huntTime)
        s->huntTime = choice;
    SetItemMark(menu, s->huntTime, kCheckMark);
    DeleteMenu(kPopupMenu);
    InvertRect(s->popup);
    drawChoice();
}

void markSpeed(const DialogPtr& dialog, Int on)
{
    for (Int item = kFirstSpeed; item <= kLastSpeed; ++item)
        if (const ControlHandle control = DialogControl(dialog, item))
            SetCtlValue(control, item == on ? 1 : 0);
}

} // namespace

void TimeDialog()
{
    const DialogPtr dialog = OpenModalDialog(kDialog);
    SelectWindow(dialog);
    const PortScope port(dialog->port);
    s->popupOnly = false;
    s->huntTime = gOptions.huntTime;
    Int speed = radioOfSpeed(gOptions.speed), hit = 0;
    markSpeed(dialog, speed);
    drawTimeDialog(dialog);
    while (hit != kOK && hit != kCancel) {
        ModalDialog(timeFilter, hit);
        if (hit >= kFirstSpeed && hit <= kLastSpeed) {
            speed = hit;
            markSpeed(dialog, speed);
        } else if (hit == kPopupHit) {
            runPopup(dialog);
        }
    }
    if (hit == kOK)
        UpdateOptions([&] {
            gOptions.huntTime = s->huntTime;
            gOptions.speed = speedOfRadio(speed);
        });
    CloseModalDialog(dialog);
}

} // namespace Wainroad
