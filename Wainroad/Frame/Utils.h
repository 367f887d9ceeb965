#pragma once

// Small things about rectangles and counted strings.

#include "MacToolbox/Base/Memory.h"

#include <string_view>

namespace Wainroad {
using namespace MacToolbox;

/// Centres the rectangle in the game window, in global coordinates; on the screen if there is no window, or if it would
/// then leave (20, 0, 342, 512).
void CenterRect(Rect& r);

/// The first 255 bytes as a counted string.
Str255 PStrOf(std::span<const std::uint8_t> text);
/// Copies a counted string; an empty array becomes the empty string.
void PStrCopy(const Str255& src, Str255& dst);
/// The offset of the first `needle` in `haystack`, from 0; -1 if there is none or the needle is empty.
Int PStrPos(const Str255& needle, const Str255& haystack);
/// Replaces `length` characters from offset `start` (from 0) by `replacement`, nil for none. Nothing if `start` lies
/// beyond the end. The result is cut at 255 characters.
void StrReplace(Str255& str, Int start, Int length, const Str255* replacement);
inline void StrReplace(Str255& str, Int start, Int length, const Str255& replacement)
{
    StrReplace(str, start, length, &replacement);
}
/// Appends one counted string to another, cut at 255 characters.
void PStrAppend(Str255& str, const Str255& more);
/// Puts `words` in place of the first `mark` (plain ASCII); nothing if there is none.
void ReplaceFirst(Str255& str, std::string_view mark, const Str255& words);
/// Entry `index` (from 1) of `STR#` `list`; empty if it is not there.
Str255 ListString(Int list, Int index);

/// Decimal digits with a comma after each three.
void NumToCommas(Int n, Str255& out);
Str255 WithCommas(Int n); ///< the same as an answer
/// An amount of cents as "1,234.05".
void CentsToString(Int n, Str255& out);

} // namespace Wainroad
