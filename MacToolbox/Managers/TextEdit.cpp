#include "MacToolbox/Managers/TextEdit.h"

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Host/GameThread.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/QuickDraw/Fonts.h"

#include <algorithm>

namespace MacToolbox {

namespace {

constexpr std::uint8_t kReturn = 13, kSpace = 32;
constexpr Int kBlink = 32;       // ticks between two changes of the caret
constexpr Int kDoubleClick = 30; // ticks

RunState<Bytes> sScrap;

/// The record's font in its port, put back at the end.
class FontScope {
public:
    explicit FontScope(const TERec& te)
        : port_(te.inPort), font_(port_->txFont), face_(port_->txFace), mode_(port_->txMode), size_(port_->txSize)
    {
        port_->txFont = te.txFont;
        port_->txFace = te.txFace;
        port_->txMode = srcOr;
        port_->txSize = te.txSize;
    }
    ~FontScope() { port_->txFont = font_, port_->txFace = face_, port_->txMode = mode_, port_->txSize = size_; }
    FontScope(const FontScope&) = delete;
    FontScope& operator=(const FontScope&) = delete;

private:
    const GrafPtr port_;
    const Int font_, face_, mode_, size_;
};

/// Clips a port to a rectangle as well, until the end of the block.
class ViewScope {
public:
    ViewScope(const GrafPtr& port, const Rect& view) : port_(port), saved_(port->clipRgn)
    {
        port->clipRgn = std::make_shared<RgnRecord>(saved_->region.intersection(view));
    }
    ~ViewScope() { port_->clipRgn = saved_; }
    ViewScope(const ViewScope&) = delete;
    ViewScope& operator=(const ViewScope&) = delete;

private:
    const GrafPtr port_;
    const RgnHandle saved_;
};

bool isWordCharacter(std::uint8_t c) { return c >= 33 && c != ',' && c != '.'; }

std::span<const std::uint8_t> firstOf(std::span<const std::uint8_t> bytes, Int count)
{
    return bytes.first(static_cast<std::size_t>(std::clamp<Int>(count, 0, I(bytes.size()))));
}

/// Takes the selection off, or puts it on, under the view's clip.
void takeOff(TERec& te)
{
    const ViewScope clip(te.inPort, te.viewRect);
    if (te.selStart == te.selEnd)
        te.showCaret(false);
    else
        te.hilite();
}

void putOn(TERec& te)
{
    const ViewScope clip(te.inPort, te.viewRect);
    te.hilite();
}

void blink(TERec& te)
{
    const ViewScope clip(te.inPort, te.viewRect);
    te.showCaret(!te.caretShown);
}

void moveCaret(TERec& te, Int offset) { te.selStart = te.selEnd = offset; }

void replace(TERec& te, std::span<const std::uint8_t> with)
{
    te.replaceSelection(with);
    te.redraw();
}

} // namespace

TERec::TERec(const Rect& dest, const Rect& view, const GrafPtr& port)
    : destRect(dest), viewRect(view), txFont(port->txFont), txFace(port->txFace), txMode(port->txMode),
      txSize(port->txSize), inPort(port), hText(NewHandle(0))
{
    measureFont();
    calc();
}

Int TERec::teLength() const { return lenOverride ? *lenOverride : GetHandleSize(hText); }

void TERec::setTeLength(Int n)
{
    lenOverride.reset();
    if (hText && hText->count() != n)
        SetHandleSize(hText, n);
}

std::span<const std::uint8_t> TERec::text() const
{
    return hText ? firstOf(hText->bytes, teLength()) : std::span<const std::uint8_t>();
}

std::span<const std::uint8_t> TERec::lineText(Int line) const
{
    if (line < 0 || line >= nLines())
        return {};
    const auto all = text();
    const Int start = std::clamp<Int>(lineStart(line), 0, I(all.size())); // the text may be newer than the lines
    const Int end = std::clamp<Int>(lineStart(line + 1), start, I(all.size()));
    auto chars = all.subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start));
    if (!chars.empty() && chars.back() == kReturn)
        chars = chars.first(chars.size() - 1);
    return chars;
}

void TERec::measureFont()
{
    const FontScope font(*this);
    const FontInfo info = FontManager::shared().info(*inPort);
    lineHeight = info.ascent + info.descent + info.leading;
    fontAscent = info.ascent;
}

Int TERec::measure(std::span<const std::uint8_t> chars) const
{
    if (chars.empty())
        return 0;
    const FontScope font(*this);
    return FontManager::shared().width(*inPort, chars);
}

Int TERec::width(Int from, Int to) const
{
    const auto all = text();
    if (from < 0 || from >= to || to > I(all.size()))
        return 0;
    return measure(all.subspan(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)));
}

void TERec::calc()
{
    const FontScope font(*this);
    const auto chars = text();
    const Int n = I(chars.size()), wrap = destRect.width();
    const auto at = [&](Int i) { return chars[static_cast<std::size_t>(i)]; };
    lineStarts.assign(1, 0);
    Int start = 0, i = 0, used = 0; // `used` is the width from `start` to `i`
    const auto beginLine = [&](Int where) {
        start = i = where;
        used = 0;
        lineStarts.push_back(where);
    };
    while (i < n) {
        if (at(i) == kReturn) {
            beginLine(i + 1);
            continue;
        }
        const Int next =
            crOnly < 0 ? 0 : used + FontManager::shared().width(*inPort, chars.subspan(static_cast<std::size_t>(i), 1));
        if (crOnly < 0 || next <= wrap || start >= i) {
            used = next;
            ++i;
            continue;
        }
        Int brk = i;
        for (Int j = i - 1; j >= start; --j)
            if (at(j) == kSpace) {
                brk = j + 1;
                break;
            }
        beginLine(brk);
    }
    if (lineStarts.size() < 2 || lineStarts.back() != n)
        lineStarts.push_back(n);
}

Int TERec::lineLeft(Int line) const
{
    if (just == teJustCenter)
        return (destRect.left + destRect.right - measure(lineText(line))) / 2;
    if (just == teJustRight)
        return destRect.right - measure(lineText(line));
    return destRect.left;
}

Int TERec::lineOf(Int offset) const
{
    const auto next =
        lineStarts.empty() ? lineStarts.end() : std::upper_bound(lineStarts.begin() + 1, lineStarts.end(), offset);
    if (next == lineStarts.end())
        return std::max<Int>(nLines() - 1, 0);
    return I(next - lineStarts.begin()) - 1;
}

TERec::Place TERec::pointOf(Int offset) const
{
    const Int line = lineOf(offset);
    const Int start = line < nLines() ? lineStart(line) : 0;
    return {lineLeft(line) + width(start, std::min(offset, I(text().size()))), destRect.top + line * lineHeight};
}

Int TERec::offsetAt(Point p) const
{
    if (lineStarts.size() < 2)
        return 0;
    const Int row = p.v < destRect.top ? 0 : (p.v - destRect.top) / std::max<Int>(lineHeight, 1);
    const Int line = std::clamp<Int>(row, 0, nLines() - 1);
    const FontScope font(*this);
    Int x = lineLeft(line), offset = lineStart(line);
    const auto chars = lineText(line);
    for (std::size_t i = 0; i < chars.size(); ++i, ++offset) {
        const Int c = FontManager::shared().width(*inPort, chars.subspan(i, 1));
        if (x + c / 2 > p.h)
            break;
        x += c;
    }
    return std::clamp<Int>(offset, 0, I(text().size()));
}

void TERec::draw()
{
    const FontScope font(*this);
    const ViewScope clip(inPort, viewRect);
    const Point pen = inPort->pnLoc;
    caretShown = false;
    const Int height = std::max<Int>(lineHeight, 1); // a font without height still ends the walk
    const Int first = std::max<Int>((viewRect.top - destRect.top) / height - 1, 0);
    for (Int line = first; line < nLines(); ++line) {
        const Int top = destRect.top + line * lineHeight;
        if (top > viewRect.bottom)
            break;
        if (top + lineHeight < viewRect.top)
            continue;
        inPort->pnLoc = {top + fontAscent, lineLeft(line)};
        FontManager::shared().draw(*inPort, lineText(line));
    }
    inPort->pnLoc = pen;
    if (active)
        hilite();
}

void TERec::hilite()
{
    if (selStart == selEnd) {
        showCaret(true);
        return;
    }
    const auto [a, b] = std::minmax(selStart, selEnd);
    const Int firstLine = lineOf(a), lastLine = lineOf(b);
    for (Int line = firstLine; line <= lastLine; ++line) {
        const Int top = destRect.top + line * lineHeight;
        const Rect band{top, line == firstLine ? pointOf(a).h : lineLeft(line), top + lineHeight,
            line == lastLine ? pointOf(b).h : viewRect.right};
        inPort->fill(band, Pattern::black, patXor);
    }
}

void TERec::showCaret(bool on)
{
    if (caretShown == on)
        return;
    const Place place = pointOf(selStart);
    const Rect caret{place.top, place.h - 1, place.top + lineHeight, place.h};
    inPort->fill(caret.intersection(viewRect), Pattern::black, patXor);
    caretShown = on;
    caretTime = TickCount();
}

void TERec::scrollToSelection()
{
    if (!autoView)
        return;
    const Place p = pointOf(selEnd);
    Int dh = 0, dv = 0;
    if (p.h > viewRect.right - 1)
        dh = viewRect.right - 1 - p.h;
    if (p.h < viewRect.left)
        dh = viewRect.left - p.h;
    if (p.top < viewRect.top)
        dv = viewRect.top - p.top;
    if (p.top + lineHeight > viewRect.bottom && viewRect.height() >= lineHeight)
        dv = viewRect.bottom - p.top - lineHeight;
    destRect.offset(dh, dv);
}

void TERec::redraw()
{
    calc();
    scrollToSelection();
    {
        const ViewScope clip(inPort, viewRect);
        inPort->fill(viewRect, inPort->bkPat, patCopy);
    }
    draw();
}

void TERec::replaceSelection(std::span<const std::uint8_t> with)
{
    if (!hText)
        return;
    const Bytes added(with.begin(), with.end()); // `with` may lie in the block itself
    const auto [low, high] = std::minmax(selStart, selEnd);
    const Int from = std::clamp<Int>(low, 0, hText->count()), to = std::clamp<Int>(high, 0, hText->count());
    Bytes& bytes = hText->bytes;
    bytes.erase(bytes.begin() + from, bytes.begin() + to);
    bytes.insert(bytes.begin() + from, added.begin(), added.end());
    selStart = selEnd = from + I(added.size());
}

Bytes& TEScrap::bytes() { return *sScrap; }

void TEScrap::toPasteboard()
{
    Platform::current().post([text = fromMacRoman(bytes())] { Platform::current().setPasteboard(text); });
}

void TEScrap::fromPasteboard()
{
    std::optional<std::string> text = GameThread::onMain([] { return Platform::current().pasteboard(); });
    if (!text)
        return;
    std::replace(text->begin(), text->end(), '\n', '\r');
    bytes() = macRoman(*text);
}

TEHandle TENew(const Rect& destRect, const Rect& viewRect)
{
    return std::make_shared<TERec>(destRect, viewRect, thePort);
}

void TESetText(std::span<const std::uint8_t> text, Int length, const TEHandle& te)
{
    if (!te)
        return;
    te->hText = PtrToHand(firstOf(text, length));
    te->selStart = te->selEnd = te->teLength();
    te->calc();
}

Handle TEGetText(const TEHandle& te) { return te ? te->hText : nullptr; }

void TECalText(const TEHandle& te)
{
    if (te)
        te->calc();
}

void TESetJust(Int just, const TEHandle& te)
{
    if (te)
        te->just = just;
}

void TEAutoView(bool flag, const TEHandle& te)
{
    if (te)
        te->autoView = flag;
}

void TEUpdate(const Rect&, const TEHandle& te)
{
    if (!te)
        return;
    te->calc();
    te->draw();
}

void TESetSelect(Int start, Int end, const TEHandle& te)
{
    if (!te)
        return;
    const Int length = std::max<Int>(te->teLength(), 0);
    start = std::clamp<Int>(start, 0, length);
    end = std::clamp<Int>(end, 0, length);
    if (te->active)
        takeOff(*te);
    te->selStart = std::min(start, end);
    te->selEnd = std::max(start, end);
    te->scrollToSelection();
    if (te->active)
        putOn(*te);
}

void TEIdle(const TEHandle& te)
{
    if (te && te->active && te->selStart == te->selEnd && TickCount() - te->caretTime >= kBlink)
        blink(*te);
}

void TEActivate(const TEHandle& te)
{
    if (!te || te->active)
        return;
    te->active = true;
    putOn(*te);
}

void TEDeactivate(const TEHandle& te)
{
    if (!te || !te->active)
        return;
    takeOff(*te);
    te->active = false;
}

void TEClick(Point local, bool extend, const TEHandle& handle)
{
    const TEHandle te = handle;
    if (!te)
        return;
    const Int clicked = te->offsetAt(local);
    const bool twice = TickCount() - te->clickTime < kDoubleClick && clicked == te->clickLoc;
    te->clickTime = TickCount();
    te->clickLoc = clicked;
    Int fixed = extend ? te->selStart : clicked, end = clicked;
    if (twice && te->hText) {
        const Bytes& text = te->hText->bytes;
        const auto word = [&](Int i) { return isWordCharacter(text[static_cast<std::size_t>(i)]); };
        const Int length = I(text.size());
        fixed = end = std::min(clicked, length);
        while (fixed > 0 && word(fixed - 1))
            --fixed;
        while (end < length && word(end))
            ++end;
    }
    TESetSelect(fixed, end, te);
    Int last = clicked;
    while (WaitMouseUp()) {
        const Rect& bounds = te->inPort->portBits.bounds;
        const Point mouse = Input::mouseLocation();
        const Int offset = te->offsetAt({mouse.v + bounds.top, mouse.h + bounds.left});
        if (offset != last)
            TESetSelect(fixed, offset, te);
        last = offset;
    }
}

void TEKey(Int key, const TEHandle& te)
{
    if (!te)
        return;
    const bool caret = te->selStart == te->selEnd;
    switch (key & 255) {
    case 29: moveCaret(*te, caret ? std::min(te->selEnd + 1, te->teLength()) : te->selEnd); break;
    case 28: moveCaret(*te, caret ? std::max<Int>(te->selStart - 1, 0) : te->selStart); break;
    case 30: {
        const TERec::Place p = te->pointOf(te->selStart);
        moveCaret(*te, te->offsetAt({p.top - 1, p.h}));
        break;
    }
    case 31: {
        const TERec::Place p = te->pointOf(te->selStart);
        moveCaret(*te, te->offsetAt({p.top + te->lineHeight + te->lineHeight / 2, p.h}));
        break;
    }
    case 8:
        if (caret && te->selStart <= 0)
            return;
        if (caret)
            --te->selStart;
        te->replaceSelection({});
        break;
    default: {
        const std::uint8_t byte = static_cast<std::uint8_t>(key);
        te->replaceSelection({&byte, 1});
    }
    }
    te->redraw();
}

void TECopy(const TEHandle& te)
{
    if (!te || !te->hText)
        return;
    const Bytes& text = te->hText->bytes;
    const auto [low, high] = std::minmax(te->selStart, te->selEnd);
    const Int from = std::clamp<Int>(low, 0, I(text.size())), to = std::clamp<Int>(high, 0, I(text.size()));
    TEScrap::bytes().assign(text.begin() + from, text.begin() + to);
    TEScrap::toPasteboard();
}

void TECut(const TEHandle& te)
{
    if (!te)
        return;
    TECopy(te);
    replace(*te, {});
}

void TEPaste(const TEHandle& te)
{
    if (!te)
        return;
    TEScrap::fromPasteboard();
    replace(*te, TEScrap::bytes());
}

void TEInsert(std::span<const std::uint8_t> text, Int length, const TEHandle& te)
{
    if (!te)
        return;
    te->selEnd = te->selStart;
    replace(*te, firstOf(text, length));
}

void TEDelete(const TEHandle& te)
{
    if (te)
        replace(*te, {});
}

void TEScroll(Int dh, Int dv, const TEHandle& te)
{
    if (!te)
        return;
    te->destRect.offset(dh, dv);
    te->redraw();
}

void TESelView(const TEHandle& te)
{
    if (te)
        te->scrollToSelection();
}

Int TEScrpLength()
{
    TEScrap::fromPasteboard();
    return I(TEScrap::bytes().size());
}

Handle TEScrapHandle() { return PtrToHand(TEScrap::bytes()); }

void TextBox(std::span<const std::uint8_t> text, Int count, const Rect& rect, Int just)
{
    TERec te(rect, rect, thePort);
    te.hText = PtrToHand(firstOf(text, count));
    te.just = just;
    te.calc();
    thePort->fill(rect, thePort->bkPat, patCopy);
    te.draw();
}

} // namespace MacToolbox
