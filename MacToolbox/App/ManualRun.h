#pragma once

#include "MacToolbox/Base/HeadlessPlatform.h"
#include "MacToolbox/Base/ManualClock.h"

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace MacToolbox {

/// The machine of a run under the manual clock: one thread is the main thread and the game's at once, and the end of
/// the process is the end of the run.
class ManualPlatform final : public HeadlessPlatform {
public:
    /// Thrown by `exitProcess`, and by nothing else; only the runner catches it.
    struct Exit {
        int status;
    };

    explicit ManualPlatform(ManualClock& clock) : clock_(clock) { }

    void run(const std::string& title, const std::function<void()>& begin) override;
    void startGameThread(std::function<void()> body) override { game_ = std::move(body); }
    void pumpMain() override;
    [[noreturn]] void exitProcess(int status) override { throw Exit{status}; }
    std::optional<std::string> environment(const std::string& name) override;
    std::vector<std::string> resourceFolders() override;
    void statusChanged(const std::string& text) override { told = text; }

    /// Makes the calling thread the main thread.
    void adoptThread() { main_ = std::this_thread::get_id(); }
    /// Runs the blocks that were posted to the main queue.
    void drainMain() { queue_.drain(); }

    /// If there, the run's environment in place of the process's.
    std::optional<std::map<std::string, std::string>> variables;
    /// If there, the folders of resource files in place of the executable's.
    std::vector<std::string> resources;
    std::string told; ///< what a window would tell of the game, as last changed

private:
    ManualClock& clock_;
    std::function<void()> game_;
};

/// One run of a program from its first instruction to its end, under a manual clock and with the governor, as often as
/// wanted in one process. One at a time.
class ManualRun {
public:
    ManualClock clock;
    ManualPlatform platform{clock};
    /// Called at each yield of the game, after what is due; may throw `ManualPlatform::Exit` to end the run.
    std::function<void()> onYield;

    /// Starts everything that lives for a run afresh, runs `program` on the calling thread and answers its status.
    /// `program` is what the executable's `main` calls. The thread needs the stack of a game.
    int run(const std::function<void()>& program);
};

/// Runs `body` on a new thread with the stack of a game, 64 MiB, and waits for its end.
void onGameStack(const std::function<void()>& body);

} // namespace MacToolbox
