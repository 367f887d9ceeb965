#include "Wainroad/Screens/Introduction.h"

#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/Picture.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Alerts.h"
#include "Wainroad/Screens/ModalDialogs.h"

#include <algorithm>

namespace Wainroad {

namespace {

enum IntroductionItems : Int { kNext = 1, kDone = 2, kPrevious = 3, kRing = 4, kPage = 5 };
constexpr Int kDialog = 2050, kFirstPicture = 2050, kPages = 3;
constexpr Int kPictureBottom = 266;
constexpr Int kDim = 255;

void hiliteButtons(const DialogPtr& dialog, Int previous, Int next)
{
    HiliteDialogButton(dialog, kNext, next);
    HiliteDialogButton(dialog, kPrevious, previous);
}

void drawPage(const DialogPtr& dialog, Int)
{
    Rect paper = dialog->portRect();
    paper.bottom = std::min(paper.bottom, kPictureBottom);
    EraseRect(paper);
    const Handle picture = GetPicture(kFirstPicture - 1 + dialog->refCon);
    if (!picture || picture->count() < 10)
        Fatal(ResError(), "PictProc");
    DrawPicture(picture, picture->rect(2).offsetBy(10, 6));
}

/// Turns to a page: the buttons that lead on, the ring, the picture.
void showPage(const DialogPtr& dialog, Int page)
{
    dialog->refCon = page;
    hiliteButtons(dialog, page == 1 ? kDim : 0, page == kPages ? kDim : 0);
    SetDefaultButton(dialog, page == kPages ? kDone : kNext, kRing);
    const PortScope port(dialog->port);
    InvalRect(dialog->portRect());
    BeginUpdate(dialog);
    EraseRect(dialog->portRect());
    EndUpdate(dialog);
    DrawDialog(dialog);
}

} // namespace

void Introduction()
{
    const DialogPtr dialog = OpenModalDialog(kDialog);
    hiliteButtons(dialog, kDim, 0);
    SetDefaultButton(dialog, kNext, kRing);
    SetDialogDrawing(dialog, kPage, drawPage);
    dialog->refCon = 1;
    for (Int hit = 0; hit != kDone;) {
        ModalDialog(StdFilter, hit);
        const Int step = hit == kNext ? 1 : hit == kPrevious ? -1 : 0;
        const Int page = std::clamp<Int>(dialog->refCon + step, 1, kPages);
        if (hit != kDone && page != dialog->refCon)
            showPage(dialog, page);
    }
    CloseModalDialog(dialog);
}

} // namespace Wainroad
