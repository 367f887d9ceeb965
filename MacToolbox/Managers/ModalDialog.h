#pragma once

#include <atomic>

namespace MacToolbox {

/// Whether Escape takes the cancel item of modal dialogs and alerts, before their filters see it. Off: it is a key like
/// others there. A host with a keyboard sets it once. Any thread.
extern std::atomic<bool> escapeCancels;

} // namespace MacToolbox
