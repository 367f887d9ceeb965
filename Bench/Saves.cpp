// A journey saved to a file on this disk and loaded from it, through the calls of the game.
#include "Bench/peers/peers.h"

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Files.h"
#include "MacToolbox/Data/Resources.h"
#include "Tests/Harness/TemporaryFolder.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Persistence/SavedGame.h"
#include "Wainroad/Screens/SaveGame.h"
#include "Wainroad/Simulation/Records.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace peers {

void registerSaves();

namespace {

using namespace MacToolbox;
using namespace Wainroad;

/// A journey with a full journal, on the way.
struct Journey {
    Harness::TemporaryFolder folder;

    void begin()
    {
        if (gLogBuffer)
            return;
        setenv("WR_DATA", folder.path().c_str(), 1);
        for (const char* name : {"System.rsrc", "Wainroad.rsrc"})
            ResourceManager::shared().open(Platform::current().programFolder() + "/Wainroad_Wainroad.bundle/" + name);
        MessagesInit();
        gLogInfo.end = kLogBytes;
        gState = GameState();
        gState.year = 1848, gState.month = 5, gState.day = 3;
        gState.slots = gState.wagons = gState.startWagons = 1;
        gState.order[0] = 0;
        gState.mode = kModeLive;
        gState.wagon[0].people = gState.wagon[0].startPeople = 5;
        gSaveFile.name = pstr("Journey");
    }
    void save()
    {
        begin();
        WriteSave();
    }
    bool saved() const
    {
        std::error_code error;
        return std::filesystem::file_size(folder.path("Journey"), error) == static_cast<std::uintmax_t>(kSaveBytes);
    }
    void load()
    {
        begin();
        if (!saved())
            WriteSave();
        HostFiles::queueScriptedFile("Journey");
        LoadGame();
    }
};

/// What the disk asks for at least: a new file of that length, flushed, in place of the old one.
struct PlainFile {
    Harness::TemporaryFolder folder;
    bool done = false;

    void replace()
    {
        const std::string fresh = folder.path("fresh");
        const int fd = open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        const Bytes bytes(static_cast<std::size_t>(kSaveBytes), 0x5A);
        done = fd >= 0 && write(fd, bytes.data(), bytes.size()) == I(bytes.size()) && fsync(fd) == 0;
        close(fd);
        done = done && std::rename(fresh.c_str(), folder.path("whole").c_str()) == 0;
    }
};

} // namespace

void registerSaves()
{
    const auto plain = std::make_shared<PlainFile>();
    add(
        "save_game", "limit", [plain] { plain->replace(); }, [plain] { return plain->done ? "" : "no file"; }, 0, 1,
        true);
    const auto journey = std::make_shared<Journey>();
    constexpr bool kWithTheDisk = true; // real time
    add(
        "save_game", "project", [journey] { journey->save(); }, [journey] { return journey->saved() ? "" : "no file"; },
        0, 1, kWithTheDisk);
    add(
        "load_game", "project", [journey] { journey->load(); }, [] { return gTrain.month == 5 ? "" : "no journey"; }, 0,
        1, kWithTheDisk);
}

} // namespace peers
