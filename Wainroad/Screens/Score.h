#pragma once

// What the journey was worth, row by row, and the entry in the list of legends.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

inline constexpr Int kLegendNameLength = 26, kLegendNameWidth = 240; ///< characters, pixels

extern Int gFinalScore; ///< the score that is entered; 0 or below if none is

extern const ViewProc ScorePanel;
extern const ViewProc ScoreItem;
extern const ViewProc TrainScorePanel; ///< with several wagons: the train's mean
extern const ViewProc TrainScoreList, TrainScoreTotal;

/// Sets the key table of a panel that asks for a name in item 3, and fills the field in.
void AskLegendName(View& panel, const Str255& name);
/// Enters `gFinalScore` in a list under the name in item 3, or under `STR#` 3000 `fallback` if that is empty.
void EnterLegend(View& panel, Int list, Int fallback);

} // namespace Wainroad
