#pragma once

namespace peers {

/// Measures the whole game in processes of its own, and prints two tables. Headless and in real time (about a minute
/// and a half): start, latency of a key, processor and memory at rest. Under the manual clock: frames of the animated
/// scenes, the journal's scrolling, a whole journey, the growth of memory on it, and the start-up sound.
void reportProgram();

/// Measures the game in its window, on a display in memory, by the program `bench_window` (about a minute).
/// @return The status of `bench`: 1, with a line on standard error, where that program is missing or fails.
int reportWindow();

} // namespace peers
