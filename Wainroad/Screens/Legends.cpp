#include "Wainroad/Persistence/Legends.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Screens/Setup.h"
#include "Wainroad/Screens/Title.h"

namespace Wainroad {

namespace {

enum LegendsItems : Int { kLoadItem = 2, kTravelItem = 3, kListItem = 4, kFirstPortrait = 5, kHeadingItem = 10 };
constexpr Int kLegendsTicks = 600; // ten seconds back to the title
constexpr Int kPortraits = 5, kPortraitImages = 9010;
constexpr Int kRankPoints = 3000; // points a rank word
constexpr Int kRankColumn = 150;  // pixels left of the right edge

void drawRow(const View& item, Int row, Int baseline, const FontInfo& font)
{
    const Legend& legend = gLegends[static_cast<std::size_t>(row)];
    MoveTo(item.r.left, baseline);
    DrawString(pstr(std::to_string(row + 1) + "."));
    MoveTo(item.r.left + 2 * font.widMax, baseline);
    DrawString(row < gLegendCount ? legend.name : Str255{0});

    const Int points = row < gLegendCount ? legend.points : 0;
    Str255 text;
    NumToCommas(points, text);
    MoveTo(item.r.right - StringWidth(text), baseline);
    DrawString(text);

    GetIndString(text, 3004, std::min<Int>(points / kRankPoints, 2) + 1);
    MoveTo(item.r.right - kRankColumn, baseline);
    DrawString(text);
}

void drawNoLegends(const View& item, Int baseline)
{
    Str255 text;
    GetIndString(text, 3000, 4);
    MoveTo((item.r.left + item.r.right - StringWidth(text)) / 2, baseline);
    DrawString(text);
}

void drawLegends(View& item)
{
    const StyleScope style(item.style);
    FontInfo font;
    GetFontInfo(font);
    const Int line = font.ascent + font.descent + font.leading;
    if (gLegendCount <= 0) {
        drawNoLegends(item, item.r.top + font.ascent + 3 * line);
        return;
    }
    for (Int row = 0; row < kLegendRows; ++row)
        drawRow(item, row, item.r.top + font.ascent + row * line, font);
}

Int legendsItemProc(View& item, Msg& msg)
{
    if (msg.what != kMsgDraw)
        return UserItem.fn(item, msg);
    drawLegends(item);
    return 1;
}

void openLegends(View& panel)
{
    gLegendFile = 0;
    setLegends(ReadLegends(0));
    AddTimer(panel, kLegendsTicks);
    InstallUserItem(panel, kListItem, LegendsItem);
    for (Int i = 0; i < kPortraits; ++i)
        InstallUserItem(
            panel, kFirstPortrait + i, ImageItemProc, 0, ImageSpec{kPortraitImages, 19010, i, 1, gScreenDepth});
    SetItemJust(panel, kHeadingItem, 1);
}

Int legendsPanelProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            openLegends(panel);
        } else {
            const Str255 none{0};
            ParamText(&none, nullptr, nullptr, nullptr);
        }
        return PanelDescriptor(1, 13, 9010);
    case kMsgClick:
        switch (MsgItem(msg)) {
        case kTravelItem:
            DisableItem(GetMHandle(1003), 1);
            TravelTheTrail();
            break;
        case kLoadItem:
            DisableItem(GetMHandle(1003), 1);
            LoadGame();
            break;
        default: OpenPanel(TitlePanel);
        }
        return 1;
    case kMsgTimer: OpenPanel(TitlePanel); return 1;
    case kMsgClose: RemoveTimer(panel); return 1;
    default: return 0;
    }
}

} // namespace

const ViewProc LegendsPanel{legendsPanelProc};
const ViewProc LegendsItem{legendsItemProc};

} // namespace Wainroad
