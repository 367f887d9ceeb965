#include "Wainroad/Screens/Score.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/EditItems.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Journal/LogText.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Persistence/Legends.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Simulation/Goods.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Scoring.h"

namespace Wainroad {

Int gFinalScore = 0;

namespace {

const AtRunStart sFreshStart([] { gFinalScore = 0; });

enum ScoreItems : Int { kGoOn = 1, kTable = 2, kNameField = 3 };
constexpr Int kWords = 3004, kHealthWords = 3007, kOccupations = 3005, kMonths = 3014, kTexts = 3000;
constexpr Int kNobodysName = 18; // of STR# 3000, for an empty field
constexpr Int kLabelColumn = 60; // pixels left of the right edge
constexpr Int kRuleWidth = 50;

Str255 lowered(Str255 text)
{
    for (std::size_t i = 1; i < text.size(); ++i)
        if (text[i] >= 'A' && text[i] <= 'Z')
            text[i] = static_cast<std::uint8_t>(text[i] + 'a' - 'A');
    return text;
}

Str255 decimal(Int n) { return pstr(std::to_string(n)); }

const Wagon& myWagon() { return WagonOf(gState, gMySlot); }

// ---- The table

/// One row: how many of what, worth how much. `one` and `many` are indices of `STR#` 3004.
struct Row {
    Int points, count, one, many, each;
};

std::array<Row, 8> rowsOf(const Wagon& wagon)
{
    const auto& supply = wagon.supply;
    const Int head = PointsPerPerson(wagon.health), pairs = (supply[kOxen] + 1) / 2;
    const Int parts = supply[kFirstPart] + supply[kSecondPart] + supply[kThirdPart];
    return {{
        {wagon.people * head, wagon.people, 18, 11, head},
        {50, 1, 5, 5, 50},
        {pairs * 4, pairs, 19, 12, 4},
        {parts * 2, parts, 20, 13, 2},
        {supply[kClothes] * 2, supply[kClothes], 21, 14, 2},
        {supply[kBullets] / 50, supply[kBullets], 22, 15, 50},
        {supply[kFood] / 25, supply[kFood], 23, 16, 25},
        {wagon.money / 500, wagon.money / 100, 24, 17, 5},
    }};
}

/// Draws lines of an explanation and a value, both right-justified, from top to bottom.
class TableDrawer {
public:
    explicit TableDrawer(const Rect& box) : box_(box)
    {
        FontInfo font;
        GetFontInfo(font);
        line_ = font.ascent + font.descent + font.leading;
        baseline_ = box.top + font.ascent;
    }

    void row(const Str255& explanation, const Str255& value)
    {
        toRight(explanation, box_.right - kLabelColumn);
        toRight(value, box_.right);
        baseline_ += line_;
    }
    /// Draws a rule below the last row, with the sign of what is done to the numbers above it.
    void rule(std::string_view sign)
    {
        const Int v = baseline_ - line_ + 3;
        MoveTo(box_.right - kRuleWidth, baseline_ - line_);
        DrawString(pstr(sign));
        MoveTo(box_.right - kRuleWidth, v);
        LineTo(box_.right - 1, v);
        baseline_ += 2;
    }

private:
    void toRight(const Str255& text, Int right) const
    {
        MoveTo(right - StringWidth(text), baseline_);
        DrawString(text);
    }

    Rect box_;
    Int line_ = 0, baseline_ = 0;
};

Str255 explanationOf(const Row& row, const Wagon& wagon)
{
    Str255 text, words = ListString(kWords, row.count == 1 ? row.one : row.many);
    NumToCommas(row.count, text);
    ReplaceFirst(words, "^0", lowered(ListString(kHealthWords, wagon.health / 35 + 1)));
    ReplaceFirst(words, "^1", decimal(row.each));
    PStrAppend(text, words);
    return text;
}

/// The result as the table shows it.
Int tableResult(const Wagon& wagon)
{
    Int sum = 0;
    for (const Row& row : rowsOf(wagon))
        sum += row.points;
    return (sum * gOccupationBonus[static_cast<std::size_t>(wagon.occupation & 7)] + 1) / 2;
}

void drawScore(View& item)
{
    TextStyleRec style = item.style;
    style.size = 12;
    const StyleScope scope(style);
    const Wagon& wagon = myWagon();
    TableDrawer table(item.r);
    Int sum = 0;
    for (const Row& row : rowsOf(wagon)) {
        table.row(explanationOf(row, wagon), WithCommas(row.points));
        sum += row.points;
    }
    table.rule("+");
    table.row(Str255{0}, WithCommas(sum));

    const Int occupation = wagon.occupation & 7, bonus = gOccupationBonus[static_cast<std::size_t>(occupation)];
    Str255 label = ListString(kOccupations, occupation + 1);
    PStrAppend(label, ListString(kWords, 6));
    table.row(label, pstr(std::to_string(bonus / 2) + (occupation >= 5 ? ".5" : "")));
    table.rule("x");
    table.row(ListString(kWords, 4), WithCommas(tableResult(wagon)));
}

Int scoreItemProc(View& item, Msg& msg)
{
    if (msg.what != kMsgDraw)
        return UserItem.fn(item, msg);
    drawScore(item);
    return 1;
}

// ---- The panel

/// The line of the score for the text copy of the journal.
void tellJournal(const Wagon& wagon)
{
    Str255 line = ListString(kWords, wagon.people == 1 ? 26 : 27), points;
    ReplaceFirst(line, "^0", lowered(ListString(kHealthWords, wagon.health / 35 + 1)));
    NumToCommas(tableResult(wagon), points);
    for (const Str255& part : {pstr(" "), ListString(kWords, 4), pstr(" "), points, pstr(".")})
        PStrAppend(line, part);
    LogAppendString(gLogTE, line, true);
}

void prepareScore()
{
    gLegendFile = 0;
    setLegends(ReadLegends(0));
    gFinalScore = WagonScore(gMySlot);
    Str255 date = ListString(kMonths, gPrev.month);
    PStrAppend(date, pstr(" " + std::to_string(gPrev.day) + ", " + std::to_string(gPrev.year)));
    ParamText(&date, nullptr, nullptr, nullptr);
    if (LegendRank(gFinalScore) < 0)
        gFinalScore = 0;
    tellJournal(myWagon());
}

void openScore(View& panel)
{
    InstallUserItem(panel, kTable, ScoreItem);
    if (gFinalScore > 0)
        AskLegendName(panel, gState.names[static_cast<std::size_t>(gMySlot & 31)]);
    else
        SetKeys(panel, 1, 1, 0);
}

void leaveScore(View& panel)
{
    if (gFinalScore >= 1)
        EnterLegend(panel, 0, kNobodysName);
    ClearKeys();
    if (gState.slots >= 2)
        OpenPanel(TrainScorePanel);
    else
        ToTitle();
}

Int scorePanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel))
            openScore(panel);
        else
            prepareScore();
        return PanelDescriptor(1, 13, gFinalScore > 0 ? 9100 : 9130);
    case kMsgClick:
        if (MsgItem(msg) == kGoOn)
            leaveScore(panel);
        return 1;
    default: return 0;
    }
}

} // namespace

const ViewProc ScorePanel{scorePanelProc};
const ViewProc ScoreItem{scoreItemProc};

void AskLegendName(View& panel, const Str255& name)
{
    SetKeys(panel, 1, 1, 0);
    gTENumeric = 0;
    gTEMaxChars = kLegendNameLength;
    gTELimitWidth = 1;
    gTEMaxWidth = kLegendNameWidth;
    gEditItems = 0;
    SetItemText(panel, kNameField, characters(name));
    SelectItemText(panel, kNameField, 0, 32767);
}

void EnterLegend(View& panel, Int list, Int fallback)
{
    Str255 name{0};
    GetItemText(panel, kNameField, name);
    if (name.size() < 2)
        name = ListString(kTexts, fallback);
    OpenConfigForUpdate();
    setLegends(GetLegends(list));
    AddLegend(gFinalScore, name);
    WriteLegends(list, legendBytes());
    CloseConfig();
}

} // namespace Wainroad
