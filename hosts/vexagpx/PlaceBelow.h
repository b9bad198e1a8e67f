// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vexagpx {

/// Makes the folder and those above it. Links are followed: whoever names the folder means it.
/// \throws std::runtime_error
void MakeFolder(const std::string& folder);

/// The path of a file below a folder, made of parts that are single names; an empty last part stands for a
/// folder. Folders on the way are made. No link below the folder is followed, nor is one taken for a file to
/// replace: what lies behind it is not below the folder.
/// \throws std::runtime_error with the reason
std::string PlaceBelow(const std::string& folder, const std::vector<std::string>& parts);

} // namespace vexagpx
