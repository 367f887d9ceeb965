// A `WIND` resource: shown among other windows, moved, updated, closed.

#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/Screen.h"
#include "Tests/Fuzz/ToolboxMachine.h"

using namespace MacToolbox;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ToolboxMachine machine(os("WIND"), 200, {data, size});
    const WindowPtr other = NewWindow(nullptr, {60, 60, 200, 300}, {0}, true, documentProc, nullptr, false, 0);
    const WindowPtr w = GetNewWindow(200, nullptr, nullptr);
    require((w != nullptr) == (size >= 18));
    ShowWindow(w);
    for (const WindowPtr& each : {w, other, w}) {
        SelectWindow(each);
        if (!each)
            continue;
        const PortScope scope(each->port);
        BeginUpdate(each);
        FillRect(each->portRect(), qd.gray);
        EndUpdate(each);
        MoveWindow(each, each->contentRect.left / 2, 50, false);
        InvalRect(each->portRect());
        require(Region(each->contentRect).intersection(each->updateRgn) == each->updateRgn);
    }
    for (Int v = -10; v < 350; v += 30) {
        WindowPtr found;
        const Int part = FindWindow({v, v}, found);
        require((part == inContent || part == inDrag) == (found != nullptr));
    }
    CloseWindow(w);
    CloseWindow(other);
    require(WindowManager::shared().windows.empty());
    return 0;
}
