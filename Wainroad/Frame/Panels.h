#pragma once

// The tree of views: one root in the game's window, its panels, their items. A panel asks for another with `OpenPanel`;
// it opens with the next event, replaces panels of its layer that it overlaps and covers lower ones.

#include "MacToolbox/Base/Geometry.h"
#include "MacToolbox/Base/Memory.h"

#include <any>
#include <array>
#include <memory>
#include <vector>

namespace MacToolbox {
struct GrafPort;
struct WindowRecord;
struct TERec;
struct EventRecord;
struct GDevice;
using GrafPtr = std::shared_ptr<GrafPort>;
using WindowPtr = std::shared_ptr<WindowRecord>;
using TEHandle = std::shared_ptr<TERec>;
} // namespace MacToolbox

namespace Wainroad {
using namespace MacToolbox;

struct View;
struct ImageList;

/// Message kinds. See `Msg` for what comes with each.
enum MsgKind : Int {
    kMsgOpen = 1,
    kMsgClick,
    kMsgKey,
    kMsgDraw,
    kMsgClose,
    kMsgTimer,
    kMsgActivate,
    kMsgDeactivate,
    kMsgDisable,
    kMsgEnable
};

/// A message on its way through the tree. Handlers may rewrite `param`.
struct Msg {
    Int what = 0;      ///< `MsgKind`
    Int param = 0;     ///< click: the point as a packed long; at a panel's own proc `MsgItem` and `MsgResult`.
                       ///< key: the event's message, its low byte the character. Draw: low 16 bits 0. Open: see `obj`.
    Int modifiers = 0; ///< the event's, for clicks, keys and activation
    std::any obj;      ///< open: what to open (`const ViewProc*`) or the payload of the item

    /// The character of a `kMsgKey`.
    Int character() const { return param & 0xFF; }
    /// The point of a `kMsgClick` on its way down, in window coordinates.
    Point point() const { return Point::fromLong(param); }
};
/// In a panel's proc: the number of the item that was clicked, from 1.
inline Int MsgItem(const Msg& msg) { return msg.param & 0xFFFF; }
/// In a panel's proc: the item's own answer to the click (row of a list, number of a radio button, else 1); signed.
inline Int MsgResult(const Msg& msg) { return HiWord(msg.param); }

/// The handler of one kind of panel or item. Static objects only: a panel is known by the address of its proc.
struct ViewProc {
    Int (*fn)(View& view, Msg& msg);
};

struct TextStyleRec {
    Int font = 0, face = 0, mode = 0, size = 0, just = 0;
    bool operator==(const TextStyleRec&) const = default;
};
inline constexpr TextStyleRec kDefaultStyle{6322, 1, 1, 14, 0};
inline constexpr TextStyleRec kInfoStyle{6322, 1, 1, 12, 0};

/// One node of the tree: the root, a panel or an item. A parent owns its children. A disposed view stays readable until
/// the next event, so that whoever is still working with it may finish; pointers kept for longer are cleared by their
/// owner in `kMsgClose`.
struct View {
    Int disabled = 0; ///< 0 is enabled; else the number of covers and `DisableView`s that lie on it
    Int type = 0;     ///< root -1; panel: bits 0-7 location, 8-15 layer; item: its type byte, sign-extended
    Rect r;           ///< window coordinates
    const ViewProc* handler = nullptr; ///< gets all messages
    const ViewProc* user = nullptr;    ///< panel: its own proc; edit item: key filter; control item: action proc
    std::any data; ///< root: `WindowPtr`; panel: nothing until its items are loaded, then -1 or its own; item: payload
    TextStyleRec style;
    View* parent = nullptr;                      ///< nil for the root and for a disposed view
    std::vector<std::unique_ptr<View>> children; ///< oldest first: item 1 is the first; hit tests begin at the end

    /// `data` as a `T`, or nil.
    template <typename T> T* dataAs() { return std::any_cast<T>(&data); }
    /// Bits 0-6 of the type byte of an item.
    Int kind() const { return type & 0x7F; }
    Int location() const { return type & 0xFF; }
    Int layer() const { return type >> 8 & 0xFF; }
};

/// Frees the views that were disposed. Only from where no handler is running.
void EmptyLimbo();

/// Gives `msg` to the view's handler. @return Its answer; 0 without a handler.
Int SendMsg(View& view, Msg& msg);
/// The same with a fresh message.
Int SendMsg(View& view, Int what);

// ---- Panels

/// What a panel's proc answers to `kMsgOpen`: its place in `gPanelRects`, its layer and its `DITL` (0 for none).
constexpr Int PanelDescriptor(Int layer, Int location, Int ditl) { return layer << 24 | location << 16 | ditl; }
extern const std::array<Rect, 14> gPanelRects;

/// True in the second of the two calls with `kMsgOpen`: the items exist. `ParamText`, style and data belong to the
/// first call; keys, timers, user items and disabled items to the second.
inline bool ItemsLoaded(const View& panel) { return panel.data.has_value(); }

/// Queues a panel; it opens with the next event. Nothing if 24 wait already.
void OpenPanel(const ViewProc& proc);
/// Opens what is queued, first in, first out, with what is queued meanwhile.
void OpenPending();
/// The open panel with this proc, or nil. Queued panels do not count.
View* FindPanel(const ViewProc& proc);
/// Closes the panel with this proc (`kMsgClose`, then `DisposeView`), if it is open. A panel may close itself.
void ClosePanel(const ViewProc& proc);
/// True if the view is a panel of the root now.
bool IsPanel(const View* view);
/// Marks the view's rectangle, grown by `outset` on each side, for redrawing.
void InvalView(View& view, Int outset = 0);

/// Item `n` of a panel, from 1; 0 is the panel itself. Nil if there is none.
View* GetItem(View& panel, Int n);
/// A new child with the parent's `disabled` and `style`. Position 0 is the newest place, n >= 1 after the n-th newest
/// sibling, or before all if there are fewer. Nil for a nil parent.
View* AddChild(View* parent, Int position);
/// Takes the view out of the tree with its timers, and clears `gFocus` and `gKeyPanel` if they name it.
void DisposeView(View& view);
/// Covers a view: out of sight and deaf until as many enables have come. Gives `kMsgDisable` on the first.
void DisableView(View& view);
/// Takes one cover off item `n`; at 0 it gets `kMsgEnable` and is redrawn. Nothing if it is enabled or missing.
void EnableItem2(View& panel, Int n);
/// Clicks the `ordinal`-th push button (type byte exactly 4), counted from the last item. Nothing unless `panel` is an
/// enabled panel.
void PressButton(View* panel, Int ordinal);

// ---- Keys

extern View* gKeyPanel;   ///< the panel that owns the keys, or nil
extern Int gReturnItem;   ///< button pressed by Return, as in `PressButton`; 0 is none
extern Int gCancelItem;   ///< button pressed by Command-period; 0 is none
extern Int gOutlineItem;  ///< button with the default ring; 0 is none
extern Int gEditItems;    ///< edit items to tab through: from 2 on, Return moves on instead of pressing
extern Int gTENumeric;    ///< non-zero: digits only
extern Int gTEMaxChars;   ///< most characters of a field; below 1 becomes 10 at the first key
extern Int gTELimitWidth; ///< non-zero: `gTEMaxWidth` holds
extern Int gTEMaxWidth;   ///< pixels

/// Makes `panel` own the keys with these buttons; the fields for text are left alone.
void SetKeys(View& panel, Int outlined = 1, Int returnItem = 1, Int cancelItem = 0);
/// Saves the table (but the width limit), one level deep, and clears it.
void PushKeys();
/// Brings the saved table back; it stays saved.
void PopKeys();
/// Clears the live and the saved table, and the width limit.
void ClearKeys();
/// Forgets a view that goes: nobody's panel owns the keys then.
void ForgetKeys(const View& view);
/// Draws the default ring of `gOutlineItem`.
void DrawOutline();

// ---- Timers

/// Sends `kMsgTimer` at every `interval`-th `TimersRun` on which the tick has advanced; 0 is every `TimersRun`. Nothing
/// if all 16 slots are taken.
void AddTimer(View& view, Int interval);
/// Takes away the view's first timer.
void RemoveTimer(View& view);
/// Takes away all of them.
void RemoveTimers(View& view);
void TimersInit();
/// One step of all timers. Also runs while a button or a control is held.
void TimersRun();
/// Time that has passed so far counts as no step.
void TimersResume();
/// Slots in use, 0 to 16.
Int TimerCount();

// ---- Root

extern View* gRootView;
extern WindowPtr gWindow;  ///< the one game window, or nil
extern bool gInBackground; ///< the game window is deactivated; kept by `ActivateWindow`
extern GrafPtr gSavePort;  ///< the port from before the game window, or nil
extern View* gFocus;       ///< the edit item that owns the text cursor
extern TEHandle gTE;       ///< the one text record, shared by all edit items
extern std::shared_ptr<ImageList> gBorderImages;
extern Int gScreenDepth;
extern bool gUseColor, gPrefersColor, gHasColorQD, gHas32BitQD, gColorDisplay;

void PanelsInit();
/// Makes the root in `window`; `centre` moves the window to the middle of the screen.
void RootOpen(const WindowPtr& window, bool centre);
/// Closes the whole tree; nothing if `window` is not the root's. Safe from inside a handler.
void RootClose(const WindowPtr& window);
/// Opens pending panels, routes one event, runs the timers. @return True if the event was consumed.
bool RootEvent(const EventRecord& event);
/// A command of the Edit menu on the focus: 2 cut, 3 copy, 4 paste, 5 clear. @return 0 if the window is not in front.
Int RootEditCommand(Int item);

extern const ViewProc RootHandler, PanelHandler;

// ---- Ports and styles

/// Makes the window of the view's root the port until the end of the block.
class ViewPortScope {
public:
    explicit ViewPortScope(View& view);
    ~ViewPortScope();
    ViewPortScope(const ViewPortScope&) = delete;
    ViewPortScope& operator=(const ViewPortScope&) = delete;

private:
    GrafPtr saved_;
};

/// Puts a style in force in the current port until the end of the block.
class StyleScope {
public:
    explicit StyleScope(const TextStyleRec& style);
    ~StyleScope();
    StyleScope(const StyleScope&) = delete;
    StyleScope& operator=(const StyleScope&) = delete;

private:
    GrafPtr port_;
    TextStyleRec saved_;
};

/// Makes the window of the view's root the port and saves the old one; with a nil view makes `saved` the port.
void FocusPort(View* view, GrafPtr& saved);
/// Puts the view's style in force and saves the old one; with a nil view puts `saved` in force. @return The `just`.
Int SetTextStyle(View* view, TextStyleRec& saved);

} // namespace Wainroad
