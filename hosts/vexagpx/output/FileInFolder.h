// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Posix.h>

#include <optional>
#include <string>

#include <sys/stat.h>

namespace vexagpx {

/// The name of a file in an open folder. The file stays in this very folder when another process moves the folder or
/// puts a link in its place.
struct FileInFolder {
    Descriptor folder;
    std::string name; ///< without a slash; empty for the folder itself
    std::string path; ///< for messages only
};

/// The status of what has this name, which may be a link; nothing when nothing has it.
/// \throws std::system_error
std::optional<struct stat> StatusOf(const FileInFolder& file);

} // namespace vexagpx
