#pragma once

#include "Desktop/DesktopPlatform.h"
#include "MacToolbox/Host/Input.h"
#include "Tests/Harness/TemporaryFolder.h"

#include <optional>
#include <vector>

#include <gtest/gtest.h>

/// A window on a display that is only in memory, and no game behind it: the test looks at what arrives in the queue.
class DesktopTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    Desktop::AppDelegate& delegate() { return *platform_->delegate(); }
    Desktop::ScreenView& view() { return delegate().view(); }
    /// Runs what the main thread has to do.
    static void settle();
    /// The queued events; the queue is empty then.
    static std::vector<MacToolbox::EventRecord> taken();

    Harness::TemporaryFolder folder_;
    std::unique_ptr<Desktop::DesktopPlatform> platform_;
};
