#pragma once

#include "Wainroad/Simulation/Records.h"

/// The form of a saved game: a head of 4198 bytes, then the 10240 bytes of the journal. What the journal's bytes and
/// its 34 bytes of counts mean is the journal's matter.
namespace Wainroad {

inline constexpr Int kSaveHeadBytes = 4198;
inline constexpr Int kSaveLogInfoBytes = 34;
inline constexpr Int kSaveLogBytes = 10240;
inline constexpr Int kSaveBytes = kSaveHeadBytes + kSaveLogBytes; ///< 14438

/// What the head of a saved game holds.
struct SaveHead {
    Int arrivedAt = 0; ///< the landmark whose arrival was last shown, s16
    GameState state;
    std::array<std::uint8_t, kSaveLogInfoBytes> logInfo{};
};

/// The 4198 bytes: magic, version, the text "Saved Game", and the head. The state goes in without its tail.
Bytes packSaveHead(Int arrivedAt, const GameState& state, std::span<const std::uint8_t> logInfo);
/// Reads a head into `head`, with zeros beyond the end. Magic, version and text are not looked at; the tail of
/// `head.state` stays. The state is as the file has it: see `MakeHarmless`.
void readSaveHead(std::span<const std::uint8_t> packed, SaveHead& head);

} // namespace Wainroad
