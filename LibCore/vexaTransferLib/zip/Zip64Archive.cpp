// SPDX-License-Identifier: MIT
#include <vexaTransferLib/zip/Zip64Archive.h>

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

namespace vexaTransferLib::zip {

namespace {

constexpr std::string_view kLocalSignature = "PK\3\4";
constexpr std::size_t kLocalSize = 30;
constexpr std::uint16_t kDescriptor = 1 << 3; // checksum and sizes follow the data
constexpr std::uint16_t kDeflated = 8;

/// True when a local header says of its entry what the directory says.
bool Agrees(std::string_view head, std::string_view extra, const DirectoryRecord& record) {
    if (Number16(head, 8) != record.method || Number16(head, 26) != record.name.size())
        return false;
    if ((Number16(head, 6) & kDescriptor) != 0)
        return true;
    std::uint64_t size = Number32(head, 22);
    std::uint64_t compressedSize = Number32(head, 18);
    const Zip64Values values{&size, &compressedSize, nullptr};
    return values.TakeFrom(extra) && size == record.size && compressedSize == record.compressedSize &&
           Number32(head, 14) == record.crc;
}

} // namespace

std::unique_ptr<Zip64Archive> Zip64Archive::Open(const std::string& path) {
    ArchiveBytes bytes(path);
    const std::optional<Directory> directory = FindZip64Directory(bytes);
    return directory ? std::make_unique<Zip64Archive>(std::move(bytes), *directory) : nullptr;
}

Zip64Archive::Zip64Archive(ArchiveBytes bytes, const Directory& directory)
    : bytes_(std::move(bytes)), directory_(directory) {
    GoToFirst();
}

bool Zip64Archive::GoToFirst() {
    open_.reset();
    return GoTo(directory_.begin, 0);
}

bool Zip64Archive::GoToNext() {
    open_.reset();
    if (!current_)
        return false;
    const bool mayFollow = directory_.mayHaveMore && current_->next < directory_.end;
    if (index_ + 1 >= directory_.count && !mayFollow)
        return false;
    return GoTo(current_->next, index_ + 1);
}

bool Zip64Archive::GoTo(std::uint64_t at, std::uint64_t index) {
    current_ = directory_.count == 0 ? std::nullopt : ReadRecord(bytes_, directory_, at);
    index_ = index;
    return current_.has_value();
}

bool Zip64Archive::GetInfo(ZipEntryInfo& info, char* name, std::size_t nameSize) {
    constexpr std::uint32_t kFileTypeMask = 0170000;
    constexpr std::uint32_t kSymbolicLink = 0120000;
    constexpr std::uint16_t kEncrypted = 1;
    constexpr std::uint16_t kUtf8 = 1 << 11;
    if (!current_)
        return false;
    info.size = current_->size;
    info.compressedSize = current_->compressedSize;
    info.nameLength = static_cast<std::uint32_t>(current_->name.size());
    info.isSymbolicLink = ((current_->externalAttributes >> 16) & kFileTypeMask) == kSymbolicLink;
    info.isEncrypted = (current_->flags & kEncrypted) != 0;
    info.isNameUtf8 = (current_->flags & kUtf8) != 0;
    info.method = current_->method;
    info.flags = current_->flags;
    info.crc = current_->crc;
    info.dosTime = current_->dosTime;
    if (name != nullptr && current_->name.copy(name, nameSize) < nameSize)
        name[current_->name.size()] = '\0';
    return true;
}

bool Zip64Archive::IsReadable(const ZipEntryInfo& info) const {
    return HasKnownPacking(info) && current_ && current_->isComplete;
}

/// Where the data of the current entry start, after its local header. Empty when there is no header that agrees with
/// the directory.
std::optional<std::uint64_t> Zip64Archive::FindData() {
    if (current_->offset > bytes_.Size() - directory_.base)
        return std::nullopt;
    const std::uint64_t at = directory_.base + current_->offset;
    const std::string head = bytes_.ReadAt(at, kLocalSize);
    if (head.size() < kLocalSize || !head.starts_with(kLocalSignature))
        return std::nullopt;
    const auto nameLength = static_cast<std::size_t>(Number16(head, 26));
    const auto extraLength = static_cast<std::size_t>(Number16(head, 28));
    const std::string extra = bytes_.ReadAt(at + kLocalSize + nameLength, extraLength);
    if (extra.size() < extraLength || !Agrees(head, extra, *current_))
        return std::nullopt;
    return at + kLocalSize + nameLength + extraLength;
}

std::optional<ZipEntryRange> Zip64Archive::Range(const ZipEntryInfo& info) {
    open_.reset();
    const std::optional<std::uint64_t> data = FindData();
    if (!data)
        return std::nullopt;
    const std::uint64_t most = std::numeric_limits<std::uint64_t>::max() - *data;
    return ZipEntryRange{directory_.base + current_->offset, *data + std::min(info.compressedSize, most)};
}

bool Zip64Archive::Open() {
    open_.reset();
    const std::optional<std::uint64_t> data = FindData();
    if (!data || *data > bytes_.Size() || current_->compressedSize > bytes_.Size() - *data)
        return false;
    open_ = std::make_unique<EntryStream>(bytes_, PackedEntry{*data, current_->compressedSize, current_->size,
                                                              current_->crc, current_->method == kDeflated});
    return true;
}

int Zip64Archive::Read(char* buffer, unsigned int size) {
    return open_ ? open_->Read(buffer, size) : kNoEntryOpen;
}

int Zip64Archive::Close() {
    if (!open_)
        return kNoEntryOpen;
    const bool isRight = open_->IsRight();
    open_.reset();
    return isRight ? 0 : kCrcError;
}

} // namespace vexaTransferLib::zip
