#pragma once

#include "MacToolbox/QuickDraw/Fonts.h"
#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

/// Makes the top left of a view the origin of the current port until the end of the block, so that an item draws in its
/// own coordinates.
class OriginScope {
public:
    explicit OriginScope(const View& view) : old_(thePort->portRect.topLeft())
    {
        SetOrigin(old_.h - view.r.left, old_.v - view.r.top);
    }
    ~OriginScope() { SetOrigin(old_.h, old_.v); }
    OriginScope(const OriginScope&) = delete;
    OriginScope& operator=(const OriginScope&) = delete;

private:
    Point old_;
};

/// Draws a text in the current port, so that it ends at `right`.
inline void DrawToRight(const Str255& text, Int right, Int baseline)
{
    MoveTo(right - StringWidth(text), baseline);
    DrawString(text);
}

} // namespace Wainroad
