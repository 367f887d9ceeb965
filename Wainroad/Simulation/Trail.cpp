#include "Wainroad/Simulation/Trail.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/Resources.h"

namespace Wainroad {

std::array<Handle, 8> gTrailDots;

static const AtRunStart sFreshTrail{[] { gTrailDots = {}; }};

static constexpr Int kFirstSectionId = 128;

void TrailInit()
{
    for (std::size_t i = 0; i < gTrailDots.size(); ++i)
        gTrailDots[i] = GetResource(os("HVof"), kFirstSectionId + I(i));
}

/// 1 if bit `bit` of the route is set: that column of the tables.
static std::size_t Branch(Int bit) { return gState.route >> bit & 1; }

Int LegMiles(Int leg)
{
    const auto& row = gTrailMiles[TrailRow(leg)];
    switch (leg) {
    case 7: return row[Branch(0)];
    case 8: return Branch(0) ? 0 : row[0];
    case 14: return row[Branch(1)];
    case 15: return Branch(1) ? 0 : row[0];
    default: return row[0];
    }
}

Int LegDots(Int leg)
{
    const auto& row = gTrailDotCount[TrailRow(leg)];
    switch (leg) {
    case 7:
    case 9: return row[Branch(0)];
    case 8: return Branch(0) ? 0 : row[0];
    case 14: return row[Branch(1)];
    case 15: return Branch(1) ? 0 : row[0];
    case 16: return row[Branch(2)];
    default: return row[0];
    }
}

namespace {
/// A group of map sections: the legs that it covers.
struct Group {
    Int firstSection, lastSection, firstLeg, lastLeg;
};
constexpr std::array<Group, 5> kGroups{{{0, 0, 0, 6}, {1, 2, 7, 9}, {3, 3, 10, 13}, {4, 5, 14, 15}, {6, 7, 16, 16}}};

const Group& GroupOf(Int section)
{
    for (const Group& group : kGroups)
        if (section <= group.lastSection)
            return group;
    return kGroups.back();
}
} // namespace

Int DotsBefore(Int leg, Int section)
{
    const Group& group = GroupOf(section);
    if (leg < group.firstLeg || leg > group.lastLeg)
        return 0;
    Int dots = 0;
    for (Int i = group.firstLeg; i <= leg; ++i)
        dots += LegDots(i);
    return dots;
}

void SectionDots(Int section, Int& count, Int& total)
{
    const Group& group = GroupOf(section);
    const Int heading = gState.landmark, passed = heading - 1;
    total = GetHandleSize(gTrailDots[static_cast<std::size_t>(section & 7)]) / 2;
    if (passed < group.firstLeg - 1) {
        count = 0;
        total = -1;
    } else if (passed >= group.lastLeg) {
        count = total;
    } else {
        count = DotsBefore(passed, section);
        if (const Int leg = LegMiles(heading))
            count += (leg - gState.toNext) * LegDots(heading) / leg;
    }
}

} // namespace Wainroad
