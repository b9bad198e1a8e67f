// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <string>
#include <string_view>
#include <vector>

namespace vexagpx {

/// The bytes of an entry's name in the archive. The library gives each as a code unit.
std::string StoredBytes(const icu::UnicodeString& name);

/// The name as a person reads and types it, in UTF-8. Bytes that are not UTF-8 are taken for code page 437, which older
/// archives use. Each byte of a control character becomes "\x" and two digits, and so does a backslash that would look
/// like such an escape, so that two different names in UTF-8 never print alike.
std::string PrintedName(std::string_view bytes);

/// The names of the folders and of the file, each as it is printed; the last one is empty for a folder. "/" and "\"
/// are separators.
/// \throws std::runtime_error with the reason when the name could lead out of the folder that it is relative to
std::vector<std::string> SplitEntryName(std::string_view bytes);

/// True for "*.gpx" and "*.gpx.gz" in any case.
bool IsGpxName(std::string_view bytes);

/// True for "*.zip" in any case.
bool IsArchiveName(std::string_view bytes);

/// True for "*.gz" in any case.
bool IsGzipName(std::string_view bytes);

/// True for "*.kml" in any case.
bool IsKmlName(std::string_view bytes);

} // namespace vexagpx
