#pragma once

#include "MacToolbox/Base/Memory.h"

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace MacToolbox {

/// A mouse cursor: 16 rows of 16 bits, most significant bit leftmost. A set data bit is black, else a set mask bit is
/// white, else the pixel is clear.
struct Cursor {
    std::array<std::uint8_t, 32> data{};
    std::array<std::uint8_t, 32> mask{};
    Point hotSpot; ///< in cursor pixels

    bool operator==(const Cursor&) const = default;
};

/// What an open or save panel is to ask.
struct PanelRequest {
    bool saving = false;
    std::string prompt;                                   ///< UTF-8; save panel
    std::string name;                                     ///< UTF-8; the proposed name of a save panel
    std::string folder;                                   ///< where the panel starts
    std::function<bool(const std::string& path)> accepts; ///< which regular files show, and may be replaced; nil: all
};

/// What the Toolbox asks of the machine. One object lives through the run; `current()` gives it.
class Platform {
public:
    virtual ~Platform() = default;

    // The main thread.

    /// Runs a block on the main queue, in posting order. Any thread; never waits.
    virtual void post(std::function<void()> block) = 0;
    /// Runs a block on the main queue and waits for its end; directly when called on the main thread.
    void call(const std::function<void()>& block);
    virtual bool isMainThread() const = 0;
    /// Main thread: serves the main queue for about 10 ms, or until something was served.
    virtual void pumpMain() = 0;
    /// Serves the main thread for the rest of the process. `begin` starts the game; it is called once all is up.
    /// Returns only if the platform runs the game inside this call. @param title The program's name, UTF-8.
    virtual void run(const std::string& title, const std::function<void()>& begin) = 0;
    /// Runs `body` on a thread named "The Wainroad" with a stack of 64 MiB.
    virtual void startGameThread(std::function<void()> body);
    /// Main thread: the game's closure has returned.
    virtual void gameEnded() { exitProcess(0); }
    /// Ends the process: flushes the standard streams and runs no destructor. Any thread.
    [[noreturn]] virtual void exitProcess(int status);

    // The picture, cursor and menus. Any thread; a platform that shows nothing does nothing.

    /// The cursor in force has changed; nullptr is the arrow.
    virtual void cursorChanged(const Cursor* cursor) = 0;
    virtual void hideCursor() { }
    virtual void showCursor() { }
    virtual void obscureCursor() { } ///< hidden until the mouse moves
    /// A new menu snapshot is published.
    virtual void menusChanged() = 0;
    /// What is going on, in one line of UTF-8 for those who hear the screen.
    virtual void statusChanged(const std::string&) { }

    // Sound.

    /// Plays 8-bit unsigned mono samples (128 is silence) at `rate` samples a second, at half of full scale; cuts off
    /// what plays. The samples are copied. @return False if there is no audio.
    virtual bool playSound(std::span<const std::uint8_t> samples, double rate) = 0;
    virtual void stopSound() = 0;
    virtual void beep() = 0;

    // Pasteboard and panels.

    /// The pasteboard's text in UTF-8, or nothing. Main thread (see `call`), unless the platform has no other.
    virtual std::optional<std::string> pasteboard() = 0;
    /// Replaces the pasteboard's contents. Main thread.
    virtual void setPasteboard(const std::string& text) = 0;
    /// False: file questions are answered from the scripted queue, and `showPanel` is never called.
    virtual bool hasPanels() const { return false; }
    /// Main thread: shows a panel and returns; `done` is called on the main thread with the path, or nothing.
    virtual void showPanel(const PanelRequest& request, std::function<void(std::optional<std::string>)> done);
    /// False while the Toolbox should not open an audio device at all (WR_MUTE is 1, or WR_SCRIPT is there).
    bool soundWanted();

    // Surroundings.

    /// A variable of the process environment; nothing if it is not there. An empty value is there.
    virtual std::optional<std::string> environment(const std::string& name);
    /// The folder of the user's data, without a slash at its end; may not exist. WR_DATA, else "The Wainroad" in the
    /// user's data folder.
    std::string dataFolder();
    /// The folder of the executable, without a slash at its end.
    virtual std::string programFolder();
    /// The folders in which a resource file is looked for, in order: the executable's own, the bundle beside it, the
    /// bundle's `Resources`, and `share/wainroad` of the place where it is installed.
    virtual std::vector<std::string> resourceFolders();

    /// The platform in force; one with no window and no sound if none was installed.
    static Platform& current();
    /// True if `install` has put one in force.
    static bool isInstalled();
    /// Puts a platform in force, or takes it away with nullptr. Before the game starts; the object stays the caller's.
    static void install(Platform* platform);
};

} // namespace MacToolbox
