#pragma once

// The raft run itself: the mouse steers, rocks come down the river, a marker climbs the map.

#include "Wainroad/Frame/Sprites.h"
#include "Wainroad/Screens/Raft.h"

namespace Wainroad {

void NewRaft();
void NewMarker();
void NewBanks();
/// Puts a rock on the water in a lane away from the last one's; nothing if three are on it.
void NewRock();
void MoveRaft(Sprite& sprite);
/// Follows the river drawn on the map.
void MoveMarker(Sprite& sprite);
void MoveRock(Sprite& sprite);
void SlowBank(Sprite& sprite);
/// True if the outlines of the rock and the raft overlap.
bool RockHits(const Sprite& sprite);
/// The background of the run.
void DrawRiver(const Rect& rect);

} // namespace Wainroad
