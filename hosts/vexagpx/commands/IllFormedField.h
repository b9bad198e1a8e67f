// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxVersion.h>

#include <unicode/unistr.h>

#include <optional>
#include <string>
#include <string_view>

namespace vexagpx {

/// The field that made the GPX text of a document ill-formed, for a person: `layer name "a & b"`. Either it
/// is written unescaped and holds markup, or it holds a character that no XML 1.0 text can hold; in a field
/// that is written escaped, that is named by its element: `text of /gpx/wpt[3]/name`.
/// \param xml the GPX text
std::string FindIllFormedField(const vexaTransferLib::GpxDocument& document,
                               const vexaTransferLib::GpxVersion& version,
                               const icu::UnicodeString& applicationName,
                               const icu::UnicodeString& applicationUrl, std::string_view xml);

/// The first field, for a person, whose text is written unescaped and would be read as something else, because
/// a tag or a reference is in it or white space that XML does not keep: `GUID of waypoint 3 "a<b/>"`. Nothing
/// when each such text is read back as it is.
std::optional<std::string> FindChangedText(const vexaTransferLib::GpxDocument& document,
                                           const vexaTransferLib::GpxVersion& version);

} // namespace vexagpx
