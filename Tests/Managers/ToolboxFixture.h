#pragma once

#include "MacToolbox/Base/HeadlessPlatform.h"
#include "MacToolbox/Base/ManualClock.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Managers/Windows.h"
#include "Tests/Managers/ToyResources.h"

#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace MacToolbox {

/// A machine that notes what is asked of it and runs posted blocks when told.
class NotingPlatform final : public HeadlessPlatform {
public:
    Int beeps = 0, menuChanges = 0, stops = 0;
    std::vector<Bytes> played;
    std::vector<double> rates;
    bool hasAudio = true;
    std::map<std::string, std::string> variables;

    void menusChanged() override { ++menuChanges; }
    bool playSound(std::span<const std::uint8_t> samples, double rate) override
    {
        played.emplace_back(samples.begin(), samples.end());
        rates.push_back(rate);
        return hasAudio;
    }
    void stopSound() override { ++stops; }
    void beep() override { ++beeps; }
    std::optional<std::string> environment(const std::string& name) override
    {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    }
    void drain() { queue_.drain(); }
};

/// A run that has just begun: a white screen, an own font, the manual clock, and the resources that a test adds.
/// Every character of the font is 6 pixels wide; ascent 9, descent 2, leading 1, so that a line is 12 high.
class ToolboxTest : public testing::Test {
protected:
    static constexpr Int kChar = 6, kLine = 12;

    ToolboxTest();
    ~ToolboxTest() override;

    /// Adds a resource; `useResources` makes those added so far the open file.
    void add(const char* type, Int id, Bytes data) { resources_.push_back({os(type), id, std::move(data)}); }
    void useResources();

    /// Queues a key at once. Modifiers as in an event.
    static void key(Int character, Int modifiers = 0);
    /// Puts the mouse at a global point, with the button so, `ticks` from now.
    void mouseLater(Int ticks, Point global, bool down);
    /// A press at once and its release after some ticks, at the same place.
    void clickLater(Int ticks, Point global);
    /// Runs `work` that many ticks from now, inside whatever waits.
    void later(Int ticks, std::function<void()> work);

    static WindowPtr window(const Rect& content, Int procID = plainDBoxProc, bool visible = true);
    /// The pixels of the screen, for comparisons.
    static Bytes screen();
    static bool black(Int h, Int v);
    /// Black pixels of a global rectangle.
    static Int blackIn(const Rect& r);

    NotingPlatform platform;
    ManualClock clock;

private:
    std::vector<ToyResource> resources_;
    std::string path_;
};

} // namespace MacToolbox
