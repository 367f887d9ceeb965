#include "Tools/rsrc/Check.h"
#include "Tools/rsrc/Expectations.h"
#include "Tools/rsrc/Forms.h"

#include <algorithm>

namespace Rsrc {

namespace {

std::string sizeText(const Frame& frame)
{
    return std::to_string(frame.bits.height) + " high and " + std::to_string(frame.bits.width) + " wide";
}

void checkFrames(const FrameNeeds& need, const std::vector<Frame>& frames, Findings& findings)
{
    for (Int n = need.first; n <= std::min(need.last, I(frames.size()) - 1); ++n) {
        const Frame& frame = frames[static_cast<std::size_t>(n)];
        const Bits& bits = frame.bits;
        const auto fault = [&](const std::string& text) {
            findings.fault("Imag", need.id, "frame " + std::to_string(n) + ' ' + text);
        };
        if (bits.height < need.leastHeight || bits.height > need.mostHeight || bits.width < need.leastWidth
            || bits.width > need.mostWidth)
            fault("is " + sizeText(frame) + ", out of its bounds");
        const Frame& first = frames[static_cast<std::size_t>(need.first)];
        if (need.same && (bits.height != first.bits.height || bits.width != first.bits.width))
            fault("is not of the size of frame " + std::to_string(need.first) + ", " + sizeText(first));
        const bool mayMove = need.id == 9200 && n >= 6;
        if (frame.origin != Point{} && !mayMove)
            fault("does not begin at (0, 0)");
        if (mayMove
            && (frame.origin.v < 0 || frame.origin.h < 0 || frame.origin.v + bits.height > 32
                || frame.origin.h + bits.width > 65))
            fault("does not lie in the 32 by 65 of the nearest rock");
    }
}

/// A strip that jumps back by its width less the width of the scene has to look the same there.
void checkPeriod(const std::vector<Frame>& frames, Int number, Findings& findings)
{
    constexpr Int kSceneWidth = 262;
    const Bits& bits = frames[static_cast<std::size_t>(number)].bits;
    const Int period = bits.width - kSceneWidth;
    if (period <= 0)
        return;
    for (Int v = 0; v < bits.height; ++v)
        for (Int h = 0; h + period < bits.width; ++h)
            if (bits.black(v, h) != bits.black(v, h + period))
                return findings.note("Imag", 5100,
                    "frame " + std::to_string(number) + " does not repeat after " + std::to_string(period) + " pixels");
    if (number == 2 && period % 6 != 0)
        findings.note("Imag", 5100, "the width of frame 2 less 262 is no multiple of 6");
}

} // namespace

void checkImages(const Stock& stock, Findings& findings)
{
    for (const ImageNeeds& need : imageNeeds()) {
        const Bytes* data = stock.find("Imag", need.id);
        if (!data)
            continue;
        const auto frames = imageFrames(*data);
        if (!frames) {
            findings.fault("Imag", need.id, "is damaged");
            continue;
        }
        if (I(frames->size()) < need.frames)
            findings.fault("Imag", need.id,
                std::to_string(frames->size()) + " frames, " + std::to_string(need.frames) + " are wanted");
        for (std::size_t n = 0; n < frames->size(); ++n)
            if ((*frames)[n].rowBytes != (*frames)[n].bits.rowBytes())
                findings.fault("Imag", need.id, "frame " + std::to_string(n) + " has rows of the wrong length");
        for (const FrameNeeds& sizes : frameNeeds())
            if (sizes.id == need.id)
                checkFrames(sizes, *frames, findings);
        if (need.id == 5100 && frames->size() > 2) {
            checkPeriod(*frames, 1, findings);
            checkPeriod(*frames, 2, findings);
        }
    }
    for (Int id = 2050; id <= 2052; ++id) {
        const Bytes* data = stock.find("PICT", id);
        const Bytes* dialog = stock.find("DLOG", 2050);
        if (!data || !dialog || dialog->size() < 8)
            continue;
        const Rect frame = data->size() < 13 ? Rect{} : Block(*data).rect(2);
        if (frame.isEmpty() || frame.height() > 260 || frame.width() > Block(*dialog).rect(0).width() - 20)
            findings.fault("PICT", id, "is empty or larger than its page");
    }
}

} // namespace Rsrc
