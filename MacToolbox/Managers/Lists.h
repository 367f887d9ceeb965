#pragma once

#include "MacToolbox/Managers/Controls.h"

#include <functional>
#include <memory>
#include <span>
#include <vector>

// Scrolling lists of one column: a cell is a row, `v` of its point; `h` is 0 and not looked at. Game thread only. A nil
// list does nothing; rows out of range are ignored.

namespace MacToolbox {

struct ListRec;
using ListHandle = std::shared_ptr<ListRec>;
using Cell = Point;
/// Draws a cell in place of the built-in text. `lInitMsg` and `lCloseMsg` come with no cell; for `lHiliteMsg`
/// `selected` is the new state.
using ListDef = std::function<void(Int message, bool selected, const Rect& rect, Cell cell,
    std::span<const std::uint8_t> bytes, const ListHandle& list)>;

inline constexpr Int lOnlyOne = 128, lExtendDrag = 64, lNoDisjoint = 32, lNoExtend = 16, lNoRect = 8, lUseSense = 4,
                     lNoNilHilite = 2;
inline constexpr Int lInitMsg = 0, lDrawMsg = 1, lHiliteMsg = 2, lCloseMsg = 3;

struct ListRec : std::enable_shared_from_this<ListRec> {
    Rect rView; ///< local, without the scroll bar
    const std::weak_ptr<WindowRecord> window;
    const GrafPtr port;
    Point indent;             ///< from a cell's top left to the pen of its text
    Point cellSize;           ///< row height in `v`, width in `h`
    Rect visible{0, 0, 0, 1}; ///< `top` is the first row shown
    ControlHandle vScroll;
    Int selFlags = 0;    ///< 128 or more: one row at a time
    bool lActive = true; ///< kept only
    Rect dataBounds;     ///< `bottom` is the row count
    Int refCon = 0;
    std::shared_ptr<void> userHandle;
    std::vector<Bytes> cells;
    std::vector<bool> selected;
    bool drawing = true; ///< false holds all drawing back
    Point lastClick{-1, -1};
    Int clickTime = 0; ///< tick of the last click
    ListDef ldef;

    ListRec(const Rect& view, const GrafPtr& listPort);

    Int rowCount() const { return I(cells.size()); }
    bool hasRow(Int row) const { return row >= 0 && row < rowCount(); }
    /// Rows that fit the view, at least 1.
    Int rows() const;
    Int maxTop() const;
    bool inView(Int row) const { return row >= visible.top && row < visible.bottom; }
    Rect cellRect(Int row) const;
    void updateVisible();
    void drawCell(Int row);
    void drawAll();
    void hilite(Int row, bool on);
    void scrollTo(Int row);
};

/// A new list. `theProc`, `hasGrow`, `scrollHoriz` and the columns are not looked at. A cell size of 0 is taken from
/// the view and the font.
ListHandle LNew(const Rect& rView, const Rect& dataBounds, Point cellSize, Int theProc, const GrafPtr& port,
    bool drawIt, bool hasGrow, bool scrollHoriz, bool scrollVert, const ListDef& ldef = {});
ListHandle LNew(const Rect& rView, const Rect& dataBounds, Point cellSize, Int theProc, const WindowPtr& window,
    bool drawIt, bool hasGrow, bool scrollHoriz, bool scrollVert, const ListDef& ldef = {});
void LDispose(const ListHandle& list);
/// @return The place of the first new row.
Int LAddRow(Int count, Int rowNum, const ListHandle& list);
void LDelRow(Int count, Int rowNum, const ListHandle& list); ///< a count of 0 deletes all rows
void LSetCell(std::span<const std::uint8_t> bytes, Int count, Cell cell, const ListHandle& list);
/// Gives at most `count` bytes of the cell, and in `count` how many.
void LGetCell(Bytes& bytes, Int& count, Cell cell, const ListHandle& list);
void LSetSelect(bool flag, Cell cell, const ListHandle& list);
/// Whether the row is selected; with `next` the search goes on to the first selected row, which `cell` becomes.
bool LGetSelect(bool next, Cell& cell, const ListHandle& list);
void LDoDraw(bool flag, const ListHandle& list);
void LUpdate(const RgnHandle& rgn, const ListHandle& list); ///< `rgn` is not looked at
void LActivate(bool flag, const ListHandle& list);
void LRect(Rect& rect, Cell cell, const ListHandle& list); ///< zero if the row is not in view
void LScroll(Int dCols, Int dRows, const ListHandle& list);
void LAutoScroll(const ListHandle& list);
Cell LLastClick(const ListHandle& list); ///< (-1, -1) for nil
/// Selects with the mouse or scrolls, until the button goes up. @return True for a double click.
bool LClick(Point local, Int modifiers, const ListHandle& list);

} // namespace MacToolbox
