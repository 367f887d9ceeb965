#include "Wainroad/Frame/Sound_.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/Managers/Sound.h"

#include <algorithm>

namespace Wainroad {

static constexpr Int kEndTag = 0x546F636B; // 'Tock': tells the end of a sound from other commands
static constexpr Int kStartSound = 9007;
static constexpr Int kSoundMenu = 1003, kSoundItem = 2;
static constexpr Int kLongestWait = 180; // ticks

bool gSoundOn = true;
bool gPlayingTune = false;
SndChannelPtr gChannel;
Handle gSound;
std::array<Int, 8> gQueue{};
Int gQueued = 0;

static const AtRunStart sRenew([] {
    gSoundOn = true, gPlayingTune = false;
    gChannel = nullptr, gSound = nullptr;
    gQueue = {}, gQueued = 0;
});

void SoundInit()
{
    gChannel = nullptr;
    SndNewChannel(gChannel, 0, 0, {});
    if (gChannel)
        gChannel->userInfo = kSoundIdle;
    PlaySound(kStartSound);
}

void QueueSound(Int id)
{
    if (gQueued < I(gQueue.size()))
        gQueue[static_cast<std::size_t>(gQueued++)] = id;
}

void PlaySound(Int id)
{
    if (!gSoundOn || !gChannel)
        return;
    if (gChannel->userInfo != kSoundIdle)
        QueueSound(id);
    else
        StartSound(id);
}

static void soundDone(const SndChannelPtr& channel, const SndCommand& command)
{
    if (channel && command.param2 == kEndTag)
        channel->userInfo = kSoundFinished;
}

static bool startOnChannel()
{
    if (!gSound || !gChannel || SndNewChannel(gChannel, 0, 0, soundDone) != noErr)
        return false;
    gChannel->userInfo = kSoundPlaying;
    return SndPlay(gChannel, gSound, true) == noErr
        && SndDoCommand(gChannel, {callBackCmd, 0, kEndTag}, false) == noErr;
}

void StartSound(Int id)
{
    gSound = GetResource(os("snd "), id);
    if (startOnChannel())
        return;
    StopChannel();
    gQueued = 0;
}

void StopChannel()
{
    if (!gChannel || gChannel->userInfo == kSoundIdle)
        return;
    SndDoCommand(gChannel, {quietCmd, 0, 0}, true);
    SndDisposeChannel(gChannel, true);
    gChannel->userInfo = kSoundIdle;
}

void StopSound()
{
    StopChannel();
    gPlayingTune = false;
    gQueued = 0;
}

void SoundTask()
{
    if (!gChannel || gChannel->userInfo == kSoundPlaying)
        return;
    if (gChannel->userInfo == kSoundFinished)
        StopChannel();
    if (gQueued == 0)
        return;
    // The entry leaves the queue first: a sound that cannot start empties the queue.
    const Int id = gQueue[0];
    std::shift_left(gQueue.begin(), gQueue.end(), 1);
    --gQueued;
    PlaySound(id);
}

void ToggleSound()
{
    gSoundOn = !gSoundOn;
    if (!gSoundOn) {
        StopChannel();
        gQueued = 0;
    }
    SetItemMark(GetMHandle(kSoundMenu), kSoundItem, gSoundOn ? checkMark : noMark);
}

void WaitForSound()
{
    const Int end = TickCount() + kLongestWait;
    Int now = 0;
    while (gChannel && gChannel->userInfo != kSoundIdle) {
        if (TickCount() >= end) {
            StopSound();
            return;
        }
        SoundTask();
        Delay(1, now);
    }
}

} // namespace Wainroad
