#pragma once

#include "MacToolbox/Base/Memory.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

// Sampled sounds through the host's one voice. The end of a sound comes from its length and the clock, never from the
// audio, so that a silent run behaves as a loud one. Game thread only; callbacks run there too, inside `service`.

namespace MacToolbox {

struct SndChannel;
using SndChannelPtr = std::shared_ptr<SndChannel>;

inline constexpr Int nullCmd = 0, quietCmd = 3, flushCmd = 4, callBackCmd = 13, freqDurationCmd = 40, restCmd = 41,
                     soundCmd = 80, bufferCmd = 81;
inline constexpr OSErr notEnoughHardwareErr = -201;
inline constexpr OSErr badChannel = -205;

struct SndCommand {
    Int cmd = 0, param1 = 0, param2 = 0;
    bool operator==(const SndCommand&) const = default;
};
using SndCallback = std::function<void(const SndChannelPtr& channel, const SndCommand& command)>;

struct SndChannel {
    Int userInfo = 0; ///< free for the game
    SndCallback callback;
    Int endTick = 0;                          ///< tick at which the current sound ends
    std::vector<SndCommand> pendingCallbacks; ///< for the end of the sound
    std::uint64_t playing = 0;                ///< unique id of the current sound; 0 is none
};

/// 8-bit unsigned samples, 128 is silence, and their rate in Hz (above 0).
struct SampledSound {
    std::vector<std::uint8_t> samples;
    double rate = 0;
};
/// Reads a `snd ` resource; nothing if it is no plain sampled sound.
std::optional<SampledSound> sampledSound(const Handle& snd);
/// How long a sound lasts, in ticks, counted up to the one after its end.
Int soundTicks(Int sampleCount, double rate);

namespace AudioOut {
/// True if this run makes no sound: `WR_MUTE` is "1", or a script plays.
bool muted();
/// Takes the voice from whatever has it; nothing when muted or for no samples.
void play(const SampledSound& sound);
/// Cuts the voice off.
void stop();
}

/// Makes a channel if `chan` is nil, else gives it the callback if there is one. `synth` and `init` are not looked at.
OSErr SndNewChannel(SndChannelPtr& chan, Int synth, Int init, const SndCallback& callback);
OSErr SndDisposeChannel(const SndChannelPtr& chan, bool quietNow);
/// Starts a sound and returns. @return noErr, or -201 for no channel, no handle or no plain sampled sound.
OSErr SndPlay(const SndChannelPtr& chan, const Handle& snd, bool async);
/// `callBackCmd` is answered at the end of the sound, or at the next `service` if none plays. @return noErr, or -205
/// for no channel.
OSErr SndDoCommand(const SndChannelPtr& chan, const SndCommand& command, bool noWait);
OSErr SndDoImmediate(const SndChannelPtr& chan, const SndCommand& command);
/// Asks the host for its beep, unless muted. The duration is not looked at.
void SysBeep(Int ticks);

} // namespace MacToolbox
