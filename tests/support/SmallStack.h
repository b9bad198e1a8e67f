// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>

namespace vexaTransferLib::testing_support {

inline constexpr std::size_t kSmallStack = 512 * 1024;

/// Runs the action to its end on a thread with a stack of kSmallStack bytes; an exception of the action is
/// rethrown.
void RunOnASmallStack(const std::function<void()>& action);

} // namespace vexaTransferLib::testing_support
