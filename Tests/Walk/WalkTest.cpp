// A walk over everything that the game shows: each panel, dialog, alert and menu is opened once on the real resource
// files and looked at for what a player would stumble over, and its picture goes on one sheet.

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "Tests/Managers/ToyResources.h"
#include "Tests/Walk/ContactSheet.h"
#include "Tests/Walk/Stops.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Screens/Choices.h"
#include "Wainroad/Screens/Crossing.h"
#include "Wainroad/Screens/Guide.h"
#include "Wainroad/Screens/Hunt.h"
#include "Wainroad/Screens/Party.h"
#include "Wainroad/Screens/River.h"
#include "Wainroad/Screens/Score.h"
#include "Wainroad/Screens/Store.h"
#include "Wainroad/Screens/Talk.h"
#include "Wainroad/Screens/Trade.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

/// Overlaps that are meant: a caption that breaks the frame it stands on.
constexpr std::pair<const char*, const char*> kMeant[] = {{"About", "item 7 (t88 l14 b200 r346) overlaps item 8"}};

bool isMeant(const std::string& stop, const std::string& fault)
{
    return std::any_of(std::begin(kMeant), std::end(kMeant), [&](const auto& meant) {
        return stop.starts_with(meant.first) && fault.find(meant.second) != std::string::npos;
    });
}

std::vector<std::string> faultsIn(const Visit& game)
{
    std::vector<std::string> all;
    for (const Surface& surface : surfacesOf(game))
        for (const std::string& fault : faultsOf(surface))
            all.push_back(fault);
    return all;
}

/// What of these types no stop of the walk has asked for.
std::vector<std::string> unseen(const std::set<std::pair<OSType, Int>>& seen)
{
    const std::set<std::pair<OSType, Int>> kNotShown{
        {os("ALRT"), 1000}, {os("ALRT"), 2040},   // stand beside the dialogs of their numbers
        {os("DLOG"), -4000}, {os("DLOG"), -3999}, // tell the place of the host's file panels
    };
    std::vector<std::string> missed;
    for (const char* type : {"DITL", "DLOG", "ALRT", "MENU", "CNTL", "PICT"})
        for (const Int id : ResourceManager::shared().ids(os(type), false))
            if (!seen.contains({os(type), id}) && !kNotShown.contains({os(type), id}))
                missed.push_back(std::string(type) + " " + std::to_string(id));
    return missed;
}

} // namespace

TEST(Walk, ShowsEveryScreenWhole)
{
    ContactSheet sheet;
    std::set<std::pair<OSType, Int>> seen;
    std::vector<std::string> missed;
    for (const Stop& stop : stops()) {
        SCOPED_TRACE(stop.name);
        Visit game(stop.from);
        EXPECT_TRUE(visit(game, stop)) << "it does not open";
        EXPECT_TRUE(stop.panel || game.dialog() || std::string(stop.name).starts_with("Menu")) << "no dialog is open";
        sheet.add(game.run.frame(), stop.name);
        for (const std::string& fault : faultsIn(game))
            EXPECT_TRUE(isMeant(stop.name, fault)) << fault;
        const auto used = ResourceManager::shared().inMemory();
        seen.insert(used.begin(), used.end());
        missed = unseen(seen);
    }
    EXPECT_EQ(missed, std::vector<std::string>{}) << "no stop of the walk shows these";
    EXPECT_EQ(sheet.count(), stops().size());
    EXPECT_TRUE(sheet.write(WR_CONTACT_SHEET));
}

TEST(Walk, DialogsLeaveNothingBehind)
{
    for (const Stop& stop : stops()) {
        if (stop.panel)
            continue;
        SCOPED_TRACE(stop.name);
        Visit game(stop.from);
        const FramePtr before = game.run.frame();
        visit(game, stop);
        EXPECT_FALSE(before->pixels == game.run.frame()->pixels) << "nothing shows";
        if (const DialogPtr dialog = game.dialog()) {
            const Rect outline = dialog->structRect();
            EXPECT_EQ(outline.intersection(Screen::bounds), outline) << "it reaches beyond the screen";
        }
        game.run.play("up 200 300\nwait 0.2");
        game.answerDialogs();
        game.run.advance(30);
        EXPECT_TRUE(!game.run.running() || before->pixels == game.run.frame()->pixels);
    }
}

TEST(Walk, AnAlertThatIsLargerThanItsDialogLeavesNothingBehindEither)
{
    constexpr Int kCancel = 2;
    Visit game(Visit::From::road);
    const FramePtr before = game.run.frame();
    game.run.choose(1004, 2);
    game.run.advance(30);
    const Handle alert = GetResource(os("ALRT"), 2003);
    alert->set16(4, 290), alert->set16(6, 490);
    game.run.play("type x\nkey return\nwait 0.5\nkey return\nwait 0.5");
    ASSERT_TRUE(game.dialog());
    game.clickDialog(kCancel);
    game.run.advance(30);
    ASSERT_FALSE(game.dialog());
    EXPECT_TRUE(before->pixels == game.run.frame()->pixels);
}

namespace {

/// A panel whose words depend on the state, and the states that make them long.
struct Variants {
    const char* name;
    const ViewProc* panel;
    Int count;
    void (*set)(Int n);
};

Wagon& myWagon() { return WagonOf(gState, gMySlot); }

void standAt(Int place) { gState.landmark = place, gState.toNext = 0; }

const Variants kVariants[] = {
    {"talk", &TalkPanel, 17 * 3, [](Int n) { standAt(n / 3), gTalkTurn = n % 3 + 1; }},
    {"place", &LandmarkNamePanel, 18, [](Int n) { standAt(n - 1); }},
    {"no hunting", &NoHuntingHerePanel, 18, [](Int n) { standAt(n - 1); }},
    {"store", &StorePanel, 18, [](Int n) { standAt(n - 1), myWagon().money = 999'999; }},
    {"rations", &SameRationsPanel, 3, [](Int n) { myWagon().rations = n; }},
    {"pace", &SamePacePanel, 3, [](Int n) { gState.pace = n; }},
    {"river", &RiverPanel, 4,
        [](Int n) {
            standAt(std::array<Int, 4>{0, 1, 8, 11}[static_cast<std::size_t>(n)]);
            gState.riverDepth = 45, gState.riverWidth = 188;
        }},
    {"offer", &TradeOfferPanel, 8 * 12,
        [](Int n) { gWantItem = n % 8, gWantAmount = gWantItem == kTradeMoney ? 999'900 : 9999; }},
    {"crossing", &CrossingResultPanel, 5, [](Int n) { gCrossLoss = {}, gCrossResult = n, gCrossMethod = kFerry; }},
    {"illness", &PartyPanel, 10, [](Int n) { myWagon().illness.fill(n); }},
    {"score", &ScorePanel, 8,
        [](Int n) { myWagon().occupation = n, myWagon().supply.fill(2000), myWagon().money = 9'999'999; }},
};

} // namespace

TEST(Walk, WordsFitWhateverTheStateFillsIn)
{
    for (const Variants& variants : kVariants) {
        Visit game(Visit::From::road);
        for (Int n = 0; n < variants.count; ++n) {
            variants.set(n);
            ClosePanel(*variants.panel);
            OpenPanel(*variants.panel);
            game.run.advance(3);
            ASSERT_TRUE(game.player.shows(*variants.panel)) << variants.name << ' ' << n;
            if (variants.panel == &CrossingResultPanel) { // the longest list
                gCrossLoss.supplies.fill(2000);
                gCrossLoss.drowned = {0, 1, 1, 1, 1};
            }
            for (const std::string& fault : faultsIn(game))
                ADD_FAILURE() << variants.name << ' ' << n << ": " << fault;
        }
    }
}

TEST(Walk, TheReportOfAHuntFits)
{
    constexpr Int kReport = 3, kMore = 60;
    Visit game(Visit::From::road);
    gHuntShot = 1942, gHuntBullets = 20;
    for (const auto& [result, carried] : {std::pair<Int, Int>{1942, 200}, {200, 200}, {100, 200}, {0, 200}}) {
        gHuntResult = result, gHuntCarried = carried;
        ClosePanel(HuntResultPanel);
        game.open(HuntResultPanel);
        View* report = GetItem(*FindPanel(HuntResultPanel), kReport);
        ASSERT_TRUE(report);
        const Int bottom = report->r.bottom;
        report->r.bottom += kMore; // what its box cuts off would show below
        const Surface surface = surfaceOf("report", *FindPanel(HuntResultPanel));
        const BitMap& drawn = surface.boxes[kReport - 1].drawn;
        Int below = 0;
        for (Int v = bottom; v < bottom + kMore; ++v)
            for (Int h = report->r.left; h < report->r.right; ++h)
                below += drawn.get(h, v);
        EXPECT_EQ(below, 0) << result;
        report->r.bottom = bottom;
    }
}

TEST(Walk, EveryTitleFitsTheGuideAndItsIndex)
{
    constexpr Int kTitles = 3150, kTitleItem = 4, kList = 3, kScrollBar = 16, kIndent = 5;
    Visit game(Visit::From::road);
    game.open(GuidePanel);
    const View* title = GetItem(*FindPanel(GuidePanel), kTitleItem);
    const Int titleRoom = title->r.width();
    game.open(GuideTopicsPanel);
    View* list = GetItem(*FindPanel(GuideTopicsPanel), kList);
    const Int listRoom = list->r.width() - kScrollBar - kIndent;
    const ViewPortScope port(*list);
    for (Int page = 1; page <= kGuidePages; ++page) {
        const Str255 words = ListString(kTitles, page);
        EXPECT_GT(words.size(), 1U) << page;
        const StyleScope inList(list->style);
        EXPECT_LE(StringWidth(words), listRoom) << string(words);
        const StyleScope onPage({6322, 1, 0, 14, 0});
        EXPECT_LE(StringWidth(words), titleRoom) << string(words);
    }
}

TEST(Walk, WideNamesKeepToTheirPartOfTheParty)
{
    Visit game(Visit::From::road);
    game.change([](GameState& train) {
        const Name15 wide = pstr("WWWWWWWWWWWWWWW");
        train.names[0] = wide;
        train.wagon[0].family.fill(wide);
    });
    for (const Int people : {5, 3}) {
        game.change([&](GameState& train) { train.wagon[0].startPeople = people; });
        ClosePanel(PartyPanel);
        game.open(PartyPanel);
        EXPECT_EQ(faultsIn(game), std::vector<std::string>{}) << people;
    }
}

// ---- What the walk finds

namespace {

enum ItemType : Int { kClickable = 0, kButton = 4, kText = 136 };
struct PlantedItem {
    Int type;
    Rect r;
    const char* text;
};

Bytes itemList(const std::vector<PlantedItem>& items)
{
    Form form;
    form.u16(I(items.size()) - 1);
    for (const PlantedItem& item : items) {
        const std::string text = item.text;
        form.u32(0).rect(item.r).u8(item.type).counted(text).zeros(I(text.size()) & 1);
    }
    return form.bytes;
}

struct Planted {
    const char* fault; // part of what is said, "" for a list without a fault
    std::vector<PlantedItem> items;
};
const Planted kPlanted[] = {
    {"", {{kButton, {150, 180, 170, 250}, "OK"}, {kText, {10, 10, 60, 250}, "Some words"}}},
    {"item 1 (t150 l180 b170 r250) overlaps item 2",
        {{kButton, {150, 180, 170, 250}, "OK"}, {kText, {130, 10, 155, 250}, "Some words"}}},
    {"overlaps item 0", {{kButton, {150, 180, 170, 250}, "OK"}, {kText, {10, 10, 148, 250}, "Under the ring"}}},
    {"item 2 (t10 l10 b30 r90) cuts its text",
        {{kButton, {150, 180, 170, 250}, "OK"}, {kText, {10, 10, 30, 90}, "Many words that need more than a line"}}},
    {"item 2 (t10 l10 b40 r60) cuts its text",
        {{kButton, {150, 180, 170, 250}, "OK"}, {kText, {10, 10, 40, 60}, "Unbreakable"}}},
    {"item 1 (t150 l220 b170 r250) cuts its text",
        {{kButton, {150, 220, 170, 250}, "Go ahead"}, {kText, {10, 10, 60, 200}, "Words"}}},
    {"item 1 (t150 l180 b170 r250) cannot be reached",
        {{kButton, {150, 180, 170, 250}, "OK"}, {kClickable, {100, 100, 180, 255}, ""}}},
    {"item 1 (t150 l180 b150 r250) cannot be reached",
        {{kButton, {150, 180, 150, 250}, "OK"}, {kText, {10, 10, 60, 200}, "Words"}}},
    {"lies outside", {{kButton, {150, 220, 170, 290}, "OK"}, {kText, {10, 10, 60, 200}, "Words"}}},
};

/// True if the fault is said of the panel or dialog that shows, and for "" that none is.
bool isFound(const Visit& game, const Rect& room, const std::string& wanted)
{
    const Point by = room.topLeft();
    std::string said;
    for (Surface surface : surfacesOf(game)) {
        if (surface.room != room)
            continue;
        for (Box& box : surface.boxes)
            box.r = box.r.offsetBy(-by.h, -by.v), box.ink = box.ink.offsetBy(-by.h, -by.v);
        surface.room = room.offsetBy(-by.h, -by.v);
        for (const std::string& fault : faultsOf(surface))
            said += fault + '\n';
    }
    return wanted.empty() ? said.empty() : said.find(wanted) != std::string::npos;
}

} // namespace

TEST(Walk, FindsPlantedFaultsInAPanel)
{
    Visit game(Visit::From::road);
    for (const Planted& planted : kPlanted) {
        GetResource(os("DITL"), 6031)->bytes = itemList(planted.items);
        ClosePanel(SameRationsPanel);
        game.open(SameRationsPanel);
        ASSERT_TRUE(game.player.shows(SameRationsPanel));
        EXPECT_TRUE(isFound(game, FindPanel(SameRationsPanel)->r, planted.fault)) << planted.fault;
    }
}

TEST(Walk, FindsPlantedFaultsInADialog)
{
    for (const Planted& planted : kPlanted) {
        if (std::string(planted.fault) == "overlaps item 0")
            continue; // the ring of an alert is drawn round whatever its first item is
        Visit game(Visit::From::road);
        GetResource(os("DITL"), 2003)->bytes = itemList(planted.items);
        const Handle alert = GetResource(os("ALRT"), 2003);
        alert->set16(4, alert->s16(0) + 199), alert->set16(6, alert->s16(2) + 262);
        game.inGame([] { Alert(2003); });
        ASSERT_TRUE(game.dialog());
        EXPECT_TRUE(isFound(game, game.dialog()->portRect(), planted.fault)) << planted.fault;
    }
}
