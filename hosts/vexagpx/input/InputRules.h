// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Archive.h>

namespace vexagpx {

/// What the user can do about a refused file.
inline constexpr char kTrustAdvice[] = " If you know where it comes from, --trust reads it.";

/// What the files of a command line may do.
struct InputRules {
    ArchiveLimits archives;
    bool isTrusted = false; ///< a GPX file may name other files and servers, and may be of any size
};

} // namespace vexagpx
