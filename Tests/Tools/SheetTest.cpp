#include "Tools/rsrc/Sheet.h"
#include "Tools/rsrc/Build.h"
#include "Tools/rsrc/Forms.h"

#include <random>

#include <gtest/gtest.h>

using namespace Rsrc;

namespace {

/// A picture that is found on a sheet by its looks alone.
Bits noise(Int height, Int width, unsigned seed)
{
    std::mt19937 random(seed);
    Bits bits(height, width);
    for (Int v = 0; v < height; ++v)
        for (Int h = 0; h < width; ++h)
            if (random() % 2 == 0)
                bits.set(v, h);
    return bits;
}

/// Where `what` stands on the sheet; every place, if it stands there more than once.
std::vector<Rect> placesOf(const Bits& what, const Bits& sheet)
{
    std::vector<Rect> places;
    for (Int v = 0; v + what.height <= sheet.height; ++v)
        for (Int h = 0; h + what.width <= sheet.width; ++h) {
            const Rect place{v, h, v + what.height, h + what.width};
            const Rect row{v, h, v + 1, h + what.width};
            if (sheet.part(row) == what.part({0, 0, 1, what.width}) && sheet.part(place) == what)
                places.push_back(place);
        }
    return places;
}

Int blackPixels(const Bits& bits, Int rows)
{
    Int count = 0;
    for (Int v = 0; v < rows; ++v)
        for (Int h = 0; h < bits.width; ++h)
            count += bits.black(v, h);
    return count;
}

} // namespace

TEST(Sheet, EveryPictureStandsOnceWholeAndInOrder)
{
    std::vector<SheetPicture> pictures;
    for (Int i = 0; i < 24; ++i)
        pictures.push_back({"-9004:" + std::to_string(i),
            noise(8 + i % 5, i == 20 ? 1200 : 20 + 3 * i, static_cast<unsigned>(i)), i == 7});
    const Bits sheet = contactSheet(pictures);
    Rect before;
    for (const SheetPicture& picture : pictures) {
        SCOPED_TRACE(picture.caption);
        const auto places = placesOf(picture.bits, sheet);
        ASSERT_EQ(places.size(), 1U);
        const Rect& place = places[0];
        EXPECT_TRUE(
            place.top > before.bottom || (place.top == before.top && place.left > before.right && !picture.startsRow));
        // White all round, then the frame.
        EXPECT_GE(place.left, 2);
        EXPECT_LE(place.right + 2, sheet.width);
        before = place;
    }
    EXPECT_EQ(contactSheet({}).height, 0);
}

TEST(Sheet, FramesAndStrikesAreTakenApart)
{
    std::vector<std::string> faults;
    const Archive game = compileFolder(WR_RESOURCES "/Wainroad", faults);
    ASSERT_TRUE(faults.empty()) << faults[0];
    const auto picturesOf = [&](const char* type, Int id) {
        return sheetPictures(os(type), id, game.items.at({os(type), id}).data);
    };
    const auto frames = picturesOf("Imag", 5100);
    ASSERT_EQ(frames.size(), 22U);
    EXPECT_EQ(frames[3].caption, "5100:3");
    EXPECT_EQ(frames[3].bits, (*imageFrames(game.items.at({os("Imag"), 5100}).data))[3].bits);
    EXPECT_EQ(picturesOf("Imag", 5200).front().caption, "5200");
    ASSERT_EQ(picturesOf("ICON", 6030).size(), 1U);
    EXPECT_EQ(picturesOf("snd ", 9004).front().bits.width, (2646 + 63) / 64);
    EXPECT_TRUE(picturesOf("STR#", 3000).empty());

    // The table of a strike, 16 rows, has every pixel of its glyphs but those of the box for missing characters.
    const Bytes& strike = game.items.at({os("NFNT"), 6322}).data;
    const Bits strip = *findForm(os("NFNT"))->picture(strike);
    const Int lost =
        blackPixels(strip, strip.height) - blackPixels(picturesOf("NFNT", 6322).front().bits, 16 * (strip.height + 4));
    EXPECT_GE(lost, 0);
    EXPECT_LE(lost, 2 * (strip.height + strip.height));

    // A strike that claims glyphs of any size has no specimen.
    for (const auto& [at, value] :
        {std::pair<std::size_t, std::uint8_t>{18, 0x7F}, {20, 0x7F}, {14, 0x7F}, {24, 0x7F}, {8, 0x80}}) {
        Bytes wild = strike;
        wild[at] = value;
        EXPECT_LE(blackPixels(specimen(wild), specimen(wild).height), 100000);
    }

    // Cut short anywhere, a resource gives fewer pictures or none.
    for (std::size_t n = 0; n < strike.size(); n += 97)
        sheetPictures(os("NFNT"), 1, Bytes(strike.begin(), strike.begin() + I(n)));
    const Bytes& images = game.items.at({os("Imag"), 5600}).data;
    for (std::size_t n = 0; n < images.size(); n += 97)
        EXPECT_TRUE(sheetPictures(os("Imag"), 1, Bytes(images.begin(), images.begin() + I(n))).empty());
}
