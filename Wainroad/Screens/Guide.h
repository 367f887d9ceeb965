#pragma once

// The guide: a book of 61 pages that opens where the wain is.

#include "Wainroad/Frame/Panels.h"

namespace Wainroad {

inline constexpr Int kGuidePages = 61;

/// The page shown, 1 to 61; negative while the list of topics is open.
extern Int gGuidePage;

/// The page that fits where the wain is. @param place  `landmark` + 1.
Int GuidePageFor(Int place, bool onTheWay, Int route);
/// Opens the book at the page for where the wain is.
void GuideStartPage();
/// String `index` (from 1) of the long texts `id`; nil if it is not there. Cut at the end of the resource.
Handle GetLongString(Int id, Int index);

extern const ViewProc GuidePanel, GuideTopicsPanel;
extern const ViewProc GuideTitleItem, GuideTextItem, GuidePageItem;

} // namespace Wainroad
