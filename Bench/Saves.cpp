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

#include <cstdlib>
#include <filesystem>
#include <memory>

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

} // namespace

void registerSaves()
{
    const auto journey = std::make_shared<Journey>();
    constexpr bool kWithTheDisk = true; // real time
    add("save_game", "project", [journey] { journey->save(); }, [journey] { return journey->saved() ? "" : "no file"; }, 0, 1, kWithTheDisk);
    add("load_game", "project", [journey] { journey->load(); }, [] { return gTrain.month == 5 ? "" : "no journey"; }, 0, 1, kWithTheDisk);
}

} // namespace peers
