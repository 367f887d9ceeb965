#pragma once

#include "Tests/Player/PanelPlayer.h"

#include <functional>
#include <string>
#include <vector>

namespace Harness {

/// How a traveller decides on the way. At a hearth it buys food for what money it can spare.
struct Habits {
    Int crossing = 2;       ///< item of the river panel that is tried first: 1 ford, 2 float, 3 ferry, 4 guide
    bool otherWays = false; ///< takes the other way at both forks
    bool raft = false;      ///< takes the raft at the last choice
    Int pace = 0, rations = 0;
    bool buysOxen = true; ///< trades for oxen when the wain stands without
    Int huntsAfter = -2;  ///< the place after which it hunts, once
};

/// Takes a journey from the travel screen to its end by what the panels ask, and writes down what a person would.
class Traveller {
public:
    Traveller(GameRun& run, const Habits& habits) : run_(run), player_(run), habits_(habits) { }
    /// Goes on until the title shows again, or for `ticks`. @return True if the title was reached.
    bool travel(Int ticks);
    /// Called with the screen in view: PlaceN at a landmark, ForkN, CrossingN half way over a river, ReportN after it,
    /// HuntN with something that moves on the field, HuntReport, Mourning, Raft, RaftReport, Arrival, Score, GameOver.
    std::function<void(const std::string& moment)> onMoment;
    /// One line a landmark: date, place, supplies, people, and a digest of the state's byte form; one for each choice,
    /// crossing, hunt and death; then how it ended.
    const std::vector<std::string>& diary() const { return diary_; }
    /// What was wrong with the state at a landmark; empty for nothing.
    const std::string& fault() const { return fault_; }

private:
    bool answerPanels();
    bool answerRiver();
    bool answerEnd();
    bool watchRaft();
    void setHabits();
    void arrive();
    void hunt();
    void shoot();
    void stockUp();
    void note();
    void noteReport();
    void tell(const std::string& moment);
    void noteEnd(const std::string& how);
    void checkState();

    GameRun& run_;
    PanelPlayer player_;
    Habits habits_;
    std::vector<std::string> diary_;
    std::string fault_;
    Int lastLandmark_ = -2, lastDate_ = 0;
    Int crossingTries_ = 0, wayAcross_ = 0;
    Int strandedTicks_ = 0;
    Int shotsAimed_ = 0;
    Int raftLooks_ = 0, livingOnRaft_ = 0, goodsOnRaft_ = 0;
    bool ended_ = false, onWater_ = false;
};

} // namespace Harness
