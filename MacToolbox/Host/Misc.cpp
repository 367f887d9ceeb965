#include "MacToolbox/Host/Misc.h"

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/GameThread.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <utility>
#include <vector>

namespace MacToolbox {

namespace {

constexpr Int kSeconds1904To1970 = 2082844800;
constexpr Int kMostCatchUp = 120; // ticks
constexpr OSErr kGestaltUndefSelector = -5551;
constexpr Int kUnimplementedTrap = 0xA89F, kOtherUnimplementedTrap = 0xAB03, kTrapBase = 0x400000;

constexpr Nanos kNotStarted = -1;
std::atomic<Nanos> sStartTime{kNotStarted};
const AtRunStart sFirstTick([] { sStartTime = kNotStarted; });

/// Ticks since the first use, from 0, at the time `now`.
std::uint64_t ticksAt(Nanos now)
{
    Nanos start = kNotStarted;
    if (sStartTime.compare_exchange_strong(start, now))
        return 0;
    return static_cast<std::uint64_t>(std::max<Nanos>(now - start, 0)) / static_cast<std::uint64_t>(kTickNanos);
}

struct VBLState {
    std::vector<VBLTaskPtr> tasks;
    bool hooked = false;
    bool running = false;
    Int lastTick = 0; // 0 before the first pump
};
RunState<VBLState> sVBL;

void runTasksOnce()
{
    const auto tasks = sVBL->tasks; // as they stand: a task that is removed meanwhile still gets its turn
    for (const auto& task : tasks) {
        const Int count = task->vblCount;
        if (count < 1)
            continue;
        task->vblCount = count - 1;
        if (count == 1 && task->vblAddr)
            task->vblAddr(*task);
    }
}

void pumpTasks()
{
    if (sVBL->running)
        return;
    struct Running {
        Running() { sVBL->running = true; }
        ~Running() { sVBL->running = false; }
    } const running;
    const Int now = TickCount();
    const Int last = sVBL->lastTick == 0 ? now : sVBL->lastTick;
    sVBL->lastTick = now;
    for (Int pass = std::min(now - last, kMostCatchUp); pass > 0; --pass)
        runTasksOnce();
}

const std::map<OSType, Int> kThisMachine{
    {gestaltSystemVersion, 1793},
    {gestaltAppleEventsAttr, 1},
    {gestaltStandardFileAttr, 0},
    {gestaltQuickdrawVersion, 0},
    {gestaltAliasMgrAttr, 1},
    {gestaltFindFolderAttr, 1},
    {gestaltMachineType, 5},
    {gestaltProcessorType, 1},
    {gestaltFPUType, 0},
    {gestaltAppleTalkVersion, 0},
    {gestaltPhysicalRAMSize, 0x400000},
    {gestaltLogicalRAMSize, 0x400000},
};

RunState<std::map<OSType, Int>> sMachine;

bool isDigits(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

int number(std::string_view digits)
{
    int value = 0;
    for (const char c : digits)
        value = value * 10 + (c - '0');
    return value;
}

} // namespace

Int TickCount() { return static_cast<Int>(ticksAt(Clock::current().now())) + 1; }

Nanos endOfTick(Int tick)
{
    const Nanos start = sStartTime;
    return (start == kNotStarted ? 0 : start) + tick * kTickNanos;
}

Int Microseconds() { return Clock::current().now() / 1000; }

std::optional<Int> noonOfDate(std::string_view date)
{
    if (date.size() != 10 || date[4] != '-' || date[7] != '-')
        return std::nullopt;
    const auto year = date.substr(0, 4), month = date.substr(5, 2), day = date.substr(8, 2);
    if (!isDigits(year) || !isDigits(month) || !isDigits(day))
        return std::nullopt;
    const std::chrono::year_month_day civil{std::chrono::year(number(year)),
        std::chrono::month(static_cast<unsigned>(number(month))), std::chrono::day(static_cast<unsigned>(number(day)))};
    if (!civil.ok())
        return std::nullopt;
    const Int days = std::chrono::sys_days(civil).time_since_epoch().count();
    return days * 86400 + 43200 + kSeconds1904To1970; // local noon, whatever the zone
}

void GetDateTime(Int& seconds)
{
    if (const auto date = Platform::current().environment("WR_DATE"))
        if (const auto noon = noonOfDate(*date)) {
            seconds = *noon;
            return;
        }
    const auto now = static_cast<std::time_t>(Clock::current().wallSeconds());
    std::tm local{};
    localtime_r(&now, &local);
    seconds = static_cast<Int>(now) + local.tm_gmtoff + kSeconds1904To1970;
}

void Delay(Int ticks, Int& finalTicks)
{
    const Int target = TickCount() + std::min<Int>(ticks, INT32_MAX);
    const Input::Unseen unseen;
    while (TickCount() < target) {
        GameThread::service();
        Input::wait(1);
        if (Input::quitRequested)
            break;
    }
    finalTicks = TickCount();
}

OSErr VInstall(const VBLTaskPtr& task)
{
    if (!task)
        return noErr;
    if (!std::exchange(sVBL->hooked, true))
        GameThread::addHousekeeping(pumpTasks);
    sVBL->tasks.push_back(task);
    return noErr;
}

OSErr VRemove(const VBLTaskPtr& task)
{
    std::erase(sVBL->tasks, task);
    return noErr;
}

OSErr SysEnvirons(Int, SysEnvRec& rec)
{
    rec = {2, 4, 1793, 1, false, false, 4, 0, -1};
    return noErr;
}

std::map<OSType, Int>& gestaltAnswers()
{
    if (sMachine->empty())
        *sMachine = kThisMachine;
    return *sMachine;
}

OSErr Gestalt(OSType selector, Int& result)
{
    const auto found = gestaltAnswers().find(selector);
    const bool known = found != gestaltAnswers().end();
    result = known ? found->second : 0;
    return known ? noErr : kGestaltUndefSelector;
}

Int NGetTrapAddress(Int trap, Int)
{
    const Int number = trap & 0xFFFF;
    return number == kUnimplementedTrap || number == kOtherUnimplementedTrap ? kTrapBase : kTrapBase | number;
}

Int GetTrapAddress(Int trap) { return NGetTrapAddress(trap, OSTrap); }

void ExitToShell(int status)
{
    Screen::shared().publish(true);
    Platform::current().post([status] { Platform::current().exitProcess(status); });
    for (;;) {
        Clock::current().yielded();
        Clock::current().sleep(kSecond);
    }
}

} // namespace MacToolbox
