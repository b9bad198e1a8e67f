// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Posix.h>

#include <optional>
#include <string>

#include <sys/stat.h>

namespace vexagpx {

/// Where a file belongs: a name in an open folder. It stays in this very folder when another process moves the
/// folder or puts a link in place of it.
struct FilePlace {
    Descriptor folder;
    std::string name; ///< a single one; empty for the folder itself
    std::string path; ///< for messages only
};

/// What is at the place, which may be a link; nothing when nothing is there.
/// \throws std::system_error
std::optional<struct stat> StatusAt(const FilePlace& place);

} // namespace vexagpx
