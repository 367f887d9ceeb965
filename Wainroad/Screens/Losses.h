#pragma once

// What water takes from a wagon. The rules read a wagon and note the loss; they change nothing else.

#include "Wainroad/Simulation/Records.h"

namespace Wainroad {

/// Each supply but the oxen is hit with `percent` chance, and then loses anything up to all of it.
void LoseSupplies2(const Wagon& wagon, Int percent, LossPacket& loss);
/// Each pair of oxen is lost with `percent` chance.
void LoseOxen(const Wagon& wagon, Int percent, LossPacket& loss);

/// True if nothing was lost and nobody drowned.
bool NothingLost(const LossPacket& loss);

} // namespace Wainroad
