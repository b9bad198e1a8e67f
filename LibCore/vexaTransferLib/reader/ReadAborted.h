// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <exception>

namespace vexaTransferLib::reader {

/// Thrown through readers and XML parser to end the reading of a file for a reason of its own: an observer has
/// thrown or cancelled, a limit is exceeded. It is no std::exception, so that the isolation of failures lets it pass.
struct ReadAborted {
    std::exception_ptr reason;
};

} // namespace vexaTransferLib::reader
