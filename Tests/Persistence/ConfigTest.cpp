// The configuration file through whole starts of the game.

#include "Wainroad/Persistence/Config.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Files.h"
#include "MacToolbox/Data/Resources.h"
#include "Tests/Harness/GameRun.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Persistence/Legends.h"
#include "Wainroad/Simulation/Records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace Wainroad {

class ConfigFile : public testing::Test {
protected:
    /// Starts the game on this test's data folder.
    Harness::GameRun::Setup here() const
    {
        Harness::GameRun::Setup setup;
        setup.environment["WR_DATA"] = data.path();
        return setup;
    }
    /// A start that gets as far as the title, and a quit there.
    void start(const std::function<void()>& atTitle = [] {})
    {
        Harness::GameRun run(Wainroad_main, here());
        ASSERT_TRUE(run.advance(600));
        atTitle();
        run.play("key cmd-q");
        EXPECT_TRUE(run.runToEnd(600));
        EXPECT_EQ(run.status(), 0);
    }
    /// A start that ends with an alert. @return What it says on standard error.
    std::string refusedStart()
    {
        testing::internal::CaptureStderr();
        Harness::GameRun run(Wainroad_main, here());
        EXPECT_TRUE(run.advance(300)) << "the alert waits";
        run.play("key return");
        EXPECT_TRUE(run.runToEnd(600));
        EXPECT_EQ(run.status(), 0);
        return testing::internal::GetCapturedStderr();
    }
    static std::string text(Int index)
    {
        Str255 s;
        GetIndString(s, 3000, index);
        return string(s);
    }
    /// The one file in the data folder.
    std::string file() const
    {
        std::string found;
        for (const auto& entry : std::filesystem::directory_iterator(data.path()))
            if (entry.is_regular_file() && entry.path().filename().string()[0] != '.') {
                EXPECT_EQ(found, "");
                found = entry.path();
            }
        return found;
    }
    Bytes read() const
    {
        std::ifstream in(file(), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    /// Changes bytes of the file in place, so that its type stays, and gives it another date.
    void patch(const std::function<void(Bytes&)>& change) const
    {
        Bytes bytes = read();
        change(bytes);
        std::ofstream(file(), std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), I(bytes.size()));
        std::filesystem::last_write_time(file(), std::filesystem::last_write_time(file()) + std::chrono::hours(1));
    }

    Harness::TemporaryFolder data;
};

TEST_F(ConfigFile, IsMadeAtTheFirstStartAndReadAtTheSecond)
{
    start();
    const Bytes made = read();
    ASSERT_EQ(made.size(), 1108u);
    EXPECT_EQ(string(Bytes{4, made[0], made[1], made[2], made[3]}), "QUIL");
    EXPECT_EQ(string(std::span(made).subspan(6)), text(10));
    const FInfo info = HostFiles::finderInfo(file());
    EXPECT_EQ(info.fdType, os("WRCF"));
    EXPECT_EQ(info.fdCreator, os("WRGN"));

    start([] { EXPECT_TRUE(gOptions.speed == 2 || gOptions.speed == 4 || gOptions.speed == 8) << gOptions.speed; });
    EXPECT_EQ(read(), made) << "reading changes nothing";
    patch([](Bytes& bytes) { bytes[38 + 271] = 8, bytes[38 + 256] = 200; });
    start([] {
        EXPECT_EQ(gOptions.speed, 8);
        EXPECT_EQ(gOptions.password.size(), 11u) << "cut to ten characters";
    });
}

TEST_F(ConfigFile, AForeignOneEndsTheStart)
{
    start();
    const Bytes good = read();
    const struct {
        const char* why;
        Int text;
        std::function<void(Bytes&)> change;
    } kCases[] = {
        {"another magic", 12, [](Bytes& b) { b[0] = 'X'; }},
        {"another signature", 12, [](Bytes& b) { b[8] ^= 1; }},
        {"a newer version", 11, [](Bytes& b) { b[5] = 2; }},
        {"a newer version of something else", 11, [](Bytes& b) { b[0] = 'X', b[5] = 2; }},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.why);
        patch([&](Bytes& bytes) { bytes = good, c.change(bytes); });
        const std::string said = refusedStart();
        EXPECT_NE(said.find(text(c.text)), std::string::npos) << said;
    }
    patch([&](Bytes& bytes) { bytes = good, bytes[4] = 0x80; }); // a negative version passes
    start();

    HostFiles::setFinderInfo(file(), {os("TEXT"), os("WRGN"), 0, {}, 0});
    EXPECT_NE(refusedStart().find(text(12)), std::string::npos) << "another type";
}

TEST_F(ConfigFile, AShortOneEndsTheStartAndALongOneDoesNot)
{
    start();
    const Bytes good = read();
    for (const std::size_t size : {std::size_t{0}, std::size_t{4}, std::size_t{1107}}) {
        patch([&](Bytes& bytes) { bytes.assign(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size)); });
        EXPECT_NE(refusedStart(), "") << size;
    }
    patch([&](Bytes& bytes) { bytes = good, bytes.resize(5000, 0xEE); });
    start();
}

TEST_F(ConfigFile, ANetworkModeIsToldAndNotEntered)
{
    start();
    patch([](Bytes& bytes) { bytes[38 + 269] = 2; });
    Harness::GameRun run(Wainroad_main, here());
    ASSERT_TRUE(run.advance(300));
    run.play("key return");
    ASSERT_TRUE(run.advance(600));
    EXPECT_EQ(gConfigMode, 0);
    EXPECT_EQ(gOptions.mode, 2) << "the stored mode stays";
}

TEST_F(ConfigFile, AnUpdateReplacesTheWholeFile)
{
    start([this] {
        OpenConfigForUpdate();
        CopyOptionsOut();
        gOptions.speed = 8;
        gOptions.hint = pstr("the dog");
        WriteOptions();
        EXPECT_NE(gConfigRef, -1);
        CloseConfig();
        EXPECT_EQ(gConfigRef, -1);
        EXPECT_EQ(read().size(), 1108u);

        OpenConfigForUpdate();
        setLegends(GetLegends(1));
        const Int place = AddLegend(1000000, pstr("Ann"));
        EXPECT_EQ(place, 0);
        WriteLegends(1, legendBytes());
        CloseConfig();
        gOptions = Options();
        ReadConfig();
        EXPECT_EQ(gOptions.speed, 8);
    });
    const FInfo info = HostFiles::finderInfo(file());
    EXPECT_EQ(info.fdType, os("WRCF"));
    start([] {
        EXPECT_EQ(gOptions.speed, 8);
        EXPECT_EQ(string(gOptions.hint), "the dog");
        setLegends(ReadLegends(1));
        EXPECT_EQ(string(gLegends[0].name), "Ann");
        EXPECT_EQ(gLegends[0].points, 1000000);
    });
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(data.path()))
        ++files;
    EXPECT_LE(files, 2u) << "the file and perhaps its companion: nothing half-made stays";
}

TEST_F(ConfigFile, OneThatDisappearsIsMadeAgain)
{
    start([this] {
        std::filesystem::remove(file());
        OpenConfigForUpdate();
        CloseConfig();
        EXPECT_EQ(read().size(), 1108u);
    });
}

} // namespace Wainroad
