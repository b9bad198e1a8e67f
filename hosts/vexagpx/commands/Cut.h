// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/editing/EditOptions.h>
#include <vexagpx/process/Output.h>

#include <vexaTrackLib/CutArea.h>

#include <optional>
#include <string>

namespace vexagpx {

struct CutOptions {
    EditOptions edit;
    std::string around; ///< as ParseCircle reads it; empty for none
    std::string box;    ///< as ParseBox reads it; empty for none
    std::string from;   ///< a time as ParseTime reads it; empty for none
    std::string to;     ///< the same
    bool keeps = false; ///< keeps what is in the area, in place of removing it
};

/// \{
/// "47.5,8.25,500m": latitude, longitude, radius. "47,8,47.5,8.25": south, west, north, east. Nothing for another text.
std::optional<vexaTrackLib::CutArea> ParseCircle(const std::string& text);
std::optional<vexaTrackLib::CutArea> ParseBox(const std::string& text);
/// \}

/// Cuts a place or a time out of a document. False after a failure, which has been reported.
bool Cut(const CutOptions& options, Output& standardOutput);

} // namespace vexagpx
