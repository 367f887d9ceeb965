// A person plays: keyboard, menus, file panels, and leaving.

#include "Tests/Harness/Golden.h"
#include "Tests/Window/WindowFixture.h"
#include "Wainroad/Frame/Items.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Setup.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Title.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

constexpr const char* kGame = "The Wainroad";
constexpr const char *kSavePanel = "Save — The Wainroad", *kOpenPanel = "Open — The Wainroad";
constexpr const char *kRefusal = "Choose another name — The Wainroad", *kReplace = "Replace it? — The Wainroad";
constexpr double kMostAtRest = 0.05; // of one processor

class Play : public WindowTest {
protected:
    /// The item of a menu that is shown first, by the mouse.
    void chooseAbout(const WindowedGame& game)
    {
        const Shot closed = game.shot();
        desk().click(game.window(), 30, game.bar() / 2);
        waitUntil([&] { return game.shot() != closed; });
        pauseFor(0.5); // the title is marked before its menu drops
        desk().click(game.window(), 60, game.bar() + game.bar() / 2);
    }
};

/// The pixels that two frames do not share.
FramePtr difference(const FramePtr& a, const FramePtr& b)
{
    auto mask = std::make_shared<Frame>(*a);
    for (std::size_t i = 0; i < a->pixels.size(); ++i)
        mask->pixels[i] = a->pixels[i] != b->pixels[i];
    return mask;
}

/// What the window shows once it stands still, for longer than the model takes to bring the day's weather.
FramePtr stillPicture(const WindowedGame& game)
{
    constexpr double kStill = 3;
    FramePtr last;
    waitUntil([&] {
        const FramePtr before = game.picture();
        pauseFor(kStill);
        last = game.picture();
        return before && last && before->pixels == last->pixels;
    });
    return last;
}

} // namespace

TEST_F(Play, TheKeyboardWritesNamesWithAccentsDeadKeysAndThePasteboard)
{
    constexpr Int kLeader = 2, kTravel = 3, kSetOut = 1;
    WindowedGame game(desk());
    ASSERT_TRUE(game.comesUp());
    Twin twin(game);
    ASSERT_TRUE(twin.toTitle());
    twin.click(TitlePanel, kTravel);
    ASSERT_TRUE(twin.waitFor(IntroPanel));
    twin.click(IntroPanel, kSetOut);
    ASSERT_TRUE(twin.waitFor(PartyPanel2, twin.itemsOf(PartyPanel2, kLeader, kLeader + 4)));
    const auto writes = [&](const std::string& text) {
        twin.run().play("type " + text + "\nwait 0.2");
        return game.shows(twin.run().frame(), 0, twin.itemsOf(PartyPanel2, kLeader + 1, kLeader + 4));
    };
    twin.click(PartyPanel2, kLeader);
    desk().run({"setxkbmap", "us", "intl"});
    for (const char* const key : {"shift+z", "o", "dead_acute", "e", "dead_diaeresis", "i"})
        desk().key(key);
    EXPECT_TRUE(writes("Zoéï"));
    desk().run({"setxkbmap", "fr"});
    for (const char* const key : {"eacute", "ccedilla", "a"}) // keys of their own there
        desk().key(key);
    EXPECT_TRUE(writes("éça"));
    desk().run({"setxkbmap", "us", "-option", "compose:menu"});
    for (const char* const key : {"Multi_key", "o", "e"})
        desk().key(key);
    EXPECT_TRUE(writes("œ"));

    const std::string words = desk().folder().write("words", "Änne");
    const Program owner({"xclip", "-selection", "clipboard", "-loops", "0", "-quiet", words}, desk().environment());
    ASSERT_TRUE(waitUntil([&] { return desk().hasClipboard(); }));
    desk().key("ctrl+v");
    EXPECT_TRUE(writes("Änne"));
}

TEST_F(Play, MenusAreChosenByMouseAndByKeyAndEscapeEndsADialog)
{
    WindowedGame game(desk());
    ASSERT_TRUE(game.comesUp());
    Twin twin(game);
    ASSERT_TRUE(twin.toTitle());
    constexpr Int kTravel = 3;
    twin.click(TitlePanel, kTravel);
    ASSERT_TRUE(twin.waitFor(IntroPanel));
    const FramePtr letter = twin.run().frame();
    twin.run().choose(1000, 1);
    twin.run().advance(60);
    const FramePtr about = twin.run().frame();
    ASSERT_GT(differing(letter, about), 1000);

    chooseAbout(game);
    EXPECT_TRUE(game.shows(about));
    desk().key("Escape");
    EXPECT_TRUE(game.shows(letter));
    for (const char* const key : {"F10", "Down", "Return"})
        desk().key(key);
    EXPECT_TRUE(game.shows(about));
    desk().key("Return");
    EXPECT_TRUE(game.shows(letter));
}

TEST_F(Play, LeavingSavingAndLoadingGoThroughPanels)
{
    const std::string name = "Hob & Zoé", saved = desk().folder().path("data/" + name);
    FramePtr standing;
    {
        WindowedGame game(desk());
        ASSERT_TRUE(game.comesUp());
        Twin twin(game);
        ASSERT_TRUE(twin.toStore());
        ASSERT_TRUE(twin.toTrail());
        standing = stillPicture(game);
        twin.run().advance(120);
        const FramePtr chance = difference(standing, twin.run().frame()); // weather
        EXPECT_LT(std::ranges::count(chance->pixels, 1), 3000);
        const double share = processorShare(game.program().pid(), 5);
        std::cout << "processor on the standing trail: " << share * 100 << " % of one\n";
        EXPECT_LT(share, kMostAtRest);

        // The close box asks. The panel that its answer leads to is cancelled, and with it the quit.
        twin.key("cmd-q", "alt+F4");
        ASSERT_TRUE(twin.waitFor(QuitPanel, chance));
        game.click(Twin::place(QuitPanel, 1));
        ASSERT_TRUE(desk().waitForActive(kSavePanel));
        desk().key("Escape");
        ASSERT_TRUE(desk().waitForEnd(kSavePanel));
        EXPECT_TRUE(game.shows(standing));
        ASSERT_TRUE(game.program().running());

        // A later alert stays until it is answered.
        chooseAbout(game);
        const FramePtr about = stillPicture(game);
        EXPECT_GT(differing(about, standing), 1000);
        pauseFor(1);
        EXPECT_EQ(differing(game.picture(), about), 0);
        desk().key("Return");
        EXPECT_TRUE(game.shows(standing));

        // A quit while an alert is up ends the alert, then asks.
        chooseAbout(game);
        EXPECT_TRUE(game.shows(about));
        desk().key("alt+F4");
        EXPECT_TRUE(game.shows(twin.run().frame(), 0, chance));

        // Saved under a name with an accent and an ampersand; the settings are not on show and cannot be replaced.
        game.click(Twin::place(QuitPanel, 1));
        ASSERT_TRUE(desk().waitForActive(kSavePanel));
        desk().type("Wainroad Settings");
        desk().key("Return");
        ASSERT_TRUE(desk().waitForActive(kRefusal));
        desk().key("Return");
        ASSERT_TRUE(desk().waitForActive(kSavePanel));
        desk().key("ctrl+a");
        desk().type(name);
        desk().key("Return");
        EXPECT_EQ(game.program().wait(60), 0);
        ASSERT_TRUE(std::filesystem::exists(saved));
        EXPECT_EQ(std::filesystem::file_size(saved), 14438U);
    }
    desk().folder().write("data/A letter.txt", "no journey");
    WindowedGame game(desk());
    ASSERT_TRUE(game.comesUp());
    Twin twin(game);
    ASSERT_TRUE(twin.toTitle());
    const double share = processorShare(game.program().pid(), 5);
    std::cout << "processor on the title: " << share * 100 << " % of one\n";
    EXPECT_LT(share, kMostAtRest);

    desk().key("ctrl+o");
    ASSERT_TRUE(desk().waitForActive(kOpenPanel));
    desk().key("Escape");
    ASSERT_TRUE(desk().waitForEnd(kOpenPanel));
    EXPECT_TRUE(twin.toTitle());
    ASSERT_TRUE(desk().waitForActive(kGame));
    desk().key("ctrl+o");
    ASSERT_TRUE(desk().waitForActive(kOpenPanel));
    desk().type(name);
    desk().key("Return");
    ASSERT_TRUE(desk().waitForEnd(kOpenPanel));
    const FramePtr loaded = stillPicture(game);
    EXPECT_LT(differing(loaded, standing), 20000) << "the travel screen, with the resumed panel at most";

    // The next save offers the name of this one, and asks before it is replaced.
    const auto before = std::filesystem::last_write_time(saved);
    ASSERT_TRUE(desk().waitForActive(kGame));
    desk().key("ctrl+s");
    ASSERT_TRUE(desk().waitForActive(kSavePanel));
    desk().key("Return");
    ASSERT_TRUE(desk().waitForActive(kReplace));
    desk().key("Escape");
    ASSERT_TRUE(desk().waitForActive(kSavePanel));
    EXPECT_EQ(std::filesystem::last_write_time(saved), before);
    desk().key("Return");
    ASSERT_TRUE(desk().waitForActive(kReplace));
    desk().key("alt+r");
    EXPECT_TRUE(desk().waitForEnd(kSavePanel));
    EXPECT_TRUE(
        waitUntil([&] { return std::filesystem::exists(saved) && std::filesystem::last_write_time(saved) != before; }));
    EXPECT_FALSE(std::filesystem::exists(desk().folder().path("config/QtProject.conf"))) << "a panel keeps a history";
}
