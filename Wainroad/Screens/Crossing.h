#pragma once

// The way across a river: the scripted scene, the wait for the others in a train, and the report.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

extern const ViewProc CrossingPanel, CrossingTextPanel;
extern const ViewProc CrossWaitPanel;      ///< with several wagons: until all have chosen
extern const ViewProc CrossingResultPanel; ///< its end tells the model what was lost
extern const ViewProc crossingItem, LossesItem;

} // namespace Wainroad
