#pragma once

#include "MacToolbox/QuickDraw/QuickDraw.h"

#include <deque>
#include <memory>
#include <optional>
#include <vector>

// Windows on the one screen bitmap. There are no backing stores: a window is a port onto the screen's own block, kept
// out of what lies in front of it by its `visRgn`; lost pixels come back through update events. Game thread only. A nil
// window does nothing.

namespace MacToolbox {

struct WindowRecord;
struct ControlRecord;
using WindowPtr = std::shared_ptr<WindowRecord>;

inline constexpr Int documentProc = 0, dBoxProc = 1, plainDBoxProc = 2, altDBoxProc = 3, noGrowDocProc = 4;
inline constexpr Int dialogKind = 2, userKind = 8;
/// Part codes of `FindWindow`, which gives only inDesk, inMenuBar, inContent and inDrag.
inline constexpr Int inDesk = 0, inMenuBar = 1, inSysWindow = 2, inContent = 3, inDrag = 4, inGrow = 5, inGoAway = 6;

/// One window. Made by `makeWindow`, `NewWindow` or `GetNewWindow`, which also join its port to it.
struct WindowRecord {
    const GrafPtr port; ///< onto the screen's block; local (0, 0) is the content's top left
    const Int procID;   ///< the low 4 bits select the frame
    bool visible = false;
    bool hilited = false; ///< draws the stripes of a title bar
    Str255 title{0};
    Int refCon = 0;
    Int windowKind = userKind;
    bool goAwayFlag = false;                              ///< kept only
    Rect contentRect;                                     ///< global
    Region updateRgn;                                     ///< global
    std::optional<Region> savedVis;                       ///< the `visRgn` held from BeginUpdate to EndUpdate
    std::vector<std::shared_ptr<ControlRecord>> controls; ///< newest first; the Control Manager's

    /// @param bounds  The content, in global coordinates.
    WindowRecord(const Rect& bounds, Int windowProcID);
    virtual ~WindowRecord() = default;
    WindowRecord(const WindowRecord&) = delete;
    WindowRecord& operator=(const WindowRecord&) = delete;

    const Rect& portRect() const { return port->portRect; }
    /// The content plus its frame, global.
    Rect structRect() const;
    /// A global point in the coordinates of the port.
    Point toLocal(Point global) const;
};

/// A new invisible window record of class `Record`, in no list yet, with its port joined to it.
template <typename Record> std::shared_ptr<Record> makeWindow(const Rect& bounds, Int procID)
{
    const auto window = std::make_shared<Record>(bounds, procID);
    window->port->window = window;
    return window;
}

/// The list of windows and the compositor of their frames and visible regions.
class WindowManager {
public:
    struct Activation {
        WindowPtr window;
        bool active; ///< false is a deactivation
    };

    std::vector<WindowPtr> windows;          ///< front first, the invisible ones too
    std::deque<Activation> pendingActivates; ///< oldest first; the Event Manager takes them
    WindowPtr lastActive;                    ///< the window last told that it is active
    Pattern desktop = Pattern::gray;

    static WindowManager& shared();

    /// Puts `w` right behind `behind`, or in front of all if that is nil or unknown.
    void add(const WindowPtr& w, const WindowPtr& behind);
    void show(const WindowPtr& w);
    void hide(const WindowPtr& w);
    /// Hides `w` and forgets it, with its pending activations.
    void close(const WindowPtr& w);
    void select(const WindowPtr& w);
    /// Moves the content's top left to global (`v`, `h`); the whole window becomes exposed, no pixels are copied.
    void move(const WindowPtr& w, Int h, Int v, bool front);
    /// Works out frames, visible and update regions after `exposed` (global) came to light.
    void relayout(const Region& exposed);
    /// Queues a deactivation and an activation if the front window changed.
    void checkActivation();
    /// The first visible window, or nil.
    WindowPtr front() const;
    /// The first visible window whose structure holds the global point, or nil.
    WindowPtr windowAt(Point global) const;
    bool contains(const WindowPtr& w) const;
};

void InitWindows();
/// `storage` is not looked at. `behind` nil means in front.
WindowPtr NewWindow(const void* storage, const Rect& bounds, const Str255& title, bool visible, Int procID,
    const WindowPtr& behind, bool goAway, Int refCon);
/// From the resource `WIND` `id`; nil if it is missing or too short.
WindowPtr GetNewWindow(Int id, const void* storage, const WindowPtr& behind);
WindowPtr GetNewCWindow(Int id, const void* storage, const WindowPtr& behind);
void CloseWindow(const WindowPtr& w);
void DisposeWindow(const WindowPtr& w);
void DisposWindow(const WindowPtr& w);
void ShowWindow(const WindowPtr& w);
void HideWindow(const WindowPtr& w);
void SelectWindow(const WindowPtr& w);
void BringToFront(const WindowPtr& w);
void MoveWindow(const WindowPtr& w, Int h, Int v, bool front);
/// The first visible window, or nil.
WindowPtr FrontWindow();
void HiliteWindow(const WindowPtr& w, bool hilite);      ///< no drawing
void SetWTitle(const WindowPtr& w, const Str255& title); ///< shows at the next relayout
void GetWTitle(const WindowPtr& w, Str255& title);
void SetWRefCon(const WindowPtr& w, Int value);
Int GetWRefCon(const WindowPtr& w);
inline void DrawGrowIcon(const WindowPtr&) { }
inline void DragWindow(const WindowPtr&, Point, const Rect&) { }
inline bool TrackGoAway(const WindowPtr&, Point) { return false; }
/// A new region of the whole screen.
RgnHandle GetGrayRgn();

// On the window of `thePort`; nothing for a port without one. Local coordinates.
void InvalRect(const Rect& r);       ///< clipped to the content
void InvalRgn(const RgnHandle& rgn); ///< not clipped
void ValidRect(const Rect& r);

/// Cuts the window's `visRgn` to what is to be updated, until EndUpdate, and empties the update region.
void BeginUpdate(const WindowPtr& w);
void EndUpdate(const WindowPtr& w);
/// What lies under the global point. @param w  Set to the window, or nil. @return inMenuBar for v below 20.
Int FindWindow(Point global, WindowPtr& w);

} // namespace MacToolbox
