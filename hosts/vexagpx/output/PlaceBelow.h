// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/FilePlace.h>

#include <string>
#include <vector>

namespace vexagpx {

/// Makes the folder and those above it, and opens it. Links are followed: whoever names the folder means it.
/// \throws std::runtime_error
Descriptor MakeFolder(const std::string& path);

/// The place of a file below a folder, made of parts that are single names; an empty last part stands for a
/// folder. Folders on the way are made, and entered one after another by their descriptors, so that no link
/// below the folder is followed even if another process puts it there meanwhile. Nor is a link taken for a
/// file to replace: what it leads to is not below the folder.
/// \param folder the open folder, and its path for messages
/// \throws std::runtime_error with the reason
FilePlace PlaceBelow(const Descriptor& folder, const std::string& path,
                     const std::vector<std::string>& parts);

} // namespace vexagpx
