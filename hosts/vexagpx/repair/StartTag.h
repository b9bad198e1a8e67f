// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/repair/RepairLog.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexagpx {

struct TagAttribute {
    std::string_view name;
    std::string_view value; ///< as it stands
};

/// A start tag that may have mistakes.
struct StartTag {
    std::string_view name;
    std::vector<TagAttribute> attributes; ///< each name once
    std::string bytes;                    ///< mended, without its end: "<wpt lat='1'"
    bool isEmpty = false;                 ///< "<ele/>"
    bool isCut = false;                   ///< the text ended in it
    std::size_t end = 0;                  ///< behind the tag

    std::optional<std::string_view> Find(std::string_view attribute) const;
};

/// The size of the name at the start of a text; 0 when there is none.
std::size_t NameSize(std::string_view text);

/// Replaces the value of an attribute, or adds the attribute.
/// \param value without markup and quotes
void SetTagAttribute(StartTag& tag, std::string_view name, std::string_view value);

/// Parses the tag at `start`, where "<" and a name stand, and mends its attributes.
StartTag ParseStartTag(std::string_view text, std::size_t start, RepairLog& log);

} // namespace vexagpx
