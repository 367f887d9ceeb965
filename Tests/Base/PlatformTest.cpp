#include "MacToolbox/Base/HeadlessPlatform.h"

#include <gtest/gtest.h>

#include <map>

using namespace MacToolbox;

namespace {

class PlatformWith : public HeadlessPlatform {
public:
    explicit PlatformWith(std::map<std::string, std::string> variables) : variables_(std::move(variables)) { }
    std::optional<std::string> environment(const std::string& name) override
    {
        const auto found = variables_.find(name);
        return found == variables_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::map<std::string, std::string> variables_;
};

} // namespace

TEST(Platform, DataFolderComesFromTheEnvironment)
{
    const struct {
        std::map<std::string, std::string> variables;
        const char* folder;
    } cases[] = {
        {{{"WR_DATA", "/a/b"}, {"XDG_DATA_HOME", "/x"}}, "/a/b"},
        {{{"WR_DATA", "/a/b//"}}, "/a/b"},
        {{{"WR_DATA", "relative"}}, "relative"},
        {{{"WR_DATA", ""}}, "."},
        {{{"WR_DATA", "/"}}, "/"},
        {{{"XDG_DATA_HOME", "/x"}, {"HOME", "/home/ann"}}, "/x/The Wainroad"},
        {{{"XDG_DATA_HOME", "x"}, {"HOME", "/home/ann"}}, "/home/ann/.local/share/The Wainroad"},
        {{{"XDG_DATA_HOME", ""}, {"HOME", "/home/ann"}}, "/home/ann/.local/share/The Wainroad"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(PlatformWith(c.variables).dataFolder(), c.folder);
    EXPECT_NE(PlatformWith({}).dataFolder(), "/.local/share/The Wainroad")
        << "without HOME the password entry is asked";
}

TEST(Platform, SoundIsMutedByExactly1AndByAnyScript)
{
    using Variables = std::map<std::string, std::string>;
    EXPECT_TRUE(PlatformWith({}).soundWanted());
    EXPECT_TRUE(PlatformWith(Variables{{"WR_MUTE", "0"}}).soundWanted());
    EXPECT_TRUE(PlatformWith(Variables{{"WR_MUTE", ""}}).soundWanted());
    EXPECT_TRUE(PlatformWith(Variables{{"WR_MUTE", "1 "}}).soundWanted());
    EXPECT_FALSE(PlatformWith(Variables{{"WR_MUTE", "1"}}).soundWanted());
    EXPECT_FALSE(PlatformWith(Variables{{"WR_SCRIPT", ""}}).soundWanted());
    EXPECT_FALSE(PlatformWith((Variables{{"WR_MUTE", "0"}, {"WR_SCRIPT", "x"}})).soundWanted());
}

TEST(MainQueue, RunsInPostingOrderWhatIsPostedMeanwhileToo)
{
    MainQueue queue;
    std::string log;
    queue.push([&] {
        log += "a";
        queue.push([&] { log += "c"; });
    });
    queue.push([&] { log += "b"; });
    EXPECT_EQ(queue.drain(), 3);
    EXPECT_EQ(log, "abc");
    EXPECT_EQ(queue.drain(), 0);
    EXPECT_EQ(queue.drainFor(1), 0);
}

TEST(Platform, ABlockOfTheMainThreadRunsAtOnce)
{
    HeadlessPlatform platform;
    bool ran = false;
    platform.call([&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_EQ(platform.pasteboard(), std::nullopt);
    platform.setPasteboard("Zürich\r");
    EXPECT_EQ(platform.pasteboard(), "Zürich\r");
}
