#pragma once

#include "Tests/Harness/GameRun.h"
#include "Wainroad/Frame/Panels.h"

namespace Harness {

/// Plays the game through its panels, by real clicks and keys at the places of their items.
class PanelPlayer {
public:
    explicit PanelPlayer(GameRun& run) : run_(run) { }

    /// True if the panel is open and not covered.
    bool shows(const Wainroad::ViewProc& panel) const;
    /// Lets the game run until the panel shows. @return False if it does not within `ticks`.
    bool waitFor(const Wainroad::ViewProc& panel, Int ticks = 1800);
    /// Clicks the middle of an item. @return False if there is no such item to click.
    bool click(const Wainroad::ViewProc& panel, Int item);
    /// Types a text into the field that has the focus, after `key tab` as often as told.
    void type(const std::string& text, Int tabs = 0);
    void key(const std::string& name);

    /// What the forming store is asked for: pairs of oxen, sets of clothes, lots of 20 bullets, three parts, food.
    struct Outfit {
        Int oxen = 5, clothes = 12, bullets = 15, wheels = 2, yokes = 2, kingbolts = 2, food = 1200;
    };
    /// From the title to the travel screen. @param occupation  0 to 7. @param month  3 to 7.
    /// @return False if a panel on the way did not come.
    bool setOut(const std::string& name, Int occupation, Int month, const Outfit& outfit);
    bool setOut(const std::string& name = "Hob", Int occupation = 0, Int month = 4)
    {
        return setOut(name, occupation, month, Outfit{});
    }
    /// As far as the store before the journey.
    bool toStore(const std::string& name, Int occupation);
    /// Fills the seven fields of the store, from the first on.
    void fillStore(const Outfit& outfit);

private:
    GameRun& run_;
};

} // namespace Harness
