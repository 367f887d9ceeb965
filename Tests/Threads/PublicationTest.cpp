#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <gtest/gtest.h>

#include <thread>

using namespace MacToolbox;

TEST(Publication, FramesAreCompleteForReadersOnOtherThreads)
{
    // Every frame is all of one colour; a reader must never see two colours in one, nor a frame change in its hands.
    std::atomic<bool> stop = false;
    std::atomic<int> torn = 0;
    Screen& screen = Screen::shared();
    screen.startAfresh();
    screen.publish(true);
    std::vector<std::thread> readers;
    for (int i = 0; i < 2; ++i)
        readers.emplace_back([&] {
            while (!stop) {
                const FramePtr frame = screen.snapshot();
                const std::uint8_t colour = frame->pixels.front();
                for (const std::uint8_t pixel : frame->pixels)
                    if (pixel != colour) {
                        ++torn;
                        break;
                    }
            }
        });
    GrafPort port(screen.bits);
    for (int i = 0; i < 300; ++i) {
        port.invert(Region(Screen::bounds));
        screen.publish(false);
    }
    stop = true;
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(torn, 0);
    screen.startAfresh();
}
