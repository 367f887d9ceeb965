#pragma once

// Messages of the journal laid out as lines of text. Text exists for a few messages near the view only.

#include "Wainroad/Frame/Panels.h"

#include <array>
#include <functional>
#include <vector>

namespace Wainroad {

inline constexpr Int kLogMessageLines = 4; ///< the most that one message takes

/// One message laid out for the view.
struct LogLine {
    Int index = -1;     ///< number of the message in the store, from 0
    Int firstLine = -1; ///< number of its first line in the whole journal
    Int offset = 0;     ///< of the stored message
    Str255 text{0};
    Int nLines = 0;                                    ///< 0 to 4
    std::array<Int, kLogMessageLines + 1> lineStart{}; ///< indices into `text`; the last in use is the end
    Int face = 0;                                      ///< 1, bold, for what concerns this player

    Int endLine() const { return firstLine + nLines; }
};

/// Breaks the text of a message into lines that fit the view. What would need a fifth line is cut with an ellipsis.
void WrapLogLine(View& item, LogLine& line);

/// Lays messages out one after another. A date waits until a message of its day is shown, and is laid out before it.
class LogLayout {
public:
    /// @param line  The line that the next message begins at.
    LogLayout(View& item, Int line) : item_(item), line_(line) { }
    /// Lays out message `index` at `offset`; `shown` gets each message that the player sees, dates among them.
    /// @return The line at which this message begins, or would begin.
    Int add(Int index, Int offset, const std::function<void(LogLine)>& shown);
    /// The line behind what is laid out.
    Int line() const { return line_; }

private:
    struct Waiting {
        Int index = -1, offset = 0;
    };
    void emit(Int index, Int offset, const std::function<void(LogLine)>& shown);

    View& item_;
    Int line_;

public:
    Waiting date; ///< a date that no shown message has followed yet; -1 for none
};

} // namespace Wainroad
