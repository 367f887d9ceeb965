#include "Tests/Walk/Stops.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Menus.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Alerts.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Journal/LogView.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Persistence/Legends.h"
#include "Wainroad/Screens/Arrival.h"
#include "Wainroad/Screens/Choices.h"
#include "Wainroad/Screens/Crossing.h"
#include "Wainroad/Screens/DiskCalls.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Guide.h"
#include "Wainroad/Screens/Hunt.h"
#include "Wainroad/Screens/Mourning.h"
#include "Wainroad/Screens/Party.h"
#include "Wainroad/Screens/Raft.h"
#include "Wainroad/Screens/Rest.h"
#include "Wainroad/Screens/Resume.h"
#include "Wainroad/Screens/River.h"
#include "Wainroad/Screens/Route.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Screens/Scene.h"
#include "Wainroad/Screens/Score.h"
#include "Wainroad/Screens/Setup.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Store.h"
#include "Wainroad/Screens/Talk.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Screens/Trade.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"

#include <array>

namespace Harness {

using namespace MacToolbox;
using namespace Wainroad;

namespace {

constexpr Int kPlayMenu = 1003, kManagementMenu = 1004;

using From = Visit::From;

// ---- States that a stop needs

void standAt(Visit& v, Int landmark)
{
    v.change([&](GameState& train) {
        train.landmark = landmark;
        train.toNext = 0;
    });
}

void wayfarers(Visit& v, Int wagons)
{
    for (GameState* state : {&gTrain, &gState}) {
        state->wagons = state->slots = wagons;
        for (Int slot = 1; slot < wagons; ++slot) {
            state->order[static_cast<std::size_t>(slot)] = slot;
            state->names[static_cast<std::size_t>(slot)] = pstr("Wagoner " + std::to_string(slot));
            state->wagon[static_cast<std::size_t>(slot)].copy(state->wagon[0]);
        }
    }
    v.run.advance(5);
}

void talkTo(Visit& v)
{
    wayfarers(v, 3);
    v.open(TalkChoicePanel);
    v.player.click(TalkChoicePanel, 1);
}

void atRiver(Visit& v, const ViewProc& panel, Int place = 9)
{
    v.change([&](GameState& train) {
        train.landmark = place;
        train.toNext = 0;
        train.riverDepth = 13, train.riverWidth = 100;
    });
    v.open(panel);
}

void afterCrossing(Visit& v, Int result)
{
    gCrossResult = result;
    gCrossMethod = kFerry;
    v.open(CrossingResultPanel);
}

void withOffer(Visit& v, bool nobody)
{
    for (int tries = 0; tries < 40; ++tries) { // who comes by is drawn
        gWantItem = kFood;
        gWantAmount = 100;
        v.open(TradeOfferPanel);
        if (gNobodyHasIt == nobody)
            return;
        ClosePanel(TradeOfferPanel);
    }
}

void overStore(Visit& v, const PanelPlayer::Outfit& outfit)
{
    v.player.fillStore(outfit);
    v.player.click(StorePanel, 15);
}

void loseAll(Wagon& wagon)
{
    wagon.supply = {};
    wagon.money = wagon.people = 0;
    wagon.health = 139;
}

void trainAtTheEnd(Visit& v, Int captain, bool rich)
{
    wayfarers(v, 4);
    gState.captain = captain;
    if (!rich) {
        for (Wagon& wagon : gState.wagon)
            loseAll(wagon);
        v.inGame([] { // a book that is full of better trains
            OpenConfigForUpdate();
            setLegends(GetLegends(1));
            for (Int i = 0; i < kLegendRows; ++i)
                AddLegend(9000 + i, pstr("The long train"));
            WriteLegends(1, legendBytes());
            CloseConfig();
        });
    }
    v.open(TrainScorePanel);
}

void resume(Visit& v)
{
    gResume = PtrToHand(Bytes(kResumeBytes, 1));
    for (Int slot : {0, 3, 7}) {
        gResume->bytes[static_cast<std::size_t>(kResumeFreeAt + slot)] = 0;
        const Str255 name = pstr("Wagoner " + std::to_string(slot));
        std::copy(name.begin(), name.end(), gResume->bytes.begin() + kResumeNamesAt + kResumeNameBytes * slot);
    }
    v.open(ResumePanel);
}

// ---- Dialogs

void choose(Visit& v, Int menu, Int item)
{
    v.run.choose(menu, item);
    v.run.advance(20);
}

void unlock(Visit& v)
{
    choose(v, kManagementMenu, 2);
    v.run.play("type " + string(gOptions.password) + "\nkey return\nwait 0.5");
}

void manage(Visit& v, Int item)
{
    unlock(v);
    choose(v, kManagementMenu, item);
}

void clickInDialog(Visit& v, Point at)
{
    if (!Visit::dialog())
        return;
    const Rect place = Visit::dialog()->contentRect.offsetBy(-gWindow->contentRect.left, -gWindow->contentRect.top);
    v.run.play("down " + std::to_string(place.left + at.h) + " " + std::to_string(place.top + at.v) + "\nwait 0.2");
}

void aboutTheMachine(Visit& v)
{
    constexpr Int kWheel = 9;
    choose(v, 1000, 1);
    v.clickDialog(kWheel);
    v.clickDialog(kWheel);
}

void introduction(Visit& v, Int page)
{
    choose(v, kPlayMenu, 1);
    for (Int n = 1; n < page; ++n)
        v.clickDialog(1);
}

/// Shows a menu as the Toolbox pops it up.
void popUp(Visit& v, Int id)
{
    v.run.play("down 200 60");
    v.inGame([id] { PopUpMenuSelect(GetMHandle(id), 40, 150, 1); });
}

void atFork(Visit& v, Int place)
{
    standAt(v, place);
    v.open(RoutePanel);
}

const Stop kStops[] = {
    // Before the journey
    {"Title", From::start, &TitlePanel, [](Visit&) {}},
    {"Legends", From::start, &LegendsPanel, {}},
    {"Introduction to the party", From::start, &IntroPanel, {}},
    {"Party", From::start, &PartyPanel2, {}},
    {"No name", From::start, &NoNamePanel, [](Visit& v) { v.open(PartyPanel2), v.player.click(PartyPanel2, 1); }},
    {"Occupations", From::start, &OccupationsInfoPanel,
        [](Visit& v) { v.open(PartyPanel2), v.open(OccupationsInfoPanel); }},
    {"Resume", From::start, &ResumePanel, resume},
    {"Store", From::store, &StorePanel, [](Visit&) {}},
    {"Store, filled", From::store, &StorePanel, [](Visit& v) { v.player.fillStore({}); }},
    {"Store: advice", From::store, &StoreHelpPanel, {}},
    {"Store: too dear", From::store, &CantAffordPanel, {}},
    {"Store: no oxen", From::store, &NeedOxenFoodPanel, {}},
    {"Store: too many oxen", From::store, &TooManyPanel,
        [](Visit& v) {
            overStore(v, {21, 0, 0, 0, 0, 0, 100});
        }},
    {"Store: too many wheels", From::store, &TooManyPanel,
        [](Visit& v) {
            overStore(v, {4, 2, 2, 4, 0, 0, 100});
        }},
    {"Month", From::store, &MonthPanel, {}},
    // The travel screen
    {"At the start", From::road, &StatusPanel, [](Visit&) {}},
    {"Map", From::road, &TravelPanel, [](Visit& v) { v.player.click(LeftButtonsPanel, 2); }},
    {"Rolling", From::rolling, &TimeOutPanel, [](Visit&) {}},
    {"Party on the road", From::road, &PartyPanel, {}},
    {"Guide", From::road, &GuidePanel, {}},
    {"Topics", From::road, &GuideTopicsPanel, [](Visit& v) { v.open(GuidePanel), v.open(GuideTopicsPanel); }},
    {"Rations", From::road, &RationsPanel, {}},
    {"Same rations", From::road, &SameRationsPanel, {}},
    {"About rations", From::road, &RationsInfoPanel, {}},
    {"Pace", From::road, &PacePanel, {}},
    {"Same pace", From::road, &SamePacePanel, {}},
    {"About pace", From::road, &PaceInfoPanel, {}},
    {"Rest", From::road, &RestPanel, {}},
    {"Rest: no such days", From::road, &RestRangePanel, {}},
    {"Talk", From::road, &TalkPanel, [](Visit& v) { v.player.click(RightButtonsPanel, 3); }},
    {"Talk, choice", From::road, &TalkChoicePanel, {}},
    {"Talk to", From::road, &TalkToPanel, talkTo},
    {"Say", From::road, &SayPanel, [](Visit& v) { talkTo(v), v.player.click(TalkToPanel, 1); }},
    {"Trade", From::road, &TradeWantPanel, {}},
    {"Trade: message", From::road, &TradeMessagePanel,
        [](Visit& v) {
            v.open(TradeWantPanel);
            v.player.type("0");
            v.player.click(TradeWantPanel, 1);
        }},
    {"Trade: offer", From::road, &TradeOfferPanel, [](Visit& v) { withOffer(v, false); }},
    {"Trade: no offer", From::road, &TradeOfferPanel, [](Visit& v) { withOffer(v, true); }},
    {"Store on the road", From::road, &StorePanel, [](Visit& v) { v.player.click(LeftButtonsPanel, 6); }},
    {"No store here", From::road, &OnlyFortsPanel, {}},
    {"Cannot go on", From::road, &CantContinuePanel, {}},
    {"First fork", From::road, &RoutePanel, [](Visit& v) { atFork(v, 6); }},
    {"Second fork", From::road, &RoutePanel, [](Visit& v) { atFork(v, 13); }},
    {"Toll or raft", From::road, &RoutePanel, [](Visit& v) { atFork(v, 15); }},
    {"No money for the toll", From::road, &NoTollPanel, {}},
    {"Travel scene", From::road, &TravelScenePanel, {}},
    {"Leave", From::road, &ExitPanel, {}},
    {"Quit", From::road, &QuitPanel, {}},
    {"Only at rest", From::road, &OnlyInTimeOutPanel, {}},
    {"Mourning", From::road, &MourningPanel, [](Visit& v) { v.open(MourningPanel), v.open(MourningTextPanel); }},
    // Hunting
    {"No hunting here", From::road, &NoHuntingHerePanel, {}},
    {"No bullets", From::road, &NoBulletsPanel, {}},
    {"Severe weather", From::road, &SevereWeatherPanel, {}},
    {"Before the hunt", From::road, &HuntWaitPanel, [](Visit& v) { OpenPanel(HuntWaitPanel), v.run.advance(10); }},
    {"Hunt", From::rolling, &HuntPanel,
        [](Visit& v) {
            v.player.click(RightButtonsPanel, 6);
            v.run.advance(900);
        }},
    {"After the hunt", From::road, &HuntResultPanel,
        [](Visit& v) {
            gHuntShot = 1842, gHuntResult = gHuntCarried = 200, gHuntBullets = 20;
            v.open(HuntResultPanel);
        }},
    // Rivers and the raft
    {"River with a ferry", From::road, &RiverPanel, [](Visit& v) { atRiver(v, RiverPanel); }},
    {"River with a guide", From::road, &RiverPanel, [](Visit& v) { atRiver(v, RiverPanel, 11); }},
    {"River: too shallow", From::road, &TooShallowPanel, [](Visit& v) { atRiver(v, TooShallowPanel); }},
    {"River: no ferry", From::road, &NoFerryNeededPanel, [](Visit& v) { atRiver(v, NoFerryNeededPanel); }},
    {"River: ferry too dear", From::road, &NoFerryMoneyPanel, [](Visit& v) { atRiver(v, NoFerryMoneyPanel); }},
    {"River: guide too dear", From::road, &NoClothesPanel, [](Visit& v) { atRiver(v, NoClothesPanel); }},
    {"About rivers", From::road, &RiverInfoPanel, [](Visit& v) { atRiver(v, RiverInfoPanel); }},
    {"Crossing", From::road, &CrossingPanel,
        [](Visit& v) {
            atRiver(v, RiverPanel);
            v.player.click(RiverPanel, 1);
            v.run.advance(200);
        }},
    {"Waiting to cross", From::road, &CrossWaitPanel, [](Visit& v) { wayfarers(v, 4), v.open(CrossWaitPanel); }},
    {"Crossed", From::road, &CrossingResultPanel, [](Visit& v) { afterCrossing(v, kCrossMud); }},
    {"Crossed with losses", From::road, &CrossingResultPanel, [](Visit& v) { afterCrossing(v, kCrossLosses2); }},
    {"Before the raft", From::road, &RaftIntroPanel, [](Visit& v) { OpenPanel(RaftIntroPanel), v.run.advance(10); }},
    {"Raft", From::road, &RaftPanel,
        [](Visit& v) {
            v.inGame(StartRaft);
            v.run.advance(400);
        }},
    {"End of the raft", From::road, &ArrivingPanel, {}},
    // Ends
    {"Arrival", From::road, &ArrivalPanel, {}},
    {"Lost", From::road, &GameOverPanel, {}},
    {"Score, entered", From::road, &ScorePanel,
        [](Visit& v) { WagonOf(gState, gMySlot).money = 6'000'000, v.open(ScorePanel); }},
    {"Score", From::road, &ScorePanel, [](Visit& v) { loseAll(WagonOf(gState, gMySlot)), v.open(ScorePanel); }},
    {"Score of the train, named", From::road, &TrainScorePanel, [](Visit& v) { trainAtTheEnd(v, 0, true); }},
    {"Score of the train, by another", From::road, &TrainScorePanel, [](Visit& v) { trainAtTheEnd(v, 1, true); }},
    {"Score of the train, low", From::road, &TrainScorePanel, [](Visit& v) { trainAtTheEnd(v, 0, false); }},
    // Dialogs
    {"About", From::road, nullptr, [](Visit& v) { choose(v, 1000, 1); }},
    {"About the machine", From::road, nullptr, aboutTheMachine},
    {"Introduction 1", From::road, nullptr, [](Visit& v) { introduction(v, 1); }},
    {"Introduction 2", From::road, nullptr, [](Visit& v) { introduction(v, 2); }},
    {"Introduction 3", From::road, nullptr, [](Visit& v) { introduction(v, 3); }},
    {"About the management", From::road, nullptr, [](Visit& v) { choose(v, kManagementMenu, 1); }},
    {"Lock", From::road, nullptr,
        [](Visit& v) {
            choose(v, kManagementMenu, 2);
            v.run.play("type open\nwait 0.2");
        }},
    {"Lock: wrong password", From::road, nullptr,
        [](Visit& v) {
            choose(v, kManagementMenu, 2);
            v.run.play("type wrong\nkey return\nwait 0.5");
        }},
    {"Management of legends", From::road, nullptr, [](Visit& v) { manage(v, 4); }},
    {"Legends: restore?", From::road, nullptr, [](Visit& v) { manage(v, 4), v.clickDialog(6); }},
    {"Management of time", From::road, nullptr, [](Visit& v) { manage(v, 5); }},
    {"Time: hunts", From::road, nullptr,
        [](Visit& v) {
            manage(v, 5), clickInDialog(v, {140, 150});
        }},
    {"Management of the network", From::road, nullptr, [](Visit& v) { manage(v, 6); }},
    {"Network: sure?", From::road, nullptr,
        [](Visit& v) { manage(v, 6), v.clickDialog(gOptions.mode == 0 ? 6 : 4), v.clickDialog(1); }},
    {"Password", From::road, nullptr, [](Visit& v) { manage(v, 7); }},
    {"Password: empty", From::road, nullptr,
        [](Visit& v) {
            manage(v, 7);
            v.run.play("type " + string(gOptions.password) + "\nwait 0.2");
            v.clickDialog(1);
        }},
    // Alerts
    {"Disk full", From::road, nullptr, [](Visit& v) { v.inGame(TellDiskIsFull); }},
    {"Disk error", From::road, nullptr, [](Visit& v) { v.inGame([] { DiskError(dskFulErr, false); }); }},
    {"Fatal disk error", From::road, nullptr, [](Visit& v) { v.inGame([] { DiskError(fnfErr, true); }); }},
    {"Fatal error", From::road, nullptr, [](Visit& v) { v.inGame([] { Fatal(resNotFound, "the walk"); }); }},
    // Menus
    {"Menu 1000", From::road, nullptr, [](Visit& v) { popUp(v, 1000); }},
    {"Menu 1001", From::road, nullptr, [](Visit& v) { popUp(v, 1001); }},
    {"Menu 1002", From::road, nullptr, [](Visit& v) { popUp(v, 1002); }},
    {"Menu 1003", From::road, nullptr, [](Visit& v) { popUp(v, 1003); }},
    {"Menu 1004", From::road, nullptr, [](Visit& v) { popUp(v, 1004); }},
};

} // namespace

std::vector<Surface> surfacesOf(const Visit&)
{
    std::vector<Surface> found;
    for (const WindowPtr& window : WindowManager::shared().windows)
        if (const auto front = std::dynamic_pointer_cast<DialogRecord>(window); front && front->visible)
            found.push_back(surfaceOf("dialog", front));
    if (!found.empty() || !gRootView)
        return found;
    Surface window{"window", gRootView->r, {}};
    for (const auto& panel : gRootView->children)
        if (panel->disabled == 0) {
            found.push_back(surfaceOf("panel", *panel));
            window.boxes.push_back({I(found.size()), panel->r, panel->r, {0, 0}, {}, true, false, false});
        }
    found.push_back(window);
    return found;
}

std::span<const Stop> stops() { return kStops; }

bool visit(Visit& game, const Stop& stop)
{
    if (!game.run.running())
        return false;
    if (stop.open)
        stop.open(game);
    else
        game.open(*stop.panel);
    game.run.advance(10);
    return game.run.running() && (!stop.panel || game.player.waitFor(*stop.panel, 120));
}

} // namespace Harness
