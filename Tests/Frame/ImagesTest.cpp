#include "Wainroad/Frame/Images.h"

#include "MacToolbox/App/ManualRun.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/Frame/FrameFixture.h"

#include <random>

using namespace Wainroad;

namespace {

using Rows = std::vector<std::string>;

class ImagesTest : public FrameTest {
protected:
    static BitMap unpack(const Bytes& record)
    {
        Int at = 0;
        BitMap map;
        UnpackFrame(PtrToHand(record), at, map);
        return map;
    }
    /// The first column of bytes of a frame 8 wide.
    static Bytes column(Int height, const Bytes& packed)
    {
        const BitMap map = unpack(frameRecord({0, 0, height, 8}, 2, packed));
        Bytes bytes;
        for (Int v = 0; map.baseAddr && v < height; ++v)
            bytes.push_back(static_cast<std::uint8_t>(map.baseAddr->u8(v * 2)));
        return bytes;
    }
    static std::uint8_t code(Int control) { return static_cast<std::uint8_t>(control); }
};

} // namespace

TEST_F(ImagesTest, EachKindOfRunIsUnpacked)
{
    EXPECT_EQ(column(3, {3, 1, 2, 4}), (Bytes{1, 2, 4}));
    EXPECT_EQ(column(4, {0, 0, code(-4), 9}), (Bytes{9, 9, 9, 9}));
    EXPECT_EQ(column(3, {code(-64), 7}), (Bytes{7, 7, 7})) << "a run ends with its column";
    EXPECT_EQ(column(4, {code(-66), 1, 2}), (Bytes{1, 2, 1, 2}));
    EXPECT_EQ(column(3, {code(-66), 1, 2}), (Bytes{1, 2, 1})) << "the second byte of the last pair is dropped";
    EXPECT_EQ(column(4, {2, 5}), (Bytes{5, 0, 0, 0})) << "what is cut off is white";
    EXPECT_EQ(column(2, {}), (Bytes{0, 0}));
    const BitMap wide = unpack(frameRecord({0, 0, 2, 16}, 2, {4, 0x80, 0x01, 99, 98, 2, 0xFF, 0x0F}));
    EXPECT_EQ(art(wide), (Rows{"#.......########", ".......#....####"})) << "so is the rest of the bytes as they are";
}

TEST_F(ImagesTest, ColumnsFollowEachOtherAndThePositionEndsBehindThem)
{
    const Bytes record = frameRecord({5, 3, 7, 19}, 2, {2, 0x80, 0x01, code(-2), 0xFF, 99});
    Int at = 0;
    BitMap map;
    UnpackFrame(PtrToHand(record), at, map);
    EXPECT_EQ(at, 18 + 5);
    EXPECT_EQ(map.bounds, (Rect{5, 3, 7, 19}));
    EXPECT_EQ(art(map), (Rows{"#.......########", ".......#########"}));
}

TEST_F(ImagesTest, ImpossibleFramesAreEmpty)
{
    const Bytes bits{2, 1, 1, 2, 1, 1};
    const struct {
        const char* name;
        Bytes record;
    } cases[] = {
        {"negative rows", frameRecord({0, 0, 2, 16}, -2, bits)},
        {"no rows", frameRecord({0, 0, 2, 16}, 0, bits)},
        {"wider than its rows", frameRecord({0, 0, 2, 17}, 2, bits)},
        {"upside down", frameRecord({2, 0, 0, 16}, 2, bits)},
        {"gigantic", frameRecord({-32768, 0, 32767, 16}, 32766, bits)},
        {"header cut", Bytes(17)},
        {"nothing", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(unpack(c.record).baseAddr, nullptr) << c.name;
    Int at = -5;
    BitMap map;
    UnpackFrame(nullptr, at, map);
    UnpackFrame(PtrToHand(cases[0].record), at, map);
}

TEST_F(ImagesTest, MirroringIsFlushLeftForEveryWidth)
{
    std::mt19937 random(7);
    for (Int width = 1; width <= 48; ++width) {
        std::string row;
        for (Int i = 0; i < width; ++i)
            row += random() % 2 ? '#' : '.';
        add("Imag", 600 + width, imag({{row}}));
        useResources();
        gMirror = true;
        const ImageListRef list = LoadImages(600 + width, 0, 1);
        gMirror = false;
        EXPECT_EQ(art(list->frame(0)), Rows{std::string(row.rbegin(), row.rend())}) << width;
    }
}

TEST_F(ImagesTest, AnIndexBeyondTheLastFrameGivesTheLast)
{
    add("Imag", 600, imag({{"#.", ".."}, {"##", ".."}}));
    useResources();
    const ImageListRef list = LoadImages(600, 1, 3);
    ASSERT_EQ(list->frames.size(), 3U);
    for (Int n = 0; n < 3; ++n)
        EXPECT_EQ(art(list->frame(n)), (Rows{"##", ".."}));
    EXPECT_EQ(list->frame(3).baseAddr, nullptr);
    EXPECT_EQ(list->frame(-1).baseAddr, nullptr);

    Bytes wild = imag({{"#."}, {"##"}});
    wild[2] = 0xFF; // the first record claims a negative length
    add("Imag", 601, wild);
    add("Imag", 602, Form().u16(-1).bytes);
    useResources();
    EXPECT_EQ(LoadImages(601, 0, 2)->frames.size(), 2U);
    EXPECT_EQ(LoadImages(602, 0, 1)->frame(0).baseAddr, nullptr);
}

TEST_F(ImagesTest, DrawingTakesTheFramesOwnSizeWhereNoneIsGiven)
{
    add("Imag", 600, imag({{"##", "##", "##"}}));
    useResources();
    const ImageListRef list = LoadImages(600, 0, 1);
    SetPort(gWindow);
    DrawImageFrame(list, 0, {100, 100, 100, 100}, 0);
    EXPECT_EQ(blackIn({kTop + 90, 90, kTop + 120, 120}), 6);
    DrawImageFrame(list, 0, {100, 100, 106, 100}, 0);
    EXPECT_EQ(blackIn({kTop + 90, 90, kTop + 120, 120}), 12);
    DrawImageFrame(list, 1, {0, 0, 9, 9}, 0);
    DrawImageFrame(nullptr, 0, {0, 0, 9, 9}, 0);
    list->depth = 0;
    EraseRect({90, 90, 120, 120});
    DrawImageFrame(list, 0, {100, 100, 100, 100}, 0);
    EXPECT_EQ(blackIn({kTop + 90, 90, kTop + 120, 120}), 0);
}

TEST_F(ImagesTest, AMaskIsTheSilhouette)
{
    add("Imag", 600, imag({{".####.", ".#..#.", ".####.", "#....."}}));
    useResources();
    const BitMaps frames(LoadImages(600, 0, 1)->frames);
    BitMaps masks(2);
    MakeMask(frames, 0, masks);
    EXPECT_EQ(art(masks.at(0)), (Rows{".####.", ".####.", ".####.", "#....."}));
    EXPECT_EQ(masks.at(0).bounds, frames.at(0).bounds);
    MakeMask(frames, 1, masks);
    EXPECT_EQ(masks.at(1).baseAddr, nullptr);
    MakeMask(frames, 9, masks);
    DisposeBitMaps(masks, 0, 5);
    EXPECT_EQ(masks.at(0).baseAddr, nullptr);
}
