#pragma once

#include "MacToolbox/Managers/Dialogs.h"
#include "Tests/Player/PanelPlayer.h"
#include "Wainroad/Simulation/Records.h"

#include <functional>

namespace Harness {

/// A game that has been played to some place on the way, for a look at one screen.
class Visit {
public:
    /// The title; the store before the journey; the first place, at rest; two days on, rolling.
    enum class From { start, store, road, rolling };
    explicit Visit(From from, GameRun::Setup setup = {});

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

    GameRun run;
    PanelPlayer player{run};
};

} // namespace Harness
