#include "MacToolbox/Base/Strings.h"

#include "MacToolbox/Base/RunState.h"

#include <array>

namespace MacToolbox {

namespace {

/// Mac OS Roman 0x80 to 0xFF as Unicode scalars, from the public mapping table of the character set (with the euro
/// sign).
constexpr std::array<char32_t, 128> kHighScalars{0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0,
    0x00E2, 0x00E4, 0x00E3, 0x00E5, 0x00E7, 0x00E9, 0x00E8, 0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1,
    0x00F3, 0x00F2, 0x00F4, 0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, 0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7,
    0x2022, 0x00B6, 0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8, 0x221E, 0x00B1, 0x2264,
    0x2265, 0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8, 0x00BF,
    0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB, 0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5, 0x0152,
    0x0153, 0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044, 0x20AC, 0x2039,
    0x203A, 0xFB01, 0xFB02, 0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1, 0x00CB, 0x00C8, 0x00CD,
    0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4, 0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9, 0x0131, 0x02C6, 0x02DC, 0x00AF,
    0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7};

constexpr char32_t kBadScalar = 0xFFFD;

/// Takes one scalar off the front of UTF-8 text; a malformed sequence gives `kBadScalar` and moves by one byte.
char32_t nextScalar(std::string_view text, std::size_t& at)
{
    const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0U; };
    const unsigned lead = byte(at);
    const std::size_t more = lead < 0x80 ? 0
        : lead >= 0xC2 && lead < 0xE0    ? 1
        : lead >= 0xE0 && lead < 0xF0    ? 2
        : lead >= 0xF0 && lead < 0xF5    ? 3
                                         : 9;
    if (more == 9) {
        ++at;
        return kBadScalar;
    }
    char32_t scalar = more == 0 ? lead : lead & (0x3FU >> more);
    for (std::size_t i = 1; i <= more; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) {
            ++at;
            return kBadScalar;
        }
        scalar = scalar << 6 | (byte(at + i) & 0x3F);
    }
    constexpr std::array<char32_t, 4> kLeast{0, 0x80, 0x800, 0x10000};
    const bool wrong = scalar < kLeast[more] || scalar > 0x10FFFF || (scalar >= 0xD800 && scalar < 0xE000);
    at += wrong ? 1 : more + 1;
    return wrong ? kBadScalar : scalar;
}

/// The Mac OS Roman code of a scalar, or -1.
int codeOf(char32_t scalar)
{
    if (scalar < 0x80)
        return static_cast<int>(scalar);
    for (std::size_t i = 0; i < kHighScalars.size(); ++i)
        if (kHighScalars[i] == scalar)
            return static_cast<int>(0x80 + i);
    return -1;
}

void appendUtf8(std::string& out, char32_t c)
{
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | c >> 6);
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | c >> 12);
        out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

struct Params {
    std::array<Str255, 4> strings{Str255{0}, Str255{0}, Str255{0}, Str255{0}};
};
RunState<Params> sParams;

constexpr std::uint8_t kCase[][2] = {{0x8A, 0x80}, {0x8C, 0x81}, {0x8D, 0x82}, {0x8E, 0x83}, {0x96, 0x84}, {0x9A, 0x85},
    {0x9F, 0x86}, {0x88, 0xCB}, {0x8B, 0xCC}, {0x9B, 0xCD}, {0xBE, 0xAE}, {0xBF, 0xAF}, {0xCF, 0xCE}};
constexpr std::uint8_t kAccents[][2] = {{0x80, 'A'}, {0x81, 'A'}, {0x82, 'C'}, {0x83, 'E'}, {0x84, 'N'}, {0x85, 'O'},
    {0x86, 'U'}, {0xCB, 'A'}, {0xCC, 'A'}, {0xCD, 'O'}};

} // namespace

std::optional<Bytes> macRomanStrict(std::string_view text)
{
    Bytes out;
    for (std::size_t at = 0; at < text.size();) {
        const int code = codeOf(nextScalar(text, at));
        if (code < 0)
            return std::nullopt;
        out.push_back(static_cast<std::uint8_t>(code));
    }
    return out;
}

Bytes macRoman(std::string_view text)
{
    if (auto whole = macRomanStrict(text))
        return *std::move(whole);
    Bytes out;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t scalar = nextScalar(text, at);
        out.push_back(scalar < 0x80 ? static_cast<std::uint8_t>(scalar) : '?');
    }
    return out;
}

std::string fromMacRoman(std::span<const std::uint8_t> bytes)
{
    std::string out;
    for (const std::uint8_t b : bytes)
        appendUtf8(out, b < 0x80 ? b : kHighScalars[b - 0x80U]);
    return out;
}

Str255 pstr(std::string_view text)
{
    Bytes raw = macRoman(text);
    raw.resize(std::min<std::size_t>(raw.size(), 255));
    raw.insert(raw.begin(), static_cast<std::uint8_t>(raw.size()));
    return raw;
}

std::span<const std::uint8_t> characters(std::span<const std::uint8_t> counted)
{
    if (counted.empty())
        return {};
    return counted.subspan(1, std::min<std::size_t>(counted[0], counted.size() - 1));
}

std::string string(std::span<const std::uint8_t> counted) { return fromMacRoman(characters(counted)); }

void NumToString(Int n, Str255& s) { s = pstr(std::to_string(static_cast<std::int32_t>(n))); }

void StringToNum(const Str255& s, Int& n)
{
    std::uint64_t value = 0;
    std::span<const std::uint8_t> rest = characters(s);
    const bool negative = !rest.empty() && rest[0] == '-';
    if (negative || (!rest.empty() && rest[0] == '+'))
        rest = rest.subspan(1);
    for (const std::uint8_t c : rest)
        value = value * 10 + c - 48;
    n = static_cast<std::int32_t>(negative ? 0 - value : value);
}

void ParamText(const Str255* a, const Str255* b, const Str255* c, const Str255* d)
{
    const std::array<const Str255*, 4> given{a, b, c, d};
    for (std::size_t i = 0; i < given.size(); ++i)
        if (given[i])
            sParams->strings[i] = *given[i];
}

void ParamText(const Str255& a, const Str255& b, const Str255& c, const Str255& d) { ParamText(&a, &b, &c, &d); }

Bytes expandParams(std::span<const std::uint8_t> raw)
{
    Bytes out;
    for (std::size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] == '^' && i + 1 < raw.size() && raw[i + 1] >= '0' && raw[i + 1] <= '3') {
            const auto text = characters(sParams->strings[raw[++i] - '0']);
            out.insert(out.end(), text.begin(), text.end());
        } else {
            out.push_back(raw[i]);
        }
    }
    return out;
}

std::uint8_t foldCase(std::uint8_t c, bool diacritics)
{
    if (c >= 'a' && c <= 'z')
        return static_cast<std::uint8_t>(c - 32);
    for (const auto& pair : kCase)
        if (pair[0] == c)
            c = pair[1];
    if (!diacritics)
        for (const auto& pair : kAccents)
            if (pair[0] == c)
                return pair[1];
    return c;
}

bool EqualString(const Str255& a, const Str255& b, bool caseSens, bool diacSens)
{
    if (a.empty() || b.empty())
        return (a.empty() || a[0] == 0) && (b.empty() || b[0] == 0);
    if (a[0] != b[0])
        return false;
    const bool raw = caseSens && diacSens;
    for (std::size_t i = 1; i <= a[0]; ++i) {
        const std::uint8_t x = i < a.size() ? a[i] : 0, y = i < b.size() ? b[i] : 0;
        if (raw ? x != y : foldCase(x, diacSens) != foldCase(y, diacSens))
            return false;
    }
    return true;
}

} // namespace MacToolbox
