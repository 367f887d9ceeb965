#include "Wainroad/Persistence/Legends.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Simulation/Records.h"

#include <gtest/gtest.h>

namespace Wainroad {

class LegendsList : public testing::Test {
protected:
    LegendsList() { startRunAfresh(), gConfig = NewHandleClear(kConfigBytes); }
    ~LegendsList() override { startRunAfresh(); }
    static void fill(std::initializer_list<Int> points, Int most = 10)
    {
        gLegends.fill({});
        gLegendCount = 0, gLegendMax = most;
        for (const Int n : points)
            gLegends[static_cast<std::size_t>(gLegendCount++)] = {pstr("L" + std::to_string(n)), n};
    }
    static std::vector<Int> points()
    {
        std::vector<Int> all;
        for (const Legend& legend : gLegends)
            all.push_back(legend.points);
        return all;
    }
};

TEST_F(LegendsList, StoredFormIsExact)
{
    fill({0x01020304, -1});
    gLegendPad = -2;
    gLegends[9] = {pstr("Twenty-seven letters is all"), 5};
    Bytes bytes = legendBytes();
    ASSERT_EQ(bytes.size(), 326u);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 6), (Bytes{0, 2, 0, 10, 0xFF, 0xFE}));
    EXPECT_EQ(Bytes(bytes.begin() + 34, bytes.begin() + 38), (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(bytes[6 + 9 * 32], 27);
    const auto before = gLegends;
    gLegends.fill({});
    setLegends(bytes);
    EXPECT_EQ(gLegends, before);
    EXPECT_EQ(gLegendPad, -2);

    bytes[6] = 40; // a length beyond the field
    bytes[1] = 11; // more than ten
    setLegends(bytes);
    EXPECT_EQ(gLegends[0].name.size(), 28u);
    EXPECT_EQ(gLegends[0].name[0], 27);
    EXPECT_EQ(gLegendCount, 10);
    bytes[0] = 0xFF;
    setLegends(bytes);
    EXPECT_EQ(gLegendCount, 0);
    setLegends({});
    EXPECT_EQ(gLegends[3].name, Str255{0});
    EXPECT_EQ(legendBytes(), Bytes(326, 0));
}

TEST_F(LegendsList, ScoresFindTheirPlace)
{
    const struct {
        const char* why;
        std::initializer_list<Int> list;
        Int most, points, place, count;
        std::vector<Int> after;
    } kCases[] = {
        {"empty", {}, 10, 1, 0, 1, {1, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {"nothing", {}, 10, 0, -1, 0, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {"less than nothing", {}, 10, -7, -1, 0, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {"an equal score ranks after", {9, 5, 5}, 10, 5, 3, 4, {9, 5, 5, 5, 0, 0, 0, 0, 0, 0}},
        {"first", {9, 5}, 10, 10, 0, 3, {10, 9, 5, 0, 0, 0, 0, 0, 0, 0}},
        {"a full list, too low", {10, 9, 8, 7, 6, 5, 4, 3, 2, 1}, 10, 1, -1, 10, {10, 9, 8, 7, 6, 5, 4, 3, 2, 1}},
        {"a full list, the last place", {10, 9, 8, 7, 6, 5, 4, 3, 2, 1}, 10, 2, 9, 10, {10, 9, 8, 7, 6, 5, 4, 3, 2, 2}},
        {"a full list, in the middle", {10, 9, 8, 7, 6, 5, 4, 3, 2, 1}, 10, 7, 4, 10, {10, 9, 8, 7, 7, 6, 5, 4, 3, 2}},
        {"the limit keeps the count", {9, 8, 7, 6, 5}, 5, 8, 2, 5, {9, 8, 8, 7, 6, 5, 0, 0, 0, 0}},
        {"a wild limit", {10, 9, 8, 7, 6, 5, 4, 3, 2, 1}, 200, 11, 0, 10, {11, 10, 9, 8, 7, 6, 5, 4, 3, 2}},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.why);
        fill(c.list, c.most);
        EXPECT_EQ(LegendRank(c.points), c.place);
        EXPECT_EQ(AddLegend(c.points, pstr("A name of more than twenty-seven letters")), c.place);
        EXPECT_EQ(points(), c.after);
        EXPECT_EQ(gLegendCount, c.count);
        if (c.place >= 0) {
            EXPECT_EQ(gLegends[static_cast<std::size_t>(c.place)].name.size(), 28u);
        }
    }
}

TEST_F(LegendsList, AnEntryIsFoundByNameAndPoints)
{
    fill({9, 5, 5});
    EXPECT_EQ(FindLegend(pstr("L5"), 5), 1);
    EXPECT_EQ(FindLegend(pstr("L9"), 5), -1);
    EXPECT_EQ(FindLegend(pstr("l9"), 9), -1);
    gLegendCount = 1;
    EXPECT_EQ(FindLegend(pstr("L5"), 5), -1) << "beyond the count";
}

TEST_F(LegendsList, TheTwoListsLieSideBySideInTheImage)
{
    for (std::size_t i = 0; i < 652; ++i)
        gConfig->bytes[456 + i] = static_cast<std::uint8_t>(i < 326 ? 1 : 2);
    const Handle out = NewHandle(0);
    EXPECT_EQ(GetLegends(0, out), Bytes(326, 1));
    EXPECT_EQ(out->bytes, Bytes(326, 1));
    EXPECT_EQ(GetLegends(1), Bytes(326, 2));
}

} // namespace Wainroad
