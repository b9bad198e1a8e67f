// SPDX-License-Identifier: MIT
#include <vexaTransferLib/ZIPFileReader.h>

#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>

#include <vexaTransferLib/zip/MinizipArchive.h>
#include <vexaTransferLib/zip/Zip64Archive.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <new>
#include <optional>
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

ZipEntryInfo RequireInfo(zip::Archive* archive, char* name, std::size_t nameSize) {
    ZipEntryInfo info;
    if (archive == nullptr || !archive->GetInfo(info, name, nameSize))
        Fail("Could not obtain file info for current file.");
    return info;
}

std::unique_ptr<zip::Archive> OpenWithMinizip(const Tail& tail, const char* path) {
    auto archive = std::make_unique<zip::MinizipArchive>();
    if (!MayHaveEntries(tail) || !archive->OpenFile(path))
        Fail(kNoArchive);
    if (!archive->ReadCount())
        Fail("Could not obtain global information table for ZIP file.");
    return archive;
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
    // An archive that has nothing in zip64 form is left to minizip.
    if (!tail.bytes.empty())
        archive_ = zip::Zip64Archive::Open(path.bytes);
    if (archive_ == nullptr)
        archive_ = OpenWithMinizip(tail, path.bytes.c_str());
    isOpen_ = true;
    fileCount_ = archive_->Count();
}

ZipFileReader::~ZipFileReader() {
    Close();
}

void ZipFileReader::Close() {
    fileCount_ = 0;
    isOpen_ = false;
    isKnownReadable_ = false;
    archive_.reset();
}

void ZipFileReader::RequireOpen(int line) const {
    dbc::Require(isOpen_, kSource, "Zip file not opened for reading.", line);
}

// Needed before a move, after which minizip would still read the entry that was open before.
void ZipFileReader::LeaveCurrentFile() {
    isKnownReadable_ = false;
    isReadToEnd_ = false;
    readCount_ = 0;
    if (archive_ != nullptr)
        static_cast<void>(archive_->Close());
}

bool ZipFileReader::GoToFirstFile() {
    RequireOpen(__LINE__);
    LeaveCurrentFile();
    return archive_ != nullptr && archive_->GoToFirst();
}

bool ZipFileReader::GoToNextFile() {
    RequireOpen(__LINE__);
    LeaveCurrentFile();
    return archive_ != nullptr && archive_->GoToNext();
}

unsigned long ZipFileReader::GetFileCount() const {
    RequireOpen(__LINE__);
    return fileCount_;
}

icu::UnicodeString ZipFileReader::GetCurrentFileName() const {
    RequireOpen(__LINE__);
    std::array<char, kNameBufferSize> bytes{};
    const ZipEntryInfo info = RequireInfo(archive_.get(), bytes.data(), bytes.size());
    isKnownReadable_ = archive_->IsReadable(info);
    statedSize_ = info.size;
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
    RequireOpen(__LINE__);
    return RequireInfo(archive_.get(), nullptr, 0);
}

void ZipFileReader::RequireReadable() {
    ZipEntryInfo info;
    if (isKnownReadable_)
        return;
    if (archive_ == nullptr || !archive_->GetInfo(info, nullptr, 0) || !archive_->IsReadable(info))
        Fail(kNotOpened);
    isKnownReadable_ = true;
    statedSize_ = info.size;
}

ZipEntryRange ZipFileReader::GetCurrentFileRange() {
    RequireOpen(__LINE__);
    LeaveCurrentFile();
    ZipEntryInfo info;
    if (archive_ == nullptr || !archive_->GetInfo(info, nullptr, 0) || !archive_->IsReadable(info))
        Fail(kNotOpened);
    const std::optional<ZipEntryRange> range = archive_->Range(info);
    if (!range)
        Fail(kNotOpened);
    return *range;
}

void ZipFileReader::OpenCurrentFile() {
    RequireOpen(__LINE__);
    RequireReadable();
    isReadToEnd_ = false;
    readCount_ = 0;
    if (!archive_->Open())
        Fail(kNotOpened);
}

int ZipFileReader::ReadFromCurrentFile(char* buffer, unsigned int size) {
    RequireOpen(__LINE__);
    if (archive_ == nullptr || (buffer == nullptr && size > 0))
        return zip::kNoEntryOpen;
    const int count = archive_->Read(buffer, std::min(size, static_cast<unsigned int>(INT_MAX)));
    isReadToEnd_ = count == 0 && size > 0;
    readCount_ += static_cast<std::uint64_t>(std::max(count, 0));
    return count;
}

void ZipFileReader::CloseCurrentFile() {
    RequireOpen(__LINE__);
    // minizip compares the checksum only when as many bytes were read as the archive states.
    const bool endsEarly = isReadToEnd_ && readCount_ < statedSize_;
    isReadToEnd_ = false;
    const int result = archive_ == nullptr ? zip::kNoEntryOpen : archive_->Close();
    if (result == zip::kCrcError)
        Fail("Encountered CRC error in current file.");
    if (result != 0 || endsEarly)
        Fail("Could not close file at the current position within the zip file.");
}

} // namespace vexaTransferLib
