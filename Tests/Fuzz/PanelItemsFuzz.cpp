// The items of a panel: loaded, installed over, drawn, clicked, typed into, covered and closed.

#include "MacToolbox/App/ManualRun.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/Managers/Windows.h"
#include "Tests/Managers/ToyResources.h"
#include "Wainroad/Frame/Controls.h"
#include "Wainroad/Frame/DialogItems.h"
#include "Wainroad/Frame/EditItems.h"
#include "Wainroad/Frame/IconButton.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

using namespace Wainroad;

static constexpr Int kItems = 200;

static void require(bool holds)
{
    if (!holds)
        std::abort();
}

static Int panelProc(View& panel, Msg& msg)
{
    if (msg.what == kMsgOpen && ItemsLoaded(panel)) {
        SetKeys(panel, 1, 1, 2);
        gTELimitWidth = 1, gTEMaxWidth = 60;
        InstallUserItem(panel, 1, FrameItem);
        InstallUserItem(panel, 2, ListItem);
        InstallUserItem(panel, 3, RadioGroup, kItems); // a list in itself
        InstallUserItem(panel, 4, ImageItemProc, 0, ImageSpec{128, 10128, 0, 1, 1});
    }
    return PanelDescriptor(1, 10, kItems);
}
static Int coverProc(View&, Msg&) { return PanelDescriptor(2, 12, 0); }
static const ViewProc FuzzPanel{panelProc}, CoverPanel{coverProc};

/// A resource file with what panels use, and an empty list of items.
static const std::string& resources()
{
    static const std::string& path = *new std::string([] { // leaked: the last step of the process needs it
        const Bytes frame = Form().u16(1).u32(20).u32(0).u16(2).rect({0, 0, 1, 16}).u8(0xFE).u8(0xFF).bytes;
        const Bytes control =
            Form().rect({0, 0, 50, 90}).u16(0).u8(1).u8(0).u16(1).u16(0).u16(160).u32(128).counted("a\rb").bytes;
        const Bytes bar = Form().rect({0, 0, 90, 16}).u16(3).u8(1).u8(0).u16(9).u16(0).u16(16).u32(0).u8(0).bytes;
        const Bytes file = resourceFile({{os("FONT"), 12, boxFont()}, {os("Imag"), 128, frame},
            {os("Imag"), 129, frame}, {os("ICON"), 128, Bytes(128, 0xF0)}, {os("CNTL"), 128, control},
            {os("CNTL"), 129, bar}, {os("DITL"), kItems, {}},
            {os("PICT"), 128, Form().u16(0).rect({0, 0, 9, 9}).u16(0x1101).u8(0x31).rect({0, 0, 5, 5}).u8(255).bytes}});
        const std::string name =
            std::filesystem::temp_directory_path() / ("panels-" + std::to_string(::getpid()) + ".rsrc");
        std::ofstream(name, std::ios::binary)
            .write(reinterpret_cast<const char*>(file.data()), std::streamsize(file.size()));
        std::atexit([] { std::filesystem::remove(resources()); });
        return name;
    }());
    return path;
}

static void pump(Int passes)
{
    for (Int i = 0; i < passes; ++i) {
        EventRecord event;
        WaitNextEvent(everyEvent, event, 0, nullptr);
        RootEvent(event);
    }
}

static void play(std::span<const std::uint8_t> input)
{
    ResourceManager::shared().open(resources());
    GetResource(os("DITL"), kItems)->bytes.assign(input.begin(), input.end());
    RegisterControls();
    LoadButtonImages();
    gWindow = NewWindow(nullptr, {20, 0, 342, 512}, {0}, false, plainDBoxProc, nullptr, false, 0);
    PanelsInit();
    SetPort(gWindow);
    RootOpen(gWindow, true);
    OpenPanel(FuzzPanel);
    pump(4);
    View* const panel = FindPanel(FuzzPanel);
    require(panel && panel->children.size() <= input.size() / 14);
    const Int count = std::min<Int>(I(panel->children.size()), 10);
    for (Int n = 1; n <= count; ++n) {
        const View& item = *GetItem(*panel, n);
        Input::mouse((item.r.left + item.r.right) / 2, (item.r.top + item.r.bottom) / 2 + 20, true);
        Input::mouse(item.r.left, item.r.top, false);
        pump(3);
        Str255 text{0};
        GetItemText(*panel, n, text);
        SetItemText(*panel, n, characters(text));
        SelectItemText(*panel, n, 0, 99);
        SetItemJust(*panel, n, 1);
        SetIconButtonIcon(*panel, n, 129, true);
        DisableView(*GetItem(*panel, n));
        EnableItem2(*panel, n);
        PressButton(panel, n);
    }
    for (const char c : std::string("\tab\x1E\x1F\x08\r")) {
        Input::key(static_cast<std::uint8_t>(c), 0, 0, true);
        pump(2);
    }
    OpenPanel(CoverPanel);
    pump(3);
    ClosePanel(CoverPanel);
    pump(3);
    RootClose(gWindow);
    require(!gRootView && TimerCount() == 0 && !gFocus);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ManualRun machine;
    machine.platform.variables.emplace();
    bool done = false;
    machine.run([&] {
        play({data, size});
        done = true;
    });
    require(done);
    return 0;
}
