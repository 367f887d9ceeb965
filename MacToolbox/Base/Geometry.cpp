#include "MacToolbox/Base/Geometry.h"

namespace MacToolbox {

std::string Point::description() const { return "(" + std::to_string(h) + "," + std::to_string(v) + ")"; }

std::string Rect::description() const
{
    return "(t" + std::to_string(top) + " l" + std::to_string(left) + " b" + std::to_string(bottom) + " r"
        + std::to_string(right) + ")";
}

bool SectRect(const Rect& a, const Rect& b, Rect& dst)
{
    dst = a.intersection(b);
    return !dst.isEmpty();
}

void UnionRect(const Rect& a, const Rect& b, Rect& dst)
{
    if (a.isEmpty())
        dst = b;
    else
        dst = a.unionWith(b);
}

void Pt2Rect(Point a, Point b, Rect& dst)
{
    dst = {std::min(a.v, b.v), std::min(a.h, b.h), std::max(a.v, b.v), std::max(a.h, b.h)};
}

} // namespace MacToolbox
