#pragma once

// Items that show an icon, a picture or a list.

#include "Wainroad/Frame/Panels.h"

namespace MacToolbox {
struct ListRec;
using ListHandle = std::shared_ptr<ListRec>;
} // namespace MacToolbox

namespace Wainroad {

extern const ViewProc IconItem;    ///< `data` is the `Handle`, nil if missing
extern const ViewProc PictureItem; ///< `data` is the `Handle`, nil if missing
/// A scrolling list over a user item; `param` gives its selection flags. Answers row + 1 to a click, positive for a
/// double click, negative for a single one. The panel fills it between its two opens.
extern const ViewProc ListItem;
/// The list of a `ListItem`, or nil.
ListHandle ItemList(View& view);

} // namespace Wainroad
