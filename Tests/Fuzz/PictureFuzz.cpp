// A `PICT` resource, at its own size and doubled, under a clip.

#include "MacToolbox/QuickDraw/Picture.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/Fuzz/ToolboxMachine.h"

using namespace MacToolbox;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ToolboxMachine machine(os("PICT"), 200, {data, size});
    const auto port = std::make_shared<GrafPort>(Rect{0, 0, 200, 300});
    const PortScope scope(port);
    ClipRect({10, 10, 190, 290});
    const PenState pen = port->penState();
    const Handle picture = GetPicture(200);
    const Rect frame = picFrame(picture);
    DrawPicture(picture, frame);
    DrawPicture(picture, {0, 0, 2 * frame.height(), 2 * frame.width()});
    DrawPicture(picture, {0, 0, 200, 300});
    require(port->penState() == pen && port->clipRgn->region == Region(Rect{10, 10, 190, 290}));
    for (Int h = 0; h < 300; ++h)
        require(!port->portBits.get(h, 5));
    return 0;
}
