// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/ZIPFileReader.h>

#include <cstddef>
#include <optional>

namespace vexaTransferLib::zip {

// What Read and Close return beside a count and 0; the values are those of minizip.
inline constexpr int kNoEntryOpen = -102;
inline constexpr int kCrcError = -105;
inline constexpr int kReadError = -1;

/// The archive that a ZipFileReader reads: its operations without their checks and messages. Those on the current entry
/// fail when there is none.
class Archive {
public:
    Archive() = default;
    virtual ~Archive() = default;
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;

    /// The number of entries that the archive states.
    virtual unsigned long Count() const = 0;

    virtual bool GoToFirst() = 0;
    virtual bool GoToNext() = 0;

    /// \param name filled with the stored name as far as it fits, and a zero when it is shorter; may be null
    virtual bool GetInfo(ZipEntryInfo& info, char* name, std::size_t nameSize) = 0;

    /// True when an entry can be read, as far as the directory says.
    virtual bool IsReadable(const ZipEntryInfo& info) const = 0;

    /// Opens the current entry, which is readable.
    virtual bool Open() = 0;

    /// The bytes that the current entry claims, which is readable. No entry is open then.
    virtual std::optional<ZipEntryRange> Range(const ZipEntryInfo& info) = 0;

    virtual int Read(char* buffer, unsigned int size) = 0;
    virtual int Close() = 0;
};

/// True for a stored or deflated entry that is not encrypted.
bool HasKnownPacking(const ZipEntryInfo& info);

} // namespace vexaTransferLib::zip
