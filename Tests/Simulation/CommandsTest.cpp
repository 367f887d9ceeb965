#include "Tests/Simulation/ModelFixture.h"

namespace Wainroad {

using Commands = ModelTest;

TEST_F(Commands, FlagsAndModesGoOnAndOff)
{
    const struct {
        Int on, off;
        Int Wagon::*bits;
        Int bit;
    } kPairs[] = {{kCommandEnterStore, kCommandLeaveStore, &Wagon::flags, kFlagInStore},
        {kCommandTalkBegins, kCommandTalkEnds, &Wagon::flags, kFlagTalking},
        {kCommandHunt, kCommandHunted, &Wagon::flags, kFlagHunting},
        {kCommandMark, kCommandUnmark, &Wagon::flags2, kFlag2Mark},
        {kCommandCrossingChosen, kCommandCrossed, &Wagon::flags2, kFlag2CrossingChosen},
        {kCommandRaft, kCommandRafted, &Wagon::flags2, kFlag2Rafting},
        {kCommandCross, kCommandCrossed, &Wagon::flags2, kFlag2Crossing}};
    for (const auto& pair : kPairs) {
        command(pair.on);
        EXPECT_EQ(wagon().*pair.bits & pair.bit, pair.bit) << pair.on;
        command(pair.off);
        EXPECT_EQ(wagon().*pair.bits & pair.bit, 0) << pair.off;
    }
}

TEST_F(Commands, ChoicesReachTheModel)
{
    command(kCommandRations, 2);
    command(kCommandPace, 1);
    command(kCommandRest, 9);
    command(kCommandRequest, kFood, -4);
    EXPECT_EQ(wagon().rations, 2);
    EXPECT_EQ(gTrain.pace, 1);
    EXPECT_EQ(gTrain.restDays, 9);
    EXPECT_EQ(gTrain.mode, kModeLive | kModeResting);
    EXPECT_EQ(wagon().x5E, kFood);
    EXPECT_EQ(wagon().x5A, -4);
    EXPECT_EQ(wagon().x5F, 21);
    command(kCommandFine);
    EXPECT_EQ(wagon().money, 160000 - 500);
    wagon().money = 300;
    command(kCommandFine);
    EXPECT_EQ(wagon().money, 0);
}

TEST_F(Commands, NothingHappensWithoutAJourneyOrAMeaning)
{
    GameState before = gTrain;
    for (const Int number : {9, 21, 39, 41, 59, 62, 255})
        command(number, 1, 1);
    EXPECT_EQ(gTrain, before);
    gTrain.mode = 0;
    before = gTrain;
    for (Int number = 0; number < 256; ++number)
        command(number, 1, 1);
    EXPECT_EQ(gTrain, before);
}

TEST_F(Commands, ContinueTakesTheLegsAndTheBranches)
{
    const struct {
        Int landmark, toNext, route, landmarkAfter, toNextAfter;
    } kCases[] = {{-1, 0, 0, 0, 102}, {0, 0, 0, 1, 83}, {3, 40, 0, 3, 40}, {6, 0, 0, 7, 57}, {6, 0, 1, 8, 125},
        {6, 0, 2, 7, 57}, {7, 0, 1, 8, 162}, {13, 0, 1, 14, 55}, {13, 0, 3, 15, 125}, {15, 0, 0, 16, 100},
        {16, 12, 0, 16, 12}};
    for (const auto& c : kCases) {
        form(0);
        gTrain.landmark = c.landmark, gTrain.toNext = c.toNext;
        gModelTicks = 1;
        command(kCommandContinue, c.route);
        EXPECT_EQ(gTrain.landmark, c.landmarkAfter) << c.landmark;
        EXPECT_EQ(gTrain.toNext, c.toNextAfter) << c.landmark;
        EXPECT_EQ(gTrain.route, c.route);
        EXPECT_TRUE(gTrain.mode & kModeMoving);
        EXPECT_EQ(gModelTicks, 0);
    }
    form(0);
    gTrain.landmark = 16, gTrain.toNext = 0;
    command(kCommandContinue);
    EXPECT_EQ(gTrain.landmark, 16) << "no step past the end";
    command(kCommandCross);
    EXPECT_EQ(gTrain.landmark, 16);
}

TEST_F(Commands, AWagonThatCannotGoHoldsTheTrain)
{
    const struct {
        const char* why;
        Int oxen, flags, spares;
        Int reason, flagsAfter, sparesAfter;
    } kCases[] = {
        {"no oxen", 0, kFlagInStore, 1, 1, kFlagInStore, 1},
        {"in the store", 8, kFlagInStore | kFlagHunting, 1, 6, kFlagInStore | kFlagHunting, 1},
        {"hunting", 8, kFlagHunting, 1, 5, kFlagHunting, 1},
        {"told of the oxen once", 8, kFlagOxenGone, 1, 0, 0, 1},
        {"all mended", 8, 14, 1, 0, 0, 0},
        {"first part", 8, kFlagFirstBroken, 0, 2, kFlagFirstBroken, 0},
        {"the last reason counts", 8, 14, 0, 4, 14, 0},
        {"mended, but in the store", 8, kFlagSecondBroken | kFlagInStore, 1, 6, kFlagInStore, 1},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.why);
        form(0);
        gTrain.landmark = 3, gTrain.toNext = 50;
        wagon().supply[kOxen] = c.oxen, wagon().flags = c.flags;
        for (const Int part : {kFirstPart, kSecondPart, kThirdPart})
            wagon().supply[static_cast<std::size_t>(part)] = c.spares;
        gState.wagon[0] = wagon();
        EXPECT_EQ(CantContinue(), c.reason != 0);
        news.clear();
        command(kCommandContinue);
        DispatchPackets();
        EXPECT_EQ((gTrain.mode & kModeMoving) != 0, c.reason == 0);
        EXPECT_EQ(wagon().flags, c.flagsAfter);
        EXPECT_EQ(wagon().supply[kFirstPart], c.sparesAfter == 0 && (c.flags & 2) ? 0 : c.spares);
        ASSERT_EQ(news.size(), c.reason ? 1u : 0u);
        if (c.reason) {
            EXPECT_EQ(hex(news[0]),
                "07380301"
                "6e00"
                "0" + std::to_string(c.reason)
                    + "00");
        }
    }
}

TEST_F(Commands, AHeldTrainLeavesTheRiverBankButNoOtherPlace)
{
    for (const Int landmark : {-1, 0, 1, 2, 8, 9, 11, 12}) {
        form(0);
        gTrain.landmark = landmark, gTrain.toNext = 0;
        wagon().supply[kOxen] = 0;
        command(kCommandContinue);
        EXPECT_EQ(gTrain.landmark, landmark + (IsRiver(landmark) ? 1 : 0)) << landmark;
        EXPECT_EQ(gTrain.toNext, IsRiver(landmark) ? gTrailMiles[static_cast<std::size_t>(landmark + 1)][0] : 0);
        EXPECT_FALSE(gTrain.mode & kModeMoving);
    }
}

TEST_F(Commands, TheHuntBringsFoodAndADayOfRest)
{
    command(kCommandContinue);
    command(kCommandHunt);
    EXPECT_FALSE(gTrain.mode & kModeMoving);
    command(kCommandHunted, 120, 7);
    EXPECT_EQ(wagon().supply[kFood], 1120);
    EXPECT_EQ(wagon().supply[kBullets], 393);
    EXPECT_EQ(gTrain.restDays, 1);
    EXPECT_TRUE(gTrain.mode & kModeResting);
    command(kCommandHunted, 0, 0x1FFFF); // the low half is -1
    EXPECT_EQ(wagon().supply[kBullets], 394);
}

TEST_F(Commands, SuppliesChangeAndAnEmptyTrainEnds)
{
    SendSupplyChange(std::array<Int, 7>{2, 1, 20, 0, 0, 0, -100}, -5000);
    DispatchPackets();
    EXPECT_EQ(wagon().supply, (std::array<Int, 7>{14, 11, 420, 1, 1, 1, 900}));
    EXPECT_EQ(wagon().money, 155000);
    SendSupplyChange(std::array<Int, 7>{}, -200000);
    DispatchPackets();
    EXPECT_EQ(wagon().money, 0);

    wagon().supply = {0, 0, 0, 0, 0, 0, 1};
    wagon().money = 65536; // its low 16 bits are 0
    CheckEmptyTrain();
    EXPECT_EQ(gTrain.wagons, 1);
    wagon().supply = {};
    wagon().supply[kFood] = 20, wagon().money = 65516; // 20 and -20 are nothing
    CheckEmptyTrain();
    EXPECT_EQ(gTrain.wagons, 0);
    EXPECT_EQ(gTrain.mode, kModeOver);
}

TEST_F(Commands, ATradeNeedsBothHalves)
{
    const struct {
        const char* why;
        Int itemA, amountA, itemB, amountB;
        bool done;
    } kCases[] = {
        {"clothes for food", kClothes, 2, kFood, 50, true},
        {"oxen count double", kOxen, 3, 7, 1000, true},
        {"too many oxen at the taker", kOxen, 15, 7, 1000, false},
        {"the giver lacks them", kClothes, 11, kFood, 1, false},
        {"the other lacks the money", kClothes, 1, 7, 200000, false},
        {"a gift", kClothes, 1, 8, 0, true},
        {"beyond the limit", kFood, 1500, 8, 0, false},
        {"an unknown item", 9, 0, 8, 0, false},
        {"a negative amount", kFood, -5, 8, 0, false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.why);
        form(0);
        gTrain.wagons = gTrain.slots = 2;
        Wagon &offered = gTrain.wagon[0], &answers = gTrain.wagon[1];
        answers.supply = {40, 10, 100, 1, 1, 1, 1600};
        answers.money = 50;
        offered.x5E = kClothes;
        const Wagon offeredBefore = offered, answersBefore = answers;
        ByteWriter out;
        out.u8(40), out.u8(1), out.u8(0), out.u8(c.itemA), out.u32(c.amountA), out.u8(c.itemB), out.u8(0),
            out.u32(c.amountB);
        QueuePackets(kPacketCommand, 42, out.bytes, 20, 0);
        DispatchPackets();
        if (!c.done) {
            EXPECT_EQ(offered, offeredBefore);
            EXPECT_EQ(answers, answersBefore);
            continue;
        }
        const auto total = [](const Wagon& a, const Wagon& b, std::size_t i) { return a.supply[i] + b.supply[i]; };
        for (std::size_t i = 0; i < 7; ++i)
            EXPECT_EQ(total(offered, answers, i), total(offeredBefore, answersBefore, i));
        EXPECT_EQ(offered.money + answers.money, offeredBefore.money + answersBefore.money);
        const auto a = static_cast<std::size_t>(c.itemA);
        EXPECT_EQ(offered.supply[a] - offeredBefore.supply[a], c.itemA == kOxen ? c.amountA * 2 : c.amountA);
        EXPECT_EQ(offered.x5E, c.itemA == kClothes ? kNobody : kClothes);
    }
    gTradeWithEmigrant = true;
    command(kCommandTrade);
    EXPECT_FALSE(gTradeWithEmigrant);
}

TEST_F(Commands, ACrossingTakesGoodsAndPeople)
{
    gTrain.landmark = 0, gTrain.toNext = 0;
    command(kCommandCross);
    EXPECT_EQ(gTrain.landmark, 1);
    EXPECT_EQ(gTrain.toNext, 83);
    SendLossPacket(kCommandCrossed, std::array<Int, 7>{2, 0, 500, 0, 0, 0, 10}, std::array<Int, 5>{0, 1, 0, 0, 1});
    DispatchPackets();
    EXPECT_EQ(wagon().supply, (std::array<Int, 7>{10, 10, 0, 1, 1, 1, 990}));
    EXPECT_EQ(wagon().people, 3);
    EXPECT_EQ(wagon().illness[1], kDead);
    EXPECT_TRUE(gMourning);
    EXPECT_FALSE(gNewDeaths) << "told";
    EXPECT_FALSE(gTrain.mode & kModeMoving) << "the train stands and mourns";
    DispatchPackets();
    EXPECT_EQ(gMessages[0].kind, kMessageDeath);
    ASSERT_EQ(codes(), std::vector<Int>{66});
    EXPECT_EQ(hex(news[0]),
        "07380301"
        "4200"
        "0200"
        "01f4"
        "00000000"
        "000a"
        "00000000");

    SendLossPacket(kCommandCrossed, {}, {});
    DispatchPackets();
    EXPECT_TRUE(gTrain.mode & kModeMoving) << "nothing lost, the train goes on";
    EXPECT_EQ(codes().size(), 1u);
}

TEST_F(Commands, TheLastToDrownEndsTheWagon)
{
    gTrain.mode |= kModeSuspended;
    SendLossPacket(kCommandCrossed, {}, std::array<Int, 5>{1, 1, 1, 1, 1});
    DispatchPackets();
    EXPECT_EQ(wagon().people, 0);
    EXPECT_EQ(gTrain.mode, kModeOver);
    EXPECT_EQ(wagon().node, kNobody);
    EXPECT_EQ(codes(), std::vector<Int>{44});

    form(0);
    news.clear();
    wagon().health = 130;
    SendLossPacket(kCommandRafted, {}, std::array<Int, 5>{1, 1, 0, 1, 0});
    DispatchPackets();
    EXPECT_EQ(wagon().people, 2);
    EXPECT_EQ(wagon().health, 105);
    EXPECT_EQ(codes(), (std::vector<Int>{53, 53, 53}));
    for (const Bytes& message : news)
        EXPECT_EQ(message[5], 32) << "one person each";
    SendLossPacket(kCommandRafted, {}, std::array<Int, 5>{1, 1, 1, 1, 1});
    DispatchPackets();
    EXPECT_EQ(gTrain.mode, kModeOver);
    EXPECT_EQ(codes(), (std::vector<Int>{53, 53, 53, 53, 44}));
}

TEST_F(Commands, TheTalkTurnGoesRound)
{
    gTrain.opt245 = 2;
    command(kCommandTalk, 255, 42);
    EXPECT_EQ(gTrain.x249, 0);
    DispatchPackets();
    EXPECT_EQ(gMessages[0].b, 1);
    command(kCommandTalk, 255, 42);
    DispatchPackets();
    EXPECT_EQ(gMessages[1].b, 0) << "somebody has the turn";
    command(kCommandTalkEnds);
    EXPECT_EQ(gTrain.x249, kNobody);
    EXPECT_EQ(gTrain.opt245, 1);
}

TEST_F(Commands, ShortAndLongPacketsAreReadSafely)
{
    for (std::size_t length = 1; length <= 30; ++length)
        for (Int number = 0; number < 64; ++number) {
            form(0);
            Bytes bytes(length, 0xFF);
            bytes[0] = static_cast<std::uint8_t>(number);
            PacketHeader p;
            p.data = bytes;
            CommandFilter(p);
            p.data = Bytes(1, static_cast<std::uint8_t>(number));
            CommandFilter(p);
            DispatchPackets();
        }
    PacketHeader empty;
    CommandFilter(empty);
}

TEST_F(Commands, ActionsAreDatedByTheView)
{
    gState.year = 1848, gState.month = 4, gState.day = 5;
    gTrain.day = 9;
    SendAction(66, 17);
    SendRest(3);
    DispatchPackets();
    ASSERT_EQ(news.size(), 1u);
    EXPECT_EQ(hex(news[0]),
        "07380405"
        "6d421100");
    EXPECT_EQ(gTrain.restDays, 3);
}

} // namespace Wainroad
