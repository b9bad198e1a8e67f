// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/editing/EditOptions.h>
#include <vexagpx/process/Output.h>

#include <vexaTransferLib/GpxPointDetails.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexagpx {

struct SetOptions {
    EditOptions edit;
    /// \{
    /// Of the document. An empty text removes the value.
    std::optional<std::string> name;
    std::optional<std::string> description;
    std::optional<std::string> keywords;
    std::optional<std::string> author;
    std::optional<std::string> email; ///< of the author
    std::optional<std::string> time;  ///< as ParseTime reads it
    /// \}
    std::vector<std::pair<std::string, std::string>>
        renames;                     ///< of waypoints, routes and tracks: the old name, the new one
    std::vector<std::string> drops;  ///< names of waypoints
    std::optional<double> shift;     ///< of the times of points, in seconds
    std::vector<std::string> strips; ///< words that FindSensor knows

    bool IsEmpty() const {
        return !name && !description && !keywords && !author && !email && !time && renames.empty() &&
               drops.empty() && !shift && strips.empty();
    }
};

/// "heartrate", "cadence", "temperature", "watertemperature", "power", "speed", "course", "depth". Nothing for another
/// word.
std::optional<vexaTransferLib::GpxSensor> FindSensor(std::string_view word);

/// A duration with a sign or without, as ParseDuration reads it, in seconds: "-1h". Nothing for another text.
std::optional<double> ParseShift(std::string_view text);

/// Changes values of a document. False after a failure, which has been reported.
bool Set(const SetOptions& options, Output& standardOutput);

} // namespace vexagpx
