// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <exception>

namespace vexaTransferLib::reader {

/// Thrown through the readers and the XML parser to end the reading of a file when an observer has thrown or
/// cancelled, or when a limit is exceeded. It does not derive from std::exception, so that the isolation of
/// failures does not swallow it.
struct ReadAborted {
    std::exception_ptr reason;
};

} // namespace vexaTransferLib::reader
