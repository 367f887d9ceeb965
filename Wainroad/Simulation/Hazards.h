#pragma once

#include "Wainroad/Simulation/Records.h"

/// The hazards of a travelling day. All on `gTrain`. Every draw is made in the order written, also where a later test
/// makes it idle: a seed yields one journey.
namespace Wainroad {

/// Rolls the odds of every hazard, and runs those that strike.
void RandomEvents();

/// A used slot, drawn; slot 255 and no wagon if there is none.
struct PickedWagon {
    Wagon* wagon = nullptr;
    Int slot = kNobody;
};
PickedWagon PickWagon();
/// A member who lives, drawn among all but the head; 0 if there is only one person left.
Int PickPerson(const Wagon& wagon);

void Storm();
void Blizzard();
void Drought();
void LostTrail();
void RoughTrail();
void Snakebite();
void BrokenBone();
void OxProblem();
void BrokenPart();
void Lost();
void Accident();
void Thief();
void FindAbandonedWagon();
void Berries(Wagon& wagon, Int slot);
/// Bad health strikes a member: who is well falls ill, who is ill dies, unless someone saves them.
void SomeoneSuffers(Wagon& wagon, Int slot);
/// @param code  Journal code of the death; not told if it was the wagon's last person.
void PersonDies(Wagon& wagon, Int slot, Int member, Int code);
/// Takes a wagon out of the train; without any left the game is over.
void WagonGone(Wagon& wagon, Int slot);
/// Each supply but the oxen loses a part with `percent` odds; `losses` takes the seven amounts.
void LoseSupplies(Int percent, Wagon& wagon, std::array<Int, kSupplyCount>& losses);

} // namespace Wainroad
