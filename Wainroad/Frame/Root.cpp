#include "Wainroad/Frame/Panels.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/Managers/Sound.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/EditItems.h"
#include "Wainroad/Frame/Images.h"
#include "Wainroad/Frame/Items.h"

#include <algorithm>

namespace Wainroad {

static constexpr Int kBorderImages = 128, kBorderColor = 10128, kBorderFrames = 4;
static constexpr Int kBlinkInterval = 7;

View* gRootView = nullptr;
WindowPtr gWindow;
GrafPtr gSavePort;
bool gInBackground = false;
View* gFocus = nullptr;
TEHandle gTE;
ImageListRef gBorderImages;
Int gScreenDepth = 1;
bool gUseColor = false, gPrefersColor = false, gHasColorQD = false, gHas32BitQD = false, gColorDisplay = false;

static RunState<std::unique_ptr<View>> sRoot;
static RunState<std::unique_ptr<View>> sClosedRoot; // kept for whoever still works on it
static RunState<Int> sRouting;                      // calls of `RootEvent` on the stack

static const AtRunStart sRenew([] {
    gRootView = nullptr, gFocus = nullptr;
    gWindow = nullptr, gSavePort = nullptr, gTE = nullptr, gBorderImages = nullptr;
    gInBackground = false;
    gScreenDepth = 1;
    gUseColor = gPrefersColor = gHasColorQD = gHas32BitQD = gColorDisplay = false;
});

void PanelsInit()
{
    gUseColor = gPrefersColor;
    gScreenDepth = 1;
    TimersInit();
}

static WindowPtr windowOf(View& root)
{
    const WindowPtr* window = root.dataAs<WindowPtr>();
    return window ? *window : nullptr;
}

// ---- The root's handler

static Int openRoot(View& root, const WindowPtr& window)
{
    root.handler = &RootHandler;
    root.type = -1;
    root.data = window;
    root.r = window->portRect();
    const ViewPortScope port(root);
    EditTE(nullptr, kMsgOpen);
    gBorderImages = std::make_shared<ImageList>();
    gBorderImages->resID = kBorderImages;
    gBorderImages->colorID = kBorderColor;
    gBorderImages->count = kBorderFrames;
    gBorderImages->depth = std::min<Int>(gScreenDepth, 8);
    LoadAllFrames(*gBorderImages);
    AddTimer(root, kBlinkInterval);
    return 1;
}

static Int openPanelOn(View& root, Msg& msg)
{
    if (const WindowPtr* window = std::any_cast<WindowPtr>(&msg.obj))
        return openRoot(root, *window);
    const ViewProc* const* proc = std::any_cast<const ViewProc*>(&msg.obj);
    if (!proc || !*proc || FindPanel(**proc))
        return 0;
    ClipRect({}); // nothing draws while a panel opens; what it invalidates is drawn afterwards
    View* panel = AddChild(&root, 0);
    PanelHandler.fn(*panel, msg);
    ClipRect(root.r);
    return 1;
}

static Int clickOnRoot(View& root, Msg& msg)
{
    Point at = msg.point();
    GlobalToLocal(at);
    msg.param = at.toLong();
    for (auto child = root.children.rbegin(); child != root.children.rend(); ++child) {
        View& panel = **child;
        if (panel.disabled == 0 && panel.r.contains(at)) {
            SendMsg(panel, msg);
            break;
        }
    }
    return 1;
}

static Int keyToRoot(View& root, Msg& msg)
{
    std::vector<View*> panels;
    for (auto child = root.children.rbegin(); child != root.children.rend(); ++child)
        panels.push_back(child->get());
    for (View* panel : panels) {
        if (panel->parent != &root || panel->disabled != 0)
            continue;
        if ((SendMsg(*panel, msg) & 0xFFFF) != 0)
            return 1;
    }
    return 0;
}

/// The four sides of the window's own frame, where they are to be drawn.
static void drawBorder(const Rect& visible)
{
    const auto side = [](Int frame, Int top, Int left) {
        DrawImageFrame(gBorderImages, frame, {top, left, top, left}, 0);
    };
    if (visible.top < 7)
        side(0, 0, 7);
    if (visible.left < 7)
        side(1, 0, 0);
    if (visible.bottom >= 316)
        side(2, 315, 7);
    if (visible.right >= 506)
        side(3, 0, 505);
}

static Int drawRoot(View& root, Msg& msg)
{
    const WindowPtr window = windowOf(root);
    if (const Int depth = std::min<Int>(msg.param & 0xFFFF, 8); depth != 0) {
        InvalRect(root.r);
        if (gBorderImages && depth != gBorderImages->depth) {
            gBorderImages->depth = depth;
            LoadAllFrames(*gBorderImages);
        }
    }
    BeginUpdate(window);
    EraseRect(window->portRect());
    drawBorder(thePort->visRgn->rgnBBox());
    DrawChildren(root, msg);
    EndUpdate(window);
    return 1;
}

static Int closeRoot(View& root)
{
    CloseChildren(root);
    EditTE(nullptr, kMsgClose);
    RemoveTimer(root);
    if (gBorderImages)
        gBorderImages->frames.clear();
    CloseWindow(windowOf(root));
    return 1;
}

static Int handleRoot(View& root, Msg& msg)
{
    const ViewPortScope port(root);
    switch (msg.what) {
    case kMsgOpen: return openPanelOn(root, msg);
    case kMsgClick: return clickOnRoot(root, msg);
    case kMsgKey: return keyToRoot(root, msg);
    case kMsgDraw: return drawRoot(root, msg);
    case kMsgClose: return closeRoot(root);
    case kMsgTimer: return EditTE(nullptr, kMsgTimer);
    case kMsgActivate:
    case kMsgDeactivate:
        EditTE(nullptr, msg.what);
        for (std::size_t n = root.children.size(); n > 0; --n)
            SendMsg(*root.children[n - 1], msg);
        return 1;
    }
    return 0;
}

const ViewProc RootHandler{handleRoot};

// ---- The root

/// Puts the window into the middle of the part of the screen below the menu bar.
static void centreWindow(const WindowPtr& window)
{
    const Rect screen = GetMainDevice()->gdRect, port = window->portRect();
    const Int spare = screen.top + 20 + screen.bottom - port.bottom + port.top;
    const Int top = spare / 2 + (spare >= 42 ? 9 : 0);
    MoveWindow(window, (screen.left + screen.right - port.right + port.left) / 2, top, false);
}

void RootOpen(const WindowPtr& window, bool centre)
{
    if (!window)
        return;
    gScreenDepth = 1;
    gColorDisplay = gScreenDepth != 1 && gUseColor;
    *sRoot = std::make_unique<View>();
    gRootView = sRoot->get();
    gRootView->style = kDefaultStyle;
    Msg msg{kMsgOpen, 0, 0, window};
    RootHandler.fn(*gRootView, msg);
    if (centre)
        centreWindow(window);
    ShowWindow(window);
    const PortScope port(window->port);
    InvalRect(window->portRect());
}

void RootClose(const WindowPtr& window)
{
    if (!gRootView || !window || windowOf(*gRootView) != window)
        return;
    HideWindow(window);
    SendMsg(*gRootView, kMsgClose);
    DisposeView(*gRootView);
    gRootView = nullptr;
    *sClosedRoot = std::move(*sRoot);
}

// ---- Events

static bool isFrontWindow(const WindowPtr& window) { return window && window == FrontWindow(); }

static bool clickEvent(const EventRecord& event, const WindowPtr& window)
{
    WindowPtr hit;
    if (FindWindow(event.where, hit) != inContent || hit != window || !isFrontWindow(window))
        return false;
    Msg msg{kMsgClick, event.where.toLong(), event.modifiers, {}};
    SendMsg(*gRootView, msg);
    return true;
}

static bool keyEvent(const EventRecord& event)
{
    const Int character = event.message & charCodeMask;
    if (event.what == autoKey && ((event.modifiers & cmdKey) != 0 || character == 3 || character == 13))
        return false;
    Msg msg{kMsgKey, event.message, event.modifiers, {}};
    return SendMsg(*gRootView, msg) != 0;
}

static bool route(const EventRecord& event)
{
    const WindowPtr window = windowOf(*gRootView);
    switch (event.what) {
    case mouseDown: return clickEvent(event, window);
    case keyDown:
    case autoKey: return keyEvent(event);
    case updateEvt: {
        if (event.window() != window)
            return false;
        Msg msg{kMsgDraw, gScreenDepth << 16, 0, {}};
        SendMsg(*gRootView, msg);
        return true;
    }
    case activateEvt: {
        if (event.window() != window)
            return false;
        const bool active = (event.modifiers & activeFlag) != 0;
        Msg msg{active ? kMsgActivate : kMsgDeactivate, 0, event.modifiers, {}};
        SendMsg(*gRootView, msg);
        if (active)
            TimersResume();
        return false;
    }
    }
    return false;
}

bool RootEvent(const EventRecord& event)
{
    if (*sRouting == 0) {
        EmptyLimbo();
        *sClosedRoot = nullptr;
    }
    struct Depth {
        Depth() { ++*sRouting; }
        ~Depth() { --*sRouting; }
    } const depth;

    OpenPending();
    const bool consumed = gRootView && route(event);
    EventRecord update;
    if (gRootView && !EventAvail(updateMask, update))
        TimersRun();
    return consumed;
}

Int RootEditCommand(Int item)
{
    if (!gRootView || !isFrontWindow(windowOf(*gRootView)))
        return 0;
    if (!gTE || !gFocus || gFocus->disabled != 0)
        return 1;
    const ViewPortScope port(*gFocus);
    switch (item) {
    case 2: TECut(gTE); break;
    case 3: TECopy(gTE); break;
    case 4:
        if (ScrapFits())
            TEPaste(gTE);
        else
            SysBeep(1);
        break;
    case 5:
        TESetSelect(0, 32767, gTE);
        TEDelete(gTE);
        break;
    }
    return 1;
}

} // namespace Wainroad
