#pragma once

#include "MacToolbox/Base/HeadlessPlatform.h"
#include "MacToolbox/Base/ManualClock.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Input.h"
#include "Tests/Managers/ToyResources.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <unistd.h>

namespace MacToolbox {

/// A run that has just begun, under the manual clock, with a font, an icon, a picture and a scroll bar in an open
/// resource file, and one resource that is the input.
class ToolboxMachine {
public:
    ToolboxMachine(OSType type, Int id, std::span<const std::uint8_t> input)
    {
        Clock::install(&clock_);
        Platform::install(&platform_);
        startRunAfresh();
        ResourceManager::shared().open(fileWith(type, id));
        GetResource(type, id)->bytes.assign(input.begin(), input.end());
    }
    ~ToolboxMachine()
    {
        Platform::install(nullptr);
        Clock::install(nullptr);
    }
    ToolboxMachine(const ToolboxMachine&) = delete;
    ToolboxMachine& operator=(const ToolboxMachine&) = delete;

    /// A press and a release at a global point, both queued.
    static void click(Point p)
    {
        Input::mouse(p.h, p.v, true);
        Input::mouse(p.h, p.v, false);
    }

private:
    static const std::string& fileWith(OSType type, Int id)
    {
        static const std::string path = [&] {
            const Bytes bytes = resourceFile({{os("FONT"), 12, boxFont()}, {os("ICON"), 128, Bytes(128, 0xF0)},
                {os("PICT"), 128,
                    Form().u16(0).rect({0, 0, 9, 9}).u16(0x1101).u8(0x31).rect({0, 0, 5, 5}).u8(255).bytes},
                {os("CNTL"), 128,
                    Form().rect({0, 0, 90, 16}).u16(3).u8(1).u8(0).u16(9).u16(0).u16(16).u32(0).u8(0).bytes},
                {type, id, {}}});
            const std::string name =
                std::filesystem::temp_directory_path() / ("toolbox-" + std::to_string(::getpid()) + ".rsrc");
            std::ofstream(name, std::ios::binary)
                .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
            std::atexit([] {
                std::filesystem::remove(
                    std::filesystem::temp_directory_path() / ("toolbox-" + std::to_string(::getpid()) + ".rsrc"));
            });
            return name;
        }();
        return path;
    }

    ManualClock clock_;
    HeadlessPlatform platform_;
};

/// What must hold, whatever the input.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace MacToolbox
