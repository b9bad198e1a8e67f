// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/repair/RepairLog.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace vexagpx {

/// What a text is.
enum class TextKind {
    kContent,  ///< character data, in which the end of CDATA is escaped
    kAttribute ///< the value of an attribute
};

/// Appends a text without the characters that XML cannot hold, with "<", bare "&" and unknown entities escaped; names
/// of HTML become their characters.
/// \param offset of the text in that of the log
void AppendRepairedText(std::string_view text, std::size_t offset, std::string& out, RepairLog& log,
                        TextKind kind = TextKind::kContent);

/// Appends what stands in a comment, CDATA or an instruction, without the characters that XML cannot hold.
void AppendWithoutBadCharacters(std::string_view text, std::size_t offset, std::string& out, RepairLog& log);

} // namespace vexagpx
