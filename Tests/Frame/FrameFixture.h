#pragma once

#include "Tests/Managers/ToolboxFixture.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Panels.h"

#include <string>
#include <string_view>
#include <vector>

namespace Wainroad {

/// A bitmap as rows of text: '#' is black.
using Art = std::vector<std::string_view>;

/// An `Imag` of these frames, every column of bytes as literal runs.
Bytes imag(const std::vector<Art>& frames);
/// One frame record with the given packed bits.
Bytes frameRecord(const Rect& bounds, Int rowBytes, const Bytes& packed);
/// The pixels of a bitmap as rows of text.
std::vector<std::string> art(const BitMap& map);

/// One item of a `DITL`.
struct ItemSpec {
    Int type;
    Rect r;
    Bytes data;
};
Bytes ditl(const std::vector<ItemSpec>& items);
/// The data of an item that names a resource.
inline Bytes idBytes(Int id) { return Form().u16(id).bytes; }
/// A control template.
Bytes cntl(Int procID, Int refCon, std::string_view title, bool visible = true);

/// What the panels of a test do and tell. `log` holds one word for each message, such as "A2" for the second opening of
/// panel A or "B.click3".
struct PanelLog {
    std::vector<std::string> log;

    /// All words since the last call, with blanks between.
    std::string take();
};
extern PanelLog sLog;

/// A game window with an open root and no panel.
class FrameTest : public ToolboxTest {
protected:
    FrameTest();
    ~FrameTest() override;

    /// Passes of the main loop, each with one event or a null event.
    void pump(Int passes = 1);
    /// Opens a panel now, and draws it.
    View& open(const ViewProc& proc);
    /// A click at a point of the window, held for three ticks, and the passes that it takes.
    void click(Point at, Int modifiers = 0);
    void click(const View& view) { click(Point{(view.r.top + view.r.bottom) / 2, (view.r.left + view.r.right) / 2}); }
    void type(std::string_view text);
    void press(Int character, Int modifiers = 0);
    /// What a text item holds.
    static std::string text(View& panel, Int item);

    static constexpr Int kTop = 20; ///< of the window's content on the screen
};

} // namespace Wainroad
