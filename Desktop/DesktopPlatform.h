#pragma once

#include "Desktop/AppDelegate.h"
#include "Desktop/Voice.h"
#include "MacToolbox/Base/Platform.h"

#include <memory>

class QApplication;

namespace Desktop {

/// The machine with a window. Made on the main thread; lives to the end of the process.
class DesktopPlatform final : public MacToolbox::Platform {
public:
    explicit DesktopPlatform(QApplication& application) : application_(application) { }

    void post(std::function<void()> block) override;
    bool isMainThread() const override;
    void pumpMain() override;
    void run(const std::string& title, const std::function<void()>& begin) override;
    void gameEnded() override;

    void cursorChanged(const MacToolbox::Cursor* cursor) override;
    void hideCursor() override;
    void showCursor() override;
    void obscureCursor() override;
    void menusChanged() override;
    void statusChanged(const std::string& text) override;

    bool playSound(std::span<const std::uint8_t> samples, double rate) override { return voice_.play(samples, rate); }
    void stopSound() override { voice_.stop(); }
    void beep() override;

    std::optional<std::string> pasteboard() override;
    void setPasteboard(const std::string& text) override;
    bool hasPanels() const override { return true; }
    void showPanel(
        const MacToolbox::PanelRequest& request, std::function<void(std::optional<std::string>)> done) override;

    /// The window; nullptr before `run`. Main thread.
    AppDelegate* delegate() { return delegate_.get(); }
    /// Makes the window and shows it; the first half of `run`.
    void launch(const std::string& title);

private:
    QApplication& application_;
    std::unique_ptr<AppDelegate> delegate_;
    Voice voice_;
};

} // namespace Desktop
