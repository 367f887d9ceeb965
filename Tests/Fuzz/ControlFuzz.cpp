// A `CNTL` resource: drawn, searched, set, tracked.

#include "MacToolbox/Managers/Controls.h"
#include "Tests/Fuzz/ToolboxMachine.h"

using namespace MacToolbox;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ToolboxMachine machine(os("CNTL"), 200, {data, size});
    const WindowPtr w = NewWindow(nullptr, {40, 40, 300, 460}, {0}, true, plainDBoxProc, nullptr, false, 0);
    const ControlHandle c = GetNewControl(200, w);
    require((c != nullptr) == (size >= 22));
    if (!c)
        return 0;
    for (Int v = -5; v < 270; v += 9)
        for (Int h = -5; h < 430; h += 9) {
            ControlHandle found;
            require((FindControl({v, h}, w, found) != 0) == (found != nullptr));
        }
    for (const Int value : {-32768, -1, 0, 1, 32767}) {
        SetCtlValue(c, value);
        SetCtlMax(c, -value);
        SetCtlMin(c, value / 2);
        HiliteControl(c, value & 255);
    }
    HiliteControl(c, 0);
    ShowControl(c);
    const Rect r = c->contrlRect;
    for (const Point p : {Point{r.top, r.left}, Point{(r.top + r.bottom) / 2, (r.left + r.right) / 2},
             Point{r.bottom - 1, r.right - 1}}) {
        ToolboxMachine::click({p.v + 40, p.h + 40});
        TrackControl(c, p, nullptr);
    }
    DisposeControl(c);
    require(w->controls.empty());
    return 0;
}
