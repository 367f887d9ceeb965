#pragma once

// What the game shows between journeys: the animated title, and the list of legends that takes its place after a while.

#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Frame/Sprites.h"

namespace Wainroad {

extern const ViewProc TitlePanel;   ///< to the legends after 7200 ticks
extern const ViewProc LegendsPanel; ///< back to the title after 600 ticks

extern const ViewProc titleItem;   ///< the animated picture
extern const ViewProc LegendsItem; ///< ten rows: place, name, rank word, points

/// Moves one animation of the title by a frame: `LoopAnimation` from first to last and again from the first,
/// `SwingAnimation` to and fro; then a pause of random length.
void LoopAnimation(Sprite& sprite);
void SwingAnimation(Sprite& sprite);

} // namespace Wainroad
