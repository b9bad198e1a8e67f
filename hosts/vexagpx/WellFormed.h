// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vexagpx {

/// Reads a file with nothing but an event parser: no validation, nothing fetched from elsewhere. The parser's
/// first complaint when the file is not well-formed XML (with namespaces); nothing when it is.
std::optional<std::string> FindXmlError(const std::string& path);

/// The element in which that complaint arose: "/gpx/wpt[3]/name".
std::string PlaceOfXmlError(const std::string& path);

/// False when XML text in UTF-8 has an error that FindXmlError would find.
bool IsWellFormed(std::string_view xml);

} // namespace vexagpx
