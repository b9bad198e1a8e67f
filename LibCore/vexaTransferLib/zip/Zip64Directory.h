// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/zip/ArchiveBytes.h>

#include <cstdint>
#include <optional>
#include <string>

namespace vexaTransferLib::zip {

/// Where the directory of an archive is.
struct Directory {
    std::uint64_t begin = 0;  ///< of the first record, in the file
    std::uint64_t end = 0;    ///< after the last record
    std::uint64_t base = 0;   ///< bytes before the archive, which its offsets do not count
    std::uint64_t count = 0;  ///< of entries, as the archive states
    bool mayHaveMore = false; ///< the end record had no room for a larger count
};

/// One record of the directory: an entry.
struct DirectoryRecord {
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint32_t dosTime = 0;
    std::uint32_t crc = 0;
    std::uint64_t compressedSize = 0;
    std::uint64_t size = 0;
    std::uint64_t offset = 0; ///< of the local header, as the archive states
    std::uint32_t externalAttributes = 0;
    std::string name;
    bool isComplete = true; ///< no value in zip64 form is missing
    std::uint64_t next = 0; ///< where the next record starts
};

/// The directory of an archive that has a zip64 end record, or an entry with a value in zip64 form. Empty for any other
/// archive, for what is none, and when places and sizes contradict each other.
std::optional<Directory> FindZip64Directory(ArchiveBytes& bytes);

/// The record at a place; empty when there is none within the directory.
std::optional<DirectoryRecord> ReadRecord(ArchiveBytes& bytes, const Directory& directory, std::uint64_t at);

/// Takes the values that a zip64 extra field has in place of those that are all ones.
/// \param extra all extra fields of a header
/// \param values in the order of the field, each null when it is not one of them
struct Zip64Values {
    std::uint64_t* size = nullptr;
    std::uint64_t* compressedSize = nullptr;
    std::uint64_t* offset = nullptr;

    /// False when a value is missing.
    bool TakeFrom(std::string_view extra) const;
    /// True when a value is in zip64 form.
    bool IsNeeded() const;
};

} // namespace vexaTransferLib::zip
