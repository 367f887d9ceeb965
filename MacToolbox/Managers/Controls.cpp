#include "MacToolbox/Managers/Controls.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Events.h"

#include <algorithm>
#include <map>

namespace MacToolbox {

namespace {

constexpr Int kCntlSize = 22;    // of a `CNTL`, before its title
constexpr Int kFirstRepeat = 24; // ticks from the press to the second call of an action
constexpr Int kNextRepeat = 4;   // ticks between the calls after that

struct Definitions {
    std::map<Int, ControlDef> byKey{{0, ControlManager::standardButton}, {1, ControlManager::scrollBar}};
};
RunState<Definitions> sDefinitions;

/// The window that owns a port's controls, or nil.
WindowPtr ownerOf(const ControlHandle& c) { return c->contrlOwner.lock(); }

bool stillTracking(const ControlHandle& c, Point& local)
{
    if (!WaitMouseUp())
        return false;
    const Rect& bounds = c->port->portBits.bounds;
    const Point mouse = Input::mouseLocation();
    local = {mouse.v + bounds.top, mouse.h + bounds.left};
    return true;
}

/// Drags the thumb of a scroll bar until the button goes up.
void trackThumb(const ControlHandle& c, Point last)
{
    Point mouse;
    while (stillTracking(c, mouse)) {
        if (mouse == last)
            continue;
        last = mouse;
        const Rect& r = c->contrlRect;
        const bool horizontal = r.width() >= r.height();
        const Int travel = std::max(r.width(), r.height()) - 48;
        if (travel < 1 || c->contrlMin >= c->contrlMax)
            continue;
        const Int pos = horizontal ? mouse.h - r.left : mouse.v - r.top; // of the thumb's middle
        const Int value = c->contrlMin + (pos - 24) * (c->contrlMax - c->contrlMin) / travel;
        SetCtlValue(c, std::clamp(value, c->contrlMin, c->contrlMax));
    }
}

/// Highlights the part while the mouse is in it, and repeats the action.
Int trackPart(const ControlHandle& c, Int part, const ControlAction& action)
{
    HiliteControl(c, part);
    if (action)
        action(c, part);
    Int due = TickCount() + kFirstRepeat;
    bool inside = true;
    Point mouse;
    while (stillTracking(c, mouse)) {
        const bool now = c->test(mouse) == part;
        if (now != inside) {
            inside = now;
            c->contrlHilite = inside ? part : 0;
            c->draw();
        }
        if (!action || !inside)
            continue;
        if (const Int tick = TickCount(); tick >= due) {
            action(c, part);
            due = tick + kNextRepeat;
        }
    }
    HiliteControl(c, 0);
    return inside ? part : 0;
}

} // namespace

ControlRecord::ControlRecord(const GrafPtr& controlPort, const Rect& bounds, Int controlProcID)
    : contrlRect(bounds), contrlOwner(controlPort->window), port(controlPort), procID(controlProcID),
      def(ControlManager::definition(controlProcID >> 4))
{
}

Int ControlRecord::send(Int message, Int param) { return def ? def(variant(), shared_from_this(), message, param) : 0; }

void ControlRecord::draw()
{
    if (!contrlVis)
        return;
    const PortScope scope(port);
    send(drawCntl);
}

Int ControlRecord::test(Point local)
{
    const PortScope scope(port);
    return send(testCntl, local.toLong());
}

void ControlManager::registerCdef(Int key, ControlDef def) { sDefinitions->byKey[key] = std::move(def); }

ControlDef ControlManager::definition(Int key)
{
    const auto& byKey = sDefinitions->byKey;
    const auto found = byKey.find(key);
    return found == byKey.end() ? byKey.at(0) : found->second;
}

void ControlManager::enlist(const ControlHandle& control)
{
    if (const WindowPtr w = ownerOf(control))
        w->controls.insert(w->controls.begin(), control);
}

ControlHandle NewControl(const GrafPtr& port, const Rect& bounds, const Str255& title, bool visible, Int value, Int min,
    Int max, Int procID, Int refCon)
{
    const auto c = std::make_shared<ControlRecord>(port ? port : thePort, bounds, procID);
    c->contrlTitle = title;
    c->contrlValue = value;
    c->contrlMin = min;
    c->contrlMax = max;
    c->contrlRfCon = refCon;
    c->contrlVis = visible;
    ControlManager::enlist(c);
    c->send(initCntl);
    c->draw();
    return c;
}

ControlHandle NewControl(const WindowPtr& window, const Rect& bounds, const Str255& title, bool visible, Int value,
    Int min, Int max, Int procID, Int refCon)
{
    return NewControl(window ? window->port : thePort, bounds, title, visible, value, min, max, procID, refCon);
}

ControlHandle GetNewControl(Int id, const GrafPtr& port)
{
    const Handle h = GetResource(os("CNTL"), id);
    if (!h || h->count() < kCntlSize)
        return nullptr;
    const auto c = std::make_shared<ControlRecord>(port ? port : thePort, h->rect(0), h->s16(16));
    c->contrlTitle = h->count() > kCntlSize ? h->pstr(kCntlSize) : Str255{0};
    c->contrlValue = h->s16(8);
    c->contrlMax = h->s16(12);
    c->contrlMin = h->s16(14);
    c->contrlRfCon = h->s32(18);
    c->contrlVis = false;
    ControlManager::enlist(c);
    c->send(initCntl);
    c->contrlVis = h->u8(10) != 0;
    c->draw();
    return c;
}

ControlHandle GetNewControl(Int id, const WindowPtr& window)
{
    return GetNewControl(id, window ? window->port : thePort);
}

void Draw1Control(const ControlHandle& c)
{
    if (c)
        c->draw();
}

void DrawControls(const WindowPtr& w)
{
    if (!w)
        return;
    const auto controls = w->controls; // a definition may make or dispose of controls
    for (auto c = controls.rbegin(); c != controls.rend(); ++c)
        (*c)->draw();
}

void UpdtControl(const WindowPtr& w, const RgnHandle&) { DrawControls(w); }

void ShowControl(const ControlHandle& c)
{
    if (!c || c->contrlVis)
        return;
    c->contrlVis = true;
    c->draw();
}

void HideControl(const ControlHandle& c)
{
    if (!c || !c->contrlVis)
        return;
    c->contrlVis = false;
    const PortScope scope(c->port);
    EraseRect(c->contrlRect);
    InvalRect(c->contrlRect);
}

void HiliteControl(const ControlHandle& c, Int state)
{
    if (!c || c->contrlHilite == state)
        return;
    c->contrlHilite = state;
    c->draw();
}

void MoveControl(const ControlHandle& c, Int h, Int v)
{
    if (c)
        c->contrlRect.offset(h - c->contrlRect.left, v - c->contrlRect.top);
}

void SizeControl(const ControlHandle& c, Int w, Int h)
{
    if (!c)
        return;
    c->contrlRect.right = c->contrlRect.left + w;
    c->contrlRect.bottom = c->contrlRect.top + h;
}

void SetCtlValue(const ControlHandle& c, Int value)
{
    if (!c)
        return;
    if (c->procID >= scrollBarProc) {
        value = std::clamp(value, c->contrlMin, std::max(c->contrlMin, c->contrlMax));
        if (value == c->contrlValue)
            return;
    }
    c->contrlValue = value;
    c->draw();
}

void SetCtlMax(const ControlHandle& c, Int value)
{
    if (!c)
        return;
    c->contrlMax = value;
    if (c->contrlValue > value)
        c->contrlValue = std::max(value, c->contrlMin);
    c->draw();
}

void SetCtlMin(const ControlHandle& c, Int value)
{
    if (!c)
        return;
    c->contrlMin = value;
    c->draw();
}

Int GetCtlValue(const ControlHandle& c) { return c ? c->contrlValue : 0; }
Int GetCtlMax(const ControlHandle& c) { return c ? c->contrlMax : 0; }
Int GetCtlMin(const ControlHandle& c) { return c ? c->contrlMin : 0; }
Int GetCRefCon(const ControlHandle& c) { return c ? c->contrlRfCon : 0; }

void SetCRefCon(const ControlHandle& c, Int value)
{
    if (c)
        c->contrlRfCon = value;
}

void SetCTitle(const ControlHandle& c, const Str255& title)
{
    if (!c)
        return;
    c->contrlTitle = title;
    c->draw();
}

void GetCTitle(const ControlHandle& c, Str255& title) { title = c ? c->contrlTitle : Str255{0}; }

void SetCtlAction(const ControlHandle& c, const ControlAction& action)
{
    if (c)
        c->contrlAction = action;
}

bool GetAuxCtl(const ControlHandle&, Handle& aux)
{
    aux = nullptr;
    return false;
}

Int FindControl(Point local, const WindowPtr& w, ControlHandle& which)
{
    which = nullptr;
    if (!w)
        return 0;
    const auto controls = w->controls;
    for (const ControlHandle& c : controls) {
        if (!c->contrlVis || c->contrlHilite == 255)
            continue;
        if (const Int part = c->test(local)) {
            which = c;
            return part;
        }
    }
    return 0;
}

Int TestControl(const ControlHandle& c, Point local) { return c ? c->test(local) : 0; }

Int TrackControl(const ControlHandle& handle, Point local, const ControlAction& given, bool useDefault)
{
    const ControlHandle c = handle; // an action may let go of the caller's
    const Int part = c ? c->test(local) : 0;
    if (part == 0)
        return 0;
    if (part == inThumb) {
        trackThumb(c, local);
        return inThumb;
    }
    const ControlAction action = useDefault ? c->contrlAction : given;
    return trackPart(c, part, action);
}

void DisposeControl(const ControlHandle& handle)
{
    const ControlHandle c = handle; // the caller's may be an element of the list
    if (!c)
        return;
    c->send(dispCntl);
    HideControl(c);
    if (const WindowPtr w = ownerOf(c))
        std::erase(w->controls, c);
}

void KillControls(const WindowPtr& w)
{
    if (!w)
        return;
    const auto controls = w->controls;
    for (const ControlHandle& c : controls)
        c->send(dispCntl);
    w->controls.clear();
}

} // namespace MacToolbox
