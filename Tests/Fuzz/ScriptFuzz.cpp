// A script file: read as the environment names it, and played to its end.

#include "MacToolbox/App/ScriptHost.h"
#include "MacToolbox/Base/HeadlessPlatform.h"
#include "MacToolbox/Base/ManualClock.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

using namespace MacToolbox;

namespace {

/// Names the input as the script, and forgets what is posted.
class FuzzPlatform final : public HeadlessPlatform {
public:
    std::optional<std::string> environment(const std::string& name) override
    {
        return name == "WR_SCRIPT" ? std::optional(script)
            : name == "WR_OUT"     ? std::optional<std::string>("/dev/null")
                                   : std::nullopt;
    }
    void post(std::function<void()>) override { }

    std::string script;
};

/// The input as a file in memory.
class MemoryFile {
public:
    explicit MemoryFile(const std::string& text) : file_(memfd_create("script", MFD_CLOEXEC))
    {
        if (file_ < 0 || write(file_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
            std::abort();
    }
    ~MemoryFile() { close(file_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    std::string path() const { return "/proc/self/fd/" + std::to_string(file_); }

private:
    int file_;
};

void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static auto& platform = *new FuzzPlatform;
    [[maybe_unused]] static const bool quiet = std::freopen("/dev/null", "w", stdout) != nullptr;
    ManualClock clock;
    Clock::install(&clock);
    Platform::install(&platform);
    startRunAfresh();

    std::string text(reinterpret_cast<const char*>(data), size);
    std::ranges::replace(text, '/', '_'); // a shot must not write anywhere; out of /dev/null comes no file
    const MemoryFile file(text);
    platform.script = file.path();
    Screen::shared().setViewport({20, 0, 24, 8}); // a small picture for `shot`
    Screen::shared().publish(true);
    ScriptHost::start();

    Script script(text, "/dev/null"); // also text that is not UTF-8
    const std::size_t mostSteps = 4 * size + 4;
    std::size_t steps = 0;
    for (; const auto wait = script.step(); ++steps) {
        require(*wait >= 0 && *wait <= 1'000'000'000 * kSecond);
        require(steps < mostSteps);
    }
    require(!script.step());
    const Point mouse = Input::mouseLocation();
    require(std::abs(mouse.h) < INT64_C(1) << 33 && std::abs(mouse.v) < INT64_C(1) << 33);
    Input::flush(everyEvent);
    require(Input::isEmpty());

    Platform::install(nullptr);
    Clock::install(nullptr);
    return 0;
}
