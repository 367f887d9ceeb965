#include "Tests/Simulation/ModelFixture.h"

namespace Wainroad {

/// A train on a leg, well supplied, in dry and mild weather that holds.
class Journey : public ModelTest {
protected:
    Journey() { onTrail(3, 200); }
    void onTrail(Int landmark, Int toNext)
    {
        gTrain.landmark = landmark, gTrain.toNext = gTrain.x23C = toNext;
        gTrain.mode = kModeLive | kModeMoving;
        gTrain.temperature = 2, gTrain.weather = 0;
        gTrain.rain = gTrain.snow = gTrain.rainToday = gTrain.snowToday = 0;
        qd.randSeed = kTails;
    }
    static constexpr Int kTails = 2; ///< the next draw is even: the weather holds
};

TEST_F(Journey, TheCalendarTurns)
{
    const struct {
        Int year, month, day, yearAfter, monthAfter, dayAfter;
    } kCases[] = {{1848, 2, 28, 1848, 2, 29}, {1848, 2, 29, 1848, 3, 1}, {1849, 2, 28, 1849, 3, 1},
        {1848, 4, 30, 1848, 5, 1}, {1848, 12, 31, 1849, 1, 1}, {1848, 7, 31, 1848, 8, 1}, {1848, 7, 30, 1848, 7, 31}};
    for (const auto& c : kCases) {
        gTrain.year = c.year, gTrain.month = c.month, gTrain.day = c.day;
        AdvanceDate();
        EXPECT_EQ(gTrain.year, c.yearAfter) << c.month << '/' << c.day;
        EXPECT_EQ(gTrain.month, c.monthAfter) << c.month << '/' << c.day;
        EXPECT_EQ(gTrain.day, c.dayAfter) << c.month << '/' << c.day;
    }
}

TEST_F(Journey, GroundSoaksAndDries)
{
    const struct {
        const char* why;
        Int rain, snow, rainToday, snowToday, temperature, weather, rainAfter, snowAfter;
    } kCases[] = {
        {"dry", 100, 1000, 0, 0, 2, 0, 90, 970},
        {"thaw of little snow", 0, 410, 0, 0, 3, 0, 50, 0},
        {"thaw of much snow", 0, 2000, 0, 0, 3, 0, 50, 1940},
        {"heavy rain thaws in the cold", 0, 410, 0, 0, 0, 4, 50, 0},
        {"rain of the day", 100, 0, 80, 0, 2, 4, 170, 0},
        {"snow of the day", 0, 0, 0, 640, 1, 6, 0, 640},
        {"16 bits", 65000, 0, 60000, 0, 2, 0, 60000 + 58500 - 65536, 0},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.why);
        onTrail(3, 200);
        gTrain.rain = c.rain, gTrain.snow = c.snow, gTrain.rainToday = c.rainToday, gTrain.snowToday = c.snowToday;
        gTrain.temperature = c.temperature, gTrain.weather = c.weather;
        EXPECT_EQ(draws(kTails, DailyUpdate), 1) << "one coin, and the weather holds";
        EXPECT_EQ(gTrain.rain, c.rainAfter);
        EXPECT_EQ(gTrain.snow, c.snowAfter);
    }
}

TEST_F(Journey, ForcedWeatherHoldsForOneDay)
{
    const struct {
        Int code, rainToday, snowToday;
    } kCases[] = {{9, 50, 7}, {8, 6, 800}, {7, 100, 7}};
    for (const auto& c : kCases) {
        onTrail(3, 200);
        gTrain.rainToday = 6, gTrain.snowToday = 7;
        gTrain.weather = 128 + c.code;
        EXPECT_EQ(draws(kTails, DailyUpdate), 0);
        EXPECT_EQ(gTrain.weather, c.code);
        EXPECT_EQ(gTrain.rainToday, c.rainToday);
        EXPECT_EQ(gTrain.snowToday, c.snowToday);
        EXPECT_GE(draws(kTails, DailyUpdate), 3) << "no coin: a new day is drawn";
        EXPECT_LT(gTrain.weather, 7);
    }
}

TEST_F(Journey, NewWeatherIsDrawnInOrder)
{
    // Two to four draws after the coin: kind, temperature, wet or dry, and how wet. Every outcome is met once.
    std::array<int, 7> seen{};
    for (Int seed = 1; seed < 60000; seed += 2) {
        wagon().health = 0;
        onTrail(3, 200);
        gTrain.month = seed % 4 < 2 ? 6 : 12;
        gTrain.rainToday = 1, gTrain.snowToday = 2;
        Int check = seed;
        const auto next = [&check] {
            check = check * 16807 % 2147483647;
            return (check & 0xFFFF) == 0x8000 ? 0 : std::abs(static_cast<std::int16_t>(check));
        };
        if (next() % 2 == 0)
            continue;
        const Int kind = next() % 3, temperature = ((gTrain.month == 6 ? 65 : 24) + next() % 41) / 20;
        const bool wet = next() % 1000 < (gTrain.month == 6 ? 144 : 45);
        const bool heavy = wet && next() % 10 <= 2;
        const Int expected = !wet ? kind : temperature < 2 ? (heavy ? 6 : 5) : (heavy ? 4 : 3);
        EXPECT_EQ(draws(seed, DailyUpdate), wet ? 5 : 4);
        ASSERT_EQ(gTrain.weather, expected) << seed;
        ASSERT_EQ(gTrain.temperature, temperature) << seed;
        const bool snows = expected == 5 || expected == 6, rains = expected == 3 || expected == 4;
        ASSERT_EQ(gTrain.rainToday, rains ? (heavy ? 80 : 20) : snows ? 1 : 0) << "only the named field is set";
        ASSERT_EQ(gTrain.snowToday, snows ? (heavy ? 640 : 160) : rains ? 2 : 0);
        ++seen[static_cast<std::size_t>(expected)];
    }
    for (const int count : seen)
        EXPECT_GT(count, 0);
}

TEST_F(Journey, MilesOfADay)
{
    const struct {
        const char* why;
        Int landmark, oxen, pace, snow, ill, toNext, made;
    } kCases[] = {
        {"plain", 3, 6, 1, 0, 0, 200, 22},
        {"oxen beyond eight", 3, 40, 1, 0, 0, 200, 30},
        {"fast", 3, 8, 2, 0, 0, 200, 40},
        {"high country", 5, 8, 1, 0, 0, 200, 18},
        {"two are ill", 3, 8, 1, 0, 2, 200, 24},
        {"deep snow", 3, 8, 1, 4300, 0, 200, 0},
        {"half snow", 3, 8, 1, 2062, 0, 200, 15},
        {"a little short arrives", 3, 8, 1, 0, 0, 32, 32},
        {"just too far", 3, 8, 1, 0, 0, 33, 30},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.why);
        form(0);
        onTrail(c.landmark, c.toNext);
        gTrain.pace = c.pace, gTrain.snow = c.snow;
        wagon().supply[kOxen] = c.oxen;
        for (Int i = 0; i < c.ill; ++i)
            wagon().illness[static_cast<std::size_t>(i)] = 3, wagon().illDays[static_cast<std::size_t>(i)] = 9;
        DailyUpdate();
        EXPECT_EQ(gTrain.miles, c.made);
        EXPECT_EQ(gTrain.milesToday, c.made);
        EXPECT_EQ(gTrain.toNext, c.toNext - c.made);
    }
}

TEST_F(Journey, ADayOfAWagon)
{
    wagon().health = 50, wagon().sickness = 6, wagon().x62 = 20, wagon().rations = 1;
    wagon().supply[kClothes] = 4; // less than one each: exposure 1
    wagon().illness[2] = 5, wagon().illDays[2] = 3;
    wagon().illness[3] = 7, wagon().illDays[3] = 1;
    gTrain.pace = 1;
    DailyUpdate();
    // x62 20, sickness (6 - 1) / 2 + 1 = 3, two ill, effort 4, hunger 2, heat 0, 45 of yesterday, exposure 1
    EXPECT_EQ(wagon().health, 20 + 3 + 2 + 4 + 2 + 0 + 45 + 1);
    EXPECT_EQ(wagon().sickness, 3);
    EXPECT_EQ(wagon().x62, 0);
    EXPECT_EQ(wagon().supply[kFood], 1000 - 5 * 2);
    EXPECT_EQ(wagon().illDays[2], 2);
    EXPECT_EQ(wagon().illness[3], kWell);
    ASSERT_EQ(codes(), std::vector<Int>{36});
    EXPECT_EQ(news[0][5], 3 * 32);

    wagon().supply[kFood] = 3;
    wagon().rations = 0;
    DailyUpdate();
    EXPECT_EQ(wagon().supply[kFood], 0) << "never below nothing";
}

TEST_F(Journey, ClothesAndHeatKeepTheCold)
{
    const struct {
        Int temperature, clothes, people, sickness, health;
    } kCases[] = {{0, 20, 4, 0, 4}, {0, 15, 4, 1, 4 + 1 + 2}, {1, 0, 5, 1, 3 + 1 + 3}, {2, 50, 5, 0, 2},
        {4, 0, 5, 0, 3}, {5, 0, 5, 0, 4}};
    for (const auto& c : kCases) {
        form(0);
        onTrail(3, 200);
        gTrain.temperature = c.temperature;
        wagon().supply[kClothes] = c.clothes, wagon().people = c.people;
        DailyUpdate();
        EXPECT_EQ(wagon().sickness, c.sickness) << c.temperature;
        EXPECT_EQ(wagon().health, c.health) << c.temperature;
    }
}

TEST_F(Journey, TheWeatherWeighsOnTheDay)
{
    const struct {
        Int weather, pace, mode, effort;
    } kCases[] = {{0, 2, 3, 6}, {3, 2, 3, 7}, {4, 0, 3, 3}, {5, 0, 3, 4}, {0, 2, 5, 0}, {3, 2, 5, 1}, {6, 2, 11, 2}};
    for (const auto& c : kCases) {
        form(0);
        onTrail(3, 200);
        gTrain.weather = c.weather, gTrain.pace = c.pace, gTrain.mode = c.mode;
        gTrain.restDays = gTrain.delayDays = 5;
        DailyUpdate();
        EXPECT_EQ(wagon().health, c.effort) << c.weather << ' ' << c.mode;
    }
}

TEST_F(Journey, BadHealthStrikesOnce)
{
    wagon().health = 139, wagon().x62 = 40;
    DailyUpdate();
    EXPECT_EQ(wagon().health, 139);
    EXPECT_EQ(wagon().x62, 0);
    ASSERT_EQ(codes().size(), 1u) << "someone fell ill";
    // The one who is ill dies next, and the relief of a death does not last past the update.
    Int victim = 0;
    while (wagon().illness[static_cast<std::size_t>(victim)] == kWell)
        ++victim;
    wagon().startPeople = wagon().people = 2;
    wagon().illness = {kWell, 4, kWell, kWell, kWell}, wagon().illDays = {0, 50, 0, 0, 0};
    wagon().x62 = 40;
    DailyUpdate();
    EXPECT_EQ(wagon().people, 1);
    EXPECT_EQ(wagon().health, 139);
    EXPECT_TRUE(gMourning);
}

TEST_F(Journey, ARestHoldsForOneUpdateMore)
{
    gTrain.mode |= kModeResting;
    gTrain.restDays = 2;
    const Int toNext = gTrain.toNext;
    std::vector<Int> moved;
    for (int i = 0; i < 4; ++i) {
        qd.randSeed = kTails;
        const bool hazards = draws(kTails, NextDay) > 6;
        moved.push_back(gTrain.toNext);
        EXPECT_EQ(hazards, i == 3) << "hazards strike on the first travelling day after the rest";
    }
    EXPECT_EQ(moved[1], toNext) << "two days held";
    EXPECT_LT(moved[2], toNext) << "the third day travels on";
}

TEST_F(Journey, ADelayHoldsAndEnds)
{
    gTrain.mode |= kModeDelayed;
    gTrain.delayDays = 1;
    const Int toNext = gTrain.toNext;
    DailyUpdate();
    EXPECT_EQ(gTrain.toNext, toNext);
    DailyUpdate();
    EXPECT_EQ(gTrain.mode, kModeLive | kModeMoving);
    EXPECT_LT(gTrain.toNext, toNext);
}

TEST_F(Journey, AStandingTrainPassesNoDays)
{
    gTrain.toNext = 0;
    EXPECT_EQ(draws(kTails, NextDay), 0);
    EXPECT_EQ(gTrain.day, 1);
    EXPECT_EQ(gTrain.mode, kModeLive);
    gTrain.mode |= kModeResting, gTrain.restDays = 1;
    NextDay();
    EXPECT_EQ(gTrain.day, 2);
    EXPECT_EQ(gTrain.toNext, 0);
}

TEST_F(Journey, ArrivalIsToldUnlessTheDayBeganAtRest)
{
    const struct {
        Int landmark;
        bool river, told;
        Int startMode;
    } kCases[] = {
        {0, true, true, 3}, {2, false, true, 3}, {8, true, true, 3}, {16, false, false, 3}, {2, false, false, 7}};
    for (const auto& c : kCases) {
        form(0);
        onTrail(c.landmark, 1);
        news.clear();
        gMessages = {};
        gTrain.mode = c.startMode, gTrain.restDays = 0;
        gTrain.rain = 1000, gTrain.riverDepth = gTrain.riverWidth = 0;
        DailyUpdate();
        DispatchPackets();
        EXPECT_EQ(gTrain.mode, kModeLive) << c.landmark;
        EXPECT_EQ(gTrain.riverDepth != 0, c.river);
        ASSERT_EQ(news.size(), c.told ? 1u : 0u) << c.landmark;
        if (c.told) {
            EXPECT_EQ(hex(news[0]), "073803012d" + hex(Bytes{static_cast<std::uint8_t>(c.landmark + 1)}));
        }
        EXPECT_EQ(gMessages[0].kind == kMessageArrival, c.landmark == 16);
    }
}

TEST_F(Journey, RiversRiseWithTheRain)
{
    const struct {
        Int landmark, rain, depth, width;
    } kCases[] = {{0, 0, 2, 60}, {0, 500, 22, 67}, {1, 100, 6, 23}, {8, 1000, 80, 55}, {11, 300, 24, 104},
        {2, 500, 0, 0}, {8, 65535, (40 + 2621) & 255, ((400 + 9830) / 10) & 255}};
    for (const auto& c : kCases) {
        gTrain.landmark = c.landmark, gTrain.rain = c.rain;
        RiverDepth();
        EXPECT_EQ(gTrain.riverDepth, c.depth) << c.landmark << ' ' << c.rain;
        EXPECT_EQ(gTrain.riverWidth, c.width) << c.landmark << ' ' << c.rain;
    }
}

TEST_F(Journey, TheLastOxStopsTheTrainAndIsToldOnce)
{
    wagon().supply[kOxen] = 0;
    EXPECT_EQ(FewestOxen(), 0);
    EXPECT_EQ(gTrain.mode, kModeLive);
    FewestOxen();
    EXPECT_EQ(codes(), std::vector<Int>{35});
    gTrain.order.fill(kNobody);
    EXPECT_EQ(FewestOxen(), 9999);
}

TEST_F(Journey, AnOpenRequestRunsOut)
{
    wagon().x5E = kFood, wagon().x5A = 50, wagon().x5F = 2;
    DailyUpdate();
    EXPECT_EQ(wagon().x5E, kFood);
    DailyUpdate();
    EXPECT_EQ(wagon().x5E, kNobody);
    DispatchPackets();
    ASSERT_EQ(news.size(), 1u);
    EXPECT_EQ(hex(news[0]),
        "07380301"
        "46ff0006"
        "00000032"
        "00000000");
}

TEST_F(Journey, OnlyTheOneWagonOfASoloJourneyLives)
{
    for (int day = 0; day < 40; ++day)
        NextDay(), DispatchPackets();
    for (std::size_t i = 1; i < 32; ++i) {
        EXPECT_EQ(gTrain.order[i], I(i)) << "set, and not used";
        EXPECT_EQ(gTrain.wagon[i].health, 0);
    }
}

} // namespace Wainroad
