#pragma once

#include "MacToolbox/Base/Memory.h"

#include <optional>
#include <string>
#include <string_view>

namespace MacToolbox {

/// The text (UTF-8) in Mac OS Roman. If any scalar has no place there, every scalar from 128 up becomes "?".
Bytes macRoman(std::string_view text);
/// The text in Mac OS Roman, or nothing if any scalar has no place there.
std::optional<Bytes> macRomanStrict(std::string_view text);
/// Raw Mac OS Roman bytes as UTF-8. Every byte has a character.
std::string fromMacRoman(std::span<const std::uint8_t> bytes);
/// The text as a counted string; cut at 255 characters.
Str255 pstr(std::string_view text);
/// A counted string as UTF-8; what lies beyond the end of the array is left out.
std::string string(std::span<const std::uint8_t> counted);
/// The characters of a counted string without its length byte, cut at the end of the array.
std::span<const std::uint8_t> characters(std::span<const std::uint8_t> counted);

/// The low 32 bits of `n` as a signed decimal number.
void NumToString(Int n, Str255& s);
/// An optional sign, then digits; nothing is checked: each byte gives `value * 10 + byte - 48`. The result is the low
/// 32 bits, sign-extended; 0 for an empty string.
void StringToNum(const Str255& s, Int& n);

/// Stores the texts that `expandParams` puts in; nil leaves a slot as it was.
void ParamText(const Str255* a, const Str255* b, const Str255* c, const Str255* d);
void ParamText(const Str255& a, const Str255& b, const Str255& c, const Str255& d);
/// Raw bytes with "^0" to "^3" replaced by the texts of `ParamText`, in one pass. Game thread only.
Bytes expandParams(std::span<const std::uint8_t> raw);

/// Compares two counted strings. Unless both flags are true, case is ignored, and without `diacSens` accents too.
bool EqualString(const Str255& a, const Str255& b, bool caseSens, bool diacSens);
/// The upper-case letter of a Mac OS Roman code, without its accent if `diacritics` is false.
std::uint8_t foldCase(std::uint8_t c, bool diacritics);

} // namespace MacToolbox
