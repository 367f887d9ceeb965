// A dialog item list: loaded, drawn, typed and clicked into.

#include "MacToolbox/Managers/Dialogs.h"
#include "MacToolbox/Managers/Events.h"
#include "Tests/Fuzz/ToolboxMachine.h"

using namespace MacToolbox;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ToolboxMachine machine(os("DITL"), 200, {data, size});
    const DialogPtr dialog = NewDialog(nullptr, {60, 60, 260, 420}, {0}, true, dBoxProc, nullptr, false, 0, 200);
    const Int count = I(dialog->items.size());
    require(count <= I(size / 14));
    require(dialog->editField < count);
    for (Int n = 1; n <= std::min<Int>(count, 12); ++n) {
        const Rect r = dialog->item(n)->rect;
        ToolboxMachine::click({60 + (r.top + r.bottom) / 2, 60 + (r.left + r.right) / 2});
        HideDItem(dialog, n);
        ShowDItem(dialog, n);
    }
    for (const char c : std::string("\ta\x08\x1F\x1E\r"))
        Input::key(static_cast<std::uint8_t>(c), 0, 0, true);
    Int events = 0;
    for (int round = 0; round < 20; ++round) {
        Int item = 0;
        ModalDialog([&](const DialogPtr&, EventRecord&, Int& hit) { return ++events > 60 && (hit = 1) != 0; }, item);
        require(item >= 0 && item <= std::max<Int>(count, 1));
    }
    SelIText(dialog, 1, 0, 32767);
    CloseDialog(dialog);
    require(!FrontWindow() && dialog->controls.empty());
    return 0;
}
