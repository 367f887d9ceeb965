#include "Wainroad/Screens/Status.h"

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Screens/Origin.h"
#include "Wainroad/Simulation/Model.h"

#include <string>

namespace Wainroad {

namespace {

constexpr Int kWeatherItem = 2, kGroundItem = 3, kTubeItem = 4;
constexpr Int kWeatherImages = 5600, kThermometerFrame = 10;
constexpr Int kLandmarkNames = 3002;
constexpr Int kLabels = 3013, kMonths = 3014, kWeatherWords = 3012, kPaceWords = 3009, kRationsWords = 3010,
              kHealthWords = 3007;
constexpr Int kWidth = 119, kWeatherWidth = 53; // of the panel, and of the column under the weather's picture
constexpr Int kRight = 116;                     // where values end
constexpr Int kAscent = 10, kDescent = 2;       // of a line of text
constexpr Int kLowFood = 100, kPoorHealth = 105;

struct StatusState {
    Int shownState = 0; // `gStateCount` when last looked at
    Int shownTemp = 0;
    Int blink = 0;
    std::string spoken; // the date and place last told
};
RunState<StatusState> sStatus;

const Wagon& shownWagon() { return WagonOf(gPrev, gMySlot); }
bool wagonIsOut() { return gState.order[static_cast<std::size_t>(gMySlot & 31)] == kNobody; }

Str255 joined(Str255 text, const Str255& more)
{
    PStrAppend(text, more);
    return text;
}

void drawLabel(Int index, Int h, Int baseline)
{
    MoveTo(h, baseline);
    DrawString(ListString(kLabels, index));
}

/// Draws a value that ends at `kRight`; the band from `left` up to it is wiped, unless `left` is negative.
void drawValue(const Str255& text, Int baseline, Int left, bool isBold = false)
{
    TextFace(isBold ? 1 : 0);
    const Int start = kRight - StringWidth(text);
    if (left >= 0)
        EraseRect({baseline - kAscent, left, baseline + kDescent, start});
    MoveTo(start, baseline);
    DrawString(text);
    TextFace(0);
}

void drawHeadings()
{
    TextFace(1);
    TextSize(14);
    DrawCentered(ListString(kLabels, 1), 18, kWidth);
    TextSize(12);
    drawLabel(10, 37, 129);
    drawLabel(11, 41, 177);
}

void drawLabels()
{
    constexpr struct {
        Int index, baseline;
    } kPlaces[] = {{6, 141}, {7, 153}, {3, 189}, {4, 201}, {5, 213}, {2, 225}, {13, 248}};
    for (const auto& place : kPlaces)
        drawLabel(place.index, 3, place.baseline);
}

Str255 dateText()
{
    const std::string day = " " + std::to_string(gPrev.day) + ", " + std::to_string(gPrev.year);
    return joined(ListString(kMonths, gPrev.month), pstr(day));
}

/// Tells date and place, for those who hear the screen: the landmark, or how far it is to it.
void tellDateAndPlace()
{
    std::string text = string(dateText()) + ". ";
    if (gPrev.toNext > 0)
        text +=
            string(ListString(kLabels, 6)) + " " + std::to_string(gPrev.toNext) + string(ListString(kLabels, 9)) + ", ";
    text += string(ListString(kLandmarkNames, gPrev.landmark + 2));
    if (text == sStatus->spoken)
        return;
    sStatus->spoken = text;
    Platform::current().statusChanged(text);
}

void drawDateAndWeather()
{
    DrawCentered(dateText(), 34, kWidth);
    DrawCentered(ListString(kWeatherWords, 2 * gPrev.weather + 1), 90, kWeatherWidth);
    DrawCentered(ListString(kWeatherWords, 2 * gPrev.weather + 2), 102, kWeatherWidth);
}

/// The word of `STR#` 3009 for what the train does.
Int trainState()
{
    if (CountAilments(gPrev, -1, 0, kFlag2Crossing) > 0)
        return 11;
    if ((gPrev.mode & kModeResting) != 0)
        return 4;
    if ((gPrev.mode & kModeMoving) == 0)
        return 10;
    return (gPrev.mode & kModeDelayed) != 0 ? 5 : 9;
}

void drawValues()
{
    const Wagon& wagon = shownWagon();
    const Int food = wagon.supply[kFood], blink = sStatus->blink;
    const Str255 miles = ListString(kLabels, 9);
    drawValue(joined(pstr(std::to_string(gPrev.toNext)), miles), 141, 75);
    drawValue(joined(WithCommas(Held16(gPrev.miles)), miles), 153, -1);
    drawValue(ListString(kPaceWords, gPrev.pace + 1), 189, 60);
    drawValue(ListString(kRationsWords, wagon.rations + 1), 201, 60);
    drawValue(joined(WithCommas(food), ListString(kLabels, 8)), 213, 56, food <= kLowFood && blink == 1);
    drawValue(ListString(kHealthWords, wagon.health / 35 + 1), 225, 56, wagon.health >= kPoorHealth && blink == 1);
    const Int state = trainState();
    drawValue(ListString(kPaceWords, state), 248, 40, (state == 4 || state == 5) && blink == 0);
}

void showWeather(View& panel, Int weather)
{
    InstallUserItem(panel, kWeatherItem, ImageItemProc, 0, ImageSpec{kWeatherImages, 15600, weather, 1, gScreenDepth});
}

/// Loads the picture of another weather into the item that shows it.
void changeWeather(View& panel, Int weather)
{
    View* item = GetItem(panel, kWeatherItem);
    if (!item)
        return;
    item->data.reset();
    showWeather(panel, weather);
    if (item->disabled == 0)
        InvalRect(item->r);
}

/// Takes a new state over and shows what changed.
void updateStatus(View& item)
{
    if (gStateCount == sStatus->shownState)
        return;
    sStatus->shownState = gStateCount;
    const ViewPortScope port(item);
    if (gPrev.weather != gState.weather && item.parent)
        changeWeather(*item.parent, gState.weather);
    if (wagonIsOut() || gState.mode == 0)
        return;
    CopyState(gState, gPrev);
    if (item.disabled == 0)
        DrawStatus(item, false);
}

Int statusItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item)) {
            AddTimer(item, 15);
            if (!wagonIsOut())
                CopyState(gState, gPrev);
            if (item.parent)
                changeWeather(*item.parent, gPrev.weather);
        }
        return 1;
    case kMsgDraw: DrawStatus(item, true); return 1;
    case kMsgTimer: updateStatus(item); return 1;
    default: return TimedItem(item, msg);
    }
}

void drawThermometer(const View& item)
{
    const Int unit = item.r.height() / 5;
    const Int top = item.r.bottom - unit * sStatus->shownTemp;
    PaintRect({top, item.r.left, item.r.bottom, item.r.right});
    EraseRect({item.r.top, item.r.left, top, item.r.right});
}

Int thermometerItemProc(View& item, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(item)) {
            sStatus->shownTemp = 0;
            AddTimer(item, 15);
        }
        return 1;
    case kMsgTimer:
        if (gPrev.temperature != sStatus->shownTemp) {
            sStatus->shownTemp = gPrev.temperature;
            if (item.disabled == 0) {
                const ViewPortScope port(item);
                drawThermometer(item);
            }
        }
        return 1;
    case kMsgDraw: drawThermometer(item); return 1;
    default: return TimedItem(item, msg);
    }
}

Int statusPanelProc(View& panel, Msg& msg)
{
    if (msg.what != kMsgOpen)
        return 0;
    if (ItemsLoaded(panel)) {
        showWeather(panel, gPrev.weather);
        InstallUserItem(
            panel, kGroundItem, ImageItemProc, 0, ImageSpec{kWeatherImages, 15600, kThermometerFrame, 1, gScreenDepth});
        InstallUserItem(panel, kTubeItem, ThermometerItem);
        InstallUserItem(panel, 1, StatusItem);
    } else {
        panel.style.face = 0;
        panel.style.size = 12;
    }
    return PanelDescriptor(1, 7, 5600);
}

} // namespace

const ViewProc StatusPanel{statusPanelProc};
const ViewProc StatusItem{statusItemProc};
const ViewProc ThermometerItem{thermometerItemProc};

void DrawCentered(const Str255& text, Int baseline, Int width)
{
    const Int textWidth = StringWidth(text), left = (width - textWidth) / 2;
    const Int top = baseline - kAscent, bottom = baseline + kDescent;
    EraseRect({top, 0, bottom, left});
    MoveTo(left, baseline);
    DrawString(text);
    EraseRect({top, left + textWidth, bottom, width});
}

void DrawStatus(View& item, bool full)
{
    const OriginScope origin(item);
    const StyleScope style({6322, 0, 0, 12, 0});
    if (full)
        drawHeadings();
    TextFace(0);
    drawDateAndWeather();
    if (full)
        drawLabels();
    drawValues();
    sStatus->blink = 1 - sStatus->blink;
    tellDateAndPlace();
}

} // namespace Wainroad
