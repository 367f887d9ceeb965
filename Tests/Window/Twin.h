#pragma once

#include "Tests/Harness/GameRun.h"
#include "Tests/Player/PanelPlayer.h"
#include "Tests/Window/WindowedGame.h"

namespace Harness {

/// The same game twice: in its window under a person's hands, and without a window in this process. What is done to one
/// is done to the other; the second knows where things stand and what the window has to show.
class Twin {
public:
    /// @param data  A folder of data that the second starts with; "" is an empty one.
    explicit Twin(WindowedGame& game, const std::string& data = "");

    GameRun& run() { return run_; }
    PanelPlayer& player() { return player_; }
    /// Waits until both show the panel. @param mask  Pixels that are not compared.
    bool waitFor(const Wainroad::ViewProc& panel, const FramePtr& mask = nullptr);
    /// Waits until the window shows what the second game shows after a moment.
    bool agree(const FramePtr& mask = nullptr);
    /// The pixels that change by themselves within a minute of what shows now.
    FramePtr movingPixels();
    /// The pixels of the items of an open panel with these numbers.
    FramePtr itemsOf(const Wainroad::ViewProc& panel, Int first, Int last);

    /// The middle of an item, or of the item in it with the number `inner`. (-1, -1) if there is none.
    static MacToolbox::Point place(const Wainroad::ViewProc& panel, Int item, Int inner = 0);
    void click(const Wainroad::ViewProc& panel, Int item, Int inner = 0);
    /// A key by its name in a script, and by that of the display where it is another.
    void key(const std::string& name, const std::string& onDisplay = "");
    void type(const std::string& text);

    /// Waits for the title; what moves there by itself is not compared.
    bool toTitle();
    /// From the title as far as the store, as five people. False if a panel on the way did not come.
    bool toStore();
    /// From there to the standing trail. What hangs on chance there may differ.
    bool toTrail();

private:
    WindowedGame& game_;
    GameRun run_;
    PanelPlayer player_{run_};
};

} // namespace Harness
