#pragma once

#include "MacToolbox/Base/MainQueue.h"
#include "MacToolbox/Base/Platform.h"

#include <mutex>
#include <thread>

namespace MacToolbox {

/// No window, no menu bar, no cursor, no sound. The main thread parks in its queue and runs only posted blocks.
class HeadlessPlatform : public Platform {
public:
    /// The thread that makes it is the main thread.
    HeadlessPlatform() : main_(std::this_thread::get_id()) { }

    void post(std::function<void()> block) override { queue_.push(std::move(block)); }
    bool isMainThread() const override { return std::this_thread::get_id() == main_; }
    void pumpMain() override { queue_.drainFor(10); }
    void run(const std::string& title, const std::function<void()>& begin) override;

    void cursorChanged(const Cursor*) override { }
    void menusChanged() override { }
    bool playSound(std::span<const std::uint8_t>, double) override { return false; }
    void stopSound() override { }
    void beep() override { }

    /// A text of this process alone.
    std::optional<std::string> pasteboard() override;
    void setPasteboard(const std::string& text) override;

protected:
    MainQueue queue_;
    std::thread::id main_;

private:
    std::mutex pasteboardLock_;
    std::optional<std::string> pasteboard_;
};

} // namespace MacToolbox
