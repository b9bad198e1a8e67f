// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxVersion.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vexagpx {

// What the library reads and writes without a public accessor. The source of this header is the only one of the tool
// that includes internal headers of the library.

icu::UnicodeString DocumentName(const vexaTransferLib::GpxDocument& document);

// The metadata records of a document; null when it has none.
const vexaTransferLib::GISMetaData* GisMetaDataOf(const vexaTransferLib::GpxDocument& document);
const vexaTransferLib::AnnotateMetaData* AnnotateMetaDataOf(const vexaTransferLib::GpxDocument& document);
const vexaTransferLib::GPXStats* StatsOf(const vexaTransferLib::GpxDocument& document);

/// \{
/// The elements of an object that was read completely, without its points, segments, routes and tracks, in their order:
/// the children of a document, a route or a track, and those of all segments of a track.
const std::vector<vexaTransferLib::GpxElement>& FieldsOf(const vexaTransferLib::GpxDocument& document);
const std::vector<vexaTransferLib::GpxElement>& FieldsOf(const vexaTransferLib::GpxRoute& route);
const std::vector<vexaTransferLib::GpxElement>& FieldsOf(const vexaTransferLib::GpxTrack& track);
std::vector<vexaTransferLib::GpxElement> SegmentFieldsOf(const vexaTransferLib::GpxTrack& track);
/// \}

std::optional<std::int32_t> ColorOf(const vexaTransferLib::GpxTrack& track);

/// The text of the value as it is in a GPX file: "directions".
std::string_view NameOf(vexaTransferLib::TarvikRouteType type);

/// A value of a point. An enumeration is its text in a GPX file: "3d", "via". A pointer is never null, and what it
/// points to is the point's.
using PointValue =
    std::variant<double, std::int32_t, std::string_view, const icu::UnicodeString*,
                 const vexaTransferLib::GpxUrl*, const vexaTransferLib::GpxPoint::FormAttributes*,
                 const vexaTransferLib::GpxGroundspeakCache*>;

/// Calls `visit` with the name and the value of everything that a point has, in the order of the dump.
void ForEachField(const vexaTransferLib::GpxPoint& point,
                  const std::function<void(std::string_view name, const PointValue& value)>& visit);

/// A text that the library writes without escapes.
struct RawText {
    enum class Context { kElement, kAttribute };

    std::string field; ///< for a person: "GUID of waypoint 3", "form key of point 7 of route 1"
    icu::UnicodeString text;
    Context context; ///< what contains the text
};

/// The first of these texts, in the order in which they are written, that `isWanted` accepts.
std::optional<RawText>
FindRawText(const vexaTransferLib::GpxDocument& document, const vexaTransferLib::GpxVersion& version,
            const std::function<bool(const icu::UnicodeString&, RawText::Context)>& isWanted);

} // namespace vexagpx
