// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <vexaTrackLib/Geocache.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vexagpx {

struct CachesOptions {
    std::vector<std::string> files;
    std::vector<std::string> conditions; ///< as GeocacheFilter reads them; all must be met
    std::string order;                   ///< as GeocacheOrder reads it; empty for that of the files
    std::string near;                    ///< "LAT,LON"; empty for none
    std::string within;                  ///< a length as ParseLength reads it; empty for any
    std::uint64_t logs = 0;              ///< how many of the newest are shown
    bool hint = false;
    bool text = false;
    bool json = false;
    bool csv = false;
    InputRules rules;
};

/// The place that "47.5,8.25" names; empty when it names none.
std::optional<vexaTrackLib::GeocachePlace> ParsePlace(const std::string& text);

/// Lists the geocaches of all files as one list.
bool Caches(const CachesOptions& options, Output& out);

} // namespace vexagpx
