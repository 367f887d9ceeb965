#pragma once

#include "MacToolbox/Base/Clock.h"
#include "MacToolbox/Base/Geometry.h"
#include "MacToolbox/Base/Memory.h"
#include "MacToolbox/QuickDraw/QuickDraw.h" // GetMainDevice and its like

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string_view>

namespace MacToolbox {

// Clocks. Any thread.

/// Ticks since the first call, which answers 1.
Int TickCount();
/// The point of the clock at which the tick after `tick` begins.
Nanos endOfTick(Int tick);
/// Monotonic microseconds.
Int Microseconds();
/// Local seconds since 1 January 1904; with WR_DATE always noon of that day. May be below 0.
void GetDateTime(Int& seconds);
/// The seconds since 1904 of that day's noon, for a date of exactly the form "yyyy-MM-dd" that exists; else nothing.
std::optional<Int> noonOfDate(std::string_view date);
/// Waits that many ticks while the machine keeps running; a quit request ends it early, an event does not. Takes no
/// event. Game thread. @param finalTicks The tick at the end.
void Delay(Int ticks, Int& finalTicks);

// Timer tasks: called on the game thread, inside `GameThread::service`.

inline constexpr Int vType = 1; ///< the kind of queue element that a timer task is

/// A task that is called when its count runs out.
struct VBLTask {
    Int qType = vType;
    Int vblCount = 0; ///< ticks until the next call; 0 is never. The task sets it again itself to go on
    Int vblPhase = 0; ///< not used
    std::function<void(VBLTask&)> vblAddr;
};
using VBLTaskPtr = std::shared_ptr<VBLTask>;

/// Adds a task behind the others; nil is not added. @return Always 0.
OSErr VInstall(const VBLTaskPtr& task);
/// Removes every entry of this task. @return Always 0.
OSErr VRemove(const VBLTaskPtr& task);

// The machine, always the same.

struct SysEnvRec {
    Int environsVersion = 0, machineType = 0, systemVersion = 0, processor = 0;
    bool hasFPU = false, hasColorQD = false;
    Int keyBoardType = 0, atDrvrVersNum = 0, sysVRefNum = 0;
};
/// Describes the machine, whatever the version asked for. @return Always 0.
OSErr SysEnvirons(Int version, SysEnvRec& rec);

inline constexpr OSType gestaltSystemVersion = os("sysv"), gestaltAppleEventsAttr = os("evnt"),
                        gestaltStandardFileAttr = os("stdf"), gestaltQuickdrawVersion = os("qd  "),
                        gestaltAliasMgrAttr = os("alis"), gestaltFindFolderAttr = os("fold"),
                        gestaltMachineType = os("mach"), gestaltProcessorType = os("proc"), gestaltFPUType = os("fpu "),
                        gestaltAppleTalkVersion = os("atlk"), gestaltPhysicalRAMSize = os("ram "),
                        gestaltLogicalRAMSize = os("lram"), gestaltDisplayMgrAttr = os("dply"),
                        gestaltSoundAttr = os("snd ");
/// @return 0, or -5551 with result 0 for a selector that is not known.
OSErr Gestalt(OSType selector, Int& result);
/// What `Gestalt` knows, by selector; may be changed, for another machine. Each run begins with this one. Game thread.
std::map<OSType, Int>& gestaltAnswers();

inline constexpr Int OSTrap = 0, ToolTrap = 1;
/// The address of a trap; that of 0xA89F stands for "not implemented".
Int NGetTrapAddress(Int trap, Int type);
Int GetTrapAddress(Int trap);

// Bits.

constexpr Int BitAnd(Int a, Int b) { return a & b; }
constexpr Int BitOr(Int a, Int b) { return a | b; }
constexpr Int BitXor(Int a, Int b) { return a ^ b; }
/// Left for a count above 0, right with the sign for one below; any count is right.
constexpr Int BitShift(Int value, Int count)
{
    if (count >= 0)
        return count > 63 ? 0 : static_cast<Int>(static_cast<std::uint64_t>(value) << count);
    return value >> (count < -63 ? 63 : -count);
}

// Calls without effect.

template <typename Routine> void UnloadSeg(const Routine&) { }
template <typename Routine> void SetGrowZone(const Routine&) { }
inline OSErr ResrvMem(Int) { return noErr; }
inline Int SetCurrentA5() { return 0; }
inline Int SetA5(Int) { return 0; }
constexpr Int StripAddress(Int address) { return address; }

/// Publishes the last frame and ends the process with that status; 0 is the normal end. Game thread.
[[noreturn]] void ExitToShell(int status = 0);

} // namespace MacToolbox
