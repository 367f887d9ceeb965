// A dialog from its resources to the screen and away again, and a picture that fills a page.
#include "Bench/peers/peers.h"

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Dialogs.h"
#include "MacToolbox/QuickDraw/Picture.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <algorithm>
#include <memory>
#include <string>

namespace peers {

void registerManagers();

namespace {

using namespace MacToolbox;

constexpr Int kAboutDialog = 2001; // the one with the most items
constexpr Int kPagePicture = 2052; // the largest, 440 by 250

void openResources()
{
    static const bool once = [] {
        for (const char* name : {"System.rsrc", "Wainroad.rsrc"})
            ResourceManager::shared().open(Platform::current().programFolder() + "/Wainroad_Wainroad.bundle/" + name);
        return true;
    }();
    static_cast<void>(once);
}

/// Opened, shown, drawn and closed.
struct DialogOpening {
    std::size_t items = 0;

    void once()
    {
        openResources();
        const DialogPtr dialog = GetNewDialog(kAboutDialog);
        if (!dialog)
            return;
        ShowWindow(dialog);
        DrawDialog(dialog);
        items = dialog->items.size();
        CloseDialog(dialog);
    }
};

struct PicturePage {
    GrafPtr port = std::make_shared<GrafPort>(Screen::bounds);

    void once() const
    {
        openResources();
        const PortScope scope(port);
        const Handle picture = GetPicture(kPagePicture);
        DrawPicture(picture, picFrame(picture));
    }
    bool drawn() const
    {
        const Bytes& bytes = port->portBits.baseAddr->bytes;
        return std::any_of(bytes.begin(), bytes.end(), [](std::uint8_t b) { return b != 0; });
    }
};

} // namespace

void registerManagers()
{
    const auto dialog = std::make_shared<DialogOpening>();
    add(
        "open_dialog", "project", [dialog] { dialog->once(); },
        [dialog] { return dialog->items > 10 ? "" : "no dialog"; });
    const auto page = std::make_shared<PicturePage>();
    add(
        "draw_picture_page", "project", [page] { page->once(); }, [page] { return page->drawn() ? "" : "no picture"; });
}

} // namespace peers
