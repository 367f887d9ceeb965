#include "Wainroad/Frame/Controls.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "Wainroad/Frame/IconButton.h"

#include <array>

namespace Wainroad {

static constexpr Int kInactive = 255, kPart = 10;

static bool hits(const ControlRecord& control, Int parameter)
{
    return control.contrlHilite != kInactive && control.contrlRect.contains(Point::fromLong(parameter));
}

static void grey(const Rect& r)
{
    PenPat(Pattern::gray);
    PenMode(patBic);
    PaintRect(r);
    PenNormal();
}

// ---- The icon button

static constexpr Int kKeyBytes = 276; // 46 rows of 6 bytes
static constexpr Rect kKeyBounds{0, 0, 46, 42};

/// The pictures of the key, from the resource, on first use.
struct KeyPictures {
    Handle up, down;
};
static RunState<KeyPictures> sKeys;

static const Handle& buttonBits(bool down)
{
    Handle& bits = down ? sKeys->down : sKeys->up;
    if (!bits) {
        const Handle definition = GetResource(os("CDEF"), 10);
        const Bytes none;
        ByteReader in(
            definition ? std::span<const std::uint8_t>(definition->bytes) : std::span<const std::uint8_t>(none));
        in.pos = down ? 1532 : 1256;
        bits = PtrToHand(in.raw(kKeyBytes));
    }
    return bits;
}

static void drawTitle(const ControlRecord& control, Int variation)
{
    const Rect& r = control.contrlRect;
    if (characters(control.contrlTitle).empty())
        return;
    const TextScope text;
    if (variation < 8) {
        TextFont(20);
        TextFace(bold);
        TextSize(14);
    }
    if (r.left + 47 < r.right)
        DrawTitleLines(r, control.contrlTitle);
    if (control.contrlHilite == kInactive)
        grey({r.top, r.left + 47, r.bottom, r.right});
}

static void drawIconButton(const ControlRecord& control, Int variation, bool erase)
{
    const Rect& r = control.contrlRect;
    const ClipScope clip(r);
    if (erase)
        EraseRect(r);
    drawTitle(control, variation);
    const bool down = control.contrlHilite != 0 && control.contrlHilite != kInactive;
    const Rect key = IconKeyRect(r);
    const BitMap picture(buttonBits(down), 0, 6, kKeyBounds);
    CopyBits(picture, thePort->portBits, kKeyBounds, key, srcCopy);
    const auto icon = std::static_pointer_cast<Block>(control.contrlData);
    if (control.contrlHilite == kInactive || !icon)
        return;
    const BitMap image(icon, 0, 4, {0, 0, 32, 32});
    const Int left = r.left + (down ? 8 : 4);
    CopyBits(image, thePort->portBits, image.bounds, {key.top + 7, left, key.top + 39, left + 32}, srcOr);
}

Int IconButtonDef(Int variation, const ControlHandle& control, Int message, Int parameter)
{
    if (!control || message > calcCRgns)
        return 0;
    const PenScope pen;
    PenNormal();
    if (message == testCntl)
        return hits(*control, parameter) ? kPart : 0;
    if (message == drawCntl && control->contrlVis)
        drawIconButton(*control, variation, parameter == 0);
    return 0;
}

// ---- The tab of the guide

static constexpr Int kGuideHeight = 35, kGuideWidth = 9;
static constexpr std::array<std::uint16_t, kGuideHeight> kGuideBits{
    0x8080,
    0xFF80,
    0xFF80,
    0x8080,
    0x0000,
    0x8400,
    0xFC00,
    0xFC00,
    0x8400,
    0x0400,
    0xFC00,
    0xF800,
    0x8000,
    0x7000,
    0xFC00,
    0x8400,
    0x8400,
    0x8480,
    0xFF80,
    0xFF80,
    0x8000,
    0x7000,
    0xF800,
    0xD400,
    0x9400,
    0x9C00,
    0x5800,
    0x0000,
    0x8400,
    0xCC00,
    0x3C00,
    0xBC00,
    0xF800,
    0xC400,
    0x8400,
};

static BitMap guideBits()
{
    const BitMap map(Rect{0, 0, kGuideHeight, kGuideWidth});
    for (Int row = 0; row < kGuideHeight; ++row)
        map.baseAddr->set16(row * map.rowBytes, kGuideBits[static_cast<std::size_t>(row)]);
    return map;
}

static void drawGuideTab(const ControlRecord& control)
{
    const Rect& r = control.contrlRect;
    const Int h = r.height();
    const Rect whole{r.top, r.left, r.bottom, r.right + r.width()};
    const RgnHandle outlineRgn = NewRgn();
    OpenRgn();
    FrameRoundRect(whole, h, h);
    CloseRgn(outlineRgn);
    const ClipScope clip(r);
    SectRgn(thePort->clipRgn, outlineRgn, outlineRgn);
    SetClip(outlineRgn);

    EraseRoundRect(whole, h, h);
    const BitMap word = guideBits();
    const Int right = r.right - (r.width() - kGuideWidth) / 2, top = r.top + (h - kGuideHeight) / 2;
    CopyBits(word, thePort->portBits, word.bounds, {top, right - kGuideWidth, top + kGuideHeight, right}, srcCopy);
    FrameRoundRect(whole, h, h);
    MoveTo(r.right - 1, r.top);
    LineTo(r.right - 1, r.bottom);
    if (control.contrlHilite == kInactive)
        grey(r);
    else if (control.contrlHilite != 0)
        InvertRoundRect(whole, h, h);
}

Int GuideTabDef(Int, const ControlHandle& control, Int message, Int parameter)
{
    if (!control)
        return 0;
    const PenScope pen;
    PenNormal();
    if (message == testCntl)
        return hits(*control, parameter) ? kPart : 0;
    if (message == drawCntl && control->contrlVis)
        drawGuideTab(*control);
    return 0;
}

// ---- The page corner

static void invertTriangle(Point a, Point b, Point c)
{
    const RgnHandle area = NewRgn();
    OpenRgn();
    MoveTo(a.h, a.v);
    LineTo(b.h, b.v);
    LineTo(c.h, c.v);
    LineTo(a.h, a.v);
    CloseRgn(area);
    InvertRgn(area);
}

static void drawPageCorner(const ControlRecord& control)
{
    const Rect& r = control.contrlRect;
    EraseRect(r);
    FrameRect(r);
    MoveTo(r.right - 1, r.bottom - 1);
    LineTo(r.left + 1, r.top + 1);
    switch (control.contrlHilite) {
    case 1: invertTriangle({r.top + 2, r.left + 1}, {r.bottom - 1, r.left + 1}, {r.bottom - 1, r.right - 1}); break;
    case 2: invertTriangle({r.top + 1, r.left + 1}, {r.top + 1, r.right - 1}, {r.bottom - 2, r.right - 1}); break;
    case kInactive: grey(r); break;
    }
}

static Int cornerPart(const Rect& r, Point at)
{
    return (r.bottom - at.v) + (at.h - r.left) < (r.width() + r.height()) / 2 ? 1 : 2;
}

Int PageCornerDef(Int, const ControlHandle& control, Int message, Int parameter)
{
    if (!control)
        return 0;
    const PenScope pen;
    PenNormal();
    if (message == testCntl)
        return hits(*control, parameter) ? cornerPart(control->contrlRect, Point::fromLong(parameter)) : 0;
    if (message == drawCntl && control->contrlVis)
        drawPageCorner(*control);
    return 0;
}

void RegisterControls()
{
    ControlManager::registerCdef(10, IconButtonDef);
    ControlManager::registerCdef(14, GuideTabDef);
    ControlManager::registerCdef(8, PageCornerDef);
}

} // namespace Wainroad
