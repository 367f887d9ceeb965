#pragma once

// The journal on the travel screen: eight lines, a scroll bar, and a cache of the messages near the view. It follows
// the end of the story; 15 seconds after the player has scrolled it goes back there with the next news.

#include "Wainroad/Frame/Panels.h"
#include "Wainroad/Journal/LogLines.h"

namespace Wainroad {

inline constexpr Int kLogViewLines = 8;
inline constexpr Int kLogCacheSize = 18;

extern View* gLogView;                 ///< the `LogItem` while it exists, else nil
extern std::vector<LogLine> gLogCache; ///< at most 18, in the order of the journal
extern Int gLogTop;                    ///< number of the line at the top of the view
extern Int gLogMax;                    ///< greatest value of `gLogTop`
extern bool gLoaded;                   ///< a journey was loaded, and the journal has not told of it
extern bool gLoadedTrain;              ///< what was loaded was a whole train

extern const ViewProc LogPanel;
extern const ViewProc LogItem;
extern const ViewProc LogScrollAction;

/// Lays out everything anew from the store and shows the end of it.
void RelayoutLog();
/// Lays out the `count` messages from `offset` on, which have just been added.
void LayoutNew(Int count, Int offset);
/// Moves the view to the line `top`. A negative `old` draws all of it.
void ScrollLog(View& item, Int old, Int top);
/// Draws the lines `first` to `last - 1` of the journal as far as they are in the cache.
void DrawLogLines(View& item, Int first, Int last);

} // namespace Wainroad
