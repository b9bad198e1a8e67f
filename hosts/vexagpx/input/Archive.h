// SPDX-License-Identifier: MIT
#pragma once

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

/// What a small archive may grow to.
struct ArchiveLimits {
    std::uint64_t entrySize = std::uint64_t{1} << 30; ///< bytes of one entry
    std::uint64_t totalSize = std::uint64_t{1} << 32; ///< bytes of all that is unpacked of one archive
    /// Of an entry's size to its size in the archive, and of all that is unpacked to the size of the archive.
    std::uint64_t ratio = 200;
    std::uint64_t entries = 100000;
    std::uint64_t streamSize = kMostOfStream; ///< bytes of a stream, before it is known to be an archive
};

/// True when the file begins as a ZIP archive does, whatever its name. False also when it cannot be read.
bool IsArchive(const InputFile& file);

/// The entries of an archive, one after another. Every error is a std::runtime_error that says which archive,
/// and which entry where it is about one.
class Archive {
public:
    Archive(const InputFile& file, const ArchiveLimits& limits);

    /// Goes to the next entry, at first to the first. False behind the last one.
    bool Next();

    std::size_t EntryCount() const { return entryCount_; } ///< entries gone to so far

    /// About the current entry. The name is the stored bytes.
    const std::string& StoredName() const { return storedName_; }
    std::string Name() const;
    bool IsFolder() const { return storedName_.ends_with('/') || storedName_.ends_with('\\'); }
    bool IsGpx() const;
    bool IsLink() const { return info_.isSymbolicLink; }
    bool IsNameCut() const { return info_.nameLength > storedName_.size(); }

    /// Opens the current entry from its beginning. One that claims bytes of another entry is refused.
    void Open();
    /// The next bytes of the open entry; 0 at its end, when its content has been checked.
    std::size_t Read(char* buffer, std::size_t size);
    /// The whole current entry, in pieces.
    void Read(const std::function<void(std::string_view)>& take);
    /// \param name shown with the progress
    std::string ReadAll(const std::string& name);

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
