#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <algorithm>
#include <span>

// The menu that pops up on the screen itself, in global coordinates.

namespace MacToolbox {

namespace {

constexpr Int kMenuBar = 20;
constexpr Int kMarkIndent = 4, kTextIndent = 16, kWidthMore = 32; // pixels

/// A menu while it is on the screen; its end puts back what it covered.
class PopUp {
public:
    PopUp(const MenuRecord& menu, Int top, Int left, Int item);
    ~PopUp();
    PopUp(const PopUp&) = delete;
    PopUp& operator=(const PopUp&) = delete;

    /// The item that can be chosen at the global point, or 0.
    Int itemAt(Point p) const;
    /// Moves the highlight to an item; 0 is none.
    void highlight(Int item);

private:
    Rect rowOf(Int item) const;
    void draw();
    void drawText(Int h, Int v, std::span<const std::uint8_t> text);

    const MenuRecord& menu_;
    GrafPort port_;
    FontInfo font_;
    Int rowHeight_;
    Rect rect_;
    Rect savedRect_;
    BitMap saved_;
    Int shown_ = 0; // the highlighted item
};

PopUp::PopUp(const MenuRecord& menu, Int top, Int left, Int item) : menu_(menu), port_(Screen::shared().bits)
{
    port_.txFont = systemFont;
    port_.txSize = 12;
    font_ = FontManager::shared().info(port_);
    rowHeight_ = font_.ascent + font_.descent + font_.leading + 4;
    Int widest = 0;
    for (const MenuRecord::Item& entry : menu.items)
        widest = std::max(widest, FontManager::shared().width(port_, entry.text));
    const Int first = top - (std::max<Int>(item, 1) - 1) * rowHeight_;
    rect_ = {first, left, first + I(menu.items.size()) * rowHeight_, left + widest + kWidthMore};
    rect_.offset(0, std::max<Int>(kMenuBar - rect_.top, 0));
    rect_.offset(0, std::min<Int>(Screen::bounds.bottom - rect_.bottom, 0));
    savedRect_ = {rect_.top - 1, rect_.left - 1, rect_.bottom + 3, rect_.right + 3};
    saved_ = BitMap(savedRect_.intersection(Screen::bounds));
    port_.copyBits(port_.portBits, saved_, saved_.bounds, saved_.bounds, srcCopy, nullptr);
    draw();
    Screen::shared().publish(false);
}

PopUp::~PopUp()
{
    port_.copyBits(saved_, port_.portBits, saved_.bounds, saved_.bounds, srcCopy, nullptr);
    Screen::shared().publish(false);
}

Rect PopUp::rowOf(Int item) const
{
    const Int top = rect_.top + (item - 1) * rowHeight_;
    return {top, rect_.left, top + rowHeight_, rect_.right};
}

Int PopUp::itemAt(Point p) const
{
    if (!rect_.contains(p))
        return 0;
    const Int row = (p.v - rect_.top) / rowHeight_;
    if (row >= I(menu_.items.size()))
        return 0;
    const MenuRecord::Item& entry = menu_.items[static_cast<std::size_t>(row)];
    return entry.enabled && !entry.isSeparator() ? row + 1 : 0;
}

void PopUp::highlight(Int item)
{
    for (const Int change : {shown_, item})
        if (change != 0)
            port_.fill(rowOf(change), Pattern::black, patXor);
    shown_ = item;
}

void PopUp::draw()
{
    port_.fill(rect_, port_.bkPat, patCopy);
    port_.frameRect({rect_.top - 1, rect_.left - 1, rect_.bottom + 1, rect_.right + 1});
    port_.fill(Rect{rect_.bottom + 1, rect_.left + 1, rect_.bottom + 3, rect_.right + 3}, port_.pnPat, patCopy);
    port_.fill(Rect{rect_.top + 1, rect_.right + 1, rect_.bottom + 3, rect_.right + 3}, port_.pnPat, patCopy);
    Int n = 0;
    for (const MenuRecord::Item& entry : menu_.items) {
        const Rect row = rowOf(++n);
        const Int baseline = row.top + font_.ascent + 2;
        if (entry.isSeparator()) {
            const Int middle = row.top + rowHeight_ / 2;
            port_.fill(Rect{middle, row.left, middle + 1, row.right}, Pattern::gray, patCopy);
            continue;
        }
        if (entry.mark != noMark)
            drawText(row.left + kMarkIndent, baseline, {&entry.mark, 1});
        drawText(row.left + kTextIndent, baseline, entry.text);
        if (!entry.enabled)
            port_.fill(row, Pattern::gray, patBic);
    }
}

void PopUp::drawText(Int h, Int v, std::span<const std::uint8_t> text)
{
    port_.pnLoc = {v, h};
    FontManager::shared().draw(port_, text);
}

} // namespace

Int PopUpMenuSelect(const MenuHandle& handle, Int top, Int left, Int item)
{
    const MenuHandle menu = handle;
    if (!menu || menu->items.empty())
        return 0;
    Int hit = 0;
    PopUp popUp(*menu, top, left, item);
    do {
        GameThread::service();
        Input::wait(1);
        const Int now = popUp.itemAt(Input::mouseLocation());
        if (now != hit)
            popUp.highlight(now);
        hit = now;
    } while (Input::isButtonDown());
    Input::take(mUpMask, true);
    return hit == 0 ? 0 : packMenuChoice(menu->menuID, hit);
}

} // namespace MacToolbox
