#pragma once

#include "MacToolbox/QuickDraw/BitMap.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

namespace MacToolbox {

/// A published picture: one byte a pixel, row after row without padding, 1 for black. Never changes; any thread.
struct Frame {
    Bytes pixels; ///< width * height bytes
    Int width = 0, height = 0;
};
using FramePtr = std::shared_ptr<const Frame>;

/// The frame buffer that all drawing lands in, and the one way by which other threads see it. Game thread, except where
/// it says otherwise. Starts afresh with the run.
class Screen {
public:
    static constexpr Rect bounds{0, 0, 342, 512};

    const BitMap bits;               ///< 512 by 342, 64 bytes a row
    Int generation = 0;              ///< counts drawing calls that touched `bits`
    std::function<void()> onPublish; ///< called after each publish, on the game thread; may be empty

    static Screen& shared(); ///< any thread

    /// The part of the screen that is published, inside `bounds`; at first all below the menu bar.
    const Rect& viewport() const { return viewport_; }
    void setViewport(const Rect& r);
    /// The viewport as other threads may read it.
    Rect sharedViewport() const;

    /// Makes what `bits` holds inside the viewport the published frame; without `force` only if something was drawn
    /// since the last time. An empty viewport publishes an empty frame.
    void publish(bool force)
    {
        if (force || generation != published_)
            publishNow();
    }
    /// The published frame; nil before the first. Any thread; keep it as long as you like.
    FramePtr snapshot() const;

    /// White, nothing drawn, nothing published; part of every start of a run.
    void startAfresh();

    bool owns(const BitMap& map) const { return map.baseAddr == bits.baseAddr; }
    /// To be called by whatever writes to a bitmap, once a call.
    void noteChange(const BitMap& map) { generation += owns(map); }

private:
    class FramePool;

    Screen();
    void publishNow();

    Rect viewport_;
    Int published_ = -1;                        // `generation` at the last publish
    std::atomic<std::uint64_t> sharedViewport_; // top, left, bottom, right, 16 bits each
    std::shared_ptr<FramePool> pool_;
    mutable std::mutex lock_; // guards `front_` alone
    FramePtr front_;
};

} // namespace MacToolbox
