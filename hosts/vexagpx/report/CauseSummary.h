// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/process/Output.h>
#include <vexagpx/report/Causes.h>
#include <vexagpx/report/Findings.h>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexagpx {

/// What is wrong with any number of files, grouped by cause. Its memory depends on the number of causes and not of
/// files.
class CauseSummary {
public:
    /// A document that could be read.
    void AddDocument(const std::string& name, const Findings& findings);
    /// One that could not.
    void AddFailure(const std::string& name, const std::string& message, const Findings& findings);

    /// Writes a screen for a person, without what is no loss.
    void WriteText(Output& out) const;
    /// Writes one line of JSON.
    void WriteJson(Output& out) const;

private:
    static constexpr std::size_t kMostExamples = 3;
    static constexpr std::size_t kMostNames = 1000;
    static constexpr std::size_t kShownNames = 3;

    enum class Kind { kFailure, kInvalid, kLoss, kNote };

    struct Example {
        std::string file;
        std::string detail; ///< of a failure, its message; otherwise empty
        std::uint64_t line; ///< 0 when it is not known
    };
    struct Group {
        Kind kind;
        Cause cause;
        std::uint64_t files = 0;
        std::uint64_t count = 0;
        std::vector<Example> examples;
        std::map<std::string, std::uint64_t> names; ///< of elements and attributes, and how often each occurs
        std::uint64_t lastDocument = 0;             ///< the last one that was counted
    };

    void Add(Kind kind, const Cause& cause, std::uint64_t count, Example example, const std::string& name);
    void AddSchemaErrors(const std::string& name, const SchemaReport& report);
    std::vector<const Group*> Sorted(Kind kind) const;
    static std::vector<std::pair<std::string, std::uint64_t>> MostFrequentNames(const Group& group);
    void WriteGroups(Kind kind, std::string_view title, Output& out) const;
    static std::string_view KindWord(Kind kind);
    static void WriteGroup(const Group& group, Output& out);
    static void WriteGroupJson(const Group& group, JsonWriter& json);

    std::map<std::pair<Kind, std::string_view>, Group> groups_;
    std::uint64_t documents_ = 0; ///< also those that could not be read
    std::uint64_t failures_ = 0;
    std::uint64_t lossy_ = 0;
    std::uint64_t valid_ = 0; ///< of those that were checked by their schema
    std::uint64_t invalid_ = 0;
};

} // namespace vexagpx
