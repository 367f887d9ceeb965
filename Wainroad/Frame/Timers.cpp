#include "Wainroad/Frame/Panels.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/Misc.h"

namespace Wainroad {

struct ViewTimer {
    Int count = 0, interval = 0; ///< in effective ticks
    View* view = nullptr;        ///< nil is a free slot
};
struct TimerState {
    std::array<ViewTimer, 16> slots;
    Int count = 0;
    Int lastTick = 0;
};
static RunState<TimerState> sTimers;

void TimersInit()
{
    *sTimers = {};
    sTimers->lastTick = TickCount();
}

void TimersResume() { sTimers->lastTick = TickCount(); }

Int TimerCount() { return sTimers->count; }

void AddTimer(View& view, Int interval)
{
    for (ViewTimer& slot : sTimers->slots) {
        if (!slot.view) {
            slot = {0, interval, &view};
            ++sTimers->count;
            return;
        }
    }
}

static bool removeOne(const View& view)
{
    for (ViewTimer& slot : sTimers->slots) {
        if (slot.view == &view) {
            slot = {};
            --sTimers->count;
            return true;
        }
    }
    return false;
}

void RemoveTimer(View& view) { removeOne(view); }

void RemoveTimers(View& view)
{
    while (removeOne(view)) { }
}

void TimersRun()
{
    if (sTimers->count == 0 || !gRootView)
        return;
    const ViewPortScope port(*gRootView);
    const Int now = TickCount();
    const bool advanced = sTimers->lastTick < now;
    if (advanced)
        sTimers->lastTick = now;
    // A handler may free slots and fill them anew: each is looked at when its turn comes.
    for (ViewTimer& slot : sTimers->slots) {
        if (!slot.view || (!advanced && slot.interval != 0))
            continue;
        if (++slot.count < slot.interval)
            continue;
        slot.count = 0;
        SendMsg(*slot.view, kMsgTimer);
    }
}

} // namespace Wainroad
