// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/process/Output.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexagpx {

/// One thing that an edit changed.
struct Change {
    std::string kind;                                         ///< a word for programs: "simplified"
    std::string_view object;                                  ///< "track"; "document" for the document itself
    std::size_t number = 0;                                   ///< of the object, from 1; 0 when it has none
    icu::UnicodeString name;                                  ///< of the object; empty when it has none
    std::string text;                                         ///< what changed, for a person
    std::vector<std::pair<std::string_view, double>> figures; ///< the same for programs, with their names
    std::vector<std::pair<std::string_view, std::string>> texts = {}; ///< the same
    std::vector<std::pair<std::string_view, bool>> flags = {};        ///< the same
    std::vector<std::string> values = {}; ///< names of values, which programs read as "values"
};

/// What an edit changed, in the order in which it is told. Everything is counted; the first ones are listed.
class ChangeList {
public:
    static constexpr std::size_t kMostListed = 1000;

    void Add(Change change);

    std::uint64_t Count() const { return count_; }

    /// Writes a line for each, and one for the others.
    void WriteText(Output& out) const;
    /// Writes "changes", an array, and "changeCount".
    void WriteJson(JsonWriter& json) const;

private:
    std::vector<Change> changes_;
    std::uint64_t count_ = 0;
};

} // namespace vexagpx
