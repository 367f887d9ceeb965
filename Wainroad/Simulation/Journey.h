#pragma once

#include "Wainroad/Simulation/Records.h"

/// One day on the trail. All on `gTrain`, in whole numbers, every division truncating; the order of the steps and of
/// the random draws is part of the game.
namespace Wainroad {

/// Lets a day pass, if the train moves or rests.
void NextDay();
void AdvanceDate();
/// Weather, ground, wagons, miles; at the end perhaps an arrival.
void DailyUpdate();
/// Draws a temperature for the month, 0..5.
Int Temperature();
/// Depth and width of the river at this landmark after the rain; 0 where there is none.
void RiverDepth();
/// The smallest number of oxen of a wagon, 9999 without one. A wagon without oxen stops the train, and is told of once.
Int FewestOxen();

} // namespace Wainroad
