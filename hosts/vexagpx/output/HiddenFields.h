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

namespace vexagpx {

// What the library reads and writes without a public accessor. The source of this header is the only one of the tool
// that includes internal headers of the library.

icu::UnicodeString DocumentName(const vexaTransferLib::GpxDocument& document);

// The metadata records of a document; null when it has none.
const vexaTransferLib::GISMetaData* GisMetaDataOf(const vexaTransferLib::GpxDocument& document);
const vexaTransferLib::AnnotateMetaData* AnnotateMetaDataOf(const vexaTransferLib::GpxDocument& document);
const vexaTransferLib::GPXStats* StatsOf(const vexaTransferLib::GpxDocument& document);

std::optional<std::int32_t> ColorOf(const vexaTransferLib::GpxTrack& track);
std::optional<std::int32_t> SymbolNumberOf(const vexaTransferLib::GpxPoint& point);
icu::UnicodeString GuidOf(const vexaTransferLib::GpxPoint& point);
vexaTransferLib::GpxPoint::FormAttributes FormAttributesOf(const vexaTransferLib::GpxPoint& point);

// The texts of the values as they are in a GPX file: "3d", "directions", "via".
std::string_view NameOf(vexaTransferLib::GpxFix fix);
std::string_view NameOf(vexaTransferLib::TarvikRouteType type);
std::string_view NameOf(vexaTransferLib::TarvikRoutePointType type);

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
