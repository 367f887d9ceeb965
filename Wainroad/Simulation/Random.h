#pragma once

#include "MacToolbox/Base/Geometry.h"

namespace Wainroad {

using namespace MacToolbox;

/// An integer in 0..n-1 from the Toolbox's `Random`; the one source of chance in the model. 0 draws nothing and gives
/// 0; 2 gives bit 0 of the draw, any other the absolute value of the draw modulo `n`.
Int RandomN(Int n);
/// True for heads.
inline bool Coin() { return RandomN(2) == 1; }
/// A percent roll: true if `RandomN(100)` is below `percent`.
inline bool Chance(Int percent) { return RandomN(100) < percent; }

} // namespace Wainroad
