// SPDX-License-Identifier: MIT
#include <vexagpx/input/Archive.h>

#include <vexagpx/input/EntryName.h>
#include <vexagpx/input/EntryOverlaps.h>
#include <vexagpx/input/FailureCause.h>
#include <vexagpx/input/FileKind.h>
#include <vexagpx/process/Posix.h>

#include <common/dbc.h>

#include <algorithm>
#include <array>
#include <climits>
#include <map>
#include <stdexcept>

namespace vexagpx {

namespace {

vexaTransferLib::ZipFileReader OpenArchive(const InputFile& file, const std::string& argument) {
    try {
        return vexaTransferLib::ZipFileReader::OpenFile(file.FilePath());
    } catch (const dbc::precondition_error& error) {
        const std::string head = HeadOf(file);
        const std::optional<FileKind> kind = IsZip(head) ? std::nullopt : FindKind(head);
        if (kind)
            throw std::runtime_error(ShownName(argument) + " is " + kind->name + ", not a ZIP archive.");
        if (IsGpx(head))
            throw std::runtime_error(
                ShownName(argument) +
                " is a GPX file, not a ZIP archive; show, dump, info and check read it.");
        throw std::runtime_error(std::string(error.what()) + " (" + argument + ")" +
                                 FailureAdvice(error.what()));
    }
}

/// The number of a compression method, and its name if it has a well-known one.
std::string MethodText(unsigned method) {
    const std::string_view name = MethodName(method);
    return std::to_string(method) + (name.empty() ? "" : " (" + std::string(name) + ")");
}

} // namespace

std::string_view MethodName(unsigned method) {
    static const std::map<unsigned, std::string_view> names = {
        {0, "store"},  {1, "shrink"}, {6, "implode"},    {8, "deflate"}, {9, "deflate64"},
        {12, "bzip2"}, {14, "LZMA"},  {93, "Zstandard"}, {95, "XZ"},     {98, "PPMd"},
    };
    const auto name = names.find(method);
    return name == names.end() ? std::string_view() : name->second;
}

bool IsArchive(const InputFile& file) {
    return IsReadAsArchive(HeadOf(file), file.Argument());
}

Archive::Archive(const InputFile& file, const ArchiveLimits& limits)
    : argument_(file.Argument()), limits_(limits), fileSize_(FileSize(file.FilePath())),
      reader_(OpenArchive(file, argument_)) {
    if (reader_.GetFileCount() > limits_.entries)
        Fail("The archive has more than " + std::to_string(limits_.entries) + " entries (--max-entries).");
}

bool Archive::Next() {
    const bool found = entryCount_ == 0 ? reader_.GoToFirstFile() : reader_.GoToNextFile();
    if (!found) {
        CheckDirectoryEnd();
        return false;
    }
    if (++entryCount_ > limits_.entries)
        Fail("The archive has more than " + std::to_string(limits_.entries) + " entries (--max-entries).");
    info_ = reader_.GetCurrentFileInfo();
    storedName_ = StoredBytes(reader_.GetCurrentFileName());
    return true;
}

// At an entry that it cannot read the library's reader stops as it does at the end.
void Archive::CheckDirectoryEnd() const {
    if (entryCount_ < reader_.GetFileCount())
        Fail("The directory of the archive is damaged: it states " + std::to_string(reader_.GetFileCount()) +
             " entries, of which " + std::to_string(entryCount_) + " can be found.");
}

std::string Archive::Name() const {
    return PrintedName(storedName_);
}

bool Archive::HasSizes() const {
    constexpr std::uint64_t kUnknown = 0xFFFFFFFF;
    return info_.size != kUnknown || info_.compressedSize != kUnknown;
}

bool Archive::IsGpx() const {
    return IsGpxName(storedName_);
}

void Archive::Fail(const std::string& message) const {
    throw std::runtime_error(message + " (" + argument_ + ")");
}

void Archive::FailEntry(const std::string& message) const {
    throw std::runtime_error(message + " (" + argument_ + ", " + Name() + ")");
}

void Archive::Open() {
    bytesRead_ = 0;
    CheckPacking();
    CheckSize(info_.size);
    CheckOverlap();
    CheckTotal(info_.size);
    try {
        reader_.OpenCurrentFile();
    } catch (const dbc::precondition_error& error) {
        FailEntry(error.what());
    }
}

void Archive::CheckPacking() const {
    constexpr unsigned kStored = 0;
    constexpr unsigned kDeflated = 8;
    if (info_.isEncrypted)
        FailEntry("The entry is protected by a password and cannot be read.");
    if (info_.method != kStored && info_.method != kDeflated)
        FailEntry("The entry is packed with method " + MethodText(info_.method) + ", which cannot be read.");
    if (!HasSizes())
        FailEntry("The sizes of the entry in zip64 form are missing.");
}

void Archive::CheckSize(std::uint64_t size) const {
    if (size > limits_.entrySize)
        FailEntry("The entry is larger than " + std::to_string(limits_.entrySize) +
                  " bytes (--max-entry-size).");
    // The sizes in the archive may be false, the size of its file is not.
    const std::uint64_t packedSize = std::min(info_.compressedSize, fileSize_);
    if (limits_.IsBeyondRatio(size, packedSize))
        FailEntry("The entry grows to more than 4 MiB and " + std::to_string(limits_.ratio) +
                  " times its size in the archive (--max-ratio).");
}

void Archive::CheckTotal(std::uint64_t more) const {
    if (totalRead_ > limits_.totalSize || more > limits_.totalSize - totalRead_)
        FailEntry("With this entry the archive unpacks to more than " + std::to_string(limits_.totalSize) +
                  " bytes (--max-total-size).");
    if (limits_.IsBeyondRatio(totalRead_ + more, fileSize_))
        FailEntry("With this entry the archive grows to more than 4 MiB and " +
                  std::to_string(limits_.ratio) + " times its size (--max-ratio).");
}

// This waits until an entry is opened, because it reads the local headers, which are spread over the whole file.
void Archive::CheckOverlap() {
    if (!overlaps_) {
        overlaps_ = FindOverlaps(EntryRanges(reader_, limits_.entries));
        bool found = reader_.GoToFirstFile();
        for (std::size_t i = 1; found && i < entryCount_; ++i)
            found = reader_.GoToNextFile();
    }
    if (entryCount_ > overlaps_->size() || (*overlaps_)[entryCount_ - 1])
        FailEntry("The entry claims bytes that belong to another entry of the archive.");
}

std::size_t Archive::Read(char* buffer, std::size_t size) {
    const auto wanted = static_cast<unsigned int>(std::min<std::size_t>(size, INT_MAX));
    const int count = reader_.ReadFromCurrentFile(buffer, wanted);
    if (count < 0)
        FailEntry("The data of the entry cannot be read (error " + std::to_string(count) + ").");
    bytesRead_ += static_cast<std::uint64_t>(count);
    totalRead_ += static_cast<std::uint64_t>(count);
    CheckSize(bytesRead_);
    CheckTotal(0);
    if (count == 0 && size > 0)
        Close();
    return static_cast<std::size_t>(count);
}

void Archive::Close() {
    if (bytesRead_ != info_.size)
        FailEntry("The entry ends before the size that the archive states.");
    try {
        reader_.CloseCurrentFile();
    } catch (const dbc::precondition_error& error) {
        FailEntry(error.what());
    }
}

void Archive::Read(const std::function<void(std::string_view)>& take) {
    std::array<char, 1 << 16> buffer;
    Open();
    while (const std::size_t count = Read(buffer.data(), buffer.size()))
        take({buffer.data(), count});
}

void Archive::CountUnpacked(std::uint64_t size) {
    totalRead_ += size;
    CheckTotal(0);
}

} // namespace vexagpx
