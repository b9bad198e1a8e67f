// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vexagpx {

/// The files that arguments stand for, in the order of the arguments. A folder stands for the GPX files and archives
/// below it, known by the ends of their names (.gpx, .gpx.gz and .zip in any case), sorted by the bytes of their paths.
/// Links to files are followed, links to folders below a folder are not, which a note says. Any other argument stands
/// for itself. A folder without such files, and one that cannot be read, is in the list: its reading reports it.
std::vector<std::string> ExpandFolders(const std::vector<std::string>& arguments);

/// Called with each file; false when it has reported a failure.
using TakeFile = std::function<bool(const std::string& file)>;

/// Calls `take` for each file that the arguments stand for, and looks into a folder when its turn comes. An error that
/// `take` throws is reported, and the next file follows.
/// \return true without a failure
bool ForEachFile(const std::vector<std::string>& arguments, const TakeFile& take);

/// For what reads exactly one file.
/// \throws std::runtime_error with advice when the argument is a folder
void RefuseFolder(const std::string& argument);

/// Reports a folder that ExpandFolders has left in the list.
/// \throws std::runtime_error always
[[noreturn]] void FailForFolder(const std::string& folder);

} // namespace vexagpx
