#include "MacToolbox/QuickDraw/Screen.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/QuickDraw/Raster.h"
#include "MacToolbox/QuickDraw/Words.h"

namespace MacToolbox {

using namespace Words;

/// Frames that nobody holds any more, to be used again.
class Screen::FramePool : public std::enable_shared_from_this<FramePool> {
public:
    /// A frame of that size with any contents. It comes back here with its last reference, from whatever thread.
    std::shared_ptr<Frame> take(Int width, Int height)
    {
        std::unique_ptr<Frame> frame;
        {
            const std::lock_guard guard(lock_);
            if (!spare_.empty()) {
                frame = std::move(spare_.back());
                spare_.pop_back();
            }
        }
        if (!frame)
            frame = std::make_unique<Frame>();
        frame->width = width;
        frame->height = height;
        frame->pixels.resize(static_cast<std::size_t>(width * height));
        return {frame.release(), [pool = shared_from_this()](Frame* done) { pool->put(std::unique_ptr<Frame>(done)); }};
    }

private:
    void put(std::unique_ptr<Frame> frame)
    {
        const std::lock_guard guard(lock_);
        if (spare_.size() < kSpares)
            spare_.push_back(std::move(frame));
    }

    static constexpr std::size_t kSpares = 3;
    std::mutex lock_;
    std::vector<std::unique_ptr<Frame>> spare_;
};

Screen::Screen() : bits(bounds), pool_(std::make_shared<FramePool>()) { startAfresh(); }

Screen& Screen::shared()
{
    static Screen& screen = *new Screen;
    return screen;
}

static const AtRunStart sAfresh([] { Screen::shared().startAfresh(); });

void Screen::startAfresh()
{
    std::fill(bits.baseAddr->bytes.begin(), bits.baseAddr->bytes.end(), Byte{0});
    setViewport({20, 0, 342, 512});
    generation = 0;
    published_ = -1;
    onPublish = nullptr;
    FramePtr old;
    const std::lock_guard guard(lock_);
    front_.swap(old);
}

void Screen::setViewport(const Rect& r)
{
    viewport_.top = std::clamp(r.top, bounds.top, bounds.bottom);
    viewport_.left = std::clamp(r.left, bounds.left, bounds.right);
    viewport_.bottom = std::clamp(r.bottom, viewport_.top, bounds.bottom);
    viewport_.right = std::clamp(r.right, viewport_.left, bounds.right);
    const auto word = [](Int x) { return static_cast<std::uint64_t>(x) & 0xFFFF; };
    sharedViewport_ =
        word(viewport_.top) << 48 | word(viewport_.left) << 32 | word(viewport_.bottom) << 16 | word(viewport_.right);
}

Rect Screen::sharedViewport() const
{
    const std::uint64_t v = sharedViewport_;
    return {I(v >> 48), I(v >> 32 & 0xFFFF), I(v >> 16 & 0xFFFF), I(v & 0xFFFF)};
}

FramePtr Screen::snapshot() const
{
    const std::lock_guard guard(lock_);
    return front_;
}

namespace {

/// For each byte its eight pixels, a byte each.
struct UnpackTable {
    Word pixels[256];

    constexpr UnpackTable() : pixels()
    {
        for (Word byte = 0; byte < 256; ++byte) {
            Word w = 0;
            for (int i = 0; i < 8; ++i)
                w |= (byte >> (7 - i) & 1) << (56 - 8 * i);
            pixels[byte] = inMemoryOrder(w);
        }
    }
};
constexpr UnpackTable kUnpack;

/// `count` pixels from the first bit of `row` on.
void unpackRow(const Byte* row, Int count, Byte* out)
{
    for (; count >= 16; count -= 16, row += 2, out += 16)
        store(out, Chunk{kUnpack.pixels[row[0]], kUnpack.pixels[row[1]]});
    for (Int x = 0; x < count; ++x)
        out[x] = row[x >> 3] >> (7 - (x & 7)) & 1;
}

} // namespace

void Screen::publishNow()
{
    published_ = generation;
    const Rect view = viewport_;
    const Int width = view.width(), height = view.height();
    const std::shared_ptr<Frame> frame = pool_->take(width, height);
    if (width > 0 && height > 0) {
        const bool aligned = (view.left & 7) == 0;
        BitMap moved; // the viewport with its left edge on a byte
        if (!aligned) {
            moved = BitMap(view);
            blitPixels(moved, view, bits, view.topLeft(), {});
        }
        const BitMap& from = aligned ? bits : moved;
        const Byte* row = from.baseAddr->bytes.data() + (view.top - from.bounds.top) * from.rowBytes
            + ((view.left - from.bounds.left) >> 3);
        for (Byte *out = frame->pixels.data(), *end = out + width * height; out < end;
             out += width, row += from.rowBytes)
            unpackRow(row, width, out);
    }
    FramePtr old = frame;
    {
        const std::lock_guard guard(lock_);
        front_.swap(old);
    }
    old = nullptr; // outside the lock: it may go back to the pool
    if (onPublish)
        onPublish();
}

} // namespace MacToolbox
