// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxVersion.h>

#include <unicode/unistr.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vexagpx {

/// The whole model as one JSON object on one line.
/// \param entry printed name of the archive's entry that the document comes from; null for a file
void DumpDocument(const vexaTransferLib::GpxDocument& document, const std::string* entry, Output& out);

/// The `dump` command. False when a file could not be read.
bool Dump(const std::vector<std::string>& files, const InputRules& rules, Output& out);

// What the other commands need of the fields that have no public accessor.

icu::UnicodeString DocumentName(const vexaTransferLib::GpxDocument& document);

/// A text that the library writes unescaped.
struct RawText {
    enum class Context { kElement, kAttribute };

    std::string field; ///< for a person: "GUID of waypoint 3", "form key of point 7 of route 1"
    icu::UnicodeString text;
    Context context;
};

/// The first of these texts, in the order in which they are written, that `wanted` says it is.
std::optional<RawText>
FindRawText(const vexaTransferLib::GpxDocument& document, const vexaTransferLib::GpxVersion& version,
            const std::function<bool(const icu::UnicodeString&, RawText::Context)>& wanted);

} // namespace vexagpx
