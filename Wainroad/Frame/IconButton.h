#pragma once

// The icon button: a key of 42 by 46 pixels with an icon, and its title to the right. In a panel it is a view item.

#include "Wainroad/Frame/Images.h"
#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

/// What an icon button's view keeps in `data`, as `std::shared_ptr<IconButtonRec>`.
struct IconButtonRec {
    Int hilite = 0; ///< 0 normal, 1-253 pressed, 254 inactive, 255 inactive with a grey title
    Int iconID = 0;
    Handle icon;     ///< nil if missing
    Str255 title{0}; ///< a carriage return breaks a line
};
/// The record of an icon button; nil for any other view.
std::shared_ptr<IconButtonRec> iconButton(View& view);

extern ImageListRef gButtonImages; ///< frame 0 the key up, frame 1 the key down
void LoadButtonImages();

extern const ViewProc IconButtonHandler;
/// Claims a resource control whose `CNTL` names the icon button; then, through `IconButtonHandler`, is that button.
/// @return 1 if it took the message.
Int CustomControlItem(View& view, Msg& msg);
/// Changes an icon; drawn at once with `now`, else at the next update. Nothing if the button has this icon already.
void SetIconButtonIcon(View& panel, Int item, Int iconID, bool now);

/// The key's rectangle in the rectangle of a view or control.
Rect IconKeyRect(const Rect& r);
void DrawButtonFrame(View& view, Int state);
void DrawButtonTitle(View& view);
/// Lines of a counted string.
Int CountLines(const Str255& title);
/// Draws the lines of a title beside the key in `r`, in the port's font, from the last line up.
void DrawTitleLines(const Rect& r, const Str255& title);

} // namespace Wainroad
