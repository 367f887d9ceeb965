#include "MacToolbox/QuickDraw/Screen.h"

#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/QuickDraw/PlainPixels.h"

#include <gtest/gtest.h>

using namespace MacToolbox;

class ScreenFrames : public testing::Test {
protected:
    void SetUp() override { screen.startAfresh(); }
    void TearDown() override { screen.startAfresh(); }

    void expectPublished() const
    {
        const FramePtr frame = screen.snapshot();
        const Rect& view = screen.viewport();
        ASSERT_EQ(frame->width, view.width());
        ASSERT_EQ(frame->height, view.height());
        ASSERT_EQ(I(frame->pixels.size()), view.width() * view.height());
        std::size_t i = 0;
        for (Int v = view.top; v < view.bottom; ++v)
            for (Int h = view.left; h < view.right; ++h)
                ASSERT_EQ(frame->pixels[i++], screen.bits.get(h, v) ? 1 : 0) << h << ',' << v;
    }

    Screen& screen = Screen::shared();
};

TEST_F(ScreenFrames, AreUnpackedForAnyViewport)
{
    Plain::Chance chance(31);
    for (auto& byte : screen.bits.baseAddr->bytes)
        byte = static_cast<std::uint8_t>(chance.in(0, 255));
    for (const Rect& view : {Rect{20, 0, 342, 512}, Rect{0, 0, 342, 512}, Rect{3, 8, 40, 29}, Rect{300, 13, 342, 512},
             Rect{9, 505, 10, 506}, Rect{50, 20, 50, 40}, Rect{60, 30, 90, 30}}) {
        screen.setViewport(view);
        EXPECT_EQ(screen.sharedViewport(), view);
        screen.publish(true);
        ASSERT_NO_FATAL_FAILURE(expectPublished());
    }
    screen.setViewport({-5, -6, 700, 9000});
    EXPECT_EQ(screen.viewport(), Screen::bounds);
}

TEST_F(ScreenFrames, AppearOnlyWhenSomethingWasDrawn)
{
    int published = 0;
    screen.onPublish = [&] { ++published; };
    EXPECT_EQ(screen.snapshot(), nullptr);
    screen.publish(false); // the first one always
    const FramePtr first = screen.snapshot();
    screen.publish(false);
    screen.setViewport({20, 0, 100, 100});
    screen.publish(false);
    EXPECT_EQ(screen.snapshot(), first);
    screen.publish(true);
    EXPECT_NE(screen.snapshot(), first);
    EXPECT_EQ(screen.snapshot()->height, 80);
    GrafPort(screen.bits).fill(Rect{30, 10, 40, 20}, Pattern::black, patCopy);
    screen.publish(false);
    expectPublished();
    EXPECT_EQ(first->pixels, Bytes(512 * 322, 0)); // what a reader holds never changes
    EXPECT_EQ(published, 3);
}
