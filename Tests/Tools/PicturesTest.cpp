// What the pictures of the game have to keep when somebody draws them anew, beyond what `rsrc check` asks.

#include "MacToolbox/QuickDraw/CopyBits.h"
#include "Tests/Tools/GameResources.h"
#include "Tools/rsrc/Forms.h"

#include <bit>
#include <map>

#include <gtest/gtest.h>

using namespace Rsrc;

namespace {

std::size_t at(Int n) { return static_cast<std::size_t>(n); }

const std::vector<Frame>& framesOf(Int id)
{
    static std::map<Int, std::vector<Frame>> kept;
    const auto it = kept.find(id);
    return it != kept.end() ? it->second : kept[id] = *imageFrames(gameResource("Imag", id));
}

const Bits& frameOf(Int id, Int n) { return framesOf(id).at(at(n)).bits; }

Int blackPixels(const Bits& bits)
{
    Int count = 0;
    for (const std::uint8_t byte : bits.rows)
        count += std::popcount(byte);
    return count;
}

/// How many pixels two pictures of one size have different.
Int difference(const Bits& a, const Bits& b)
{
    Int count = 0;
    for (std::size_t i = 0; i < a.rows.size(); ++i)
        count += std::popcount(static_cast<std::uint8_t>(a.rows[i] ^ b.rows[i]));
    return count;
}

/// A run of frames that are shown one after the other.
struct Motion {
    const char* name;
    Int id, first, last;
    bool loops; ///< the first follows the last
};

constexpr Motion kMotions[] = {
    {"wain and oxen", 5100, 3, 6, true},
    {"ripples", 5310, 1, 2, true},
    {"heron", 5310, 3, 6, false},
    {"wings", 5310, 5, 6, true},
    {"aurochs", 9161, 0, 3, true},
    {"deer", 9162, 0, 2, true},
    {"hare", 9163, 0, 2, true},
    {"partridge", 9164, 0, 2, true},
    {"stag", 9165, 0, 2, true},
    {"boar", 9166, 0, 3, true},
    {"saiga", 9167, 0, 2, true},
    {"aurochs falls", 9161, 4, 5, false},
    {"deer falls", 9162, 3, 4, false},
    {"stag falls", 9165, 3, 4, false},
    {"boar falls", 9166, 4, 5, false},
    {"saiga falls", 9167, 3, 4, false},
    {"raft", 9200, 2, 4, false},
    {"bank", 9201, 0, 10, true},
    {"key", 129, 0, 1, true},
};

/// The moving parts of the title picture: frames, and where they lie on it.
struct TitlePart {
    Motion motion;
    Int h, v;
};

constexpr TitlePart kTitleParts[] = {
    {{"flap", 9000, 1, 9, false}, 213, 104},
    {{"axe", 9000, 10, 12, true}, 70, 143},
    {{"smoke", 9000, 13, 15, false}, 10, 119},
    {{"mug", 9000, 16, 17, true}, 132, 149},
    {{"pot", 9000, 18, 19, true}, 100, 149},
    {{"grindstone", 9000, 20, 29, true}, 359, 153},
    {{"hen", 9000, 30, 37, true}, 429, 155},
    {{"goat", 9000, 38, 40, true}, 447, 187},
    {{"page", 9000, 41, 42, true}, 287, 179},
    {{"ears", 9000, 43, 44, true}, 317, 266},
    {{"tail", 9000, 45, 46, true}, 203, 196},
};

void expectMotion(const Motion& motion)
{
    SCOPED_TRACE(motion.name);
    for (Int n = motion.first; n < motion.last + (motion.loops ? 1 : 0); ++n) {
        const Int next = n < motion.last ? n + 1 : motion.first;
        EXPECT_GT(difference(frameOf(motion.id, n), frameOf(motion.id, next)), 0)
            << "frames " << n << " and " << next << " are the same";
    }
}

// Silhouettes, in a canvas with a border of white.

constexpr Int kBorder = 2;

Bits bordered(const Bits& bits)
{
    Bits out(bits.height + 2 * kBorder, bits.width + 2 * kBorder);
    out.paint(bits, kBorder, kBorder);
    return out;
}

Bits maskOf(const Bits& bits)
{
    const auto map = [](const Bits& b) {
        return BitMap(std::make_shared<Block>(b.rows), 0, b.rowBytes(), {0, 0, b.height, b.width});
    };
    const BitMap mask(Rect{0, 0, bits.height, bits.width});
    CalcMask(map(bits), mask, {0, 0, bits.height, bits.width});
    Bits out(bits.height, bits.width);
    for (Int v = 0; v < bits.height; ++v)
        for (Int h = 0; h < bits.width; ++h)
            if (mask.get(h, v))
                out.set(v, h);
    return out;
}

/// Black grows by one pixel on all sides.
Bits grown(const Bits& bits)
{
    Bits out(bits.height, bits.width);
    for (Int v = -1; v <= 1; ++v)
        for (Int h = -1; h <= 1; ++h)
            out.paint(bits, v, h);
    return out;
}

Bits inverse(const Bits& bits)
{
    Bits out(bits.height, bits.width);
    for (Int v = 0; v < bits.height; ++v)
        for (Int h = 0; h < bits.width; ++h)
            if (!bits.black(v, h))
                out.set(v, h);
    return out;
}

/// The size of the patch that holds (v, h), which is cleared on the way.
Int takePatch(std::vector<std::vector<bool>>& set, Int v, Int h)
{
    std::vector<Point> open{{v, h}};
    Int size = 0;
    while (!open.empty()) {
        const Point p = open.back();
        open.pop_back();
        if (p.v < 0 || p.h < 0 || p.v >= I(set.size()) || p.h >= I(set[0].size()) || !set[at(p.v)][at(p.h)])
            continue;
        set[at(p.v)][at(p.h)] = false;
        ++size;
        for (const Point next : {Point{p.v - 1, p.h}, Point{p.v + 1, p.h}, Point{p.v, p.h - 1}, Point{p.v, p.h + 1}})
            open.push_back(next);
    }
    return size;
}

/// The largest white patch that lies outside the mask only because the outline has a gap of one or two pixels: a
/// thicker outline encloses it.
Int leak(const Bits& bits)
{
    const Bits thin = bordered(bits), mask = maskOf(thin);
    const Bits thick = inverse(grown(inverse(maskOf(grown(thin)))));
    std::vector<std::vector<bool>> lost(at(mask.height), std::vector<bool>(at(mask.width)));
    for (Int v = 0; v < mask.height; ++v)
        for (Int h = 0; h < mask.width; ++h)
            lost[at(v)][at(h)] = thick.black(v, h) && !mask.black(v, h);
    Int most = 0;
    for (Int v = 0; v < mask.height; ++v)
        for (Int h = 0; h < mask.width; ++h)
            most = std::max(most, takePatch(lost, v, h));
    return most;
}

} // namespace

TEST(Pictures, NoFrameRepeatsItsNeighbour)
{
    for (const Motion& motion : kMotions)
        expectMotion(motion);
    for (const TitlePart& part : kTitleParts)
        expectMotion(part.motion);
    for (const auto& [id, count] : {std::pair<Int, Int>{6080, 9}, {5600, 10}}) // people, kinds of weather: each its own
        for (Int a = 0; a < count; ++a)
            for (Int b = 0; b < a; ++b)
                EXPECT_GT(difference(frameOf(id, a), frameOf(id, b)), 40)
                    << "Imag " << id << ", frames " << a << " and " << b;
}

// Where the first frame follows the last, no more changes than between any two others.
TEST(Pictures, LoopsClose)
{
    for (const Motion& motion : kMotions) {
        if (!motion.loops || motion.last - motion.first < 2)
            continue;
        Int most = 0;
        for (Int n = motion.first; n < motion.last; ++n)
            most = std::max(most, difference(frameOf(motion.id, n), frameOf(motion.id, n + 1)));
        const Int closing = difference(frameOf(motion.id, motion.last), frameOf(motion.id, motion.first));
        EXPECT_LE(closing * 10, most * 13) << motion.name;
    }
}

// The parts lie on the title without a seam: the first frame of each is the picture itself, and the rim of the others
// nearly so.
TEST(Pictures, TitlePartsLieOnTheirPicture)
{
    const Bits& picture = frameOf(9000, 0);
    for (const TitlePart& part : kTitleParts) {
        SCOPED_TRACE(part.motion.name);
        for (Int n = part.motion.first; n <= part.motion.last; ++n) {
            const Bits& frame = frameOf(9000, n);
            const Bits below = picture.part({part.v, part.h, part.v + frame.height, part.h + frame.width});
            if (n == part.motion.first) {
                EXPECT_EQ(difference(frame, below), 0) << "at rest";
            }
            const Rect inside{1, 1, frame.height - 1, frame.width - 1};
            const Int rim = difference(frame, below) - difference(frame.part(inside), below.part(inside));
            EXPECT_LE(rim * 10, 2 * (frame.height + frame.width)) << "frame " << n;
        }
    }
}

// Masks are what the outline encloses: a gap lets the ground through the figure.
TEST(Pictures, OutlinesOfMaskedSpritesAreClosed)
{
    Bits ring(20, 20);
    for (Int i = 2; i < 18; ++i)
        ring.set(2, i), ring.set(17, i), ring.set(i, 2), ring.set(i, 17);
    EXPECT_EQ(leak(ring), 0);
    for (Int v = 9; v < 11; ++v)
        ring.rows[at(v * ring.rowBytes())] = 0; // two pixels of its left side
    EXPECT_GT(leak(ring), 150);

    const struct {
        Int id, first, last;
    } kMasked[] = {
        {5310, 7, 7},
        {5310, 9, 9},
        {5310, 12, 12},
        {9160, 4, 5},
        {9160, 7, 7},
        {9160, 9, 13},
        {9160, 17, 19},
        {9161, 0, 5},
        {9162, 0, 4},
        {9163, 0, 3},
        {9164, 0, 3},
        {9165, 0, 4},
        {9166, 0, 5},
        {9167, 0, 4},
        {9200, 1, 8},
        {9200, 10, 10},
    };
    for (const auto& run : kMasked)
        for (Int n = run.first; n <= run.last; ++n) {
            const Bits& bits = frameOf(run.id, n);
            // Gaps between legs and antlers may be narrow too.
            EXPECT_LE(leak(bits), std::max<Int>(8, blackPixels(maskOf(bits)) * 6 / 100))
                << "Imag " << run.id << ", frame " << n;
        }
}

TEST(Pictures, CursorsAreCoveredByTheirMasks)
{
    for (const Int id : {1, 2, 3, 4, 128}) {
        const Bits both = *findForm(os("CURS"))->picture(gameResource("CURS", id));
        Bits mask = both.part({0, 16, 16, 32});
        const Int before = blackPixels(mask);
        mask.paint(both.part({0, 0, 16, 16}), 0, 0);
        EXPECT_EQ(blackPixels(mask), before) << "CURS " << id << " inverts what it lies on";
        EXPECT_GT(before, 0);
    }
}

// The key is stored twice: for the window's icon buttons and for those of dialogs.
TEST(Pictures, TheTwoKeysAreOne)
{
    const Bits keys = *findForm(os("CDEF"))->picture(gameResource("CDEF", 10));
    EXPECT_EQ(keys.part({0, 0, 46, 42}), frameOf(129, 0));
    EXPECT_EQ(keys.part({0, 42, 46, 84}), frameOf(129, 1));
}

// The rock in front hits as it looks: a hump, and a skirt round its foot. Those behind it shrink by about a sixth each.
TEST(Pictures, RocksGrowEvenly)
{
    const auto extent = [](const Bits& bits) {
        Rect r{bits.height, bits.width, 0, 0};
        for (Int v = 0; v < bits.height; ++v)
            for (Int h = 0; h < bits.width; ++h)
                if (bits.black(v, h))
                    r = {std::min(r.top, v), std::min(r.left, h), std::max(r.bottom, v + 1), std::max(r.right, h + 1)};
        return r;
    };
    // What hits is columns 21 to 49 from row 5 on, and columns 1 to 64 from row 21 on.
    const Rect hump = extent(frameOf(9200, 5).part({0, 0, 19, 65})), whole = extent(frameOf(9200, 5));
    EXPECT_NEAR(static_cast<double>(hump.top), 5, 4);
    EXPECT_NEAR(static_cast<double>(hump.left), 21, 4);
    EXPECT_NEAR(static_cast<double>(hump.right), 49, 5);
    EXPECT_NEAR(static_cast<double>(whole.left), 1, 1);
    EXPECT_NEAR(static_cast<double>(whole.right), 64, 1);
    for (Int n = 6; n <= 9; ++n) {
        const Frame& frame = framesOf(9200).at(at(n));
        const Rect now = extent(frame.bits), before = extent(frameOf(9200, n - 1));
        EXPECT_NEAR(static_cast<double>(before.width() - now.width()), 63 / 6.0, 3) << "frame " << n;
        EXPECT_EQ(now.bottom + frame.origin.v, 32) << "its foot stands lowest";
        EXPECT_NEAR(static_cast<double>(now.left + now.right + 2 * frame.origin.h) / 2, 32.5, 1) << "its middle";
    }
}

// Sprites of the travel scene are plain copies: the ground that they pass has to be white like their own.
TEST(Pictures, NothingStandsBehindTheTravelSprites)
{
    const Bits& backdrop = frameOf(5100, 0);
    EXPECT_EQ(blackPixels(backdrop.part({32 - 9, 0, 77, 262})), 0);
}
