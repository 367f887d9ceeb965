#include "MacToolbox/Managers/Windows.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <algorithm>

namespace MacToolbox {

namespace {

constexpr Int kTitleBar = 19; // rows above the content, with the line under them
constexpr Int kMenuBar = 20;
constexpr Int kWindSize = 18; // of a `WIND`, before its title

RunState<WindowManager> sWindows;

/// A fresh port on the whole screen, in global coordinates.
GrafPtr screenPort() { return std::make_shared<GrafPort>(Screen::shared().bits); }

BitMap contentBits(const Rect& bounds)
{
    BitMap bits = Screen::shared().bits;
    bits.bounds.offset(-bounds.left, -bounds.top);
    return bits;
}

Rect grown(const Rect& r, Int by) { return {r.top - by, r.left - by, r.bottom + by, r.right + by}; }

Int frameKind(Int procID) { return procID & 15; }

/// A double box: one pixel at the outer edge, and a band of three inside a white gap.
void drawDialogFrame(GrafPort& port, const WindowRecord& w)
{
    port.fill(w.structRect(), port.bkPat, patCopy);
    port.frameRect(grown(w.contentRect, 8));
    port.pnSize = {3, 3};
    port.frameRect(grown(w.contentRect, 6));
}

void drawShadow(GrafPort& port, const Rect& c)
{
    port.fill(Rect{c.bottom + 1, c.left + 1, c.bottom + 3, c.right + 3}, port.pnPat, port.pnMode);
    port.fill(Rect{c.top + 1, c.right + 1, c.bottom + 3, c.right + 3}, port.pnPat, port.pnMode);
}

void drawTitle(GrafPort& port, const WindowRecord& w)
{
    const auto title = characters(w.title);
    if (title.empty())
        return;
    const Rect& c = w.contentRect;
    port.txFont = systemFont;
    port.txSize = 12;
    const Int width = FontManager::shared().width(port, title);
    const Int middle = (c.left + c.right) / 2;
    port.fill(Rect{c.top - 18, middle - width / 2 - 6, c.top - 1, middle + width / 2 + 6}, port.bkPat, patCopy);
    port.pnLoc = {c.top - 5, middle - width / 2};
    FontManager::shared().draw(port, title);
}

void drawDocumentFrame(GrafPort& port, const WindowRecord& w)
{
    const Rect& c = w.contentRect;
    const Rect bar{c.top - kTitleBar, c.left - 1, c.top, c.right + 1};
    port.fill(bar, port.bkPat, patCopy);
    port.frameRect({bar.top, bar.left, c.bottom + 1, bar.right});
    port.frameRect(bar);
    if (w.hilited)
        for (Int y = c.top - 16; y <= c.top - 4; y += 2)
            port.fill(Rect{y, c.left + 1, y + 1, c.right - 1}, port.pnPat, port.pnMode);
    drawTitle(port, w);
}

void drawFrame(const WindowRecord& w, const Region& clip)
{
    const GrafPtr port = screenPort();
    port->clipRgn = std::make_shared<RgnRecord>(clip.subtracting(Region(w.contentRect)));
    switch (frameKind(w.procID)) {
    case dBoxProc: drawDialogFrame(*port, w); break;
    case plainDBoxProc: port->frameRect(grown(w.contentRect, 1)); break;
    case altDBoxProc:
        port->frameRect(grown(w.contentRect, 1));
        drawShadow(*port, w.contentRect);
        break;
    default: drawDocumentFrame(*port, w);
    }
}

/// The window of the current port, or nil.
WindowPtr portWindow() { return thePort->window.lock(); }

/// From the local coordinates of a port to global ones.
Point toGlobal(const GrafPort& port) { return {-port.portBits.bounds.top, -port.portBits.bounds.left}; }

} // namespace

WindowRecord::WindowRecord(const Rect& bounds, Int windowProcID)
    : port(std::make_shared<GrafPort>(contentBits(bounds))), procID(windowProcID), contentRect(bounds)
{
    port->portRect = {0, 0, bounds.height(), bounds.width()};
    port->visRgn = NewRgn();
    port->txFont = systemFont;
}

Rect WindowRecord::structRect() const
{
    const Rect& c = contentRect;
    switch (frameKind(procID)) {
    case dBoxProc: return grown(c, 8);
    case plainDBoxProc: return grown(c, 1);
    case altDBoxProc: return {c.top - 1, c.left - 1, c.bottom + 3, c.right + 3};
    default: return {c.top - kTitleBar, c.left - 1, c.bottom + 1, c.right + 1};
    }
}

Point WindowRecord::toLocal(Point global) const
{
    const Rect& bounds = port->portBits.bounds;
    return {global.v + bounds.top, global.h + bounds.left};
}

WindowManager& WindowManager::shared() { return *sWindows; }

bool WindowManager::contains(const WindowPtr& w) const
{
    return std::find(windows.begin(), windows.end(), w) != windows.end();
}

void WindowManager::add(const WindowPtr& w, const WindowPtr& behind)
{
    if (!w)
        return;
    const auto place = behind ? std::find(windows.begin(), windows.end(), behind) : windows.end();
    windows.insert(place == windows.end() ? windows.begin() : place + 1, w);
}

void WindowManager::show(const WindowPtr& w)
{
    if (!w || w->visible)
        return;
    Region exposed(w->structRect());
    for (const WindowPtr& before : windows) { // what lies in front keeps its pixels
        if (before == w)
            break;
        if (before->visible)
            exposed = exposed.subtracting(Region(before->structRect()));
    }
    w->visible = true;
    relayout(exposed);
    w->updateRgn = w->updateRgn.unionWith(Region(w->contentRect));
}

void WindowManager::hide(const WindowPtr& w)
{
    if (!w || !w->visible)
        return;
    w->visible = false;
    w->port->visRgn->region = Region();
    relayout(Region(w->structRect()));
}

void WindowManager::close(const WindowPtr& w)
{
    if (!w)
        return;
    const WindowPtr keep = w; // the caller's variable may be an element of the list
    hide(keep);
    std::erase(windows, keep);
    if (lastActive == keep)
        lastActive = nullptr;
    std::erase_if(pendingActivates, [&](const Activation& a) { return a.window == keep; });
    checkActivation();
}

void WindowManager::select(const WindowPtr& w)
{
    const auto place = std::find(windows.begin(), windows.end(), w);
    if (!w || place == windows.end())
        return;
    if (place == windows.begin()) {
        checkActivation();
        return;
    }
    std::rotate(windows.begin(), place, place + 1);
    const WindowPtr& first = windows.front();
    relayout(first->visible ? Region(first->structRect()) : Region());
}

void WindowManager::move(const WindowPtr& window, Int h, Int v, bool front)
{
    const WindowPtr w = window; // the caller's variable may be an element of the list
    if (!w)
        return;
    const Region old = w->visible ? Region(w->structRect()) : Region();
    const Int dh = h - w->contentRect.left, dv = v - w->contentRect.top;
    if (dh == 0 && dv == 0) {
        if (front)
            select(w);
        return;
    }
    w->contentRect.offset(dh, dv);
    w->port->portBits.bounds.offset(-dh, -dv);
    w->updateRgn = w->updateRgn.offsetBy(dh, dv);
    if (const auto place = std::find(windows.begin(), windows.end(), w); front && place != windows.end())
        std::rotate(windows.begin(), place, place + 1);
    if (w->visible)
        relayout(old.unionWith(Region(w->structRect())));
}

void WindowManager::relayout(const Region& exposed)
{
    const Region screen(Screen::bounds);
    Region covered;
    for (const WindowPtr& w : windows) {
        if (!w->visible)
            continue;
        const Region vis = Region(w->contentRect.intersection(Screen::bounds)).subtracting(covered);
        drawFrame(*w, screen.subtracting(covered));
        const Rect& local = w->port->portRect;
        w->port->visRgn->region = vis.offsetBy(local.left - w->contentRect.left, local.top - w->contentRect.top);
        const Region hit = vis.intersection(exposed);
        if (!hit.isEmpty()) {
            const GrafPtr port = screenPort();
            port->fill(hit, port->bkPat, patCopy);
            w->updateRgn = w->updateRgn.unionWith(hit);
        }
        covered = covered.unionWith(Region(w->structRect()));
    }
    const Region rest = exposed.subtracting(covered);
    if (!rest.isEmpty())
        screenPort()->fill(rest, desktop, patCopy);
    checkActivation();
}

void WindowManager::checkActivation()
{
    const WindowPtr top = front();
    if (top == lastActive)
        return;
    if (lastActive && (lastActive->visible || contains(lastActive))) {
        lastActive->hilited = false;
        pendingActivates.push_back({lastActive, false});
    }
    if (top) {
        top->hilited = true;
        pendingActivates.push_back({top, true});
    }
    lastActive = top;
}

WindowPtr WindowManager::front() const
{
    for (const WindowPtr& w : windows)
        if (w->visible)
            return w;
    return nullptr;
}

WindowPtr WindowManager::windowAt(Point global) const
{
    for (const WindowPtr& w : windows)
        if (w->visible && w->structRect().contains(global))
            return w;
    return nullptr;
}

void InitWindows() { }

WindowPtr NewWindow(const void*, const Rect& bounds, const Str255& title, bool visible, Int procID,
    const WindowPtr& behind, bool goAway, Int refCon)
{
    const WindowPtr w = makeWindow<WindowRecord>(bounds, procID);
    w->title = title;
    w->goAwayFlag = goAway;
    w->refCon = refCon;
    WindowManager::shared().add(w, behind);
    if (visible)
        WindowManager::shared().show(w);
    return w;
}

WindowPtr GetNewWindow(Int id, const void* storage, const WindowPtr& behind)
{
    const Handle h = GetResource(os("WIND"), id);
    if (!h || h->count() < kWindSize)
        return nullptr;
    const Str255 title = h->count() > kWindSize ? h->pstr(kWindSize) : Str255{0};
    return NewWindow(storage, h->rect(0), title, h->s16(10) != 0, h->s16(8), behind, h->s16(12) != 0, h->s32(14));
}

WindowPtr GetNewCWindow(Int id, const void* storage, const WindowPtr& behind)
{
    return GetNewWindow(id, storage, behind);
}

void CloseWindow(const WindowPtr& w) { WindowManager::shared().close(w); }
void DisposeWindow(const WindowPtr& w) { CloseWindow(w); }
void DisposWindow(const WindowPtr& w) { CloseWindow(w); }
void ShowWindow(const WindowPtr& w) { WindowManager::shared().show(w); }
void HideWindow(const WindowPtr& w) { WindowManager::shared().hide(w); }
void SelectWindow(const WindowPtr& w) { WindowManager::shared().select(w); }
void BringToFront(const WindowPtr& w) { WindowManager::shared().select(w); }
void MoveWindow(const WindowPtr& w, Int h, Int v, bool front) { WindowManager::shared().move(w, h, v, front); }
WindowPtr FrontWindow() { return WindowManager::shared().front(); }

void HiliteWindow(const WindowPtr& w, bool hilite)
{
    if (w)
        w->hilited = hilite;
}

void SetWTitle(const WindowPtr& w, const Str255& title)
{
    if (w)
        w->title = title;
}

void GetWTitle(const WindowPtr& w, Str255& title)
{
    if (w)
        title = w->title;
}

void SetWRefCon(const WindowPtr& w, Int value)
{
    if (w)
        w->refCon = value;
}

Int GetWRefCon(const WindowPtr& w) { return w ? w->refCon : 0; }

RgnHandle GetGrayRgn() { return std::make_shared<RgnRecord>(Region(Screen::bounds)); }

void InvalRect(const Rect& r)
{
    const WindowPtr w = portWindow();
    if (!w)
        return;
    const Point d = toGlobal(*thePort);
    w->updateRgn = w->updateRgn.unionWith(Region(r.offsetBy(d.h, d.v).intersection(w->contentRect)));
}

void InvalRgn(const RgnHandle& rgn)
{
    const WindowPtr w = portWindow();
    if (!w || !rgn)
        return;
    const Point d = toGlobal(*thePort);
    w->updateRgn = w->updateRgn.unionWith(rgn->region.offsetBy(d.h, d.v));
}

void ValidRect(const Rect& r)
{
    const WindowPtr w = portWindow();
    if (!w)
        return;
    const Point d = toGlobal(*thePort);
    w->updateRgn = w->updateRgn.subtracting(Region(r.offsetBy(d.h, d.v)));
}

void BeginUpdate(const WindowPtr& w)
{
    if (!w)
        return;
    const Rect& local = w->port->portRect;
    const Region update = w->updateRgn.offsetBy(local.left - w->contentRect.left, local.top - w->contentRect.top);
    w->savedVis = w->port->visRgn->region;
    w->port->visRgn->region = w->savedVis->intersection(update);
    w->updateRgn = Region();
}

void EndUpdate(const WindowPtr& w)
{
    if (!w || !w->savedVis)
        return;
    w->port->visRgn->region = *w->savedVis;
    w->savedVis.reset();
}

Int FindWindow(Point global, WindowPtr& w)
{
    w = nullptr;
    if (global.v < kMenuBar)
        return inMenuBar;
    w = WindowManager::shared().windowAt(global);
    if (!w)
        return inDesk;
    return w->contentRect.contains(global) ? inContent : inDrag;
}

void SetPort(const WindowPtr& w)
{
    if (w)
        SetPort(w->port);
}

} // namespace MacToolbox
