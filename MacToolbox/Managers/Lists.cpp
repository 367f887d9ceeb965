#include "MacToolbox/Managers/Lists.h"

#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/QuickDraw/Fonts.h"

#include <algorithm>

namespace MacToolbox {

namespace {

constexpr Int kScrollBarWidth = 16; // pixels
constexpr Int kDoubleClick = 29;    // ticks, at most
constexpr Int kMostRows = 0x7FFF;   // what a data bounds rectangle can ask for

/// The list's port as the current one, clipped to the view as well; its pen is put back.
class ViewScope {
public:
    explicit ViewScope(const ListRec& list) : port_(list.port), clip_(list.rView) { }

private:
    PortScope port_;
    ClipScope clip_;
    PenScope pen_;
};

std::size_t at(Int row) { return static_cast<std::size_t>(row); }

void tell(const ListHandle& list, Int message)
{
    const ListDef ldef = list->ldef;
    if (ldef)
        ldef(message, false, Rect{}, Cell{}, {}, list);
}

void selectOnly(ListRec& list, Int first, Int last)
{
    for (Int row = 0; row < list.rowCount(); ++row)
        list.hilite(row, row >= first && row <= last);
}

Point localMouse(const ListRec& list)
{
    const Rect& bounds = list.port->portBits.bounds;
    const Point mouse = Input::mouseLocation();
    return {mouse.v + bounds.top, mouse.h + bounds.left};
}

Int rowUnder(const ListRec& list, Int v)
{
    return list.visible.top + (v - list.rView.top) / std::max<Int>(1, list.cellSize.v);
}

void scrollByPart(ListRec& list, Int part)
{
    const Int top = list.visible.top, page = list.rows() - 1; // a page step keeps one row in view
    switch (part) {
    case inUpButton: list.scrollTo(top - 1); break;
    case inDownButton: list.scrollTo(top + 1); break;
    case inPageUp: list.scrollTo(top - page); break;
    case inPageDown: list.scrollTo(top + page); break;
    default: break;
    }
}

void clickScrollBar(const ListHandle& list, Point local)
{
    const ControlHandle bar = list->vScroll;
    const Int part = bar->test(local);
    if (part == inThumb) {
        TrackControl(bar, local, nullptr);
        list->scrollTo(bar->contrlValue);
    } else if (part != 0) {
        TrackControl(bar, local, [list](const ControlHandle&, Int in) { scrollByPart(*list, in); });
    }
}

/// Follows the mouse from the clicked row on. @return The last row.
Int dragRows(ListRec& list, Int clicked, bool additive)
{
    Int last = clicked;
    while (WaitMouseUp()) {
        const Int v = localMouse(list).v;
        if (v < list.rView.top)
            list.scrollTo(list.visible.top - 1);
        else if (v >= list.rView.bottom)
            list.scrollTo(list.visible.top + 1);
        if (list.rowCount() == 0)
            continue;
        const Int row = std::clamp<Int>(rowUnder(list, v), 0, list.rowCount() - 1);
        if (row == last)
            continue;
        last = row;
        if (additive)
            continue;
        const bool one = list.selFlags >= lOnlyOne;
        selectOnly(list, one ? row : std::min(clicked, row), one ? row : std::max(clicked, row));
    }
    return last;
}

} // namespace

ListRec::ListRec(const Rect& view, const GrafPtr& listPort) : rView(view), window(listPort->window), port(listPort) { }

Int ListRec::rows() const { return std::max<Int>(1, rView.height() / std::max<Int>(1, cellSize.v)); }
Int ListRec::maxTop() const { return std::max<Int>(0, rowCount() - rows()); }

Rect ListRec::cellRect(Int row) const
{
    const Int top = rView.top + (row - visible.top) * cellSize.v;
    return {top, rView.left, top + cellSize.v, rView.left + cellSize.h};
}

void ListRec::updateVisible()
{
    visible.left = 0;
    visible.right = 1;
    visible.top = std::min(visible.top, maxTop());
    visible.bottom = visible.top + rows();
    if (!vScroll)
        return;
    vScroll->contrlMax = maxTop();
    vScroll->contrlValue = std::min(vScroll->contrlValue, maxTop());
}

void ListRec::drawCell(Int row)
{
    if (!drawing || !inView(row) || !hasRow(row))
        return;
    const ViewScope scope(*this);
    const Rect rect = cellRect(row);
    if (ldef) {
        const ListDef def = ldef;
        const Bytes bytes = cells[at(row)];
        def(lDrawMsg, selected[at(row)], rect, Cell{row, 0}, bytes, shared_from_this());
        return;
    }
    port->fill(rect, port->bkPat, patCopy);
    port->pnLoc = {rect.top + indent.v, rect.left + indent.h};
    FontManager::shared().draw(*port, cells[at(row)]);
    if (selected[at(row)])
        port->fill(rect, Pattern::black, patXor);
}

void ListRec::drawAll()
{
    if (!drawing)
        return;
    {
        const ViewScope scope(*this);
        port->fill(rView, port->bkPat, patCopy);
    }
    const Int end = std::min(visible.top + rows(), rowCount());
    for (Int row = visible.top; row < end; ++row)
        drawCell(row);
    if (vScroll)
        vScroll->draw();
}

void ListRec::hilite(Int row, bool on)
{
    if (!hasRow(row) || selected[at(row)] == on)
        return;
    selected[at(row)] = on;
    if (!drawing || !inView(row))
        return;
    if (!ldef) {
        drawCell(row);
        return;
    }
    const ViewScope scope(*this);
    const ListDef def = ldef;
    const Bytes bytes = cells[at(row)];
    def(lHiliteMsg, on, cellRect(row), Cell{row, 0}, bytes, shared_from_this());
}

void ListRec::scrollTo(Int row)
{
    row = std::clamp<Int>(row, 0, maxTop());
    if (row == visible.top)
        return;
    visible.top = row;
    visible.bottom = row + rows();
    if (vScroll)
        vScroll->contrlValue = row;
    drawAll();
}

ListHandle LNew(const Rect& rView, const Rect& dataBounds, Point cellSize, Int, const GrafPtr& given, bool drawIt, bool,
    bool, bool scrollVert, const ListDef& ldef)
{
    const GrafPtr port = given ? given : thePort;
    const auto list = std::make_shared<ListRec>(rView, port);
    const FontInfo font = FontManager::shared().info(*port);
    list->cellSize = {cellSize.v != 0 ? cellSize.v : font.ascent + font.descent + font.leading,
        cellSize.h != 0 ? cellSize.h : rView.width()};
    list->indent = {font.ascent, 4};
    list->dataBounds = {0, 0, 0, std::max<Int>(dataBounds.right, 1)};
    list->ldef = ldef;
    if (scrollVert)
        list->vScroll = NewControl(port, {rView.top - 1, rView.right, rView.bottom + 1, rView.right + kScrollBarWidth},
            {0}, drawIt, 0, 0, 0, scrollBarProc, 0);
    tell(list, lInitMsg);
    list->drawing = drawIt;
    if (dataBounds.bottom > 0)
        LAddRow(std::min(dataBounds.bottom, kMostRows), 0, list);
    list->updateVisible();
    return list;
}

ListHandle LNew(const Rect& rView, const Rect& dataBounds, Point cellSize, Int theProc, const WindowPtr& window,
    bool drawIt, bool hasGrow, bool scrollHoriz, bool scrollVert, const ListDef& ldef)
{
    return LNew(rView, dataBounds, cellSize, theProc, window ? window->port : thePort, drawIt, hasGrow, scrollHoriz,
        scrollVert, ldef);
}

void LDispose(const ListHandle& list)
{
    if (!list)
        return;
    tell(list, lCloseMsg);
    DisposeControl(list->vScroll);
}

Int LAddRow(Int count, Int rowNum, const ListHandle& list)
{
    if (!list)
        return 0;
    const Int place = std::clamp<Int>(rowNum, 0, list->rowCount());
    if (count > 0) {
        list->cells.insert(list->cells.begin() + place, at(count), Bytes{});
        list->selected.insert(list->selected.begin() + place, at(count), false);
    }
    list->dataBounds.bottom = list->rowCount();
    list->updateVisible();
    list->drawAll();
    return place;
}

void LDelRow(Int count, Int rowNum, const ListHandle& list)
{
    if (!list)
        return;
    const Int rows = list->rowCount();
    const Int from = count == 0 ? 0 : std::clamp<Int>(rowNum, 0, rows);
    const Int to = count == 0 ? rows : std::clamp<Int>(rowNum + count, from, rows);
    list->cells.erase(list->cells.begin() + from, list->cells.begin() + to);
    list->selected.erase(list->selected.begin() + from, list->selected.begin() + to);
    list->dataBounds.bottom = list->rowCount();
    list->updateVisible();
    list->drawAll();
}

void LSetCell(std::span<const std::uint8_t> bytes, Int count, Cell cell, const ListHandle& list)
{
    if (!list || !list->hasRow(cell.v))
        return;
    const auto chars = bytes.first(at(std::clamp<Int>(count, 0, I(bytes.size()))));
    list->cells[at(cell.v)].assign(chars.begin(), chars.end());
    list->drawCell(cell.v);
}

void LGetCell(Bytes& bytes, Int& count, Cell cell, const ListHandle& list)
{
    if (!list)
        return;
    if (!list->hasRow(cell.v)) {
        count = 0;
        return;
    }
    const Bytes& stored = list->cells[at(cell.v)];
    count = std::clamp<Int>(count, 0, I(stored.size()));
    bytes.assign(stored.begin(), stored.begin() + count);
}

void LSetSelect(bool flag, Cell cell, const ListHandle& list)
{
    if (!list || !list->hasRow(cell.v))
        return;
    if (flag && (list->selFlags & lOnlyOne) != 0)
        for (Int row = 0; row < list->rowCount(); ++row)
            if (row != cell.v)
                list->hilite(row, false);
    list->hilite(cell.v, flag);
}

bool LGetSelect(bool next, Cell& cell, const ListHandle& list)
{
    if (!list)
        return false;
    if (!next)
        return list->hasRow(cell.v) && list->selected[at(cell.v)];
    for (Int row = std::max<Int>(0, cell.v); row < list->rowCount(); ++row)
        if (list->selected[at(row)]) {
            cell = {row, 0};
            return true;
        }
    return false;
}

void LDoDraw(bool flag, const ListHandle& list)
{
    if (!list)
        return;
    list->drawing = flag;
    list->drawAll();
}

void LUpdate(const RgnHandle&, const ListHandle& list)
{
    if (list)
        list->drawAll();
}

void LActivate(bool flag, const ListHandle& list)
{
    if (list)
        list->lActive = flag;
}

void LRect(Rect& rect, Cell cell, const ListHandle& list)
{
    if (list)
        rect = list->inView(cell.v) ? list->cellRect(cell.v) : Rect{};
}

void LScroll(Int, Int dRows, const ListHandle& list)
{
    if (list)
        list->scrollTo(list->visible.top + dRows);
}

void LAutoScroll(const ListHandle& list)
{
    Cell cell;
    if (list && LGetSelect(true, cell, list) && !list->inView(cell.v))
        list->scrollTo(cell.v);
}

Cell LLastClick(const ListHandle& list) { return list ? list->lastClick : Cell{-1, -1}; }

bool LClick(Point local, Int modifiers, const ListHandle& handle)
{
    const ListHandle list = handle;
    if (!list)
        return false;
    if (list->vScroll && list->vScroll->contrlRect.contains(local)) {
        clickScrollBar(list, local);
        return false;
    }
    if (!list->rView.contains(local))
        return false;
    const Int row = rowUnder(*list, local.v);
    if (!list->hasRow(row))
        return false;
    const bool many = list->selFlags < lOnlyOne;
    const bool additive = many && (modifiers & (cmdKey | shiftKey)) != 0;
    const bool toggle = many && (modifiers & cmdKey) != 0;
    const bool twice = TickCount() - list->clickTime <= kDoubleClick && list->lastClick.v == row;
    list->clickTime = TickCount();
    if (toggle)
        list->hilite(row, !list->selected[at(row)]);
    else if (additive)
        list->hilite(row, true);
    else
        selectOnly(*list, row, row);
    list->lastClick = {dragRows(*list, row, additive), 0};
    return twice;
}

} // namespace MacToolbox
