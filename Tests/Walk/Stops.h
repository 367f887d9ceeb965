#pragma once

#include "MacToolbox/Managers/Dialogs.h"
#include "Tests/Player/PanelPlayer.h"
#include "Tests/Walk/Surface.h"
#include "Wainroad/Simulation/Records.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace Harness {

/// One game on its way to a stop.
class Visit {
public:
    /// Starts a game, with resource files from these folders (none: the executable's), and plays it to where a stop begins.
    enum class From { start, store, road, rolling };
    Visit(From from, std::vector<std::string> resources = {});

    /// Runs `work` on the game's thread until it returns or shows a dialog.
    void inGame(std::function<void()> work) { run.call(std::move(work), 30); }
    void open(const Wainroad::ViewProc& panel);
    /// Changes the journey as if it had come so, and lets the view see it.
    void change(const std::function<void(Wainroad::GameState&)>& how);
    /// The dialog or alert in front, or nil.
    static MacToolbox::DialogPtr dialog();
    /// Clicks the middle of an item of the dialog in front.
    void clickDialog(Int item);
    /// Answers dialogs until none is left: by Return, then by their second item.
    void answerDialogs();
    /// The dialogs, from the front; without one the panels that can be seen, and the window that they lie in.
    std::vector<Surface> surfaces() const;

    GameRun run;
    PanelPlayer player{run};
};

/// A place of the walk: a screen of the game, and how to get there.
struct Stop {
    const char* name;
    Visit::From from;
    const Wainroad::ViewProc* panel;         ///< that then shows; nil for a dialog, an alert or a menu
    std::function<void(Visit&)> open;        ///< nothing: the panel is asked for
};
std::span<const Stop> stops();

/// Goes there. @return False if its panel or dialog does not show.
bool visit(Visit& game, const Stop& stop);

} // namespace Harness
