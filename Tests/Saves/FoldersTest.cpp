// Folders that refuse to be written, for real: one that may only be read, and a small file system that is full.

#include "MacToolbox/Base/Platform.h"
#include "Tests/Harness/ChildProcess.h"
#include "Tests/Player/PanelPlayer.h"
#include "Tests/Saves/Folder.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Simulation/Model.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iostream>

#include <grp.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

GameRun::Setup on(const std::string& data)
{
    GameRun::Setup setup;
    setup.environment["WR_DATA"] = data;
    return setup;
}

/// A journey under way on that folder, saved as "Kept" and exported as "Story".
struct UnderWay {
    explicit UnderWay(const std::string& data) : run(Wainroad_main, on(data)), player(run)
    {
        good = player.setOut("Ann");
    }

    /// Tries a file command. @return What the alert says, which is answered then.
    std::string answer(const std::string& script)
    {
        run.play(script + "\nwait 0.3");
        const std::string said = diskAlert();
        if (!said.empty())
            run.play("key return\nwait 0.3");
        return said;
    }

    GameRun run;
    PanelPlayer player;
    bool good = false;
};

const std::string kSave = "file Kept\nmenu 1001 2", kExport = "file Story\nmenu 1001 4",
                  kOpen = "file Kept\nmenu 1001 1";
const std::string kNotDone = ": The game goes on, but this was not done.";

/// What a player meets whose folder may only be read. @return The number of the step that went wrong, or 0.
int playReadOnly(const std::string& data)
{
    UnderWay game(data);
    if (!game.good)
        return 1; // the game starts, with the settings that are there
    if (game.answer(kSave) != "-48" + kNotDone || game.answer("file New\nmenu 1001 2") != "-36" + kNotDone)
        return 2; // the old one cannot be taken away, a new one not made
    if (const std::string said = game.answer(kExport); !said.empty() && said != "-36" + kNotDone)
        return 3;
    game.run.call([] { ToTitle(); }, 20);
    if (!game.answer(kOpen).empty() || !game.player.waitFor(StatusPanel, 300) || gPlaying != 2)
        return 4; // what is there can still be loaded
    return 0;
}

} // namespace

TEST(Folders, OneThatMayOnlyBeReadIsToldOfAndKeepsItsFiles)
{
    const TemporaryFolder folder;
    const std::string data = folder.path("data");
    {
        UnderWay game(data);
        ASSERT_TRUE(game.good);
        EXPECT_EQ(game.answer(kSave), "");
        EXPECT_EQ(game.answer(kExport), "");
    }
    const auto before = filesIn(data);
    ASSERT_EQ(before.size(), 3U);
    for (const auto& entry : std::filesystem::directory_iterator(data))
        chmod(entry.path().c_str(), 0644);
    chmod(folder.path().c_str(), 0755);
    chmod(data.c_str(), 0555);
    ChildProcess child([&] {
        constexpr unsigned kNobody = 65534; // root may write anywhere
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0))
            _exit(10);
        if (access(Platform::current().programFolder().c_str(), R_OK | X_OK) != 0)
            _exit(11);
        _exit(playReadOnly(data));
    });
    const int status = child.wait(120);
    chmod(data.c_str(), 0755);
    EXPECT_TRUE(filesIn(data) == before);
    if (status == 10 || status == 11)
        GTEST_SKIP() << "no other user can be played here: "
                     << (status == 10 ? "not allowed" : "the program's folder is closed to others");
    EXPECT_EQ(status, 0) << child.output();
}

TEST(Folders, AFullFileSystemIsToldOfAndKeepsItsFiles)
{
    const TemporaryFolder folder;
    if (mount("tmpfs", folder.path().c_str(), "tmpfs", 0, "size=128k") != 0)
        GTEST_SKIP() << "no small file system can be mounted here";
    const std::string data = folder.path("data");
    {
        UnderWay game(data);
        EXPECT_TRUE(game.good);
        EXPECT_EQ(game.answer(kSave), "");
        EXPECT_EQ(game.answer(kExport), "");
        const auto before = filesIn(data);
        EXPECT_EQ(before.size(), 3U);
        std::ofstream fill(folder.path("fill"), std::ios::binary);
        for (int i = 0; i < 200 && fill; ++i)
            fill << std::string(1024, 'x') << std::flush;
        EXPECT_FALSE(fill) << "it is full";
        fill.close();

        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(game.answer(kSave), "-36" + kNotDone);
        const std::string said = game.answer(kExport);
        EXPECT_TRUE(said.empty() || said == "-36" + kNotDone) << said;
        EXPECT_TRUE(filesIn(data) == before);
        std::filesystem::remove(folder.path("fill"));
        EXPECT_EQ(game.answer(kSave), "") << "with room again it is saved";
        EXPECT_EQ(filesIn(data).size(), 3U);
    }
    EXPECT_EQ(umount2(folder.path().c_str(), MNT_DETACH), 0);
}
