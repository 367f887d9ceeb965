#include "Wainroad/Frame/Panels.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/EditItems.h"
#include "Wainroad/Frame/Items.h"

#include <algorithm>

namespace Wainroad {

static constexpr std::size_t kMostPending = 24;

// The content of the window is 9 to 313 by 9 to 503, with 3 pixels between panels.
const std::array<Rect, 14> gPanelRects{{
    {0, 0, 0, 0},
    {9, 9, 313, 61},
    {9, 64, 86, 326},
    {89, 64, 208, 326},
    {9, 64, 164, 326},
    {167, 64, 208, 326},
    {211, 64, 313, 326},
    {9, 329, 260, 448},
    {263, 329, 313, 448},
    {9, 451, 313, 503},
    {9, 64, 208, 326},
    {165, 64, 313, 326},
    {9, 64, 313, 326},
    {9, 9, 313, 503},
}};

static RunState<std::vector<const ViewProc*>> sPending;
static RunState<std::vector<std::unique_ptr<View>>> sLimbo; // disposed, but perhaps still in use further up the stack

// ---- The tree

Int SendMsg(View& view, Msg& msg) { return view.handler ? view.handler->fn(view, msg) : 0; }

Int SendMsg(View& view, Int what)
{
    Msg msg{what, 0, 0, {}};
    return SendMsg(view, msg);
}

View* AddChild(View* parent, Int position)
{
    if (!parent)
        return nullptr;
    auto child = std::make_unique<View>();
    child->disabled = parent->disabled;
    child->style = parent->style;
    child->parent = parent;
    View* const result = child.get();
    auto& list = parent->children;
    const Int index = std::clamp<Int>(I(list.size()) - position, 0, I(list.size()));
    list.insert(list.begin() + index, std::move(child));
    return result;
}

View* GetItem(View& panel, Int n)
{
    if (n == 0)
        return &panel;
    return n > 0 && n <= I(panel.children.size()) ? panel.children[static_cast<std::size_t>(n - 1)].get() : nullptr;
}

/// Lets nothing point at the view, or below it, any more.
static void forget(View& view)
{
    RemoveTimers(view);
    ForgetKeys(view);
    if (gFocus == &view)
        gFocus = nullptr;
    for (const auto& child : view.children)
        forget(*child);
}

void DisposeView(View& view)
{
    forget(view);
    if (!view.parent)
        return;
    auto& list = view.parent->children;
    const auto at = std::find_if(list.begin(), list.end(), [&](const auto& child) { return child.get() == &view; });
    view.parent = nullptr;
    if (at == list.end())
        return;
    sLimbo->push_back(std::move(*at));
    list.erase(at);
}

void EmptyLimbo() { sLimbo->clear(); }

/// The views of a list as they are now, newest first: the list may change while they are told something.
static std::vector<View*> newestFirst(View& view)
{
    std::vector<View*> result;
    for (auto child = view.children.rbegin(); child != view.children.rend(); ++child)
        result.push_back(child->get());
    return result;
}

static View& rootOf(View& view)
{
    View* root = &view;
    while (root->parent)
        root = root->parent;
    return *root;
}

void InvalView(View& view, Int outset)
{
    const ViewPortScope port(view);
    const Rect& r = view.r;
    InvalRect({r.top - outset, r.left - outset, r.bottom + outset, r.right + outset});
}

void DisableView(View& view)
{
    if (view.disabled == 0) {
        SendMsg(view, kMsgDisable);
        InvalView(view);
    }
    ++view.disabled;
}

/// Takes one cover off. @return True if the view is enabled now and was not.
static bool uncover(View& view)
{
    if (view.disabled <= 0 || --view.disabled > 0)
        return false;
    SendMsg(view, kMsgEnable);
    InvalView(view);
    return true;
}

void EnableItem2(View& panel, Int n)
{
    if (View* item = GetItem(panel, n))
        uncover(*item);
}

void DisableChildren(View& view)
{
    for (View* child : newestFirst(view))
        DisableView(*child);
}

void EnableChildren(View& view)
{
    for (std::size_t i = 0; i < view.children.size(); ++i)
        uncover(*view.children[i]);
}

Int ClickChild(View& view, Msg& msg)
{
    const Point at = msg.point();
    for (std::size_t n = view.children.size(); n > 0; --n) {
        View& child = *view.children[n - 1];
        if (child.disabled != 0 || !child.r.contains(at))
            continue;
        const Int result = SendMsg(child, msg);
        return (result & 0xFFFF) == 0 ? 0 : I(n) + (result << 16);
    }
    return 0;
}

void DrawChildren(View& view, Msg& msg)
{
    const Region visible = thePort->visRgn->region;
    for (std::size_t i = 0; i < view.children.size(); ++i) {
        View& child = *view.children[i];
        if (child.disabled == 0 && child.r.intersects(visible.bounds()))
            SendMsg(child, msg);
    }
}

void CloseChildren(View& view)
{
    for (View* child : newestFirst(view)) {
        if (child->parent != &view)
            continue;
        SendMsg(*child, kMsgClose);
        DisposeView(*child);
    }
}

// ---- Ports and styles

void FocusPort(View* view, GrafPtr& saved)
{
    if (!view) {
        SetPort(saved);
        return;
    }
    saved = thePort;
    if (const WindowPtr* window = rootOf(*view).dataAs<WindowPtr>())
        SetPort(*window);
}

ViewPortScope::ViewPortScope(View& view) { FocusPort(&view, saved_); }

ViewPortScope::~ViewPortScope() { SetPort(saved_); }

static TextStyleRec portStyle(const GrafPort& port) { return {port.txFont, port.txFace, port.txMode, port.txSize, 0}; }

static void applyStyle(GrafPort& port, const TextStyleRec& style)
{
    port.txFont = style.font, port.txFace = style.face, port.txMode = style.mode, port.txSize = style.size;
}

Int SetTextStyle(View* view, TextStyleRec& saved)
{
    if (!view) {
        applyStyle(*thePort, saved);
        return saved.just;
    }
    saved = portStyle(*thePort);
    applyStyle(*thePort, view->style);
    return view->style.just;
}

StyleScope::StyleScope(const TextStyleRec& style) : port_(thePort), saved_(portStyle(*thePort))
{
    applyStyle(*port_, style);
}

StyleScope::~StyleScope() { applyStyle(*port_, saved_); }

// ---- Opening and closing panels

void OpenPanel(const ViewProc& proc)
{
    if (sPending->size() < kMostPending)
        sPending->push_back(&proc);
}

void OpenPending()
{
    for (std::size_t i = 0; i < sPending->size() && gRootView; ++i) {
        Msg msg{kMsgOpen, 0, 0, (*sPending)[i]};
        SendMsg(*gRootView, msg);
    }
    sPending->clear();
}

View* FindPanel(const ViewProc& proc)
{
    if (gRootView)
        for (auto child = gRootView->children.rbegin(); child != gRootView->children.rend(); ++child)
            if ((*child)->user == &proc)
                return child->get();
    return nullptr;
}

void ClosePanel(const ViewProc& proc)
{
    View* panel = FindPanel(proc);
    if (!panel)
        return;
    const ViewPortScope port(*panel);
    SendMsg(*panel, kMsgClose);
    DisposeView(*panel);
}

bool IsPanel(const View* view)
{
    return view && gRootView
        && std::any_of(gRootView->children.begin(), gRootView->children.end(),
            [&](const auto& child) { return child.get() == view; });
}

/// How a new panel stands to the panels that it overlaps.
struct Placement {
    bool covered = false;     ///< a higher one lies over it
    bool sharesPlace = false; ///< one of them has the same location, and so the same frame
};

/// Closes the panels of the same layer under `panel` and covers the lower ones.
static Placement settleSiblings(View& panel)
{
    Placement place;
    for (View* sibling : newestFirst(*panel.parent)) {
        if (sibling == &panel || sibling->parent != panel.parent || !sibling->r.intersects(panel.r))
            continue;
        if (sibling->location() == panel.location())
            place.sharesPlace = true;
        if (sibling->layer() == panel.layer()) {
            SendMsg(*sibling, kMsgClose);
            DisposeView(*sibling);
        } else if (sibling->layer() < panel.layer()) {
            DisableView(*sibling);
        } else {
            place.covered = true;
        }
    }
    return place;
}

static void focusFirstField(View& panel)
{
    for (const auto& child : panel.children) {
        if (child->kind() != kEditItem)
            continue;
        if (EditTE(child.get(), kMsgActivate))
            TESetSelect(0, 32767, gTE);
        return;
    }
}

static Int openPanel(View& panel, Msg& msg)
{
    const ViewProc* const* proc = std::any_cast<const ViewProc*>(&msg.obj);
    panel.handler = &PanelHandler;
    if (!proc || !*proc)
        return 0;
    panel.user = *proc;
    const Int descriptor = panel.user->fn(panel, msg);
    if (!panel.parent)
        return 0;
    const auto location = static_cast<std::size_t>(descriptor >> 16 & 0xFF);
    panel.r = location < gPanelRects.size() ? gPanelRects[location] : Rect{};
    panel.type = descriptor >> 16 & 0xFFFF;
    panel.disabled = panel.parent->disabled;

    const Placement place = settleSiblings(panel);
    if (place.covered)
        ++panel.disabled;
    if (descriptor != 0)
        LoadItems(panel, LoWord(descriptor));
    if (!panel.data.has_value())
        panel.data = Int{-1};
    panel.user->fn(panel, msg);
    for (View* child : newestFirst(panel))
        SendMsg(*child, msg);
    if (place.covered || !panel.parent)
        return 1;
    focusFirstField(panel);
    InvalView(panel, place.sharesPlace ? 0 : 2);
    return 1;
}

static Int clickPanel(View& panel, Msg& msg)
{
    msg.param = ClickChild(panel, msg);
    // The item may have closed the panel while it followed the mouse.
    if (msg.param == 0 || !panel.parent || !panel.user)
        return 0;
    return panel.user->fn(panel, msg);
}

static Int keyToPanel(View& panel, Msg& msg)
{
    if (msg.character() == 9 && NextEditItem(panel))
        return 1;
    for (View* child : newestFirst(panel)) {
        if (child->parent != &panel || child->disabled != 0)
            continue;
        if ((SendMsg(*child, msg) & 0xFFFF) != 0)
            return 1;
    }
    return 0;
}

static void drawPanel(View& panel, Msg& msg)
{
    {
        const PenScope pen;
        Rect r = panel.r;
        r.inset(-2, -2);
        PenNormal();
        PenPat(Pattern::gray);
        FrameRect(r);
        r.inset(1, 1);
        PenPat(Pattern::black);
        FrameRect(r);
        r.inset(1, 1);
        EraseRect(r);
        DrawChildren(panel, msg);
    }
    DrawOutline();
}

static void closePanel(View& panel, Msg& msg)
{
    if (panel.user)
        panel.user->fn(panel, msg);
    CloseChildren(panel);
    if (!panel.parent)
        return;
    for (View* sibling : newestFirst(*panel.parent)) {
        if (sibling->parent != panel.parent || sibling->disabled == 0 || sibling->layer() >= panel.layer()
            || !sibling->r.intersects(panel.r))
            continue;
        uncover(*sibling);
        if (sibling->disabled == 0 && sibling->location() != panel.location())
            InvalView(*sibling, 2);
    }
}

static Int handlePanel(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen: return openPanel(panel, msg);
    case kMsgClick: return clickPanel(panel, msg);
    case kMsgKey: return keyToPanel(panel, msg);
    case kMsgDraw: drawPanel(panel, msg); return 1;
    case kMsgClose: closePanel(panel, msg); return 1;
    case kMsgTimer: return panel.user ? panel.user->fn(panel, msg) : 0;
    case kMsgActivate:
    case kMsgDeactivate:
        for (View* child : newestFirst(panel))
            SendMsg(*child, msg);
        return 1;
    case kMsgDisable: DisableChildren(panel); return 1;
    case kMsgEnable: EnableChildren(panel); return 1;
    }
    return 0;
}

const ViewProc PanelHandler{handlePanel};

static const AtRunStart sRenewPanels([] { EmptyLimbo(); });

} // namespace Wainroad
