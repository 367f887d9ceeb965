#include "Tools/rsrc/Source.h"

#include "MacToolbox/Base/Strings.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <set>

namespace Rsrc {

namespace {

constexpr std::size_t kMostFileBytes = 64U << 20;

std::optional<Int> parseNumber(std::string_view text)
{
    const bool negative = text.starts_with('-');
    if (negative)
        text.remove_prefix(1);
    const bool hex = text.starts_with("0x") || text.starts_with("0X");
    if (hex)
        text.remove_prefix(2);
    Int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, hex ? 16 : 10);
    if (error != std::errc() || end != text.data() + text.size() || text.empty() || text[0] == '-')
        return std::nullopt;
    return negative ? -value : value;
}

/// The first character of the text that Mac OS Roman does not have.
std::string firstForeign(const std::string& text)
{
    for (std::size_t at = 0; at < text.size();) {
        std::size_t length = 1;
        while (at + length < text.size() && (static_cast<std::uint8_t>(text[at + length]) & 0xC0) == 0x80)
            ++length;
        const std::string one = text.substr(at, length);
        if (!macRomanStrict(one))
            return one;
        at += length;
    }
    return text;
}

} // namespace

Source Source::load(const std::string& path)
{
    auto file = std::make_shared<const std::string>(path);
    try {
        Source top(YAML::LoadFile(path), file);
        if (!top.isMap() && !top.isNull())
            throw Fault(path + ":1: a source is a map of types");
        return top;
    } catch (const YAML::ParserException& e) {
        throw Fault(path + ':' + std::to_string(e.mark.line + 1) + ": " + e.msg);
    } catch (const YAML::Exception&) {
        throw Fault(path + ": cannot be read");
    }
}

void Source::fail(const std::string& text) const { throw Fault(place() + ": " + text); }

std::string Source::place() const { return *file_ + ':' + std::to_string(line_ + 1); }

Source Source::child(const YAML::Node& key, const YAML::Node& value) const
{
    Source source(value, file_);
    if (value.IsNull())
        source.line_ = key.Mark().line;
    return source;
}

std::string Source::word() const
{
    if (!node_.IsScalar())
        fail(node_.IsNull() ? "a value is missing (an empty text is \"\")" : "a single value is wanted");
    return node_.Scalar();
}

Int Source::number(Int least, Int most) const
{
    const std::optional<Int> value = parseNumber(word());
    if (!value)
        fail('"' + word() + "\" is no whole number");
    if (*value < least || *value > most)
        fail(word() + " is not from " + std::to_string(least) + " to " + std::to_string(most));
    return *value;
}

bool Source::flag() const
{
    const std::string text = word();
    if (text != "true" && text != "false")
        fail('"' + text + "\" is neither true nor false");
    return text == "true";
}

Bytes Source::roman(std::size_t most) const
{
    const std::string text = word();
    std::optional<Bytes> bytes = macRomanStrict(text);
    if (!bytes)
        fail("the character \"" + firstForeign(text) + "\" is not in the character set");
    while (!bytes->empty() && bytes->back() == '\n')
        bytes->pop_back();
    std::replace(bytes->begin(), bytes->end(), std::uint8_t('\n'), std::uint8_t('\r'));
    if (bytes->size() > most)
        fail("the text has " + std::to_string(bytes->size()) + " characters, at most " + std::to_string(most) + " fit");
    return *bytes;
}

Bytes Source::counted(std::size_t most) const
{
    Bytes bytes = roman(most);
    bytes.insert(bytes.begin(), static_cast<std::uint8_t>(bytes.size()));
    return bytes;
}

Rect Source::rect() const
{
    const std::vector<Source> sides = list();
    if (sides.size() != 4)
        fail("a rectangle is [top, left, bottom, right]");
    const auto side = [&](std::size_t i) { return sides[i].number(-32768, 32767); };
    return {side(0), side(1), side(2), side(3)};
}

Point Source::point() const
{
    const std::vector<Source> both = list();
    if (both.size() != 2)
        fail("two numbers are wanted, the vertical one first");
    return {both[0].number(-32768, 32767), both[1].number(-32768, 32767)};
}

std::string Source::path() const
{
    return (std::filesystem::path(*file_).parent_path() / word()).lexically_normal().string();
}

std::vector<Source> Source::list() const
{
    if (!node_.IsSequence())
        fail("a list is wanted");
    std::vector<Source> all;
    for (const YAML::Node& item : node_)
        all.push_back(Source(item, file_));
    return all;
}

std::vector<Source::Entry> Source::map() const
{
    if (node_.IsNull())
        return {};
    if (!node_.IsMap())
        fail("a map is wanted");
    std::vector<Entry> all;
    std::set<std::string> seen;
    for (const auto& item : node_) {
        all.push_back({Source(item.first, file_), child(item.first, item.second)});
        const Source& key = all.back().key;
        if (!seen.insert(key.word()).second)
            key.fail('"' + key.word() + "\" stands here twice");
    }
    return all;
}

std::vector<Source> Source::numbered(Int first, std::initializer_list<const char*> words, bool ranges) const
{
    std::vector<Source> values;
    for (const Entry& entry : map()) {
        const std::string key = entry.key.word();
        if (std::find(words.begin(), words.end(), key) != words.end())
            continue;
        const std::size_t dash = ranges ? key.find('-', 1) : std::string::npos;
        const std::optional<Int> low = parseNumber(key.substr(0, dash));
        const std::optional<Int> high = dash == std::string::npos ? low : parseNumber(key.substr(dash + 1));
        if (!low || !high)
            entry.key.fail('"' + key + "\" is not known here");
        const Int next = first + I(values.size());
        if (*low != next || *high < *low || *high > 32767)
            entry.key.fail("number " + key + " stands where " + std::to_string(next) + " is due");
        values.insert(values.end(), static_cast<std::size_t>(*high - *low + 1), entry.value);
    }
    return values;
}

void Source::allow(std::initializer_list<const char*> keys) const
{
    for (const Entry& entry : map()) {
        const std::string key = entry.key.word();
        if (key != "about" && key != "name" && std::find(keys.begin(), keys.end(), key) == keys.end())
            entry.key.fail('"' + key + "\" is not known here");
    }
}

std::optional<Source> Source::find(const char* key) const
{
    if (!node_.IsMap())
        return std::nullopt;
    for (const auto& item : node_)
        if (item.first.IsScalar() && item.first.Scalar() == key)
            return child(item.first, item.second);
    return std::nullopt;
}

Source Source::at(const char* key) const
{
    const std::optional<Source> value = find(key);
    if (!value)
        fail(std::string("\"") + key + "\" is missing");
    return *value;
}

Int Source::number(const char* key, Int least, Int most, Int otherwise) const
{
    const std::optional<Source> value = find(key);
    return value ? value->number(least, most) : otherwise;
}

bool Source::flag(const char* key, bool otherwise) const
{
    const std::optional<Source> value = find(key);
    return value ? value->flag() : otherwise;
}

Bytes Source::counted(const char* key, std::size_t most) const
{
    const std::optional<Source> value = find(key);
    return value ? value->counted(most) : Bytes{0};
}

Bytes fileContents(const std::string& path, const Source& who)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    std::ifstream in(path, std::ios::binary);
    if (error || !in)
        who.fail(path + " cannot be read");
    if (size > kMostFileBytes)
        who.fail(path + " is too long");
    Bytes bytes(size);
    in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
    if (!in)
        who.fail(path + " cannot be read");
    return bytes;
}

} // namespace Rsrc
