#pragma once

#include <string_view>

/// A measurement of a game under the manual clock, played by clicks in this process; it prints numbers. Nil for no
/// name: hunt, raft, crossing   milliseconds of a frame of the scene: animated, composed, published, and all else that
/// the game
///                        does in its three ticks; median and 95th percentile of samples of ten frames
/// scroll                 the same of a journal that moves by one line
/// journey                seconds from the title to the list of legends; MiB by which resident memory grows on the way
/// tune                   ticks from the end of the start-up sound to the title's frame
using Measure = void (*)();
Measure measureOf(std::string_view name);
