// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vexagpx {

/// Why files could not be read, or not as they are: a sentence for a person, a word for programs, and what to do.
struct Cause {
    std::string_view word;
    std::string_view title;
    std::string_view advice;
};

/// The cause of a failure to read, by its message, which must not contain names of files.
const Cause& FailureCause(std::string_view message);

/// What to do after a failure to read, with a blank before it; empty when the cause is not known.
std::string FailureAdvice(std::string_view message);

/// True when a document is well-formed XML within the limits, but has no GPX version or a point without a position.
bool IsFailureOfContent(std::string_view message);

} // namespace vexagpx
