// Calls on a list, four bytes each: which, and three numbers.

#include "MacToolbox/Managers/Lists.h"
#include "Tests/Fuzz/ToolboxMachine.h"

using namespace MacToolbox;

namespace {

void call(const ListHandle& list, Int which, Int a, Int b, Int c)
{
    Bytes bytes;
    Cell cell{a, 0};
    Rect rect;
    switch (which & 15) {
    case 0: LAddRow(a % 20, b, list); break;
    case 1: LDelRow(a, b, list); break;
    case 2: LSetCell(bytesOf("a cell"), c, cell, list); break;
    case 3: LGetCell(bytes, c, cell, list); break;
    case 4: LSetSelect(b & 1, cell, list); break;
    case 5: require(!LGetSelect(true, cell, list) || list->selected[static_cast<std::size_t>(cell.v)]); break;
    case 6: LScroll(0, a, list); break;
    case 7: LAutoScroll(list); break;
    case 8: LDoDraw(a & 1, list); break;
    case 9: LRect(rect, cell, list); break;
    case 10: list->selFlags = a; break;
    default:
        ToolboxMachine::click({40 + b, 40 + c * 2});
        Input::mouse(40 + c * 2, 40 + a * 2, false);
        LClick({b, c * 2}, a << 8, list);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ToolboxMachine machine(os("none"), 200, {});
    const WindowPtr w = NewWindow(nullptr, {40, 40, 300, 460}, {0}, true, plainDBoxProc, nullptr, false, 0);
    const ListHandle list = LNew({10, 10, 100, 110}, {0, 0, 5, 1}, {0, 0}, 0, w, true, false, false, true);
    for (std::size_t i = 0; i + 4 <= std::min<std::size_t>(size, 1024); i += 4) {
        const auto number = [&](std::size_t at) { return I(static_cast<std::int8_t>(data[i + at])); };
        call(list, data[i], number(1), number(2), number(3));
        require(list->cells.size() == list->selected.size() && list->dataBounds.bottom == list->rowCount());
        require(list->visible.top >= 0 && list->visible.top <= list->maxTop()
            && list->vScroll->contrlMax == list->maxTop());
    }
    LDispose(list);
    return 0;
}
