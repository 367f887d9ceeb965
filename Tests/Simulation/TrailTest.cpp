#include "Tests/Simulation/ModelFixture.h"

namespace Wainroad {

/// Sections with as many dots as their legs have on every route.
class TrailMapData : public ModelTest {
protected:
    TrailMapData()
    {
        const std::array<Int, 8> dots{72, 18, 19, 37, 12, 15, 7, 10};
        for (std::size_t i = 0; i < 8; ++i)
            gTrailDots[i] = NewHandle(dots[i] * 2);
    }
    static std::pair<Int, Int> section(Int which, Int landmark, Int toNext, Int route = 0)
    {
        gState.landmark = landmark, gState.toNext = toNext, gState.route = route;
        Int count = 0, total = 0;
        SectionDots(which, count, total);
        return {count, total};
    }
    using Dots = std::pair<Int, Int>;
};

TEST_F(TrailMapData, LegsFollowTheRoute)
{
    const struct {
        Int route, leg, miles, dots;
    } kCases[] = {{0, 7, 57, 8}, {1, 7, 125, 3}, {0, 8, 162, 4}, {1, 8, 0, 0}, {0, 9, 144, 7}, {1, 9, 144, 8},
        {0, 14, 55, 8}, {2, 14, 125, 12}, {1, 14, 55, 8}, {2, 15, 0, 0}, {0, 16, 100, 10}, {4, 16, 100, 7},
        {3, 3, 250, 22}, {0, 17, 0, 0}, {0, 300, 0, 0}, {0, -5, 102, 4}};
    for (const auto& c : kCases) {
        gState.route = c.route;
        EXPECT_EQ(LegMiles(c.leg), c.miles) << c.leg << " route " << c.route;
        EXPECT_EQ(LegDots(c.leg), c.dots) << c.leg << " route " << c.route;
    }
}

TEST_F(TrailMapData, SectionsFillAlongTheWay)
{
    EXPECT_EQ(section(0, -1, 0), Dots(0, -1)) << "not yet set off";
    EXPECT_EQ(section(0, 0, 102), Dots(0, 72));
    EXPECT_EQ(section(0, 0, 51), Dots(2, 72)) << "half of four dots";
    EXPECT_EQ(section(0, 1, 83), Dots(4, 72));
    EXPECT_EQ(section(0, 6, 0), Dots(72, 72)) << "earned dot by dot";
    EXPECT_EQ(section(0, 7, 57), Dots(72, 72));
    EXPECT_EQ(section(2, 6, 10), Dots(0, -1)) << "not reached while the leg to 6 is under way";
    EXPECT_EQ(section(2, 7, 57), Dots(0, 19));
    EXPECT_EQ(section(2, 8, 81), Dots(8 + 2, 19));
    EXPECT_EQ(section(2, 10, 57), Dots(19, 19));
    EXPECT_EQ(section(1, 8, 60, 1), Dots(3, 18)) << "the long leg shows its dots when it has begun";
    EXPECT_EQ(section(1, 9, 72, 1), Dots(3 + 0 + 4, 18));
    EXPECT_EQ(section(7, 15, 30), Dots(0, -1));
    EXPECT_EQ(section(7, 16, 50), Dots(5, 10));
    EXPECT_EQ(section(7, 17, 0), Dots(10, 10));
    EXPECT_EQ(DotsBefore(6, 1), 0);
    EXPECT_EQ(DotsBefore(13, 3), 37);
    gTrailDots.fill(nullptr);
    EXPECT_EQ(section(0, 7, 0), Dots(0, 0));
}

TEST_F(TrailMapData, DotsNeverGoBackAlongAJourney)
{
    for (const Int route : {0, 1, 2, 3}) {
        std::array<Int, 8> last{};
        for (Int landmark = 0; landmark <= 16; ++landmark) {
            gState.route = route;
            if ((landmark == 7 && (route & 1)) || (landmark == 14 && (route & 2)))
                continue; // passed by
            const Int leg =
                (landmark == 8 && (route & 1)) || (landmark == 15 && (route & 2)) ? 125 : LegMiles(landmark);
            for (Int left = leg; left >= 0; --left)
                for (const Int which : {Int{0}, Int{(route & 1) ? 1 : 2}, Int{3}, Int{(route & 2) ? 4 : 5}, Int{7}}) {
                    const auto [count, total] = section(which, landmark, left, route);
                    ASSERT_GE(count, last[static_cast<std::size_t>(which)]) << landmark << ' ' << left << ' ' << which;
                    last[static_cast<std::size_t>(which)] = count;
                    if (total >= 0) {
                        ASSERT_LE(count, total) << landmark << ' ' << left << ' ' << which << " route " << route;
                    }
                }
        }
    }
}

} // namespace Wainroad
