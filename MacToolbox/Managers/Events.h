#pragma once

#include "MacToolbox/Host/GameThread.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/QuickDraw/Region.h"

#include <array>
#include <functional>
#include <vector>

namespace MacToolbox {

/// The event pump. Game thread only.
struct Events {
    /// Run by every call that looks for an event, after the service and before the search.
    static std::vector<std::function<void()>>& idleHooks();

    /// Services, runs the idle hooks, and gives the next event that `mask` admits: an activation, then queued input,
    /// then an update, then a null event.
    /// @param remove  False leaves the event for the next call.
    /// @param wait    How many 1/60 s to wait when there is nothing; what arrives meanwhile is for the next call.
    /// @return False with a null event, which has `when`, `where` and `modifiers` set.
    static bool nextEvent(Int mask, EventRecord& event, bool remove, Int wait);

    /// True if nothing is queued, no window waits for its activation or its update, and no work is deferred.
    static bool nothingPending();
};

/// Takes the next event that `mask` admits. Bit n admits events of kind n; `everyEvent` admits all.
bool GetNextEvent(Int mask, EventRecord& event);
/// The same, but waits for up to `sleep` ticks when there is nothing, and never longer than 2. `mouseRgn` is not used.
bool WaitNextEvent(Int mask, EventRecord& event, Int sleep, const RgnHandle& mouseRgn);
/// The next event, which stays in its place.
bool EventAvail(Int mask, EventRecord& event);
/// The next mouse or key event, which stays in its place. Does not service.
bool OSEventAvail(Int mask, EventRecord& event);
/// Removes every queued event whose kind is in `whichMask`; `stopMask` is not used.
void FlushEvents(Int whichMask, Int stopMask);
/// Queues an event with the current tick and mouse. @return Always 0.
OSErr PostEvent(Int what, Int message);
/// Lets the machine run: deferred work, timer tasks, the frame.
void SystemTask();
/// Each of these services first.
bool Button();
/// True while the button is held since the last press; false once a `mouseUp` is queued. Waits up to a tick.
bool StillDown();
/// As `StillDown`, but takes the queued `mouseUp` away.
bool WaitMouseUp();
/// The mouse in local coordinates of the current port.
void GetMouse(Point& point);

/// 128 bits; bit (k & 7) of byte (k >> 3) is set for each host key code k that is down.
using KeyMap = std::array<std::uint8_t, 16>;
void GetKeys(KeyMap& keys);
constexpr Int GetDblTime() { return 30; }
constexpr Int GetCaretTime() { return 32; }

} // namespace MacToolbox
