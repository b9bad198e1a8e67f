// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vexagpx {

/// The bytes from the start of a file by which its kind is known; fewer are enough for most kinds.
inline constexpr std::size_t kHeadSize = 4096;

/// What a file is that is no GPX.
struct FileKind {
    std::string name;   ///< with its article: "a FIT file"
    std::string advice; ///< what to do: "GPSBabel can turn it into GPX"
    std::string place;  ///< of its root element, "line 1, column 1", when it is XML; otherwise empty
};

/// The kind of a file that starts with these bytes; empty for GPX, and for what is not known. ZIP archives and gzip
/// files are kinds like any other.
std::optional<FileKind> FindKind(std::string_view head);

/// True when the bytes start like a ZIP archive.
bool IsZip(std::string_view head);

/// True for a file to be read as an archive: it starts like one, or is named like one and is no GPX, because other
/// bytes may precede an archive.
bool IsReadAsArchive(std::string_view head, const std::string& name);

/// True when the bytes start like a gzip file.
bool IsGzip(std::string_view head);

/// True when the root element is one of GPX.
bool IsGpx(std::string_view head);

/// Refuses a file that is known not to be GPX, and one without bytes. What is not known is left to the XML parser,
/// which says where it finds no XML.
/// \param head the first kHeadSize bytes of the file, or all
/// \param name how messages name the file
/// \throws std::runtime_error "walk.fit is a FIT file, not GPX; GPSBabel can turn it into GPX."
void RefuseOtherKinds(std::string_view head, const std::string& name);

} // namespace vexagpx
