#pragma once

// Hunting, around the scene itself: what can be met at a place and time, the refusals, and what is carried home.

#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Simulation/Records.h"

#include <array>

namespace Wainroad {

inline constexpr Int kAnimalKinds = 7;
inline constexpr std::array<Int, 7> gHuntSeconds{0, 20, 30, 45, 60, 90, 120}; ///< by `huntTime`

/// What decides which animals and which scenery a hunt has.
struct HuntPlace {
    Int landmark = 0; ///< headed for
    Int month = 0;
    bool fresh = false; ///< nothing was shot at this mile before
};

/// Which scenery stands about.
struct HuntGround {
    bool desert = false, hasGround = false, noBushes = false, mountains = false;
    Int backdrop = 0; ///< frame
};
HuntGround GroundOf(const HuntPlace& place);
/// Draws the odds of each kind of animal: two kinds at most are left with more than 0.
std::array<Int, kAnimalKinds> DrawOdds(const HuntPlace& place);

extern std::array<Int, kAnimalKinds> gAnimalOdds;
extern Int gHuntCarried;   ///< pounds that can be carried home
extern Int gHuntShot;      ///< pounds shot in the last hunt
extern Int gHuntResult;    ///< pounds brought home
extern Int gHuntBullets;   ///< shots fired
extern Int gLastHuntMiles; ///< `miles` of the last hunt that brought meat, low 16 bits
extern bool gHunting;
extern HuntGround gHuntGround;
extern bool gHuntSnow;

/// The key of the travel screen: begins a hunt, or tells why not.
void Hunt();
/// Draws the place's odds and shows the panel before the hunt.
void StartHunt();
/// Tells model and journal what the hunt brought, and shows it.
void HuntOver(Int pounds, Int shots);
/// True while nothing was shot at this mile.
bool HuntPlaceIsFresh();

extern const ViewProc HuntWaitPanel, HuntPanel, HuntResultPanel;
extern const ViewProc NoHuntingHerePanel, NoBulletsPanel, SevereWeatherPanel;
extern const ViewProc HuntResultItem;
extern const ViewProc huntItem; ///< the scene

} // namespace Wainroad
