// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The Groundspeak geocache record that a waypoint may carry, and its logs.

#include <common/Export.h>
#include <vexaTransferLib/GpxElement.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <vector>

namespace vexaTransferLib {

/// One log entry of a geocache. Plain data; nothing is checked.
struct VEXATRANSFERLIB_API GpxGroundspeakCacheLog {
    std::int32_t id = 0;       ///< the `id` attribute; 0 means none and is not written
    icu::UnicodeString date;   ///< the text of the file, not converted to a time
    icu::UnicodeString finder; ///< the name of the finder
    icu::UnicodeString text;   ///< the text of the log
    icu::UnicodeString type;   ///< "Found it", "Write note" ...
    GpxElement element;        ///< what it was read from, if the document was read completely

    /// \{
    /// Whether all members but the element are equal.
    friend bool operator==(const GpxGroundspeakCacheLog& left, const GpxGroundspeakCacheLog& right) {
        return left.id == right.id && left.date == right.date && left.finder == right.finder &&
               left.text == right.text && left.type == right.type;
    }
    friend bool operator!=(const GpxGroundspeakCacheLog& left, const GpxGroundspeakCacheLog& right) {
        return !(left == right);
    }
    /// \}
};

/// A geocache. Plain data; nothing is checked, every member starts empty, copies are deep.
///
/// When read from a file the texts have passed the text cleaner (see CleanText); they are written without
/// further cleaning. Availability, archive state, attributes and the id of the geocache are not kept.
struct VEXATRANSFERLIB_API GpxGroundspeakCache {
    icu::UnicodeString name;                    ///< of the cache, not of its waypoint
    icu::UnicodeString owner;                   ///< the name of the owner
    icu::UnicodeString type;                    ///< "Traditional Cache" ...
    icu::UnicodeString container;               ///< the size: "Small" ...
    icu::UnicodeString difficulty;              ///< as text, e.g. "1.5"
    icu::UnicodeString terrain;                 ///< as text
    icu::UnicodeString short_description;       ///< one or two sentences
    icu::UnicodeString long_description;        ///< the full description
    icu::UnicodeString encoded_hints;           ///< the text of the file, not decoded
    std::vector<GpxGroundspeakCacheLog> logs;   ///< in document order
    std::vector<icu::UnicodeString> travelbugs; ///< names, in document order
    GpxElement element; ///< what it was read from, if the document was read completely

    /// Empties all members.
    void Clear();

    /// \{
    /// Whether all members but the element are equal, logs and travel bugs in their order.
    VEXATRANSFERLIB_API friend bool operator==(const GpxGroundspeakCache& left,
                                               const GpxGroundspeakCache& right);
    friend bool operator!=(const GpxGroundspeakCache& left, const GpxGroundspeakCache& right) {
        return !(left == right);
    }
    /// \}
};

} // namespace vexaTransferLib
