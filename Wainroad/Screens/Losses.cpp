#include "Wainroad/Screens/Losses.h"

#include "MacToolbox/QuickDraw/CopyBits.h"
#include "Wainroad/Simulation/Random.h"

#include <algorithm>
#include <cstdlib>

namespace Wainroad {

void LoseSupplies2(const Wagon& wagon, Int percent, LossPacket& loss)
{
    for (std::size_t slot = kClothes; slot < kSupplyCount; ++slot)
        if (wagon.supply[slot] != 0 && std::abs(Random()) % 100 < percent)
            loss.supplies[slot] = RandomN(wagon.supply[slot] + 1);
}

void LoseOxen(const Wagon& wagon, Int percent, LossPacket& loss)
{
    const Int oxen = wagon.supply[kOxen];
    Int pairs = 0;
    for (Int pair = 0; pair < (oxen + 1) / 2; ++pair)
        if (Chance(percent))
            ++pairs;
    loss.supplies[kOxen] = std::min(2 * pairs, oxen);
}

bool NothingLost(const LossPacket& loss)
{
    const auto isZero = [](Int n) { return n == 0; };
    return std::all_of(loss.supplies.begin(), loss.supplies.end(), isZero)
        && std::all_of(loss.drowned.begin(), loss.drowned.end(), isZero);
}

} // namespace Wainroad
