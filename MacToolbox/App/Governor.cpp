#include "MacToolbox/App/Governor.h"

#include "MacToolbox/App/App.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Managers/Events.h"

namespace MacToolbox {

namespace {

constexpr Int kFreePolls = 6; // of each tick; two event calls make a pass of the game's loop

struct GovernorState {
    Int lastTick = 0;
    Int used = 0; // polls of this tick
};
RunState<GovernorState> sGovernor;

/// Runs in each event call after the service, so the frame is out before it waits. A quit request is not looked at:
/// it stays set for the run, while its key event is in the queue and ends the wait.
void rest()
{
    if (GameThread::isServicing())
        return;
    if (!Events::nothingPending()) {
        sGovernor->used = 0;
        return;
    }
    const Int tick = TickCount();
    if (tick != sGovernor->lastTick) {
        sGovernor->lastTick = tick;
        sGovernor->used = 0;
    }
    if (++sGovernor->used > kFreePolls)
        Input::waitUntil(endOfTick(tick));
}

} // namespace

void Governor::installAtStart()
{
    WRApp::willStart().push_back([] { Events::idleHooks().push_back(rest); });
}

} // namespace MacToolbox
