#pragma once

// Words for wagons and goods, as panels and journal use them.

#include "MacToolbox/Base/Memory.h"

namespace Wainroad {
using namespace MacToolbox;

/// The name of the wagon in `slot` of `gState`, with its title before it if it leads the train.
void WagonName(Str255& out, Int slot);

/// Adds one good to a list in words: a supply slot 0 to 6, 7 for money in cents, 8 for nothing. A count of 0 adds
/// nothing.
void AppendAmount(Str255& text, Int item, Int count);

} // namespace Wainroad
