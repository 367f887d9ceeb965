// A journey that was saved and loaded goes on as the one that was not: through the whole game, by clicks.

#include "MacToolbox/Data/Files.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/Player/Traveller.h"
#include "Wainroad/Game/GameMenu.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Persistence/SavedGame.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Rest.h"
#include "Wainroad/Screens/Resume.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Trail.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

constexpr Int kOpenKey = 2;  // of the title
constexpr Int kLeaveKey = 3; // of the panel that asks before the journey is left
constexpr Int kRestKey = 4;
constexpr Int kDayTicks = 300;
constexpr Int kNoHunt = -9; // as the place after which a traveller hunts

Bytes broadcast(const GameState& state)
{
    Bytes packed;
    state.packBroadcast(packed);
    return packed;
}

Bytes toldSoFar() { return {gLogBuffer->bytes.begin(), gLogBuffer->bytes.begin() + std::ptrdiff_t(gLogInfo.end)}; }

/// What a load makes of a saved journey of one wagon.
GameState asLoaded(GameState state)
{
    state.mode = kModeLive;
    state.x249 = kNobody;
    state.opt245 = state.opt245 == 2 ? 1 : state.opt245;
    Wagon& wagon = WagonOf(state, 0);
    wagon.flags = wagon.flags2 = 0;
    wagon.x5E = kNobody;
    return state;
}

class ThroughTheGame : public testing::Test {
protected:
    /// Writes down the journey at each new day. Chance hangs on the day alone, so that what the pictures draw from the
    /// one generator changes nothing.
    void keepDays()
    {
        ModelClose();
        const auto task = std::make_shared<VBLTask>();
        task->vblCount = 1;
        task->vblAddr = [this, ticks = Int{0}](VBLTask& again) mutable {
            again.vblCount = 1;
            const Int date = (gTrain.year * 12 + gTrain.month) * 31 + gTrain.day;
            qd.randSeed = 1 + (date * 7919 + gTrain.landmark * 104729 + seed) % 2000000;
            if (++ticks % kModelTicks == 0)
                ModelVBL();
            if (const Int now = (gTrain.year * 12 + gTrain.month) * 31 + gTrain.day; now != lastDay_) {
                lastDay_ = now;
                days.push_back(broadcast(gTrain));
            }
        };
        VInstall(task);
    }
    /// Thirty days, or to the end of the journey.
    std::vector<Bytes> playOn(const Habits& habits)
    {
        days.clear();
        Traveller traveller(run, habits);
        for (Int i = 0; i < 4000 && days.size() < 30 && gPlaying == 2; ++i)
            traveller.travel(1);
        std::vector<Bytes> kept = days;
        kept.resize(std::min<std::size_t>(kept.size(), 30));
        return kept;
    }
    bool save(const std::string& name)
    {
        run.play("file " + name + "\nmenu 1001 2\nwait 0.5");
        std::error_code error;
        return std::filesystem::file_size(run.dataFolder() + "/" + name, error)
            == static_cast<std::uintmax_t>(kSaveBytes);
    }
    bool leave()
    {
        if (player.shows(TitlePanel))
            return true;
        run.choose(kFileMenu, kFileToTitle);
        if (player.waitFor(ExitPanel, 300))
            player.click(ExitPanel, kLeaveKey);
        return player.waitFor(TitlePanel, 300);
    }
    bool load(const std::string& name)
    {
        run.play("file " + name);
        player.click(TitlePanel, kOpenKey);
        return player.waitFor(StatusPanel, 600);
    }
    /// The state in a saved game of the data folder.
    GameState stateIn(const std::string& name) const
    {
        const std::string file = readFile(run.dataFolder() + "/" + name);
        SaveHead head;
        readSaveHead(Bytes(file.begin(), file.end()), head);
        return head.state;
    }

    GameRun run{Wainroad_main};
    PanelPlayer player{run};
    std::vector<Bytes> days;
    Int seed = 0;

private:
    Int lastDay_ = 0;
};

} // namespace

TEST_F(ThroughTheGame, ALoadedJourneyPlaysOnDayForDay)
{
    ASSERT_TRUE(player.setOut("Ann", 0, 4, {8, 15, 20, 3, 3, 3, 1600}));
    keepDays();
    const Habits habits{3, false, false, 0, 0, true, kNoHunt};
    // At the start town, then wherever the thirty days end, with a halt on the road, and last at the places before the
    // count.
    Int compared = 0;
    for (Int stages = 0; stages < 8 && gPlaying == 2; ++stages) {
        const std::string name = "stage " + std::to_string(stages);
        if (stages > 0 && player.shows(TimeOutPanel))
            player.click(TimeOutPanel, 1);
        run.advance(2 * kModelTicks);
        if (!player.shows(ContinuePanel) || asLoaded(gTrain) != gTrain) { // delayed, or at the river
            Traveller(run, habits).travel(kDayTicks);
            continue;
        }
        SCOPED_TRACE(
            name + ", place " + std::to_string(gTrain.landmark) + ", " + std::to_string(gTrain.toNext) + " to go");
        ASSERT_TRUE(save(name));
        const Bytes state = broadcast(gTrain), journal = toldSoFar();
        const std::vector<Bytes> unsaved = playOn(habits);
        EXPECT_GE(unsaved.size(), 5U);
        ASSERT_TRUE(leave());
        ASSERT_TRUE(load(name));
        EXPECT_TRUE(broadcast(gTrain) == state);
        EXPECT_TRUE(broadcast(gState) == state);
        ASSERT_GE(toldSoFar().size(), journal.size());
        EXPECT_TRUE(std::equal(journal.begin(), journal.end(), gLogBuffer->bytes.begin()))
            << "the journal goes on where it was";
        ++compared;
        const std::vector<Bytes> loaded = playOn(habits);
        EXPECT_EQ(loaded.size(), unsaved.size());
        for (std::size_t day = 0; day < std::min(loaded.size(), unsaved.size()); ++day)
            ASSERT_TRUE(loaded[day] == unsaved[day]) << "day " << day;
    }
    EXPECT_GE(compared, 4);
}

TEST_F(ThroughTheGame, ASaveFromTheMiddleOfThingsComesBackAtRest)
{
    ASSERT_TRUE(player.setOut("Ann", 0, 4, {8, 15, 20, 3, 3, 3, 1600}));
    ASSERT_TRUE(player.waitFor(ContinuePanel));
    std::vector<std::string> saved;
    // Resting: three of nine days are over.
    player.click(RightButtonsPanel, kRestKey);
    ASSERT_TRUE(player.waitFor(RestPanel, 120));
    player.type("9");
    player.key("return");
    ASSERT_TRUE(run.runUntil([] { return (gState.mode & kModeResting) != 0 && gState.restDays <= 6; }, 10 * kDayTicks));
    ASSERT_TRUE(save("resting"));
    EXPECT_NE(stateIn("resting").mode & kModeResting, 0);
    saved.push_back("resting");

    // Whatever shows on the way, and on the raft.
    std::set<std::string> kinds;
    const auto saveOnce = [&](std::string moment) {
        while (!moment.empty() && moment.back() >= '0' && moment.back() <= '9')
            moment.pop_back();
        if ((gState.mode & kModeMoving) == 0 && gPlaying == 2 && kinds.insert(moment).second && save(moment))
            saved.push_back(moment);
    };
    Traveller traveller(run, Habits{3, true, true, 0, 0, true, 0});
    traveller.onMoment = saveOnce;
    traveller.travel(120 * kDayTicks);
    ASSERT_TRUE(leave());
    ASSERT_TRUE(player.setOut("Ann", 0, 4, {8, 15, 20, 3, 3, 3, 1600}));
    gTrain.landmark = kLastLandmark - 1;
    run.advance(200);
    Traveller rafter(run, Habits{3, true, true, 0, 0, true, kNoHunt});
    rafter.onMoment = saveOnce;
    rafter.travel(100 * kDayTicks);
    for (const char* needed : {"Place", "Crossing", "Fork", "Raft"})
        EXPECT_TRUE(kinds.contains(needed)) << needed;

    ASSERT_TRUE(leave());
    for (const std::string& name : saved) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(load(name));
        EXPECT_TRUE(broadcast(gTrain) == broadcast(asLoaded(stateIn(name))));
        EXPECT_TRUE(player.waitFor(ContinuePanel, 300));
        const Int day = gState.day;
        Traveller on(run, Habits{2, false, false, 0, 0, true, kNoHunt});
        for (Int i = 0; i < 200 && gPlaying == 2 && gState.day == day; ++i)
            on.travel(1);
        EXPECT_NE(gState.day, day) << "the journey goes on";
        ASSERT_TRUE(leave());
    }
}

TEST_F(ThroughTheGame, AWagonIsPickedOutOfATrain)
{
    constexpr Int kChosen = 3; // slot; its wagon is another than its number
    ASSERT_TRUE(player.setOut("Ann", 0, 4, {8, 15, 20, 3, 3, 3, 1600}));
    ASSERT_TRUE(save("solo"));
    ASSERT_TRUE(leave());

    GameState train = stateIn("solo");
    train.slots = 5, train.wagons = train.startWagons = 3;
    train.order = GameState().order;
    train.order[0] = 0, train.order[3] = 1, train.order[4] = 2;
    for (const Int slot : {0, 3, 4})
        train.names[static_cast<std::size_t>(slot)] = pstr("Leader " + std::to_string(slot));
    train.wagon[1] = train.wagon[2] = train.wagon[0];
    train.wagon[1].money = 123456, train.wagon[2].money = 99;
    std::string file = readFile(run.dataFolder() + "/solo");
    const Bytes head = packSaveHead(0, train, Bytes(file.begin() + 4164, file.begin() + 4198));
    std::copy(head.begin(), head.end(), file.begin());
    std::FILE* const out = std::fopen((run.dataFolder() + "/train").c_str(), "wb");
    ASSERT_TRUE(out);
    std::fwrite(file.data(), 1, file.size(), out);
    std::fclose(out);
    HostFiles::setFinderInfo(run.dataFolder() + "/train", {kTrainSaveType, kCreator, 0, {}, 0});

    // First the way back, then the wagon in the second row.
    for (const bool taken : {false, true}) {
        run.play("file train");
        player.click(TitlePanel, kOpenKey);
        ASSERT_TRUE(player.waitFor(ResumePanel, 300));
        if (taken) {
            const Rect list = GetItem(*FindPanel(ResumePanel), 3)->r;
            run.play("click " + std::to_string(list.left + 20) + " " + std::to_string(list.top + 20) + "\nwait 0.3");
        }
        player.click(ResumePanel, taken ? 1 : 2);
        ASSERT_TRUE(taken ? player.waitFor(StatusPanel, 300) : player.waitFor(TitlePanel, 300));
    }
    EXPECT_EQ(gMySlot, kChosen);
    EXPECT_EQ(UsedSlots(gTrain), 1);
    EXPECT_EQ(WagonOf(gTrain, kChosen).money, 123456);
    GameState alone = train;
    alone.order.fill(kNobody);
    alone.order[kChosen] = 0;
    alone.wagon[0] = train.wagon[1];
    alone.wagons = alone.startWagons = 1;
    EXPECT_TRUE(broadcast(gTrain) == broadcast(asLoaded(alone)));
    EXPECT_TRUE(broadcast(gState) == broadcast(gTrain));

    keepDays();
    const std::vector<Bytes> resumed = playOn(Habits{2, false, false, 0, 0, true, kNoHunt});
    EXPECT_EQ(resumed.size(), 30U);
    EXPECT_LT(WagonOf(gState, kChosen).supply[kFood], 1600) << "what the day takes, it takes from the chosen wagon";
    EXPECT_EQ(WagonOf(gState, kChosen).startPeople, train.wagon[1].startPeople);
    // Saved again it is a journey of one wagon, which needs no choice.
    if (player.shows(TimeOutPanel))
        player.click(TimeOutPanel, 1);
    run.advance(2 * kModelTicks);
    ASSERT_TRUE(save("picked"));
    const Int miles = gState.miles;
    ASSERT_TRUE(leave());
    ASSERT_TRUE(load("picked"));
    EXPECT_EQ(gMySlot, kChosen);
    EXPECT_EQ(gState.miles, miles);
}
