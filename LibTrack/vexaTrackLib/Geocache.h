// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A geocache with what belongs to it, as a GeocacheList has it.

#include <vexaTransferLib/GpxCacheDetails.h>

#include <common/Export.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace vexaTrackLib {

/// A place on the earth in degrees, WGS 84.
struct VEXATRANSFERLIB_API GeocachePlace {
    double latitude = 0.0;  ///< -90 to 90
    double longitude = 0.0; ///< -180 to 180
};

/// A waypoint that belongs to a geocache: a parking place, a stage, the final. Plain data.
struct VEXATRANSFERLIB_API GeocacheCompanion {
    icu::UnicodeString code;            ///< "PK1ABCD", which belongs to "GC1ABCD"
    icu::UnicodeString name;            ///< in words; the code when the file has none
    icu::UnicodeString type;            ///< "Parking Area"
    icu::UnicodeString comment;         ///< what the file says about it
    std::optional<GeocachePlace> place; ///< none when the file hides it as 0, 0
    double documentTime = 0.0;          ///< of the file, in milliseconds since 1970 UTC; 0 when it has none
};

/// A description of a geocache. Plain data.
struct VEXATRANSFERLIB_API GeocacheDescription {
    icu::UnicodeString text; ///< as the file has it; HTML comes with its tags
    bool isHtml = false;     ///< CleanText makes plain text of it
};

/// A geocache of one or several files. Plain data; an empty text or optional is what the file does not have.
struct VEXATRANSFERLIB_API Geocache {
    icu::UnicodeString code;                    ///< of its waypoint: "GC1ABCD"
    icu::UnicodeString name;                    ///< of the cache
    icu::UnicodeString owner;                   ///< by name
    icu::UnicodeString type;                    ///< "Traditional Cache"
    icu::UnicodeString size;                    ///< "Small"
    std::optional<double> difficulty;           ///< from 1 to 5 by halves; the range is not checked
    std::optional<double> terrain;              ///< the same
    icu::UnicodeString country;                 ///< in words
    icu::UnicodeString state;                   ///< in words
    icu::UnicodeString hint;                    ///< as the file has it, which is mostly in clear text
    GeocachePlace place;                        ///< of the waypoint
    std::optional<bool> isAvailable;            ///< false while it is disabled
    std::optional<bool> isArchived;             ///< true for a geocache that is no more
    std::optional<double> placedTime;           ///< of the waypoint, in milliseconds since 1970 UTC
    std::optional<double> foundTime;            ///< of the newest log that says that it was found
    std::uint64_t logCount = 0;                 ///< logs with different identifiers
    std::vector<icu::UnicodeString> travelBugs; ///< their names, or their codes
    std::vector<GeocacheCompanion> companions;  ///< by code
    std::optional<double> metres;               ///< from the origin of the list, if that has one
    std::optional<double> bearing;              ///< from the origin, in degrees from north, 0 to 360
    double documentTime = 0.0; ///< of the newest file that has it, in milliseconds; 0 when it has none
    std::vector<vexaTransferLib::GpxElement>
        elements; ///< its `cache` elements, that of the newest file first

    /// The short and the long description, as the newest file has them; those that it has. Reads the element.
    std::vector<GeocacheDescription> GetDescriptions() const;
    /// All logs, the newest first, each identifier once: that of the newest file that has it. Reads all elements.
    std::vector<vexaTransferLib::GpxCacheLogDetails> GetLogs() const;
};

/// True for a type of log that says that the geocache was found: "Found it", "Attended", "Webcam Photo Taken".
VEXATRANSFERLIB_API bool SaysFound(const icu::UnicodeString& logType);

} // namespace vexaTrackLib
