#include "Wainroad/Game/Wainroad.h"

#include "MacToolbox/App/App.h"
#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Data/Resources.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Alerts.h"
#include "Wainroad/Frame/Controls.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Game/Main_.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Simulation/Packets.h"

#include <cstdio>
#include <filesystem>
#include <vector>

namespace Wainroad {

static constexpr Int kUpdatesHeld = 2; // the mode in which the configuration stays open

static void stopWithoutBundle(const std::vector<std::string>& tried)
{
    std::string line = "could not load resource bundle: from ";
    for (std::size_t i = 0; i < tried.size(); ++i)
        line += (i == 0 ? "" : ", ") + tried[i];
    line += "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    Platform::current().exitProcess(1);
}

std::string resourcePath(std::string_view name)
{
    std::error_code ignored;
    const std::vector<std::string> folders = Platform::current().resourceFolders();
    std::string missing; // where the file would lie in the first bundle
    for (std::size_t i = 0; i < folders.size(); ++i) {
        const std::string path = folders[i] + "/" + std::string(name);
        if (std::filesystem::is_regular_file(path, ignored))
            return path;
        // The first of several folders is the program's own: that it is there says nothing.
        if (missing.empty() && (i > 0 || folders.size() == 1) && std::filesystem::is_directory(folders[i], ignored))
            missing = path;
    }
    if (missing.empty())
        stopWithoutBundle(folders);
    return missing;
}

static void rewriteConfig()
{
    gConfigChanged = false;
    ConfigFileChanged();
    OpenConfigFile();
    WriteConfigFile();
    CloseConfig();
}

static void fillErrorHooks()
{
    errorHooks() = {
        .centeredAlert = [](Int id) { DCenteredAlert(id); },
        .centerRect = CenterRect,
        .flushConfig =
            [] {
                if (gConfigMode == kUpdatesHeld)
                    FlushConfig();
            },
        .rewriteConfig =
            [] {
                if (gConfigMode == kUpdatesHeld)
                    rewriteConfig();
            },
        .closeNetwork = CloseNetwork,
    };
}

void Wainroad_main()
{
    ResourceManager::shared().open(resourcePath("System.rsrc"));
    ResourceManager::shared().open(resourcePath("Wainroad.rsrc"));
    RegisterControls();
    fillErrorHooks();
    WRApp::run("The Wainroad", main_);
}

} // namespace Wainroad
