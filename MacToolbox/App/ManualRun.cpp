#include "MacToolbox/App/ManualRun.h"

#include "MacToolbox/App/Governor.h"
#include "MacToolbox/Base/RunState.h"

#include <condition_variable>
#include <mutex>
#include <utility>

namespace MacToolbox {

namespace {

/// Puts clock and platform in force until the end of the block.
class Installed {
public:
    Installed(ManualClock& clock, ManualPlatform& platform)
    {
        Clock::install(&clock);
        Platform::install(&platform);
    }
    ~Installed()
    {
        Platform::install(nullptr);
        Clock::install(nullptr);
    }
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;
};

} // namespace

void ManualPlatform::run(const std::string&, const std::function<void()>& begin)
{
    begin();
    if (const auto game = std::exchange(game_, nullptr))
        game();
    drainMain(); // the game's closure has returned, and its end is posted
}

void ManualPlatform::pumpMain()
{
    drainMain();
    clock_.yielded();
    clock_.sleep(kSecond / 100);
}

std::optional<std::string> ManualPlatform::environment(const std::string& name)
{
    if (!variables)
        return Platform::environment(name);
    const auto found = variables->find(name);
    return found == variables->end() ? std::nullopt : std::optional(found->second);
}

std::vector<std::string> ManualPlatform::resourceFolders()
{
    return resources.empty() ? Platform::resourceFolders() : resources;
}

int ManualRun::run(const std::function<void()>& program)
{
    const Installed installed(clock, platform);
    platform.adoptThread();
    clock.onYield = [this] {
        platform.drainMain();
        if (onYield)
            onYield();
    };
    startRunAfresh();
    Governor::installAtStart();
    try {
        program();
    } catch (const ManualPlatform::Exit& exit) {
        return exit.status;
    }
    return 0;
}

void onGameStack(const std::function<void()>& body)
{
    std::mutex mutex;
    std::condition_variable ended;
    bool done = false;
    Platform::current().Platform::startGameThread([&] {
        body();
        const std::lock_guard lock(mutex);
        done = true;
        ended.notify_one();
    });
    std::unique_lock lock(mutex);
    ended.wait(lock, [&] { return done; });
}

} // namespace MacToolbox
