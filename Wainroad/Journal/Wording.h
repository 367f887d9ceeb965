#pragma once

#include "MacToolbox/Base/Memory.h"

#include <span>

/// Turns a stored message into the line that the player reads. Every word comes from the string lists; the code picks
/// the template and fills its places. First person for the player's own wagon, third for the others.
namespace Wainroad {

using namespace MacToolbox;

/// The line of a message (see `MessageSize`), with its full stop; empty for a code without words.
Str255 MessageText(std::span<const std::uint8_t> message);
/// Text face of that line: 1, bold, if it concerns this player; else 0.
Int MessageFace(std::span<const std::uint8_t> message);

/// Fills the first place `^n` of a template; nothing if there is none.
void FillPlace(Str255& text, Int n, const Str255& words);
/// Fills `^6` with a wagon, in lower case unless the text begins with it.
void WagonRef(Str255& text, Int slot);
/// Fills `^0` with a person; `who` is `person * 32 + slot`.
void PersonRef(Str255& text, Int who);
/// Offset of the last separator of a list of goods, -1 if there is none.
Int LastComma(const Str255& text);
/// Lowers the capitals.
void LowerString(Str255& text);

} // namespace Wainroad
