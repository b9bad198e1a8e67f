// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vexagpx {

/// The text of a document in UTF-8.
struct RepairedEncoding {
    std::string text;
    std::vector<std::string> told; ///< what was done, for a person
    bool wasWrong = false;         ///< the bytes are not what the document says of them
};

/// Finds the encoding that the bytes of an XML document have, whatever is declared, and corrects the declaration.
/// UTF-16 is known by its byte order mark or its first characters. Bytes that are no UTF-8 are in the encoding that is
/// declared, or those of them that cannot be are taken as windows-1252.
/// \throws std::runtime_error for an encoding that cannot be converted
RepairedEncoding RepairEncoding(std::string bytes);

} // namespace vexagpx
