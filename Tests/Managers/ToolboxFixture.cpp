#include "Tests/Managers/ToolboxFixture.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

namespace MacToolbox {

namespace {

constexpr Nanos kPatience = 600 * kSecond; // of the machine; a loop that does not end is stopped there

} // namespace

ToolboxTest::ToolboxTest()
{
    Clock::install(&clock);
    Platform::install(&platform);
    startRunAfresh();
    clock.onYield = [this] {
        if (clock.time() > kPatience)
            throw std::runtime_error("a loop does not end");
    };
    add("FONT", 12, boxFont());
    useResources();
}

ToolboxTest::~ToolboxTest()
{
    Platform::install(nullptr);
    Clock::install(nullptr);
    std::filesystem::remove(path_);
}

void ToolboxTest::useResources()
{
    const Bytes file = resourceFile(resources_);
    if (path_.empty())
        path_ = testing::TempDir() + "managers-" + std::to_string(::getpid()) + ".rsrc";
    std::ofstream(path_, std::ios::binary)
        .write(reinterpret_cast<const char*>(file.data()), std::streamsize(file.size()));
    ResourceManager::shared().reset();
    ResourceManager::shared().open(path_);
}

void ToolboxTest::key(Int character, Int modifiers) { Input::key(character, 0, modifiers, true); }

void ToolboxTest::later(Int ticks, std::function<void()> work) { clock.after(ticks * kTickNanos, std::move(work)); }

void ToolboxTest::mouseLater(Int ticks, Point global, bool down)
{
    later(ticks, [global, down] { Input::mouse(global.h, global.v, down); });
}

void ToolboxTest::clickLater(Int ticks, Point global)
{
    Input::mouse(global.h, global.v, true);
    mouseLater(ticks, global, false);
}

WindowPtr ToolboxTest::window(const Rect& content, Int procID, bool visible)
{
    return NewWindow(nullptr, content, {0}, visible, procID, nullptr, false, 0);
}

Bytes ToolboxTest::screen() { return Screen::shared().bits.baseAddr->bytes; }

bool ToolboxTest::black(Int h, Int v) { return Screen::shared().bits.get(h, v); }

Int ToolboxTest::blackIn(const Rect& r)
{
    Int count = 0;
    for (Int v = r.top; v < r.bottom; ++v)
        for (Int h = r.left; h < r.right; ++h)
            count += black(h, v);
    return count;
}

} // namespace MacToolbox
