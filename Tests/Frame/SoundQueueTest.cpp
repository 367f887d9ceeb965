#include "Wainroad/Frame/Sound_.h"

#include "MacToolbox/Host/GameThread.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/Managers/Sound.h"
#include "Tests/Frame/FrameFixture.h"

using namespace Wainroad;

namespace {

class SoundQueueTest : public FrameTest {
protected:
    static constexpr Int kRate = 600;

    SoundQueueTest()
    {
        for (Int id = 1; id <= 9; ++id)
            add("snd ", id, sound(id * kRate / 2, id)); // half a second each, times the id
        add("snd ", 9007, sound(kRate, 7));
        add("MENU", 1003,
            Form()
                .u16(1003)
                .zeros(8)
                .u32(-1)
                .counted("Play")
                .counted("Intro")
                .zeros(4)
                .counted("Sound")
                .u8(0)
                .u8(0)
                .u8(18)
                .u8(0)
                .u8(0)
                .bytes);
        useResources();
        SetMenuBar({GetMenu(1003)});
        SoundInit();
    }
    static Bytes sound(Int samples, Int value)
    {
        return Form()
            .u16(1)
            .u16(1)
            .u16(5)
            .u32(0)
            .u16(1)
            .u16(0x8051)
            .u16(0)
            .u32(20)
            .u32(0)
            .u32(samples)
            .u32(kRate << 16)
            .u32(0)
            .u32(0)
            .u8(0)
            .u8(60)
            .raw(Bytes(std::size_t(samples), std::uint8_t(value)))
            .bytes;
    }
    void wait(Int ticks)
    {
        const Int end = TickCount() + ticks;
        Int now = 0;
        while (TickCount() < end) {
            SoundTask();
            Delay(1, now);
        }
    }
    /// First sample of each sound played, in order.
    std::string played() const
    {
        std::string all;
        for (const Bytes& samples : platform.played)
            all += std::to_string(samples.empty() ? 0 : samples[0]);
        return all;
    }
};

} // namespace

TEST_F(SoundQueueTest, ASecondSoundWaitsForTheFirst)
{
    EXPECT_EQ(played(), "7") << "the start-up sound";
    PlaySound(1);
    PlaySound(2);
    EXPECT_EQ(gQueued, 2);
    wait(40);
    EXPECT_EQ(played(), "7");
    wait(40);
    EXPECT_EQ(played(), "71");
    EXPECT_EQ(gQueued, 1) << "one less as its sound begins";
    wait(60);
    EXPECT_EQ(played(), "712");
    wait(90);
    EXPECT_EQ(gChannel->userInfo, kSoundIdle);
}

TEST_F(SoundQueueTest, EightWaitAndTheNinthIsLost)
{
    for (Int id = 1; id <= 9; ++id)
        PlaySound(id);
    EXPECT_EQ(gQueued, 8);
    wait(60 * 60);
    EXPECT_EQ(played(), "712345678");
    EXPECT_EQ(gQueued, 0);
}

TEST_F(SoundQueueTest, AMissingSoundEmptiesTheQueueAndNoMore)
{
    PlaySound(100);
    PlaySound(1);
    wait(120);
    EXPECT_EQ(gQueued, 0);
    EXPECT_EQ(gChannel->userInfo, kSoundIdle);
    QueueSound(2);
    wait(5);
    EXPECT_EQ(played(), "72");
}

TEST_F(SoundQueueTest, SwitchingOffStopsAndForgets)
{
    PlaySound(1);
    ToggleSound();
    EXPECT_FALSE(gSoundOn);
    EXPECT_EQ(GetMHandle(1003)->item(2)->mark, 0);
    EXPECT_EQ(gChannel->userInfo, kSoundIdle);
    EXPECT_EQ(gQueued, 0);
    PlaySound(2);
    QueueSound(3);
    EXPECT_EQ(gQueued, 1);
    wait(5);
    EXPECT_EQ(gQueued, 0);
    EXPECT_EQ(played(), "7");
    ToggleSound();
    EXPECT_EQ(GetMHandle(1003)->item(2)->mark, 18);
    PlaySound(4);
    EXPECT_EQ(played(), "74");
}

TEST_F(SoundQueueTest, WhoWaitsForSilenceWaitsThreeSecondsAtMost)
{
    Int start = TickCount();
    WaitForSound();
    EXPECT_NEAR(double(TickCount() - start), 62, 4) << "to the end of the sound";
    PlaySound(9);
    PlaySound(1);
    start = TickCount();
    WaitForSound();
    EXPECT_NEAR(double(TickCount() - start), 181, 3);
    EXPECT_EQ(gQueued, 0);
    EXPECT_EQ(gChannel->userInfo, kSoundIdle);
    start = TickCount();
    gChannel = nullptr;
    WaitForSound();
    SoundTask();
    EXPECT_LE(TickCount() - start, 1);
}
