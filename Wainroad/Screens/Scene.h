#pragma once

// The picture of the wain under way: oxen that walk, ground and cloud that pass, and the next landmark that comes
// nearer.

#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Frame/Sprites.h"

namespace Wainroad {

extern const ViewProc TravelScenePanel;
extern const ViewProc sceneItem;

void OxenMove(Sprite& sprite);
void WagonMove(Sprite& sprite); ///< the strip of ground
void CloudMove(Sprite& sprite);
/// Slides the landmark by 3 pixels a mile, a day's miles spread over the frames of the day.
void LandmarkMove(Sprite& sprite);

} // namespace Wainroad
