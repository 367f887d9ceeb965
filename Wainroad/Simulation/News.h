#pragma once

#include "Wainroad/Simulation/Records.h"

/// What the model tells the journal: packets of type 0 that begin with the date of `gTrain`. Draws no random number.
namespace Wainroad {

/// Something that happened to a wagon, or to one of its people (or parts, or a count).
/// @param person  0..7, joined with `slot` in one byte as `person * 32 + slot`.
/// @param shown   False keeps it from those who do not look for it.
void News(Int code, Int slot, Int person, bool shown);
/// Something that happened to the whole train.
void TrainNews(Int code);
/// The train came to a landmark.
void Arrived(Int code, Int landmark);
/// A list of goods, lost or found; `losses` holds seven amounts, `money` is in cents.
void SendLosses(Int code, Int slot, std::span<const Int> losses, Int money);
/// A choice of the player, dated by `gState`: code 109 with two arguments.
void SendAction(Int action, Int a);
/// Sends a message of four bytes to a node (255 for all): see `ModelMessage`.
void SendMessage(Int kind, Int a, Int b, Int c, Int node, Int flags = 0);
/// The date of a record as the journal stores it: s16 year, u8 month, u8 day.
void WriteDate(ByteWriter& out, const GameState& state);

} // namespace Wainroad
