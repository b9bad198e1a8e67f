// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxVersion.h>

#include <unicode/unistr.h>

#include <string>

namespace vexagpx {

/// The field that made the GPX text of a document ill-formed, for a person: `layer name "a & b"`. Either it
/// is written unescaped and holds markup, or it holds a character that no XML 1.0 text can hold; in a field
/// that is written escaped, that is named by its element: `text of /gpx/wpt[3]/name`. \param path the file
/// with the text
std::string FindCulprit(const vexaTransferLib::GpxDocument& document,
                        const vexaTransferLib::GpxVersion& version, const icu::UnicodeString& applicationName,
                        const icu::UnicodeString& applicationUrl, const std::string& path);

} // namespace vexagpx
