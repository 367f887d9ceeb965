#pragma once

// A trade with somebody met on the road: what the player wants, the price by lot, and the exchange.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

/// What is traded beyond the supply slots 0 to 6.
enum TradeGood : Int { kTradeMoney = 7, kTradeNothing = 8 };

extern Int gWantItem, gWantAmount; ///< oxen in pairs, money in cents
/// The price that `ComputeOffer` named: oxen singly, money in cents. The offer's panel halves the oxen to pairs.
extern Int gGiveItem, gGiveCount;
extern bool gNobodyHasIt; ///< nobody offers a trade

/// Draws a price for the want among what the player's wagon holds; `kTradeNothing` if nothing covers it.
void ComputeOffer();

extern const ViewProc TradeWantPanel, TradeMessagePanel, TradeOfferPanel;

} // namespace Wainroad
