// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The Groundspeak geocache record that a waypoint may carry, and its logs.

#include <common/Export.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <vector>

namespace vexaTransferLib {

namespace writer {
class TextSink;
}

/// One log entry of a geocache. Plain data; nothing is checked.
struct VEXATRANSFERLIB_API GpxGroundspeakCacheLog {
    std::int32_t id = 0;     ///< the `id` attribute; 0 means none, and none is written
    icu::UnicodeString date; ///< as the file has it: a text, never converted to a time
    icu::UnicodeString finder;
    icu::UnicodeString text;
    icu::UnicodeString type;

private:
    friend struct GpxGroundspeakCache;
    VEXATRANSFERLIB_LOCAL void AppendTo(writer::TextSink& sink) const;
};

/// A geocache. Plain data; nothing is checked, every member starts empty, copies are deep.
///
/// When read from a file the texts have passed the text cleaner (see CleanText); they are written as they
/// stand. Availability, archive state, attributes and the geocache's own id have no place here.
struct VEXATRANSFERLIB_API GpxGroundspeakCache {
    icu::UnicodeString name;
    icu::UnicodeString owner;
    icu::UnicodeString type;
    icu::UnicodeString container;
    icu::UnicodeString difficulty; ///< as text, e.g. "1.5"
    icu::UnicodeString terrain;    ///< as text
    icu::UnicodeString short_description;
    icu::UnicodeString long_description;
    icu::UnicodeString encoded_hints;
    std::vector<GpxGroundspeakCacheLog> logs;   ///< in document order
    std::vector<icu::UnicodeString> travelbugs; ///< names, in document order

    /// Empties all members.
    void Clear();

private:
    friend class GpxPoint;
    VEXATRANSFERLIB_LOCAL void AppendTo(writer::TextSink& sink) const;
};

} // namespace vexaTransferLib
