#pragma once

#include "MacToolbox/Base/Clock.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace MacToolbox {

/// A script that plays the user: one command a line, fed to `Input` and paced by fixed waits.
/// One object is used by one thread at a time; it shares nothing with the game but what has a lock.
class Script {
public:
    /// @param text  The script, UTF-8, lines ended by line feed.
    /// @param out   The folder of relative names that `shot` and `menudump` write; may be empty, which is the root.
    Script(std::string_view text, std::string out);

    /// Does what comes before the next wait. @return How long to wait before the next call, or nothing at the end.
    std::optional<Nanos> step();

private:
    void runLine(std::string_view line);
    void type(std::string_view text);

    std::vector<std::string> lines_;
    std::string out_;
    std::size_t next_ = 0;
    bool ended_ = false;
    std::vector<std::pair<std::function<void()>, std::optional<Nanos>>> rest_; // what is left of the line, last first
};

/// Starts the script of the environment.
struct ScriptHost {
    static constexpr Nanos kFirstWait = kSecond / 2; ///< the game's time to come up

    /// Reads WR_SCRIPT and runs it beside the game, after half a second. No variable or no such file: nothing happens.
    /// Main thread, after the game thread has started. Returns at once.
    static void start();
};

} // namespace MacToolbox
