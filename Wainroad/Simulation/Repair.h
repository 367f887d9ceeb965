#pragma once

#include "Wainroad/Simulation/Records.h"

/// Makes a state that was read from a file harmless, so that nothing behind it has to check again.
namespace Wainroad {

/// Repairs what would index out of a table or loop for ever; what is merely odd stays as it was read.
/// Calling it again changes nothing.
void MakeHarmless(GameState& state);
/// Makes the wagon of `slot` the only one: it becomes wagon 0, and every other slot is emptied.
void KeepOneWagon(GameState& state, Int slot);
/// The last used slot, -1 if there is none.
Int LastUsedSlot(const GameState& state);

} // namespace Wainroad
