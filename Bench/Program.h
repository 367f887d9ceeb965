#pragma once

namespace peers {

/// Measures the whole game in processes of its own, headless and in real time (about a minute and a half), and prints a
/// table: start, latency of a key, processor and memory at rest.
void reportProgram();

} // namespace peers
