// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vexagpx {

/// Reads XML text in UTF-8 with nothing but an event parser: no validation, nothing fetched from elsewhere. The
/// parser's first error when the text is not well-formed XML (with namespaces); nothing when it is.
std::optional<std::string> FindXmlError(std::string_view xml);

/// The element that contains this error: "/gpx/wpt[3]/name".
std::string XmlErrorPath(std::string_view xml);

} // namespace vexagpx
