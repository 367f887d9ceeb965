#include "Tests/Window/WindowedGame.h"

#include "MacToolbox/Base/Platform.h"
#include "Tests/Harness/Golden.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace Harness {

using MacToolbox::Point;

namespace {

constexpr const char* kTitle = "The Wainroad";
constexpr int kWidth = 512, kHeight = 322; // of the picture
constexpr std::uint32_t kBlack = 0x000000, kWhite = 0xFFFFFF;
constexpr Int kAll = kWidth * kHeight;

std::string programPath() { return MacToolbox::Platform::current().programFolder() + "/wainroad"; }

Program::Environment joined(Program::Environment environment, const Program::Environment& more)
{
    for (const auto& [name, value] : more)
        environment[name] = value;
    return environment;
}

} // namespace

WindowedGame::WindowedGame(const Desk& desk, const Program::Environment& more, const std::string& program)
    : desk_(desk), program_({program.empty() ? programPath() : program}, joined(desk.environment(), more))
{
}

bool WindowedGame::comesUp(int factor)
{
    factor_ = factor;
    window_ = desk_.waitFor(kTitle);
    return window_ != 0 && waitUntil([this] {
        bar_ = shot().height - kHeight * factor_;
        const FramePtr frame = picture();
        return frame && std::ranges::count(frame->pixels, 1) > kAll / 100;
    });
}

FramePtr WindowedGame::picture(int factor) const
{
    if (factor == 0)
        factor = factor_;
    const Shot window = shot();
    const int left = (window.width - kWidth * factor) / 2, top = bar_ + (window.height - bar_ - kHeight * factor) / 2;
    if (left < 0 || top < bar_)
        return nullptr;
    auto frame = std::make_shared<MacToolbox::Frame>();
    frame->width = kWidth;
    frame->height = kHeight;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            const auto first = window.at(left + x * factor, top + y * factor);
            if (first != kBlack && first != kWhite)
                return nullptr;
            for (int i = 1; i < factor * factor; ++i)
                if (window.at(left + x * factor + i % factor, top + y * factor + i / factor) != first)
                    return nullptr;
            frame->pixels.push_back(first == kBlack);
        }
    return frame;
}

bool WindowedGame::shows(const FramePtr& frame, int factor, const FramePtr& mask, double seconds) const
{
    FramePtr last;
    const bool same = waitUntil([&] { return differing(last = picture(factor), frame, mask) == 0; }, seconds);
    if (!same) {
        const std::string base = MacToolbox::Platform::current().programFolder() + "/actual/window";
        if (frame)
            writePicture(*frame, base + "-wanted.png");
        if (last)
            writePicture(*last, base + "-shown.png");
        shot().save(base + ".ppm");
    }
    return same;
}

std::pair<int, int> WindowedGame::place(Point p) const
{
    return {static_cast<int>(p.h) * factor_ + factor_ / 2, bar_ + static_cast<int>(p.v) * factor_ + factor_ / 2};
}

void WindowedGame::move(Point p) const
{
    const auto [x, y] = place(p);
    desk_.move(window_, x, y);
}

void WindowedGame::click(Point p) const
{
    const auto [x, y] = place(p);
    desk_.click(window_, x, y);
}

Int differing(const FramePtr& a, const FramePtr& b, const FramePtr& mask)
{
    if (!a || !b || a->pixels.size() != b->pixels.size())
        return kAll;
    Int count = 0;
    for (std::size_t i = 0; i < a->pixels.size(); ++i)
        if (a->pixels[i] != b->pixels[i] && (!mask || mask->pixels[i] == 0))
            ++count;
    return count;
}

// ---- From the press to the pixel

std::vector<double> pressToPixel(const WindowedGame& game, Point p, int rounds)
{
    using Time = std::chrono::steady_clock;
    constexpr int kSide = 16; // of the square of display pixels that is watched
    constexpr int kAway = 120;
    Display* const display = game.desk().display();
    const auto [x, y] = game.place(p);
    const auto see = [&, left = x - kSide / 2, top = y - kSide / 2] {
        std::vector<unsigned long> pixels;
        if (XImage* const image = XGetImage(display, game.window(), left, top, kSide, kSide, AllPlanes, ZPixmap)) {
            for (int i = 0; i < kSide * kSide; ++i)
                pixels.push_back(XGetPixel(image, i % kSide, i / kSide));
            XDestroyImage(image);
        }
        return pixels;
    };
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        game.desk().move(game.window(), x, y);
        std::this_thread::sleep_for(
            std::chrono::milliseconds(100 + round % 17)); // no beat with the clock of the screen
        const auto before = see();
        const auto begin = Time::now();
        XTestFakeButtonEvent(display, 1, True, 0);
        XFlush(display);
        const auto patience = begin + std::chrono::seconds(5);
        while (see() == before && Time::now() < patience) { }
        times.push_back(std::chrono::duration<double, std::milli>(Time::now() - begin).count());
        game.desk().move(game.window(), x, y - kAway); // released outside, a button does nothing
        waitUntil([&] { return see() == before; }, 5);
        game.desk().press(false);
    }
    return times;
}

double median(std::vector<double> values)
{
    if (values.empty())
        return -1;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace Harness
