// A `MENU` resource, and the same bytes as items in the notation of AppendMenu.

#include "MacToolbox/Managers/Menus.h"
#include "Tests/Fuzz/ToolboxMachine.h"

using namespace MacToolbox;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ToolboxMachine machine(os("MENU"), 200, {data, size});
    const MenuHandle menu = GetMenu(200);
    require((menu != nullptr) == (size >= 15));
    SetMenuBar({menu, NewMenu(1, {0})});
    for (Int key = 0; key < 256; ++key) {
        const Int choice = MenuKey(key);
        require(choice == 0 || menu->item(LoWord(choice)));
    }
    DrawMenuBar();
    require(MenuBar::published().menus.size() == (menu ? 2 : 1) && !MenuBar::dump().empty());
    ToolboxMachine::click({100, 110});
    PopUpMenuSelect(menu, 100, 100, 1);
    Bytes counted(data, data + std::min<std::size_t>(size, 200));
    AppendMenu(menu, counted);
    Str255 text;
    for (Int n = 0; n <= CountMItems(menu) + 1; ++n)
        GetItem(menu, n, text);
    return 0;
}
