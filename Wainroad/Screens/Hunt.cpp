#include "Wainroad/Screens/Hunt.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/Managers/Sound.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Screens/Route.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Goods.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"
#include "Wainroad/Simulation/Random.h"

#include <algorithm>

namespace Wainroad {

std::array<Int, kAnimalKinds> gAnimalOdds{};
Int gHuntCarried = 0, gHuntShot = 0, gHuntResult = 0, gHuntBullets = 0, gLastHuntMiles = 0;
bool gHunting = false;
HuntGround gHuntGround;
bool gHuntSnow = false;

namespace {

const AtRunStart sFreshStart([] {
    gAnimalOdds = {};
    gHuntCarried = gHuntShot = gHuntResult = gHuntBullets = gLastHuntMiles = 0;
    gHunting = gHuntSnow = false;
    gHuntGround = {};
});

constexpr Int kFileMenu = 1001;
constexpr Int kMessages = 3022, kPlaces = 3002;
constexpr Int kJournalHunt = 105, kJournalHunting = 3;
constexpr Int kPlains = 4;   // landmark whose surroundings are open grass
constexpr Int kFewKinds = 2; // kinds left in the end

void enableMenus(bool on)
{
    for (const Int item : {6, 7, 2, 4})
        (on ? EnableItem : DisableItem)(GetMHandle(kFileMenu), item);
}

Str255 message(Int index) { return ListString(kMessages, index); }

Str255 decimal(Int n) { return pstr(std::to_string(n)); }

// ---- Odds

struct Odds {
    std::array<Int, kAnimalKinds> of{};
    Int kinds = 0; // that can appear

    void strikeOut(Int kind)
    {
        of[static_cast<std::size_t>(kind)] = 0;
        --kinds;
    }
};

/// Kinds 4 and 6, which keep to stretches of the road. @return False where kind 5 never comes.
bool addKindsOfTheStretch(Odds& odds, Int landmark)
{
    const bool mountains = landmark > kPlains;
    odds.kinds = 4;
    if (landmark < 3)
        return false;
    if (landmark <= 12) {
        odds.of[6] = landmark == 3 || landmark == 12 ? 7 : 20;
        odds.kinds = 5;
        if (landmark == 11 || landmark == 12 || landmark == kPlains)
            odds.of[4] = 8;
        else if (mountains)
            odds.of[4] = 15;
        else
            return false;
        odds.kinds = 6;
        return true;
    }
    odds.of[4] = landmark == 13 ? 8 : 15;
    odds.kinds = 5;
    return true;
}

Odds baseOdds(const HuntPlace& place)
{
    const Int landmark = place.landmark;
    const bool farWest = landmark >= 10 && landmark <= 14;
    Odds odds;
    odds.of[2] = odds.of[3] = place.fresh ? 40 : 20;
    odds.of[1] = farWest ? 10 : 25;
    odds.of[0] = farWest || landmark > 6 ? 8 : 15;
    const bool mayHaveKindFive = addKindsOfTheStretch(odds, landmark);
    if (mayHaveKindFive && place.month >= 4 && place.month <= 10 && landmark >= 6) {
        odds.of[5] = landmark <= 12 ? 5 : 10;
        ++odds.kinds;
    }
    return odds;
}

// ---- Panels

Int huntWaitProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            AddTimer(panel, 30);
            for (Int sound = 9002; sound <= 9004; ++sound)
                GetResource(os("snd "), sound); // in memory before the first shot
        } else {
            SendCommand(kCommandHunt, 0, 0);
            panel.style = kDefaultStyle;
            panel.style.just = 1;
        }
        return PanelDescriptor(3, 13, 9161);
    case kMsgTimer:
        RemoveTimer(panel);
        OpenPanel(HuntPanel);
        return 1;
    default: return 0;
    }
}

Str255 resultText()
{
    const bool carriedAll = gHuntResult == gHuntShot;
    Str255 text = message(carriedAll ? 2 : gHuntCarried == gHuntResult ? 5 : 6);
    ReplaceFirst(text, "^0", decimal(gHuntShot));
    ReplaceFirst(text, "^1", decimal(gHuntBullets));
    ReplaceFirst(text, "^2", decimal(gHuntResult));
    PStrAppend(text, message(7));
    return text;
}

Int huntResultItemProc(View& item, Msg& msg)
{
    if (msg.what != kMsgDraw)
        return UserItem.fn(item, msg);
    TextStyleRec style = item.style;
    style.face = 1;
    const StyleScope scope(style);
    const Str255 text = resultText();
    TextBox(characters(text), text[0], item.r, 0);
    return 1;
}

Int huntResultProc(View& panel, Msg& msg)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            InstallUserItem(panel, 3, HuntResultItem);
            AddTimer(panel, 600);
            SetKeys(panel, 1, 1, 0);
        }
        return PanelDescriptor(1, 10, 6340);
    case kMsgClick:
    case kMsgTimer: ShowTravelScreen(); return 1;
    case kMsgClose:
        ClearKeys();
        RemoveTimer(panel);
        WaitForSound();
        return 1;
    default: return 0;
    }
}

/// Serves a refusal: one text, one button, and for some a time after which it goes by itself (0 for none).
Int refusal(View& panel, Msg& msg, const Str255& text, Int ticks)
{
    switch (msg.what) {
    case kMsgOpen:
        if (ItemsLoaded(panel)) {
            SetKeys(panel, 1, 1, 0);
            if (ticks > 0)
                AddTimer(panel, ticks);
        } else {
            ParamText(&text, nullptr, nullptr, nullptr);
        }
        return PanelDescriptor(1, 10, 6320);
    case kMsgClick:
    case kMsgTimer: ShowTravelScreen(); return 1;
    case kMsgClose:
        if (ticks > 0)
            RemoveTimer(panel);
        return 1;
    default: return 0;
    }
}

Int noHuntingHereProc(View& panel, Msg& msg)
{
    Str255 text = message(1), place;
    GetIndString(place, kPlaces, gState.landmark + 2);
    ReplaceFirst(text, "^0", place);
    return refusal(panel, msg, text, 0);
}
Int noBulletsProc(View& panel, Msg& msg) { return refusal(panel, msg, message(3), 300); }
Int severeWeatherProc(View& panel, Msg& msg) { return refusal(panel, msg, message(4), 300); }

} // namespace

const ViewProc HuntWaitPanel{huntWaitProc};
const ViewProc HuntResultPanel{huntResultProc};
const ViewProc HuntResultItem{huntResultItemProc};
const ViewProc NoHuntingHerePanel{noHuntingHereProc};
const ViewProc NoBulletsPanel{noBulletsProc};
const ViewProc SevereWeatherPanel{severeWeatherProc};

HuntGround GroundOf(const HuntPlace& place)
{
    const Int landmark = place.landmark;
    HuntGround ground;
    ground.hasGround = landmark != kPlains;
    ground.mountains = landmark > kPlains;
    ground.backdrop = ground.mountains ? 1 : 0;
    if (landmark < kPlains)
        ground.noBushes = landmark < 2;
    else if (landmark > kPlains)
        ground.noBushes = landmark == 5 || (landmark >= 7 && landmark <= 10) || landmark >= 14;
    ground.desert = landmark <= kPlains && (place.month < 4 || place.month > 9);
    return ground;
}

std::array<Int, kAnimalKinds> DrawOdds(const HuntPlace& place)
{
    Odds odds = baseOdds(place);
    if (place.fresh)
        odds.strikeOut(2 + (Random() & 1));
    do {
        const Int kind = RandomN(kAnimalKinds);
        if (odds.of[static_cast<std::size_t>(kind)] != 0)
            odds.strikeOut(kind);
    } while (odds.kinds > kFewKinds);
    return odds.of;
}

bool HuntPlaceIsFresh() { return Held16(gState.miles) != gLastHuntMiles; }

void Hunt()
{
    if (gState.toNext == 0) {
        OpenPanel(NoHuntingHerePanel);
        return;
    }
    if (gState.wagons != 1)
        return;
    if (Held16(WagonOf(gState, gMySlot).supply[kBullets]) == 0) {
        gHunting = false;
        OpenPanel(NoBulletsPanel);
        return;
    }
    if (CountAilments(gState, -1, 0xF0, kFlag2Crossing) > 0) {
        SysBeep(1);
        return;
    }
    gTrain.mode &= ~kModeMoving;
    SendAction(kJournalHunting, 0);
    gHunting = true;
    StartHunt();
}

void StartHunt()
{
    enableMenus(false);
    const HuntPlace place{gState.landmark, gState.month, HuntPlaceIsFresh()};
    gHuntGround = GroundOf(place);
    gHuntSnow = gState.snow != 0;
    gAnimalOdds = DrawOdds(place);
    gHuntCarried = gState.wagon[static_cast<std::size_t>(gMySlot & 31)].people > 1 ? 200 : 100;
    if (gHunting)
        OpenPanel(HuntWaitPanel);
    else
        enableMenus(true);
}

void HuntOver(Int pounds, Int shots)
{
    pounds = Held8(pounds);
    if (pounds != 0)
        gLastHuntMiles = Held16(gState.miles);
    const Int food = WagonOf(gState, gMySlot).supply[kFood];
    if (pounds + food > gSupplyLimit[kFood])
        pounds = Held8(gSupplyLimit[kFood] - food);
    SendCommand(kCommandHunted, pounds, shots);

    ByteWriter news;
    WriteDate(news, gTrain);
    news.u8(kJournalHunt);
    news.u8(gMySlot);
    news.u8(pounds);
    news.u8(pounds);
    QueuePackets(kPacketNews, kAllNodes, news.bytes, I(news.bytes.size()), 0);

    gHuntResult = pounds;
    gHuntBullets = shots;
    enableMenus(true);
    OpenPanel(HuntResultPanel);
}

} // namespace Wainroad
