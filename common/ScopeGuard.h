// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Runs an action when a scope is left, also by an exception.

#include <utility>

namespace vexaTransferLib {

/// Calls its action in the destructor unless `Dismiss()` was called. The action must not throw.
///
///     std::FILE* file = std::fopen(path, "rb");
///     ScopeGuard closeFile([file] { std::fclose(file); });
template <class Action>
class [[nodiscard]] ScopeGuard {
public:
    /// Takes the action, and calls it in the destructor.
    explicit ScopeGuard(Action action) : action_(std::move(action)) {}

    ~ScopeGuard() {
        if (active_)
            action_();
    }

    ScopeGuard(const ScopeGuard&) = delete;
    ScopeGuard& operator=(const ScopeGuard&) = delete;

    /// From now on the destructor does nothing.
    void Dismiss() noexcept { active_ = false; }

private:
    Action action_;
    bool active_ = true;
};

} // namespace vexaTransferLib
