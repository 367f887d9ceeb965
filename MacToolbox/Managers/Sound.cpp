#include "MacToolbox/Managers/Sound.h"

#include "MacToolbox/Base/Clock.h"
#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/GameThread.h"
#include "MacToolbox/Host/Misc.h"

#include <algorithm>

namespace MacToolbox {

namespace {

constexpr Int kHeaderSize = 22;             // of a sampled sound, before its samples
constexpr double kDefaultRate = 22254.5454; // Hz, for a header that gives 0
constexpr double kLongestVoice = 600;       // seconds; longer ones are timed, but not heard
constexpr Int kLongestWait = 0x7FFFFFFF;    // ticks, over a year

struct Voice {
    std::optional<bool> muted; // settled at its first use
    bool started = false;      // the host has played something
    std::uint64_t lastId = 0;  // of the sounds of this run
};
RunState<Voice> sVoice;

/// The offset of the sound header that the first buffer or sound command points to; -1 if there is none.
Int soundHeader(const Handle& snd)
{
    const Int end = snd->count();
    const Int list = snd->u16(0) == 1 ? 4 + 6 * snd->u16(2) : 4;
    if (list + 2 > end)
        return -1;
    const Int commands = snd->s16(list);
    for (Int i = 0, at = list + 2; i < commands && at + 8 <= end; ++i, at += 8)
        if ((snd->u16(at) & ~Int{1}) == 0x8050)
            return snd->s32(at + 4);
    return -1;
}

void callBack(const SndChannelPtr& chan, const SndCommand& command)
{
    const SndCallback callback = chan->callback; // it may replace itself
    if (callback)
        callback(chan, command);
}

/// Game thread: the sound `id` is over, unless another took its place.
void soundEnded(const SndChannelPtr& chan, std::uint64_t id)
{
    if (chan->playing != id)
        return;
    chan->playing = 0;
    const std::vector<SndCommand> commands = std::move(chan->pendingCallbacks);
    chan->pendingCallbacks.clear();
    for (const SndCommand& command : commands)
        callBack(chan, command);
}

} // namespace

std::optional<SampledSound> sampledSound(const Handle& snd)
{
    if (!snd || snd->count() < 10)
        return std::nullopt;
    const Int header = soundHeader(snd);
    if (header < 0 || header + kHeaderSize > snd->count() || snd->u8(header + 20) != 0)
        return std::nullopt;
    const Int first = header + kHeaderSize;
    const Int count = std::min(snd->u32(header + 4), snd->count() - first);
    const Int fixedRate = snd->u32(header + 8);
    SampledSound sound;
    sound.samples.assign(snd->bytes.begin() + first, snd->bytes.begin() + first + count);
    sound.rate = fixedRate == 0 ? kDefaultRate : static_cast<double>(fixedRate) / 65536;
    return sound;
}

Int soundTicks(Int sampleCount, double rate)
{
    return static_cast<Int>(static_cast<double>(sampleCount) / rate * 60) + 1;
}

bool AudioOut::muted()
{
    if (!sVoice->muted)
        sVoice->muted = !Platform::current().soundWanted();
    return *sVoice->muted;
}

void AudioOut::play(const SampledSound& sound)
{
    if (muted() || sound.samples.empty() || static_cast<double>(sound.samples.size()) / sound.rate > kLongestVoice)
        return;
    if (Platform::current().playSound(sound.samples, sound.rate))
        sVoice->started = true;
}

void AudioOut::stop()
{
    if (sVoice->started)
        Platform::current().stopSound();
}

OSErr SndNewChannel(SndChannelPtr& chan, Int, Int, const SndCallback& callback)
{
    if (!chan) {
        chan = std::make_shared<SndChannel>();
        chan->callback = callback;
    } else if (callback) {
        chan->callback = callback;
    }
    return noErr;
}

OSErr SndDisposeChannel(const SndChannelPtr& chan, bool quietNow)
{
    if (!chan)
        return noErr;
    if (quietNow)
        AudioOut::stop();
    chan->pendingCallbacks.clear();
    chan->playing = 0;
    return noErr;
}

OSErr SndPlay(const SndChannelPtr& chan, const Handle& snd, bool)
{
    const std::optional<SampledSound> sound = chan ? sampledSound(snd) : std::nullopt;
    if (!sound)
        return notEnoughHardwareErr;
    AudioOut::play(*sound);
    const Int ticks = soundTicks(I(sound->samples.size()), sound->rate);
    chan->endTick = TickCount() + ticks;
    const std::uint64_t id = ++sVoice->lastId;
    chan->playing = id;
    Clock::current().after(std::min(ticks, kLongestWait) * kSecond / 60,
        [chan, id] { GameThread::perform([chan, id] { soundEnded(chan, id); }); });
    return noErr;
}

OSErr SndDoCommand(const SndChannelPtr& chan, const SndCommand& command, bool)
{
    if (!chan)
        return badChannel;
    switch (command.cmd) {
    case quietCmd:
    case flushCmd:
        AudioOut::stop();
        chan->playing = 0;
        chan->pendingCallbacks.clear();
        break;
    case callBackCmd:
        if (chan->playing != 0)
            chan->pendingCallbacks.push_back(command);
        else
            GameThread::perform([chan, command] { callBack(chan, command); });
        break;
    default: break;
    }
    return noErr;
}

OSErr SndDoImmediate(const SndChannelPtr& chan, const SndCommand& command)
{
    return SndDoCommand(chan, command, false);
}

void SysBeep(Int)
{
    if (!AudioOut::muted())
        Platform::current().post([] { Platform::current().beep(); });
}

} // namespace MacToolbox
