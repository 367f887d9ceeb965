// The model of the journey: days without and with the broadcast of the state, and whole journeys.
#include "Bench/peers/peers.h"

#include "MacToolbox/Base/RunState.h"
#include "Tests/Simulation/Player.h"
#include "Wainroad/Simulation/Journey.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Packets.h"

#include <memory>
#include <string>

namespace peers {

void registerModel();

namespace {

using namespace Wainroad;

void freshModel()
{
    startRunAfresh();
    PacketsInit();
    ModelInit();
}

/// A train that goes on for ever: fed, mended and with a new leg when it needs one.
class EndlessTrain {
public:
    /// @param hears  The view takes the broadcasts.
    explicit EndlessTrain(bool hears) : hears_(hears)
    {
        freshModel();
        Player player(Player::kCareful, 1);
        player.begin();
        gTrain.landmark = 3, gTrain.toNext = 200;
        start_ = gTrain;
        listen();
    }
    bool hears() const { return hears_; }
    void day()
    {
        if (gTrain.wagons < 1 || gTrain.wagon[0].people < 3) {
            gTrain = start_;
            listen();
        }
        Wagon& wagon = gTrain.wagon[0];
        wagon.supply[kOxen] = 8, wagon.supply[kFood] = 1000, wagon.flags = 0;
        if (gTrain.toNext == 0)
            gTrain.toNext = 200;
        gTrain.mode |= kModeMoving;
        NextDay();
        ++days_;
    }
    /// The days pass, and not all are alike.
    std::string check() const { return days_ > 0 && gTrain.miles > 0 ? "" : "the train has not moved"; }

private:
    void listen()
    {
        CopyState(gTrain, gState);
        gState.mode = hears_ ? I(kModeLive) : 0;
    }

    bool hears_;
    GameState start_;
    long days_ = 0;
};

} // namespace

void registerModel()
{
    const auto train = std::make_shared<std::unique_ptr<EndlessTrain>>();
    const auto ready = [train](bool hears) -> EndlessTrain& {
        if (!*train || (*train)->hears() != hears)
            *train = std::make_unique<EndlessTrain>(hears);
        return **train;
    };
    add("model_day", "project",
        [ready, train] {
            ready(false).day();
            DispatchPackets();
        },
        [train] { return (*train)->check(); });
    add("model_day_broadcast", "project",
        [ready, train] {
            ready(true).day();
            BroadcastState();
            DispatchPackets();
        },
        [train] { return gState.miles == gTrain.miles ? (*train)->check() : "the view does not follow"; });

    const auto seed = std::make_shared<Int>(0);
    const auto ends = std::make_shared<long>(0);
    add("journey_model", "project",
        [seed, ends] {
            if (*seed == 0)
                freshModel();
            Player player(Player::kCareful, ++*seed);
            player.begin();
            while (player.goesOn())
                player.dayAlone();
            *ends += player.arrived() || player.died();
        },
        [seed, ends] { return *ends == *seed ? "" : "a journey without an end"; });
}

} // namespace peers
