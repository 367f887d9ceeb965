// The management lock and what it guards, played by keys and clicks on the real dialogs.

#include "Wainroad/Screens/Management.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Managers/Menus.h"
#include "Tests/Player/Visit.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Persistence/Legends.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

constexpr Int kMenu = 1004;
enum MenuItem : Int { kLock = 2, kLegends = 4, kTime = 5, kNetwork = 6, kPassword = 7 };
constexpr Int kOK = 1, kCancel = 2;

/// The title, on settings that outlive the game.
class Management : public testing::Test {
protected:
    void SetUp() override { restart(); }

    void restart()
    {
        game.reset();
        GameRun::Setup setup;
        setup.environment["WR_DATA"] = data.path();
        game.emplace(Visit::From::start, std::move(setup));
    }
    /// Quits in the way that keeps the settings, and starts again.
    void startAgain()
    {
        game->run.play("key cmd-q");
        ASSERT_TRUE(game->run.runToEnd(600));
        restart();
    }
    void choose(MenuItem item)
    {
        game->run.choose(kMenu, item);
        game->run.advance(20);
    }
    void unlock(const std::string& password = "lantern")
    {
        choose(kLock);
        game->run.play("type " + password);
        game->player.key("return");
        game->run.advance(30);
    }
    static bool isEnabled(MenuItem item) { return GetMHandle(kMenu)->item(item)->enabled; }
    static bool isOpen() { return Visit::dialog() != nullptr; }
    static Str255 text(Int item)
    {
        Str255 s;
        GetIText(Visit::dialog()->item(item)->handle, s);
        return s;
    }
    /// What the alert in front says, and whether there is one.
    static std::string alertText()
    {
        if (!isOpen() || !Visit::dialog()->alertIcon)
            return "no alert";
        for (const DItem& item : Visit::dialog()->items)
            if (item.kind() == statText)
                return string(PStrOf(expandParams(item.handle.block->bytes)));
        return "";
    }
    void answerAlert() { game->player.key("return"), game->run.advance(30); }

    /// The stored file.
    Bytes file() const
    {
        std::ifstream in(data.path("Wainroad Settings"), std::ios::binary);
        return Bytes{std::istreambuf_iterator<char>(in), {}};
    }
    /// How many legends the stored list of wagons has.
    Int storedLegends() const
    {
        const Bytes image = file();
        return ByteReader(image, kConfigLegendsAt).s16();
    }

    const TemporaryFolder data;
    std::optional<Visit> game;
};

} // namespace

TEST_F(Management, TheLockOpensToThePasswordAlone)
{
    for (const MenuItem item : {kLegends, kTime, kNetwork, kPassword})
        EXPECT_FALSE(isEnabled(item));
    unlock("torch");
    EXPECT_EQ(alertText(), string(ListString(3003, 1)));
    answerAlert();
    ASSERT_TRUE(isOpen()) << "one may try again";
    EXPECT_FALSE(gManagement);

    game->run.play("type  LAN tern"); // in place of what was typed; blanks are refused
    EXPECT_EQ(text(5), (Str255{7, 165, 165, 165, 165, 165, 165, 165}));
    game->player.key("return");
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(gManagement);
    for (const MenuItem item : {kLegends, kTime, kNetwork, kPassword})
        EXPECT_TRUE(isEnabled(item));

    choose(kLock);
    EXPECT_FALSE(isOpen()) << "to lock is not asked about";
    EXPECT_FALSE(gManagement);
    EXPECT_FALSE(isEnabled(kTime));

    choose(kLock);
    game->run.play("type lantern");
    game->clickDialog(kCancel);
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(gManagement);
}

TEST_F(Management, TheFieldTakesItsCharactersBack)
{
    choose(kLock);
    game->run.play("type lanxern\nkey left\nkey left\nkey left\nkey backspace\ntype t");
    EXPECT_EQ(text(5).size(), 8U);
    game->player.key("return");
    EXPECT_TRUE(gManagement) << "the hidden text follows the field";
}

TEST_F(Management, ANewPasswordIsAskedForTwiceAndKept)
{
    constexpr Int kOld = 6, kNew = 7, kHint = 8;
    unlock();
    choose(kPassword);
    game->run.play("type torch");
    game->clickDialog(kOK);
    EXPECT_EQ(alertText(), string(ListString(3003, 1)));
    answerAlert();
    game->run.play("type Lantern\nkey return"); // on to the next field
    game->clickDialog(kOK);
    EXPECT_EQ(alertText(), string(ListString(3003, 2))) << "an empty one";
    answerAlert();
    game->run.play("type abc def~ghijk\nkey tab\nkey backspace\ntype one two\nwait 0.1");
    EXPECT_EQ(string(text(kOld)), "Lantern");
    EXPECT_EQ(string(text(kNew)), "abcdef~ghi") << "ten characters, no blanks";
    EXPECT_EQ(string(text(kHint)), "one two") << "blanks stand in a hint";
    game->run.play(
        "type a hint that runs on and on, over one line and the next and a third, and would need a fourth one "
        "if there were room for it");
    EXPECT_LE(Visit::dialog()->textH->nLines(), 3);
    const Str255 hint = text(kHint);
    game->clickDialog(kOK);
    EXPECT_FALSE(isOpen());

    startAgain();
    EXPECT_EQ(gOptions.hint, hint);
    EXPECT_FALSE(gManagement) << "each start finds it locked";
    unlock();
    EXPECT_EQ(alertText(), string(ListString(3003, 1))) << "the old one";
    answerAlert();
    EXPECT_EQ(text(7), hint);
    game->run.play("type abcdef~ghi\nkey return\nwait 0.3");
    EXPECT_TRUE(gManagement);

    choose(kPassword);
    game->run.play("type abcdef~ghi\nkey tab\ntype another");
    game->clickDialog(kCancel);
    EXPECT_EQ(string(gOptions.password), "abcdef~ghi");
}

TEST_F(Management, WithoutAHintItsLabelGoes)
{
    constexpr Int kLabel = 6;
    choose(kLock);
    EXPECT_GT(text(kLabel).size(), 1U);
    game->clickDialog(kCancel);
    gOptions.hint = {0};
    choose(kLock);
    EXPECT_EQ(text(kLabel), Str255{0});
}

TEST_F(Management, TimesReachTheNextJourney)
{
    constexpr Int kSlow = 5;
    constexpr Point kPopUp{140, 150}; // in the dialog
    unlock();
    choose(kTime);
    game->clickDialog(kSlow);
    game->clickDialog(kCancel);
    EXPECT_EQ(gOptions.speed, 4);

    choose(kTime);
    game->clickDialog(kSlow);
    const Rect place = Visit::dialog()->contentRect;
    const std::string h = std::to_string(place.left + kPopUp.h);
    const Int v = place.top - 20 + kPopUp.v;
    game->run.play("down " + h + " " + std::to_string(v) + "\nwait 0.3\nmove " + h + " " + std::to_string(v - 20)
        + "\nwait 0.3\nup " + h + " " + std::to_string(v - 20) + "\nwait 0.3");
    game->player.key("return");
    ASSERT_FALSE(isOpen());
    EXPECT_EQ(gOptions.speed, 8);
    EXPECT_EQ(gOptions.huntTime, 3);

    startAgain();
    ASSERT_TRUE(game->player.setOut("Ann"));
    EXPECT_EQ(gTrain.speed, 8);
    EXPECT_EQ(gTrain.huntTime, 3);
}

TEST_F(Management, ANetworkIsAskedAboutStoredAndNotEntered)
{
    constexpr Int kTrain = 5, kShared = 6;
    unlock();
    choose(kNetwork);
    game->clickDialog(kShared);
    game->clickDialog(kOK);
    EXPECT_EQ(alertText(), string(ListString(3000, 23)));
    game->clickDialog(kCancel);
    EXPECT_EQ(gOptions.mode, 0);
    EXPECT_FALSE(isOpen());

    choose(kNetwork);
    game->clickDialog(kShared);
    game->clickDialog(kOK);
    game->clickDialog(kOK);
    EXPECT_EQ(alertText(), string(ListString(3000, 13))) << "this version travels alone";
    answerAlert();
    EXPECT_EQ(gOptions.mode, 2);
    EXPECT_EQ(gConfigMode, 0);

    choose(kNetwork);
    game->clickDialog(kTrain);
    game->clickDialog(kOK); // the first network is not asked about
    EXPECT_EQ(alertText(), string(ListString(3000, 13)));
    answerAlert();
    EXPECT_EQ(gOptions.mode, 1);
    EXPECT_FALSE(isOpen());
}

TEST_F(Management, LegendsGoWithDoneAndComeBackWhenRestored)
{
    constexpr Int kRemove = 1, kDone = 2, kList = 4, kRestore = 6, kGoAhead = 2;
    const Bytes first = file();
    unlock();
    choose(kLegends);
    EXPECT_EQ(Visit::dialog()->item(kRemove)->handle.ctl->contrlHilite, 255) << "nothing is selected yet";
    game->clickDialog(kList);
    EXPECT_EQ(Visit::dialog()->item(kRemove)->handle.ctl->contrlHilite, 0);
    game->clickDialog(kRemove);
    EXPECT_EQ(storedLegends(), kLegendRows) << "not before the end";
    game->clickDialog(kDone);
    EXPECT_EQ(storedLegends(), kLegendRows - 1);

    choose(kLegends);
    game->run.play("key cmd-a");
    game->clickDialog(kRemove);
    game->player.key("return"); // Done
    EXPECT_EQ(storedLegends(), 0);

    choose(kLegends);
    game->clickDialog(kRestore);
    EXPECT_NE(alertText(), "no alert");
    game->player.key("return"); // the safe answer
    EXPECT_EQ(storedLegends(), 0);
    game->clickDialog(kRestore);
    game->clickDialog(kGoAhead);
    EXPECT_EQ(storedLegends(), kLegendRows) << "at once";
    game->player.key("return");
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(file(), first) << "both lists as they were";
}

TEST_F(Management, AQuitRequestRestoresNothing)
{
    constexpr Int kRemove = 1, kRestore = 6;
    unlock();
    choose(kLegends);
    game->run.play("key cmd-a");
    game->clickDialog(kRemove);
    game->player.key("return");
    choose(kLegends);
    game->clickDialog(kRestore);
    Input::quitRequested = true;
    game->run.advance(60);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(storedLegends(), 0);
}
