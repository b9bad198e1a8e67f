// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxReadObserver.h>

#include <cstddef>
#include <string_view>

namespace vexagpx {

/// Why files could not be read, or not as they are: a sentence for a person, a word for programs, and what to do.
struct Cause {
    std::string_view word;
    std::string_view title;
    std::string_view advice;
};

/// The cause of a failure, by the message that the failure has.
const Cause& FailureCause(std::string_view message);
/// True when a document is well-formed XML within the limits, but has no GPX version or a point without a position.
bool IsFailureOfContent(std::string_view message);
/// The cause of something that was skipped or changed.
const Cause& SkipCause(vexaTransferLib::GpxSkipReason reason);

} // namespace vexagpx
