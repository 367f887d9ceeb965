#include "Wainroad/Journal/Log.h"

#include "MacToolbox/Base/RunState.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"
#include "Wainroad/Simulation/Records.h"

#include <gtest/gtest.h>

#include <random>

namespace Wainroad {

class LogStore : public testing::Test {
protected:
    LogStore()
    {
        startRunAfresh();
        PacketsInit();
        MessagesInit();
        AddFilter(kPacketNews, NewsFilter);
        gState.mode = kModeLive;
        gTrain.year = 1848, gTrain.month = 4, gTrain.day = 1;
        gState.slots = gState.wagons = 1, gState.order[0] = 0;
    }
    ~LogStore() override { CloseNetwork(), startRunAfresh(); }

    static std::vector<Int> codes()
    {
        std::vector<Int> all;
        for (Int at = 0; at < gLogInfo.end; at = NextMessage(at))
            all.push_back(gLogBuffer->u8(at));
        return all;
    }
    static void tell(Int code, Int b = 0)
    {
        News(code, b, 0, true);
        DispatchPackets();
    }
    /// The store must be whole: messages one after another, every 8th in the table.
    static std::string broken()
    {
        Int count = 0, at = 0;
        for (; at < gLogInfo.end; at = NextMessage(at), ++count)
            if (count % kLogBlock == 0 && gBlockOffsets[static_cast<std::size_t>(count / kLogBlock)] != at)
                return "table at message " + std::to_string(count);
        if (at != gLogInfo.end || gLogInfo.end >= kLogBytes)
            return "end";
        if (count != gLogInfo.count)
            return "count";
        return (count + kLogBlock - 1) / kLogBlock == gLogInfo.blocks ? "" : "blocks";
    }
};

TEST_F(LogStore, ADayBeginsWithItsDate)
{
    tell(36);
    tell(25);
    EXPECT_EQ(FlushNews().count, 3);
    EXPECT_EQ(codes(), (std::vector<Int>{120, 36, 25}));
    EXPECT_EQ(
        Bytes(gLogBuffer->bytes.begin(), gLogBuffer->bytes.begin() + 10), (Bytes{120, 0, 7, 56, 4, 1, 36, 0, 25, 0}));
    tell(29);
    const NewNews more = FlushNews();
    EXPECT_EQ(more.count, 1) << "the same day";
    EXPECT_EQ(more.offset, 10);
    ++gTrain.day;
    tell(29);
    EXPECT_EQ(FlushNews().count, 2);
    gTrain.day = 1; // news of an earlier day makes no date line
    tell(29);
    EXPECT_EQ(FlushNews().count, 1);
    EXPECT_EQ(FlushNews().count, 0);
    EXPECT_EQ(broken(), "");
}

TEST_F(LogStore, SizesFollowFromTheCode)
{
    const struct {
        Bytes message;
        Int size;
    } kCases[] = {
        {{0, 0}, 2},
        {{62, 9}, 2},
        {Bytes(16, 63), 16},
        {Bytes(16, 69), 16},
        {Bytes(12, 70), 12},
        {Bytes(12, 84), 12},
        {Bytes(4, 85), 4},
        {Bytes(4, 95), 4},
        {Bytes(4, 105), 4},
        {Bytes(4, 111), 4},
        {Bytes(6, 120), 6},
        {{119, 0, 10, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0}, 14},
        {{119, 0, 0, 0}, 4},
        {{118, 0, 1, 'x', 2, 3, 4, 0}, 8},
        {{118, 0, 0, 0}, 4},
        {{96, 0, 0, 0}, 0},
        {{104, 0, 0, 0}, 0},
        {{112, 0}, 0},
        {{121, 0}, 0},
        {{255, 0}, 0},
        {{}, 0},
        {{36}, 0},
        {{119, 0, 200, 1}, 0},
        {{118, 0, 0}, 0},
        {Bytes(15, 63), 0},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(MessageSize(c.message), c.size) << (c.message.empty() ? -1 : int{c.message[0]});
}

TEST_F(LogStore, AFullQueueLosesAndWithoutAJourneyNothingCounts)
{
    gState.mode = 0;
    tell(36);
    EXPECT_TRUE(gNewsQueue.empty());
    gState.mode = kModeLive;
    for (int i = 0; i < 128; ++i)
        tell(36); // 8 bytes each
    EXPECT_EQ(gNewsQueue.lost, 0);
    EXPECT_EQ(gNewsQueue.cur, 1024);
    tell(36);
    EXPECT_EQ(gNewsQueue.lost, 1);
    EXPECT_EQ(FlushNews().count, 129) << "and a date";
    EXPECT_EQ(gNewsQueue.lost, 0);
    PacketHeader odd;
    odd.data = {7, 56, 4, 1, 36};
    NewsFilter(odd); // padded to an even size
    EXPECT_EQ(gNewsQueue.cur, 8);
    FlushNews();
    EXPECT_EQ(codes().back(), 36);
    odd.data = {};
    NewsFilter(odd);
    odd.data = {7, 56};
    NewsFilter(odd);
    EXPECT_EQ(FlushNews().count, 2) << "packets too short for a message read as zeros";
    EXPECT_EQ(broken(), "");
}

TEST_F(LogStore, ATrimTakesAQuarterOfTheBlocks)
{
    for (int i = 0; i < 320; ++i)
        AppendMessage(Bytes{36, 0});
    ASSERT_EQ(gLogInfo.blocks, 40);
    for (std::size_t i = 0; i < 40; ++i)
        gBlockLines[i] = I(i) * 9;
    gLogInfo.lines = 360;
    Int toldMsgs = 0, toldLines = 0, toldBytes = 0;
    gLogTrimmed = [&](Int msgs, Int lines, Int bytes) { toldMsgs = msgs, toldLines = lines, toldBytes = bytes; };
    TrimLog();
    EXPECT_EQ(gLogInfo.blocks, 30);
    EXPECT_EQ(gLogInfo.count, 240);
    EXPECT_EQ(gLogInfo.end, 480);
    EXPECT_EQ(gLogInfo.lines, 270);
    EXPECT_EQ(gBlockLines[1], 9);
    EXPECT_EQ(gLogInfo.trimMsgs, 80);
    EXPECT_EQ(toldMsgs, 80);
    EXPECT_EQ(toldLines, 90);
    EXPECT_EQ(toldBytes, 160);
    EXPECT_EQ(broken(), "");
}

TEST_F(LogStore, AnyRowOfMessagesLeavesTheStoreWhole)
{
    std::mt19937 random(3);
    const auto below = [&random](std::uint32_t n) { return static_cast<std::uint8_t>(random() % n); };
    Int trims = 0;
    gLogTrimmed = [&trims](Int, Int, Int) { ++trims; };
    for (int round = 0; round < 20000; ++round) {
        static constexpr std::array<std::uint8_t, 9> kCodes{5, 36, 64, 79, 88, 109, 118, 119, 110};
        Bytes message{kCodes[below(round % 3 == 0 ? 9 : 3)], below(32)};
        const bool chat = message[0] >= 118;
        const std::size_t said = chat ? below(round % 7 == 0 ? 256 : 20) : 14;
        if (chat)
            message.push_back(static_cast<std::uint8_t>(said));
        for (std::size_t i = 0; i < said; ++i)
            message.push_back(below(256));
        if (message[0] == 118) {
            message.push_back(below(32));
            message.resize(message.size() + message.back());
        }
        AppendMessage(message);
        ASSERT_EQ(broken(), "") << round;
        if (round % 50 == 0)
            IsHidden(gBlockOffsets[0]);
    }
    EXPECT_GT(trims, 20);
}

TEST_F(LogStore, TheCheckOfTheStoreBites)
{
    for (int i = 0; i < 30; ++i)
        AppendMessage(Bytes{36, 0});
    ASSERT_EQ(broken(), "");
    const LogInfo good = gLogInfo;
    gLogInfo.count = 29;
    EXPECT_EQ(broken(), "count");
    gLogInfo = good;
    gLogInfo.blocks = 3;
    EXPECT_EQ(broken(), "blocks");
    gLogInfo = good;
    gBlockOffsets[2] = 30;
    EXPECT_EQ(broken(), "table at message 16");
}

TEST_F(LogStore, NewsThatComesDuringADrainWaitsInTheOtherQueue)
{
    tell(36);
    gNewsTarget = &gNewsQueue2;
    tell(25);
    EXPECT_EQ(gNewsQueue2.cur, 8);
    EXPECT_EQ(FlushNews().count, 3);
    EXPECT_EQ(gNewsTarget, &gNewsQueue);
    EXPECT_EQ(codes(), (std::vector<Int>{120, 36, 25}));
}

TEST_F(LogStore, AFlushThatTrimsTellsWhereTheNewBegins)
{
    while (gLogInfo.end < 10220)
        AppendMessage(Bytes{36, 0});
    const Int before = gLogInfo.count;
    for (int i = 0; i < 10; ++i)
        tell(25);
    const NewNews added = FlushNews();
    EXPECT_EQ(added.count, 11);
    EXPECT_GT(gLogInfo.trimMsgs, 0);
    EXPECT_EQ(gLogBuffer->u8(added.offset), 120);
    EXPECT_EQ(gLogInfo.count, before - gLogInfo.trimMsgs + 11);
}

TEST_F(LogStore, StoredFormIsExact)
{
    LogInfo info;
    info.end = 0x123, info.blocks = 4, info.trimBytes = 5, info.trimMsgs = 6, info.trimLines = 7, info.trimTop = 8;
    info.count = 9, info.lines = 10, info.lastDate = 0x07380401;
    const Bytes packed = info.bytes();
    EXPECT_EQ(packed,
        (Bytes{0, 16, 0, 0, 0, 16, 1, 0x23, 0, 4, 0, 5, 0, 6, 0, 7, 0, 8, 0, 9, 0, 0, 0, 0, 0, 10, 0, 0, 0, 0, 7, 0x38,
            4, 1}));
    LogInfo back;
    back.load(packed);
    EXPECT_EQ(back, info);
    for (const auto& [number, end] : {std::pair<Int, Int>{0x100000 + 20000, 10240}, {0x0FFFFF, 0}, {0, 0}}) {
        ByteWriter out;
        out.u32(0x100000), out.u32(number);
        back.load(out.bytes);
        EXPECT_EQ(back.end, end) << number;
    }
    gLogInfo = info;
    LogLoaded();
    EXPECT_EQ(gLogInfo.end, 0x123);
    EXPECT_EQ(gLogInfo.blocks, 0);
    EXPECT_EQ(gLogInfo.trimBytes, 0);
}

TEST_F(LogStore, SomeMessagesAreForOthers)
{
    gMySlot = 2;
    const struct {
        Bytes message;
        bool hidden;
    } kCases[] = {
        {{36, 2 + 32}, false},
        {{36, 1}, true},
        {{20, 3}, true},
        {{43, 2}, false},
        {{29, 1}, false},
        {{44, 1}, false},
        {{3, 0}, false},
        {{64, 2}, false},
        {{64, 1}, true},
        {{65, 1}, false},
        {{68, 2}, false},
        {{79, 1, 2}, false},
        {{79, 2, 1}, false},
        {{79, 0, 1}, true},
        {{72, 0, 1}, false},
        {{71, 0, 1}, false},
        {{80, 0, 1}, false},
        {{80, 2, 1}, true},
        {{105, 2, 50}, false},
        {{105, 1, 50}, true},
        {{109, 130, 2}, false},
        {{109, 130, 1 + 32}, true},
        {{109, 66, 1}, false},
        {{110, 1, 2}, false},
        {{119, 1, 0, 0}, false},
        {{118, 2, 0, 0}, false},
        {{118, 1, 0, 1, 2, 0}, false},
        {{118, 1, 0, 1, 3, 0}, true},
        {{118, 1, 3, 2, 2, 2, 1, 0}, true},
    };
    for (const auto& c : kCases) {
        ResetLog();
        AppendMessage(c.message);
        EXPECT_EQ(IsHidden(0), c.hidden) << int{c.message[0]} << ' ' << int{c.message[1]};
    }
    ResetLog();
    const Bytes date{120, 0, 7, 56, 4, 1};
    for (const Bytes& message : {date, Bytes{36, 1}, date, Bytes{36, 1}, Bytes{36, 2}, date})
        AppendMessage(message);
    EXPECT_TRUE(IsHidden(0)) << "all of its day concerns others";
    EXPECT_FALSE(IsHidden(8));
    EXPECT_TRUE(IsHidden(18)) << "nothing follows";
}

} // namespace Wainroad
