// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What the head of a GPX file says of the file.

#include <common/Export.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <optional>
#include <string>

namespace vexaTransferLib {

/// What the head of any GPX file says of it, by GpxTarvikExtParser::GetHead: GPX 1.0, GPX 1.1, another version or
/// none, in a namespace of GPX (`http` or `https`) with any prefix, or in none. The head is all that precedes the
/// first waypoint, route or track, wherever that element is.
///
/// A plain value: copies are independent. What the file does not have, or has in no readable form, is absent. Texts
/// are as they are in the file, with references replaced and all blanks; nothing but what is said here is checked.
///
/// GPX 1.0 has the values below the root, GPX 1.1 in its `metadata`. Many programs confuse the two, so both places
/// are read whatever the version is. When the head has a value more than once, the last readable one counts, as in a
/// document that GpxParser has read.
///
///     GpxTarvikExtParser scanner;
///     scanner.SetUntrusted();
///     scanner.Parse("walk.gpx");
///     const GpxHead& head = scanner.GetHead();
///     if (head.end == GpxHead::End::kNotGpx)
///         std::cout << "no GPX\n";
///     else if (head.bounds && head.bounds->maxLatitude < 0.0)
///         std::cout << "of the southern hemisphere\n";
struct VEXATRANSFERLIB_API GpxHead {
    /// What has ended the head.
    enum class End : std::uint32_t {
        kNone = 0,      ///< nothing has been scanned
        kObject = 1,    ///< the first waypoint, route or track: all of the head was read
        kEndOfFile = 2, ///< the end of a file without waypoints, routes and tracks
        kIllFormed = 3, ///< something that is no XML; `error` says what and where
        kNotGpx = 4,    ///< the root element, which is no `gpx`; `rootName` is its name
        kMissing = 5,   ///< the file could not be opened, or nothing could be read of it
        kRefused = 6, ///< GpxTarvikExtParser::SetUntrusted: a document type, a limit, an encoding, an address
        kFailed = 7   ///< another reason: memory ran out, or the host's source has thrown
    };

    /// The area that the file claims to cover, in degrees WGS 84. Present when all four are finite numbers as XML
    /// Schema writes them, with blanks around them or not. No range is checked, and a minimum may be above its
    /// maximum.
    struct Bounds {
        double minLatitude = 0.0;  ///< `minlat`; south is negative
        double minLongitude = 0.0; ///< `minlon`; west is negative
        double maxLatitude = 0.0;  ///< `maxlat`
        double maxLongitude = 0.0; ///< `maxlon`
    };

    /// Who has made the file. Present when the head has one of the parts; a part that it lacks is empty.
    struct Author {
        icu::UnicodeString name; ///< GPX 1.0: `author`; GPX 1.1: `author/name`
        /// GPX 1.0: `email`; GPX 1.1: `author/email`, which has two attributes, as "id@domain".
        icu::UnicodeString email;
    };

    /// What the XML parser has found wrong first.
    struct Error {
        std::uint64_t line = 0;   ///< from 1; 0 when it is not known
        std::uint64_t column = 0; ///< in UTF-16 code units from 1; 0 when it is not known
        /// The XML parser's words, in UTF-8 and, unless Xerces was initialised otherwise, in English.
        std::string message;
    };

    icu::UnicodeString rootName; ///< local name of the root element; empty when none was reached
    std::optional<icu::UnicodeString> version;     ///< of the root, such as "1.1"; files have other texts too
    std::optional<icu::UnicodeString> creator;     ///< of the root: the program that has written the file
    std::optional<icu::UnicodeString> name;        ///< the document's name
    std::optional<icu::UnicodeString> description; ///< `desc`
    /// When the file was made, in milliseconds since 1970-01-01T00:00:00 UTC, with the fraction of a millisecond; 0
    /// is a time like any other. A time as XML Schema writes it, of the years 1 to 9999, with an offset from UTC or
    /// not (then it is one of UTC). Unlike GpxTarvikExtParser::GetDocumentTime, which takes each `time` in the head,
    /// whatever contains it, and does not tell the time 0 from none.
    std::optional<double> time;
    std::optional<Author> author; ///< who has made the file
    std::optional<Bounds> bounds; ///< the area that the file claims to cover
    bool hasMetadata = false;     ///< a `metadata` element, as in GPX 1.1, was read to its end
    /// What has ended the head. Everything that was read before is kept, whatever it is.
    End end = End::kNone;
    /// Present when the XML parser has found something wrong, in the head or, when the scan has read on, after it.
    std::optional<Error> error;
};

} // namespace vexaTransferLib
