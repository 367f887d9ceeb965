// Starts that cannot succeed, and the events that the main loop deals with itself.

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/Managers/Sound.h"
#include "Tests/Harness/GameRun.h"
#include "Tests/Managers/ToyResources.h"
#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Game/GameMenu.h"
#include "Wainroad/Game/Main_.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Title.h"

#include <gtest/gtest.h>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

std::string bytesText(const Bytes& bytes) { return std::string(bytes.begin(), bytes.end()); }

/// The end of a game that is started on these files.
struct End {
    std::optional<int> status;
    std::string words;
};
End startOn(const std::vector<std::string>& folders, const std::string& script = "")
{
    testing::internal::CaptureStderr();
    End end;
    {
        GameRun run(Wainroad_main, {script, {}, folders});
        run.runToEnd(60 * 60);
        end.status = run.status();
    }
    end.words = testing::internal::GetCapturedStderr();
    return end;
}

bool atTitle() { return FindPanel(TitlePanel) != nullptr; }

const Bytes kAlertItems =
    Form().u16(1).u32(0).rect({60, 200, 80, 280}).u8(4).u8(2).text("OK").u32(0).rect({0, 0, 0, 0}).u8(0x80).u8(0).bytes;
const Bytes kAlert = Form().rect({0, 0, 100, 300}).u16(1).u32(0).u32(0).u16(1000).counted("").bytes;

} // namespace

TEST(Start, WithoutABundleItStopsAtOnce)
{
    const TemporaryFolder folder;
    const End end = startOn({folder.path("no"), folder.path("nowhere")});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(
        end.words, "could not load resource bundle: from " + folder.path("no") + ", " + folder.path("nowhere") + "\n");
}

TEST(Start, AnEmptyBundleEndsInWordsNotInALoop)
{
    const TemporaryFolder folder;
    const End end = startOn({folder.path()});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.words, "wainroad: error -192 in GetNewWindow\nwainroad: error -192 in DCenteredAlert\n");
}

TEST(Start, AMissingResourceIsShownAndEndsTheGameNormally)
{
    const Bytes alert = kAlert, items = kAlertItems;
    const Bytes window = Form().rect({20, 0, 342, 512}).u16(2).u16(0).u16(0).u32(0).counted("").bytes;
    const Bytes frame = Form().u16(1).u32(20).u32(0).u16(2).rect({0, 0, 1, 16}).u8(0xFE).u8(0xFF).bytes;
    const std::vector<ToyResource> shown{{os("DLOG"), 1000, alert}, {os("DITL"), 1000, items},
        {os("FONT"), 12, boxFont()}, {os("STR#"), 3000, Form().u16(5).zeros(4).counted("Settings").bytes}};
    auto more = shown;
    const std::pair<ToyResource, const char*> steps[] = {
        {{os("WIND"), 1000, window}, "GetNewWindow"},
        {{os("Imag"), 128, frame}, "ImagToBitMap"},
        {{os("CONF"), 1000, Bytes(1108)}, "ConfCreate1"},
    };
    for (const auto& [resource, where] : steps) {
        const TemporaryFolder folder;
        folder.write("Wainroad.rsrc", bytesText(resourceFile(more)));
        const End end = startOn({folder.path()}, "wait 1\nkey return\n");
        EXPECT_EQ(end.status, 0) << where;
        EXPECT_EQ(end.words, std::string("wainroad: error -192 in ") + where + "\n");
        more.push_back(resource);
    }
}

TEST(Start, DamagedResourceFilesNeverCrash)
{
    const TemporaryFolder folder;
    for (const std::string& contents :
        {std::string(), std::string(15, 'x'), std::string(4096, '\xFF'), std::string(70000, '\0')}) {
        folder.write("System.rsrc", contents);
        folder.write("Wainroad.rsrc", contents);
        EXPECT_EQ(startOn({folder.path()}).status, 1);
    }
}

TEST(MainLoop, TheStartUpSoundEndsBeforeTheTitle)
{
    GameRun run(Wainroad_main);
    ASSERT_TRUE(run.runUntil([] { return gChannel && gChannel->userInfo == kSoundPlaying; }));
    const Int begin = run.ticks();
    ASSERT_TRUE(run.runUntil(atTitle));
    EXPECT_LE(run.ticks() - begin, 183);
    EXPECT_EQ(gChannel->userInfo, kSoundIdle);
}

TEST(MainLoop, MenuChoicesReachTheirCommands)
{
    GameRun run(Wainroad_main);
    ASSERT_TRUE(run.runUntil(atTitle));
    run.advance(30);
    EXPECT_TRUE(gSoundOn);
    run.choose(kPlayMenu, kPlaySound);
    run.advance(10);
    EXPECT_FALSE(gSoundOn);
    EXPECT_EQ(MenuBar::dump().find("Sound *"), std::string::npos) << "the mark went with it";
    for (const auto& [menu, item] :
        {std::pair<Int, Int>{kAppleMenu, 7}, {kFileMenu, 99}, {77, 1}, {kEditMenu, 3}, {kFileMenu, kFileToTitle}})
        run.choose(menu, item);
    EXPECT_TRUE(run.advance(60));
    EXPECT_TRUE(atTitle());
    run.choose(kFileMenu, kFileQuit);
    EXPECT_TRUE(run.runToEnd(120));
    EXPECT_EQ(run.status(), 0);
}

TEST(MainLoop, KeysWithoutAUseDoNothing)
{
    GameRun run(Wainroad_main);
    ASSERT_TRUE(run.runUntil(atTitle));
    EXPECT_TRUE(run.play("key cmd-.\nkey return\nkey cmd-z\ntype xyz\nclick 250 -5\nclick 600 600\nwait 0.5"));
    EXPECT_TRUE(atTitle());
}

TEST(MainLoop, InTheBackgroundTheMenusAreOff)
{
    GameRun run(Wainroad_main);
    ASSERT_TRUE(run.runUntil(atTitle));
    run.advance(10);
    QueueSound(9001);
    ActivateWindow(gWindow, false);
    EXPECT_TRUE(gInBackground);
    EXPECT_EQ(gQueued, 0);
    EXPECT_FALSE(GetMHandle(kPlayMenu)->enabled);
    EXPECT_FALSE(GetMHandle(kManagementMenu)->enabled);
    EXPECT_FALSE(GetMHandle(kFileMenu)->item(kFileOpen)->enabled);
    EXPECT_TRUE(GetMHandle(kEditMenu)->item(kEditUndo)->enabled);
    ActivateWindow(nullptr, true);
    EXPECT_TRUE(gInBackground) << "another window";
    ActivateWindow(gWindow, true);
    EXPECT_FALSE(gInBackground);
    EXPECT_TRUE(GetMHandle(kPlayMenu)->enabled);
    EXPECT_TRUE(GetMHandle(kFileMenu)->item(kFileOpen)->enabled);
    EXPECT_FALSE(GetMHandle(kFileMenu)->item(kFileToTitle)->enabled);
}

TEST(MainLoop, ChoosingQuitEndsTheGameFromEveryScreenBeforeTheTrail)
{
    const char* const ways[] = {"", "click 60 290\nwait 1", "click 60 290\nwait 1\nkey return\nwait 1"};
    for (const char* const way : ways) {
        SCOPED_TRACE(way);
        GameRun run(Wainroad_main);
        ASSERT_TRUE(run.runUntil(atTitle));
        ASSERT_TRUE(run.play(way));
        run.choose(kFileMenu, kFileQuit);
        EXPECT_TRUE(run.runToEnd(240));
        EXPECT_EQ(run.status(), 0);
        EXPECT_EQ(gRootView, nullptr);
    }
}
