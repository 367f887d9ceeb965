#pragma once

#include "MacToolbox/Base/Memory.h"

#include <array>

/// The two top-ten lists, of wagons (0) and of trains (1), kept in the configuration file. One list at a time is in
/// memory: filled from the stored form before each use, and packed back after each change.
namespace Wainroad {

using namespace MacToolbox;

struct Legend {
    Str255 name{0}; ///< at most 27 characters
    Int points = 0;

    bool operator==(const Legend&) const = default;
};

inline constexpr Int kLegendRows = 10;
inline constexpr Int kLegendBytes = 326;

extern std::array<Legend, kLegendRows> gLegends; ///< in descending order of points
extern Int gLegendCount;                         ///< entries in use, 0..10
extern Int gLegendMax;                           ///< the limit stored with the list
extern Int gLegendPad;                           ///< carried unchanged
extern Int gLegendFile;                          ///< the list in use

/// The 326 stored bytes of a list, after reading the file again if its date moved. `out` may be nil.
Bytes ReadLegends(Int list, Handle out = nullptr);
/// The same from `gConfig` alone, for a file that is open for update.
Bytes GetLegends(Int list, Handle out = nullptr);
/// Replaces the list in `gConfig`, and writes the file.
void WriteLegends(Int list, const Bytes& bytes);
/// Unpacks a stored list into the work area; a short one reads as padded with zeros.
void setLegends(const Bytes& bytes);
/// Packs the work area.
Bytes legendBytes();
/// The place that `points` would take, or -1. An equal score ranks after.
Int LegendRank(Int points);
/// Enters a score. @return Its place, or -1.
Int AddLegend(Int points, const Str255& name);
/// The entry equal in name and points, or -1.
Int FindLegend(const Str255& name, Int points);

} // namespace Wainroad
