#include "Tests/Simulation/ModelFixture.h"

#include <numeric>

namespace Wainroad {

class PacketsTest : public testing::Test {
protected:
    PacketsTest() { startRunAfresh(), PacketsInit(); }
    ~PacketsTest() override { CloseNetwork(), startRunAfresh(); }
    void keep(Int type)
    {
        AddFilter(type, [this](const PacketHeader& p) { got.push_back(p); });
    }
    std::vector<PacketHeader> got;
};

TEST_F(PacketsTest, MessagesAreCutIntoPieces)
{
    const struct {
        Int length, parts, last;
    } kCases[] = {{1, 1, 1}, {572, 1, 572}, {573, 2, 1}, {1144, 2, 572}, {4124, 8, 120}};
    keep(1);
    for (const auto& c : kCases) {
        Bytes bytes(static_cast<std::size_t>(c.length));
        std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
        got.clear();
        const Int first = QueuePackets(1, 255, bytes, c.length, 128);
        DispatchPackets();
        ASSERT_EQ(I(got.size()), c.parts) << c.length;
        EXPECT_EQ(I(got.back().data.size()), c.last) << c.length;
        Bytes joined;
        for (std::size_t i = 0; i < got.size(); ++i) {
            EXPECT_EQ(got[i].part, I(i) + 1);
            EXPECT_EQ(got[i].parts, c.parts);
            EXPECT_EQ(got[i].serial, first + I(i));
            EXPECT_EQ(got[i].length, I(got[i].data.size()) + 14);
            EXPECT_EQ(got[i].sender, 42);
            EXPECT_EQ(got[i].x0C, 2);
            EXPECT_EQ(got[i].flags, 128);
            joined.insert(joined.end(), got[i].data.begin(), got[i].data.end());
        }
        EXPECT_EQ(joined, bytes) << c.length;
    }
}

TEST_F(PacketsTest, LengthRulesOverBytes)
{
    keep(0);
    EXPECT_EQ(QueuePackets(0, 255, Bytes{1, 2, 3}, 0, 0), 0);
    EXPECT_EQ(QueuePackets(0, 255, Bytes{1, 2, 3}, -5, 0), 0);
    QueuePackets(0, 255, Bytes{1, 2, 3}, 8, 0);
    QueuePackets(0, 255, Bytes{1, 2, 3}, 2, 0);
    QueuePackets(0, 255, Bytes{9}, 600, 0); // the second piece is all padding
    DispatchPackets();
    ASSERT_EQ(got.size(), 4u);
    EXPECT_EQ(hex(got[0].data), "0102030000000000");
    EXPECT_EQ(hex(got[1].data), "0102");
    EXPECT_EQ(hex(got[3].data), zeros(28));
}

TEST_F(PacketsTest, AFullPoolRefusesAndKeepsWhatItHas)
{
    keep(7);
    for (int i = 0; i < 15; ++i)
        EXPECT_EQ(QueuePackets(7, 42, Bytes{1}, 1, 0), i);
    EXPECT_FALSE(gQueueFull);
    EXPECT_EQ(QueuePackets(7, 42, Bytes(600), 600, 0), -1) << "one piece finds a buffer, the other does not";
    EXPECT_TRUE(gQueueFull);
    DispatchPackets();
    EXPECT_EQ(got.size(), 16u);
    EXPECT_EQ(QueuePackets(7, 42, Bytes{1}, 1, 0), 16);
}

TEST_F(PacketsTest, StoredFieldsAreFilled)
{
    gMachines = 3;
    QueuePackets(1, 255 + 256, Bytes{1}, 1, 0);
    QueuePackets(1, 42, Bytes{1}, 1, 0);
    EXPECT_EQ(gPackets[0].dest, 255);
    EXPECT_EQ(gPackets[0].waiting, 3);
    EXPECT_EQ(gPackets[1].waiting, 1);
    EXPECT_EQ(gPackets[1].retries, 40);
    EXPECT_EQ(gPackets[1].busy, 0);
}

TEST_F(PacketsTest, WhatAFilterQueuesBehindItselfIsServedInTheSamePass)
{
    int calls = 0;
    AddFilter(3, [&](const PacketHeader& p) {
        ++calls;
        if (p.data[0] == 1)
            QueuePackets(3, 255, Bytes{2}, 1, 0);
    });
    QueuePackets(3, 255, Bytes{1}, 1, 0);
    DispatchPackets(); // the answer takes buffer 1
    EXPECT_EQ(calls, 2);
    QueuePackets(4, 255, Bytes{0}, 1, 0); // no filter: frees buffer 0 first
    QueuePackets(3, 255, Bytes{1}, 1, 0);
    DispatchPackets(); // the answer takes buffer 0, for the next pass
    EXPECT_EQ(calls, 3);
    DispatchPackets();
    EXPECT_EQ(calls, 4);
}

TEST_F(PacketsTest, FiltersAreReplacedRemovedAndMayCloseTheLayer)
{
    keep(256 + 5);
    int second = 0;
    AddFilter(5, [&](const PacketHeader&) { ++second; }); // the same low 8 bits
    EXPECT_EQ(gFilters.size(), 1u);
    RemoveFilter(9);
    EXPECT_EQ(gFilters.size(), 1u);
    RemoveFilter(5);
    EXPECT_TRUE(gFilters.empty());
    for (Int type = 0; type < 12; ++type)
        keep(type);
    RemoveFilter(0);
    keep(20); // room again
    EXPECT_EQ(gFilters.size(), 12u);

    AddFilter(1, [](const PacketHeader&) { CloseNetwork(); });
    QueuePackets(1, 255, Bytes{1}, 1, 0);
    QueuePackets(2, 255, Bytes{1}, 1, 0);
    DispatchPackets();
    EXPECT_TRUE(gPackets.empty());
    EXPECT_EQ(QueuePackets(2, 255, Bytes{1}, 1, 0), -1) << "no pool, no buffer";
}

TEST_F(PacketsTest, DrainThrowsAway)
{
    keep(1);
    QueuePackets(1, 255, Bytes(4124), 4124, 0);
    DrainPackets();
    EXPECT_TRUE(got.empty());
    EXPECT_TRUE(gFilters.empty());
    for (const PacketBuffer& buffer : gPackets)
        EXPECT_EQ(buffer.state, 0);
}

} // namespace Wainroad
