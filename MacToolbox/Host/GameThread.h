#pragma once

#include "MacToolbox/Base/Geometry.h"
#include "MacToolbox/Base/Platform.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace MacToolbox {

/// The thread on which the game and all Toolbox objects live. It yields only through `service`.
class GameThread {
public:
    /// Main thread: starts `game` on a thread of its own. When it returns, the last frame is published and `exit` runs
    /// on the main queue.
    static void start(std::function<void()> game, std::function<void()> exit);
    static bool isGameThread();

    /// Runs `closure` on the game thread at its next `service`, and wakes it. Any thread.
    static void perform(std::function<void()> closure);
    /// True if `perform` has left work that no `service` has taken yet. Any thread.
    static bool deferredPending();

    /// Runs deferred work in posting order, then housekeeping, then publishes the frame. Returns at once when called
    /// from within itself. Game thread.
    static void service(bool force = false);
    /// True inside `service`. Game thread.
    static bool isServicing();
    /// Appends a closure that every `service` runs. Game thread.
    static void addHousekeeping(std::function<void()> closure);

    /// Runs `body` on the main thread, waits for it and returns its result. No service meanwhile.
    template <typename Body> static auto onMain(Body body) -> decltype(body())
    {
        std::optional<decltype(body())> result;
        Platform::current().call([&] { result.emplace(body()); });
        return std::move(*result);
    }

    /// The only way in which the game waits for the host: publishes the frame, runs `body` on the main thread with a
    /// completion, and waits without limit until that was called. Game or main thread.
    template <typename Result> static Result waitForMain(std::function<void(std::function<void(Result)>)> body)
    {
        service(true);
        auto box = std::make_shared<Box<Result>>();
        auto done = [box](Result result) { box->fill(std::move(result)); };
        if (Platform::current().isMainThread()) {
            body(done);
            while (!box->filled())
                Platform::current().pumpMain();
        } else {
            Platform::current().post([body, done] { body(done); });
        }
        return box->take();
    }

private:
    /// Holds one result until it is taken; shared, since a completion may come twice or late.
    template <typename Result> class Box {
    public:
        void fill(Result result)
        {
            const std::lock_guard lock(mutex_);
            if (!result_)
                result_.emplace(std::move(result));
            filled_.notify_all();
        }
        bool filled()
        {
            const std::lock_guard lock(mutex_);
            return result_.has_value();
        }
        Result take()
        {
            std::unique_lock lock(mutex_);
            filled_.wait(lock, [this] { return result_.has_value(); });
            return std::move(*result_);
        }

    private:
        std::mutex mutex_;
        std::condition_variable filled_;
        std::optional<Result> result_;
    };
};

} // namespace MacToolbox
