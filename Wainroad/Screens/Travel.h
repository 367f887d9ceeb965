#pragma once

// The travel screen: a column of keys at each side, the scene or the picture of a landmark over the map, the status,
// and the button that sets off or halts. Every screen of the journey ends by calling `ShowTravelScreen`.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

extern Int gShownLandmark; ///< the last landmark whose picture was offered; -1 at first
extern Int gArrivedAt;     ///< the landmark whose picture is not to be offered again; -2 is none
extern bool gCrossing;     ///< a crossing is under way: mourning waits for its report

/// Puts the travel screen together again. At a landmark a second call swaps its picture and the trail view.
void ShowTravelScreen();
/// Item 2 sets off, or opens what has to be settled first at a river, a fork or the toll. Other items do nothing.
void Continue(Int item);
/// Opens the store at a hearth, or tells that there is none.
void BuySupplies();
/// Sends the command that sets the train in motion on `route`. Until `gState` shows it, at most 120 ticks, `SettingOff`
/// holds, so that a second click sends nothing twice.
void SetOff(Int route);
bool SettingOff();

extern const ViewProc LeftButtonsPanel, RightButtonsPanel;
extern const ViewProc TravelPanel; ///< the map
extern const ViewProc LandmarkPanel, LandmarkNamePanel;
extern const ViewProc ContinuePanel, TimeOutPanel;
extern const ViewProc TrailItem; ///< the dots of the way behind

/// Draws the dots of the miles made, in window coordinates.
void DrawTrail();
/// Draws the dots of one section on from `dot`, which moves along.
void DrawSection(Int section, Rect& dot);

} // namespace Wainroad
