#include "Wainroad/Persistence/SavedGame.h"

#include "MacToolbox/Base/Strings.h"

#include <gtest/gtest.h>

namespace Wainroad {

TEST(SavedGame, HeadIsExactAndComesBack)
{
    GameState state;
    state.year = 1848, state.landmark = 7, state.wagon[31].x6D = 9, state.names[0] = pstr("Ann");
    state.x101C.fill(5);
    std::array<std::uint8_t, 34> logInfo{};
    logInfo.fill(0xAB);
    const Bytes packed = packSaveHead(-1, state, logInfo);
    ASSERT_EQ(I(packed.size()), kSaveHeadBytes);
    EXPECT_EQ(Bytes(packed.begin(), packed.begin() + 18),
        (Bytes{'Q', 'U', 'I', 'L', 0, 1, 10, 'S', 'a', 'v', 'e', 'd', ' ', 'G', 'a', 'm', 'e', 0}));
    EXPECT_EQ(Bytes(packed.begin() + 37, packed.begin() + 42), (Bytes{0, 0xFF, 0xFF, 7, 56}));
    EXPECT_EQ(packed[40 + 0x238], 7);
    EXPECT_EQ(packed[4163], 9) << "the last byte of the last wagon";
    EXPECT_EQ(packed[4164], 0xAB);
    EXPECT_EQ(packed[4197], 0xAB);

    SaveHead head;
    head.state.x101C.fill(3);
    readSaveHead(packed, head);
    EXPECT_EQ(head.arrivedAt, -1);
    EXPECT_EQ(head.logInfo, logInfo);
    state.x101C.fill(3); // the tail is not in the file
    EXPECT_EQ(head.state, state);
}

TEST(SavedGame, AShortHeadReadsAsZeros)
{
    const Bytes packed = packSaveHead(3, GameState(), {});
    for (const std::size_t size : {std::size_t{0}, std::size_t{39}, std::size_t{700}, std::size_t{4197}}) {
        SaveHead head;
        readSaveHead(std::span(packed).first(size), head);
        EXPECT_EQ(head.arrivedAt, size >= 40 ? 3 : 0) << size;
        EXPECT_EQ(head.logInfo[33], 0);
    }
}

} // namespace Wainroad
