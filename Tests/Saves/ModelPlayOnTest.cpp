// A journey that was saved and loaded goes on as the one that was not: on the model alone, at every stage of the way.

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Data/Files.h"
#include "MacToolbox/Data/Resources.h"
#include "Tests/Harness/TemporaryFolder.h"
#include "Tests/Simulation/ModelFixture.h"
#include "Tests/Simulation/Player.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Screens/Travel.h"

#include <cstdlib>
#include <map>
#include <set>
#include <utility>

namespace Wainroad {

namespace {

/// What of a journey the view is told, and with it the dice.
std::pair<Bytes, Int> journeyNow()
{
    Bytes packed;
    gTrain.packBroadcast(packed);
    return {packed, qd.randSeed};
}

/// What a load makes of a saved state.
GameState asLoaded(GameState state)
{
    state.mode = kModeLive;
    state.x249 = kNobody;
    state.leader = gMyID;
    state.opt245 = state.opt245 == 2 ? 1 : state.opt245;
    state.wagons = state.startWagons = 1;
    Wagon& wagon = WagonOf(state, 0);
    wagon.flags = wagon.flags2 = 0;
    wagon.x5E = kNobody;
    wagon.node = gMyID;
    return state;
}

class SavedJourney : public ModelTest {
protected:
    SavedJourney()
    {
        setenv("WR_DATA", data.path().c_str(), 1);
        for (const char* name : {"System.rsrc", "Wainroad.rsrc"})
            ResourceManager::shared().open(Platform::current().programFolder() + "/Wainroad_Wainroad.bundle/" + name);
        MessagesInit();
    }
    ~SavedJourney() override { unsetenv("WR_DATA"); }

    /// Thirty days, or to the end of the journey.
    std::vector<std::pair<Bytes, Int>> playOn(Player player)
    {
        std::vector<std::pair<Bytes, Int>> periods;
        news.clear();
        for (const Int end = player.days() + 30; player.goesOn() && player.days() < end;) {
            player.period();
            periods.push_back(journeyNow());
        }
        return periods;
    }

    /// Saves and loads through a file, as if after another journey.
    static void saveAndLoad()
    {
        gSaveFile.name = pstr("Kept");
        ASSERT_EQ(WriteSave(), noErr);
        const Int arrivedAt = gArrivedAt;
        gTrain.load(Bytes(static_cast<std::size_t>(kStateBytes), 0xA5));
        gTrain.mode = 0;
        gState = gPrev = gTrain;
        gMySlot = 7, gArrivedAt = 99;
        HostFiles::queueScriptedFile("Kept");
        LoadGame();
        EXPECT_EQ(gPlaying, 2);
        EXPECT_EQ(gMySlot, 0);
        EXPECT_EQ(gArrivedAt, arrivedAt);
    }

    /// Calls a halt where the train is, and compares thirty days from here with those after a load.
    void compareHere(const Player& player)
    {
        command(kCommandStop);
        BroadcastState();
        DispatchPackets();
        const GameState train = gTrain, state = gState, shown = gPrev;
        const Int seed = qd.randSeed, ticks = gModelTicks;

        const auto unsaved = playOn(player);
        const std::vector<Bytes> told = news;
        gTrain = train, gState = state, gPrev = shown, gPlaying = 2;

        saveAndLoad();
        ASSERT_EQ(hex(gTrain.bytes()).substr(0, 2 * 714), hex(asLoaded(train).bytes()).substr(0, 2 * 714))
            << "head and wagon";
        EXPECT_EQ(gState.mode, kModeLive);
        if (asLoaded(train) == train) {
            ++compared;
            qd.randSeed = seed, gModelTicks = ticks;
            EXPECT_TRUE(playOn(player) == unsaved);
            EXPECT_TRUE(news == told);
        }
        gTrain = train, gState = state, gPrev = shown, gPlaying = 2;
        qd.randSeed = seed, gModelTicks = ticks;
    }

    static std::string stage()
    {
        const Int place = gTrain.landmark;
        const Wagon& wagon = gTrain.wagon[0];
        const bool rolling = gTrain.toNext != 0;
        std::string name = rolling                        ? place == kLastLandmark ? "the last road" : "the road"
            : IsRiver(place)                              ? "a river"
            : place == kFirstFork || place == kSecondFork ? "a fork"
            : place == kLastLandmark - 1                  ? "the toll"
                                                          : "a place";
        name += gTrain.mode & kModeResting ? ", resting" : gTrain.mode & kModeDelayed ? ", delayed" : "";
        return name + (wagon.people < wagon.startPeople ? ", after a death" : "");
    }

    Harness::TemporaryFolder data;
    Int compared = 0;
};

} // namespace

TEST_F(SavedJourney, PlaysOnTheSameBeforeItLeaves)
{
    gPlaying = 2;
    gState = gTrain; // what the choice of the month shows
    compareHere(Player(Player::kCareful, 5));
    EXPECT_EQ(compared, 1);
}

TEST_F(SavedJourney, PlaysOnTheSameFromEveryStageOfTheWay)
{
    constexpr Int kMostOfAStage = 15;
    std::map<std::string, Int> stages;
    for (const auto& [kind, seed] : {std::pair{Player::kCareful, 11}, {Player::kRandom, 21}, {Player::kRandom, 22},
             {Player::kIdle, 31}, {Player::kGreedy, 41}, {Player::kRandom, 23}}) {
        Player player(kind, seed);
        player.begin();
        std::set<std::pair<std::string, Int>> seen; // each once a place
        while (player.goesOn() && !HasFailure()) {
            const std::string here = stage();
            if (seen.insert({here, gTrain.landmark}).second && stages[here]++ < kMostOfAStage) {
                SCOPED_TRACE(player.describe() + ": " + here);
                compareHere(player);
                if (gTrain.mode == kModeLive) // called to a halt for the save
                    command(kCommandContinue, gTrain.route);
            }
            player.period();
        }
    }
    for (const char* needed : {"the road", "the road, resting", "the road, delayed", "a place", "a river", "a fork",
             "the toll, after a death", "the last road, after a death", "the road, after a death",
             "a river, after a death"})
        EXPECT_GE(stages[needed], 1) << needed;
    EXPECT_GT(compared, 60);
}

} // namespace Wainroad
