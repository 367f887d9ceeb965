#pragma once

#include "Tools/rsrc/Bits.h"

#include <optional>
#include <string>
#include <vector>

namespace Rsrc {

/// How resources of one type are written in a source and in a resource file.
struct Form {
    const char* type; ///< four characters
    /// The bytes of an entry. Throws `Fault`.
    Bytes (*compile)(const Source& entry, Int id);
    /// The entry in the source form, to stand behind "id:". Damaged bytes give nothing. A picture is named as if `png`
    /// had written it to "TYPE-id.png".
    std::optional<std::string> (*show)(Int id, const Bytes& data);
    /// The picture of a resource, or nothing.
    std::optional<Bits> (*picture)(const Bytes& data) = nullptr;
};

/// All types with a form of their own.
const std::vector<Form>& forms();
const Form* findForm(OSType type);

/// A type as a source writes it ("snd"), and back; a name of no type is nothing.
std::string typeName(OSType type);
std::optional<OSType> typeOf(const std::string& name);

// The rooms of the forms.
std::vector<Form> textForms();
std::vector<Form> layoutForms();
std::vector<Form> pictureForms();
std::vector<Form> imageForms();
std::vector<Form> scriptForms();
std::vector<Form> fontForms();
std::vector<Form> settingForms();

// Pieces of the shown form.

/// False for characters that no source can give: its line ends become 13.
bool isText(std::span<const std::uint8_t> roman);
/// In double quotes, as YAML reads it back.
std::string quoted(std::span<const std::uint8_t> roman);
std::string shown(const Rect& r);
std::string hexText(std::span<const std::uint8_t> bytes);

/// One frame of an `Imag`.
struct Frame {
    Bits bits;
    Point origin;
    Int rowBytes = 0; ///< as stored
};
/// The frames, or nothing if a record does not lead to the next or its bits run out.
std::optional<std::vector<Frame>> imageFrames(const Bytes& data);

/// What a strike holds, for the checks of widths and characters.
struct Strike {
    Int first = 0, last = -1, ascent = 0, descent = 0, leading = 0;
    std::vector<Int> widths; ///< for each code from `first`; -1 is no glyph
    /// Pixels; `bold` adds 1 for each character. Codes that are missing count as 0.
    Int width(std::span<const std::uint8_t> text, bool bold) const;
    bool has(Int code) const;
};
std::optional<Strike> strikeOf(const Bytes& data);

/// A glyph as it lies in the strip of a strike: all rows from the ascent to the descent.
struct StrikeGlyph {
    Bits bits;
    Int left = 0;     ///< from the pen to the first column of `bits`
    Int advance = -1; ///< -1 if there is no glyph
};
/// One for each code from 0 to 255; damaged bytes give empty ones.
std::vector<StrikeGlyph> strikeGlyphs(const Bytes& data);

/// The frame of an item of a `DITL`.
struct Item {
    Int type = 0;
    Rect rect;
    Bytes data;
};
std::optional<std::vector<Item>> itemsOf(const Bytes& data);
/// The texts of an `STR#`, or nothing if it is cut short.
std::optional<std::vector<Bytes>> stringsOf(const Bytes& data);
std::optional<std::vector<Bytes>> guideStringsOf(const Bytes& data);
/// The scripts of an `Scpt`, records only.
std::optional<std::vector<Bytes>> scriptsOf(const Bytes& data);

} // namespace Rsrc
