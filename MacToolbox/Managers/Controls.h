#pragma once

#include "MacToolbox/Managers/Windows.h"

#include <functional>
#include <memory>

// Push buttons, check boxes, radio buttons and scroll bars, drawn straight into their port. A control definition is a
// procedure in a table. Game thread only. A nil control does nothing and answers 0.

namespace MacToolbox {

struct ControlRecord;
using ControlHandle = std::shared_ptr<ControlRecord>;
/// Answers a message to a control. For `testCntl` the parameter is a point, v in the high and h in the low 16 bits.
using ControlDef = std::function<Int(Int variant, const ControlHandle& control, Int message, Int param)>;
using ControlAction = std::function<void(const ControlHandle& control, Int part)>;

/// Messages to a definition; only drawCntl, testCntl, initCntl and dispCntl are sent.
inline constexpr Int drawCntl = 0, testCntl = 1, calcCRgns = 2, initCntl = 3, dispCntl = 4, posCntl = 5, thumbCntl = 6,
                     dragCntl = 7, autoTrack = 8, calcCntlRgn = 10, calcThumbRgn = 11;
inline constexpr Int pushButProc = 0, checkBoxProc = 1, radioButProc = 2, useWFont = 8, scrollBarProc = 16;
inline constexpr Int inButton = 10, inCheckBox = 11, inUpButton = 20, inDownButton = 21, inPageUp = 22, inPageDown = 23,
                     inThumb = 129;

struct ControlRecord : std::enable_shared_from_this<ControlRecord> {
    Rect contrlRect; ///< local to the port
    bool contrlVis = true;
    Int contrlHilite = 0; ///< 0 none, a part code while pressed, 255 disabled
    Int contrlValue = 0, contrlMin = 0, contrlMax = 0;
    Str255 contrlTitle{0};
    Int contrlRfCon = 0;
    std::shared_ptr<void> contrlData; ///< free for a definition
    ControlAction contrlAction;
    const std::weak_ptr<WindowRecord> contrlOwner;
    const GrafPtr port;
    const Int procID; ///< definition key in the bits above 3, variant in the low 4
    const ControlDef def;

    /// Takes the definition that is registered for `controlProcID` now. The control is in no list yet.
    ControlRecord(const GrafPtr& controlPort, const Rect& bounds, Int controlProcID);

    /// Sends a message to the definition; `thePort` is left as it is.
    Int send(Int message, Int param = 0);
    /// Sends `drawCntl` under the control's port if the control is visible.
    void draw();
    /// `testCntl` at a local point, under the control's port.
    Int test(Point local);
    bool useWindowFont() const { return procID < 16 && (procID & useWFont) != 0; }
    Int variant() const { return procID & 15; }
};

namespace ControlManager {
/// Sets the definition for `key` (procID >> 4), for controls made from now on; key 0 is the standard button and
/// key 1 the scroll bar. A key without a definition gets that of key 0.
void registerCdef(Int key, ControlDef def);
ControlDef definition(Int key);
/// The two built-in definitions.
Int standardButton(Int variant, const ControlHandle& control, Int message, Int param);
Int scrollBar(Int variant, const ControlHandle& control, Int message, Int param);
/// Puts a control at the front of its window's list, if its port has a window.
void enlist(const ControlHandle& control);
}

/// A new control on a port, which is put in the window's list if the port has a window, told `initCntl`, and drawn when
/// visible. A nil window or port means `thePort`.
ControlHandle NewControl(const GrafPtr& port, const Rect& bounds, const Str255& title, bool visible, Int value, Int min,
    Int max, Int procID, Int refCon);
ControlHandle NewControl(const WindowPtr& window, const Rect& bounds, const Str255& title, bool visible, Int value,
    Int min, Int max, Int procID, Int refCon);
/// From the resource `CNTL` `id`; nil if it is missing or too short.
ControlHandle GetNewControl(Int id, const GrafPtr& port);
ControlHandle GetNewControl(Int id, const WindowPtr& window);

void Draw1Control(const ControlHandle& c);
/// Draws every visible control of the window, oldest first.
void DrawControls(const WindowPtr& w);
void UpdtControl(const WindowPtr& w, const RgnHandle& rgn); ///< `rgn` is not looked at
void ShowControl(const ControlHandle& c);
void HideControl(const ControlHandle& c);
void HiliteControl(const ControlHandle& c, Int state);
void MoveControl(const ControlHandle& c, Int h, Int v); ///< draws nothing
void SizeControl(const ControlHandle& c, Int w, Int h); ///< draws nothing
/// For `procID` of 16 and more the value is clamped and an unchanged one does nothing; below 16 any value is stored and
/// drawn.
void SetCtlValue(const ControlHandle& c, Int value);
void SetCtlMax(const ControlHandle& c, Int value); ///< lowers the value with it
void SetCtlMin(const ControlHandle& c, Int value); ///< leaves the value alone
Int GetCtlValue(const ControlHandle& c);
Int GetCtlMax(const ControlHandle& c);
Int GetCtlMin(const ControlHandle& c);
Int GetCRefCon(const ControlHandle& c);
void SetCRefCon(const ControlHandle& c, Int value);
void SetCTitle(const ControlHandle& c, const Str255& title);
void GetCTitle(const ControlHandle& c, Str255& title);
void SetCtlAction(const ControlHandle& c, const ControlAction& action);
/// There are no auxiliary records. @return False, with `aux` nil.
bool GetAuxCtl(const ControlHandle& c, Handle& aux);
/// The part of the first enabled control under the local point, newest first; 0 and nil if there is none.
Int FindControl(Point local, const WindowPtr& w, ControlHandle& which);
Int TestControl(const ControlHandle& c, Point local);
/// Follows the mouse until the button goes up. @param action  Called again and again while the mouse stays inside.
/// @param useDefault  Takes the control's own action instead. @return The part, or 0 if the mouse was outside at the
/// end.
Int TrackControl(const ControlHandle& c, Point local, const ControlAction& action, bool useDefault = false);
void DisposeControl(const ControlHandle& c);
/// Forgets every control of the window; nothing is erased.
void KillControls(const WindowPtr& w);

} // namespace MacToolbox
