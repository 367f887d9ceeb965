// The game in its window, on a display of its own, with real input.

#include "Tests/Window/Twin.h"

#include <csignal>
#include <filesystem>

#include <gtest/gtest.h>

using namespace Harness;
using namespace MacToolbox;

namespace {

class Window : public testing::Test {
protected:
    void SetUp() override
    {
        if (const std::string tool = Desk::missing(); !tool.empty())
            GTEST_SKIP() << tool << " is not installed: the window is not tested";
        desk_.emplace();
    }

    std::optional<Desk> desk_;
};

} // namespace

TEST_F(Window, IsPlayedByHandAsFarAsTheStore)
{
    WindowedGame game(*desk_);
    ASSERT_TRUE(game.comesUp());
    EXPECT_EQ(game.shot().width, 1024);
    Twin twin(game);
    ASSERT_TRUE(twin.toStore());
}

TEST_F(Window, AtTheTitleEveryWayOfClosingEndsTheGame)
{
    const std::function<void(WindowedGame&)> ways[] = {
        [](WindowedGame& game) { game.desk().key("alt+F4"); }, // the window manager's close
        [](WindowedGame& game) { game.desk().key("ctrl+q"); },
        [](WindowedGame& game) { game.program().signal(SIGTERM); },
        [](WindowedGame& game) { game.program().signal(SIGINT); },
    };
    for (const auto& close : ways) {
        WindowedGame game(*desk_);
        ASSERT_TRUE(game.comesUp());
        close(game);
        EXPECT_EQ(game.program().wait(60), 0);
        EXPECT_EQ(game.program().output(), "");
    }
}
