// Saved games of random bytes and true ones with bits turned, through the whole game: each is loaded, lives thirty
// days, shows its panels, and is saved again.

#include "MacToolbox/Data/Files.h"
#include "MacToolbox/Managers/Windows.h"
#include "Tests/Player/PanelPlayer.h"
#include "Wainroad/Game/GameMenu.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Journal/LogView.h"
#include "Wainroad/Persistence/SavedGame.h"
#include "Wainroad/Screens/Arrival.h"
#include "Wainroad/Screens/Choices.h"
#include "Wainroad/Screens/Crossing.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Guide.h"
#include "Wainroad/Screens/Hunt.h"
#include "Wainroad/Screens/Mourning.h"
#include "Wainroad/Screens/Party.h"
#include "Wainroad/Screens/Raft.h"
#include "Wainroad/Screens/Rest.h"
#include "Wainroad/Screens/Resume.h"
#include "Wainroad/Screens/River.h"
#include "Wainroad/Screens/Route.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Screens/Scene.h"
#include "Wainroad/Screens/Score.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Store.h"
#include "Wainroad/Screens/Talk.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Screens/Trade.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <random>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

constexpr std::size_t kLogInfoAt = 4164, kLogAt = 4198;

#if defined(__SANITIZE_ADDRESS__)
constexpr int kLoads = 300;
#else
constexpr int kLoads = 600;
#endif

/// Panels that read the state, each with what opens beside it.
const std::vector<std::vector<const ViewProc*>> kPanels{
    {&StatusPanel, &LogPanel},
    {&PartyPanel},
    {&TravelScenePanel},
    {&TravelPanel},
    {&LandmarkPanel, &LandmarkNamePanel},
    {&GuidePanel},
    {&GuideTopicsPanel},
    {&StorePanel},
    {&StoreHelpPanel},
    {&RationsPanel},
    {&PacePanel},
    {&RestPanel},
    {&TradeWantPanel},
    {&TradeOfferPanel},
    {&TalkPanel},
    {&TalkChoicePanel},
    {&TalkToPanel},
    {&SayPanel},
    {&RiverPanel},
    {&RiverInfoPanel},
    {&CrossingPanel, &CrossingTextPanel},
    {&CrossWaitPanel},
    {&CrossingResultPanel},
    {&RoutePanel},
    {&NoTollPanel},
    {&CantContinuePanel},
    {&HuntWaitPanel},
    {&HuntPanel},
    {&HuntResultPanel},
    {&RaftIntroPanel},
    {&RaftPanel},
    {&MourningPanel, &MourningTextPanel},
    {&ExitPanel},
    {&QuitPanel},
};
/// Those that a journey ends with; their close leads to the title.
const std::vector<const ViewProc*> kEndPanels{&GameOverPanel, &ArrivalPanel, &ScorePanel, &TrainScorePanel};

class WildLoad : public testing::Test {
protected:
    /// A journey at a halt on the road, as the game saves it.
    void SetUp() override
    {
        ASSERT_TRUE(start());
        ASSERT_TRUE(PanelPlayer(*run).setOut("Ann", 0, 4));
        run->play("wait 2");
        PanelPlayer(*run).click(ContinuePanel, 1);
        run->runUntil([] { return gState.day >= 6; }, 4000);
        PanelPlayer(*run).click(TimeOutPanel, 1);
        run->play("wait 3\nfile true\nmenu 1001 2\nwait 1");
        good = readFile(path("true"));
        ASSERT_EQ(good.size(), static_cast<std::size_t>(kSaveBytes));
        ASSERT_TRUE(start());
    }

    std::string path(const std::string& name) const { return run->dataFolder() + "/" + name; }
    /// A new game at the title.
    bool start()
    {
        run.reset();
        run = std::make_unique<GameRun>(Wainroad_main);
        return PanelPlayer(*run).waitFor(TitlePanel);
    }

    /// What a round's file holds: noise all through, noise with an empty or a true journal, or some bits of a true one
    /// turned.
    std::string wild(int round)
    {
        std::string bytes = good;
        const auto noise = [&](std::size_t from, std::size_t to) {
            for (std::size_t i = from; i < to; ++i)
                bytes[i] = static_cast<char>(random());
        };
        switch (round % 4) {
        case 0: noise(0, bytes.size()); break;
        case 1:
            noise(0, kLogInfoAt);
            std::fill(bytes.begin() + kLogInfoAt, bytes.end(), '\0');
            break;
        case 2: noise(0, kLogInfoAt); break;
        case 3:
            for (unsigned flips = 1 + random() % 400; flips > 0; --flips) {
                const std::size_t to = flips % 8 == 0 ? bytes.size() : kLogAt;
                bytes[random() % to] ^= static_cast<char>(1 << random() % 8);
            }
            break;
        }
        return bytes;
    }

    void live(int round)
    {
        const bool train = round % 7 == 5;
        if (train) { // the choice of a wagon needs a screen that nothing covers
            ASSERT_TRUE(start());
        }
        PanelPlayer player(*run);
        const std::string name = path("wild");
        std::FILE* const file = std::fopen(name.c_str(), "wb");
        const std::string bytes = wild(round);
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
        HostFiles::setFinderInfo(name, {train ? kTrainSaveType : kSaveType, kCreator, 0, {}, 0});

        run->play("file wild");
        run->choose(kFileMenu, kFileOpen);
        run->advance(8);
        if (player.shows(ResumePanel)) {
            const Rect list = GetItem(*FindPanel(ResumePanel), 3)->r;
            run->play("click " + std::to_string(list.left + 8) + " " + std::to_string(list.top + 8));
            player.click(ResumePanel, 1);
        }
        run->advance(20);
        if (ended())
            return;
        if (player.shows(ResumePanel)) { // nothing was picked
            EXPECT_TRUE(train);
            player.click(ResumePanel, 2);
            return;
        }
        ASSERT_EQ(gPlaying, 2);
        ++loaded;
        run->call(
            [] {
                for (int day = 0; day < 30 && gTrain.mode != 0; ++day) {
                    gTrain.mode = (gTrain.mode | kModeMoving) & ~(kModeSuspended | kModeOver);
                    gModelTicks = 254; // the day comes whatever its length
                    ModelVBL();
                    DispatchPackets();
                    SendCommand(static_cast<Int>(random_() % 62), static_cast<Int>(random_() % 256),
                        static_cast<Int>(random_()));
                    DispatchPackets();
                }
                gPlaying = 2;
                gState.mode = gTrain.mode = kModeLive;
            },
            20);
        if (ended())
            return;
        for (int i = 0; i < 6; ++i) {
            const auto& panels = kPanels[static_cast<std::size_t>(round * 6 + i) % kPanels.size()];
            run->call(
                [&panels] {
                    for (const ViewProc* const panel : panels)
                        OpenPanel(*panel);
                },
                14);
            run->play(i % 2 ? "click 200 150" : "key a");
            run->call(
                [&panels] {
                    for (const ViewProc* const panel : panels)
                        ClosePanel(*panel);
                    ShowTravelScreen();
                },
                6);
            if (ended())
                return;
        }
        std::filesystem::remove(path("again"));
        run->call(
            [] {
                gPlaying = 2;
                HostFiles::queueScriptedFile("again");
                SaveGame();
            },
            6);
        if (ended())
            return;
        std::error_code error;
        ASSERT_EQ(std::filesystem::file_size(path("again"), error), static_cast<std::uintmax_t>(kSaveBytes));
        ++savedAgain;
        const ViewProc& end = *kEndPanels[static_cast<std::size_t>(round) % kEndPanels.size()];
        run->call([&end] { OpenPanel(end); }, 14);
        if (ended())
            return;
        run->call(
            [&end] {
                ClosePanel(end);
                ToTitle();
            },
            6);
    }

    /// True if the journal's end in words, which nothing answers but Return, has come, or the game has ended: a new one
    /// is started then.
    bool ended()
    {
        if (run->running() && FrontWindow() == gWindow)
            return false;
        if (run->running())
            run->play("key return\nwait 0.5\nkey return\nwait 0.5");
        ++endings;
        if (run->running() && FrontWindow() == gWindow)
            return true;
        EXPECT_FALSE(run->running()) << "an alert that Return does not answer";
        EXPECT_EQ(run->status(), 0);
        EXPECT_TRUE(start());
        return true;
    }

    std::unique_ptr<GameRun> run;
    std::string good;
    std::mt19937 random{20260};
    static inline std::minstd_rand random_{7};
    int loaded = 0, savedAgain = 0, endings = 0;
};

} // namespace

TEST_F(WildLoad, AnyBytesLiveThirtyDaysAndAreSavedAgain)
{
    for (int round = 0; round < kLoads && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        live(round);
    }
    EXPECT_GT(loaded, kLoads / 2);
    EXPECT_GT(savedAgain, kLoads / 2);
}
