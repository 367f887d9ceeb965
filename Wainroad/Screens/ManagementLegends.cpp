#include "Wainroad/Screens/Management.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Managers/Lists.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Alerts.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Persistence/Legends.h"
#include "Wainroad/Screens/ModalDialogs.h"

#include <algorithm>
#include <vector>

namespace Wainroad {

namespace {

enum LegendsItems : Int { kRemove = 1, kDone = 2, kRing = 3, kList = 4, kRestore = 6 };
constexpr Int kDialog = 2042, kRestoreAlert = 2045, kDefaults = 1000;
constexpr Int kDim = 255;
// What the filter answers for a click on the list: something may have been selected, and which row, once or twice.
constexpr Int kSelectionHit = 512, kRowHit = 513, kDoubleHit = 1537;
// The stored list inside the defaults.
constexpr Int kCountAt = 456, kFirstNameAt = 462, kFirstPointsAt = 490, kEntryBytes = 32;

struct LegendsState {
    ListHandle list;
};
RunState<LegendsState> s;

/// A cell holds four bytes of points, then the name.
Legend legendOf(std::span<const std::uint8_t> cell)
{
    ByteReader in(cell);
    Legend legend;
    legend.points = in.s32();
    for (std::size_t i = 4; i < cell.size(); ++i)
        legend.name.push_back(cell[i]);
    legend.name[0] = static_cast<std::uint8_t>(legend.name.size() - 1);
    return legend;
}

Bytes cellOf(const Legend& legend)
{
    ByteWriter out;
    out.u32(legend.points);
    out.raw(characters(legend.name));
    return out.bytes;
}

/// Cuts a name to the pixels that it may take.
Str255 fitting(Str255 name, Int width)
{
    while (name[0] > 0 && StringWidth(name) > width) {
        name.pop_back();
        --name[0];
    }
    return name;
}

void drawCell(
    Int message, bool selected, const Rect& r, Cell, std::span<const std::uint8_t> bytes, const ListHandle& list)
{
    if (message == lHiliteMsg) {
        InvertRect(r);
        return;
    }
    if (message != lDrawMsg)
        return;
    EraseRect(r);
    const Legend legend = legendOf(bytes);
    const Int baseline = r.top + list->indent.v;
    const Int nameWidth = r.width() - (9 * CharWidth('0') + 4);
    Str255 points;
    NumToCommas(legend.points, points);
    MoveTo(r.left + list->indent.h, baseline);
    DrawString(fitting(legend.name, nameWidth));
    MoveTo(r.right - 4 - StringWidth(points), baseline);
    DrawString(points);
    if (selected)
        InvertRect(r);
}

void drawList(const DialogPtr& dialog, Int item)
{
    const DItem* place = dialog->item(item);
    if (!place)
        return;
    EraseRect(place->rect);
    FrameRect(place->rect);
    LUpdate(thePort->visRgn, s->list);
}

void fillList()
{
    LDoDraw(false, s->list);
    LDelRow(0, 0, s->list);
    for (Int row = 0; row < gLegendCount; ++row) {
        const Bytes cell = cellOf(gLegends[static_cast<std::size_t>(row)]);
        LAddRow(1, row, s->list);
        LSetCell(cell, I(cell.size()), Cell{row, 0}, s->list);
    }
    LDoDraw(true, s->list);
}

void takeList()
{
    gLegendFile = 0;
    setLegends(ReadLegends(0));
    fillList();
}

void makeList(const DialogPtr& dialog)
{
    const DItem* item = dialog->item(kList);
    if (!item)
        Fatal(0, "HSDialog()");
    constexpr Int kScrollBarWidth = 15;
    Rect view = item->rect.insetBy(1, 1);
    view.right -= kScrollBarWidth;
    s->list = LNew(view, {0, 0, 0, 1}, {0, 0}, 0, WindowPtr(dialog), true, false, false, true, drawCell);
    if (!s->list)
        Fatal(0, "HSDialog()");
    s->list->selFlags = 0;
    SetDialogDrawing(dialog, kList, drawList);
}

bool anySelected()
{
    Cell cell{0, 0};
    return LGetSelect(true, cell, s->list);
}

// ---- Clicks

void selectOnly(Int row)
{
    for (Int i = 0; i < s->list->rowCount(); ++i)
        if (i != row)
            LSetSelect(false, Cell{i, 0}, s->list);
}

/// Gives a click to the list. @return What the dialog hears of it.
Int clickList(const DialogPtr& dialog, const EventRecord& event)
{
    const PortScope port(dialog->port);
    const Point place = dialog->toLocal(event.where);
    if ((event.modifiers & (shiftKey | cmdKey)) == 0)
        selectOnly(-1);
    const bool twice = LClick(place, event.modifiers, s->list);
    Cell cell{0, 0};
    if (!LGetSelect(true, cell, s->list))
        return kSelectionHit;
    return (twice ? kDoubleHit : kRowHit) + cell.v;
}

bool legendsFilter(const DialogPtr& dialog, EventRecord& event, Int& item)
{
    if (StdFilter(dialog, event, item))
        return true;
    if (event.what == keyDown && (event.message & charCodeMask) == 'a' && (event.modifiers & cmdKey) != 0) {
        for (Int row = 0; row < s->list->rowCount(); ++row)
            LSetSelect(true, Cell{row, 0}, s->list);
        item = kSelectionHit;
        return true;
    }
    const DItem* place = dialog->item(kList);
    if (event.what != mouseDown || !place || !place->rect.insetBy(1, 1).contains(dialog->toLocal(event.where)))
        return false;
    item = clickList(dialog, event);
    return true;
}

// ---- Changes

/// Takes the selected rows out of the list on the screen, and notes them.
void removeSelected(const DialogPtr& dialog, std::vector<Legend>& removed)
{
    LDoDraw(false, s->list);
    for (Int row = 0; row < s->list->rowCount();) {
        Cell cell{row, 0};
        if (!LGetSelect(false, cell, s->list)) {
            ++row;
            continue;
        }
        removed.push_back(legendOf(s->list->cells[static_cast<std::size_t>(row)]));
        LDelRow(1, row, s->list);
    }
    LDoDraw(true, s->list);
    const PortScope port(dialog->port);
    drawList(dialog, kList);
}

void takeOut(Int entry)
{
    const auto from = gLegends.begin() + entry;
    std::move(from + 1, gLegends.end(), from);
    gLegends.back() = {};
    --gLegendCount;
}

void writeRemovals(const std::vector<Legend>& removed)
{
    if (removed.empty())
        return;
    OpenConfigForUpdate();
    setLegends(GetLegends(0));
    for (const Legend& legend : removed)
        if (const Int entry = FindLegend(legend.name, legend.points); entry >= 0)
            takeOut(entry);
    WriteLegends(gLegendFile, legendBytes());
    CloseConfig();
}

void restoreDefaults(const DialogPtr& dialog)
{
    const Handle defaults = GetResource(os("CONF"), kDefaults);
    if (!defaults)
        Fatal(ResError(), "HSDialog()");
    OpenConfigForUpdate();
    setLegends(GetLegends(0));
    while (gLegendCount > 0)
        takeOut(gLegendCount - 1);
    const Int count = std::clamp<Int>(ByteReader(defaults->bytes, kCountAt).s16(), 0, kLegendRows);
    for (Int i = 0; i < count; ++i) {
        const Int nameAt = kFirstNameAt + kEntryBytes * i;
        if (nameAt >= defaults->count())
            break;
        AddLegend(ByteReader(defaults->bytes, kFirstPointsAt + kEntryBytes * i).s32(), defaults->pstr(nameAt));
    }
    WriteLegends(0, legendBytes());
    CloseConfig();
    takeList();
    const PortScope port(dialog->port);
    drawList(dialog, kList);
}

/// Asks before the list is restored. A request to quit is no yes.
bool confirmRestore()
{
    constexpr Int kGoAhead = 2;
    WaitForSound();
    if (!CenterAlert(kRestoreAlert))
        Fatal(ResError(), "GetAlert");
    return StopAlert(kRestoreAlert) == kGoAhead && !Input::quitRequested;
}

} // namespace

void LegendsDialog()
{
    const DialogPtr dialog = OpenModalDialog(kDialog);
    makeList(dialog);
    takeList();
    SetDefaultButton(dialog, kDone, kRing);
    HiliteDialogButton(dialog, kRemove, kDim);
    std::vector<Legend> removed;
    for (Int hit = 0; hit != kDone;) {
        ModalDialog(legendsFilter, hit);
        if (hit == kRemove)
            removeSelected(dialog, removed);
        else if (hit == kRestore && confirmRestore())
            restoreDefaults(dialog);
        HiliteDialogButton(dialog, kRemove, anySelected() ? 0 : kDim);
    }
    writeRemovals(removed);
    LDispose(s->list);
    s->list = nullptr;
    CloseModalDialog(dialog);
}

} // namespace Wainroad
