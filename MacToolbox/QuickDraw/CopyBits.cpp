#include "MacToolbox/QuickDraw/CopyBits.h"

#include "MacToolbox/QuickDraw/ClipArea.h"
#include "MacToolbox/QuickDraw/Raster.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <cstring>

namespace MacToolbox {

namespace {

/// A copy of the pixels of `map` around `part`, with the same coordinates; they are good until the next snapshot.
BitMap snapshot(const BitMap& map, const Rect& part)
{
    static const Handle& block = *new Handle(NewHandle(0));
    const Rect rows = map.bounds.intersection(part);
    const Int used = (map.bounds.width() + 7) >> 3;
    if (rows.isEmpty())
        return {};
    const Int first = map.offset + (rows.top - map.bounds.top) * map.rowBytes;
    const Int length = (rows.height() - 1) * map.rowBytes + used;
    if (map.offset < 0 || map.rowBytes < used || first > map.baseAddr->count() - length) { // an odd map: all of it
        block->bytes = map.baseAddr->bytes;
        return {block, map.offset, map.rowBytes, map.bounds};
    }
    const auto from = map.baseAddr->bytes.begin() + first;
    block->bytes.assign(from, from + length);
    return {block, 0, map.rowBytes, {rows.top, map.bounds.left, rows.bottom, map.bounds.right}};
}

/// The part of `dst` that a copy into `dstRect` by this port may touch. `area` begins as that rectangle.
void cutForCopy(ClipArea& area, const GrafPort& port, const BitMap& dst)
{
    area.cut(dst.bounds);
    if (dst.sameStorage(port.portBits) && dst.bounds == port.portBits.bounds)
        area.cut(port);
}

constexpr RasterOp kPlainCopy{};

} // namespace

void GrafPort::copyBits(
    const BitMap& src, const BitMap& dst, const Rect& srcRect, const Rect& dstRect, Int mode, const RgnHandle& maskRgn)
{
    if (srcRect.isEmpty() || dstRect.isEmpty())
        return;
    ClipArea area(dstRect);
    cutForCopy(area, *this, dst);
    if (maskRgn)
        area.cut(maskRgn->region);
    if (area.isEmpty() || !dst.baseAddr)
        return;
    Screen::shared().noteChange(dst);

    const RasterOp op = RasterOp::of(mode, fgColor.isBlack(), bkColor.isBlack());
    const bool scaled = srcRect.width() != dstRect.width() || srcRect.height() != dstRect.height();
    const Int dh = srcRect.left - dstRect.left, dv = srcRect.top - dstRect.top;
    const bool shared = src.baseAddr == dst.baseAddr;
    const BitMap kept = shared ? snapshot(src, scaled ? srcRect : area.box().offsetBy(dh, dv)) : BitMap();
    const BitMap& from = shared ? kept : src;
    area.forEachRect([&](const Rect& r) {
        if (scaled)
            scalePixels(dst, r, dstRect, from, srcRect, op);
        else
            blitPixels(dst, r, from, {r.top + dv, r.left + dh}, op);
    });
}

void GrafPort::copyMask(const BitMap& src, const BitMap& mask, const BitMap& dst, const Rect& srcRect,
    const Rect& maskRect, const Rect& dstRect)
{
    if (srcRect.isEmpty() || dstRect.isEmpty())
        return;
    ClipArea area(dstRect);
    cutForCopy(area, *this, dst);
    if (area.isEmpty())
        return;
    Screen::shared().noteChange(dst);
    if (!dst.baseAddr)
        return;

    const Point toSrc{srcRect.top - dstRect.top, srcRect.left - dstRect.left};
    const Point toMask{maskRect.top - dstRect.top, maskRect.left - dstRect.left};
    if (src.baseAddr != dst.baseAddr && mask.baseAddr != dst.baseAddr) {
        area.forEachRect([&](const Rect& r) {
            maskPixels(dst, r, src, {r.top + toSrc.v, r.left + toSrc.h}, mask, {r.top + toMask.v, r.left + toMask.h});
        });
        return;
    }
    // Within one block each pixel reads what the ones before it have written.
    const Region region = area.region();
    for (Int v = region.bounds().top; v < region.bounds().bottom; ++v) {
        const std::vector<Int> row = region.spans(v);
        for (std::size_t i = 0; i + 1 < row.size(); i += 2)
            for (Int h = row[i]; h < row[i + 1]; ++h)
                if (mask.get(h + toMask.h, v + toMask.v))
                    dst.set(h, v, src.get(h + toSrc.h, v + toSrc.v));
    }
}

Region GrafPort::scrollRect(const Rect& r, Int dh, Int dv)
{
    ClipArea clip(*this);
    clip.cut(r);
    if (clip.isEmpty())
        return {};
    const Region area = clip.region();
    const Region moved = area.offsetBy(dh, dv).intersection(area);
    Screen::shared().noteChange(portBits);
    if (portBits.baseAddr && !moved.isEmpty()) {
        const BitMap before = snapshot(portBits, moved.bounds().offsetBy(-dh, -dv));
        ClipArea to(portBits.bounds);
        to.cut(moved);
        to.forEachRect([&](const Rect& part) {
            blitPixels(portBits, part, before, {part.top - dv, part.left - dh}, kPlainCopy);
        });
    }
    Region update = area.subtracting(moved);
    fill(update, bkPat, patCopy);
    return update;
}

void CopyBits(
    const BitMap& src, const BitMap& dst, const Rect& srcRect, const Rect& dstRect, Int mode, const RgnHandle& maskRgn)
{
    thePort->copyBits(src, dst, srcRect, dstRect, mode, maskRgn);
}

void CopyMask(const BitMap& src, const BitMap& mask, const BitMap& dst, const Rect& srcRect, const Rect& maskRect,
    const Rect& dstRect)
{
    thePort->copyMask(src, mask, dst, srcRect, maskRect, dstRect);
}

void ScrollRect(const Rect& r, Int dh, Int dv, const RgnHandle& updateRgn)
{
    Region update = thePort->scrollRect(r, dh, dv);
    if (updateRgn)
        updateRgn->region = std::move(update);
}

namespace {

/// The white pixels of `area` from which white leads to its border, one flag a pixel, row after row.
std::vector<bool> floodFromBorder(const BitMap& src, const Rect& area)
{
    const Int width = area.width(), height = area.height();
    std::vector<bool> reached(static_cast<std::size_t>(width * height));
    std::vector<Point> pending;
    const auto visit = [&](Int x, Int y) {
        if (x < 0 || y < 0 || x >= width || y >= height)
            return;
        auto flag = reached[static_cast<std::size_t>(y * width + x)];
        if (flag || src.get(area.left + x, area.top + y))
            return;
        flag = true;
        pending.push_back({y, x});
    };
    for (Int x = 0; x < width; ++x)
        visit(x, 0), visit(x, height - 1);
    for (Int y = 0; y < height; ++y)
        visit(0, y), visit(width - 1, y);
    while (!pending.empty()) {
        const Point p = pending.back();
        pending.pop_back();
        visit(p.h + 1, p.v), visit(p.h - 1, p.v), visit(p.h, p.v + 1), visit(p.h, p.v - 1);
    }
    return reached;
}

} // namespace

void CalcMask(const BitMap& src, const BitMap& dst, const Rect& rect)
{
    // What lies outside the source is white up to the border of `rect`, so the flood comes in from there all the same.
    constexpr Int kMostPixels = 1 << 26;
    const Rect area = rect.intersection(src.bounds);
    if (rect.isEmpty() || !dst.baseAddr || area.width() > kMostPixels / std::max<Int>(area.height(), 1))
        return;
    const std::vector<bool> reached = floodFromBorder(src, area);
    const Int dh = rect.left - dst.bounds.left, dv = rect.top - dst.bounds.top;
    const Rect cells = dst.bounds.intersection(rect.offsetBy(-dh, -dv));
    for (Int v = cells.top; v < cells.bottom; ++v)
        for (Int h = cells.left; h < cells.right; ++h) {
            const Int x = h + dh - area.left, y = v + dv - area.top;
            const bool inside = area.contains(h + dh, v + dv);
            dst.set(h, v, inside && !reached[static_cast<std::size_t>(y * area.width() + x)]);
        }
}

Int Random()
{
    Int x = qd.randSeed & 0x7FFFFFFF;
    if ((qd.randSeed & 0x7FFFFFFE) == 0)
        x = 1;
    qd.randSeed = x * 16807 % 0x7FFFFFFF;
    const Int r = LoWord(qd.randSeed);
    return r == -0x8000 ? 0 : r;
}

} // namespace MacToolbox
