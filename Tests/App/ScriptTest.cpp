#include "MacToolbox/App/ScriptHost.h"

#include "MacToolbox/Base/ManualClock.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/QuickDraw/Screen.h"
#include "Tests/Harness/Golden.h"
#include "Tests/Harness/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using namespace MacToolbox;
using namespace Harness;

namespace {

/// A run that has just begun, under the manual clock; nothing takes the events.
class ScriptTest : public testing::Test {
protected:
    ScriptTest()
    {
        Clock::install(&clock);
        startRunAfresh();
        viewport = Screen::shared().viewport();
    }
    ~ScriptTest() override { Clock::install(nullptr); }

    /// Plays the whole text. @return The milliseconds waited, all together.
    Int play(const std::string& text)
    {
        Script script(text, folder.path());
        Nanos waited = 0;
        while (const auto wait = script.step())
            waited += *wait;
        return waited / 1'000'000;
    }
    /// The queued events, one after another, as "kind:message:modifiers".
    static std::string events()
    {
        std::string all;
        while (const auto event = Input::take(-1, true)) {
            if (!all.empty())
                all += ' ';
            all += std::to_string(event->what) + ':' + std::to_string(event->message) + ':'
                + std::to_string(event->modifiers);
        }
        return all;
    }

    ManualClock clock;
    TemporaryFolder folder;
    Rect viewport;
};

} // namespace

TEST_F(ScriptTest, EachLineMakesItsEventsAndItsPause)
{
    const struct {
        const char* text;
        Int milliseconds;
        const char* events;
    } cases[] = {
        {"", 0, ""},
        {"\n\n   \n# wait 5\n  # wait 5\n", 0, ""},
        {"wait", 1000, ""},
        {"  wait 2.5  ", 2500, ""},
        {"wait soon", 1000, ""},
        {"wait -1", 0, ""},
        {"wait +.5", 500, ""},
        {"wait inf", 1000, ""},
        {"wait -nan", 1000, ""},
        {"wait 1e1", 10000, ""},
        {"wait --1", 1000, ""},
        {"wait +-1", 1000, ""},
        {"wait 0,5", 1000, ""},
        {"\xC2\xA0wait 2\xE3\x80\x80", 2000, ""},
        {"key", 100, "3:9229:128"},
        {"key return", 100, "3:9229:128"},
        {"key enter", 100, "3:19459:128"},
        {"key space", 100, "3:12576:128"},
        {"key Q", 100, "3:81:128"},
        {"key cmd-q", 100, "3:113:384"},
        {"key cmd-left", 100, "3:31516:384"},
        {"key cmd-", 100, ""},
        {"key cmd-cmd-a", 100, "3:99:384"},
        {"key Return", 100, "3:82:128"},
        {"type", 0, ""},
        {"type ", 0, ""},
        {"type a  b", 200, "3:97:128 3:32:128 3:32:128 3:98:128"},
        {"type \xC3\xA9", 50, "3:142:128"},
        {"type \xE2\x82\xAC\xF0\x9F\x90\x82", 100, "3:219:128 3:63:128"},
        {"type a\r", 100, "3:97:128 3:13:128"},
        {"menu 1001 7", 200, "1:-1:128"},
        {"menu 1001", 200, ""},
        {"menu", 200, ""},
        {"click 10 20", 180, "1:0:0 2:0:128"},
        {"click 10", 0, ""},
        {"click", 0, ""},
        {"down 1 1\nmove 5 5\nup 5 5", 0, "1:0:0 2:0:128"},
        {"up 1 1", 0, ""},
        {"move 1", 0, ""},
        {"key cmd-a\nclick 1 1\ntype b", 330, "3:97:384 1:0:256 2:0:384 3:98:128"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        startRunAfresh();
        EXPECT_EQ(play(c.text), c.milliseconds);
        EXPECT_EQ(events(), c.events);
    }
}

TEST_F(ScriptTest, PointsAreRelativeToTheViewport)
{
    const struct {
        const char* line;
        Int h, v;
    } cases[] = {
        {"move 10 20", 10, 20},
        {"move +5 -2", 5, -2},
        {"move 10 x", 10, 0},
        {"move 1.5 0x7", 0, 0},
        {"move - +", 0, 0},
        {"move 99999999999999999999 7", 0, 7},
        {"move +-1 --1", 0, 0},
        {"move  3   4  5", 3, 4},
    };
    for (const auto& c : cases) {
        play(c.line);
        EXPECT_EQ(Input::mouseLocation(), (Point{viewport.top + c.v, viewport.left + c.h})) << c.line;
    }
    play("move 9223372036854775807 -9223372036854775808"); // stays in range, whatever that is
    EXPECT_GT(Input::mouseLocation().h, 1'000'000);
}

TEST_F(ScriptTest, AnUnknownWordIsToldAndTheScriptGoesOn)
{
    testing::internal::CaptureStdout();
    EXPECT_EQ(play("Wait 1\nquit\r\nclick\t1 1\nwait 1"), 1000);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
        "script: unknown command Wait\nscript: unknown command quit\r\nscript: unknown command click\t1\n");
}

TEST_F(ScriptTest, AShotIsTakenAfterItsPause)
{
    Script script("shot a.png\nwait 1", folder.path());
    EXPECT_EQ(script.step(), kSecond / 10);
    EXPECT_FALSE(std::filesystem::exists(folder.path("a.png")));
    Screen::shared().publish(true);
    EXPECT_EQ(script.step(), kSecond);
    const FramePtr picture = readPicture(folder.path("a.png"));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 512);
    EXPECT_EQ(picture->height, 322);
    EXPECT_EQ(picture->pixels, Screen::shared().snapshot()->pixels);
}

TEST_F(ScriptTest, ShotsGoWhereTheirNamesSay)
{
    Screen::shared().publish(true);
    std::filesystem::create_directory(folder.path("sub"));
    EXPECT_EQ(play("shot\nshot sub/b.png\nshot missing/c.png\nshot " + folder.path("d.png")), 400);
    for (const char* there : {"shot.png", "sub/b.png", "d.png"})
        EXPECT_TRUE(readPicture(folder.path(there))) << there;
    EXPECT_FALSE(std::filesystem::exists(folder.path("missing")));
}

TEST_F(ScriptTest, WithoutAPictureTheSizeIsTold)
{
    testing::internal::CaptureStderr();
    play("shot");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "shot: no picture (0x0)\n");
    EXPECT_FALSE(std::filesystem::exists(folder.path("shot.png")));
}

TEST_F(ScriptTest, AMenuDumpIsWrittenWhole)
{
    play("menudump\nmenudump nowhere/m.txt");
    EXPECT_TRUE(std::filesystem::exists(folder.path("menus.txt")));
    EXPECT_FALSE(std::filesystem::exists(folder.path("nowhere")));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1) << "nothing is left over";
}

TEST_F(ScriptTest, ALongLineIsTypedToItsEnd)
{
    EXPECT_EQ(play("type " + std::string(300, 'x')), 300 * 50);
    EXPECT_EQ(events().size(), 100 * std::string("3:120:128 ").size() - 1) << "the queue holds the last hundred";
}
