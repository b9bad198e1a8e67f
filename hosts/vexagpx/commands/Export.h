// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/output/Destination.h>
#include <vexagpx/process/Output.h>

#include <optional>
#include <string>

namespace vexagpx {

enum class ExportFormat { kGeoJson, kCsv, kKml };

struct ExportOptions {
    std::string in;
    std::string out = kStandardOutput;
    std::string format; ///< "geojson", "csv" or "kml"; empty for that of the name of `out`
    std::string layer;  ///< "waypoints", "routes", "tracks" or "points"; empty for the usual ones
    InputRules rules;
};

/// The format that the options ask for; nothing when they name none.
std::optional<ExportFormat> FormatOf(const ExportOptions& options);

/// Writes the content of a file or archive in a format of maps or tables. Reports on standard error what that has no
/// place for.
bool Export(const ExportOptions& options, Output& standardOutput);

} // namespace vexagpx
