// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The Groundspeak geocache record that a waypoint may carry, and its logs.

#include <common/Export.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <vector>

namespace vexaTransferLib {

/// One log entry of a geocache. Plain data; nothing is checked.
struct VEXATRANSFERLIB_API GpxGroundspeakCacheLog {
    std::int32_t id = 0;       ///< the `id` attribute; 0 means none, and none is written
    icu::UnicodeString date;   ///< as the file has it: a text, never converted to a time
    icu::UnicodeString finder; ///< who was there
    icu::UnicodeString text;   ///< what was written
    icu::UnicodeString type;   ///< "Found it", "Write note" ...
};

/// A geocache. Plain data; nothing is checked, every member starts empty, copies are deep.
///
/// When read from a file the texts have passed the text cleaner (see CleanText); they are written without
/// further cleaning. Availability, archive state, attributes and the geocache's own id have no place here.
struct VEXATRANSFERLIB_API GpxGroundspeakCache {
    icu::UnicodeString name;                    ///< the cache's own, not its waypoint's
    icu::UnicodeString owner;                   ///< whose it is
    icu::UnicodeString type;                    ///< "Traditional Cache" ...
    icu::UnicodeString container;               ///< its size: "Small" ...
    icu::UnicodeString difficulty;              ///< as text, e.g. "1.5"
    icu::UnicodeString terrain;                 ///< as text
    icu::UnicodeString short_description;       ///< in a sentence or two
    icu::UnicodeString long_description;        ///< in full
    icu::UnicodeString encoded_hints;           ///< as the file has them: nothing is decoded
    std::vector<GpxGroundspeakCacheLog> logs;   ///< in document order
    std::vector<icu::UnicodeString> travelbugs; ///< names, in document order

    /// Empties all members.
    void Clear();
};

} // namespace vexaTransferLib
