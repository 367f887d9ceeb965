#include "Tests/Walk/ContactSheet.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "Tests/Harness/Golden.h"

#include <algorithm>

namespace Harness {

using namespace MacToolbox;

namespace {

constexpr Int kColumns = 6, kGap = 8, kCaptionHeight = 16;

void paint(const Frame& from, Frame& to, Int top, Int left)
{
    for (Int v = 0; v < from.height; ++v)
        std::copy_n(from.pixels.begin() + v * from.width, from.width, to.pixels.begin() + (top + v) * to.width + left);
}

Frame blank(Int height, Int width) { return {Bytes(static_cast<std::size_t>(height * width)), width, height}; }

Frame captionOf(const std::string& text, Int width)
{
    const auto port = std::make_shared<GrafPort>(Rect{0, 0, kCaptionHeight, width});
    const PortScope scope(port);
    TextFont(geneva);
    TextSize(9);
    MoveTo(2, 11);
    DrawString(pstr(text));
    Frame caption = blank(kCaptionHeight, width);
    for (Int v = 0; v < kCaptionHeight; ++v)
        for (Int h = 0; h < width; ++h)
            caption.pixels[static_cast<std::size_t>(v * width + h)] = port->portBits.get(h, v);
    return caption;
}

} // namespace

void ContactSheet::add(const FramePtr& picture, const std::string& caption)
{
    if (!picture)
        return;
    Frame both = blank(picture->height + kCaptionHeight, picture->width);
    paint(*picture, both, 0, 0);
    paint(captionOf(caption, picture->width), both, picture->height, 0);
    pictures_.push_back(std::move(both));
}

bool ContactSheet::write(const std::string& path) const
{
    Int width = 0, height = 0;
    for (const Frame& picture : pictures_)
        width = std::max(width, picture.width), height = std::max(height, picture.height);
    const Int count = I(pictures_.size()), columns = std::min(count, kColumns),
              rows = (count + kColumns - 1) / kColumns;
    if (count == 0)
        return false;
    Frame sheet = blank(rows * (height + kGap) + kGap, columns * (width + kGap) + kGap);
    for (Int i = 0; i < count; ++i)
        paint(pictures_[static_cast<std::size_t>(i)], sheet, kGap + i / kColumns * (height + kGap),
            kGap + i % kColumns * (width + kGap));
    return writePicture(sheet, path);
}

} // namespace Harness
