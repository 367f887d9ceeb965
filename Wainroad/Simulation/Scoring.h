#pragma once

#include "Wainroad/Simulation/Records.h"

/// What a journey was worth. Reads `gState`.
namespace Wainroad {

/// Points a head at a burden of health: 500, 400, 300 or 200.
constexpr Int PointsPerPerson(Int health) { return 500 - health / 35 * 100; }
/// The score of the wagon in `slot`; 0 for an empty slot.
Int WagonScore(Int slot);
/// The sum over all slots up to `slots`.
Int TrainScoreSum();
/// The mean of the train; an empty slot counts.
Int TrainScore();

} // namespace Wainroad
