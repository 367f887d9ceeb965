#pragma once

#include "MacToolbox/Base/Clock.h"
#include "MacToolbox/Base/Geometry.h"

#include <array>
#include <atomic>
#include <deque>
#include <map>
#include <memory>
#include <optional>

namespace MacToolbox {

struct WindowRecord; // a window of the window manager

// Event kinds.
inline constexpr Int nullEvent = 0, mouseDown = 1, mouseUp = 2, keyDown = 3, keyUp = 4, autoKey = 5, updateEvt = 6,
                     diskEvt = 7, activateEvt = 8, osEvt = 15, kHighLevelEvent = 23;

// Event masks.
inline constexpr Int mDownMask = 2, mUpMask = 4, keyDownMask = 8, keyUpMask = 16, autoKeyMask = 32, updateMask = 64,
                     diskMask = 128, activMask = 256, highLevelEventMask = 1024, osMask = 32768, everyEvent = 65535;

// Parts of `message`.
inline constexpr Int charCodeMask = 255, keyCodeMask = 65280, suspendResumeMessage = 1, resumeFlag = 1;

// Bits of `modifiers`. `btnState` set means that the button is up.
inline constexpr Int activeFlag = 1, btnState = 128, cmdKey = 256, shiftKey = 512, alphaLock = 1024, optionKey = 2048,
                     controlKey = 4096;

/// One event.
struct EventRecord {
    Int what = nullEvent;
    /// Keys: the character in bits 0 to 7 and the host key code in bits 8 to 15. Update and activate events: a window
    /// tag. A click that stands for a menu choice: a negative menu tag. Else 0.
    Int message = 0;
    Int when = 0; ///< ticks
    Point where;  ///< global coordinates
    Int modifiers = 0;

    /// The window whose tag `message` holds, whatever the kind of event; nil if there is none. Game thread.
    std::shared_ptr<WindowRecord> window() const;
    /// Stores the window's tag, a new one at its first use, in `message`; nil changes nothing. Game thread.
    void setWindow(const std::shared_ptr<WindowRecord>& window);
};

/// The state of mouse and keyboard, and the queue of events. Guarded by one leaf lock; any thread, except as noted.
class Input {
public:
    static constexpr std::size_t kMostEvents = 100;

    /// The lock and condition of all this; broadcast at each new event and each deferred closure.
    static Condition& cond();

    /// Appends an event and drops one if the queue is full: the first `autoKey`, else the oldest. Lock held.
    static void enqueue(const EventRecord& event);
    /// Puts an event back at the head of the queue, and wakes nobody. Takes the lock.
    static void putBack(const EventRecord& event);
    /// Appends an event as it is. Takes the lock.
    static void post(const EventRecord& event);
    /// The mouse is at (h, v), global, with the button down or up; a change of the button makes an event.
    static void mouse(Int h, Int v, bool down);
    /// A key went down (an event) or up (none). Codes from 128 up leave no mark in the key map.
    static void key(Int character, Int keyCode, Int modifiers, bool down, bool isRepeat = false);
    static void modifiers(Int modifiers);
    /// An item of a menu was chosen: a click at v 2, h 2 whose negative message stands for the choice.
    static void menuChoice(Int menuID, Int item);
    /// The player asks to quit: sets `quitRequested` and posts Command-Q.
    static void requestQuit();
    /// Posts Command-Q alone.
    static void quitKey();

    /// A stretch of the game in which keys go unseen, so that only `quitRequested` tells of a quit. Game thread.
    class Unseen {
    public:
        Unseen() { ++depth_; }
        ~Unseen() { --depth_; }
        Unseen(const Unseen&) = delete;
        Unseen& operator=(const Unseen&) = delete;

    private:
        friend class Input;
        static std::atomic<Int> depth_;
    };
    /// True within such a stretch.
    static bool keysUnseen() { return Unseen::depth_ > 0; }

    /// The first event that `mask` admits, in queue order; with `remove` it leaves the queue.
    static std::optional<EventRecord> take(Int mask, bool remove);
    /// Removes every event that `mask` admits.
    static void flush(Int mask);
    /// True if no event is queued.
    static bool isEmpty();
    /// If the queue is empty and no deferred work waits, waits for an event, a broadcast or that many 1/60 s.
    static void wait(Int ticks);
    /// The same, until the clock reaches `deadline`.
    static void waitUntil(Nanos deadline);

    static Point mouseLocation();
    static bool isButtonDown();
    /// The modifier bits now, with `btnState` if the button is up.
    static Int modifiersNow();
    /// 128 flags by host key code.
    static std::array<bool, 128> keysDown();
    /// Takes the choice that a menu tag (positive) stands for: (menu id << 16) | (item & 0xFFFF), or 0 if it is gone.
    static Int takeMenuChoice(Int tag);

    /// True from the first quit request on. Neither the Toolbox nor the game clears it; the host does, once the player
    /// has taken the quit back.
    static std::atomic<bool> quitRequested;
};

} // namespace MacToolbox
