#pragma once

#include "Desktop/NativeMenus.h"
#include "Desktop/ScreenView.h"

#include <QMainWindow>
#include <QPointer>

namespace Desktop {

class FilePanel;

/// The one window and its life: every way of closing it is the game's own quit. Main thread.
class AppDelegate final : public QObject {
public:
    explicit AppDelegate(const QString& title);
    ~AppDelegate() override;

    ScreenView& view() { return *view_; }
    NativeMenus& menus() { return *menus_; }
    QMainWindow& window() { return window_; }

    /// Shows the window, in front; under a script without taking the keyboard from whoever has it.
    void launch();
    /// The player, or the session, asks to quit: as Command-Q, and as the flag too while the game looks at no key. An
    /// open file panel is taken back, since the game waits for it.
    void requestQuit();
    void showPanel(const MacToolbox::PanelRequest& request, std::function<void(std::optional<std::string>)> done);
    void toggleFullScreen();
    /// Makes the window fit the picture enlarged that many times.
    void setScale(Int scale);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool takeHostKey(const QKeyEvent& event);
    int fitMenuBar();
    void makeWindowMenu();
    void aboutToShowWindowMenu();
    Int currentScale() const;
    Int largestScale() const;
    void playerGoesOn();
    void restore();
    void keep() const;

    QMainWindow window_;
    ScreenView* view_; // the window's
    std::unique_ptr<NativeMenus> menus_;
    QMenu windowMenu_;
    QPointer<FilePanel> panel_;
    bool keepsSettings_ = true;
};

} // namespace Desktop
