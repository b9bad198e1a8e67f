// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <string>
#include <string_view>
#include <vector>

namespace vexagpx {

/// The stored bytes of an entry's name, of which the library makes a code unit each.
std::string StoredBytes(const icu::UnicodeString& name);

/// The name as a person reads and types it, in UTF-8: bytes that are UTF-8 as they are, others as code page
/// 437, which archives had before. Control characters become "\x" and two digits for each byte, and so does a
/// backslash that would look like one of those: no two names in UTF-8 print alike.
std::string PrintedName(std::string_view bytes);

/// The folders and the file of a name below a folder, each printed; the last one is empty for a folder. "/"
/// and "\" separate.
/// \throws std::runtime_error with the reason when the name could lead anywhere else
std::vector<std::string> SplitEntryName(std::string_view bytes);

/// True for "*.gpx" in any case.
bool IsGpxName(std::string_view bytes);

} // namespace vexagpx
