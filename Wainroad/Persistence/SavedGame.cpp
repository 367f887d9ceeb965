#include "Wainroad/Persistence/SavedGame.h"

#include "MacToolbox/Base/Strings.h"

#include <algorithm>

namespace Wainroad {

static constexpr Int kTextBytes = 32, kStateAt = 40, kLogInfoAt = 4164;
static constexpr Int kSavedStateBytes = kStateBytes - kTailBytes; ///< 4124
static_assert(kStateAt + kSavedStateBytes == kLogInfoAt && kLogInfoAt + kSaveLogInfoBytes == kSaveHeadBytes);

Bytes packSaveHead(Int arrivedAt, const GameState& state, std::span<const std::uint8_t> logInfo)
{
    ByteWriter out;
    out.bytes.reserve(static_cast<std::size_t>(kSaveHeadBytes));
    out.u32(os("QUIL")), out.u16(1);
    out.raw(pstr("Saved Game"));
    out.pad(6 + kTextBytes);
    out.u16(arrivedAt);
    const Bytes packed = state.bytes();
    out.raw(std::span(packed).first(static_cast<std::size_t>(kSavedStateBytes)));
    out.raw(logInfo.first(std::min(logInfo.size(), static_cast<std::size_t>(kSaveLogInfoBytes))));
    out.pad(kSaveHeadBytes);
    return out.bytes;
}

void readSaveHead(std::span<const std::uint8_t> packed, SaveHead& head)
{
    ByteReader in(packed, 6 + kTextBytes);
    head.arrivedAt = in.s16();
    const auto tail = head.state.x101C;
    head.state.load(in.raw(kSavedStateBytes));
    head.state.x101C = tail;
    const Bytes logInfo = in.raw(kSaveLogInfoBytes);
    std::copy(logInfo.begin(), logInfo.end(), head.logInfo.begin());
}

} // namespace Wainroad
