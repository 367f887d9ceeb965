#include "Wainroad/Simulation/Hazards.h"

#include "Wainroad/Simulation/Goods.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"
#include "Wainroad/Simulation/Random.h"

#include <algorithm>

namespace Wainroad {

static constexpr Int kHighCountry = 12; ///< landmark from which the trail is rough and the storms bring snow
static constexpr Int kForced = 128;     ///< bit of a weather code that a hazard forces on the day's update

/// A shorter delay never shortens a longer one.
static void Delay(Int days)
{
    if (gTrain.delayDays >= days)
        return;
    gTrain.mode |= kModeDelayed;
    gTrain.delayDays = days;
}

static Int& Illness(Wagon& wagon, Int member) { return wagon.illness[static_cast<std::size_t>(member)]; }
static Int& IllDays(Wagon& wagon, Int member) { return wagon.illDays[static_cast<std::size_t>(member)]; }

PickedWagon PickWagon()
{
    const Int used = UsedSlots(gTrain);
    if (used == 0)
        return {};
    Int skip = RandomN(used);
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        if (SlotUsed(gTrain, slot) && skip-- == 0)
            return {&WagonOf(gTrain, slot), slot};
    return {};
}

Int PickPerson(const Wagon& wagon)
{
    if (wagon.people < 2)
        return 0;
    const Int others = std::min(wagon.startPeople, kMaxPeople) - 1;
    for (Int tries = 0; tries < 1000; ++tries) {
        const Int member = RandomN(others) + 1;
        if (wagon.illness[static_cast<std::size_t>(member % kMaxPeople)] != kDead)
            return member % kMaxPeople;
    }
    return 0;
}

void RandomEvents()
{
    if (gTrain.wagons == 0)
        return;
    if (gTrain.snow > 3000) {
        Delay(RandomN(10) + 1);
        TrainNews(12);
    }
    if (gTrain.temperature >= 3 && Chance(7))
        Snakebite();
    for (Int slot = 0; slot < kMaxWagons; ++slot) {
        if (!SlotUsed(gTrain, slot))
            continue;
        Wagon& wagon = WagonOf(gTrain, slot);
        const Int roll = RandomN(100);
        if (wagon.health / 15 >= roll)
            SomeoneSuffers(wagon, slot);
        if (wagon.supply[kFood] == 0 && Chance(5)) {
            wagon.supply[kFood] += 30;
            News(20, slot, 0, true);
        }
        if (gTrain.month >= 5 && gTrain.month <= 9 && Chance(4))
            Berries(wagon, slot);
    }
    if (gTrain.weather == 4 || gTrain.weather == 6)
        Blizzard();
    else if (gTrain.temperature < 2 && Chance(15))
        Blizzard();
    if (Chance(6))
        Storm();
    const Int mishap = RandomN(100);
    if (mishap < 4 || (mishap < 7 && gTrain.landmark >= kHighCountry)) {
        switch (RandomN(3)) {
        case 2: BrokenBone(); break;
        case 1: OxProblem(); break;
        default: BrokenPart(); break;
        }
    }
    if (Chance(2))
        LostTrail();
    if (gTrain.landmark >= kHighCountry && Chance(5))
        RoughTrail();
    if (RandomN(100) == 0) {
        switch (RandomN(3)) {
        case 2: Lost(); break;
        case 1:
            if (const PickedWagon picked = PickWagon(); picked.wagon) {
                Delay(RandomN(3) + 1);
                News(21, picked.slot, 0, true);
            }
            break;
        default: Accident(); break;
        }
    }
    switch (RandomN(100)) {
    case 1: Thief(); break;
    case 0: FindAbandonedWagon(); break;
    }
    if (gTrain.rain == 0 && Coin())
        Drought();
}

// Weather and trail

void Storm()
{
    if (gTrain.landmark < kHighCountry) {
        if (gTrain.temperature == 5) {
            TrainNews(1);
            gTrain.weather = kForced + 9;
        }
    } else if (gTrain.temperature < 5 && Coin()) {
        Delay(1);
        TrainNews(0);
    }
}

void Blizzard()
{
    if (gTrain.temperature == 2 || gTrain.temperature == 3)
        return;
    const bool cold = gTrain.temperature < 2;
    Delay(1);
    TrainNews(cold ? 7 : 8);
    gTrain.weather = kForced + (cold ? 8 : 7);
}

/// Every wagon carries an extra burden for a day.
static void BurdenAll(Int burden)
{
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        if (SlotUsed(gTrain, slot))
            WagonOf(gTrain, slot).x62 = burden;
}

void Drought()
{
    const Int roll = RandomN(100);
    if (roll < 40) {
        TrainNews(9);
        return;
    }
    if (gTrain.snow != 0)
        return;
    TrainNews(roll < 60 ? 11 : 10);
    BurdenAll(roll < 60 ? 20 : 10);
}

void LostTrail()
{
    Delay(RandomN(5) + 1);
    TrainNews(Coin() ? 2 : 3);
}

void RoughTrail()
{
    if (Coin()) {
        BurdenAll(10);
        TrainNews(4);
    } else {
        Delay(RandomN(10) + 1);
        TrainNews(5);
    }
}

// People

void Snakebite()
{
    const PickedWagon picked = PickWagon();
    if (!picked.wagon)
        return;
    const Int member = PickPerson(*picked.wagon);
    Illness(*picked.wagon, member) = kSnakebite;
    Int& days = IllDays(*picked.wagon, member);
    days = std::max(days, RandomN(3) + 9);
    News(29, picked.slot, member, true);
}

void BrokenBone()
{
    const PickedWagon picked = PickWagon();
    if (!picked.wagon)
        return;
    const Int member = PickPerson(*picked.wagon);
    const Int bone = RandomN(2);
    Illness(*picked.wagon, member) = bone;
    Int& days = IllDays(*picked.wagon, member);
    days = std::max(days, RandomN(5) + 28);
    News(26 + bone, picked.slot, member, true);
}

void Lost()
{
    const PickedWagon picked = PickWagon();
    if (!picked.wagon)
        return;
    const Int member = PickPerson(*picked.wagon);
    Delay(RandomN(5) + 1);
    News(28, picked.slot, member, true);
}

/// Journal code of a death from an illness.
static Int DeathCode(Int illness)
{
    if (illness == kSnakebite)
        return 55;
    return illness >= 4 && illness <= 7 ? illness + 52 : 54;
}

void SomeoneSuffers(Wagon& wagon, Int slot)
{
    const Int member = PickPerson(wagon);
    const Int illness = Illness(wagon, member);
    const bool saver = HasOccupation(gState, 3);
    wagon.x62 = 20;
    if (illness == kWell) {
        const Int caught = RandomN(6) + 3;
        Illness(wagon, member) = caught;
        IllDays(wagon, member) = RandomN(3) + 9;
        News(caught + 34, slot, member, true);
        return;
    }
    const bool bone = illness == 0 || illness == 1;
    if (saver && RandomN(bone ? 2 : 3) == 0) {
        News(52, slot, member, true);
        return;
    }
    PersonDies(wagon, slot, member, DeathCode(illness));
    gMourning = true;
    SendMessage(kMessageDeath, 0, 0, 0, kAllNodes);
}

void PersonDies(Wagon& wagon, Int slot, Int member, Int code)
{
    wagon.health = std::min(wagon.health, Int{105});
    Illness(wagon, member) = kDead;
    --wagon.people;
    if (wagon.people <= 0)
        WagonGone(wagon, slot);
    else
        News(code, slot, member, true);
}

/// When the leader's wagon is gone another one leads: the lowest node of the other programs.
static void ChooseLeader()
{
    Int lowest = kNobody;
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        if (slot != gMySlot && SlotUsed(gTrain, slot))
            lowest = std::min(lowest, WagonOf(gTrain, slot).node);
    if (lowest >= kNobody)
        return;
    gTrain.leader = lowest;
    gTrain.mode = kModeLive;
    BroadcastState();
}

void WagonGone(Wagon& wagon, Int slot)
{
    News(44, slot, 0, true);
    SendMessage(kMessageGone, 0, 0, 0, wagon.node);
    gTrain.order[static_cast<std::size_t>(slot & 31)] = kNobody;
    wagon.flags = wagon.flags2 = 0;
    const Int gone = wagon.node;
    wagon.node = kNobody;
    --gTrain.wagons;
    if (gTrain.wagons < 2 || gTrain.captain == slot)
        gTrain.captain = kNobody;
    if (gone == gTrain.leader)
        ChooseLeader();
    if (gTrain.wagons <= 0)
        gTrain.mode = kModeOver;
}

// Goods

void Berries(Wagon& wagon, Int slot)
{
    Int& food = wagon.supply[kFood];
    if (food >= gSupplyLimit[kFood])
        return;
    food = std::min(food + 20, gSupplyLimit[kFood]);
    News(25, slot, 0, true);
}

void OxProblem()
{
    const PickedWagon picked = PickWagon();
    if (!picked.wagon || picked.wagon->supply[kOxen] == 0)
        return;
    if (HasOccupation(gState, 4) && Coin()) {
        News(22, picked.slot, 0, true);
        return;
    }
    const Int before = picked.wagon->supply[kOxen]--;
    News(before & 1 ? 24 : 23, picked.slot, 0, true);
}

void BrokenPart()
{
    const PickedWagon picked = PickWagon();
    if (!picked.wagon)
        return;
    const Int part = RandomN(3) + kFirstPart;
    const bool alone = gTrain.wagons < 2;
    if (Coin() && HasOccupation(gState, 1)) {
        News(alone ? 30 : 32, picked.slot, part, true);
        return;
    }
    if (Coin() && HasOccupation(gState, 2)) {
        News(alone ? 30 : 31, picked.slot, part, true);
        return;
    }
    if (Coin()) {
        News(30, picked.slot, part, true);
        return;
    }
    Int& spares = picked.wagon->supply[static_cast<std::size_t>(part)];
    if (spares > 0) {
        --spares;
        News(33, picked.slot, part, true);
    } else {
        picked.wagon->flags |= kFlagFirstBroken << (part - kFirstPart);
        gTrain.mode &= ~kModeMoving;
        News(34, picked.slot, part, true);
    }
}

void LoseSupplies(Int percent, Wagon& wagon, std::array<Int, kSupplyCount>& losses)
{
    losses[kOxen] = 0;
    for (std::size_t i = kClothes; i < losses.size(); ++i) {
        losses[i] = Chance(percent) ? RandomN(wagon.supply[i] + 1) : 0;
        wagon.supply[i] -= losses[i];
    }
}

void Accident()
{
    const PickedWagon picked = PickWagon();
    if (!picked.wagon)
        return;
    std::array<Int, kSupplyCount> losses{};
    LoseSupplies(50, *picked.wagon, losses);
    if (std::any_of(losses.begin(), losses.end(), [](Int n) { return n != 0; }))
        SendLosses(65, picked.slot, losses, 0);
}

static void StealCash(Wagon& wagon, Int slot)
{
    if (wagon.money <= 100)
        return;
    const Int dollars = (wagon.money < 10001 ? RandomN(wagon.money / 100) : RandomN(100)) + 1;
    wagon.money -= dollars * 100;
    SendLosses(64, slot, std::array<Int, kSupplyCount>{}, dollars * 100);
}

void Thief()
{
    const PickedWagon picked = PickWagon();
    if (!picked.wagon)
        return;
    const Int kind = RandomN(4);
    const std::size_t item = kind < 3 ? static_cast<std::size_t>(kind) : std::size_t{kFood};
    const Int have = picked.wagon->supply[item];
    if (have <= 0) {
        StealCash(*picked.wagon, picked.slot);
        return;
    }
    Int loss = (have < 101 ? RandomN(have) : RandomN(100)) + 1;
    if (item == kOxen) {
        loss = (loss + have + 1) / 2 - (have + 1) / 2;
        loss -= loss & 1; // oxen go in pairs
    }
    if (loss < 1)
        return;
    std::array<Int, kSupplyCount> losses{};
    losses[item] = loss;
    picked.wagon->supply[item] -= loss;
    SendLosses(64, picked.slot, losses, 0);
}

void FindAbandonedWagon()
{
    const PickedWagon picked = PickWagon();
    if (!picked.wagon)
        return;
    std::array<Int, kSupplyCount> found{};
    for (std::size_t i = kClothes; i <= kThirdPart; ++i) {
        if (!Coin())
            continue;
        found[i] = i == kBullets ? RandomN(40) + 20 : RandomN(3) + 1;
        Int& amount = picked.wagon->supply[i];
        amount = std::min(amount + found[i], gSupplyLimit[i]);
    }
    SendLosses(63, picked.slot, found, 0);
}

} // namespace Wainroad
