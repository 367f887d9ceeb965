#include "Wainroad/Frame/Sprites.h"

#include "MacToolbox/App/ManualRun.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "Tests/Frame/FrameFixture.h"

#include <random>

using namespace Wainroad;

namespace {

/// A record of a script.
Bytes rec(Int op, std::initializer_list<Int> args = {})
{
    Form form;
    form.u8(2 + 2 * I(args.size())).u8(op);
    for (const Int arg : args)
        form.u16(arg);
    return form.bytes;
}

Bytes script(std::initializer_list<Bytes> records)
{
    Bytes all;
    for (const Bytes& record : records)
        all.insert(all.end(), record.begin(), record.end());
    return all;
}

class SpritesTest : public FrameTest {
protected:
    SpritesTest()
    {
        SetPort(gWindow);
        world.bounds = {50, 60, 110, 160};
        SWOpenPort(world);
    }

    /// A set of frames of random pixels, 10 by 12.
    static BitMapsRef randomFrames(std::mt19937& random, Int count)
    {
        auto set = std::make_shared<BitMaps>(count);
        for (Int n = 0; n < count; ++n) {
            const BitMap map(Rect{0, 0, 10, 12});
            for (Int v = 0; v < 10; ++v)
                for (Int h = 0; h < 12; ++h)
                    map.set(h, v, random() % 3 == 0);
            set->set(n, map);
        }
        return set;
    }
    static BitMapsRef masksOf(const BitMapsRef& frames)
    {
        auto masks = std::make_shared<BitMaps>(frames->count());
        for (Int n = 0; n < frames->count(); ++n)
            MakeMask(*frames, n, *masks);
        return masks;
    }

    /// What the window must show: every sprite from the back to the front, pixel by pixel.
    bool expected(Int h, Int v) const
    {
        bool pixel = false;
        for (auto at = world.sprites.rbegin(); at != world.sprites.rend(); ++at) {
            const SpriteState& s = (*at)->cur;
            if (!s.visible || !s.dst.contains({v, h}))
                continue;
            const Int x = h - s.pos.h, y = v - s.pos.v;
            if (s.mode == -1) {
                if (s.mask.get(x, y))
                    pixel = false;
                pixel ^= s.image.get(x, y);
                continue;
            }
            const bool source = s.image.get(x, y) != ((s.mode & 4) != 0);
            switch (s.mode & 3) {
            case 0: pixel = source; break;
            case 1: pixel |= source; break;
            case 2: pixel ^= source; break;
            case 3: pixel &= !source; break;
            }
        }
        return pixel;
    }
    Int differences() const
    {
        Int count = 0;
        for (Int v = world.bounds.top; v < world.bounds.bottom; ++v)
            for (Int h = world.bounds.left; h < world.bounds.right; ++h)
                count += black(h, v + kTop) != expected(h, v);
        return count;
    }

    /// Runs a script for some frames. @return Place and image at the end of each: "h,v:frame".
    std::vector<std::string> run(const Bytes& bytes, Int frames)
    {
        sprite = SWAddSprite(world);
        sprite->lastFrame = 3;
        sprite->script = bytes;
        std::vector<std::string> seen;
        for (Int i = 0; i < frames && !world.sprites.empty(); ++i) {
            SWAnimate(world, nullptr, true, false);
            seen.push_back(std::to_string(sprite->cur.pos.h) + ',' + std::to_string(sprite->cur.pos.v) + ':'
                + std::to_string(sprite->curFrame) + (sprite->dead ? "!" : ""));
        }
        return seen;
    }

    SpriteWorld world;
    SpriteRef sprite;
    using Seen = std::vector<std::string>;
};

} // namespace

TEST_F(SpritesTest, TheWindowShowsEverySpriteInItsPlaceAfterEachFrame)
{
    std::mt19937 random(1848);
    for (Int round = 0; round < 6; ++round) {
        SWDispose(world);
        EraseRect(world.bounds);
        for (Int i = 0; i < 7; ++i) {
            const BitMapsRef frames = randomFrames(random, 3);
            const bool masked = random() % 2;
            AddSprite(world, frames, masked ? masksOf(frames) : nullptr, 0, 2, masked ? -1 : I(random() % 8),
                45 + I(random() % 110), 45 + I(random() % 60));
            Sprite& s = *world.last();
            s.moveInterval = I(random() % 3);
            s.moveDH = I(random() % 9) - 4;
            s.moveDV = I(random() % 9) - 4;
            s.frameInterval = I(random() % 4);
        }
        SWDraw(world, world.last().get(), world.bounds, true);
        ASSERT_EQ(differences(), 0) << "drawn as a whole";
        for (Int frame = 0; frame < 12; ++frame) {
            if (frame % 4 == 3) // the one in front hides, or appears again
                world.first()->moveProc = [](Sprite& s) {
                    s.cur.visible = !s.cur.visible;
                    s.changed = true;
                    s.moveProc = nullptr;
                };
            SWAnimate(world, nullptr, true, true);
            ASSERT_EQ(differences(), 0) << "round " << round << " frame " << frame;
        }
    }
}

TEST_F(SpritesTest, AnUnchangedSpriteCostsNoDrawing)
{
    std::mt19937 random(3);
    AddSprite(world, randomFrames(random, 1), nullptr, 0, 0, 0, 70, 60);
    SWDraw(world, world.last().get(), world.bounds, true);
    const Bytes before = screen();
    InvertRect(world.bounds);
    SWAnimate(world, nullptr, true, true);
    InvertRect(world.bounds);
    EXPECT_EQ(screen(), before);
}

TEST_F(SpritesTest, DrawingStaysInsideTheWorld)
{
    std::mt19937 random(5);
    const SpriteRef s =
        AddSprite(world, randomFrames(random, 1), nullptr, 0, 0, 4, world.bounds.right - 3, world.bounds.top - 4);
    s->moveInterval = s->moveDV = 1;
    SWAnimate(world, nullptr, true, true);
    EXPECT_EQ(blackIn({kTop + 10, world.bounds.right, kTop + 310, 500}), 0);
    EXPECT_EQ(blackIn({kTop + 10, 60, kTop + world.bounds.top, 160}), 0);
    EXPECT_GT(blackIn({kTop + 50, 60, kTop + 110, 160}), 0);
}

TEST_F(SpritesTest, FramesWrapOnceInTheirRange)
{
    Sprite s;
    s.firstFrame = 2, s.lastFrame = 4;
    SpriteSetFrame(s, 2);
    EXPECT_TRUE(s.changed);
    std::vector<Int> seen;
    for (const Int n : {3, 5, 1, 0, 9, 2}) {
        SpriteSetFrame(s, n);
        seen.push_back(s.curFrame);
    }
    EXPECT_EQ(seen, (std::vector<Int>{3, 2, 4, 3, 6, 2}));
    s.changed = false;
    s.firstFrame = s.lastFrame = 2;
    SpriteSetFrame(s, 3);
    EXPECT_FALSE(s.changed) << "a range of one wraps to the same frame";
}

TEST_F(SpritesTest, MovesAreSpreadOverFramesAndEndOnTheirTarget)
{
    EXPECT_EQ(run(script({rec(2, {2, 7, -7}), rec(3, {0, 100, 90}), rec(1, {2}), rec(3, {3, 98, 90}), rec(255)}), 9),
        (Seen{"4,-3:0", "7,-7:0", "100,90:0", "100,90:0", "99,90:0", "99,90:0", "98,90:0", "98,90:0!"}));
    EXPECT_EQ(7 * 65536 / 2, 229376);
    for (Int steps = 1; steps < 40; ++steps) {
        Sprite s;
        s.cur.pos = {11, -13};
        SpriteMove(s, steps, 57, -101);
        for (Int i = 0; i < steps; ++i)
            SpriteStep(s);
        EXPECT_NEAR(double(s.cur.pos.h), 44, 0.5);
        EXPECT_NEAR(double(s.cur.pos.v), -90, 0.5);
    }
}

TEST_F(SpritesTest, LoopsRunTheirBodyOnceMoreThanTheyCount)
{
    // the body shows the next frame and waits for a frame; offset 0
    EXPECT_EQ(run(script({rec(5), rec(1, {1}), rec(7, {2, 0, 0}), rec(4, {0}), rec(255)}), 9),
        (Seen{"0,0:1", "0,0:2", "0,0:3", "0,0:0!"}));
    SWDispose(world);
    EXPECT_EQ(
        run(script({rec(6), rec(1, {1}), rec(7, {0, 0, 0})}), 5), (Seen{"0,0:3", "0,0:2", "0,0:1", "0,0:0", "0,0:3"}))
        << "a count of 0 loops for ever";
}

TEST_F(SpritesTest, FlagsModesAndProcsAreReached)
{
    std::vector<Int> calls;
    world.scriptProc = [&](Int arg) { calls.push_back(arg); };
    run(script({rec(8), rec(12, {-1}), rec(13, {42}), rec(11, {5}), rec(9), rec(13, {43}), rec(1, {9})}), 3);
    EXPECT_FALSE(sprite->cur.visible);
    EXPECT_EQ(sprite->cur.mode, -1);
    EXPECT_EQ(calls, std::vector<Int>{42}) << "it waits for the flag";
    world.scriptFlag = 5;
    SWAnimate(world, nullptr, true, false);
    EXPECT_TRUE(sprite->cur.visible);
    EXPECT_EQ(calls, (std::vector<Int>{42, 43}));
    const SpriteRef other = SWAddSprite(world);
    other->script = script({rec(10, {7}), rec(1, {5})});
    SWAnimate(world, nullptr, true, false);
    EXPECT_EQ(world.scriptFlag, 7);
}

TEST_F(SpritesTest, TheSpecialOpcodeMayReplaceTheScript)
{
    std::vector<std::pair<Int, bool>> calls;
    sprite = SWAddSprite(world);
    sprite->script = script({rec(254, {3}), rec(255)});
    sprite->scriptProc = [&](Int arg, Sprite& s, bool isNew) {
        calls.emplace_back(arg, isNew);
        if (calls.size() < 2)
            return false;
        s.script = script({rec(0), rec(2, {0, 5, 6}), rec(255)});
        s.scriptPC = 0;
        return true;
    };
    for (Int i = 0; i < 3; ++i)
        SWAnimate(world, nullptr, true, false);
    EXPECT_EQ(calls.front(), (std::pair<Int, bool>{3, true}));
    EXPECT_TRUE(sprite->dead);
    EXPECT_TRUE(world.sprites.empty());
}

TEST_F(SpritesTest, TheDeadLeaveAtTheEndOfTheirFrame)
{
    std::string order;
    for (const char c : {'a', 'b', 'c'}) {
        const SpriteRef s = SWAddSprite(world);
        s->moveProc = [&order, c](Sprite& self) {
            order += c;
            self.dead = c == 'b';
        };
        s->postProc = [&order, c](Sprite&) { order += static_cast<char>(c - 32); };
    }
    SWInsertSprite(world, nullptr, 1);
    SWAnimate(world, nullptr, true, false);
    SWAnimate(world, nullptr, true, false);
    EXPECT_EQ(order, "abcABCacAC");
    EXPECT_EQ(world.sprites.size(), 3U);
}

TEST(Scripts, ThatCannotBeRunAreFatal)
{
    Bytes endless = script({rec(7, {0, 0, 0})});
    const struct {
        const char* name;
        Bytes bytes;
        bool fatal;
    } cases[] = {
        {"empty", {}, true},
        {"runs off its end", rec(0), true},
        {"unknown opcode", rec(14), true},
        {"last unknown opcode", rec(253), true},
        {"a record of no length", {0, 0, 0}, true},
        {"goes round in one frame", endless, true},
        {"a jump before the start", rec(7, {1, 0, -2}), true},
        {"a jump past the end", rec(7, {1, 0, 500}), true},
        {"no opcode", {2}, false},
        {"arguments cut off", {8, 1, 0}, true},
        {"negative steps", script({rec(2, {-3, 9, 9}), rec(255)}), false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ManualRun machine;
        machine.platform.variables.emplace();
        bool survived = false;
        testing::internal::CaptureStderr();
        const int status = machine.run([&] {
            SpriteWorld world;
            const SpriteRef sprite = SWAddSprite(world);
            sprite->script = c.bytes;
            for (Int i = 0; i < 3; ++i)
                SWAnimate(world, nullptr, true, false);
            survived = true;
        });
        const std::string words = testing::internal::GetCapturedStderr();
        EXPECT_EQ(status, 0);
        EXPECT_EQ(survived, !c.fatal);
        EXPECT_EQ(words, c.fatal ? "wainroad: error -5000 in Scriptor\n" : "");
    }
}
