// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/ArchiveLimits.h>
#include <vexagpx/input/Input.h>

#include <vexaTransferLib/ZIPFileReader.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexagpx {

/// True when the file starts like a ZIP archive, whatever its name, and when it is named like one and is no GPX. False
/// also when it cannot be read.
bool IsArchive(const InputFile& file);

/// The well-known name of a compression method, such as "deflate" for 8; empty for one without.
std::string_view MethodName(unsigned method);

/// The entries of an archive, one after another. Every error is a std::runtime_error that names the archive and, when
/// it is about an entry, the entry.
class Archive {
public:
    Archive(const InputFile& file, const ArchiveLimits& limits);

    /// Goes to the next entry; the first call goes to the first one. False after the last one.
    bool Next();

    std::size_t EntryCount() const { return entryCount_; } ///< of the entries up to the current one
    const ArchiveLimits& Limits() const { return limits_; }

    // About the current entry.
    /// The bytes of the name in the archive.
    const std::string& StoredName() const { return storedName_; }
    std::string Name() const;
    bool IsFolder() const { return storedName_.ends_with('/') || storedName_.ends_with('\\'); }
    bool IsGpx() const;
    bool IsLink() const { return info_.isSymbolicLink; }
    bool IsNameCut() const { return info_.nameLength > storedName_.size(); }

    /// False when the archive states none: they are in zip64 form, but missing there.
    bool HasSizes() const;
    /// What the archive states, which need not be true.
    const vexaTransferLib::ZipEntryInfo& Info() const { return info_; }

    /// Opens the current entry at its start. An entry that claims bytes of another one is refused.
    void Open();
    /// Reads the next bytes of the open entry. Returns 0 at its end, after checking its size and checksum.
    std::size_t Read(char* buffer, std::size_t size);
    /// Reads the whole current entry, in pieces.
    void Read(const std::function<void(std::string_view)>& take);
    /// The size of the current entry, as the archive states it.
    std::uint64_t StatedSize() const { return info_.size; }
    /// Adds bytes that were unpacked of what is packed within an entry.
    /// \throws std::runtime_error when the archive unpacks to more than its limits
    void CountUnpacked(std::uint64_t size);

private:
    [[noreturn]] void Fail(const std::string& message) const;
    [[noreturn]] void FailEntry(const std::string& message) const;
    void CheckDirectoryEnd() const;
    void CheckPacking() const;
    void CheckSize(std::uint64_t size) const;
    void CheckTotal(std::uint64_t more) const;
    void CheckOverlap();
    void Close();

    std::string argument_;
    ArchiveLimits limits_;
    std::uint64_t fileSize_;
    vexaTransferLib::ZipFileReader reader_;
    vexaTransferLib::ZipEntryInfo info_;
    std::string storedName_;
    std::size_t entryCount_ = 0;
    std::uint64_t bytesRead_ = 0;
    std::uint64_t totalRead_ = 0; ///< of all entries
    std::optional<std::vector<bool>> overlaps_;
};

} // namespace vexagpx
