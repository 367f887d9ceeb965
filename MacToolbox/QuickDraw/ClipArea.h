#pragma once

#include "MacToolbox/QuickDraw/QuickDraw.h"

#include <optional>

namespace MacToolbox {

/// The pixels that a drawing call may touch: a rectangle, and within it a region if some clip is no rectangle. Regions
/// that it was cut with must outlive it.
class ClipArea {
public:
    explicit ClipArea(const Rect& box) : box_(box) { }
    /// What the port's regions leave of its bitmap.
    explicit ClipArea(const GrafPort& port) : box_(port.portBits.bounds) { cut(port); }
    ClipArea(const ClipArea&) = delete;
    ClipArea& operator=(const ClipArea&) = delete;

    void cut(const Rect& r) { box_ = box_.intersection(r); }
    void cut(const Region& region)
    {
        cut(region.bounds());
        if (region.isRect())
            return;
        if (complex_ != nullptr)
            own_ = complex_->intersection(region);
        complex_ = complex_ == nullptr ? &region : &*own_;
    }
    void cut(const GrafPort& port)
    {
        cut(port.visRgn->region);
        cut(port.clipRgn->region);
        cut(port.portBits.bounds);
    }

    bool isEmpty() const { return box_.isEmpty() || (complex_ != nullptr && !complex_->intersects(box_)); }
    const Rect& box() const { return box_; }
    bool isRect() const { return complex_ == nullptr; }
    Region region() const { return complex_ == nullptr ? Region(box_) : complex_->intersection(box_); }

    /// Calls `visit(Rect)` for rectangles that make up the area, none above one visited before it.
    template <typename Visit> void forEachRect(Visit&& visit) const { forEachRect(box_, visit); }
    /// The same for the part of the area in `within`, which lies inside the box.
    template <typename Visit> void forEachRect(const Rect& within, Visit&& visit) const
    {
        if (within.isEmpty())
            return;
        if (complex_ == nullptr)
            return visit(within);
        complex_->forEachBand(within.top, within.bottom, [&](Int top, Int bottom, Region::Row row) {
            const Rect band{std::max(top, within.top), within.left, std::min(bottom, within.bottom), within.right};
            for (std::size_t i = 0; i + 1 < row.size(); i += 2) {
                const Rect r{
                    band.top, std::max(I(row[i]), band.left), band.bottom, std::min(I(row[i + 1]), band.right)};
                if (r.left < r.right)
                    visit(r);
            }
        });
    }

private:
    Rect box_;
    const Region* complex_ = nullptr;
    std::optional<Region> own_;
};

} // namespace MacToolbox
