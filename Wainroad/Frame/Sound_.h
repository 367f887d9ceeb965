#pragma once

// The game's one voice: one `snd ` plays at a time, up to 8 wait behind it.

#include "MacToolbox/Base/Memory.h"

#include <array>
#include <memory>

namespace MacToolbox {
struct SndChannel;
using SndChannelPtr = std::shared_ptr<SndChannel>;
} // namespace MacToolbox

namespace Wainroad {
using namespace MacToolbox;

enum SoundState : Int { kSoundIdle = 0, kSoundPlaying, kSoundFinished }; ///< `gChannel->userInfo`

extern bool gSoundOn; ///< the switch of the menu; starts true
extern bool gPlayingTune;
extern SndChannelPtr gChannel;    ///< nil until `SoundInit`, or without sound
extern Handle gSound;             ///< what plays
extern std::array<Int, 8> gQueue; ///< ids that wait, oldest first
extern Int gQueued;               ///< how many, 0 to 8

/// Opens the channel and plays the start-up sound.
void SoundInit();
/// Appends an id to the queue; dropped if 8 wait.
void QueueSound(Int id);
/// Plays a sound now, or after what plays. Nothing with the sound switched off or without a channel.
void PlaySound(Int id);
/// Starts a sound at once. If that fails, all sound stops and the queue is empty.
void StartSound(Int id);
/// One step of the queue: tidies up what has ended and starts what waits. Called by every loop that waits.
void SoundTask();
/// Switches sound on and off, with the check mark of the menu item.
void ToggleSound();
/// Cuts off what plays; the queue stays.
void StopChannel();
/// Cuts off what plays and empties the queue.
void StopSound();
/// Waits for the sounds to end, at most 180 ticks; then stops them.
void WaitForSound();

} // namespace Wainroad
