#include "Wainroad/Persistence/Legends.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "Wainroad/Persistence/Config.h"

#include <algorithm>

namespace Wainroad {

std::array<Legend, kLegendRows> gLegends;
Int gLegendCount = 0;
Int gLegendMax = 0;
Int gLegendPad = 0;
Int gLegendFile = 0;

static constexpr Int kNameBytes = 28; ///< field of a name, the length byte included

static const AtRunStart sFreshLegends{[] {
    gLegends.fill({});
    gLegendCount = gLegendMax = gLegendPad = gLegendFile = 0;
}};

/// A counted name cut to what its field holds.
static Str255 FittingName(std::span<const std::uint8_t> counted)
{
    const std::span<const std::uint8_t> body = characters(counted);
    const std::size_t length = std::min(body.size(), static_cast<std::size_t>(kNameBytes - 1));
    Str255 name(length + 1);
    name[0] = static_cast<std::uint8_t>(length);
    std::copy_n(body.begin(), length, name.begin() + 1);
    return name;
}

void setLegends(const Bytes& bytes)
{
    ByteReader in(bytes);
    gLegendCount = std::clamp(in.s16(), Int{0}, kLegendRows);
    gLegendMax = in.s16();
    gLegendPad = in.s16();
    for (Legend& legend : gLegends) {
        legend.name = FittingName(in.raw(kNameBytes));
        legend.points = in.s32();
    }
}

Bytes legendBytes()
{
    ByteWriter out;
    out.u16(gLegendCount), out.u16(gLegendMax), out.u16(gLegendPad);
    for (const Legend& legend : gLegends) {
        const Int end = I(out.bytes.size()) + kNameBytes;
        out.raw(FittingName(legend.name));
        out.pad(end);
        out.u32(legend.points);
    }
    return out.bytes;
}

// In the file

static Int OffsetOf(Int list) { return kConfigLegendsAt + (list != 0 ? kLegendBytes : 0); }

Bytes GetLegends(Int list, Handle out)
{
    if (gConfigMode != 0)
        gConfigBuffer->set8(0, list);
    const auto start = gConfig->bytes.begin() + OffsetOf(list);
    const Bytes stored(start, start + kLegendBytes);
    if (out)
        out->bytes = stored;
    return stored;
}

Bytes ReadLegends(Int list, Handle out)
{
    if (gConfigMode == 0)
        RereadConfig();
    return GetLegends(list, std::move(out));
}

void WriteLegends(Int list, const Bytes& bytes)
{
    Bytes stored = bytes;
    stored.resize(static_cast<std::size_t>(kLegendBytes));
    std::copy(stored.begin(), stored.end(), gConfig->bytes.begin() + OffsetOf(list));
    if (gConfigMode != 0) {
        gConfigBuffer->set8(0, list);
        std::copy(stored.begin(), stored.end(), gConfigBuffer->bytes.begin() + 2);
    }
    WriteConfigFile();
}

// Rank

static std::size_t Listed() { return static_cast<std::size_t>(std::clamp(gLegendCount, Int{0}, kLegendRows)); }

Int LegendRank(Int points)
{
    if (points < 1)
        return -1;
    for (std::size_t i = 0; i < Listed(); ++i)
        if (gLegends[i].points < points)
            return I(i);
    return I(Listed()) < kLegendRows ? I(Listed()) : -1;
}

Int AddLegend(Int points, const Str255& name)
{
    const Int place = LegendRank(points);
    if (place < 0)
        return -1;
    std::move_backward(gLegends.begin() + place, gLegends.end() - 1, gLegends.end());
    gLegends[static_cast<std::size_t>(place)] = {FittingName(name), points};
    if (gLegendCount < std::min(gLegendMax, kLegendRows))
        ++gLegendCount;
    return place;
}

Int FindLegend(const Str255& name, Int points)
{
    for (std::size_t i = 0; i < Listed(); ++i)
        if (gLegends[i].points == points && gLegends[i].name == name)
            return I(i);
    return -1;
}

} // namespace Wainroad
