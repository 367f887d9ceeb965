// Plays a script of the game to its end without waiting. It takes the environment variables of the headless game.

#include "MacToolbox/App/ManualRun.h"
#include "Wainroad/Game/Wainroad.h"

#include <cstdio>

using namespace MacToolbox;

namespace {

constexpr int kNotEnded = 2;               // the status of a game that its script has not ended
constexpr Nanos kAftermath = 10 * kSecond; // of the game's time: what the last line has begun comes to its end
constexpr Nanos kLongestAftermath = 60 * kSecond;

/// Ends a run whose script is over and in which nothing more is due: without input the game would never end.
class EndOfScript {
public:
    explicit EndOfScript(ManualRun& run) : run_(run) { }

    void look()
    {
        const ManualClock& clock = run_.clock;
        if (clock.stepping()) {
            played_ = true;
            over_ = clock.time();
            return;
        }
        const Nanos since = clock.time() - over_;
        if (since < kAftermath || (!clock.idle() && since < kLongestAftermath))
            return;
        std::fflush(stdout);
        std::fprintf(stderr, "fastforward: %s\n",
            played_ ? "the script is over and the game goes on; a last line \"quit\" ends it"
                    : "there is no script to play; WR_SCRIPT names one");
        run_.platform.exitProcess(kNotEnded);
    }

private:
    ManualRun& run_;
    Nanos over_ = 0;
    bool played_ = false;
};

} // namespace

int main()
{
    int status = 0;
    onGameStack([&] {
        ManualRun run;
        EndOfScript end(run);
        run.onYield = [&] { end.look(); };
        status = run.run(Wainroad::Wainroad_main);
    });
    Platform::current().exitProcess(status);
}
