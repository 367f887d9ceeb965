#pragma once

#include "MacToolbox/App/ManualRun.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/QuickDraw/Screen.h"
#include "Tests/Harness/TemporaryFolder.h"

#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace Harness {

using MacToolbox::Int;

/// A whole program under test, from its first instruction to `ExitToShell`, under the manual clock. The game has a
/// thread of its own, but it and the test take turns: between the calls below the game stands still inside an event
/// call, so the test may look at every global of the game, and change it. One at a time; any number one after another.
/// @code
///   GameRun run(Wainroad_main);
///   ASSERT_TRUE(run.runUntil([] { return gScreen == kTitle; }));
///   run.play("click 100 200\n" "type Ann\n" "key return");
///   run.advance(60);
///   expectFrame(run.frame(), "Party");
/// @endcode
class GameRun {
public:
    struct Setup {
        std::string script;                             ///< If not empty, the file that WR_SCRIPT names
        std::map<std::string, std::string> environment; ///< Added to, or in place of: WR_HEADLESS, WR_DATA (an own
                                                        ///< empty folder), WR_OUT (another), WR_DATE (1848-04-01)
        std::vector<std::string> resources;             ///< Folders of resource files; none: those of the executable
    };
    static constexpr Int kPatience = 60 * 60 * 10; ///< ticks: ten minutes of the game

    explicit GameRun(std::function<void()> program);
    GameRun(std::function<void()> program, Setup setup);
    /// Ends the run where it stands; the game's stack unwinds.
    ~GameRun();
    GameRun(const GameRun&) = delete;
    GameRun& operator=(const GameRun&) = delete;

    /// Lets the game run for that many ticks, or to its end. @return True if it still runs.
    bool advance(Int ticks);
    /// Lets the game run until `condition` holds at one of its yields, for at most that many ticks.
    /// @return True if the condition held; false if the time was up or the game has ended.
    bool runUntil(std::function<bool()> condition, Int mostTicks = kPatience);
    /// Lets the game run to its end. @return False if it did not end in that time.
    bool runToEnd(Int mostTicks = kPatience);

    /// Runs `work` on the game's thread, inside the event call where it stands, for at most that many ticks: what has
    /// not returned by then, a dialog for one, goes on with the next call. @return True if the game still runs.
    bool call(std::function<void()> work, Int ticks);
    /// Plays lines of a script from now on, and runs until the last one and its wait are over.
    /// @return True if the game still runs.
    bool play(std::string_view script);
    /// Queues an event as it is.
    void post(const MacToolbox::EventRecord& event) { MacToolbox::Input::post(event); }
    /// Chooses an item of a menu.
    void choose(Int menuID, Int item) { MacToolbox::Input::menuChoice(menuID, item); }

    /// The published frame; nil before the first.
    MacToolbox::FramePtr frame() const { return MacToolbox::Screen::shared().snapshot(); }
    /// Ticks since the start of the run, at no cost of time.
    Int ticks() const { return machine_.clock.time() / MacToolbox::kTickNanos; }
    /// Date and place as a window tells them to a screen reader.
    const std::string& toldStatus() const { return machine_.platform.told; }
    bool running() const { return !status_.has_value(); }
    /// The status with which the process ended, or nothing while it runs.
    std::optional<int> status() const { return status_; }
    std::string dataFolder() const { return machine_.platform.variables->at("WR_DATA"); }
    std::string outFolder() const { return machine_.platform.variables->at("WR_OUT"); }

private:
    enum class Turn { test, game };

    void letRun(MacToolbox::Nanos until, std::function<bool()> condition);
    void onYield();

    TemporaryFolder data_, out_;
    MacToolbox::ManualRun machine_;

    std::mutex mutex_;
    std::condition_variable passed_;
    Turn turn_ = Turn::test; // guarded by `mutex_`; the fields below belong to whoever has the turn
    std::optional<int> status_;
    bool abandoned_ = false;
    MacToolbox::Nanos until_ = 0;
    std::function<bool()> condition_;
    std::function<void()> call_;
    bool held_ = false; // the condition did
    std::thread thread_;
};

} // namespace Harness
