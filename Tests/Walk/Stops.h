#pragma once

#include "Tests/Player/Visit.h"
#include "Tests/Walk/Surface.h"

#include <functional>
#include <span>
#include <vector>

namespace Harness {

/// A place of the walk: a screen of the game, and how to get there.
struct Stop {
    const char* name;
    Visit::From from;
    const Wainroad::ViewProc* panel;  ///< that then shows; nil for a dialog, an alert or a menu
    std::function<void(Visit&)> open; ///< nothing: the panel is asked for
};
std::span<const Stop> stops();

/// Goes there. @return False if its panel or dialog does not show.
bool visit(Visit& game, const Stop& stop);
/// The dialogs, from the front; without one the panels that can be seen, and the window that they lie in.
std::vector<Surface> surfacesOf(const Visit& game);

} // namespace Harness
