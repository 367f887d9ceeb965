// The six variables of the environment, one a line; a line "-" is a variable that is not there.

#include "MacToolbox/App/ManualRun.h"
#include "MacToolbox/App/ScriptHost.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/Files.h"
#include "MacToolbox/Host/Misc.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

using namespace MacToolbox;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

std::map<std::string, std::string> variablesFrom(const std::string& text)
{
    std::map<std::string, std::string> variables;
    std::istringstream lines(text);
    for (const char* name : {"WR_HEADLESS", "WR_SCRIPT", "WR_OUT", "WR_MUTE", "WR_DATE", "WR_DATA"}) {
        std::string line;
        if (std::getline(lines, line) && line != "-")
            variables[name] = line.substr(0, line.find('\0'));
    }
    if (const auto script = variables.find("WR_SCRIPT"); script != variables.end())
        std::ranges::replace(script->second, '/', '_'); // no device of the machine
    return variables;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ManualClock clock;
    ManualPlatform platform(clock);
    platform.variables = variablesFrom(std::string(reinterpret_cast<const char*>(data), size));
    Clock::install(&clock);
    Platform::install(&platform);
    startRunAfresh();

    const std::string folder = platform.dataFolder();
    require(!folder.empty() && (folder == "/" || folder.back() != '/'));
    HostFiles::dataFolder();
    const bool muted = platform.environment("WR_MUTE") == "1" || platform.environment("WR_SCRIPT").has_value();
    require(platform.soundWanted() == !muted);
    Int first = 0, second = 0;
    GetDateTime(first);
    GetDateTime(second);
    if (const auto date = platform.environment("WR_DATE"); date && noonOfDate(*date)) {
        require(first == second && (first % 86400 + 86400) % 86400 == 43200);
        require(date->size() == 10);
    }
    ScriptHost::start();

    Platform::install(nullptr);
    Clock::install(nullptr);
    return 0;
}
