#include "Tests/Simulation/ModelFixture.h"

namespace Wainroad {

class Hazards : public ModelTest {
protected:
    Hazards() { fresh(0); }
    void fresh(Int occupation)
    {
        form(occupation);
        gTrain.landmark = 3, gTrain.toNext = 100, gTrain.mode = kModeLive | kModeMoving;
        gTrain.temperature = 2, gTrain.weather = 0, gTrain.rain = 5, gTrain.snow = 0;
        news.clear();
        gMessages = {};
        gMessageCount = 0;
    }
    /// Runs `work` from a fresh party over many seeds, and calls `check` with the draws made and the codes told.
    template <typename Work, typename Check> void overSeeds(Int occupation, Work work, Check check)
    {
        for (Int seed = 1; seed <= 400; ++seed) {
            fresh(occupation);
            const Int drawn = draws(seed * 7919, work);
            SCOPED_TRACE(seed);
            check(drawn, codes());
        }
    }
};

TEST_F(Hazards, AQuietDayDrawsItsOdds)
{
    // Mild, fair, before the high country, not in the months of berries: health, storm, mishap, lost trail, delay,
    // thief.
    int quiet = 0;
    overSeeds(0, RandomEvents, [&](Int drawn, const std::vector<Int>& told) {
        EXPECT_GE(drawn, 6);
        if (told.empty() && drawn == 6)
            ++quiet;
    });
    EXPECT_GT(quiet, 300);

    const auto quietDraws = [&](auto change) {
        Int fewest = 1000;
        for (Int seed = 1; seed <= 200; ++seed) {
            fresh(0);
            change();
            fewest = std::min(fewest, draws(seed * 7919, RandomEvents));
        }
        return fewest;
    };
    EXPECT_EQ(quietDraws([] { gTrain.temperature = 3; }), 7) << "snakebite";
    EXPECT_EQ(quietDraws([] { gTrain.temperature = 1; }), 7) << "blizzard";
    EXPECT_EQ(quietDraws([] { gTrain.month = 5; }), 7) << "berries";
    EXPECT_EQ(quietDraws([] { gTrain.month = 10; }), 6);
    EXPECT_EQ(quietDraws([&] { wagon().supply[kFood] = 0; }), 7) << "found food";
    EXPECT_EQ(quietDraws([] { gTrain.landmark = 12; }), 7) << "rough trail";
    EXPECT_EQ(quietDraws([] { gTrain.rain = 0; }), 7) << "drought";
    EXPECT_EQ(quietDraws([] { gTrain.snow = 3001; }), 7) << "deep snow";
    EXPECT_EQ(quietDraws([] { gTrain.weather = 4; }), 6) << "heavy rain tosses nothing for a blizzard";
    EXPECT_EQ(quietDraws([] { gTrain.wagons = 0; }), 0);
}

TEST_F(Hazards, ADelayNeverShortensALongerOne)
{
    overSeeds(
        0, [] { gTrain.delayDays = 5, LostTrail(); },
        [](Int drawn, const std::vector<Int>& told) {
            EXPECT_EQ(drawn, 2);
            EXPECT_EQ(gTrain.delayDays, 5);
            EXPECT_FALSE(gTrain.mode & kModeDelayed);
            ASSERT_EQ(told.size(), 1u);
            EXPECT_TRUE(told[0] == 2 || told[0] == 3);
        });
    overSeeds(0, Lost, [this](Int drawn, const std::vector<Int>& told) {
        EXPECT_EQ(drawn, 3) << "wagon, person, days";
        EXPECT_TRUE(gTrain.mode & kModeDelayed);
        EXPECT_GE(gTrain.delayDays, 1);
        EXPECT_LE(gTrain.delayDays, 5);
        EXPECT_EQ(told, std::vector<Int>{28});
        EXPECT_NE(news[0][5] >> 5, 0) << "the head never gets lost while others live";
    });
}

TEST_F(Hazards, TheHeadIsPickedLast)
{
    fresh(0);
    Wagon& w = wagon();
    w.illness = {kWell, kDead, kDead, kWell, kDead};
    w.people = 2;
    for (int i = 0; i < 50; ++i)
        EXPECT_EQ(PickPerson(w), 3);
    w.people = 1, w.illness[3] = kDead;
    EXPECT_EQ(draws(5, [&] { EXPECT_EQ(PickPerson(w), 0); }), 0);
    w.people = 4; // a state that cannot be: nobody to find
    EXPECT_EQ(draws(5, [&] { EXPECT_EQ(PickPerson(w), 0); }), 1000);
    w = Wagon();
    w.people = 255, w.startPeople = 255;
    for (int i = 0; i < 50; ++i)
        EXPECT_LT(PickPerson(w), 5);
}

TEST_F(Hazards, WithoutAUsedSlotNobodyIsPicked)
{
    gTrain.order.fill(kNobody);
    for (void (*hazard)() : {Snakebite, BrokenBone, OxProblem, BrokenPart, Lost, Accident, Thief, FindAbandonedWagon})
        EXPECT_EQ(draws(3, hazard), 0);
    EXPECT_TRUE(codes().empty());
}

TEST_F(Hazards, BonesAndBites)
{
    overSeeds(0, Snakebite, [this](Int drawn, const std::vector<Int>& told) {
        EXPECT_EQ(drawn, 3);
        EXPECT_EQ(told, std::vector<Int>{29});
        const auto member = static_cast<std::size_t>(news[0][5] >> 5);
        EXPECT_EQ(wagon().illness[member], kSnakebite);
        EXPECT_GE(wagon().illDays[member], 9);
        EXPECT_LE(wagon().illDays[member], 11);
    });
    overSeeds(
        0, [this] { wagon().illDays.fill(40), BrokenBone(); },
        [this](Int drawn, const std::vector<Int>& told) {
            EXPECT_EQ(drawn, 4);
            const auto member = static_cast<std::size_t>(news[0][5] >> 5);
            EXPECT_EQ(told[0], 26 + wagon().illness[member]);
            EXPECT_EQ(wagon().illDays[member], 40) << "the longer time stays";
        });
}

TEST_F(Hazards, APartBreaks)
{
    // Without a smith or a wainwright three coins fall all the same; with one, heads on their own coin mends.
    for (const Int occupation : {0, 1, 2}) {
        overSeeds(
            occupation, [this] { wagon().supply[kSecondPart] = 0, BrokenPart(); },
            [&](Int drawn, const std::vector<Int>& told) {
                ASSERT_EQ(told.size(), 1u);
                const Int part = news[0][5] >> 5;
                EXPECT_TRUE(part >= 3 && part <= 5);
                switch (told[0]) {
                case 30:
                    EXPECT_TRUE(drawn == 5 || (occupation == 1 && drawn == 3) || (occupation == 2 && drawn == 4));
                    break;
                case 33:
                    EXPECT_EQ(drawn, 5);
                    EXPECT_EQ(wagon().supply[static_cast<std::size_t>(part)], 0);
                    break;
                case 34:
                    EXPECT_EQ(drawn, 5);
                    EXPECT_EQ(part, kSecondPart);
                    EXPECT_EQ(wagon().flags, kFlagSecondBroken);
                    EXPECT_FALSE(gTrain.mode & kModeMoving);
                    break;
                default: ADD_FAILURE() << told[0];
                }
            });
    }
    const auto told = [this](Int occupation, Int wagons, Int code) {
        int count = 0;
        overSeeds(
            occupation, [&] { gTrain.wagons = wagons, BrokenPart(); },
            [&](Int, const std::vector<Int>& all) { count += all[0] == code; });
        return count;
    };
    EXPECT_GT(told(1, 2, 32), 0);
    EXPECT_GT(told(2, 2, 31), 0);
    EXPECT_EQ(told(1, 1, 32), 0) << "alone, nobody is named";
    EXPECT_EQ(told(0, 2, 31), 0);
}

TEST_F(Hazards, OxenFallIll)
{
    overSeeds(0, OxProblem, [this](Int drawn, const std::vector<Int>& told) {
        EXPECT_EQ(drawn, 1) << "only the wagon: no drover, no coin";
        EXPECT_EQ(told, std::vector<Int>{23});
        EXPECT_EQ(wagon().supply[kOxen], 11);
    });
    overSeeds(
        4, [this] { wagon().supply[kOxen] = 5, OxProblem(); },
        [this](Int drawn, const std::vector<Int>& told) {
            EXPECT_EQ(drawn, 2);
            EXPECT_EQ(told[0], wagon().supply[kOxen] == 5 ? 22 : 24);
        });
    overSeeds(
        4, [this] { wagon().supply[kOxen] = 0, OxProblem(); },
        [](Int drawn, const std::vector<Int>& told) { EXPECT_TRUE(drawn == 1 && told.empty()); });
}

TEST_F(Hazards, AThiefTakesWhatThereIs)
{
    std::array<int, 4> kinds{};
    overSeeds(
        0,
        [this] {
            wagon().supply = {7, 50, 0, 0, 0, 0, 2000}, wagon().money = 150;
            Thief();
        },
        [&](Int drawn, const std::vector<Int>& told) {
            const Wagon& w = wagon();
            if (w.money != 150) { // no bullets: the cash
                EXPECT_EQ(w.money, 50);
                EXPECT_EQ(drawn, 3);
                EXPECT_EQ(hex(std::span(news[0]).subspan(6)), zeros(10) + "00000064");
                ++kinds[2];
            } else if (w.supply[kOxen] != 7) {
                EXPECT_EQ((7 - w.supply[kOxen]) % 2, 0) << "oxen go in pairs";
                ++kinds[0];
            } else {
                ++kinds[w.supply[kClothes] != 50 ? 1 : 3];
                EXPECT_GE(w.supply[kFood], 1900);
            }
            EXPECT_EQ(drawn, 3);
            EXPECT_LE(told.size(), 1u);
        });
    for (const int count : kinds)
        EXPECT_GT(count, 40);
    // One ox, or a poor wagon: empty-handed, and nothing is told.
    overSeeds(
        0,
        [this] {
            wagon().supply = {1, 0, 0, 0, 0, 0, 0}, wagon().money = 100;
            Thief();
        },
        [this](Int, const std::vector<Int>& told) {
            EXPECT_EQ(wagon().supply[kOxen], 1);
            EXPECT_EQ(wagon().money, 100);
            EXPECT_TRUE(told.empty());
        });
}

TEST_F(Hazards, AccidentsAndFinds)
{
    overSeeds(
        0, [this] { wagon().supply = {}, Accident(); },
        [](Int drawn, const std::vector<Int>& told) {
            EXPECT_GE(drawn, 7);
            EXPECT_LE(drawn, 13);
            EXPECT_TRUE(told.empty());
        });
    overSeeds(0, Accident, [this](Int, const std::vector<Int>& told) {
        EXPECT_EQ(wagon().supply[kOxen], 12);
        const bool lost = wagon().supply != std::array<Int, 7>{12, 10, 400, 1, 1, 1, 1000};
        EXPECT_EQ(told, lost ? std::vector<Int>{65} : std::vector<Int>{});
    });
    bool full = false;
    overSeeds(
        0, [this] { wagon().supply[kBullets] = 1970, FindAbandonedWagon(); },
        [&](Int drawn, const std::vector<Int>& told) {
            EXPECT_EQ(told, std::vector<Int>{63}) << "told also when nothing was found";
            EXPECT_GE(drawn, 6);
            EXPECT_LE(drawn, 11);
            const Int found = news[0][8] << 8 | news[0][9];
            EXPECT_EQ(wagon().supply[kBullets], found ? 1980 : 1970);
            EXPECT_TRUE(found == 0 || (found >= 20 && found < 60));
            full |= found > 10;
            EXPECT_LE(wagon().supply[kFirstPart], 3);
            EXPECT_EQ(wagon().supply[kFood], 1000);
        });
    EXPECT_TRUE(full) << "the journal tells of more than the wagon could take";
}

TEST_F(Hazards, WeatherStrikesByTemperature)
{
    const struct {
        Int temperature, landmark, weather;
        std::vector<Int> told;
        void (*hazard)();
    } kCases[] = {{0, 3, 136, {7}, Blizzard}, {1, 3, 136, {7}, Blizzard}, {2, 3, 0, {}, Blizzard},
        {3, 3, 0, {}, Blizzard}, {4, 3, 135, {8}, Blizzard}, {5, 3, 135, {8}, Blizzard}, {5, 11, 137, {1}, Storm},
        {4, 11, 0, {}, Storm}, {5, 12, 0, {}, Storm}};
    for (const auto& c : kCases) {
        fresh(0);
        gTrain.temperature = c.temperature, gTrain.landmark = c.landmark;
        EXPECT_EQ(draws(5, c.hazard), 0);
        EXPECT_EQ(gTrain.weather, c.weather) << c.temperature;
        EXPECT_EQ(codes(), c.told) << c.temperature;
    }
    overSeeds(
        0, [] { gTrain.landmark = 12, Storm(); },
        [](Int drawn, const std::vector<Int>& told) {
            EXPECT_EQ(drawn, 1);
            EXPECT_EQ(told.empty(), gTrain.delayDays == 0);
        });
    overSeeds(0, Drought, [this](Int drawn, const std::vector<Int>& told) {
        EXPECT_EQ(drawn, 1);
        EXPECT_EQ(wagon().x62, told[0] == 9 ? 0 : told[0] == 11 ? 20 : 10);
    });
    overSeeds(0, RoughTrail, [this](Int drawn, const std::vector<Int>& told) {
        EXPECT_EQ(told[0], wagon().x62 == 10 ? 4 : 5);
        EXPECT_EQ(drawn, told[0] == 4 ? 1 : 2);
    });
}

TEST_F(Hazards, BerriesFillUpToTheLimit)
{
    for (const auto& [before, after, told] :
        {std::tuple<Int, Int, bool>{0, 20, true}, {1990, 2000, true}, {2000, 2000, false}, {2500, 2500, false}}) {
        fresh(0);
        wagon().supply[kFood] = before;
        Berries(wagon(), 0);
        EXPECT_EQ(wagon().supply[kFood], after);
        EXPECT_EQ(codes().size(), told ? 1u : 0u);
    }
}

TEST_F(Hazards, IllnessThenDeathUnlessSaved)
{
    const struct {
        Int illness, code;
    } kDeaths[] = {{0, 54}, {1, 54}, {2, 55}, {3, 54}, {4, 56}, {5, 57}, {6, 58}, {7, 59}, {8, 54}};
    for (const auto& c : kDeaths) {
        overSeeds(
            0,
            [&] {
                wagon().illness.fill(c.illness), wagon().health = 120;
                SomeoneSuffers(wagon(), 0);
            },
            [&](Int drawn, const std::vector<Int>& told) {
                EXPECT_EQ(drawn, 1) << "no doctor, no draw";
                EXPECT_EQ(told, std::vector<Int>{c.code});
                EXPECT_EQ(wagon().people, 4);
                EXPECT_EQ(wagon().health, 105);
                EXPECT_EQ(wagon().x62, 20);
                EXPECT_EQ(gMessages[0].kind, kMessageDeath);
            });
        int saved = 0;
        overSeeds(
            3,
            [&] {
                wagon().illness.fill(c.illness);
                SomeoneSuffers(wagon(), 0);
            },
            [&](Int drawn, const std::vector<Int>& told) {
                EXPECT_EQ(drawn, 2);
                saved += told[0] == 52;
            });
        const bool bone = c.illness < 2;
        EXPECT_GT(saved, bone ? 150 : 90) << c.illness; // of 400: a half or a third
        EXPECT_LT(saved, bone ? 250 : 180) << c.illness;
    }
    overSeeds(
        0, [this] { SomeoneSuffers(wagon(), 0); },
        [this](Int drawn, const std::vector<Int>& told) {
            EXPECT_EQ(drawn, 3) << "person, illness, days";
            EXPECT_GE(told[0], 37);
            EXPECT_LE(told[0], 42);
            const auto member = static_cast<std::size_t>(news[0][5] >> 5);
            EXPECT_EQ(wagon().illness[member], told[0] - 34);
        });
}

TEST_F(Hazards, TheLastDeathEndsTheGame)
{
    wagon().people = 1;
    wagon().illness = {kDead, kDead, kDead, 4, kDead};
    SomeoneSuffers(wagon(), 0); // picks the dead head, who is told to have died of it
    EXPECT_EQ(wagon().people, 0);
    EXPECT_EQ(gTrain.wagons, 0);
    EXPECT_EQ(gTrain.mode, kModeOver);
    EXPECT_EQ(gTrain.order[0], kNobody);
    EXPECT_EQ(wagon().node, kNobody);
    EXPECT_EQ(codes(), std::vector<Int>{44});
    EXPECT_EQ(gMessages[0].kind, kMessageGone);
}

TEST_F(Hazards, ALeaderWhoIsGoneIsFollowedByTheLowestNode)
{
    gTrain.wagons = gTrain.slots = gTrain.startWagons = 4;
    gTrain.captain = 0;
    gTrain.wagon[1].node = 60, gTrain.wagon[2].node = 50, gTrain.wagon[3].node = kNobody;
    WagonGone(wagon(), 0);
    EXPECT_EQ(gTrain.leader, 50);
    EXPECT_EQ(gTrain.mode, kModeLive);
    EXPECT_EQ(gTrain.captain, kNobody);
    EXPECT_EQ(gTrain.wagons, 3);
    gTrain.captain = 3;
    WagonGone(gTrain.wagon[1], 1);
    EXPECT_EQ(gTrain.captain, 3) << "two are left, and the captain is another";
    WagonGone(gTrain.wagon[2], 2);
    EXPECT_EQ(gTrain.captain, kNobody) << "no captain of one";
}

} // namespace Wainroad
