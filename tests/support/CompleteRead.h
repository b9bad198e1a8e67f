// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/GpxParser.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vexaTransferLib::testing_support {

/// What a host gets and hears when a file is read completely. The document is UsedDocument() before.
struct CompleteRead {
    std::string error;   ///< see ErrorOf; empty when there was none
    std::string notices; ///< a line each: "gpx/wpt/ele 3 tolerated: message", with the line in the file
    std::string reports; ///< what was written to standard error
    GpxDocument document;
};

/// Reads with a new parser that has an observer and reads completely.
CompleteRead ReadCompletelyBy(const std::function<void(GpxParser&, GpxDocument&)>& read);

/// Reads bytes of the name "walk.gpx".
/// \param limits of an untrusted file
CompleteRead ReadCompletely(std::string_view bytes,
                            const std::optional<GpxInputLimits>& limits = std::nullopt);

/// The document alone; the reading must succeed, without a contract report.
GpxDocument DocumentOf(std::string_view bytes);
/// Its first waypoint, if the bytes are the children of a `wpt` of a GPX 1.1 file.
GpxPoint WaypointWith(std::string_view children);

/// Type, message, kind, line and parser's message of the exception of an action; empty when there was none.
std::string ErrorOf(const std::function<void()>& action);
/// The same for bytes of the name "walk.gpx" that are read as by default.
std::string CompatibleErrorOf(std::string_view bytes);
/// The error that reading them completely must have: the same, unless only the default way refuses such content.
std::string ErrorToExpect(std::string_view bytes);

} // namespace vexaTransferLib::testing_support
