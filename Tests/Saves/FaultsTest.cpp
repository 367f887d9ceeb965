// Every call to the disk fails, once and from then on, while the game saves, loads, exports, starts, and changes its
// configuration: a person is told in the words for it, and nothing that was there is lost.

#include "MacToolbox/Data/HostDisk.h"
#include "MacToolbox/Managers/Dialogs.h"
#include "Tests/Player/PanelPlayer.h"
#include "Tests/Saves/Folder.h"
#include "Wainroad/Game/GameMenu.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Persistence/Legends.h"
#include "Wainroad/Persistence/SavedGame.h"
#include "Wainroad/Screens/Exit.h"
#include "Wainroad/Screens/Management.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <set>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

constexpr Int kMostCalls = 400; // more than any of it makes
const char* const kHeadline = "The game goes on, but this was not done.";

class DiskFaults : public testing::Test {
protected:
    ~DiskFaults() override { HostDisk::setFaults({}); }

    static HostDisk::Faults failing(Int after, bool stays, bool attributes)
    {
        HostDisk::Faults faults;
        faults.after = after, faults.stays = stays, faults.attributes = attributes;
        return faults;
    }
    static HostDisk::Faults sound(bool attributes) { return failing(-1, false, attributes); }

    /// Runs `work` with each of its calls failing in turn, until it makes no more.
    template <typename Work> static void eachFault(Work work)
    {
        for (const bool attributes : {true, false})
            for (const bool stays : {false, true})
                for (Int after = 0; after < kMostCalls && !HasFatalFailure(); ++after) {
                    SCOPED_TRACE(testing::Message()
                        << "call " << after << (stays ? " and on" : "") << (attributes ? "" : ", no attributes"));
                    if (!work(failing(after, stays, attributes)))
                        break;
                    ASSERT_LT(after, kMostCalls - 1);
                }
    }
};

/// A journey under way, with a saved game and an export in its folder.
class FaultsUnderWay : public DiskFaults {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(player.setOut("Ann"));
        run.play("wait 2\nfile Kept\nmenu 1001 2\nwait 0.5\nfile Story\nmenu 1001 4\nwait 0.5");
        ASSERT_EQ(filesIn(run.dataFolder()).size(), 3U);
    }
    /// What the alert says, if there is one, which is answered then.
    std::string answered()
    {
        const std::string said = diskAlert();
        if (!said.empty())
            run.play("key return\nwait 0.2");
        EXPECT_EQ(diskAlert(), "");
        return said;
    }
    static void expectWords(const std::string& said, std::set<Int> numbers)
    {
        std::set<std::string> known;
        for (const Int number : numbers)
            known.insert(std::to_string(number) + ": " + kHeadline);
        EXPECT_TRUE(known.contains(said)) << said;
    }

    GameRun run{Wainroad_main};
    PanelPlayer player{run};
};

} // namespace

TEST_F(FaultsUnderWay, ASaveIsDoneOrToldOfAndTheOldOneStays)
{
    Int failures = 0;
    eachFault([&](const HostDisk::Faults& faults) {
        HostDisk::setFaults(sound(faults.attributes));
        run.play("file Kept\nmenu 1001 2\nwait 0.1");
        const auto before = filesIn(run.dataFolder());
        ++gArrivedAt; // the new file differs
        HostDisk::setFaults(faults);
        run.play("file Kept\nmenu 1001 2\nwait 0.2");
        const bool reached = HostDisk::callsMade() > faults.after;
        HostDisk::setFaults(sound(faults.attributes));
        const std::string said = answered();
        auto now = filesIn(run.dataFolder());
        EXPECT_EQ(gPlaying, 2);
        if (!said.empty()) {
            ++failures;
            expectWords(said, {ioErr, permErr, eofErr, dupFNErr});
            EXPECT_TRUE(now.at("Kept") == before.at("Kept"));
        } else {
            EXPECT_TRUE(now.at("Kept") != before.at("Kept"));
            EXPECT_EQ(now.at("Kept").size(), before.at("Kept").size());
        }
        EXPECT_TRUE(now.at("Story") == before.at("Story"));
        EXPECT_TRUE(now.at("Wainroad Settings") == before.at("Wainroad Settings"));
        if (!faults.stays) {
            run.play("file Kept\nmenu 1001 2\nwait 0.1");
            EXPECT_EQ(filesIn(run.dataFolder()).size(), 3U) << "nothing half-made stays";
        }
        return reached;
    });
    EXPECT_GT(failures, 20);
}

TEST_F(FaultsUnderWay, AnExportIsDoneOrTheOldOneStays)
{
    Int failures = 0;
    eachFault([&](const HostDisk::Faults& faults) {
        HostDisk::setFaults(sound(faults.attributes));
        const std::string old = "an old story\n";
        std::ofstream(run.dataFolder() + "/Story") << old;
        const auto before = filesIn(run.dataFolder());
        HostDisk::setFaults(faults);
        run.play("file Story\nmenu 1001 4\nwait 0.2");
        const bool reached = HostDisk::callsMade() > faults.after;
        HostDisk::setFaults(sound(faults.attributes));
        const std::string said = answered();
        const auto now = filesIn(run.dataFolder());
        if (!said.empty()) {
            ++failures;
            expectWords(said, {ioErr, permErr});
        }
        const bool kept = now.at("Story") == before.at("Story");
        EXPECT_TRUE(kept || (said.empty() && now.at("Story").size() > old.size() + 20)) << said << now.at("Story");
        EXPECT_TRUE(now.at("Kept") == before.at("Kept"));
        run.play("file Story\nmenu 1001 4\nwait 0.1");
        EXPECT_EQ(filesIn(run.dataFolder()).size(), 3U) << "nothing half-made stays";
        return reached;
    });
    EXPECT_GT(failures, 10);
}

TEST_F(FaultsUnderWay, ALoadIsDoneOrToldOfAndHarmsNoFile)
{
    Int failures = 0, loads = 0;
    const auto before = filesIn(run.dataFolder());
    run.call([] { ToTitle(); }, 20);
    eachFault([&](const HostDisk::Faults& faults) {
        if (!faults.attributes) // the saved game was typed by an attribute
            return false;
        HostDisk::setFaults(faults);
        run.play("file Kept\nmenu 1001 1\nwait 0.2");
        const bool reached = HostDisk::callsMade() > faults.after;
        HostDisk::setFaults({});
        const std::string said = answered();
        run.advance(20);
        EXPECT_TRUE(filesIn(run.dataFolder()) == before);
        if (gPlaying == 2) {
            ++loads;
            EXPECT_EQ(said, "");
            EXPECT_TRUE(player.waitFor(StatusPanel, 120));
            run.call([] { ToTitle(); }, 20);
        } else if (!said.empty()) {
            ++failures;
            expectWords(said, {ioErr, eofErr, permErr});
        }
        EXPECT_TRUE(player.waitFor(TitlePanel, 120));
        return reached;
    });
    EXPECT_GE(failures, 4);
    EXPECT_GE(loads, 2);
}

TEST_F(FaultsUnderWay, AFullDiskIsToldOfAndTheOldSaveStays)
{
    const auto before = filesIn(run.dataFolder());
    for (const Int room : {0, 1, 4198, 14437}) {
        SCOPED_TRACE(room);
        HostDisk::Faults full;
        full.room = room, full.error = 28;
        HostDisk::setFaults(full);
        run.play("file Kept\nmenu 1001 2\nwait 0.2");
        expectWords(answered(), {ioErr});
        run.play("file Story\nmenu 1001 4\nwait 0.2");
        if (const std::string said = answered(); !said.empty())
            expectWords(said, {ioErr});
        HostDisk::setFaults({});
        const auto now = filesIn(run.dataFolder());
        EXPECT_TRUE(now.at("Kept") == before.at("Kept"));
        EXPECT_EQ(now.size(), before.size());
    }
}

TEST_F(FaultsUnderWay, AFolderInPlaceOfAFileStays)
{
    std::filesystem::create_directories(run.dataFolder() + "/Folder/inside");
    run.play("file Folder\nmenu 1001 2\nwait 0.2");
    expectWords(answered(), {dupFNErr});
    run.play("file Folder\nmenu 1001 4\nwait 0.2");
    EXPECT_EQ(answered(), "") << "an export that cannot begin ends without a word";
    EXPECT_TRUE(std::filesystem::exists(run.dataFolder() + "/Folder/inside"));
    run.call([] { ToTitle(); }, 20);
    run.play("file Folder\nmenu 1001 1\nwait 0.2");
    EXPECT_EQ(answered(), "");
    EXPECT_EQ(gPlaying, 0) << "a folder is no saved game";
}

namespace {

/// Starts of the whole game on one folder.
class FaultsOfStarts : public DiskFaults {
protected:
    GameRun::Setup here() const
    {
        GameRun::Setup setup;
        setup.environment["WR_DATA"] = data.path();
        return setup;
    }
    /// A start under `faults`, then `work` at the title. Alerts are answered. @return True if the game ended before
    /// `work` was done.
    bool ends(const HostDisk::Faults& faults, const HostDisk::Faults& later, const std::function<void()>& work)
    {
        HostDisk::setFaults(faults);
        testing::internal::CaptureStderr();
        bool done = false;
        std::optional<int> status;
        {
            GameRun run(Wainroad_main, here());
            PanelPlayer player(run);
            if (player.waitFor(TitlePanel, 600)) {
                if (work) {
                    HostDisk::setFaults(later);
                    run.call([&] { work(), done = true; }, 10);
                } else {
                    done = true;
                }
            }
            for (int i = 0; i < 4 && run.running() && !done; ++i)
                run.play("key return\nwait 0.5");
            reached = HostDisk::callsMade() > std::max(faults.after, later.after);
            status = run.status();
        }
        HostDisk::setFaults({});
        said = testing::internal::GetCapturedStderr();
        EXPECT_TRUE(done || status.has_value()) << "neither done nor ended";
        EXPECT_TRUE(done || !said.empty()) << "ended without words";
        return !done;
    }
    bool startsWell() { return !ends({}, {}, nullptr); }

    TemporaryFolder data;
    std::string said;
    bool reached = false;
};

} // namespace

TEST_F(FaultsOfStarts, AFirstStartMakesAConfigurationOrSaysWhyNot)
{
    for (const bool stays : {false, true})
        for (Int after = 0; after < kMostCalls && !HasFailure(); ++after) {
            SCOPED_TRACE(testing::Message() << "call " << after << (stays ? " and on" : ""));
            std::filesystem::remove_all(data.path());
            ends(failing(after, stays, true), {}, nullptr);
            if (!reached)
                break;
            ASSERT_TRUE(startsWell()) << said;
            EXPECT_EQ(filesIn(data.path()).size(), 1U) << "the configuration alone";
        }
}

TEST_F(FaultsOfStarts, ALaterStartLosesNoSettingsAndNoLegends)
{
    ASSERT_FALSE(ends({}, {}, [] {
        UpdateOptions([] { gOptions.hint = pstr("the dog"); });
        OpenConfigForUpdate();
        setLegends(GetLegends(0));
        AddLegend(1000000, pstr("Ann"));
        WriteLegends(0, legendBytes());
        CloseConfig();
    }));
    const auto before = filesIn(data.path());
    Int endings = 0;
    for (const bool stays : {false, true})
        for (Int after = 0; after < kMostCalls && !HasFailure(); ++after) {
            SCOPED_TRACE(testing::Message() << "call " << after << (stays ? " and on" : ""));
            endings += ends(failing(after, stays, true), {}, nullptr);
            EXPECT_TRUE(filesIn(data.path()) == before) << said;
            if (!reached)
                break;
        }
    EXPECT_GT(endings, 4);
}

TEST_F(FaultsOfStarts, AChangeIsDoneOrTheOldConfigurationStays)
{
    ASSERT_TRUE(startsWell());
    const std::string name = "Wainroad Settings";
    const struct {
        const char* what;
        std::vector<bool> stays;
        std::function<void()> work;
    } kChanges[] = {
        {"a setting", {false}, [] { UpdateOptions([] { gOptions.speed = gOptions.speed == 8 ? 2 : 8; }); }},
        {"a legend", {false, true},
            [] {
                OpenConfigForUpdate();
                setLegends(GetLegends(0));
                AddLegend(gLegends[0].points + 1, pstr("Ann"));
                WriteLegends(0, legendBytes());
                CloseConfig();
            }},
    };
    for (const auto& change : kChanges) {
        Int endings = 0;
        for (const bool stays : change.stays)
            for (Int after = 0; after < kMostCalls && !HasFailure(); ++after) {
                SCOPED_TRACE(testing::Message() << change.what << ", call " << after << (stays ? " and on" : ""));
                const auto before = filesIn(data.path());
                const bool ended = ends({}, failing(after, stays, true), change.work);
                endings += ended;
                if (after % 8 == 0) {
                    ASSERT_TRUE(startsWell()) << said;
                    EXPECT_EQ(filesIn(data.path()).size(), 1U) << "nothing half-made stays";
                }
                const auto now = filesIn(data.path());
                EXPECT_EQ(now.at(name).size(), before.at(name).size());
                EXPECT_EQ(now.at(name) == before.at(name), ended) << said;
                if (!reached)
                    break;
            }
        EXPECT_GT(endings, 4) << change.what;
    }
}

TEST_F(FaultsOfStarts, AFolderInPlaceOfTheConfigurationEndsInWords)
{
    std::filesystem::create_directories(data.path("Wainroad Settings"));
    EXPECT_TRUE(ends({}, {}, nullptr));
    EXPECT_TRUE(std::filesystem::is_directory(data.path("Wainroad Settings")));
}

TEST_F(FaultsOfStarts, AFileSystemWithoutAttributesServesAsWell)
{
    const HostDisk::Faults none = sound(false);
    EXPECT_FALSE(ends(none, none, [] { UpdateOptions([] { gOptions.speed = 8; }); }));
    EXPECT_FALSE(ends(none, none, [] { EXPECT_EQ(gOptions.speed, 8); }));
    HostDisk::setFaults(none);
    GameRun run(Wainroad_main, here());
    PanelPlayer player(run);
    ASSERT_TRUE(player.setOut("Ann"));
    run.play("wait 2\nfile Kept\nmenu 1001 2\nwait 0.5");
    run.call([] { ToTitle(); }, 20);
    run.play("file Kept");
    player.click(TitlePanel, 2);
    EXPECT_TRUE(player.waitFor(StatusPanel, 300)) << "the saved game is known as one";
}
