#include "MacToolbox/Managers/Events.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"

#include <algorithm>
#include <mutex>

namespace MacToolbox {

namespace {

constexpr Int kLongestSleep = 2; // ticks
constexpr Int kMouseAndKeys = 62;

RunState<std::vector<std::function<void()>>> sIdleHooks;

/// An event of now, with no kind or message yet.
EventRecord eventNow(Int modifiers) { return {nullEvent, 0, TickCount(), Input::mouseLocation(), modifiers}; }

bool nextActivation(EventRecord& event, bool remove)
{
    auto& pending = WindowManager::shared().pendingActivates;
    if (pending.empty())
        return false;
    event = eventNow(pending.front().active ? activeFlag : 0);
    event.what = activateEvt;
    event.setWindow(pending.front().window);
    if (remove)
        pending.pop_front();
    return true;
}

/// The front window that waits for an update, or nil.
WindowPtr windowToUpdate()
{
    const auto& windows = WindowManager::shared().windows;
    const auto found = std::ranges::find_if(
        windows, [](const WindowPtr& w) { return w->visible && !w->updateRgn.bounds().isEmpty(); });
    return found == windows.end() ? nullptr : *found;
}

bool nextUpdate(EventRecord& event)
{
    const WindowPtr window = windowToUpdate();
    if (!window)
        return false;
    event = eventNow(0);
    event.what = updateEvt;
    event.setWindow(window);
    return true;
}

/// A click that stands for a menu choice leaves that choice for `MenuSelect`.
void noteMenuEvent(const EventRecord& event)
{
    if (event.what == mouseDown && event.message < 0)
        MenuBar::pendingChoice = Input::takeMenuChoice(-event.message);
}

} // namespace

std::vector<std::function<void()>>& Events::idleHooks() { return *sIdleHooks; }

bool Events::nextEvent(Int mask, EventRecord& event, bool remove, Int wait)
{
    GameThread::service();
    auto& hooks = idleHooks();
    for (std::size_t i = 0; i < hooks.size(); ++i)
        hooks[i]();
    if ((mask & activMask) != 0 && nextActivation(event, remove))
        return true;
    if (const auto queued = Input::take(mask, remove)) {
        event = *queued;
        if (remove)
            noteMenuEvent(event);
        return true;
    }
    if ((mask & updateMask) != 0 && nextUpdate(event))
        return true;
    if (wait > 0)
        Input::wait(wait);
    event = eventNow(Input::modifiersNow()); // after the wait, so that its values are fresh
    return false;
}

bool Events::nothingPending()
{
    return Input::isEmpty() && !GameThread::deferredPending() && WindowManager::shared().pendingActivates.empty()
        && !windowToUpdate();
}

bool GetNextEvent(Int mask, EventRecord& event) { return Events::nextEvent(mask, event, true, 0); }

bool WaitNextEvent(Int mask, EventRecord& event, Int sleep, const RgnHandle&)
{
    return Events::nextEvent(mask, event, true, std::min(sleep, kLongestSleep));
}

bool EventAvail(Int mask, EventRecord& event) { return Events::nextEvent(mask, event, false, 0); }

bool OSEventAvail(Int mask, EventRecord& event)
{
    const auto queued = Input::take(mask & kMouseAndKeys, false);
    event = queued ? *queued : eventNow(Input::modifiersNow());
    return queued.has_value();
}

void FlushEvents(Int whichMask, Int) { Input::flush(whichMask); }

OSErr PostEvent(Int what, Int message)
{
    EventRecord event = eventNow(0);
    event.what = what;
    event.message = message;
    Input::post(event);
    return noErr;
}

void SystemTask() { GameThread::service(); }

bool Button()
{
    GameThread::service();
    return Input::isButtonDown();
}

bool StillDown()
{
    GameThread::service();
    Input::wait(1);
    return !Input::take(mUpMask, false) && Input::isButtonDown();
}

bool WaitMouseUp()
{
    GameThread::service();
    Input::wait(1);
    if (!Input::take(mUpMask, false) && Input::isButtonDown())
        return true;
    Input::take(mUpMask, true);
    return false;
}

void GetMouse(Point& point)
{
    GameThread::service();
    const Point global = Input::mouseLocation();
    const Rect origin = thePort ? thePort->portBits.bounds : Rect{};
    point = {global.v + origin.top, global.h + origin.left};
}

void GetKeys(KeyMap& keys)
{
    keys.fill(0);
    const auto down = Input::keysDown();
    for (std::size_t k = 0; k < down.size(); ++k)
        if (down[k])
            keys[k >> 3] = static_cast<std::uint8_t>(keys[k >> 3] | 1 << (k & 7));
}

} // namespace MacToolbox
