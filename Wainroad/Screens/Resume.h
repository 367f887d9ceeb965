#pragma once

// Picks a wagon out of a saved train.

#include "Wainroad/Frame/Panels.h"

#include <array>

namespace MacToolbox {
struct ListRec;
using ListHandle = std::shared_ptr<ListRec>;
} // namespace MacToolbox

namespace Wainroad {

extern const ViewProc ResumePanel;

using ResumeSlots = std::array<Int, 32>;
/// Lists the wagons that `gResume` offers and selects `choice` if it is still there; a single one is the choice.
/// @return The number of rows.
Int ListResumeWagons(const ListHandle& list, ResumeSlots& slots, Int& choice);

} // namespace Wainroad
