#pragma once

#include "Wainroad/Simulation/Records.h"

/// What goods and occupations are worth, and how much of each a wagon carries.
namespace Wainroad {

/// Price in cents of what one field of the store counts: a pair of oxen, a set of clothes, 20 rounds, a part, a pound.
inline constexpr std::array<Int, kSupplyCount> gTradeValue{2000, 1000, 200, 1000, 1000, 1000, 20};
/// The most that a wagon carries, in stored units (single oxen, rounds).
inline constexpr std::array<Int, kSupplyCount> gSupplyLimit{40, 50, 1980, 3, 3, 3, 2000};
/// Percentages of the price in a store on the trail, by `landmark + 1` kept within 0..17.
inline constexpr std::array<Int, 18> gPriceMarkup{
    100, 100, 100, 125, 125, 150, 150, 150, 175, 175, 175, 200, 200, 225, 250, 250, 250, 250};

/// Cents at the start, by occupation.
inline constexpr std::array<Int, 8> gOccupationMoney{160000, 80000, 80000, 120000, 40000, 120000, 80000, 40000};
/// Multiplier of the score in halves, by occupation.
inline constexpr std::array<Int, 8> gOccupationBonus{2, 4, 4, 2, 6, 3, 5, 7};

} // namespace Wainroad
