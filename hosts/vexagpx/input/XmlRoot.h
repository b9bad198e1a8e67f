// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexagpx {

struct XmlRoot {
    std::string name;         ///< without its prefix; "html" for a web page, whatever its case
    std::uint64_t line = 1;   ///< of the start tag, from 1
    std::uint64_t column = 1; ///< in bytes from 1, or in code units of UTF-16
};

/// The root element in the first bytes of an XML file or a web page, in an encoding that has ASCII, or in UTF-16. Finds
/// out whether a text is something else than GPX, and checks nothing. Empty when it is not in these bytes.
std::optional<XmlRoot> FindXmlRoot(std::string_view head);

} // namespace vexagpx
