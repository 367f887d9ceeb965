// The window itself: its sizes, its ways to close, its sound, and what it says where it cannot be.

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Sound.h"
#include "Tests/Harness/Golden.h"
#include "Tests/Window/WindowFixture.h"
#include "Wainroad/Screens/Setup.h"
#include "Wainroad/Screens/Title.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstring>
#include <filesystem>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

constexpr Int kTravel = 3, kSetOut = 1; // items of the title and of the letter

class Window : public WindowTest { };

/// From the title to the letter.
bool toLetter(Twin& twin)
{
    if (!twin.toTitle())
        return false;
    twin.click(TitlePanel, kTravel);
    return twin.waitFor(IntroPanel);
}

/// Chooses an item of the last menu of the bar by the arrow keys: that many steps below the first.
void chooseFromWindowMenu(const Desk& desk, int steps)
{
    for (const char* const name : {"F10", "Left"})
        desk.key(name);
    for (int i = 0; i < steps; ++i)
        desk.key("Down");
    desk.key("Return");
}

bool isBlack(const Shot& shot, int x, int y) { return shot.at(x, y) == 0; }

} // namespace

TEST_F(Window, EnlargesTheFrameByWholeNumbersAndFillsTheScreenWithABorder)
{
    WindowedGame game(desk());
    ASSERT_TRUE(game.comesUp());
    EXPECT_EQ(game.shot().width, 1024);
    EXPECT_EQ(game.shot().height, 644 + game.bar());
    Twin twin(game);
    ASSERT_TRUE(toLetter(twin));
    const FramePtr letter = twin.run().frame();

    desk().key("F11");
    EXPECT_TRUE(game.shows(letter, 4));
    const Shot full = game.shot();
    EXPECT_EQ(full.width, 2560);
    EXPECT_EQ(full.height, 1600);
    for (const auto& [x, y] : {std::pair{3, 100}, {2556, 800}, {1280, 1597}})
        EXPECT_TRUE(isBlack(full, x, y)) << "no border at " << x << ", " << y;
    desk().key("F11");
    EXPECT_TRUE(game.shows(letter, 2));

    constexpr int kThreeTimes = 3,
                  kFullScreen = 5; // steps below the first item, where the screen has room for four sizes
    chooseFromWindowMenu(desk(), kThreeTimes);
    EXPECT_TRUE(game.shows(letter, 3));
    EXPECT_EQ(game.shot().width, 512 * 3);
    chooseFromWindowMenu(desk(), kFullScreen);
    EXPECT_TRUE(game.shows(letter, 4));

    // The mouse is mapped by the same scale, with the border.
    const Point button = Twin::place(IntroPanel, kSetOut);
    const int left = (2560 - 512 * 4) / 2, top = game.bar() + (1600 - game.bar() - 322 * 4) / 2;
    desk().click(game.window(), left + static_cast<int>(button.h) * 4, top + static_cast<int>(button.v) * 4);
    twin.run().play("click " + std::to_string(button.h) + " " + std::to_string(button.v) + "\nwait 2");
    ASSERT_TRUE(twin.player().waitFor(PartyPanel2));
    EXPECT_TRUE(game.shows(twin.run().frame(), 4, twin.itemsOf(PartyPanel2, 2, 6)));

    // Size and full screen are what the next start begins with.
    desk().key("ctrl+q");
    EXPECT_EQ(game.program().wait(60), 0);
    const WindowedGame next(desk());
    EXPECT_TRUE(waitUntil([&] { return desk().shot(desk().find("The Wainroad")).width == 2560; }));
}

TEST_F(Window, TakesItsPixelsFromTheDisplayWhereItsUnitsAreLarger)
{
    for (const auto& [ratio, factor] : {std::pair{"1.25", 3}, {"1.5", 3}, {"2", 4}}) {
        SCOPED_TRACE(ratio);
        WindowedGame game(desk(), {{"QT_SCALE_FACTOR", ratio}});
        ASSERT_TRUE(game.comesUp(factor));
        EXPECT_LE(std::abs(game.shot().width - 512 * factor), 2);
        Twin twin(game);
        ASSERT_TRUE(toLetter(twin));
    }
}

TEST_F(Window, AtTheTitleEveryWayOfClosingEndsTheGame)
{
    const std::function<void(WindowedGame&)> ways[] = {
        [](WindowedGame& game) { game.desk().key("alt+F4"); }, // the window manager's close
        [](WindowedGame& game) { game.desk().key("ctrl+q"); },
        [](WindowedGame& game) { game.program().signal(SIGTERM); },
        [](WindowedGame& game) { game.program().signal(SIGINT); },
    };
    for (const auto& close : ways) {
        WindowedGame game(desk(), {{"SDL_AUDIODRIVER", "no such driver"}}); // without sound all is as with it
        ASSERT_TRUE(game.comesUp());
        close(game);
        EXPECT_EQ(game.program().wait(60), 0);
        EXPECT_EQ(game.program().output(), "");
    }
}

TEST_F(Window, FollowsAScript)
{
    const std::string folder = desk().folder().path();
    const std::string script =
        desk().folder().write("the.script", "wait 4\nclick 45 285\nwait 2\nshot shot.png\nwait 600\n");
    WindowedGame game(desk(), {{"WR_SCRIPT", script}, {"WR_OUT", folder}});
    ASSERT_TRUE(game.comesUp());
    FramePtr shot;
    ASSERT_TRUE(waitUntil([&] { return (shot = readPicture(folder + "/shot.png")) != nullptr; }));
    EXPECT_TRUE(game.shows(shot));
    EXPECT_FALSE(std::filesystem::exists(folder + "/config")) << "a script reads and keeps no settings";
}

TEST_F(Window, TheStartUpTuneIsHeardForItsLength)
{
    constexpr Int kTune = 9007, kBuffer = 512; // of `snd `; frames that the device takes at a time
    constexpr double kRate = 44100;
    const std::string heard = desk().folder().path("heard");
    {
        WindowedGame game(desk(),
            {{"SDL_AUDIODRIVER", "disk"}, {"SDL_DISKAUDIOFILE", heard},
                {"SDL_DISKAUDIODELAY", "4"}}); // ms a buffer: faster than it would sound
        ASSERT_TRUE(game.comesUp());
        Twin twin(game);
        ASSERT_TRUE(twin.toTitle());
        desk().key("ctrl+q");
        EXPECT_EQ(game.program().wait(60), 0);
    }
    const std::string bytes = readFile(heard);
    std::vector<float> frames(bytes.size() / sizeof(float));
    std::memcpy(frames.data(), bytes.data(), frames.size() * sizeof(float));
    const auto loud = [](float frame) { return std::abs(frame) > 0.001F; };
    const auto first = std::ranges::find_if(frames, loud);
    const auto last = std::find_if(frames.rbegin(), frames.rend(), loud).base();
    ASSERT_LT(first, last) << "nothing was heard";

    ResourceManager::shared().open(Platform::current().programFolder() + "/Wainroad_Wainroad.bundle/Wainroad.rsrc");
    const auto tune = sampledSound(GetResource(os("snd "), kTune));
    ASSERT_TRUE(tune);
    const auto audible = [](std::uint8_t sample) { return sample != 128; };
    const auto start = std::ranges::find_if(tune->samples, audible);
    const auto end = std::find_if(tune->samples.rbegin(), tune->samples.rend(), audible).base();
    EXPECT_NEAR(static_cast<double>(last - first), static_cast<double>(end - start) * kRate / tune->rate, kBuffer);
}

TEST_F(Window, SaysInOneLineWhatIsMissing)
{
    const std::string folder = Platform::current().programFolder();
    const Program::Environment bare{{"DISPLAY", std::nullopt}, {"WAYLAND_DISPLAY", std::nullopt},
        {"QT_QPA_PLATFORM", std::nullopt}, {"WR_HEADLESS", std::nullopt}, {"WR_SCRIPT", std::nullopt}};
    const auto saysOneLine = [](Program& game, const std::string& word) {
        EXPECT_EQ(game.wait(60), 1);
        const std::string words = game.output();
        EXPECT_EQ(std::ranges::count(words, '\n'), 1) << words;
        EXPECT_NE(words.find(word), std::string::npos) << words;
    };
    for (const auto& display : {std::optional<std::string>(), std::optional<std::string>(":4711")}) {
        Program::Environment environment = bare;
        environment["DISPLAY"] = display;
        Program game({folder + "/wainroad"}, environment);
        saysOneLine(game, "display");
    }
    const TemporaryFolder place;
    std::filesystem::copy_file(folder + "/wainroad", place.path("wainroad"));
    std::filesystem::create_directory_symlink(
        folder + "/Wainroad_Wainroad.bundle", place.path("Wainroad_Wainroad.bundle"));
    Program game({place.path("wainroad")}, bare);
    saysOneLine(game, "wainroad-desktop.so");
}
