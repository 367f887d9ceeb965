// A `snd ` resource: read, played, and at its end.

#include "MacToolbox/Host/GameThread.h"
#include "MacToolbox/Managers/Sound.h"
#include "Tests/Fuzz/ToolboxMachine.h"

using namespace MacToolbox;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ToolboxMachine machine(os("snd "), 128, {data, size});
    const Handle snd = GetResource(os("snd "), 128);
    const auto sound = sampledSound(snd);
    if (sound)
        require(sound->samples.size() + 22 <= size && sound->rate > 0);
    SndChannelPtr channel;
    Int calls = 0;
    SndNewChannel(channel, 0, 0, [&](const SndChannelPtr&, const SndCommand&) { ++calls; });
    require((SndPlay(channel, snd, true) == noErr) == sound.has_value());
    SndDoCommand(channel, {callBackCmd, 1, 2}, true);
    for (int i = 0; i < 100; ++i)
        GameThread::service();
    require(calls == (channel->playing != 0 ? 0 : 1));
    return 0;
}
