// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/FileParser.h>
#include <vexagpx/report/KeptContent.h>
#include <vexagpx/report/UnwrittenReport.h>

#include <vexaTransferLib/GpxDocument.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vexagpx {

/// What a document loses when it is written in one version of GPX.
struct WritingCheck {
    std::string version;       ///< "1.1"
    UnwrittenReport unwritten; ///< what has no place in the version
    /// How the document differs when it is read again, for a person, the first ones: "It has 2 waypoints, and not 3.",
    /// "gpx/wpt[2]/ele is "6", and not "5" (line 3)."
    std::vector<std::string> differences;
    std::uint64_t otherDifferences = 0; ///< how many more there are

    std::uint64_t LostCount() const { return unwritten.Count() + differences.size() + otherDifferences; }
};

/// Writes a document that was read completely in memory, by the standard, as the version that it states and as 1.1,
/// reads the results again and compares everything in them.
/// \param parser reads completely; nobody watches it afterwards
/// \param name for the progress and messages
std::vector<WritingCheck> CheckWriting(const vexaTransferLib::GpxDocument& document, FileParser& parser,
                                       const std::string& name);

/// Compares a document that was read completely with the text that was written of it.
/// \param check has the version and what the writer has reported, and is given the differences
void CompareWithText(const vexaTransferLib::GpxDocument& document, const std::string& text,
                     UnwrittenCounts unwritten, FileParser& parser, const std::string& name,
                     WritingCheck& check);

/// The sum of all versions.
std::uint64_t LostCount(const std::vector<WritingCheck>& checks);

} // namespace vexagpx
