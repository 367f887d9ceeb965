#include "MacToolbox/Host/Input.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/GameThread.h"
#include "MacToolbox/Host/Misc.h"

#include <algorithm>

namespace MacToolbox {

namespace {

constexpr Int kKeyCodeQ = 12;

/// Guarded by the lock of `Input::cond`.
struct InputState {
    std::deque<EventRecord> queue;
    Int mods = 0;
    bool button = false;
    Point mouse{180, 256};
    std::array<bool, 128> keysDown{};
    std::map<Int, Int> menuChoices; // by tag
    Int nextMenuTag = 1;
};
RunState<InputState> sInput;

/// Windows by tag. Strong references: a tag means its window for the whole run. Game thread.
struct WindowTags {
    std::map<Int, std::shared_ptr<WindowRecord>> windows;
    Int next = 1;
};
RunState<WindowTags> sTags;

const AtRunStart sNoQuit([] { Input::quitRequested = false; });

using Lock = std::lock_guard<Condition>;

bool admits(Int mask, const EventRecord& event)
{
    return event.what >= 0 && event.what <= 63 && (static_cast<std::uint64_t>(mask) >> event.what & 1) != 0;
}

/// Lock held.
Int stateOfModifiers() { return sInput->mods | (sInput->button ? 0 : btnState); }

/// Appends an event of now with that kind and message, and wakes the waiters. Lock held.
void enqueueNow(Int what, Int message, Point where, Int modifiers)
{
    Input::enqueue({what, message, TickCount(), where, modifiers});
    Input::cond().broadcast();
}

void dropOne(std::deque<EventRecord>& queue)
{
    auto victim = std::ranges::find(queue, autoKey, &EventRecord::what);
    if (victim == queue.end())
        victim = queue.begin();
    if (victim->what == mouseDown && victim->message < 0)
        sInput->menuChoices.erase(-victim->message);
    queue.erase(victim);
}

} // namespace

std::atomic<bool> Input::quitRequested{false};
std::atomic<Int> Input::Unseen::depth_{0};

std::shared_ptr<WindowRecord> EventRecord::window() const
{
    const auto found = sTags->windows.find(message);
    return found == sTags->windows.end() ? nullptr : found->second;
}

void EventRecord::setWindow(const std::shared_ptr<WindowRecord>& window)
{
    if (!window)
        return;
    auto& windows = sTags->windows;
    auto found = std::ranges::find_if(windows, [&](const auto& entry) { return entry.second == window; });
    if (found == windows.end())
        found = windows.emplace(sTags->next++, window).first;
    message = found->first;
}

Condition& Input::cond()
{
    static auto& condition = *new Condition; // leaked: threads may wait on it to the end of the process
    return condition;
}

void Input::enqueue(const EventRecord& event)
{
    auto& queue = sInput->queue;
    if (queue.size() >= kMostEvents)
        dropOne(queue);
    queue.push_back(event);
}

void Input::putBack(const EventRecord& event)
{
    const Lock lock(cond());
    sInput->queue.push_front(event);
}

void Input::post(const EventRecord& event)
{
    const Lock lock(cond());
    enqueue(event);
    cond().broadcast();
}

void Input::mouse(Int h, Int v, bool down)
{
    const Lock lock(cond());
    sInput->mouse = {v, h};
    if (down == sInput->button)
        return;
    sInput->button = down;
    enqueueNow(down ? mouseDown : mouseUp, 0, sInput->mouse, stateOfModifiers());
}

void Input::key(Int character, Int keyCode, Int modifiers, bool down, bool isRepeat)
{
    const Lock lock(cond());
    sInput->mods = modifiers;
    if (keyCode >= 0 && keyCode < 128)
        sInput->keysDown[static_cast<std::size_t>(keyCode)] = down;
    if (down)
        enqueueNow(
            isRepeat ? autoKey : keyDown, (keyCode * 256 | character) & 0xFFFF, sInput->mouse, stateOfModifiers());
}

void Input::modifiers(Int modifiers)
{
    const Lock lock(cond());
    sInput->mods = modifiers;
}

void Input::menuChoice(Int menuID, Int item)
{
    const Lock lock(cond());
    const Int tag = sInput->nextMenuTag++;
    sInput->menuChoices[tag] = static_cast<Int>(static_cast<std::uint64_t>(menuID) << 16) | (item & 0xFFFF);
    enqueueNow(mouseDown, -tag, {2, 2}, sInput->mods | btnState);
}

void Input::requestQuit()
{
    quitRequested = true;
    quitKey();
}

void Input::quitKey() { key('q', kKeyCodeQ, cmdKey, true); }

std::optional<EventRecord> Input::take(Int mask, bool remove)
{
    const Lock lock(cond());
    auto& queue = sInput->queue;
    const auto found = std::ranges::find_if(queue, [mask](const EventRecord& event) { return admits(mask, event); });
    if (found == queue.end())
        return std::nullopt;
    const EventRecord event = *found;
    if (remove)
        queue.erase(found);
    return event;
}

void Input::flush(Int mask)
{
    const Lock lock(cond());
    std::erase_if(sInput->queue, [mask](const EventRecord& event) { return admits(mask, event); });
}

bool Input::isEmpty()
{
    const Lock lock(cond());
    return sInput->queue.empty();
}

void Input::wait(Int ticks) { waitUntil(Clock::current().now() + std::clamp<Int>(ticks, 0, 1'000'000) * kSecond / 60); }

void Input::waitUntil(Nanos deadline)
{
    const Lock lock(cond());
    // Deferred work is looked at under the lock that `perform` takes before it wakes: no wake-up is lost.
    if (sInput->queue.empty() && !GameThread::deferredPending())
        cond().waitUntil(deadline);
}

Point Input::mouseLocation()
{
    const Lock lock(cond());
    return sInput->mouse;
}

bool Input::isButtonDown()
{
    const Lock lock(cond());
    return sInput->button;
}

Int Input::modifiersNow()
{
    const Lock lock(cond());
    return stateOfModifiers();
}

std::array<bool, 128> Input::keysDown()
{
    const Lock lock(cond());
    return sInput->keysDown;
}

Int Input::takeMenuChoice(Int tag)
{
    const Lock lock(cond());
    const auto found = sInput->menuChoices.find(tag);
    if (found == sInput->menuChoices.end())
        return 0;
    const Int choice = found->second;
    sInput->menuChoices.erase(found);
    return choice;
}

} // namespace MacToolbox
