// SPDX-License-Identifier: MIT
#include <vexaTransferLib/ZIPFileReader.h>

#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>

#include <unzip.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <system_error>

namespace vexaTransferLib {

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/ZIPFileReader.cpp";
constexpr std::size_t kNameBufferSize = 1024;

constexpr char kNoArchive[] = "Could not open ZIP for reading.";
constexpr char kNotOpened[] = "Could not open file at the current position within the zip file.";

[[noreturn]] void Fail(const char* message) {
    throw dbc::precondition_error(message);
}

/// Empty when the text cannot be the name of a file: the system would get another name.
std::string PathBytes(const icu::UnicodeString& path) {
    for (std::int32_t i = 0; i < path.length(); i = path.moveIndex32(i, 1))
        if (const UChar32 character = path.char32At(i); character == 0 || U_IS_SURROGATE(character))
            return {};
    return UnicodeStrUtils::UnicodeStringToStlString(path, "utf-8");
}

// The last record of an archive. It contains the number of entries and the length of the comment that follows it.
constexpr std::string_view kEndSignature = "PK\5\6";
constexpr std::size_t kEndRecordSize = 22;
constexpr std::size_t kLongestComment = 0xFFFF;

/// The end of a file, which contains the end record of an archive.
struct Tail {
    std::string bytes;
    bool isWholeFile = false;
};

Tail ReadTail(const char* path) {
    std::error_code error;
    // A read of what is not a regular file, such as a pipe, might never return.
    if (!std::filesystem::is_regular_file(path, error))
        return {};
    const std::uintmax_t fileSize = std::filesystem::file_size(path, error);
    constexpr std::uintmax_t kLongestEnd = kEndRecordSize + kLongestComment;
    std::string bytes(static_cast<std::size_t>(std::min(fileSize, kLongestEnd)), '\0');
    std::ifstream file(path, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(fileSize - bytes.size()));
    if (error || !file.read(bytes.data(), static_cast<std::streamsize>(bytes.size())))
        return {};
    return {bytes, bytes.size() == fileSize};
}

// An archive without entries consists of its end record alone.
bool IsEmptyArchive(const Tail& tail) {
    const std::string& bytes = tail.bytes;
    if (!tail.isWholeFile || bytes.size() < kEndRecordSize || !bytes.starts_with(kEndSignature))
        return false;
    const auto number = [&bytes](std::size_t at) {
        return static_cast<unsigned char>(bytes[at]) | (static_cast<unsigned char>(bytes[at + 1]) << 8);
    };
    const int entriesOnThisDisk = number(8);
    const int entries = number(10);
    const auto commentLength = static_cast<std::size_t>(number(20));
    return entriesOnThisDisk == 0 && entries == 0 && bytes.size() == kEndRecordSize + commentLength;
}

/// Checked here because minizip reads zeros where the end of a record is cut off, and because its versions differ
/// about a record at the start of the file, which belongs to an archive without entries or to no archive.
bool MayHaveEntries(const Tail& tail) {
    const std::size_t at = tail.bytes.rfind(kEndSignature);
    return at != std::string::npos && tail.bytes.size() - at >= kEndRecordSize &&
           !(tail.isWholeFile && at == 0);
}

constexpr uLong kEncrypted = 1;

// minizip would return the packed bytes of an entry that is encrypted or has an unknown method. Some versions (1.1
// among them) do not find sizes and offsets in zip64 form and would read whatever follows.
bool IsReadable(const unz_file_info64& info) {
    constexpr uLong kStored = 0;
    constexpr ZPOS64_T kInZip64Form = 0xFFFFFFFF;
    return (info.flag & kEncrypted) == 0 &&
           (info.compression_method == kStored || info.compression_method == Z_DEFLATED) &&
           info.compressed_size != kInZip64Form && info.uncompressed_size != kInZip64Form;
}

bool GetFileInfo(void* archive, unz_file_info64& info, char* name, std::size_t nameSize) {
    return unzGetCurrentFileInfo64(archive, &info, name, static_cast<uLong>(nameSize), nullptr, 0, nullptr,
                                   0) == UNZ_OK;
}

unz_file_info64 RequireFileInfo(void* archive, char* name, std::size_t nameSize) {
    unz_file_info64 info;
    if (!GetFileInfo(archive, info, name, nameSize))
        Fail("Could not obtain file info for current file.");
    return info;
}

} // namespace

ZipFileReader::ZipFileReader(const icu::UnicodeString& path) : ZipFileReader(FilePath{PathBytes(path)}) {}

ZipFileReader ZipFileReader::OpenFile(const std::string& path) {
    return ZipFileReader(FilePath{path.find('\0') == std::string::npos ? path : ""});
}

ZipFileReader::ZipFileReader(const FilePath& path) {
    dbc::Require(!path.bytes.empty(), kSource, "No file specified for reading.");
    const Tail tail = ReadTail(path.bytes.c_str());
    isOpen_ = IsEmptyArchive(tail);
    if (isOpen_)
        return;
    // After everything that may throw by itself: the destructor, which closes the archive, does not run for an object
    // whose constructor throws.
    archive_ = MayHaveEntries(tail) ? unzOpen(path.bytes.c_str()) : nullptr;
    if (archive_ == nullptr)
        Fail(kNoArchive);
    unz_global_info info;
    if (unzGetGlobalInfo(archive_, &info) != UNZ_OK) {
        Close();
        Fail("Could not obtain global information table for ZIP file.");
    }
    isOpen_ = true;
    fileCount_ = info.number_entry;
    commentLength_ = info.size_comment;
}

ZipFileReader::~ZipFileReader() {
    Close();
}

void ZipFileReader::Close() {
    fileCount_ = 0;
    commentLength_ = 0;
    isOpen_ = false;
    isKnownReadable_ = false;
    if (archive_ != nullptr) {
        unzClose(archive_);
        archive_ = nullptr;
    }
}

void ZipFileReader::RequireOpen(int line) const {
    dbc::Require(isOpen_, kSource, "Zip file not opened for reading.", line);
}

// Needed before a move, after which minizip would still read the entry that was open before.
void ZipFileReader::LeaveCurrentFile() {
    isKnownReadable_ = false;
    isReadToEnd_ = false;
    readCount_ = 0;
    static_cast<void>(unzCloseCurrentFile(archive_));
}

bool ZipFileReader::GoToFirstFile() {
    RequireOpen(__LINE__);
    LeaveCurrentFile();
    return unzGoToFirstFile(archive_) == UNZ_OK;
}

bool ZipFileReader::GoToNextFile() {
    RequireOpen(__LINE__);
    LeaveCurrentFile();
    return unzGoToNextFile(archive_) == UNZ_OK;
}

unsigned long ZipFileReader::GetFileCount() const {
    RequireOpen(__LINE__);
    return fileCount_;
}

icu::UnicodeString ZipFileReader::GetCurrentFileName() const {
    RequireOpen(__LINE__);
    std::array<char, kNameBufferSize> bytes{};
    const unz_file_info64 info = RequireFileInfo(archive_, bytes.data(), bytes.size());
    isKnownReadable_ = IsReadable(info);
    statedSize_ = info.uncompressed_size;
    // A longer name fills the buffer and has no zero at its end.
    bytes.back() = '\0';
    icu::UnicodeString name;
    for (const char* byte = bytes.data(); *byte != '\0'; ++byte)
        name.append(static_cast<char16_t>(static_cast<unsigned char>(*byte)));
    if (name.isBogus()) // ICU's memory ran out
        throw std::bad_alloc();
    return name;
}

ZipEntryInfo ZipFileReader::GetCurrentFileInfo() const {
    constexpr uLong kFileTypeMask = 0170000;
    constexpr uLong kSymbolicLink = 0120000;
    constexpr uLong kUtf8 = 1 << 11;
    RequireOpen(__LINE__);
    const unz_file_info64 info = RequireFileInfo(archive_, nullptr, 0);
    ZipEntryInfo result;
    result.size = info.uncompressed_size;
    result.compressedSize = info.compressed_size;
    result.nameLength = static_cast<std::uint32_t>(info.size_filename);
    result.isSymbolicLink = ((info.external_fa >> 16) & kFileTypeMask) == kSymbolicLink;
    result.isEncrypted = (info.flag & kEncrypted) != 0;
    result.isNameUtf8 = (info.flag & kUtf8) != 0;
    result.method = static_cast<std::uint16_t>(info.compression_method);
    result.flags = static_cast<std::uint16_t>(info.flag);
    result.crc = static_cast<std::uint32_t>(info.crc);
    return result;
}

void ZipFileReader::RequireReadable() {
    unz_file_info64 info;
    if (isKnownReadable_)
        return;
    if (!GetFileInfo(archive_, info, nullptr, 0) || !IsReadable(info))
        Fail(kNotOpened);
    isKnownReadable_ = true;
    statedSize_ = info.uncompressed_size;
}

ZipEntryRange ZipFileReader::GetCurrentFileRange() {
    constexpr int kRaw = 1;
    constexpr std::uint64_t kLocalHeaderSize = 30;
    RequireOpen(__LINE__);
    LeaveCurrentFile();
    unz_file_info64 info;
    if (!GetFileInfo(archive_, info, nullptr, 0) || !IsReadable(info) ||
        unzOpenCurrentFile2(archive_, nullptr, nullptr, kRaw) != UNZ_OK)
        Fail(kNotOpened);
    // minizip has now skipped the local header with its name and its extra field, after which the data start.
    const std::uint64_t data = unzGetCurrentFileZStreamPos64(archive_);
    const auto extraLength = static_cast<std::uint64_t>(unzGetLocalExtrafield(archive_, nullptr, 0));
    LeaveCurrentFile();
    const std::uint64_t most = std::numeric_limits<std::uint64_t>::max() - data;
    return {data - kLocalHeaderSize - info.size_filename - extraLength,
            data + std::min<std::uint64_t>(info.compressed_size, most)};
}

void ZipFileReader::OpenCurrentFile() {
    RequireOpen(__LINE__);
    RequireReadable();
    isReadToEnd_ = false;
    readCount_ = 0;
    if (unzOpenCurrentFile(archive_) != UNZ_OK)
        Fail(kNotOpened);
}

int ZipFileReader::ReadFromCurrentFile(char* buffer, unsigned int size) {
    RequireOpen(__LINE__);
    if (buffer == nullptr && size > 0)
        return UNZ_PARAMERROR;
    const int count =
        unzReadCurrentFile(archive_, buffer, std::min(size, static_cast<unsigned int>(INT_MAX)));
    isReadToEnd_ = count == 0 && size > 0;
    readCount_ += static_cast<std::uint64_t>(std::max(count, 0));
    return count;
}

void ZipFileReader::CloseCurrentFile() {
    RequireOpen(__LINE__);
    // minizip compares the checksum only when as many bytes were read as the archive states.
    const bool endsEarly = isReadToEnd_ && readCount_ < statedSize_;
    isReadToEnd_ = false;
    const int result = unzCloseCurrentFile(archive_);
    if (result == UNZ_CRCERROR)
        Fail("Encountered CRC error in current file.");
    if (result != UNZ_OK || endsEarly)
        Fail("Could not close file at the current position within the zip file.");
}

} // namespace vexaTransferLib
