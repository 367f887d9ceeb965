#pragma once

// The store: before the journey it fills the wain (`gFormingShown`), at the hearths on the way it sells at rising
// prices.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

extern const ViewProc StorePanel;
extern const ViewProc StoreHelpPanel, CantAffordPanel, TooManyPanel, NeedOxenFoodPanel;
extern const ViewProc CostItem, PriceItem, HaveItem;
extern const ViewProc StoreEditKey; ///< key filter: how many digits a field takes

/// Draws what the amounts of `CostItem` cost, row by row, and their sum.
void DrawCosts(View& view);

/// Cents for `n` field units of `slot` in the open store; on the trail with the mark-up of the place.
Int StorePrice(Int slot, Int n);

} // namespace Wainroad
