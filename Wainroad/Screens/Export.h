#pragma once

namespace Wainroad {

/// Writes the journal's text to a file that the player names. A failed export removes what it began.
void ExportLog();

} // namespace Wainroad
