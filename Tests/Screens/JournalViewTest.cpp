// The journal on the travel screen: whatever is scrolled and added, it shows what the store holds.

#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Tests/Player/PanelPlayer.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Journal/LogView.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

class JournalView : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(player.setOut("Ann"));
        run.advance(120);
        ASSERT_TRUE(gLogView);
    }
    /// A day on which some things happen, a few of them to others.
    void tellOfADay(Int things)
    {
        gTrain.day = gTrain.day % 28 + 1;
        for (Int i = 0; i < things; ++i)
            switch (pick(6)) {
            case 0: TrainNews(pick(13)); break;
            case 1: News(26 + pick(4), 0, pick(5), true); break;
            case 2: News(36, pick(3), 1, true); break; // of slots 1 and 2: hidden
            case 3: SendLosses(63, 0, std::array<Int, kSupplyCount>{0, pick(9), 40, 1, 2, 3, 0}, 0); break;
            case 4: Arrived(45, pick(16)); break;
            case 5: News(25, pick(2), 0, true); break;
            }
        run.advance(20); // more than the view's timer
    }
    void scrollTo(Int top)
    {
        const ViewPortScope port(*gLogView);
        ScrollLog(*gLogView, gLogTop, std::clamp<Int>(top, 0, gLogMax));
    }
    /// Every line that the player can see, from the whole store.
    static std::vector<LogLine> wholeJournal()
    {
        std::vector<LogLine> lines;
        LogLayout layout(*gLogView, 0);
        Int index = 0;
        for (Int offset = 0; offset < gLogInfo.end; offset = NextMessage(offset))
            layout.add(index++, offset, [&](LogLine line) { lines.push_back(std::move(line)); });
        return lines;
    }
    /// The lines in view lie in the cache, as a walk through the store from its beginning finds them.
    static void expectCacheIsRight()
    {
        ASSERT_LE(I(gLogCache.size()), kLogCacheSize);
        const std::vector<LogLine> all = wholeJournal();
        ASSERT_EQ(gLogInfo.lines, all.empty() ? 0 : all.back().endLine());
        ASSERT_EQ(gLogMax, std::max<Int>(gLogInfo.lines - kLogViewLines, 0));
        for (const LogLine& line : all) {
            if (line.endLine() <= gLogTop || line.firstLine >= gLogTop + kLogViewLines)
                continue;
            const auto cached = std::ranges::find(gLogCache, line.firstLine, &LogLine::firstLine);
            ASSERT_NE(cached, gLogCache.end()) << "line " << line.firstLine << ", view from " << gLogTop;
            ASSERT_EQ(cached->index, line.index) << "line " << line.firstLine;
            ASSERT_EQ(cached->text, line.text) << "line " << line.firstLine;
        }
    }
    /// What stands on the screen is what drawing all of it anew gives.
    void expectPictureIsRight()
    {
        run.advance(40); // no news is on its way any more
        const auto shown = pixelsOfView();
        {
            const ViewPortScope port(*gLogView);
            InvalRect(gLogView->r);
        }
        run.advance(6);
        ASSERT_TRUE(shown == pixelsOfView());
    }
    std::vector<std::uint8_t> pixelsOfView() const
    {
        const Rect& r = gLogView->r;
        const FramePtr frame = run.frame();
        std::vector<std::uint8_t> pixels;
        for (Int v = r.top; v < r.bottom; ++v)
            for (Int h = r.left; h < r.right; ++h)
                pixels.push_back(frame->pixels[static_cast<std::size_t>(v * frame->width + h)]);
        return pixels;
    }
    Int pick(Int n) { return static_cast<Int>(choose_() % static_cast<std::uint32_t>(n)); }

    GameRun run{Wainroad_main};
    PanelPlayer player{run};

private:
    std::mt19937 choose_{4};
};

} // namespace

TEST_F(JournalView, ShowsTheStoreHoweverItIsScrolled)
{
    for (Int step = 0; step < 300; ++step) {
        SCOPED_TRACE(step);
        switch (pick(8)) {
        case 0: scrollTo(gLogTop - 1); break;
        case 1: scrollTo(gLogTop + 1); break;
        case 2: scrollTo(gLogTop - 7); break;
        case 3: scrollTo(gLogTop + 7); break;
        case 4: scrollTo(pick(gLogMax + 1)); break;
        case 5: scrollTo(gLogMax); break;
        default: tellOfADay(1 + pick(12));
        }
        expectCacheIsRight();
        if (step % 7 == 0)
            expectPictureIsRight();
        if (HasFatalFailure())
            return;
    }
    EXPECT_GT(gLogInfo.count, 300);
}

TEST_F(JournalView, AStoreThatIsTrimmedTakesTheViewAlong)
{
    while (gLogInfo.end < kLogBytes - 800)
        tellOfADay(20);
    bool trimmed = false;
    for (Int step = 0; step < 250; ++step) {
        SCOPED_TRACE(step);
        const Int before = gLogInfo.end;
        if (pick(4) == 0)
            scrollTo(pick(gLogMax + 1));
        tellOfADay(1 + pick(15));
        trimmed |= gLogInfo.end < before;
        expectCacheIsRight();
        if (step % 7 == 0)
            expectPictureIsRight();
        if (HasFatalFailure())
            return;
    }
    EXPECT_TRUE(trimmed);
}

TEST_F(JournalView, StaysWhereItIsPutForFifteenSecondsAndThenFollowsTheNews)
{
    for (int i = 0; i < 8; ++i)
        tellOfADay(4);
    EXPECT_EQ(gLogTop, gLogMax);
    scrollTo(2);
    tellOfADay(4);
    EXPECT_EQ(gLogTop, 2);
    run.advance(900);
    EXPECT_EQ(gLogTop, 2) << "not without news";
    tellOfADay(3);
    while (gLogTop == 2 && gLogInfo.count < 400)
        tellOfADay(3); // some of it may be hidden
    EXPECT_EQ(gLogTop, gLogMax);
    expectPictureIsRight();
}

TEST_F(JournalView, ItsScrollBarMovesALineAPageAndByItsThumb)
{
    for (int i = 0; i < 12; ++i)
        tellOfADay(5);
    const View* bar = GetItem(*gLogView->parent, 2);
    ASSERT_TRUE(bar);
    const std::string h = std::to_string((bar->r.left + bar->r.right) / 2);
    const auto click = [&](Int v) { run.play("click " + h + " " + std::to_string(v) + "\nwait 0.1"); };
    const Int end = gLogMax;
    ASSERT_GT(end, 20);
    click(bar->r.top + 5);
    EXPECT_EQ(gLogTop, end - 1);
    click(bar->r.bottom - 5);
    EXPECT_EQ(gLogTop, end);
    click(bar->r.top + 20);
    EXPECT_EQ(gLogTop, end - 7);
    run.play("down " + h + " " + std::to_string(bar->r.top + 20) + "\nwait 3\nup " + h + " "
        + std::to_string(bar->r.top + 20));
    EXPECT_LT(gLogTop, 8); // until the thumb is under the mouse
    expectCacheIsRight();
    expectPictureIsRight();
}
