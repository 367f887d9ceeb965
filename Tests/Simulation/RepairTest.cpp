#include "Tests/Simulation/ModelFixture.h"

#include "Wainroad/Simulation/Repair.h"

#include <random>

namespace Wainroad {

using Repair = ModelTest;

/// Lets a loaded state live: days, commands of every number, the broadcast, the map.
static void live(const GameState& loaded)
{
    gTrain = loaded;
    gTrain.mode = kModeLive | kModeMoving;
    gTrain.leader = gMyID;
    CopyState(gTrain, gState);
    gState.mode = kModeLive;
    for (Int day = 0; day < 40; ++day) {
        NextDay();
        BroadcastState();
        DispatchPackets();
        SendCommand(day * 7 % 64, day, day);
        DispatchPackets();
        gTrain.mode |= kModeLive | kModeMoving;
        for (Int section = 0; section < 8; ++section) {
            Int count = 0, total = 0;
            SectionDots(section, count, total);
        }
    }
}

TEST_F(Repair, WhatIsTrueStaysAsItIs)
{
    gTrain.wagon[0].health = 130, gTrain.wagon[0].money = -5, gTrain.speed = 0, gTrain.weather = 200,
    gTrain.rain = 65000;
    gTrain.wagon[9].people = 0;
    GameState repaired = gTrain;
    MakeHarmless(repaired);
    EXPECT_EQ(repaired, gTrain);
}

TEST_F(Repair, WhatCannotBeIsMadeHarmless)
{
    GameState wild;
    wild.load(Bytes(static_cast<std::size_t>(kStateBytes), 0xFF));
    MakeHarmless(wild);
    EXPECT_EQ(wild.month, 12);
    EXPECT_EQ(wild.day, 31);
    EXPECT_EQ(wild.region, 5);
    EXPECT_EQ(wild.landmark, -1);
    EXPECT_EQ(wild.slots, 32);
    EXPECT_EQ(wild.order[0], 0) << "a train without a wagon gets one";
    EXPECT_EQ(LastUsedSlot(wild), 0);
    const Wagon& w = wild.wagon[0];
    EXPECT_EQ(w.startPeople, 5);
    EXPECT_EQ(w.people, 5);
    EXPECT_EQ(w.supply[kOxen], 0);
    EXPECT_EQ(w.rations, 2);
    EXPECT_EQ(w.occupation, 7);

    GameState zero;
    zero.load({});
    MakeHarmless(zero);
    EXPECT_EQ(zero.month, 1);
    EXPECT_EQ(zero.slots, 1);
    EXPECT_EQ(zero.wagon[0].people, 1);
    GameState twice = zero;
    MakeHarmless(twice);
    EXPECT_EQ(twice, zero);
}

TEST_F(Repair, AnyBytesCanBeLivedWith)
{
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        Bytes bytes = gTrain.bytes();
        const int wild = round % 3 == 0 ? 4234 : 40;
        for (int i = 0; i < wild; ++i)
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        GameState loaded;
        loaded.load(std::span(bytes).first(round % 5 == 0 ? random() % bytes.size() : bytes.size()));
        MakeHarmless(loaded);
        live(loaded);
        form(0);
    }
}

TEST_F(Repair, OneWagonIsKept)
{
    gTrain.slots = 8;
    gTrain.order[5] = 7;
    gTrain.wagon[7].money = 123;
    EXPECT_EQ(LastUsedSlot(gTrain), 7);
    KeepOneWagon(gTrain, 5);
    EXPECT_EQ(UsedSlots(gTrain), 1);
    EXPECT_EQ(LastUsedSlot(gTrain), 5);
    EXPECT_EQ(WagonOf(gTrain, 5).money, 123);
    EXPECT_EQ(&WagonOf(gTrain, 5), &gTrain.wagon[0]);
    KeepOneWagon(gTrain, 5);
    EXPECT_EQ(WagonOf(gTrain, 5).money, 123);
}

} // namespace Wainroad
