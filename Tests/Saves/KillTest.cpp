// The process is killed at any moment of a save: the file is then the old one or the new one, whole and typed.

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Files.h"
#include "MacToolbox/Data/Resources.h"
#include "Tests/Harness/ChildProcess.h"
#include "Tests/Player/PanelPlayer.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Persistence/SavedGame.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>
#include <thread>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

using Micros = std::chrono::microseconds;

#if defined(__SANITIZE_ADDRESS__)
constexpr int kKills = 200; // a process under the sanitizer starts slowly
#else
constexpr int kKills = 1000;
#endif
constexpr int kProgramKills = 20;

/// Names in a folder but for these.
std::string others(const std::string& folder, std::initializer_list<std::string_view> known)
{
    std::string found;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (const std::string name = entry.path().filename();
            std::find(known.begin(), known.end(), name) == known.end())
            found += name + ' ';
    return found;
}

class KilledSave : public testing::Test {
protected:
    KilledSave()
    {
        begin();
        void* const shared = mmap(nullptr, sizeof(Int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        saves = static_cast<volatile Int*>(shared);
    }
    ~KilledSave() override
    {
        munmap(const_cast<Int*>(saves), sizeof(Int));
        startRunAfresh();
        unsetenv("WR_DATA");
    }

    /// As a start of the program finds it.
    void begin()
    {
        startRunAfresh();
        setenv("WR_DATA", data.path().c_str(), 1);
        for (const char* name : {"System.rsrc", "Wainroad.rsrc"})
            ResourceManager::shared().open(Platform::current().programFolder() + "/Wainroad_Wainroad.bundle/" + name);
        MessagesInit();
        gSaveFile.name = pstr("Kept");
        HostFiles::makeDataFolder();
    }
    /// Journey number `n`: every part of it tells the number.
    static void make(Int n)
    {
        gState.year = n;
        for (auto& name : gState.names)
            name = pstr("Journey " + std::to_string(n));
        gLogInfo.end = kLogBytes, gLogInfo.lastDate = n;
        gLogBuffer->bytes.assign(static_cast<std::size_t>(kLogBytes), static_cast<std::uint8_t>(n));
    }
    /// The number of the journey that the file holds whole and typed; -1 otherwise.
    Int kept() const
    {
        const std::string path = data.path("Kept"), text = readFile(path);
        const FInfo info = HostFiles::finderInfo(path);
        if (I(text.size()) != kSaveBytes || info.fdType != kSaveType || info.fdCreator != kCreator)
            return -1;
        const Bytes bytes(text.begin(), text.end());
        SaveHead head;
        readSaveHead(bytes, head);
        make(head.state.year);
        Bytes whole = packSaveHead(gArrivedAt, gState, gLogInfo.bytes());
        whole.insert(whole.end(), gLogBuffer->bytes.begin(), gLogBuffer->bytes.end());
        return bytes == whole ? head.state.year : -1;
    }
    /// Saves again and again, in a process of its own.
    [[noreturn]] void saveForEver(Int first)
    {
        for (Int n = first;; ++n) {
            make(n);
            if (WriteSave() != noErr)
                _exit(1);
            *saves = n;
        }
    }

    TemporaryFolder data;
    volatile Int* saves; // the number of the last save that a child was told to be good
};

} // namespace

TEST_F(KilledSave, LeavesTheOldOrTheNewFile)
{
    constexpr int kMeasured = 8;
    const auto start = std::chrono::steady_clock::now();
    for (Int n = 1; n <= kMeasured; ++n) {
        make(n % 200);
        ASSERT_EQ(WriteSave(), noErr);
        *saves = n;
    }
    const auto one = std::chrono::duration_cast<Micros>(std::chrono::steady_clock::now() - start) / kMeasured;
    std::mt19937 random(1848);
    Int longest = std::clamp<Int>(4 * one.count(), 2000, 16000); // microseconds that a child has
    int between = 0; // kills that found a save begun and not told to be good
    for (int kill = 0; kill < kKills && !HasFailure(); ++kill) {
        SCOPED_TRACE(kill);
        const Int last = *saves;
        int ready[2];
        ASSERT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        if (child == 0) {
            char go = 1;
            if (write(ready[1], &go, 1) == 1)
                saveForEver(last + 1);
            _exit(1);
        }
        char go = 0;
        ASSERT_EQ(read(ready[0], &go, 1), 1);
        std::this_thread::sleep_for(Micros(random() % static_cast<std::uint64_t>(longest)));
        ::kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        close(ready[0]), close(ready[1]);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the save failed";
        const Int told = *saves, now = kept();
        EXPECT_TRUE(now == told || now == told + 1) << "after " << told << " the file holds " << now;
        between += others(data.path(), {"Kept", "._Kept"}).empty() ? 0 : 1;
        *saves = now;
        if (kill % 20 == 19 && between < kill / 5)
            longest = std::min<Int>(2 * longest, 64000); // a busy machine: too few came far enough
    }
    EXPECT_GT(between, kKills / 10) << "the kills miss the saves";
    begin();
    EXPECT_EQ(others(data.path(), {"Kept", "._Kept"}), "") << "the next start clears up";
}

TEST(KilledProgram, LeavesAJourneyThatCanBeLoaded)
{
    std::string again = "wait 1\n";
    for (int i = 0; i < 4000; ++i)
        again += "file Kept\nmenu 1001 2\nwait 0.1\n";
    const std::string script =
        "wait 3\nclick 45 285\nwait 1\nkey return\nwait 1\ntype Ann\nclick 443 291\nwait 1\n"
        "type 4\nkey tab\nkey tab\nkey tab\nkey tab\nkey tab\nkey tab\ntype 400\nclick 442 273\nwait 1\n"
        "click 194 251\nwait 3\n"
        + again;
    const TemporaryFolder folder;
    const std::string data = folder.path("data"), kept = data + "/Kept", file = folder.write("the.script", script);
    std::mt19937 random(5);
    std::string first;
    for (int kill = 0; kill < kProgramKills && !testing::Test::HasFailure(); ++kill) {
        SCOPED_TRACE(kill);
        std::error_code error;
        const auto before = std::filesystem::last_write_time(kept, error);
        auto program = std::make_unique<ChildProcess>([&] {
            setenv("WR_HEADLESS", "", 1);
            setenv("WR_DATA", data.c_str(), 1);
            setenv("WR_OUT", folder.path().c_str(), 1);
            setenv("WR_DATE", "1848-04-01", 1);
            setenv("WR_SCRIPT", file.c_str(), 1);
            const std::string path = Platform::current().programFolder() + "/fastforward";
            execl(path.c_str(), path.c_str(), nullptr);
            std::abort();
        });
        // Once the first save is there the next ones follow every few milliseconds.
        for (int i = 0; i < 60000 && program->wait(0) < 0; ++i) {
            if (const auto now = std::filesystem::last_write_time(kept, error); !error && (kill == 0 || now != before))
                break;
            std::this_thread::sleep_for(Micros(500));
        }
        std::this_thread::sleep_for(Micros(random() % 30000));
        ASSERT_EQ(program->wait(0), -1) << program->output();
        program.reset(); // SIGKILL
        const std::string now = readFile(kept);
        ASSERT_EQ(I(now.size()), kSaveBytes);
        EXPECT_EQ(HostFiles::finderInfo(kept).fdType, kSaveType);
        if (first.empty())
            first = now;
        EXPECT_TRUE(now == first) << "every save is of the same moment of the same journey";
    }
    GameRun::Setup setup;
    setup.environment["WR_DATA"] = data;
    GameRun run(Wainroad_main, setup);
    PanelPlayer player(run);
    ASSERT_TRUE(player.waitFor(TitlePanel));
    run.play("file Kept");
    player.click(TitlePanel, 2);
    EXPECT_TRUE(player.waitFor(StatusPanel, 300));
    EXPECT_EQ(others(data, {"Kept", "._Kept", "Wainroad Settings", "._Wainroad Settings"}), "");
}
