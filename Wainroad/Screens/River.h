#pragma once

// At a river: the choice of a way across, its price, and the rules that decide how it ends.

#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Simulation/Records.h"

namespace Wainroad {

enum CrossMethod : Int { kFord = 1, kFloat, kFerry, kGuide };
/// Values of `gCrossResult`.
enum CrossResult : Int { kCrossedWell, kCrossLosses1, kCrossLosses2, kCrossMud, kCrossWet };

extern Int gCrossMethod;  ///< `CrossMethod`; a guide becomes ford or float
extern Int gCrossOutcome; ///< 0 the scene of a safe crossing, else of an accident
extern Int gCrossResult;  ///< `CrossResult`
extern Int gCrossWagons;  ///< wagons as the choice was opened
extern LossPacket gCrossLoss;

/// Pays for the way across, decides how it ends and shows it.
void ChooseCrossing(Int method);
/// Decides outcome and result. `base` is the strength of a river without a strength of its own.
void DecideCrossing(Int base);
/// The strength of the river: its own and what the rain adds.
Int Current(Int base);
/// Works out what an accident costs, into `gCrossLoss`.
void ComputeCrossingLosses();
/// Marks members who drown with `percent` chance; the leader only as the last of the family.
void Drown(Int percent);
/// Tells the model of the losses, and the journal of the drowned.
void SendCrossingLosses();
/// True while any panel of a crossing is open.
bool CrossingPanelIsOpen();

extern const ViewProc RiverPanel;
extern const ViewProc TooShallowPanel, NoFerryNeededPanel, NoFerryMoneyPanel, NoClothesPanel, RiverInfoPanel;

} // namespace Wainroad
