// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Archive.h>
#include <vexagpx/output/FilePlace.h>

#include <set>
#include <string>

namespace vexagpx {

/// Where below a folder the entries of one archive belong.
class EntryPlaces {
public:
    /// \param folder made with the first entry, when it is not there. A link to it is followed then, once.
    explicit EntryPlaces(std::string folder) : path_(std::move(folder)) {}

    /// The place of the archive's current entry, the folders above it made; no two entries get the same one.
    /// An entry that is a link, or whose name would lead elsewhere, is refused.
    /// \throws std::runtime_error
    FilePlace PlaceOf(const Archive& archive);

private:
    std::string path_;
    Descriptor folder_;
    std::set<std::string> taken_;
};

} // namespace vexagpx
