// The programs as a person starts them.

#include "MacToolbox/Base/Platform.h"
#include "Tests/Harness/ChildProcess.h"
#include "Tests/Harness/Golden.h"
#include "Tests/Harness/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include <unistd.h>

using namespace Harness;

namespace {

constexpr double kPatience = 120; // seconds

/// Starts a program of the build headless, with that script ("" is none) and the folder for data and pictures.
class Program {
public:
    Program(const std::string& name, const std::string& script, const TemporaryFolder& folder)
        : child_([&] {
              setenv("WR_HEADLESS", "", 1);
              setenv("WR_DATA", folder.path("data").c_str(), 1);
              setenv("WR_OUT", folder.path().c_str(), 1);
              setenv("WR_DATE", "1848-04-01", 1);
              if (!script.empty())
                  setenv("WR_SCRIPT", folder.write("the.script", script).c_str(), 1);
              const std::string path = MacToolbox::Platform::current().programFolder() + "/" + name;
              execl(path.c_str(), path.c_str(), nullptr);
              std::abort();
          })
    {
    }
    int wait(double seconds = kPatience) { return child_.wait(seconds); }
    std::string output() { return child_.output(); }

private:
    ChildProcess child_;
};

} // namespace

TEST(Program, AScriptQuitsTheGameAtTheTitle)
{
    const TemporaryFolder folder;
    Program game("wainroad", "wait 2\nshot a.png\nkey cmd-q\n", folder);
    EXPECT_EQ(game.wait(), 0);
    EXPECT_EQ(game.output(), "");
    const auto picture = readPicture(folder.path("a.png"));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 512);
    EXPECT_EQ(picture->height, 322);
}

TEST(Program, QuitEndsTheGameAtOnce)
{
    const TemporaryFolder folder;
    Program game("wainroad", "quit\n", folder);
    EXPECT_EQ(game.wait(), 0);
}

TEST(Program, FastForwardShowsWhatTheScriptShows)
{
    const TemporaryFolder folder, again;
    const std::string script = "wait 30\nshot a.png\nwait 30\nshot b.png\nquit\n";
    Program player("fastforward", script, folder), second("fastforward", script, again);
    EXPECT_EQ(player.wait(), 0);
    EXPECT_EQ(second.wait(), 0);
    for (const char* name : {"a.png", "b.png"}) {
        const auto picture = readPicture(folder.path(name)), same = readPicture(again.path(name));
        ASSERT_TRUE(picture && same);
        EXPECT_EQ(picture->pixels, same->pixels);
    }
}

TEST(Program, FastForwardSaysThatTheGameGoesOn)
{
    const TemporaryFolder folder;
    Program open("fastforward", "wait 3\n", folder);
    EXPECT_EQ(open.wait(), 2);
    EXPECT_EQ(open.output(), "fastforward: the script is over and the game goes on; a last line \"quit\" ends it\n");
    Program none("fastforward", "", folder);
    EXPECT_EQ(none.wait(), 2);
    EXPECT_EQ(none.output(), "fastforward: there is no script to play; WR_SCRIPT names one\n");
}
