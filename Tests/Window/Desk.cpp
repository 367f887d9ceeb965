#include "Tests/Window/Desk.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <unistd.h>

namespace Harness {

namespace {

bool isInstalled(const std::string& tool)
{
    std::istringstream folders(std::getenv("PATH") ? std::getenv("PATH") : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (std::filesystem::exists(folder + "/" + tool))
            return true;
    return false;
}

/// The bytes of a window's property; "" if it has none.
std::string property(Display* display, Window window, const char* name)
{
    Atom type = 0;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* data = nullptr;
    const Atom atom = XInternAtom(display, name, False);
    if (XGetWindowProperty(display, window, atom, 0, 1024, False, AnyPropertyType, &type, &format, &count, &rest, &data)
            != 0
        || !data)
        return {};
    const std::string bytes(
        reinterpret_cast<char*>(data), count * static_cast<unsigned long>(format == 32 ? sizeof(long) : 1));
    XFree(data);
    return bytes;
}

/// The visible window of that title in the tree below `top`; 0 for none.
Window findBelow(Display* display, Window top, const std::string& title)
{
    Window root = 0, parent = 0, *children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, top, &root, &parent, &children, &count) == 0)
        return 0;
    Window found = 0;
    for (unsigned i = 0; i < count && found == 0; ++i) {
        XWindowAttributes attributes{};
        const bool shows =
            XGetWindowAttributes(display, children[i], &attributes) != 0 && attributes.map_state == IsViewable;
        if (shows && property(display, children[i], "_NET_WM_NAME") == title && attributes.width > 1)
            found = children[i];
        else if (shows)
            found = findBelow(display, children[i], title);
    }
    if (children)
        XFree(children);
    return found;
}

} // namespace

std::string Desk::missing()
{
    for (const char* const tool : {"Xvfb", "openbox", "xdotool", "setxkbmap", "xclip"})
        if (!isInstalled(tool))
            return tool;
    return {};
}

Desk::Desk()
{
    startServer();
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; }); // a window may be gone when it is asked for
    manager_.emplace(std::vector<std::string>{"openbox"}, environment());
    if (!waitUntil(
            [this] { return !property(display_, DefaultRootWindow(display_), "_NET_SUPPORTING_WM_CHECK").empty(); }))
        throw std::runtime_error("openbox does not start: " + manager_->output());
    run({"setxkbmap", "fr"});
}

/// Tries numbers for the display until one is free: a server that finds its number taken ends by itself.
void Desk::startServer()
{
    constexpr int kFirst = 200, kRange = 20000;
    std::string words;
    for (int attempt = 0; attempt < 20 && !display_; ++attempt) {
        name_ = ":" + std::to_string(kFirst + (getpid() + attempt * 137) % kRange);
        server_.emplace(std::vector<std::string>{"Xvfb", name_, "-screen", "0", "2560x1600x24", "-nolisten", "tcp"},
            Program::Environment{});
        waitUntil([this] { return !server_->running() || (display_ = XOpenDisplay(name_.c_str())) != nullptr; });
        words = server_->output();
    }
    if (!display_)
        throw std::runtime_error("Xvfb does not start: " + words);
}

Desk::~Desk()
{
    if (display_)
        XCloseDisplay(display_);
}

Program::Environment Desk::environment() const
{
    return {{"DISPLAY", name_}, {"WAYLAND_DISPLAY", std::nullopt}, {"QT_QPA_PLATFORM", "xcb"}, {"HOME", folder_.path()},
        {"XDG_CONFIG_HOME", folder_.path("config")}, {"XDG_DATA_HOME", std::nullopt},
        {"XDG_RUNTIME_DIR", folder_.path()}, {"LC_ALL", "C.UTF-8"}, {"SDL_AUDIODRIVER", "dummy"},
        {"WR_HEADLESS", std::nullopt}, {"WR_SCRIPT", std::nullopt}, {"WR_MUTE", std::nullopt},
        {"WR_DATA", folder_.path("data")}, {"WR_DATE", "1848-04-01"}};
}

void Desk::run(const std::vector<std::string>& command) const
{
    Program tool(command, environment());
    tool.wait(60);
}

Desk::Window Desk::find(const std::string& title) const
{
    return findBelow(display_, DefaultRootWindow(display_), title);
}

Desk::Window Desk::waitFor(const std::string& title) const
{
    Window window = 0;
    waitUntil([&] { return (window = find(title)) != 0; });
    return window;
}

bool Desk::waitForActive(const std::string& title) const
{
    return waitUntil([&] {
        const std::string active = property(display_, DefaultRootWindow(display_), "_NET_ACTIVE_WINDOW");
        Window window = 0;
        std::memcpy(&window, active.data(), std::min(active.size(), sizeof window));
        return window != 0 && window == find(title);
    });
}

bool Desk::waitForEnd(const std::string& title) const
{
    return waitUntil([&] { return find(title) == 0; });
}

bool Desk::hasClipboard() const { return XGetSelectionOwner(display_, XInternAtom(display_, "CLIPBOARD", False)) != 0; }

Shot Desk::shot(Window window) const
{
    XWindowAttributes attributes{};
    Shot shot;
    if (!XGetWindowAttributes(display_, window, &attributes))
        return shot;
    const auto width = static_cast<unsigned>(attributes.width), height = static_cast<unsigned>(attributes.height);
    XImage* const image = XGetImage(display_, window, 0, 0, width, height, AllPlanes, ZPixmap);
    if (!image)
        return shot;
    shot.width = attributes.width;
    shot.height = attributes.height;
    shot.pixels.reserve(static_cast<std::size_t>(shot.width * shot.height));
    for (int y = 0; y < shot.height; ++y)
        for (int x = 0; x < shot.width; ++x)
            shot.pixels.push_back(static_cast<std::uint32_t>(XGetPixel(image, x, y)) & 0xFFFFFF);
    XDestroyImage(image);
    return shot;
}

void Shot::save(const std::string& path) const
{
    std::ofstream out(path, std::ios::binary);
    out << "P6\n" << width << ' ' << height << "\n255\n";
    for (const std::uint32_t pixel : pixels)
        out << static_cast<char>(pixel >> 16) << static_cast<char>(pixel >> 8) << static_cast<char>(pixel);
}

void Desk::move(Window window, int x, int y) const
{
    int left = 0, top = 0;
    ::Window child = 0;
    XTranslateCoordinates(display_, window, DefaultRootWindow(display_), 0, 0, &left, &top, &child);
    XTestFakeMotionEvent(display_, -1, left + x, top + y, 0);
    XSync(display_, False);
}

void Desk::press(bool down) const
{
    XTestFakeButtonEvent(display_, 1, down ? True : False, 0);
    XSync(display_, False);
}

void Desk::click(Window window, int x, int y) const
{
    move(window, x, y);
    pauseFor(0.05);
    press(true);
    pauseFor(0.1);
    press(false);
    pauseFor(0.05);
}

} // namespace Harness
