#include "Tests/Simulation/ModelFixture.h"

namespace Wainroad {

using ModelLoop = ModelTest;

TEST_F(ModelLoop, ADayTakesSpeedPeriods)
{
    for (const Int speed : {2, 4, 8}) {
        form(0);
        gTrain.speed = speed;
        command(kCommandContinue);
        const Int day = gTrain.day;
        for (Int period = 1; period < speed; ++period) {
            ModelVBL();
            EXPECT_EQ(gTrain.day, day) << speed;
        }
        ModelVBL();
        EXPECT_EQ(gTrain.day, day + 1) << speed;
        EXPECT_EQ(gModelTicks, 0);
        DispatchPackets();
    }
}

TEST_F(ModelLoop, AStandingTrainWaitsOnePeriodShortOfADay)
{
    gTrain.speed = 4;
    for (int i = 0; i < 10; ++i)
        ModelVBL();
    EXPECT_EQ(gModelTicks, 3);
    EXPECT_EQ(gTrain.day, 1);
    DispatchPackets();
    command(kCommandContinue);
    EXPECT_EQ(gModelTicks, 0);
}

TEST_F(ModelLoop, SuspendedTravelStandsButARestGoesOn)
{
    command(kCommandContinue);
    gTrain.mode |= kModeSuspended;
    for (int i = 0; i < 5; ++i)
        ModelVBL(), DispatchPackets();
    EXPECT_EQ(gTrain.day, 1);
    gTrain.mode |= kModeResting;
    gTrain.restDays = 3;
    ModelVBL();
    EXPECT_EQ(gTrain.day, 2);
}

TEST_F(ModelLoop, TheBroadcastRebuildsTheViewsState)
{
    gTrain.pace = 2;
    gTrain.wagon[0].money = 70000;
    gTrain.wagon[5].money = 5; // not carried
    gState.wagon[5].money = 99;
    gState.x101C[3] = 1;
    BroadcastState();
    EXPECT_NE(gState.pace, 2);
    DispatchPackets();
    EXPECT_EQ(gState.pace, 2);
    EXPECT_EQ(gState.wagon[0].money, 70000);
    EXPECT_EQ(gState.wagon[5].money, 99);
    EXPECT_EQ(gState.x101C[3], 1);
    EXPECT_EQ(gStateCount, 1);
    gState.mode = 0;
    gTrain.pace = 1;
    BroadcastState();
    DispatchPackets();
    EXPECT_EQ(gState.pace, 2) << "a view without a journey takes nothing";
}

TEST_F(ModelLoop, CopyStateIsATripThroughTheBytes)
{
    // The judge: pack both, put the leading bytes of one over the other, and load.
    const auto judge = [](GameState from, GameState to) {
        from.clamp();
        Bytes packed = to.bytes();
        const Bytes lead = from.bytes();
        std::copy_n(lead.begin(), from.broadcastSize(), packed.begin());
        to.load(packed);
        return to;
    };
    for (const Int startWagons : {0, 1, 3, 32, 40}) {
        GameState from, to;
        from.startWagons = startWagons, from.wagons = -1, from.slots = 99;
        from.rain = 70000, from.landmark = -1, from.names[4] = pstr("Ann");
        from.wagon[0].money = -5, from.wagon[1].health = 400, from.wagon[31].supply[2] = 70000;
        to.wagon[1].health = 300, to.wagon[31].supply[2] = -70000, to.wagon[31].people = -1;
        to.x101C[9] = 9;
        const GameState expected = judge(from, to);
        CopyState(from, to);
        EXPECT_EQ(to, expected) << startWagons;
        EXPECT_EQ(from.slots, 32);
    }
}

TEST_F(ModelLoop, AMixOfTwoBroadcastsWaits)
{
    // A fragment of one broadcast whose serial lies behind that of a later one.
    gTrain.startWagons = 32, gTrain.pace = 1;
    Bytes packed;
    gTrain.packBroadcast(packed);
    const auto fragment = [&](Int part, Int serial) {
        PacketHeader p;
        p.part = part, p.parts = 8, p.serial = serial, p.type = 1;
        const auto from = static_cast<std::ptrdiff_t>((part - 1) * kPacketBytes);
        const auto to = std::min(I(packed.size()), I(from) + kPacketBytes);
        p.data.assign(packed.begin() + from, packed.begin() + to);
        StateFilter(p);
    };
    fragment(1, 20);
    for (Int part = 2; part <= 8; ++part)
        fragment(part, 10 + part);
    EXPECT_EQ(gStateCount, 0);
    for (Int part = 1; part <= 8; ++part)
        fragment(part, 30 + part);
    EXPECT_EQ(gStateCount, 1);
    EXPECT_EQ(gState.pace, 1);
}

TEST_F(ModelLoop, WildFragmentsAreIgnored)
{
    const GameState before = gState;
    for (const auto& [part, parts] :
        {std::pair<Int, Int>{0, 1}, {9, 9}, {-3, 8}, {1, 40}, {1, -8}, {1, 0}, {1000000, 1}}) {
        PacketHeader p;
        p.part = part, p.parts = parts, p.data = Bytes(572, 0xFF);
        StateFilter(p);
    }
    EXPECT_EQ(gState, before);
}

TEST_F(ModelLoop, ALostGameIsSeenOnceAndStops)
{
    for (const Int mode : {kModeOver + 0, kModeOver + kModeDelayed}) { // a delay may come in on the same day
        form(0);
        gTrain.mode = mode;
        ModelVBL();
        EXPECT_EQ(gTrain.mode, 0) << mode;
        DispatchPackets();
        EXPECT_EQ(gState.mode, 0) << mode;
    }
}

TEST_F(ModelLoop, AFollowerKeepsNoModel)
{
    gTrain.leader = 7;
    ModelVBL();
    EXPECT_EQ(gTrain.mode, 0);
}

TEST_F(ModelLoop, TheNinthMessageIsLost)
{
    for (Int kind = 1; kind <= 9; ++kind)
        SendMessage(kind, 1, 2, 3, kAllNodes);
    DispatchPackets();
    EXPECT_EQ(gMessageCount, 8);
    EXPECT_EQ(gMessages[7].kind, 8);
    EXPECT_EQ(gMessages[7].c, 3);
    gMessages[2].kind = 0, --gMessageCount;
    QueuePackets(kPacketSystem, 255, Bytes{10, 5}, 2, 0); // shorter than a message
    DispatchPackets();
    EXPECT_EQ(gMessages[2].kind, 10);
    EXPECT_EQ(gMessages[2].a, 5);
    EXPECT_EQ(gMessages[2].b, 0);
    gState.mode = 0;
    gMessages = {}, gMessageCount = 0;
    SendMessage(6, 0, 0, 0, kAllNodes);
    DispatchPackets();
    EXPECT_EQ(gMessageCount, 0);
}

} // namespace Wainroad
