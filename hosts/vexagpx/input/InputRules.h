// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Archive.h>

namespace vexagpx {

/// Advice for the user whose file was refused.
inline constexpr char kTrustAdvice[] = " If you know where it comes from, --trust reads it.";

/// What the files on the command line may do.
struct InputRules {
    ArchiveLimits archives;
    bool isTrusted = false; ///< a GPX file may name other files and servers, and may be of any size
    bool asHost = false;    ///< a file is read as hosts always read it, and not completely
};

} // namespace vexagpx
