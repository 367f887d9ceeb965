// The windowed game as a person meets it, on a display in memory: how soon it is up, how soon a press shows, what it
// takes at rest. About a minute.

#include "Tests/Window/Twin.h"
#include "Wainroad/Screens/Setup.h"
#include "Wainroad/Screens/Title.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

using namespace Harness;

namespace {

constexpr int kPresses = 60;
constexpr double kAtRest = 10; // seconds

void row(const char* what, const char* goal, double number, const char* unit)
{
    std::printf("| %s | %.2f %s | %s |\n", what, number, unit, goal);
    std::fflush(stdout);
}

bool measure(const Desk& desk)
{
    const auto begin = std::chrono::steady_clock::now();
    WindowedGame game(desk);
    if (!game.comesUp())
        return false;
    const std::chrono::duration<double, std::milli> start = std::chrono::steady_clock::now() - begin;
    row("process start to the title (the start-up tune comes first)", "none", start.count(), "ms");

    Twin twin(game);
    if (!twin.toTitle())
        return false;
    row("processor on the title", "5 %", 100 * processorShare(game.program().pid(), kAtRest), "% of a core");
    constexpr Int kTravel = 3, kSetOut = 1;
    twin.click(Wainroad::TitlePanel, kTravel);
    if (!twin.waitFor(Wainroad::IntroPanel))
        return false;
    std::vector<double> times = pressToPixel(game, Twin::place(Wainroad::IntroPanel, kSetOut), kPresses);
    std::ranges::sort(times);
    row("press of a button to its first changed pixel: median of 60", "35 ms", median(times), "ms");
    row("the same: 95th percentile", "none", times[times.size() * 95 / 100], "ms");
    return true;
}

bool measureTrail(const Desk& desk)
{
    WindowedGame game(desk);
    if (!game.comesUp())
        return false;
    Twin twin(game);
    if (!twin.toStore() || !twin.toTrail())
        return false;
    pauseFor(5);
    row("processor on the standing trail", "5 %", 100 * processorShare(game.program().pid(), kAtRest), "% of a core");
    return true;
}

} // namespace

int main()
{
    if (const std::string tool = Desk::missing(); !tool.empty()) {
        std::fprintf(stderr, "bench_window: %s is not installed\n", tool.c_str());
        return 1;
    }
    std::printf("| the game in its window | measured | goal |\n|---|---|---|\n");
    const Desk desk;
    if (measure(desk) && measureTrail(desk))
        return 0;
    std::fprintf(stderr, "bench_window: the game did not come as far as it should\n");
    return 1;
}
