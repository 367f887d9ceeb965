#include "Tests/Simulation/ModelFixture.h"

#include "Tests/Simulation/Invariants.h"
#include "Tests/Simulation/Player.h"

#include <algorithm>

namespace Wainroad {

/// Whole journeys on the model alone, from the choice of the month to the end.
class Players : public testing::Test {
protected:
    Players() { startRunAfresh(), PacketsInit(), ModelInit(); }
    ~Players() override { CloseNetwork(), startRunAfresh(); }
};

TEST_F(Players, EveryJourneyHoldsTheInvariantsAndEnds)
{
    constexpr Int kJourneys = 2500; // of each kind
    for (const Player::Kind kind : Player::kKinds) {
        Int arrived = 0, died = 0, days = 0;
        for (Int journey = 0; journey < kJourneys; ++journey) {
            Player player(kind, journey * 48271 + 1);
            Invariants invariants;
            player.begin();
            while (player.goesOn()) {
                player.period();
                const std::string broken = invariants.check();
                ASSERT_EQ(broken, "") << player.describe();
            }
            arrived += player.arrived(), died += player.died(), days += player.days();
            ASSERT_NE(player.arrived(), player.died()) << player.describe();
        }
        RecordProperty(Player::name(kind),
            std::to_string(arrived) + " arrived, " + std::to_string(died) + " died, " + std::to_string(days / kJourneys)
                + " days on average");
        if (kind == Player::kCareful) {
            EXPECT_GT(arrived, kJourneys * 3 / 4) << "care pays";
        }
        if (kind == Player::kGreedy) {
            EXPECT_GT(died, kJourneys / 20) << "greed costs";
        }
    }
}

TEST_F(Players, OneSeedIsOneJourney)
{
    const auto journey = [](Int seed, bool broadcastMore) {
        startRunAfresh(), PacketsInit(), ModelInit();
        Player player(Player::kRandom, seed);
        player.begin();
        Bytes all;
        while (player.goesOn()) {
            player.period();
            if (broadcastMore) // what is told draws nothing
                BroadcastState(), DispatchPackets();
            const Bytes state = gTrain.bytes();
            all.insert(all.end(), state.begin(), state.begin() + kHeadBytes + kWagonBytes);
        }
        return all;
    };
    for (const Int seed : {1, 77, 123456}) {
        const Bytes first = journey(seed, false);
        EXPECT_GT(first.size(), 10000u);
        EXPECT_TRUE(journey(seed, false) == first) << seed;
        EXPECT_TRUE(journey(seed, true) == first) << seed;
        EXPECT_FALSE(journey(seed + 1, false) == first) << seed;
    }
}

/// Each rule is broken on purpose, and must be found.
TEST_F(Players, TheInvariantsBite)
{
    const struct {
        const char* rule;
        void (*damage)();
    } kFaults[] = {
        {"supply", [] { gTrain.wagon[0].supply[kFood] = 2001; }},
        {"supply", [] { gTrain.wagon[0].supply[kOxen] = -1; }},
        {"money", [] { gTrain.wagon[0].money = -1; }},
        {"date", [] { gTrain.day = 0; }},
        {"date", [] { gTrain.month = 13; }},
        {"date back", [] { gTrain.year = 1847; }},
        {"landmark", [] { gTrain.landmark = 17; }},
        {"landmark back", [] { gTrain.landmark = 3; }},
        {"miles back", [] { gTrain.miles -= 1; }},
        {"living", [] { gTrain.wagon[0].people = 4; }},
        {"living", [] { gTrain.wagon[0].illness[2] = kDead; }},
        {"health", [] { gTrain.wagon[0].health = 140; }},
        {"weather", [] { gTrain.weather = 10; }},
        {"temperature", [] { gTrain.temperature = 6; }},
        {"view", [] { gState.wagon[0].supply[kFood] = 70000; }},
        {"view", [] { gState.wagon[0].money += 1; }},
        {"other wagons", [] { gTrain.wagon[7].supply[kFood] = 5; }},
    };
    for (const auto& fault : kFaults) {
        SCOPED_TRACE(fault.rule);
        startRunAfresh(), PacketsInit(), ModelInit();
        Player player(Player::kCareful, 5);
        Invariants invariants;
        player.begin();
        while (gTrain.landmark < 5) {
            player.period();
            ASSERT_EQ(invariants.check(), "");
        }
        fault.damage();
        EXPECT_EQ(invariants.check(), fault.rule);
    }
}

/// Whole journeys against a second model of the same rules, written apart from this one: every number of every day. One
/// draw more or less, or out of its order, changes the rest of a journey.
TEST_F(Players, KnownSeedsGiveKnownJourneys)
{
    const struct {
        Int seed, month, occupation, route;
        std::uint64_t fingerprint;
    } kKnown[] = {
        {1, 3, 0, 0, 17935699915737404463U},
        {42, 4, 1, 1, 13643821620645443856U},
        {1848, 5, 2, 2, 17170137522234809665U},
        {7, 6, 3, 3, 12055417379438179001U},
        {99999, 7, 4, 0, 1321636756482640825U},
        {123456789, 3, 5, 1, 13036155039279593112U},
        {2024, 7, 6, 2, 18136769946529219733U},
        {31, 4, 7, 3, 3012035845591573811U},
    };
    for (const auto& known : kKnown) {
        startRunAfresh(), PacketsInit(), ModelInit();
        qd.randSeed = known.seed;
        gOccupation = known.occupation;
        gStartSupplies = {12, 10, 400, 2, 2, 2, 1600};
        EnterParty(std::array{pstr("Ann"), pstr("Ben"), pstr("Cleo"), pstr("Dan"), pstr("Eve")});
        BeginSolo();
        BeginMonth(known.month);
        Wagon& w = gTrain.wagon[0];
        gTrain.pace = w.rations = 1;
        const auto send = [](Int command, Int a) { SendCommand(command, a, 0), DispatchPackets(); };
        const auto arrived = [] { return gMessages[0].kind == kMessageArrival; };

        std::uint64_t fingerprint = 14695981039346656037U;
        const auto mix = [&fingerprint](
                             Int n) { fingerprint = (fingerprint ^ static_cast<std::uint64_t>(n)) * 1099511628211U; };
        for (int step = 0; step < 500 && !arrived() && !(gTrain.mode & kModeOver); ++step) {
            if (gTrain.mode & (kModeMoving | kModeResting)) {
                NextDay();
            } else if (gTrain.toNext == 0 && IsRiver(gTrain.landmark)) {
                send(kCommandCross, 0);
                send(kCommandCrossed, 0);
            } else {
                send(kCommandContinue, known.route);
                if (!(gTrain.mode & kModeMoving))
                    send(kCommandRest, 1);
            }
            DispatchPackets();
            if (gMourning)
                gTrain.mode &= ~kModeMoving;
            gMourning = false;
            if (!arrived())
                gMessages = {};
            for (const Int n : {gTrain.year, gTrain.month, gTrain.day, gTrain.mode, gTrain.landmark, gTrain.toNext,
                     gTrain.miles, gTrain.weather, gTrain.temperature, gTrain.rain, gTrain.snow, w.health, w.sickness,
                     w.people, gTrain.delayDays, gTrain.restDays, w.money, w.flags, qd.randSeed})
                mix(n);
            std::ranges::for_each(w.supply, mix);
            std::ranges::for_each(w.illness, mix);
            std::ranges::for_each(w.illDays, mix);
        }
        EXPECT_EQ(fingerprint, known.fingerprint) << known.seed;
    }
}

} // namespace Wainroad
