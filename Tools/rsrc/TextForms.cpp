#include "Tools/rsrc/Forms.h"

#include <algorithm>

namespace Rsrc {

namespace {

constexpr std::initializer_list<const char*> kNotes{"about", "title", "name"};

Bytes compileStrings(const Source& entry, Int)
{
    const std::vector<Source> texts = entry.numbered(1, kNotes);
    ByteWriter out;
    out.u16(I(texts.size()));
    for (const Source& text : texts)
        out.raw(text.counted());
    return out.bytes;
}

Bytes compileGuide(const Source& entry, Int)
{
    const std::vector<Source> texts = entry.numbered(1, kNotes);
    ByteWriter out;
    out.u16(I(texts.size()));
    for (const Source& text : texts) {
        const Bytes bytes = text.roman(32767);
        out.u16(I(bytes.size()));
        out.raw(bytes);
        out.zeros(bytes.size() % 2);
    }
    return out.bytes;
}

Bytes compileString(const Source& entry, Int) { return (entry.isMap() ? entry.at("text") : entry).counted(); }

std::optional<std::string> showTexts(const std::optional<std::vector<Bytes>>& texts)
{
    if (!texts || !std::all_of(texts->begin(), texts->end(), isText))
        return std::nullopt;
    if (texts->empty())
        return " {}";
    std::string out;
    for (std::size_t i = 0; i < texts->size(); ++i)
        out += "\n    " + std::to_string(i + 1) + ": " + quoted((*texts)[i]);
    return out;
}

std::optional<std::string> showStrings(Int, const Bytes& data) { return showTexts(stringsOf(data)); }

std::optional<std::string> showGuide(Int, const Bytes& data) { return showTexts(guideStringsOf(data)); }

std::optional<std::string> showString(Int, const Bytes& data)
{
    if (data.empty() || data.size() != data[0] + 1U)
        return std::nullopt;
    return ' ' + quoted(std::span(data).subspan(1));
}

/// Texts behind a count, each behind its length of one or two bytes.
std::optional<std::vector<Bytes>> textsOf(const Bytes& data, bool longTexts)
{
    ByteReader in(data);
    const Int count = in.s16();
    std::vector<Bytes> texts;
    for (Int i = 0; i < count && !in.atEnd(); ++i) {
        const Int length = longTexts ? in.s16() : in.u8();
        if (length < 0 || in.pos + length > I(data.size()))
            return std::nullopt;
        texts.push_back(in.raw(length));
        if (longTexts)
            in.skip(length % 2);
    }
    if (data.size() < 2 || count < 0 || I(texts.size()) != count)
        return std::nullopt;
    return texts;
}

} // namespace

std::optional<std::vector<Bytes>> stringsOf(const Bytes& data) { return textsOf(data, false); }

std::optional<std::vector<Bytes>> guideStringsOf(const Bytes& data) { return textsOf(data, true); }

std::vector<Form> textForms()
{
    return {{"STR#", compileStrings, showStrings}, {"WST#", compileGuide, showGuide},
        {"STR ", compileString, showString}, {"QUIL", compileString, showString}};
}

} // namespace Rsrc
