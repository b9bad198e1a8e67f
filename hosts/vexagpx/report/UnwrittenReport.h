// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxStandardWriter.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vexagpx {

/// Something that a version of GPX has no place for, and how often.
struct UnwrittenKind {
    std::string element; ///< its name
    std::string message;
    std::string first; ///< the first object that has it: "waypoint 2"
    std::uint64_t count = 0;
};

/// Collects what the writer leaves out of documents. Everything is counted; of the kinds, whose number depends on the
/// file, the first ones are listed.
class UnwrittenReport {
public:
    static constexpr std::size_t kMostKinds = 10;
    /// The columns of a name in a terminal; an ellipsis replaces the rest.
    static constexpr std::size_t kLongestName = 60;

    void Add(const vexaTransferLib::GpxUnwritten& what) { Add(what.element, what.message, what.object, 1); }
    /// \param source names the document in which the objects of the other report are; empty for the only one
    void Add(const UnwrittenReport& other, const std::string& source);

    std::uint64_t Count() const { return count_; }
    /// In the order in which they came.
    const std::vector<UnwrittenKind>& Kinds() const { return kinds_; }
    /// How many things are of other kinds than those.
    std::uint64_t OthersCount() const { return others_; }

private:
    void Add(const std::string& element, const std::string& message, const std::string& object,
             std::uint64_t count);

    std::uint64_t count_ = 0;
    std::uint64_t others_ = 0;
    std::vector<UnwrittenKind> kinds_;
    /// The index of each kind, by its element and message.
    std::map<std::pair<std::string, std::string>, std::size_t> known_;
};

/// The kinds for a person, a line for each: "link (2 times, first in waypoint 2): GPX 1.0 has a place for one link
/// only."
std::vector<std::string> UnwrittenLines(const UnwrittenReport& report);

} // namespace vexagpx
