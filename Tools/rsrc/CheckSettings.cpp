#include "Tools/rsrc/Check.h"
#include "Tools/rsrc/Expectations.h"
#include "Tools/rsrc/Forms.h"

#include <algorithm>
#include <array>
#include <set>

namespace Rsrc {

namespace {

constexpr Int kGameFamily = 6322;

/// Every character of every text, and where it was first seen.
std::set<std::uint8_t> usedCharacters(const Stock& stock)
{
    std::set<std::uint8_t> used{201, 208, 165, 214};
    const auto add = [&](const std::vector<Bytes>& texts) {
        for (const Bytes& text : texts)
            for (const std::uint8_t c : text)
                if (c >= 32)
                    used.insert(c);
    };
    for (const Int id : stock.ids("STR#"))
        add(stringsOf(*stock.find("STR#", id)).value_or(std::vector<Bytes>{}));
    for (const Int id : stock.ids("WST#"))
        add(guideStringsOf(*stock.find("WST#", id)).value_or(std::vector<Bytes>{}));
    for (const Int id : stock.ids("DITL"))
        for (const Item& item : itemsOf(*stock.find("DITL", id)).value_or(std::vector<Item>{}))
            if (const Int kind = item.type & 127; kind == 4 || kind == 5 || kind == 6 || kind == 8 || kind == 16)
                add({item.data});
    for (Int c = 32; c < 127; ++c) // what a player may type
        used.insert(static_cast<std::uint8_t>(c));
    return used;
}

void checkStrike(const Stock& stock, Int family, Int size, const std::set<std::uint8_t>& used, Findings& findings)
{
    const auto strike = plainStrike(stock, family, size);
    if (!strike)
        return findings.fault("FOND", family, "has no plain strike of size " + std::to_string(size));
    std::string missing;
    for (const std::uint8_t c : used)
        if (!strike->has(c))
            missing += ' ' + std::to_string(c);
    if (family == 0 && !strike->has(18))
        missing += " 18";
    if (!missing.empty())
        findings.fault("FOND", family, "size " + std::to_string(size) + " lacks characters that texts use:" + missing);
}

void checkWidths(const Stock& stock, Findings& findings)
{
    for (const WidthNeeds& need : widthNeeds()) {
        const auto strike = plainStrike(stock, kGameFamily, need.size);
        const Bytes* data = stock.find("STR#", need.list);
        const auto texts = data ? stringsOf(*data) : std::nullopt;
        if (!strike || !texts)
            continue;
        for (const Int index : numbersOf(need.indices))
            if (index <= I(texts->size()))
                if (const Int width = strike->width((*texts)[static_cast<std::size_t>(index - 1)], need.bold);
                    width > need.pixels)
                    findings.fault("STR#", need.list,
                        "index " + std::to_string(index) + " is " + std::to_string(width) + " pixels wide, at most "
                            + std::to_string(need.pixels) + " fit");
    }
    const auto game = plainStrike(stock, kGameFamily, 12);
    const std::string_view price = "$1,600.00";
    if (game && game->width(std::span(reinterpret_cast<const std::uint8_t*>(price.data()), price.size()), false) > 52)
        findings.fault("FOND", kGameFamily, "\"$1,600.00\" is wider than 52 pixels at size 12");
    const auto strike14 = plainStrike(stock, kGameFamily, 14), system = plainStrike(stock, 0, 12);
    if (strike14 && strike14->ascent + strike14->descent + strike14->leading > 19)
        findings.fault("FOND", kGameFamily, "lines of size 14 are higher than 19");
    if (game && game->ascent + game->descent + game->leading != 12)
        findings.fault("FOND", kGameFamily, "lines of size 12 have to be 12 high");
    const Bytes* labels = stock.find("STR#", 2048);
    if (const auto texts = labels ? stringsOf(*labels) : std::nullopt; system && texts && texts->size() == 7) {
        Int widest = 0;
        for (std::size_t i = 1; i < 7; ++i)
            widest = std::max(widest, system->width((*texts)[i], false));
        if (widest + system->width((*texts)[0], false) >= 165)
            findings.fault("STR#", 2048, "the label and the widest choice have no room beside each other");
    }
}

void checkTrail(const Stock& stock, Findings& findings)
{
    constexpr std::array<Int, 8> kDots{72, 11, 19, 37, 12, 15, 7, 10};
    constexpr Rect kPanel{89, 64, 206, 324};
    std::array<Bytes, 8> sections;
    for (Int n = 0; n < 8; ++n) {
        const Bytes* data = stock.find("HVof", 128 + n);
        if (!data)
            return;
        if (I(data->size()) != 2 * kDots[static_cast<std::size_t>(n)])
            findings.fault("HVof", 128 + n,
                std::to_string(data->size() / 2) + " dots, " + std::to_string(kDots[static_cast<std::size_t>(n)])
                    + " are wanted");
        sections[static_cast<std::size_t>(n)] = *data;
    }
    // Both forks are walked both ways; the ways have to meet.
    Point ends[2][2]{};
    for (int firstFork = 0; firstFork < 2; ++firstFork)
        for (int secondFork = 0; secondFork < 2; ++secondFork) {
            Point at{192, 294};
            Int dots = 0;
            for (const int section : {0, 1 + firstFork, 3, 4 + secondFork, 7}) {
                const Block b(sections[static_cast<std::size_t>(section)]);
                for (Int i = 0; i + 1 < b.count(); i += 2) {
                    if (dots++ > 0) // the first dot stands at the start
                        at = {at.v + b.s8(i + 1), at.h + b.s8(i)};
                    if (at.v < kPanel.top || at.v > kPanel.bottom || at.h < kPanel.left || at.h > kPanel.right)
                        return findings.fault(
                            "HVof", 128 + section, "dot " + std::to_string(i / 2 + 1) + " leaves the map");
                }
            }
            ends[firstFork][secondFork] = at;
        }
    for (const auto& [fork, other] : {std::pair(ends[0][1], 129), std::pair(ends[1][0], 132)})
        if (fork != ends[0][0] && other == 132)
            findings.fault("HVof", 129, "129 and 130 do not end in one place");
        else if (fork != ends[0][0])
            findings.fault("HVof", 132, "132 and 133 do not end in one place");
}

void checkLegends(const Block& conf, Int at, Findings& findings)
{
    const Int count = conf.s16(at);
    if (count < 0 || count > 10 || conf.s16(at + 2) != 10)
        return findings.fault("CONF", 1000, "the count of the legends is not from 0 to 10");
    Int before = INT32_MAX;
    for (Int i = 0; i < count; ++i) {
        const Int points = conf.s32(at + 6 + 32 * i + 28);
        if (conf.u8(at + 6 + 32 * i) > 27 || points < 1 || points > before)
            findings.fault("CONF", 1000,
                "legend " + std::to_string(i + 1) + " has a long name, no points, or more than the one above");
        before = points;
    }
}

void checkConfiguration(const Stock& stock, Findings& findings)
{
    const Bytes* data = stock.find("CONF", 1000);
    if (!data)
        return;
    const auto fault = [&](const std::string& text) { findings.fault("CONF", 1000, text); };
    if (data->size() != 1108)
        return fault("has to have 1108 bytes");
    const Block b(*data);
    if (b.u32(0) != os("QUIL") || b.s16(4) != 1)
        fault("has to begin with QUIL and version 1");
    const Bytes* list = stock.find("STR#", 3000);
    const auto texts = list ? stringsOf(*list) : std::nullopt;
    Str255 signature = b.pstr(6);
    signature.erase(signature.begin());
    if (texts && texts->size() >= 10 && (signature != (*texts)[9] || signature.empty() || signature.size() > 31))
        fault("the signature has to equal STR# 3000 index 10, with at most 31 characters");
    if (b.u8(294) < 1 || b.u8(294) > 10)
        fault("the password has to have 1 to 10 characters");
    for (Int i = 1; i <= std::min<Int>(b.u8(294), 10); ++i)
        if (b.u8(294 + i) < 33 || b.u8(294 + i) > 126)
            fault("the password holds a character that cannot be typed there");
    if (b.s16(306) != 0)
        fault("the mode has to be 0");
    if (b.u8(309) != 2 && b.u8(309) != 4 && b.u8(309) != 8)
        fault("the speed has to be 2, 4 or 8");
    if (b.u8(310) < 1 || b.u8(310) > 6)
        fault("the length of the hunt has to be 1 to 6");
    checkLegends(b, 456, findings);
    checkLegends(b, 782, findings);
}

void checkSounds(const Stock& stock, Findings& findings)
{
    constexpr Int kLongestStart = 3; // seconds, of the sound before the title
    for (const Int id : stock.ids("snd ")) {
        const Bytes& data = *stock.find("snd ", id);
        const Block b(data);
        const Int list = b.count() < 10 ? 0 : b.u16(0) == 1 ? 4 + 6 * b.u16(2) : 4;
        const Int count = list > 0 && list + 2 <= b.count() ? b.s16(list) : 0;
        Int header = -1;
        for (Int i = 0; i < count && list + 10 + 8 * i <= b.count() && header < 0; ++i)
            if ((b.u16(list + 2 + 8 * i) & 0xFFFE) == 0x8050)
                header = b.s32(list + 6 + 8 * i);
        if (header < 0 || header + 22 > b.count() || b.u8(header + 20) != 0) {
            findings.fault("snd ", id, "is no sampled sound that can be played");
            continue;
        }
        const Int rate = b.u32(header + 8) >> 16, samples = std::min(b.u32(header + 4), b.count() - header - 22);
        if (samples < 1)
            findings.fault("snd ", id, "is empty");
        if (id == 9007 && samples >= kLongestStart * rate)
            findings.fault("snd ", id, "has to be shorter than three seconds");
    }
}

} // namespace

std::optional<Strike> plainStrike(const Stock& stock, Int family, Int size)
{
    const auto load = [&](Int id) -> std::optional<Strike> {
        for (const char* type : {"NFNT", "FONT"})
            if (const Bytes* data = stock.find(type, id))
                return strikeOf(*data);
        return std::nullopt;
    };
    if (const Bytes* data = stock.find("FOND", family); data && data->size() > 54) {
        ByteReader in(*data, 52);
        for (Int left = in.s16() + 1; left > 0 && !in.atEnd(); --left) {
            const Int entrySize = in.s16(), style = in.s16(), id = in.s16();
            if (entrySize == size && style == 0)
                return load(id);
        }
        return std::nullopt;
    }
    const Int id = family * 128 + size;
    return stock.find("FONT", id) ? load(id) : std::nullopt;
}

void checkFonts(const Stock& stock, Findings& findings)
{
    const std::set<std::uint8_t> used = usedCharacters(stock);
    checkStrike(stock, kGameFamily, 12, used, findings);
    checkStrike(stock, kGameFamily, 14, used, findings);
    checkStrike(stock, 0, 12, used, findings);
    checkStrike(stock, 3, 9, used, findings);
    checkWidths(stock, findings);
}

void checkSettings(const Stock& stock, Findings& findings)
{
    checkConfiguration(stock, findings);
    checkTrail(stock, findings);
    checkSounds(stock, findings);
    if (const Bytes* version = stock.find("vers", 1); version && (version->size() < 8 || (*version)[6] == 0))
        findings.fault("vers", 1, "has no text");
}

} // namespace Rsrc
