#include "Wainroad/Journal/LogView.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Controls.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Journal/LogText.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"
#include "Wainroad/Simulation/Packets.h"

#include <algorithm>

namespace Wainroad {

View* gLogView = nullptr;
std::vector<LogLine> gLogCache;
Int gLogTop = 0, gLogMax = 0;
bool gLoaded = false, gLoadedTrain = false;

namespace {

enum LogItems : Int { kLines = 1, kScrollBar = 2 };
constexpr Int kInset = 3, kIndent = 12; // pixels: above the first line and left of all; of the later lines of a message
constexpr Int kReturnTicks = 900;       // 15 seconds
constexpr Int kCacheReach = 10;         // lines above the view that a cache may end at and still be of use
constexpr Int kUpArrow = 20, kDownArrow = 21, kPageUp = 22, kPageDown = 23, kThumb = 129;
constexpr Int kPageLines = 7;
constexpr Int kJournalResumed = 60, kJournalTrainResumed = 62, kJournalOutfit = 68;

struct LogViewState {
    FontInfo font;
    Int lineHeight = 12;
    Int lastScroll = 0;      // tick
    bool sendOutfit = false; // the story opens with the goods that the party set out with
    bool dateWaits = false;
    Int waitingIndex = -1, waitingOffset = 0; // a date that nothing has followed yet
};
RunState<LogViewState> s;
const AtRunStart sFreshStart([] {
    gLogView = nullptr;
    gLogCache.clear();
    gLogTop = gLogMax = 0;
    gLoaded = gLoadedTrain = false;
});

ControlHandle scrollBar()
{
    View* item = gLogView && gLogView->parent ? GetItem(*gLogView->parent, kScrollBar) : nullptr;
    ControlHandle* control = item ? item->dataAs<ControlHandle>() : nullptr;
    return control ? *control : nullptr;
}

void showScrollValue(Int value)
{
    const ControlHandle bar = scrollBar();
    if (bar && GetCtlValue(bar) != value)
        SetCtlValue(bar, value);
}

void showScrollMax()
{
    const ControlHandle bar = scrollBar();
    if (bar && gLogView->disabled == 0 && GetCtlMax(bar) != gLogMax)
        SetCtlMax(bar, gLogMax);
}

void measureFont(View& item)
{
    const StyleScope style(item.style);
    GetFontInfo(s->font);
    s->lineHeight = std::max<Int>(s->font.ascent + s->font.descent + s->font.leading, 1);
}

// ---- Keeping in step with the store

/// Takes what a trim removed out of all that the view holds.
void followTrim(Int messages, Int lines, Int bytes)
{
    for (LogLine& line : gLogCache) {
        line.index -= messages;
        line.firstLine -= lines;
        line.offset -= bytes;
    }
    std::erase_if(gLogCache, [](const LogLine& line) { return line.index < 0; });
    if (s->dateWaits) {
        s->waitingIndex -= messages;
        s->waitingOffset -= bytes;
        s->dateWaits = s->waitingIndex >= 0;
    }
    gLogTop -= lines;
    gLogMax -= lines;
    gLogInfo.trimTop = gLogInfo.trimTop == 0 ? gLogTop : gLogInfo.trimTop - lines;
}

void initLogView(View& item)
{
    gLogView = &item;
    gLogCache.clear();
    s->dateWaits = false;
    gLogTop = gLogMax = 0;
    measureFont(item);
    EmptyQueue(gNewsQueue);
    EmptyQueue(gNewsQueue2);
    gLogTrimmed = followTrim;
}

LogLayout layoutFrom(Int line)
{
    LogLayout layout(*gLogView, line);
    if (s->dateWaits)
        layout.date = {s->waitingIndex, s->waitingOffset};
    return layout;
}

void keepWaitingDate(const LogLayout& layout)
{
    s->dateWaits = layout.date.index >= 0;
    s->waitingIndex = layout.date.index;
    s->waitingOffset = layout.date.offset;
}

/// Lays a message out and notes where its block begins: behind all lines of the messages before it. A date that waits
/// has no line yet; once it gets one, the blocks that have begun meanwhile move behind it.
void layOutMessage(LogLayout& layout, Int index, Int offset, const std::function<void(LogLine)>& shown)
{
    const Int line = layout.line(), waiting = layout.date.index;
    if (index % kLogBlock == 0 && index / kLogBlock < kLogBlocks)
        gBlockLines[static_cast<std::size_t>(index / kLogBlock)] = line;
    const Int begin = layout.add(index, offset, shown);
    if (waiting < 0 || layout.date.index >= 0)
        return;
    for (Int block = waiting / kLogBlock + 1; block <= index / kLogBlock && block < kLogBlocks; ++block)
        gBlockLines[static_cast<std::size_t>(block)] += begin - line;
}

Int greatestTop() { return std::max<Int>(gLogInfo.lines - kLogViewLines, 0); }

// ---- The cache

/// Messages from the block that holds `first`, until line `last` is reached. They may begin a few messages earlier.
std::vector<LogLine> fillCache(View& item, Int first, Int last)
{
    std::vector<LogLine> lines;
    last = std::min(last, gLogInfo.lines);
    Int block = gLogInfo.blocks - 1;
    while (block >= 0 && gBlockLines[static_cast<std::size_t>(block)] > first)
        --block;
    if (block < 0)
        return lines;
    Int index = block * kLogBlock, offset = gBlockOffsets[static_cast<std::size_t>(block)];
    Int line = gBlockLines[static_cast<std::size_t>(block)];
    // A date that stands before the block lies above it, and is found from the block before.
    for (LogLayout layout(item, line); offset < gLogInfo.end && layout.line() < last;
         ++index, offset = NextMessage(offset))
        layout.add(index, offset, [&](LogLine shown) { lines.push_back(std::move(shown)); });
    return lines;
}

/// The messages behind `entry`, until line `last` is reached.
std::vector<LogLine> fillCacheAfter(View& item, Int last, const LogLine& entry)
{
    std::vector<LogLine> lines;
    if (entry.index < 0 || entry.offset >= gLogInfo.end)
        return lines;
    Int index = entry.index + 1, offset = NextMessage(entry.offset);
    for (LogLayout layout(item, entry.endLine()); offset < gLogInfo.end && layout.line() < last;
         ++index, offset = NextMessage(offset))
        layout.add(index, offset, [&](LogLine shown) { lines.push_back(std::move(shown)); });
    return lines;
}

void keepNewest()
{
    if (I(gLogCache.size()) > kLogCacheSize)
        gLogCache.erase(gLogCache.begin(), gLogCache.end() - kLogCacheSize);
}

/// Brings the lines of a view that begins at `top` into the cache.
void cacheLines(View& item, Int top)
{
    const Int bottom = top + kLogViewLines;
    const bool useful =
        !gLogCache.empty() && gLogCache.front().firstLine < bottom && top - kCacheReach < gLogCache.back().endLine();
    if (!useful || top < gLogCache.front().firstLine) {
        // The view's block, and what follows, in one walk.
        gLogCache = fillCache(item, top, bottom);
        if (I(gLogCache.size()) > kLogCacheSize)
            std::erase_if(gLogCache, [&](const LogLine& line) { return line.endLine() <= top; });
        return;
    }
    if (gLogCache.back().endLine() >= bottom)
        return;
    std::vector<LogLine> more = fillCacheAfter(item, bottom, gLogCache.back());
    std::move(more.begin(), more.end(), std::back_inserter(gLogCache));
    keepNewest();
}

// ---- Drawing

/// Shifts the lines that stay and draws those that come in.
void scrollPixels(View& item, Int old, Int top)
{
    Rect lines = item.r;
    lines.top += kInset;
    lines.bottom -= kInset;
    const RgnHandle blank = NewRgn();
    ScrollRect(lines, 0, (old - top) * s->lineHeight, blank);
    if (top < old)
        DrawLogLines(item, top, std::min(top + kLogViewLines, old));
    else
        DrawLogLines(item, std::max(top, old + kLogViewLines), top + kLogViewLines);
}

void redrawAll(View& item, Int top)
{
    EraseRect(item.r);
    DrawLogLines(item, top, top + kLogViewLines);
}

// ---- News of the view's own

void sendNews(const ByteWriter& news) { QueuePackets(kPacketNews, kAllNodes, news.bytes, I(news.bytes.size()), 0); }

void tellOfLoading()
{
    gLoaded = false;
    ByteWriter news;
    WriteDate(news, gTrain);
    news.u8(gLoadedTrain ? kJournalTrainResumed : kJournalResumed);
    news.u8(gTrain.captain);
    sendNews(news);
}

void tellOfOutfit()
{
    s->sendOutfit = false;
    const Wagon& wagon = WagonOf(gState, gMySlot);
    ByteWriter news;
    WriteDate(news, gTrain);
    news.u8(kJournalOutfit);
    news.u8(gMySlot);
    news.u8(wagon.supply[kOxen]);
    news.u8(wagon.supply[kClothes]);
    news.u16(wagon.supply[kBullets]);
    for (const Int part : {kFirstPart, kSecondPart, kThirdPart})
        news.u8(wagon.supply[static_cast<std::size_t>(part)]);
    news.u8(0);
    news.u16(wagon.supply[kFood]);
    news.u32(wagon.money);
    sendNews(news);
}

// ---- The item

void openLog(View& item)
{
    if (gLogInfo.end == 0) {
        initLogView(item);
        s->sendOutfit = true;
    } else {
        gLogView = &item;
        RelayoutLog();
    }
    AddFilter(kPacketNews, NewsFilter);
    if (gLoaded)
        tellOfLoading();
    AddTimer(item, 15);
}

void takeNews()
{
    const NewNews news = FlushNews();
    if (news.count > 0)
        LayoutNew(news.count, news.offset);
    if (s->sendOutfit)
        tellOfOutfit();
}

/// A wagon that is out keeps its name for the last lines of its story.
void restoreOwnWagon()
{
    const auto slot = static_cast<std::size_t>(gMySlot & 31);
    if (gState.order[slot] != kNobody)
        return;
    gState.order[slot] = gPrev.order[slot];
    WagonOf(gState, gMySlot) = WagonOf(gPrev, gMySlot);
}

void closeLog(View& item)
{
    RemoveFilter(kPacketNews);
    RemoveTimer(item);
    FlushNews();
    restoreOwnWagon();
    if (gLogTE)
        LogUpdate(gLogTE);
    ResetLog();
    gLogView = nullptr;
    gLogTrimmed = nullptr;
    gLogCache.clear();
}

void drawLog(View& item)
{
    showScrollMax();
    showScrollValue(gLogTop);
    DrawLogLines(item, gLogTop, gLogTop + kLogViewLines);
}

Int logItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item))
            openLog(item);
        else
            s->sendOutfit = false;
        return 1;
    case kMsgDraw: drawLog(item); return 1;
    case kMsgTimer: {
        const ViewPortScope port(item);
        takeNews();
        return 1;
    }
    case kMsgClose: closeLog(item); return 1;
    default: return UserItem.fn(item, msg);
    }
}

Int logScrollAction(View&, Msg& msg)
{
    if (msg.what != kMsgClick || !gLogView || (msg.param & 0xFFFF) != HiWord(msg.param))
        return 0;
    Int step = 0;
    switch (msg.param & 0xFFFF) {
    case kUpArrow: step = -1; break;
    case kDownArrow: step = 1; break;
    case kPageUp: step = -kPageLines; break;
    case kPageDown: step = kPageLines; break;
    }
    const ViewPortScope port(*gLogView);
    ScrollLog(*gLogView, gLogTop, std::clamp<Int>(gLogTop + step, 0, gLogMax));
    return 1;
}

void openLogPanel(View& panel)
{
    SetItemSize(panel, kLines, 12);
    InstallUserItem(panel, kLines, LogItem);
    if (View* bar = GetItem(panel, kScrollBar)) {
        if (panel.disabled == 0)
            EnableItem2(panel, kScrollBar);
        bar->user = &LogScrollAction;
    }
}

Int logPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            openLogPanel(panel);
        return PanelDescriptor(0, 6, 5500);
    case kMsgClick:
        if (MsgItem(msg) == kScrollBar && MsgResult(msg) == kThumb && gLogView)
            if (const ControlHandle bar = scrollBar()) {
                const ViewPortScope port(panel);
                ScrollLog(*gLogView, gLogTop, GetCtlValue(bar));
            }
        return 1;
    default: return 0;
    }
}

} // namespace

const ViewProc LogPanel{logPanelProc};
const ViewProc LogItem{logItemProc};
const ViewProc LogScrollAction{logScrollAction};

void RelayoutLog()
{
    initLogView(*gLogView);
    gLogInfo.blocks = gLogInfo.count = gLogInfo.lines = 0;
    LogLayout layout(*gLogView, 0);
    Int index = 0;
    for (Int offset = 0; offset < gLogInfo.end; offset = NextMessage(offset), ++index) {
        if (index % kLogBlock == 0 && gLogInfo.blocks < kLogBlocks)
            gBlockOffsets[static_cast<std::size_t>(gLogInfo.blocks++)] = offset;
        layOutMessage(layout, index, offset, [](const LogLine&) {});
    }
    gLogInfo.count = index;
    gLogInfo.lines = layout.line();
    keepWaitingDate(layout);
    gLogMax = greatestTop();
    const ViewPortScope port(*gLogView);
    showScrollMax();
    ScrollLog(*gLogView, -1, gLogMax);
}

void LayoutNew(Int count, Int offset)
{
    if (!gLogView)
        return;
    View& item = *gLogView;
    std::vector<LogLine> added;
    LogLayout layout = layoutFrom(gLogInfo.lines);
    for (Int index = gLogInfo.count - count; index < gLogInfo.count; ++index, offset = NextMessage(offset))
        layOutMessage(layout, index, offset, [&](LogLine line) { added.push_back(std::move(line)); });
    keepWaitingDate(layout);
    gLogInfo.lines = layout.line();

    const Int old = gLogMax;
    gLogMax = greatestTop();
    showScrollMax();
    if (!added.empty() && old == gLogTop) {
        const Int top = gLogTop;
        std::move(added.begin(), added.end(), std::back_inserter(gLogCache));
        keepNewest();
        gLogTop = gLogMax;
        if (item.disabled == 0) {
            showScrollValue(gLogTop);
            if (top != gLogTop)
                scrollPixels(item, top, gLogTop);
            if (top == 0) // the view was not full before
                DrawLogLines(item, gLogTop, gLogTop + kLogViewLines);
        }
    } else if (gLogInfo.trimLines != 0 && gLogInfo.trimTop < gLogInfo.trimLines) {
        ScrollLog(item, -1, gLogMax); // the top of the view was trimmed away
    } else if (!added.empty() && TickCount() - s->lastScroll >= kReturnTicks) {
        ScrollLog(item, gLogTop, gLogMax);
    }
    gLogInfo.trimBytes = gLogInfo.trimMsgs = gLogInfo.trimLines = gLogInfo.trimTop = 0;
}

void ScrollLog(View& item, Int old, Int top)
{
    s->lastScroll = TickCount();
    if (top == old)
        return;
    cacheLines(item, top);
    gLogTop = top;
    if (item.disabled != 0)
        return;
    showScrollValue(top);
    if (old < 0)
        redrawAll(item, top);
    else
        scrollPixels(item, old, top);
}

void DrawLogLines(View& item, Int first, Int last)
{
    if (item.disabled != 0)
        return;
    const StyleScope style(item.style);
    const Int baseline = item.r.top + s->font.ascent + s->font.leading + kInset;
    for (const LogLine& message : gLogCache) {
        TextFace(message.face);
        for (Int k = 0; k < message.nLines; ++k) {
            const Int line = message.firstLine + k;
            if (line < gLogTop || line < first || line >= last)
                continue;
            const Int start = message.lineStart[static_cast<std::size_t>(k)];
            Int length = message.lineStart[static_cast<std::size_t>(k) + 1] - start;
            if (length > 0 && message.text[static_cast<std::size_t>(start + length - 1)] == 13)
                --length; // a return is no character
            MoveTo(item.r.left + kInset + (k > 0 ? kIndent : 0), baseline + (line - gLogTop) * s->lineHeight);
            DrawText(message.text, start, length);
        }
    }
    TextFace(item.style.face);
}

} // namespace Wainroad
