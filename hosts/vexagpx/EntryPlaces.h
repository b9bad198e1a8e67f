// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/Archive.h>

#include <set>
#include <string>

namespace vexagpx {

/// Where below a folder the entries of one archive belong.
class EntryPlaces {
public:
    /// \param folder made with the first entry, when it is not there
    explicit EntryPlaces(std::string folder) : folder_(std::move(folder)) {}

    /// The place of the archive's current entry, the folders above it made; no two entries get the same one.
    /// An entry that is a link, or whose name would lead elsewhere, is refused.
    /// \throws std::runtime_error
    std::string PlaceOf(const Archive& archive);

private:
    std::string folder_;
    std::set<std::string> taken_;
};

} // namespace vexagpx
