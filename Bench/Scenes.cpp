#include "Bench/Scenes.h"

#include "MacToolbox/Managers/Sound.h"
#include "MacToolbox/QuickDraw/Screen.h"
#include "Tests/Harness/GameRun.h"
#include "Tests/Player/PanelPlayer.h"
#include "Tests/Player/Traveller.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Journal/LogView.h"
#include "Wainroad/Screens/Crossing.h"
#include "Wainroad/Screens/HuntScene.h"
#include "Wainroad/Screens/Raft.h"
#include "Wainroad/Screens/River.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

constexpr Int kFrameTicks = 3, kSampleFrames = 10;
const PanelPlayer::Outfit kOutfit{8, 15, 20, 3, 3, 3, 1600};
const Habits kHabits{3, false, false, 1, 0, true};

double since(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void printSpread(std::vector<double> taken)
{
    std::ranges::sort(taken);
    if (!taken.empty())
        std::printf("%.4f %.4f\n", taken[taken.size() / 2], taken[taken.size() * 95 / 100]);
}

/// A game that has set out, on its first leg.
struct OnTheRoad {
    GameRun run{Wainroad_main};
    PanelPlayer player{run};
    bool there = player.setOut("Hob", 0, 4, kOutfit) && goOn();

private:
    bool goOn()
    {
        player.click(ContinuePanel, 1);
        return run.runUntil([] { return gState.toNext != 0 && (gState.mode & kModeMoving) != 0; }, 600);
    }
};

/// Samples of the scene on `panel` for as long as it is there; `busy` keeps it full.
std::vector<double> framesOf(OnTheRoad& road, const ViewProc& panel, const std::function<void()>& busy)
{
    std::vector<double> taken;
    if (!road.there || !road.player.waitFor(panel, 600))
        return taken;
    for (;;) {
        busy();
        const FramePtr before = road.run.frame();
        const auto start = std::chrono::steady_clock::now();
        road.run.advance(kFrameTicks * kSampleFrames);
        const double each = since(start) * 1000 / kSampleFrames;
        if (!road.player.shows(panel))
            return taken;
        if (road.run.frame() != before) // it moves
            taken.push_back(each);
    }
}

void measureHunt()
{
    OnTheRoad road;
    road.player.click(RightButtonsPanel, 6);
    printSpread(framesOf(road, HuntPanel, [] {
        NewAnimal(); // two are out whenever the spot has any left
        Shoot(100, 40);
    }));
}

void measureRaft()
{
    OnTheRoad road;
    StartRaft();
    printSpread(framesOf(road, RaftPanel, [&] { road.run.play("click 190 100"); })); // away with the report of a rock
}

void measureCrossing()
{
    std::vector<double> taken;
    OnTheRoad road;
    for (Int i = 0; i < 20; ++i) {
        gCrossMethod = 1 + i % 3;
        gCrossOutcome = i % 2; // safe and not
        gCrossResult = kCrossedWell;
        OpenPanel(CrossingPanel);
        const auto more = framesOf(road, CrossingPanel, [] {});
        taken.insert(taken.end(), more.begin(), more.end());
        road.player.click(CrossingResultPanel, 1);
        road.run.advance(120);
    }
    printSpread(taken);
}

void measureScroll()
{
    OnTheRoad road;
    Traveller traveller(road.run, kHabits);
    traveller.travel(60 * 60 * 10); // until there is a journal
    std::vector<double> taken;
    for (Int i = 0; road.there && gLogView && gLogMax > 20 && i < 400; ++i) {
        const FramePtr before = road.run.frame();
        const auto start = std::chrono::steady_clock::now();
        {
            const ViewPortScope port(*gLogView);
            ScrollLog(*gLogView, gLogTop, gLogTop + ((i / 10) % 2 == 0 ? -1 : 1));
        }
        road.run.advance(1);
        if (road.run.frame() != before)
            taken.push_back(since(start) * 1000);
    }
    printSpread(taken);
}

/// Resident memory in MiB.
double resident()
{
    const std::string status = readFile("/proc/self/status");
    const auto at = status.find("VmRSS:");
    return at == std::string::npos ? 0 : std::atof(status.c_str() + at + 6) / 1024;
}

void measureJourney()
{
    const auto start = std::chrono::steady_clock::now();
    GameRun run(Wainroad_main, {{}, {{"WR_DATE", "1848-04-03"}}, {}});
    PanelPlayer player(run);
    if (!player.setOut("Hob", 0, 4, kOutfit))
        return;
    double before = 0;
    Traveller traveller(run, kHabits);
    traveller.onMoment = [&](const std::string& moment) {
        if (moment == "Place0")
            before = resident();
    };
    if (!traveller.travel(60 * 60 * 60))
        return;
    const double after = resident();
    if (player.waitFor(LegendsPanel, 7300))
        std::printf("%.3f %.3f\n", since(start), after - before);
}

void measureTune()
{
    GameRun run(Wainroad_main);
    if (!run.runUntil([] { return gChannel && gChannel->userInfo == kSoundPlaying; }, 60))
        return;
    const FramePtr blank = run.frame();
    if (!run.runUntil([] { return gChannel->userInfo != kSoundPlaying; }, 300))
        return;
    const Int over = run.ticks();
    if (run.runUntil([&] { return FindPanel(TitlePanel) && run.frame() != blank; }, 60))
        std::printf("%lld\n", static_cast<long long>(run.ticks() - over));
}

} // namespace

Measure measureOf(std::string_view name)
{
    static constexpr struct {
        std::string_view name;
        Measure measure;
    } kMeasures[] = {{"hunt", measureHunt}, {"raft", measureRaft}, {"crossing", measureCrossing},
        {"scroll", measureScroll}, {"journey", measureJourney}, {"tune", measureTune}};
    for (const auto& one : kMeasures)
        if (one.name == name)
            return one.measure;
    return nullptr;
}
