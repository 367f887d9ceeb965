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

    /// A strike of 256 boxes, 5 by 9 pixels, and nothing for the space.
    Bytes boxFont()
    {
        constexpr Int kGlyphs = 257, kRow = (kGlyphs * 6 + 15) / 16; // words
        Form font;
        font.u16(0x9000).u16(0).u16(255).u16(6).u16(0).u16(-2).u16(6).u16(11);
        font.u16(5 + kRow * 11 + kGlyphs + 1).u16(9).u16(2).u16(1).u16(kRow);
        for (Int y = 0; y < 11; ++y) {
            Bytes row(static_cast<std::size_t>(kRow * 2));
            for (Int x = 0; x < kGlyphs * 6; ++x) {
                const Int column = x % 6, c = x / 6;
                const bool on = c != 32 && y < 9 && column < 5 && (y == 0 || y == 8 || column == 0 || column == 4);
                row[static_cast<std::size_t>(x >> 3)] |= static_cast<std::uint8_t>(on ? 0x80 >> (x & 7) : 0);
            }
            font.raw(row);
        }
        for (Int c = 0; c <= kGlyphs; ++c)
            font.u16(c * 6);
        for (Int c = 0; c < kGlyphs; ++c)
            font.u16(6);
        return font.u16(0xFFFF).bytes;
    }

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
    Form data, types, references;
    std::vector<OSType> seen;
    for (const Resource& r : resources_)
        if (std::find(seen.begin(), seen.end(), r.type) == seen.end())
            seen.push_back(r.type);
    types.u16(I(seen.size()) - 1);
    for (const OSType type : seen) {
        const Int count = std::count_if(resources_.begin(), resources_.end(), [&](const Resource& r) { return r.type == type; });
        types.u32(type).u16(count - 1).u16(2 + I(seen.size()) * 8 + I(references.bytes.size()));
        for (const Resource& r : resources_) {
            if (r.type != type)
                continue;
            references.u16(r.id).u16(0xFFFF).u32(I(data.bytes.size())).u32(0);
            data.u32(I(r.data.size())).raw(r.data);
        }
    }
    const Int dataSize = I(data.bytes.size()), listSize = I(types.bytes.size() + references.bytes.size());
    Form file;
    file.u32(16).u32(16 + dataSize).u32(dataSize).u32(28 + listSize).raw(data.bytes);
    file.zeros(24).u16(28).u16(28 + listSize).raw(types.bytes).raw(references.bytes);

    if (path_.empty())
        path_ = testing::TempDir() + "managers-" + std::to_string(::getpid()) + ".rsrc";
    std::ofstream(path_, std::ios::binary).write(reinterpret_cast<const char*>(file.bytes.data()), std::streamsize(file.bytes.size()));
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
