#include "MacToolbox/Base/Platform.h"

#include "MacToolbox/Base/HeadlessPlatform.h"

#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>

#include <pthread.h>
#include <pwd.h>
#include <unistd.h>

namespace MacToolbox {

namespace {

constexpr std::size_t kGameStack = 0x4000000; // bytes

std::atomic<Platform*> sCurrent{nullptr};

std::string homeFolder(Platform& platform)
{
    if (const auto home = platform.environment("HOME"); home && !home->empty())
        return *home;
    char text[4096];
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, text, sizeof text, &found) == 0 && found && found->pw_dir)
        return found->pw_dir;
    return ".";
}

std::string executableFolder()
{
    char path[4096];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    const std::string_view whole(path, length > 0 ? static_cast<std::size_t>(length) : 0);
    const auto slash = whole.rfind('/');
    return slash == std::string_view::npos ? "." : std::string(whole.substr(0, slash));
}

void* runBody(void* argument)
{
    const std::unique_ptr<std::function<void()>> body(static_cast<std::function<void()>*>(argument));
    pthread_setname_np(pthread_self(), "The Wainroad");
    (*body)();
    return nullptr;
}

} // namespace

void Platform::call(const std::function<void()>& block)
{
    if (isMainThread())
        return block();
    std::mutex mutex;
    std::condition_variable ended;
    bool done = false;
    post([&] {
        block();
        const std::lock_guard lock(mutex);
        done = true;
        ended.notify_one();
    });
    std::unique_lock lock(mutex);
    ended.wait(lock, [&] { return done; });
}

void Platform::startGameThread(std::function<void()> body)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
    pthread_attr_setstacksize(&attributes, kGameStack);
    pthread_t thread;
    auto owned = std::make_unique<std::function<void()>>(std::move(body));
    if (pthread_create(&thread, &attributes, runBody, owned.get()) != 0)
        exitProcess(1);
    (void)owned.release(); // the thread's
    pthread_attr_destroy(&attributes);
}

void Platform::exitProcess(int status)
{
    std::fflush(nullptr);
    std::_Exit(status);
}

void Platform::showPanel(const PanelRequest&, std::function<void(std::optional<std::string>)> done)
{
    done(std::nullopt);
}

bool Platform::soundWanted() { return environment("WR_MUTE") != "1" && !environment("WR_SCRIPT"); }

std::optional<std::string> Platform::environment(const std::string& name)
{
    const char* const value = std::getenv(name.c_str());
    return value ? std::optional<std::string>(value) : std::nullopt;
}

std::string Platform::dataFolder()
{
    if (auto folder = environment("WR_DATA")) {
        while (folder->size() > 1 && folder->back() == '/')
            folder->pop_back();
        return folder->empty() ? "." : *folder;
    }
    if (const auto data = environment("XDG_DATA_HOME"); data && data->starts_with('/'))
        return *data + "/The Wainroad";
    return homeFolder(*this) + "/.local/share/The Wainroad";
}

std::string Platform::programFolder() { return executableFolder(); }

std::vector<std::string> Platform::resourceFolders()
{
    const std::string here = programFolder();
    const std::string bundle = here + "/Wainroad_Wainroad.bundle";
    return {here, bundle, bundle + "/Resources", here + "/../share/wainroad"};
}

Platform& Platform::current()
{
    if (Platform* const platform = sCurrent.load(std::memory_order_acquire))
        return *platform;
    static auto& plain = *new HeadlessPlatform; // leaked: threads may ask to the very end
    return plain;
}

bool Platform::isInstalled() { return sCurrent.load(std::memory_order_acquire) != nullptr; }

void Platform::install(Platform* platform) { sCurrent.store(platform, std::memory_order_release); }

} // namespace MacToolbox
