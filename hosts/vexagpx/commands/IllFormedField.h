// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxVersion.h>

#include <unicode/unistr.h>

#include <optional>
#include <string>
#include <string_view>

namespace vexagpx {

/// Names the field that made the GPX text of a document ill-formed, for a person: `layer name "a & b"`. Either it
/// contains markup and is written without escapes, or it contains a character that XML 1.0 does not allow. A field that
/// is written with escapes is named by its element: `text of /gpx/wpt[3]/name`.
/// \param xml the GPX text
std::string FindIllFormedField(const vexaTransferLib::GpxDocument& document,
                               const vexaTransferLib::GpxVersion& version,
                               const icu::UnicodeString& applicationName,
                               const icu::UnicodeString& applicationUrl, std::string_view xml);

/// Names the first field, for a person, whose text is written without escapes and would be read as something else,
/// because it contains a tag, a reference, or white space that XML does not keep: `GUID of waypoint 3 "a<b/>"`. Nothing
/// when all such texts are read back unchanged.
std::optional<std::string> FindChangedText(const vexaTransferLib::GpxDocument& document,
                                           const vexaTransferLib::GpxVersion& version);

} // namespace vexagpx
