#pragma once

// Who travels and what is in the wain. Each item keeps what it last showed, so that its timer can tell when to redraw.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

extern const ViewProc PartyPanel;
extern const ViewProc OccupationItem, PartyItem, SuppliesItem;

void DrawOccupation(View& item);
void DrawParty(View& item);
void DrawSupplies(View& item);

} // namespace Wainroad
