// A game that is measured from outside: it prints what it has found, in milliseconds, and ends.
// usage: bench_game MEASURE SINCE      SINCE is the steady clock at its start, in nanoseconds; MEASURE is start,
// letter, or one of those in Scenes.h

#include "Bench/Scenes.h"

#include "MacToolbox/App/Governor.h"
#include "MacToolbox/App/ScriptHost.h"
#include "MacToolbox/Base/Clock.h"
#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/QuickDraw/Screen.h"
#include "Tests/Harness/TemporaryFolder.h"
#include "Wainroad/Game/Wainroad.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <unistd.h>

using namespace MacToolbox;

namespace {

/// Tells when the first frame is out.
void tellStart(Nanos since)
{
    Screen::shared().onPublish = [since] {
        std::printf("%.3f\n", static_cast<double>(Clock::current().now() - since) / 1e6);
        Platform::current().exitProcess(0);
    };
}

/// The time of the first publish after the key under way has left the queue; 0 before.
std::atomic<Nanos> sShown{0};
std::atomic<bool> sUnderWay{false};

void typeAndTell(const std::string& way)
{
    Script script(way + "\nclick 165 101\nwait 1\n", ".");
    Clock& clock = Clock::current();
    clock.sleep(kSecond / 2);
    while (const auto wait = script.step())
        clock.sleep(*wait);
    std::vector<double> taken;
    for (Int i = 0; i < 400; ++i) {
        clock.sleep((30 + i % 17) * 1'000'000); // anywhere in a tick
        sShown = 0;
        const Nanos since = clock.now();
        sUnderWay = true;
        Input::key(i % 2 == 0 ? 'a' : 8, 0, 0, true);
        while (sShown == 0 && clock.now() < since + kSecond)
            std::this_thread::yield();
        taken.push_back(sShown == 0 ? 1000 : static_cast<double>(sShown - since) / 1e6);
    }
    std::ranges::sort(taken);
    std::printf("%.3f %.3f\n", taken[taken.size() / 2], taken[taken.size() * 95 / 100]);
    Platform::current().post([] { Platform::current().exitProcess(0); });
}

/// Goes to the first name by the script of the environment, and tells how long letters take to show.
void tellLetters()
{
    Screen::shared().onPublish = [] {
        if (sUnderWay && Input::isEmpty()) {
            sUnderWay = false;
            sShown = Clock::current().now();
        }
    };
    const std::string way = Harness::readFile(std::getenv("WR_SCRIPT"));
    unsetenv("WR_SCRIPT"); // played here, and to its end before the first letter
    std::thread(typeAndTell, way).detach();
}

} // namespace

int main(int count, char** arguments)
{
    if (count < 3)
        return 2;
    if (const auto measure = measureOf(arguments[1])) {
        measure();
        return 0;
    }
    if (std::string_view(arguments[1]) == "start")
        tellStart(std::atoll(arguments[2]));
    else
        tellLetters();
    Governor::installAtStart();
    Wainroad::Wainroad_main();
}
