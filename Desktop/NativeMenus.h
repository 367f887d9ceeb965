#pragma once

#include "MacToolbox/Managers/Menus.h"

#include <functional>
#include <optional>
#include <vector>

#include <QMenuBar>

namespace Desktop {

/// The host's menu bar, built from the published snapshot: the menu of the program, the game's, and the host's own. A
/// choice goes to the game as a click. Main thread.
class NativeMenus final {
public:
    QString appName = "The Wainroad";
    std::vector<QMenu*> extraMenus; ///< the host's own, to the right of the game's; not owned
    std::function<void()> hide;     ///< the program's menu: out of sight
    std::function<void()> quit;     ///< the program's menu: the player asks to quit

    explicit NativeMenus(QMenuBar& bar);

    /// Makes the bar what the snapshot says. Nothing happens if it is that already; while a menu is open it waits until
    /// it is closed.
    void rebuild();

private:
    using Snapshot = MacToolbox::MenuBar::Snapshot;

    void build();
    void addProgramMenu();
    void addMenu(const Snapshot::M& menu);
    void addItem(QMenu& menu, const Snapshot::M& from, std::size_t index);
    void watch(QMenu& menu);
    bool isOpen() const;

    QMenuBar& bar_;
    std::optional<Snapshot> built_; // what the bar shows
    std::vector<QMenu*> owned_;     // menus of the last build
};

} // namespace Desktop
