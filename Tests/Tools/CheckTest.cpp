#include "Tools/rsrc/Check.h"
#include "Tests/Tools/GameResources.h"

#include <functional>

#include <gtest/gtest.h>

using namespace Rsrc;

namespace {

Findings findingsOf(const Archive& archive)
{
    Findings findings;
    Stock stock;
    stock.add("all", archive.image(), findings);
    return check(stock);
}

} // namespace

TEST(Check, TheGameHasNoFaults)
{
    for (const std::string& fault : findingsOf(gameResources()).faults)
        ADD_FAILURE() << fault;
}

TEST(Check, FindsWhatWouldBreakAScreen)
{
    using Change = std::function<void(Bytes&)>;
    const auto put = [](std::size_t at, std::uint8_t value) { return Change([=](Bytes& b) { b.at(at) = value; }); };
    const struct {
        const char* type;
        Int id;
        Change change;
        const char* fault;
    } kCases[] = {
        {"STR#", 3000, nullptr, "STR# 3000: is missing"},
        {"Imag", 5307, nullptr, "Imag 5307: is missing"},
        {"ICON", 6030, nullptr, "CNTL 5005: names an ICON"},
        {"CNTL", 5002, nullptr, "DITL 5000: item 2 names a CNTL"},
        {"STR#", 3007, [](Bytes& b) { b[1] = 3; }, "STR# 3007: has 3 texts, not 4"},
        {"STR#", 3007, [](Bytes& b) { b.erase(b.begin() + 3, b.begin() + 3 + b[2]), b[2] = 0; },
            "STR# 3007: index 1 is empty"},
        {"STR#", 3100, [](Bytes& b) { b[3] = '9'; }, "STR# 3100: index 1 has to begin with the digit"},
        {"STR#", 3009, [](Bytes& b) { b.insert(b.begin() + 3, 20, 'W'), b[2] = std::uint8_t(b[2] + 20); },
            "STR# 3009: index 1 is "},
        {"STR#", 1004, [](Bytes& b) { b[3] ^= 1; }, "MENU 1004: items 2 and 6"},
        {"MENU", 1001, put(13, 0xFF), "MENU 1001: item 2 has to be disabled"},
        {"MENU", 1000, put(15, 'A'), "MENU 1000: the title"},
        {"MBAR", 1000, put(3, 0), "MBAR 1000: has to hold"},
        {"WIND", 1000, put(1, 21), "WIND 1000: has to be"},
        {"DLOG", 2041, put(10, 1), "DLOG 2041: is visible at once"},
        {"ALRT", 2045, put(11, 0x0D), "ALRT 2045: makes item 2 the default"},
        {"DITL", 6320, put(14, 5), "DITL 6320: item 1 has the type byte 5"},
        {"DITL", 6320, put(7, 0xFF), "DITL 6320: item 1 does not lie in the panel"},
        {"DITL", 5200, put(14, 0), "DITL 5200: item 2 lies over item 1"},
        {"DITL", 5220, [](Bytes& b) { b.resize(b.size() - 4); }, "DITL 5220: is damaged"},
        {"Imag", 128, [](Bytes& b) { b.pop_back(); }, "Imag 128: is damaged"},
        {"Imag", 129, put(1, 1), "Imag 129: is damaged"},
        {"Imag", 5000, [](Bytes& b) { b[1] = 0, b.resize(2); }, "Imag 5000: 0 frames"},
        {"Scpt", 5310, [](Bytes& b) { b.back() = 200; }, "unknown opcode 200"},
        {"Scpt", 5310, [](Bytes& b) { b.back() = 0; }, "leaves its bytes"},
        {"HVof", 129, put(0, 5), "HVof 129: 129 and 130 do not end"},
        {"HVof", 132, put(1, 9), "HVof 132: 132 and 133 do not end"},
        {"HVof", 128, [](Bytes& b) { b.resize(20); }, "HVof 128: 10 dots"},
        {"CONF", 1000, put(309, 3), "CONF 1000: the speed"},
        {"CONF", 1000, put(7, '?'), "CONF 1000: the signature"},
        {"CONF", 1000, [](Bytes& b) { b.push_back(0); }, "CONF 1000: has to have 1108"},
        {"snd ", 9002, put(40, 0xFF), "snd 9002: is no sampled sound"},
        {"WST#", 3171, put(1, 2), "WST# 3171: has to hold one page"},
        {"NFNT", 6322, put(5, 100), "FOND 6322: size 12 lacks characters"},
        {"NFNT", 6322, put(23, 3), "FOND 6322: lines of size 12"},
        {"FOND", 0, nullptr, "FOND 0: has no plain strike of size 12"},
        {"vers", 1, put(6, 0), "vers 1: has no text"},
    };
    for (const auto& test : kCases) {
        SCOPED_TRACE(test.fault);
        Archive archive = gameResources();
        const auto it = archive.items.find({os(test.type), test.id});
        ASSERT_NE(it, archive.items.end());
        if (test.change)
            test.change(it->second.data);
        else
            archive.items.erase(it);
        bool found = false;
        std::string all;
        for (const std::string& fault : findingsOf(archive).faults) {
            found |= fault.find(test.fault) != std::string::npos;
            all += fault + '\n';
        }
        EXPECT_TRUE(found) << all;
    }
}

TEST(Check, NotesTextsThatDoNotFit)
{
    EXPECT_TRUE(findingsOf(gameResources()).notes.empty());
    Archive archive = gameResources();
    const std::string longText(600, 'W'), wide(40, 'W');
    Bytes& page = archive.items.at({os("WST#"), 3171}).data;
    page = {0, 1, 2, 88};
    page.insert(page.end(), longText.begin(), longText.end());
    Bytes& panel = archive.items.at({os("DITL"), 6320}).data; // its first item is a button
    const std::ptrdiff_t before = panel[15] + panel[15] % 2;
    panel.erase(panel.begin() + 16, panel.begin() + 16 + before);
    panel.insert(panel.begin() + 16, wide.begin(), wide.end());
    panel[15] = 40;
    std::string all;
    for (const std::string& note : findingsOf(archive).notes)
        all += note + '\n';
    EXPECT_NE(all.find("WST# 3171: page 1 has"), std::string::npos) << all;
    EXPECT_NE(all.find("DITL 6320: the title of item 1 is too wide"), std::string::npos) << all;
}
