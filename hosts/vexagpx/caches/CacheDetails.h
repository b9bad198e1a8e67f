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

/// The descriptions as plain text, with line feeds between lines; HTML is cleaned.
icu::UnicodeString CleanDescription(const vexaTrackLib::Geocache& cache);
/// A text that may be HTML or BBCode as plain text, with line feeds between lines.
icu::UnicodeString Cleaned(icu::UnicodeString text);
/// The newest logs.
std::vector<vexaTransferLib::GpxCacheLogDetails> NewestLogs(const vexaTrackLib::Geocache& cache,
                                                            std::uint64_t count);
/// The text of a log, decoded if the file says that it is encoded, and cleaned.
icu::UnicodeString LogText(const vexaTransferLib::GpxCacheLogDetails& log);
/// "2024-05-31", in UTC; empty without a time.
icu::UnicodeString DayText(const std::optional<double>& millis);

} // namespace vexagpx
