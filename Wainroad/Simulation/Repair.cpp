#include "Wainroad/Simulation/Repair.h"

#include "Wainroad/Simulation/Trail.h"

#include <algorithm>

namespace Wainroad {

static void Keep(Int& field, Int lowest, Int highest) { field = std::clamp(field, lowest, highest); }

static void RepairWagon(Wagon& wagon)
{
    Keep(wagon.rations, 0, 2);
    wagon.occupation &= 7;
    Keep(wagon.startPeople, 1, kMaxPeople);
    Keep(wagon.people, 1, wagon.startPeople);
    for (Int& amount : wagon.supply)
        amount = std::max(amount, Int{0});
}

void MakeHarmless(GameState& state)
{
    Keep(state.month, 1, 12);
    Keep(state.day, 1, 31);
    Keep(state.region, 0, 5);
    Keep(state.temperature, 0, 5);
    Keep(state.landmark, -1, kLastLandmark);
    Keep(state.pace, 0, 2);
    Keep(state.wagons, 0, kMaxWagons);
    Keep(state.startWagons, 0, kMaxWagons);
    Keep(state.slots, 1, kMaxWagons);
    for (Int& index : state.order)
        if (index != kNobody)
            index &= kMaxWagons - 1;
    if (LastUsedSlot(state) < 0)
        state.order[0] = 0;
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        if (SlotUsed(state, slot))
            RepairWagon(WagonOf(state, slot));
}

Int LastUsedSlot(const GameState& state)
{
    for (Int slot = kMaxWagons - 1; slot >= 0; --slot)
        if (SlotUsed(state, slot))
            return slot;
    return -1;
}

void KeepOneWagon(GameState& state, Int slot)
{
    slot &= kMaxWagons - 1;
    if (const Int index = state.order[static_cast<std::size_t>(slot)] & (kMaxWagons - 1); index != 0)
        state.wagon[0] = state.wagon[static_cast<std::size_t>(index)];
    state.order.fill(kNobody);
    state.order[static_cast<std::size_t>(slot)] = 0;
}

} // namespace Wainroad
