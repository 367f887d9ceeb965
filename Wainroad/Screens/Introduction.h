#pragma once

namespace Wainroad {

/// Shows the three pages of the introduction, until the player has done with them.
void Introduction();

} // namespace Wainroad
