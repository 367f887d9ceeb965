// The model of the journey and the words of its journal: days without and with the broadcast of the state, whole
// journeys, and every message of a full store as text.
#include "Bench/peers/peers.h"

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Data/Resources.h"
#include "Tests/Simulation/Player.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Journal/Wording.h"
#include "Wainroad/Simulation/Journey.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Packets.h"

#include <functional>
#include <memory>
#include <string>

namespace peers {

void registerModel();

namespace {

using namespace Wainroad;

/// The measurements take turns with one model: whoever has it not sets it up again.
const void* sOwner = nullptr;

void takeModel(const void* who, const std::function<void()>& setUp)
{
    if (sOwner == who)
        return;
    sOwner = who;
    if (gPackets.empty()) {
        PacketsInit();
        ModelInit();
    }
    setUp();
}

/// A train that goes on for ever: fed, mended and with a new leg when it needs one.
class EndlessTrain {
public:
    /// @param hears  The view takes the broadcasts.
    explicit EndlessTrain(bool hears) : hears_(hears) { }

    void day()
    {
        takeModel(this, [this] { setOut(); });
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
        if (hears_)
            BroadcastState();
        DispatchPackets();
    }
    /// The days pass, and the view follows if it hears.
    std::string check() const
    {
        if (gTrain.miles <= 0)
            return "the train has not moved";
        return hears_ && gState.miles != gTrain.miles ? "the view does not follow" : "";
    }

private:
    void setOut()
    {
        Player player(Player::kCareful, 1);
        player.begin();
        gTrain.landmark = 3, gTrain.toNext = 200, gTrain.mode = kModeLive | kModeMoving;
        start_ = gTrain;
        listen();
    }
    void listen()
    {
        CopyState(gTrain, gState);
        gState.mode = hears_ ? I(kModeLive) : 0;
    }

    bool hears_;
    GameState start_;
};

void addDay(const std::string& name, bool hears)
{
    const auto train = std::make_shared<EndlessTrain>(hears);
    add(
        name, "project", [train] { train->day(); }, [train] { return train->check(); });
}

/// Careful journeys with one seed after another.
struct Journeys {
    Int begun = 0, ended = 0;

    void travel()
    {
        takeModel(this, [] {});
        Player player(Player::kCareful, ++begun);
        player.begin();
        while (player.goesOn())
            player.dayAlone();
        ended += player.arrived() || player.died();
    }
};

/// A store filled by journeys.
class FullJournal {
public:
    void formatAll()
    {
        takeModel(this, [this] { fill(); });
        characters_ = 0;
        for (Int at = 0; at < gLogInfo.end;) {
            const auto message = MessageAt(at);
            characters_ += MessageText(message).size();
            at += I(message.size());
        }
    }
    std::string check() const { return gLogInfo.count > 1000 && characters_ > 20000 ? "" : "no journal, or no words"; }

private:
    static void fill()
    {
        const std::string bundle = MacToolbox::Platform::current().programFolder() + "/Wainroad_Wainroad.bundle/";
        ResourceManager::shared().open(bundle + "Wainroad.rsrc");
        MessagesInit();
        AddFilter(kPacketNews, NewsFilter);
        for (Int seed = 1; gLogInfo.end < 10000; ++seed) {
            Player player(Player::kCareful, seed);
            player.begin();
            gState.mode = kModeLive;
            while (player.goesOn() && gLogInfo.end < 10000) {
                player.dayAlone();
                FlushNews();
            }
        }
        RemoveFilter(kPacketNews);
    }

    std::size_t characters_ = 0;
};

} // namespace

void registerModel()
{
    addDay("model_day", false);
    addDay("model_day_broadcast", true);
    const auto journeys = std::make_shared<Journeys>();
    add(
        "journey_model", "project", [journeys] { journeys->travel(); },
        [journeys] { return journeys->begun == journeys->ended ? "" : "a journey without an end"; });
    const auto journal = std::make_shared<FullJournal>();
    add(
        "journal_format_all", "project", [journal] { journal->formatAll(); }, [journal] { return journal->check(); });
}

} // namespace peers
