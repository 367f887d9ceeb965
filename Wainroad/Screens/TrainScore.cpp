#include "Wainroad/Screens/Score.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Journal/Names.h"
#include "Wainroad/Persistence/Legends.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Scoring.h"

#include <algorithm>

namespace Wainroad {

namespace {

constexpr Int kTexts = 3000, kWords = 3004;
constexpr Int kNobodysTrain = 19, kTrainRanks = 20, kTrainEnds = 21; // of STR# 3000
constexpr Int kMostListed = 8;
constexpr std::uint8_t kDivisionSign = 214;

struct TrainState {
    Int firstWagon = 0;
    Int ditl = 9140;
};
RunState<TrainState> s;

Int firstUsedSlot()
{
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        if (SlotUsed(gState, slot))
            return slot;
    return 0;
}

/// The slot whose player names the entry.
Int namingSlot() { return gState.captain < kMaxWagons ? gState.captain : s->firstWagon; }

void prepareTrainScore()
{
    gLegendFile = 1;
    setLegends(ReadLegends(1));
    s->firstWagon = firstUsedSlot();
    gFinalScore = TrainScore();
    s->ditl = 9120;
    if (LegendRank(gFinalScore) < 0) {
        gFinalScore = -1;
        s->ditl = 9140;
    } else if (gMySlot != namingSlot()) {
        gFinalScore = 0;
        s->ditl = 9110;
    }
    Str255 text;
    WagonName(text, namingSlot());
    PStrAppend(text, ListString(kTexts, gFinalScore > 0 ? kTrainRanks : kTrainEnds));
    ParamText(&text, nullptr, nullptr, nullptr);
}

void openTrainScore(View& panel)
{
    InstallUserItem(panel, 2, gState.slots <= kMostListed ? TrainScoreList : TrainScoreTotal);
    if (gFinalScore > 0)
        AskLegendName(panel, Str255{0});
    else
        SetKeys(panel, 1, 1, 0);
}

Int trainScoreProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            openTrainScore(panel);
        else
            prepareTrainScore();
        return PanelDescriptor(1, 13, s->ditl);
    case kMsgClick:
        if (MsgItem(msg) == 1) {
            if (gFinalScore >= 1)
                EnterLegend(panel, 1, kNobodysTrain);
            ClearKeys();
            ToTitle();
        }
        return 1;
    default: return 0;
    }
}

/// Draws rows of a number and its label.
struct RowDrawer {
    Rect box;
    Int baseline, step;

    void row(const Str255& number, const Str255& label)
    {
        constexpr Int kNumberColumn = 70;
        MoveTo(box.left + kNumberColumn - StringWidth(number), baseline);
        DrawString(number);
        MoveTo(box.left + kNumberColumn + 8, baseline);
        DrawString(label);
        baseline += step;
    }
};

void drawTrainTotal(RowDrawer& rows)
{
    rows.row(WithCommas(TrainScoreSum()), ListString(kWords, 7));
    Str255 count{1, kDivisionSign};
    PStrAppend(count, pstr(" " + std::to_string(gState.slots)));
    rows.row(count, ListString(kWords, 8));
    rows.row(WithCommas(TrainScore()), ListString(kWords, 9));
}

void drawTrain(View& item, bool listed)
{
    TextStyleRec style = item.style;
    style.size = 12;
    const StyleScope scope(style);
    FontInfo font;
    GetFontInfo(font);
    RowDrawer rows{item.r, item.r.top + font.ascent, font.ascent + font.descent + font.leading};
    for (Int slot = 0; listed && slot < std::min(gState.slots, kMostListed); ++slot) {
        TextFace(slot == gMySlot ? 1 : 0);
        Str255 name;
        WagonName(name, slot);
        rows.row(WithCommas(WagonScore(slot)), name);
    }
    TextFace(style.face);
    drawTrainTotal(rows);
}

Int trainListProc(View& item, Msg& msg)
{
    if (msg.what != kMsgDraw)
        return UserItem.fn(item, msg);
    drawTrain(item, true);
    return 1;
}

Int trainTotalProc(View& item, Msg& msg)
{
    if (msg.what != kMsgDraw)
        return UserItem.fn(item, msg);
    drawTrain(item, false);
    return 1;
}

} // namespace

const ViewProc TrainScorePanel{trainScoreProc};
const ViewProc TrainScoreList{trainListProc};
const ViewProc TrainScoreTotal{trainTotalProc};

} // namespace Wainroad
