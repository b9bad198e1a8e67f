// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/FileInFolder.h>

#include <string>
#include <vector>

namespace vexagpx {

/// Creates the folder and those above it where they are missing, and opens it. Links are followed, because whoever
/// names the folder means what they lead to.
/// \throws std::runtime_error
Descriptor MakeFolder(const std::string& path);

/// Finds a file below a folder, and creates the folders on the way. Each folder is opened by its name in the one
/// above it, so that no link below the folder is followed even if another process puts one there meanwhile. A link
/// in place of the file is refused, too, because what it leads to is not below the folder.
/// \param folder the open folder
/// \param path that of the folder, for messages
/// \param parts the names of the folders on the way and of the file; an empty last one means a folder
/// \throws std::runtime_error with the reason
FileInFolder ResolveBelow(const Descriptor& folder, const std::string& path,
                          const std::vector<std::string>& parts);

} // namespace vexagpx
