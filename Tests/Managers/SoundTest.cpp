#include "MacToolbox/Managers/Sound.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/GameThread.h"
#include "MacToolbox/Host/Misc.h"
#include "Tests/Managers/ToolboxFixture.h"

using namespace MacToolbox;

namespace {

constexpr Int k22kHz = Int{22050} << 16;

/// A format 1 or 2 resource with one buffer command.
Bytes sound(Int samples, Int fixedRate = k22kHz, Int format = 1, Int command = 0x8051)
{
    Form form;
    if (format == 1)
        form.u16(1).u16(1).u16(5).u32(0x80);
    else
        form.u16(2).u16(0);
    form.u16(1).u16(command).u16(0).u32(I(form.bytes.size()) + 4);
    form.u32(0).u32(samples).u32(fixedRate).u32(0).u32(0).u8(0).u8(60);
    for (Int i = 0; i < samples; ++i)
        form.u8(128 + i % 100);
    return form.bytes;
}

Handle soundHandle(const Bytes& bytes) { return std::make_shared<Block>(bytes); }

class SoundTest : public ToolboxTest {
protected:
    SoundTest()
    {
        SndNewChannel(channel, 0, 0,
            [this](const SndChannelPtr&, const SndCommand& c) { called.emplace_back(c.param1, TickCount()); });
    }
    /// Lets the machine run for that many ticks.
    void run(Int ticks)
    {
        for (const Nanos end = clock.time() + ticks * kTickNanos; clock.time() < end;) {
            GameThread::service();
            clock.sleep(kTickNanos / 8);
        }
    }
    OSErr askFor(Int param) { return SndDoCommand(channel, {callBackCmd, param, 0}, true); }

    SndChannelPtr channel;
    std::vector<std::pair<Int, Int>> called; // parameter, tick
};

} // namespace

TEST_F(SoundTest, ReadsPlainSampledSoundOfBothFormats)
{
    for (const Int format : {1, 2})
        for (const Int command : {0x8050, 0x8051}) {
            const auto s = sampledSound(soundHandle(sound(1000, k22kHz, format, command)));
            ASSERT_TRUE(s) << format << ' ' << command;
            EXPECT_EQ(s->samples.size(), 1000u);
            EXPECT_EQ(s->samples[1], 129);
            EXPECT_DOUBLE_EQ(s->rate, 22050);
        }
    EXPECT_DOUBLE_EQ(sampledSound(soundHandle(sound(1, 0)))->rate, 22254.5454);
    EXPECT_FALSE(sampledSound(soundHandle(sound(10, k22kHz, 1, 0x50)))) << "a buffer that is no offset";
    EXPECT_FALSE(sampledSound(nullptr));
}

TEST_F(SoundTest, DamagedSoundIsRefusedOrCutAtTheEnd)
{
    const Bytes whole = sound(50);
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        const auto s = sampledSound(soundHandle(Bytes(whole.begin(), whole.begin() + I(cut))));
        EXPECT_EQ(s.has_value(), cut >= whole.size() - 50) << cut;
        if (s) {
            EXPECT_EQ(s->samples.size(), cut - (whole.size() - 50));
        }
    }
    const struct {
        Int at, value, size;
    } damages[] = {
        {2, 0xFFFF, 2}, {10, 0, 2}, {10, 0xFFFF, 2}, {16, 0x80000000, 4}, {16, 0x7FFFFFFF, 4}, {40, 0xFF, 1}};
    for (const auto& d : damages) {
        Bytes bytes = whole;
        for (Int i = 0; i < d.size; ++i)
            bytes[static_cast<std::size_t>(d.at + i)] = static_cast<std::uint8_t>(d.value >> 8 * (d.size - 1 - i));
        EXPECT_FALSE(sampledSound(soundHandle(bytes))) << d.at << ' ' << d.value;
        EXPECT_EQ(SndPlay(channel, soundHandle(bytes), true), -201);
    }
    EXPECT_EQ(SndPlay(nullptr, soundHandle(whole), true), -201);
    EXPECT_EQ(SndPlay(channel, nullptr, true), -201);
    EXPECT_EQ(SndDoCommand(nullptr, {quietCmd, 0, 0}, true), -205);
    EXPECT_EQ(SndDisposeChannel(nullptr, true), noErr);
}

TEST_F(SoundTest, LengthIsCountedInTicks)
{
    EXPECT_EQ(soundTicks(11025, 22050), 31);
    EXPECT_EQ(soundTicks(22050, 22050), 61);
    EXPECT_EQ(soundTicks(0, 22050), 1);
    EXPECT_EQ(soundTicks(367, 22050), 1) << "a little short of a tick";
}

TEST_F(SoundTest, CallbacksComeInOrderAtTheEnd)
{
    const Int start = TickCount();
    EXPECT_EQ(SndPlay(channel, soundHandle(sound(22050)), true), noErr);
    EXPECT_EQ(channel->endTick, start + 61);
    EXPECT_EQ(platform.played.size(), 1u);
    askFor(1);
    askFor(2);
    run(58);
    EXPECT_TRUE(called.empty());
    run(6);
    ASSERT_EQ(called.size(), 2u);
    EXPECT_EQ(called[0].first, 1);
    EXPECT_EQ(called[1].first, 2);
    EXPECT_NEAR(static_cast<double>(called[0].second - start), 61, 1);
    EXPECT_EQ(channel->playing, 0u);
}

TEST_F(SoundTest, AnIdleChannelAnswersAtTheNextService)
{
    EXPECT_EQ(askFor(7), noErr);
    EXPECT_TRUE(called.empty()) << "never inside the call";
    SndNewChannel(
        channel, 0, 0, [this](const SndChannelPtr&, const SndCommand& c) { called.emplace_back(-c.param1, 0); });
    GameThread::service();
    ASSERT_EQ(called.size(), 1u);
    EXPECT_EQ(called[0].first, -7) << "by the callback that the channel has then";
    channel->callback = nullptr;
    askFor(8);
    GameThread::service();
    EXPECT_EQ(called.size(), 1u);
}

TEST_F(SoundTest, QuietLosesWhatWaitsAndTheTimerIsIgnored)
{
    for (const Int command : {quietCmd, flushCmd}) {
        SndPlay(channel, soundHandle(sound(2205)), true);
        askFor(1);
        SndDoImmediate(channel, {command, 0, 0});
        EXPECT_EQ(channel->playing, 0u);
        run(20);
        EXPECT_TRUE(called.empty());
    }
    EXPECT_EQ(platform.stops, 2);
    SndPlay(channel, soundHandle(sound(2205)), true);
    askFor(1);
    SndDisposeChannel(channel, true);
    run(20);
    EXPECT_TRUE(called.empty());
}

TEST_F(SoundTest, ASecondSoundTakesTheFirstOnesCallbacksAlong)
{
    SndPlay(channel, soundHandle(sound(22050)), true); // would end after 61 ticks
    askFor(1);
    run(30);
    SndPlay(channel, soundHandle(sound(22050)), true);
    run(45); // 75: the first one's end is past
    EXPECT_TRUE(called.empty());
    run(25);
    EXPECT_EQ(called.size(), 1u);
    EXPECT_EQ(platform.played.size(), 2u);
}

TEST_F(SoundTest, AMutedRunKeepsItsTimes)
{
    const struct {
        std::map<std::string, std::string> variables;
        bool muted;
    } cases[] = {{{{"WR_MUTE", "1"}}, true}, {{{"WR_MUTE", "0"}}, false}, {{{"WR_MUTE", "0"}, {"WR_SCRIPT", ""}}, true},
        {{}, false}};
    for (const auto& c : cases) {
        startRunAfresh();
        useResources();
        platform.variables = c.variables;
        platform.played.clear();
        platform.beeps = 0;
        called.clear();
        EXPECT_EQ(AudioOut::muted(), c.muted);
        SndPlay(channel, soundHandle(sound(2205)), true);
        askFor(1);
        SysBeep(5);
        EXPECT_EQ(platform.beeps, 0) << "the beep is the main thread's";
        platform.drain();
        run(10);
        EXPECT_EQ(platform.played.empty(), c.muted);
        EXPECT_EQ(platform.beeps, c.muted ? 0 : 1);
        EXPECT_EQ(called.size(), 1u);
    }
}

TEST_F(SoundTest, NoAudioNoSamplesAndWildRatesAreNoError)
{
    platform.hasAudio = false;
    EXPECT_EQ(SndPlay(channel, soundHandle(sound(2205)), true), noErr);
    SndDoCommand(channel, {quietCmd, 0, 0}, true);
    EXPECT_EQ(platform.stops, 0) << "nothing was started";
    EXPECT_EQ(SndPlay(channel, soundHandle(sound(0)), true), noErr);
    askFor(1);
    run(4);
    EXPECT_EQ(called.size(), 1u);
    const std::size_t before = platform.played.size();
    EXPECT_EQ(SndPlay(channel, soundHandle(sound(30000, 1)), true), noErr) << "30000 samples of 18 hours each";
    EXPECT_EQ(platform.played.size(), before) << "are not handed to the host";
    EXPECT_EQ(SndDoCommand(channel, {soundCmd, 0, 0}, true), noErr);
}
