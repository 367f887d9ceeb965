#pragma once

// The last stretch by raft: the run's losses, on a copy of the wagon, and the panels around it.

#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Simulation/Records.h"

#include <array>

namespace Wainroad {

extern Wagon gRaftWagon;                          ///< the copy that the run's losses are made on
extern LossPacket gRaftLoss;                      ///< of the last rock; in the end of the whole run
extern std::array<bool, kMaxPeople> gRaftDrowned; ///< during the run

/// Tells the model, and shows the panel before the run.
void StartRaft();
/// Sums the run up. Shows the arrival, or leaves a drowned party to the model.
void FinishRaft();
/// A rock is hit: works out what is lost, and takes it from the copy.
void StrikeRock();

void LoseSupplies3(Int percent);
void LoseOxen2(Int percent);
/// Drowns members of the copy with `percent` chance each; the leader only as the last.
void Drown2(Int percent);
/// Draws the report of the last rock over the river.
void DrawRaftLosses();

extern const ViewProc RaftIntroPanel, RaftPanel, ArrivingPanel;
extern const ViewProc raftItem; ///< the river

} // namespace Wainroad
