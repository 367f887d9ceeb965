#pragma once

#include "Tests/Window/Twin.h"

#include <gtest/gtest.h>

/// A desk of its own for each test.
class WindowTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (const std::string tool = Harness::Desk::missing(); !tool.empty())
            GTEST_SKIP() << tool << " is not installed: the window is not tested";
        desk_.emplace();
    }
    const Harness::Desk& desk() const { return *desk_; }

private:
    std::optional<Harness::Desk> desk_;
};
