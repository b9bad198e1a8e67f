// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Archive.h>
#include <vexagpx/output/FileInFolder.h>

#include <set>
#include <string>

namespace vexagpx {

/// The files below a folder that the entries of one archive are written to.
class ExtractionPaths {
public:
    /// \param folder created with the first entry when it does not exist. A link to it is followed then, once.
    explicit ExtractionPaths(std::string folder) : path_(std::move(folder)) {}

    /// The file for the archive's current entry; the folders above it are created. No two entries get the same one.
    /// An entry that is a link, or whose name would lead out of the folder, is refused.
    /// \throws std::runtime_error
    FileInFolder FileFor(const Archive& archive);

    /// The same for the document in the entry: without the end ".gz" of an entry that is packed itself.
    FileInFolder DocumentFileFor(const Archive& archive);

private:
    FileInFolder FileFor(const Archive& archive, const std::string& storedName);

    std::string path_;
    Descriptor folder_;
    std::set<std::string> taken_;
};

} // namespace vexagpx
