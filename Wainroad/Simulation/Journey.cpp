#include "Wainroad/Simulation/Journey.h"

#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Hazards.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"
#include "Wainroad/Simulation/Random.h"
#include "Wainroad/Simulation/Trail.h"

#include <algorithm>

namespace Wainroad {

static constexpr std::array<Int, 12> gDaysInMonth{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

using ClimateRow = std::array<Int, 12>;
/// Out of 1000: the chance that a day whose weather is drawn is wet, by region and month.
static constexpr std::array<ClimateRow, 6> gRainChance{{
    {39, 42, 78, 99, 144, 144, 117, 120, 126, 90, 57, 45},
    {15, 15, 30, 63, 90, 99, 81, 66, 48, 30, 15, 15},
    {15, 15, 27, 48, 63, 39, 30, 18, 27, 27, 21, 15},
    {15, 21, 36, 69, 75, 39, 24, 15, 33, 42, 24, 18},
    {45, 39, 39, 36, 36, 27, 9, 9, 18, 30, 39, 42},
    {171, 123, 108, 69, 63, 48, 15, 30, 51, 99, 162, 192},
}};
/// Degrees that a draw of 0..40 is added to; a twentieth of the sum is the temperature.
static constexpr std::array<ClimateRow, 6> gTemperature{{
    {19, 23, 33, 46, 55, 65, 70, 68, 60, 49, 35, 24},
    {13, 18, 26, 39, 49, 59, 65, 63, 53, 41, 27, 17},
    {13, 17, 22, 32, 42, 52, 61, 59, 48, 37, 23, 16},
    {10, 14, 22, 33, 42, 51, 59, 57, 47, 36, 21, 11},
    {20, 26, 32, 40, 48, 55, 64, 62, 53, 42, 30, 22},
    {28, 33, 36, 41, 47, 51, 56, 56, 53, 44, 36, 31},
}};

/// The entry of a climate table for this region and month.
static Int Climate(const std::array<ClimateRow, 6>& table)
{
    return table[static_cast<std::size_t>(gTrain.region)][static_cast<std::size_t>(gTrain.month - 1)];
}

void NextDay()
{
    if (FewestOxen() == 0)
        gTrain.mode &= ~kModeMoving;
    if (gTrain.toNext == 0) {
        gTrain.mode &= ~kModeMoving;
        if ((gTrain.mode & kModeResting) == 0)
            return;
    }
    AdvanceDate();
    if ((gTrain.mode & (kModeResting | kModeDelayed)) == 0)
        RandomEvents();
    DailyUpdate();
}

Int FewestOxen()
{
    Int fewest = 9999;
    for (Int slot = 0; slot < kMaxWagons; ++slot) {
        if (!SlotUsed(gTrain, slot))
            continue;
        Wagon& wagon = WagonOf(gTrain, slot);
        fewest = std::min(fewest, wagon.supply[kOxen]);
        if (wagon.supply[kOxen] == 0 && (wagon.flags & kFlagOxenGone) == 0) {
            wagon.flags |= kFlagOxenGone;
            gTrain.mode &= ~kModeMoving;
            News(35, slot, 0, true);
        }
    }
    return fewest;
}

void AdvanceDate()
{
    ++gTrain.day;
    if (gTrain.day <= gDaysInMonth[static_cast<std::size_t>(gTrain.month - 1)])
        return;
    if (gTrain.day == 29 && gTrain.year % 4 == 0)
        return; // a leap day
    gTrain.day = 1;
    if (++gTrain.month > 12) {
        gTrain.month = 1;
        ++gTrain.year;
    }
}

Int Temperature() { return (Climate(gTemperature) + RandomN(41)) / 20; }

// The steps of the day

/// Counts down a forced stop and a rest. @return `mode` as the day began, without a forced stop that is over.
static Int CountDownStops()
{
    Int startMode = gTrain.mode;
    if (startMode & kModeDelayed) {
        if (gTrain.delayDays > 0) {
            --gTrain.delayDays;
        } else {
            gTrain.mode &= ~kModeDelayed;
            startMode &= ~kModeDelayed;
        }
    }
    if (startMode & kModeResting) {
        if (gTrain.restDays > 0)
            --gTrain.restDays;
        else
            gTrain.mode &= ~kModeResting;
    }
    return startMode;
}

/// A wet day sets either rain or snow; the other keeps yesterday's value.
static void DrawWetDay()
{
    const bool heavy = RandomN(10) <= 2;
    if (gTrain.temperature < 2) {
        gTrain.weather = heavy ? 6 : 5;
        gTrain.snowToday = heavy ? 640 : 160;
    } else {
        gTrain.weather = heavy ? 4 : 3;
        gTrain.rainToday = heavy ? 80 : 20;
    }
}

static void ChangeWeather()
{
    const Int before = gTrain.weather;
    if (before & 128) {
        gTrain.weather = before & ~Int{128};
        switch (gTrain.weather) {
        case 9: gTrain.rainToday = 50; break;
        case 8: gTrain.snowToday = 800; break;
        case 7: gTrain.rainToday = 100; break;
        }
        return;
    }
    if (before < 7 && !Coin())
        return; // the weather holds
    gTrain.weather = RandomN(3);
    gTrain.temperature = Temperature();
    if (RandomN(1000) >= Climate(gRainChance))
        gTrain.rainToday = gTrain.snowToday = 0;
    else
        DrawWetDay();
}

static void SoakAndThaw()
{
    gTrain.rain = Held16(gTrain.rainToday + gTrain.rain * 9 / 10);
    gTrain.snow = Held16(gTrain.snowToday + gTrain.snow * 97 / 100);
    if (gTrain.snow == 0 || (gTrain.temperature <= 2 && gTrain.weather != 4))
        return;
    gTrain.rain = Held16(gTrain.rain + 50);
    if (gTrain.snow < 500)
        gTrain.snow = 0;
}

/// The burden of travelling, and of the day's weather.
static Int Effort()
{
    Int effort = gTrain.mode & (kModeResting | kModeDelayed) ? 0 : (gTrain.pace + 1) * 2;
    if (gTrain.weather == 3 || gTrain.weather == 4)
        effort |= 1;
    else if (gTrain.weather >= 5)
        effort += 2;
    return effort;
}

/// A trade request grows older, and is told of when it runs out.
static void AgeRequest(Wagon& wagon, Int slot)
{
    if (wagon.x5E == kNobody)
        return;
    const bool runsOut = wagon.x5F == 1;
    wagon.x5F = Held8(wagon.x5F - 1);
    if (!runsOut)
        return;
    ByteWriter out;
    WriteDate(out, gTrain);
    out.u8(70), out.u8(kNobody), out.u8(slot), out.u8(wagon.x5E), out.u32(wagon.x5A), out.u32(0);
    QueuePackets(kPacketNews, kAllNodes, out.bytes, I(out.bytes.size()), 0);
    wagon.x5E = kNobody;
}

/// Lets illnesses pass. @return How many members were ill.
static Int CountIll(Wagon& wagon, Int slot)
{
    Int ailing = 0;
    const Int members = std::min(wagon.startPeople, kMaxPeople);
    for (Int member = 0; member < members; ++member) {
        Int& illness = wagon.illness[static_cast<std::size_t>(member)];
        if (illness == kWell || illness == kDead)
            continue;
        ++ailing;
        Int& days = wagon.illDays[static_cast<std::size_t>(member)];
        days = Held8(days - 1);
        if (days == 0) {
            illness = kWell;
            News(36, slot, member, true);
        }
    }
    return ailing;
}

/// What the wagons of a day add up to. `exposure` goes on from one wagon to the next.
struct DaySums {
    Int fewest = 1000, exposure = 0, ailing = 0;
};

static void UpdateWagon(Wagon& wagon, Int slot, Int effort, DaySums& sums)
{
    AgeRequest(wagon, slot);
    wagon.health = std::min(wagon.health, Int{139});
    sums.fewest = std::min(sums.fewest, wagon.supply[kOxen]);
    sums.ailing = CountIll(wagon, slot);

    const Int temperature = gTrain.temperature;
    const Int heat = temperature > 2 ? temperature - 3 : 2 - temperature;
    if (wagon.people >= 1)
        sums.exposure = HeldS16(5 - temperature * 2 - wagon.supply[kClothes] / wagon.people);
    Int& food = wagon.supply[kFood];
    const Int hunger = food < 1 ? 16 : wagon.rations * 2;
    wagon.sickness = (wagon.sickness - 1) / 2 + Int{sums.exposure >= 1 || food < 1};
    wagon.health = Held8(wagon.x62 + wagon.sickness + sums.ailing + effort + hunger + heat + wagon.health * 9 / 10
        + std::max(sums.exposure, Int{0}));
    food = std::max(HeldS16(food - wagon.people * (3 - wagon.rations)), Int{0});
    if (wagon.health >= 140) {
        SomeoneSuffers(wagon, slot);
        wagon.health = 139;
    }
    wagon.x62 = 0;
}

/// What the train would make today, in miles.
static Int MilesMade(const DaySums& sums)
{
    const Int base = gTrain.landmark < 5 ? 20 : 12;
    const Int firm = std::max(4000 - gTrain.snow, Int{0});
    return HeldS16(base * std::min(sums.fewest, Int{8}) * (gTrain.pace + 2) * (10 - sums.ailing) * firm / 640000);
}

static void Arrive(Int startMode)
{
    gTrain.mode &= ~(kModeMoving | kModeResting | kModeDelayed);
    if (IsRiver(gTrain.landmark))
        RiverDepth();
    if (gTrain.landmark == kLastLandmark)
        SendMessage(kMessageArrival, 0, 0, 0, kAllNodes);
    else if ((startMode & kModeResting) == 0)
        Arrived(45, gTrain.landmark + 1);
}

void DailyUpdate()
{
    CheckEmptyTrain();
    const Int startMode = CountDownStops();
    ChangeWeather();
    SoakAndThaw();
    const Int effort = Effort();
    DaySums sums;
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        if (SlotUsed(gTrain, slot))
            UpdateWagon(WagonOf(gTrain, slot), slot, effort, sums);
    if ((gTrain.mode & (kModeMoving | kModeResting | kModeDelayed)) != kModeMoving)
        return;

    const Int made = MilesMade(sums);
    const Int miles = gTrain.toNext < made * 11 / 10 ? gTrain.toNext : made;
    gTrain.miles += miles;
    gTrain.toNext = Held8(gTrain.toNext - miles);
    gTrain.milesToday = Held8(miles);
    if (gTrain.toNext == 0)
        Arrive(startMode);
}

void RiverDepth()
{
    struct River {
        Int landmark, width, depth; ///< feet, and half feet
    };
    static constexpr std::array<River, 4> kRivers{{{0, 600, 2}, {1, 220, 2}, {8, 400, 40}, {11, 1000, 12}}};
    gTrain.riverDepth = gTrain.riverWidth = 0;
    for (const River& river : kRivers)
        if (river.landmark == gTrain.landmark) {
            gTrain.riverDepth = Held8(river.depth + gTrain.rain / 25);
            gTrain.riverWidth = Held8((river.width + gTrain.rain * 3 / 20) / 10);
        }
}

} // namespace Wainroad
