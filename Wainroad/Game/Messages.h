#pragma once

// What the main loop does about the messages of the model.

namespace Wainroad {

/// Acts on every message that waits, in the order of the table, and frees its entry. May end the game.
void ApplyMessages();

} // namespace Wainroad
