// Whole journeys, from the title to the list of legends or to the end on the way, by clicks alone. What came of each is
// compared with `Tests/Journeys/NAME.txt`, the journal's text of some with `NAME.journal.txt`, and what stood on the
// screen at a few moments with the pictures `Tests/Golden/NAME/MOMENT.png`; UPDATE_GOLDEN=1 writes all of them anew.

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Managers/Sound.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "Tests/Harness/Golden.h"
#include "Tests/Player/Traveller.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Journal/LogText.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Simulation/Records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <vector>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

struct Journey {
    const char* name;
    const char* date; // of the clock: the seed
    Int occupation, month;
    PanelPlayer::Outfit outfit;
    Habits habits;
    std::vector<std::string> moments; // whose pictures are compared, each once; "Journal" compares the journal's text
};

void PrintTo(const Journey& journey, std::ostream* out) { *out << journey.name; }

const Journey kJourneys[] = {
    {"RoadAndFloat", "1848-04-11", 0, 4, {8, 15, 20, 3, 3, 3, 1600}, {2, false, false, 0, 0, true, 3},
        {"Journal", "Crossing0", "Place3", "Hunt11", "HuntReport", "Score"}},
    {"RoadAndFord", "1848-05-02", 3, 5, {8, 12, 20, 2, 2, 2, 1600}, {1, false, false, 0, 0, true},
        {"Journal", "Crossing0", "Report0", "GameOver"}},
    {"RoadAndFerry", "1848-04-03", 0, 4, {7, 12, 20, 2, 2, 2, 1800}, {3, false, false, 1, 0, true},
        {"Crossing8", "Fork15", "Arrival", "Legends"}},
    {"RoadAndGuide", "1848-05-04", 0, 5, {8, 15, 20, 2, 2, 2, 1600}, {4, false, false, 0, 0, true},
        {"Crossing11", "Mourning"}},
    {"OtherWaysAndRaft", "1848-04-05", 0, 4, {8, 15, 20, 3, 3, 3, 1600}, {3, true, true, 0, 0, true},
        {"Journal", "Fork6", "Raft", "RaftReport"}},
    {"OtherWaysAndToll", "1848-06-06", 5, 6, {8, 12, 20, 2, 2, 2, 1600}, {3, true, false, 1, 0, true}, {}},
    {"RoadAndRaft", "1848-04-07", 1, 4, {8, 12, 10, 2, 2, 2, 1000}, {3, false, true, 0, 1, true}, {}},
    {"BarelyProvided", "1848-07-08", 4, 7, {2, 0, 0, 0, 0, 0, 40}, {1, false, false, 2, 2, false}, {}},
    {"LateAndHungry", "1848-07-09", 7, 7, {4, 2, 0, 0, 0, 0, 300}, {2, true, true, 2, 2, true}, {}},
};

/// Compares a text with `Tests/Journeys/FILE`, or accepts it.
void expectText(const std::string& text, const std::string& file)
{
    const std::string path = WR_JOURNEYS "/" + file;
    if (std::getenv("UPDATE_GOLDEN"))
        std::ofstream(path) << text;
    std::ostringstream expected;
    expected << std::ifstream(path).rdbuf();
    EXPECT_EQ(text, expected.str()) << file;
}

/// The journal as it would be exported now.
std::string journalText()
{
    if (!gLogTE || !gLogTE->hText)
        return "";
    std::string text = fromMacRoman(gLogTE->hText->bytes);
    std::ranges::replace(text, '\r', '\n');
    return text;
}

class Journeys : public testing::TestWithParam<Journey> { };

} // namespace

TEST_P(Journeys, EndAsWrittenDown)
{
    const Journey& journey = GetParam();
    GameRun run(Wainroad_main, {{}, {{"WR_DATE", journey.date}}, {}});
    PanelPlayer player(run);
    ASSERT_TRUE(player.setOut("Hob", journey.occupation, journey.month, journey.outfit));
    Traveller traveller(run, journey.habits);
    std::vector<std::string> due = journey.moments;
    const auto look = [&](const std::string& moment) {
        if (std::erase(due, moment) > 0)
            expectFrame(run.frame(), std::string(journey.name) + "/" + moment);
    };
    traveller.onMoment = look;
    EXPECT_TRUE(traveller.travel(60 * 60 * 60)) << "the title does not come back";
    EXPECT_EQ(traveller.fault(), "");

    std::string diary;
    for (const std::string& line : traveller.diary())
        diary += line + "\n";
    expectText(diary, std::string(journey.name) + ".txt");
    if (std::erase(due, "Journal") > 0)
        expectText(journalText(), std::string(journey.name) + ".journal.txt");

    EXPECT_TRUE(player.waitFor(LegendsPanel, 7300));
    run.advance(30);
    look("Legends");
    EXPECT_EQ(due, std::vector<std::string>{}) << "these moments never came";
}

INSTANTIATE_TEST_SUITE_P(
    All, Journeys, testing::ValuesIn(kJourneys), [](const auto& journey) { return journey.param.name; });

TEST(IdleJourney, NothingHappensToWhoStaysAtHome)
{
    GameRun run(Wainroad_main);
    PanelPlayer player(run);
    ASSERT_TRUE(player.setOut());
    run.advance(200);
    const Bytes before = gState.bytes();
    run.advance(60 * 60 * 3);
    EXPECT_EQ(gState.bytes(), before);
}

TEST(StartUp, TheTitleShowsWithinTwoTicksOfTheTunesEnd)
{
    GameRun run(Wainroad_main);
    ASSERT_TRUE(run.runUntil([] { return gChannel && gChannel->userInfo == kSoundPlaying; }, 60));
    const FramePtr before = run.frame();
    ASSERT_TRUE(run.runUntil([] { return gChannel->userInfo != kSoundPlaying; }, 300));
    const Int over = run.ticks();
    ASSERT_TRUE(run.runUntil([&] { return FindPanel(TitlePanel) && run.frame() != before; }, 60));
    EXPECT_LE(run.ticks() - over, 2);
}
