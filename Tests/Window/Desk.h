#pragma once

#include "Tests/Harness/TemporaryFolder.h"
#include "Tests/Window/Program.h"

struct _XDisplay;

namespace Harness {

/// A picture of a window as it is on the display, one value (0xRRGGBB) a pixel; no pixels if there is none.
struct Shot {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;
    std::uint32_t at(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
    bool operator==(const Shot&) const = default;
    /// Writes it as PPM.
    void save(const std::string& path) const;
};

/// A display of its own, 2560 by 1600, with a window manager and a French keyboard, whose accented letters are keys: no
/// window of the machine is seen or touched.
class Desk {
public:
    using Window = unsigned long;

    /// What is missing here to make one, or "".
    static std::string missing();
    Desk();
    ~Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    _XDisplay* display() const { return display_; }
    const TemporaryFolder& folder() const { return folder_; }
    /// For programs on this desk: an empty home, and the game's data in `folder()`/data.
    Program::Environment environment() const;

    /// Runs a tool of the display to its end, for instance {"xdotool", "key", "a"}.
    void run(const std::vector<std::string>& command) const;
    void key(const std::string& name) const { run({"xdotool", "key", "--clearmodifiers", name}); }
    void type(const std::string& text) const { run({"xdotool", "type", "--delay", "60", text}); }

    /// The window of that title, if it is on the display; 0 if not.
    Window find(const std::string& title) const;
    /// Waits for it. @return 0 if it does not come.
    Window waitFor(const std::string& title) const;
    /// Waits until that window is there and has the keyboard.
    bool waitForActive(const std::string& title) const;
    bool waitForEnd(const std::string& title) const;
    /// True if a program offers something to paste.
    bool hasClipboard() const;
    Shot shot(Window window) const;
    /// Moves the mouse to a place of a window.
    void move(Window window, int x, int y) const;
    void press(bool down) const;
    /// As a hand clicks: the button stays down for a moment.
    void click(Window window, int x, int y) const;

private:
    void startServer();

    TemporaryFolder folder_;
    std::string name_;
    std::optional<Program> server_, manager_;
    _XDisplay* display_ = nullptr;
};

} // namespace Harness
