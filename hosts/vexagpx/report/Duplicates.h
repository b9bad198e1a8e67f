// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>
#include <vexagpx/report/IndexEntry.h>

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace vexagpx {

/// Finds documents with equal content. It keeps their names and hashes only.
class Duplicates {
public:
    /// Does nothing for an entry without content.
    void Add(const IndexEntry& entry);

    /// Writes each group for a person, in the order of its first document.
    void WriteText(Output& out) const;
    /// Writes each group as a line of JSON.
    void WriteJson(Output& out) const;

private:
    struct Source {
        std::string file;
        std::string entry;
    };
    struct Group {
        std::string content;
        std::vector<Source> sources;
    };

    std::vector<Group> groups_; ///< also those of one document
    std::unordered_map<std::string, std::size_t> byContent_;
};

} // namespace vexagpx
