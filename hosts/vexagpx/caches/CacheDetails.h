// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTrackLib/Geocache.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <vector>

namespace vexagpx {

/// What is shown of a geocache beside its usual values.
struct CacheDetailsWanted {
    std::uint64_t logs = 0; ///< how many of the newest
    bool hint = false;
    bool description = false;
    bool distance = false; ///< from the place that the user named
};

/// The descriptions as plain text, cleaned, with line feeds between lines.
icu::UnicodeString CleanDescription(const vexaTrackLib::Geocache& cache);
/// The same for any text of a geocache.
icu::UnicodeString Cleaned(icu::UnicodeString text);
/// The newest logs.
std::vector<vexaTransferLib::GpxCacheLogDetails> NewestLogs(const vexaTrackLib::Geocache& cache,
                                                            std::uint64_t count);
/// The text of a log, decoded if the file says that it is encoded, and cleaned.
icu::UnicodeString LogText(const vexaTransferLib::GpxCacheLogDetails& log);
/// "2024-05-31", in UTC; empty without a time.
icu::UnicodeString DayText(const std::optional<double>& millis);

} // namespace vexagpx
