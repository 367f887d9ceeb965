#include "Wainroad/Simulation/Scoring.h"

#include "Wainroad/Simulation/Goods.h"

namespace Wainroad {

Int WagonScore(Int slot)
{
    if (!SlotUsed(gState, slot))
        return 0;
    const Wagon& wagon = WagonOf(gState, slot);
    const auto& supply = wagon.supply;
    const Int parts = supply[kFirstPart] + supply[kSecondPart] + supply[kThirdPart];
    const Int sum = wagon.people * PointsPerPerson(wagon.health) + (supply[kOxen] + 1) / 8 + supply[kClothes] * 2
        + supply[kBullets] / 50 + parts * 2 + supply[kFood] / 25 + wagon.money / 500 + 50;
    return (sum * gOccupationBonus[static_cast<std::size_t>(wagon.occupation & 7)] + 1) / 2;
}

Int TrainScoreSum()
{
    Int sum = 0;
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        sum += WagonScore(slot);
    return sum;
}

Int TrainScore() { return gState.slots > 0 ? TrainScoreSum() / gState.slots : 0; }

} // namespace Wainroad
