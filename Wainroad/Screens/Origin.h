#pragma once

#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

/// Makes the top left of a view the origin of the current port until the end of the block, so that an item draws in its
/// own coordinates.
class OriginScope {
public:
    explicit OriginScope(const View& view)
        : old_(thePort->portRect.topLeft())
    {
        SetOrigin(old_.h - view.r.left, old_.v - view.r.top);
    }
    ~OriginScope() { SetOrigin(old_.h, old_.v); }
    OriginScope(const OriginScope&) = delete;
    OriginScope& operator=(const OriginScope&) = delete;

private:
    Point old_;
};

} // namespace Wainroad
