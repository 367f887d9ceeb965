#pragma once

#include "Tests/Player/PanelPlayer.h"

#include <string>
#include <vector>

namespace Harness {

/// How a traveller decides on the way. At a hearth it buys food for what money it can spare.
struct Habits {
    Int crossing = 2;         ///< item of the river panel that is tried first: 1 ford, 2 float, 3 ferry, 4 guide
    bool otherWays = false;   ///< takes the other way at both forks
    bool raft = false;        ///< takes the raft at the last choice
    Int pace = 0, rations = 0;
    bool buysOxen = true;     ///< trades for oxen when the wain stands without
};

/// Takes a journey from the travel screen to its end by what the panels ask, and writes down what a person would.
class Traveller {
public:
    Traveller(GameRun& run, const Habits& habits)
        : run_(run)
        , player_(run)
        , habits_(habits)
    {
    }
    /// Goes on until the title shows again, or for `ticks`. @return True if the title was reached.
    bool travel(Int ticks);
    /// One line a landmark: date, place, supplies, people; then how it ended.
    const std::vector<std::string>& diary() const { return diary_; }
    /// What was wrong with the state at a landmark; empty for nothing.
    const std::string& fault() const { return fault_; }

private:
    bool answerPanels();
    void stockUp();
    void note();
    void noteEnd(const std::string& how);
    void checkState();

    GameRun& run_;
    PanelPlayer player_;
    Habits habits_;
    std::vector<std::string> diary_;
    std::string fault_;
    Int lastLandmark_ = -2, lastDate_ = 0;
    Int crossingTries_ = 0;
    Int strandedTicks_ = 0;
    bool ended_ = false, choicesMade_ = false;
};

} // namespace Harness
