#pragma once

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Files.h"
#include "MacToolbox/Managers/Windows.h"
#include "Tests/Harness/TemporaryFolder.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Panels.h"

#include <filesystem>
#include <map>
#include <string>

namespace Harness {

/// The files of a folder: name to content, with the type before it. Companions are not counted.
inline std::map<std::string, std::string> filesIn(const std::string& folder)
{
    std::map<std::string, std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string path = entry.path(), name = entry.path().filename();
        if (!name.starts_with("._") && entry.is_regular_file())
            found[name] = std::to_string(MacToolbox::HostFiles::finderInfo(path).fdType) + readFile(path);
    }
    return found;
}

/// What the disk alert in front says, as "number: headline"; "" if nothing is in front, "?" if it says something else.
inline std::string diskAlert()
{
    using namespace MacToolbox;
    if (FrontWindow() == Wainroad::gWindow)
        return "";
    const auto expanded = [](std::uint8_t digit) {
        Bytes text = expandParams(Bytes{'^', digit});
        text.insert(text.begin(), static_cast<std::uint8_t>(text.size()));
        return string(text);
    };
    const std::string said = expanded('0');
    for (const Int number : {-34, -35, -36, -37, -39, -42, -43, -44, -45, -48, -49, -54, -120}) {
        Str255 text;
        if (Wainroad::ErrorMessage(number, text) && string(text) == said)
            return std::to_string(number) + ": " + expanded('1');
    }
    return "?";
}

} // namespace Harness
