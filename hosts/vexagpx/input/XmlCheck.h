// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vexagpx {

/// Reads XML text in UTF-8 without validation and without other files. Returns the parser's first error when the text
/// is not well-formed XML (with namespaces), and nothing when it is.
/// \param isTrusted false ends with an error where elements are nested deeper, or more namespaces are in scope, than
///        GpxInputLimits allows: the time that the parser takes for an element grows with both
std::optional<std::string> FindXmlError(std::string_view xml, bool isTrusted = true);

/// The element that contains this error: "/gpx/wpt[3]/name".
std::string XmlErrorPath(std::string_view xml);

} // namespace vexagpx
