#pragma once

#include "Wainroad/Simulation/Records.h"

/// The trail: 17 landmarks, the miles and map dots of the legs between them, and the sections of the map.
namespace Wainroad {

inline constexpr Int kLastLandmark = 16;               ///< the end of the trail
inline constexpr Int kFirstFork = 6, kSecondFork = 13; ///< landmarks where the player picks the way
inline constexpr Int kTollLandmark = 15;               ///< toll road or raft

/// Miles of the leg to each landmark: the normal way, the way that passes by it.
inline constexpr std::array<std::array<Int, 2>, 18> gTrailMiles{
    {{102, 0}, {83, 0}, {119, 0}, {250, 0}, {86, 0}, {190, 0}, {102, 0}, {57, 125}, {162, 0}, {144, 0}, {57, 0},
        {182, 0}, {114, 0}, {160, 0}, {55, 125}, {120, 0}, {100, 0}, {0, 0}}};
/// Dots of the same legs on the map.
inline constexpr std::array<std::array<Int, 2>, 18> gTrailDotCount{{{4, 0}, {12, 0}, {7, 0}, {22, 0}, {6, 0}, {15, 0},
    {6, 0}, {8, 3}, {4, 0}, {7, 8}, {4, 0}, {14, 0}, {8, 0}, {11, 0}, {8, 12}, {7, 0}, {10, 7}, {0, 0}}};
/// Picture of landmark `n` at index `n + 1`.
inline constexpr std::array<Int, 18> gLandmarkPictures{0, 13, 13, 1, 2, 3, 4, 5, 6, 13, 7, 8, 13, 9, 10, 11, 12, 14};

/// True at the four landmarks that are rivers.
constexpr bool IsRiver(Int landmark) { return landmark >= 0 && landmark <= 11 && (0x903 >> landmark & 1) != 0; }

/// The row of the two tables for a leg, kept within 0..17.
constexpr std::size_t TrailRow(Int leg) { return static_cast<std::size_t>(leg < 0 ? 0 : leg > 17 ? 17 : leg); }

/// The sections 0 to 7 of the map, 'HVof' 128 to 135: steps of a signed horizontal and a signed vertical byte, in
/// pixels. Nil where the resource is missing.
extern std::array<Handle, 8> gTrailDots;
/// Loads the eight sections.
void TrailInit();

// The map belongs to the view: these read `gState`.

/// Miles of a leg on the chosen route; 0 for a leg that it leaves out.
Int LegMiles(Int leg);
/// Dots of a leg on the chosen route.
Int LegDots(Int leg);
/// Dots from the first leg of the section's group up to `leg`; 0 if `leg` is not in the section.
Int DotsBefore(Int leg, Int section);
/// Fills `count` with the dots of `section` to draw and `total` with all its dots, or -1 while none is reached.
void SectionDots(Int section, Int& count, Int& total);

} // namespace Wainroad
