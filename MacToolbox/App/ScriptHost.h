#pragma once

#include "MacToolbox/Base/Clock.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace MacToolbox {

/// A script that plays the user: one command a line, fed to `Input` and paced by fixed waits. It knows nothing of the
/// game but what has a lock, so it may run on any thread, one at a time.
class Script {
public:
    /// @param text  The script, UTF-8, lines ended by line feed.
    /// @param out   The folder of the relative names that `shot` and `menudump` write; "" is the root.
    Script(std::string text, std::string out) : text_(std::move(text)), out_(std::move(out)) { }

    /// Does what comes before the next wait. @return How long to wait before the next call, or nothing at the end.
    std::optional<Nanos> step();

private:
    using Words = std::vector<std::string_view>;

    std::optional<Nanos> runLine(std::string_view line);
    std::optional<Nanos> runCommand(std::string_view line, const Words& words);
    Nanos click(const Words& words);
    Nanos typeNext();
    Nanos shot(const Words& words);
    void dumpMenus(const Words& words) const;
    std::string path(const Words& words, std::string_view otherwise) const;

    std::string text_;
    std::string out_;
    std::size_t next_ = 0; // where in `text_` the next line begins
    std::string typing_;   // what is left of a `type`, from `typed_` on
    std::size_t typed_ = 0;
    std::function<std::optional<Nanos>()> afterWait_; // the second half of a command, or empty
};

/// Starts the script of the environment.
struct ScriptHost {
    static constexpr Nanos kFirstWait = kSecond / 2; ///< the game's time to come up

    /// Reads WR_SCRIPT and runs it beside the game, after half a second. If there is no such variable, or no such file,
    /// or the file is not UTF-8, nothing happens. Main thread, after the game thread has started. Returns at once.
    static void start();
};

} // namespace MacToolbox
