// SPDX-License-Identifier: MIT
#include <vexaTransferLib/zip/MinizipArchive.h>

#include <unzip.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace vexaTransferLib::zip {

static_assert(kNoEntryOpen == UNZ_PARAMERROR && kCrcError == UNZ_CRCERROR && kReadError == UNZ_ERRNO);

MinizipArchive::~MinizipArchive() {
    unzClose(handle_);
}

bool MinizipArchive::OpenFile(const char* path) {
    handle_ = unzOpen(path);
    return handle_ != nullptr;
}

bool MinizipArchive::ReadCount() {
    unz_global_info info;
    if (unzGetGlobalInfo(handle_, &info) != UNZ_OK)
        return false;
    count_ = info.number_entry;
    return true;
}

bool MinizipArchive::GoToFirst() {
    return unzGoToFirstFile(handle_) == UNZ_OK;
}

bool MinizipArchive::GoToNext() {
    return unzGoToNextFile(handle_) == UNZ_OK;
}

bool MinizipArchive::GetInfo(ZipEntryInfo& info, char* name, std::size_t nameSize) {
    constexpr uLong kFileTypeMask = 0170000;
    constexpr uLong kSymbolicLink = 0120000;
    constexpr uLong kEncrypted = 1;
    constexpr uLong kUtf8 = 1 << 11;
    unz_file_info64 stated;
    if (unzGetCurrentFileInfo64(handle_, &stated, name, static_cast<uLong>(nameSize), nullptr, 0, nullptr,
                                0) != UNZ_OK)
        return false;
    info.size = stated.uncompressed_size;
    info.compressedSize = stated.compressed_size;
    info.nameLength = static_cast<std::uint32_t>(stated.size_filename);
    info.isSymbolicLink = ((stated.external_fa >> 16) & kFileTypeMask) == kSymbolicLink;
    info.isEncrypted = (stated.flag & kEncrypted) != 0;
    info.isNameUtf8 = (stated.flag & kUtf8) != 0;
    info.method = static_cast<std::uint16_t>(stated.compression_method);
    info.flags = static_cast<std::uint16_t>(stated.flag);
    info.crc = static_cast<std::uint32_t>(stated.crc);
    info.dosTime = static_cast<std::uint32_t>(stated.dosDate);
    return true;
}

// minizip would return the packed bytes of an entry that is encrypted or has an unknown method. Some versions (1.1
// among them) do not find sizes and offsets in zip64 form and would read whatever follows.
bool MinizipArchive::IsReadable(const ZipEntryInfo& info) const {
    constexpr std::uint64_t kInZip64Form = 0xFFFFFFFF;
    return HasKnownPacking(info) && info.compressedSize != kInZip64Form && info.size != kInZip64Form;
}

bool MinizipArchive::Open() {
    return unzOpenCurrentFile(handle_) == UNZ_OK;
}

std::optional<ZipEntryRange> MinizipArchive::Range(const ZipEntryInfo& info) {
    constexpr int kRaw = 1;
    constexpr std::uint64_t kLocalHeaderSize = 30;
    if (unzOpenCurrentFile2(handle_, nullptr, nullptr, kRaw) != UNZ_OK)
        return std::nullopt;
    // minizip has now skipped the local header with its name and its extra field, after which the data start.
    const std::uint64_t data = unzGetCurrentFileZStreamPos64(handle_);
    const auto extraLength = static_cast<std::uint64_t>(unzGetLocalExtrafield(handle_, nullptr, 0));
    unzCloseCurrentFile(handle_);
    const std::uint64_t most = std::numeric_limits<std::uint64_t>::max() - data;
    return ZipEntryRange{data - kLocalHeaderSize - info.nameLength - extraLength,
                         data + std::min<std::uint64_t>(info.compressedSize, most)};
}

int MinizipArchive::Read(char* buffer, unsigned int size) {
    return unzReadCurrentFile(handle_, buffer, size);
}

int MinizipArchive::Close() {
    return unzCloseCurrentFile(handle_);
}

} // namespace vexaTransferLib::zip
