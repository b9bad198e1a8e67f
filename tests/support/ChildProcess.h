// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace vexaTransferLib::testing_support {

/// Runs the function in a child process, which ends with the number that it returns, or with 99 when it throws. Returns how
/// the child ended, as waitpid tells it.
int InChild(const std::function<int()>& run);

} // namespace vexaTransferLib::testing_support
