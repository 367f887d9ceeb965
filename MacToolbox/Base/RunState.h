#pragma once

#include <functional>
#include <memory>

namespace MacToolbox {

/// Adds `reset` to what `startRunAfresh` calls. For static objects beside the state that they reset.
class AtRunStart {
public:
    explicit AtRunStart(std::function<void()> reset);
};

/// State that lives for one run of the game: `startRunAfresh` gives it its start value again, at the same address.
/// Static objects only; game thread only.
/// @code static RunState<RestState> sRest; ... sRest->days = 2; @endcode
template <typename T> class RunState {
public:
    RunState()
        : renew_([this] {
              std::destroy_at(&value_);
              std::construct_at(&value_);
          })
    {
    }
    RunState(const RunState&) = delete;
    RunState& operator=(const RunState&) = delete;

    T& operator*() { return value_; }
    T* operator->() { return &value_; }

private:
    T value_{};
    AtRunStart renew_;
};

/// Puts every `RunState` and everything of `AtRunStart` back to its start value, in the order in which they were made,
/// so that a second run in this process begins as the first did. Only while no game thread runs.
void startRunAfresh();

} // namespace MacToolbox
