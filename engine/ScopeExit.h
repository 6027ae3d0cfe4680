#pragma once

#include <utility>

namespace Tavrin::Vision::DeepLearning::Private {

// Runs an action when the scope ends, however it ends: for state that must be undone on the way
// out of a call that may throw.
template <class Action> class ScopeExit {
public:
    explicit ScopeExit(Action action)
        : action_(std::move(action)) {}
    ~ScopeExit() { action_(); }
    ScopeExit(ScopeExit const&) = delete;
    ScopeExit& operator=(ScopeExit const&) = delete;

private:
    Action action_;
};

} // namespace Tavrin::Vision::DeepLearning::Private
