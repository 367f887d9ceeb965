#include "MacToolbox/Host/GameThread.h"

#include "MacToolbox/Base/Clock.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <atomic>
#include <deque>
#include <thread>
#include <utility>
#include <vector>

namespace MacToolbox {

namespace {

using Closures = std::vector<std::function<void()>>;

/// Game thread.
struct PumpState {
    std::deque<std::function<void()>> housekeeping; // grows while it runs; what runs stays at its address
    bool servicing = false;
};
RunState<PumpState> sPump;

/// Work from other threads.
struct Deferred {
    std::mutex lock;
    Closures closures;            // guarded by `lock`
    std::atomic<bool> any{false}; // true while `closures` is not empty
};
Deferred& deferred()
{
    static auto& work = *new Deferred;
    return work;
}
const AtRunStart sNoWork([] {
    deferred().closures.clear();
    deferred().any = false;
});

std::atomic<std::thread::id> sThread{};

Closures takeDeferred()
{
    const std::lock_guard lock(deferred().lock);
    deferred().any = false;
    return std::exchange(deferred().closures, {});
}

/// True until the end of the block, also when it is left by an exception.
class FlagScope {
public:
    explicit FlagScope(bool& flag) : flag_(flag) { flag_ = true; }
    ~FlagScope() { flag_ = false; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

private:
    bool& flag_;
};

} // namespace

void GameThread::start(std::function<void()> game, std::function<void()> exit)
{
    Platform::current().startGameThread([game = std::move(game), exit = std::move(exit)] {
        sThread = std::this_thread::get_id();
        game();
        Screen::shared().publish(true);
        Platform::current().post(exit);
    });
}

bool GameThread::isGameThread() { return sThread.load() == std::this_thread::get_id(); }

void GameThread::perform(std::function<void()> closure)
{
    {
        const std::lock_guard lock(deferred().lock);
        deferred().closures.push_back(std::move(closure));
        deferred().any = true;
    }
    const std::lock_guard lock(Input::cond());
    Input::cond().broadcast();
}

bool GameThread::deferredPending() { return deferred().any; }

void GameThread::service(bool force)
{
    if (sPump->servicing)
        return;
    Clock::current().yielded();
    const FlagScope servicing(sPump->servicing);
    if (deferredPending())
        for (const auto& closure : takeDeferred())
            closure();
    auto& housekeeping = sPump->housekeeping;
    for (std::size_t i = 0; i < housekeeping.size(); ++i)
        housekeeping[i]();
    Screen::shared().publish(force);
}

bool GameThread::isServicing() { return sPump->servicing; }

void GameThread::addHousekeeping(std::function<void()> closure) { sPump->housekeeping.push_back(std::move(closure)); }

} // namespace MacToolbox
