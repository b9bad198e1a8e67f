// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vexagpx {

/// Reads XML text in UTF-8 without validation and without other files. Returns the parser's first error when the text
/// is not well-formed XML (with namespaces), and nothing when it is.
std::optional<std::string> FindXmlError(std::string_view xml);

/// The element that contains this error: "/gpx/wpt[3]/name".
std::string XmlErrorPath(std::string_view xml);

} // namespace vexagpx
