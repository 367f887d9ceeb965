#include "Wainroad/Screens/Travel.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Trail.h"

namespace Wainroad {

namespace {

constexpr Rect kFirstDot{192, 294, 194, 296}; // in window coordinates, on the starting place

struct MapState {
    Int shownMiles = 0;
};
RunState<MapState> sMap;

Int trailItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item)) {
            sMap->shownMiles = 0;
            AddTimer(item, 15);
            TrailInit();
        }
        return 1;
    case kMsgDraw: DrawTrail(); return 1;
    case kMsgTimer:
        if (Held16(gPrev.miles) != sMap->shownMiles) {
            sMap->shownMiles = Held16(gPrev.miles);
            if (item.disabled == 0) {
                const ViewPortScope port(item);
                DrawTrail();
            }
        }
        return 1;
    case kMsgClose: gTrailDots = {}; return TimedItem(item, msg);
    default: return UserItem.fn(item, msg);
    }
}

} // namespace

const ViewProc TrailItem{trailItemProc};

void DrawTrail()
{
    constexpr Int kBlackColor = 33;
    if (gState.miles < 1)
        return;
    ForeColor(kBlackColor);
    Rect dot = kFirstDot;
    PaintRect(dot);
    DrawSection(0, dot);
    DrawSection((gState.route & 1) != 0 ? 1 : 2, dot);
    DrawSection(3, dot);
    DrawSection((gState.route & 2) != 0 ? 4 : 5, dot);
    DrawSection((gState.route & 4) != 0 ? 6 : 7, dot);
}

void DrawSection(Int section, Rect& dot)
{
    const Handle& steps =
        section >= 0 && section < I(gTrailDots.size()) ? gTrailDots[static_cast<std::size_t>(section)] : nullptr;
    if (!steps)
        return;
    Int count = 0, total = 0;
    SectionDots(section, count, total);
    const Int shown = std::min(count > 0 && total < count ? total : count, steps->count() / 2);
    for (Int i = 0; i < shown; ++i) {
        dot.offset(steps->s8(2 * i), steps->s8(2 * i + 1));
        PaintRect(dot);
    }
}

} // namespace Wainroad
