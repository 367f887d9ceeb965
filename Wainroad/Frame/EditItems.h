#pragma once

// Text editing in panels. One text record serves all fields: it borrows the text of the item that has the focus.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

extern const ViewProc EditItem; ///< `data` is the text's `Handle`; `user` a key filter that answers 0 to drop the key

/// The edit engine: does what `msg.what` says for one item, or for whatever has the focus if `item` is nil.
/// @return True if it was dealt with.
bool EditTE(View* item, const Msg& msg);
bool EditTE(View* item, Int what);

/// Moves the focus to the next edit item of the panel, round the end, and selects its text. @return True if it moved.
bool NextEditItem(View& panel);
/// The item's place among the edit items of its panel, from 1; 0 if it is none.
Int EditItemNumber(const View& item);
/// Gives edit item `item` the focus and selects the characters from `start` to `end`.
void SelectItemText(View& panel, Int item, Int start, Int end);
/// Takes the item's style over into the text record. @return False if the item has not the focus.
bool SetEditStyle(View& item);
/// True if the text of the whole field stays within `maxWidth` pixels when the character, or with `useScrap` the first
/// 255 bytes of the text scrap, replaces the selection.
bool TEFitsWidth(std::uint8_t character, bool useScrap, Int maxWidth, const TEHandle& te);
/// True if the text scrap, put in place of the selection, keeps the field within `gTEMaxChars`.
bool ScrapFits();

} // namespace Wainroad
