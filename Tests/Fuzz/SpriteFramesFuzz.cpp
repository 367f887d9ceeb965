// The frames of a sprite: unpacked, mirrored, masked and drawn.

#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/Fuzz/ToolboxMachine.h"
#include "Wainroad/Frame/Images.h"

using namespace Wainroad;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ToolboxMachine machine(os("Imag"), 200, {data, size});
    SetPort(std::make_shared<GrafPort>(Rect{-20, -20, 80, 80}));
    for (const bool mirrored : {false, true}) {
        gMirror = mirrored;
        const ImageListRef list = LoadImages(200, 0, 5);
        require(list->frames.size() == 5);
        const BitMaps frames(list->frames);
        BitMaps masks(5);
        for (Int n = 0; n < 5; ++n) {
            const BitMap frame = frames.at(n);
            require(!frame.baseAddr || frame.rowBytes * frame.bounds.height() <= frame.baseAddr->count());
            if (frame.rowBytes * frame.bounds.height() < 20000)
                MakeMask(frames, n, masks);
            DrawImageFrame(list, n, {0, 0, 0, 0}, n);
            DrawImageFrame(list, n, {-10, 5, 40, 50}, 7);
        }
    }
    gMirror = false;
    return 0;
}
