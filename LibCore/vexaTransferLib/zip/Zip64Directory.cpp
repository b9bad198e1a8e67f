// SPDX-License-Identifier: MIT
#include <vexaTransferLib/zip/Zip64Directory.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace vexaTransferLib::zip {

namespace {

constexpr std::string_view kRecordSignature = "PK\1\2";
constexpr std::string_view kEndSignature = "PK\5\6";
constexpr std::string_view kZip64EndSignature = "PK\6\6";
constexpr std::string_view kLocatorSignature = "PK\6\7";
constexpr std::size_t kRecordSize = 46;
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kLocatorSize = 20;
constexpr std::size_t kZip64EndSize = 56;
constexpr std::size_t kZip64EndHead = 12; // which its stated size does not count
constexpr std::size_t kLongestComment = 0xFFFF;
constexpr std::size_t kLongestZip64End = 1 << 16; // with data of other programs after what the format defines
constexpr std::uint64_t kAllOnes16 = 0xFFFF;
constexpr std::uint64_t kAllOnes32 = 0xFFFFFFFF;

/// The end of the file, long enough for all records there.
struct Tail {
    explicit Tail(ArchiveBytes& bytes)
        : begin(bytes.Size() - std::min<std::uint64_t>(bytes.Size(), kLongest)),
          text(bytes.ReadAt(begin, kLongest)) {}

    static constexpr std::size_t kLongest = kEndSize + kLongestComment + kLocatorSize + kLongestZip64End;

    bool Has(std::size_t at, std::string_view signature) const {
        return std::string_view(text).substr(at).starts_with(signature);
    }

    std::uint64_t begin; ///< of the text in the file
    std::string text;
};

/// The directory with a size and an offset that ends where the record at `end` starts.
std::optional<Directory> DirectoryBefore(std::uint64_t end, std::uint64_t size, std::uint64_t offset,
                                         std::uint64_t count) {
    if (size > end || offset > end - size)
        return std::nullopt;
    return Directory{end - size, end, end - size - offset, count, false};
}

/// Reads the zip64 end record whose end is at a place of the tail.
std::optional<Directory> Zip64DirectoryAt(const Tail& tail, std::size_t at, std::uint64_t statedOffset) {
    const std::uint64_t count = Number64(tail.text, at + 32);
    const std::uint64_t place = tail.begin + at;
    std::optional<Directory> directory =
        DirectoryBefore(place, Number64(tail.text, at + 40), Number64(tail.text, at + 48), count);
    // The locator counts from the same place as the directory's offset.
    if (directory && (statedOffset > place || place - statedOffset != directory->base))
        return std::nullopt;
    return directory;
}

/// The directory that the zip64 end record before a locator states.
std::optional<Directory> BeforeLocator(const Tail& tail, std::size_t locator) {
    const std::uint64_t statedOffset = Number64(tail.text, locator + 8);
    for (std::size_t at = locator; (at = tail.text.rfind(kZip64EndSignature, at)) != std::string::npos;
         --at) {
        if (locator - at >= kZip64EndSize && Number64(tail.text, at + 4) == locator - at - kZip64EndHead)
            if (const std::optional<Directory> found = Zip64DirectoryAt(tail, at, statedOffset))
                return found;
        if (at == 0 || locator - at > kLongestZip64End)
            break;
    }
    return std::nullopt;
}

/// The directory that a plain end record states.
std::optional<Directory> BeforePlainEnd(const Tail& tail, std::size_t end) {
    const std::uint64_t count = Number16(tail.text, end + 10);
    std::optional<Directory> directory = DirectoryBefore(tail.begin + end, Number32(tail.text, end + 12),
                                                         Number32(tail.text, end + 16), count);
    if (directory)
        directory->mayHaveMore = count == kAllOnes16;
    return directory;
}

/// True when an entry of the directory has a value in zip64 form, and none before it is damaged.
bool HasZip64Entry(ArchiveBytes& bytes, const Directory& directory) {
    std::array<char, 1 << 16> buffer;
    std::uint64_t at = directory.begin;
    std::uint64_t from = at;
    std::string_view piece;
    while (at + kRecordSize <= directory.end) {
        if (at - from + kRecordSize > piece.size()) {
            from = at;
            const std::uint64_t rest = std::min<std::uint64_t>(directory.end - at, buffer.size());
            piece = {buffer.data(), bytes.ReadAt(at, buffer.data(), static_cast<std::size_t>(rest))};
        }
        const std::string_view record = piece.substr(static_cast<std::size_t>(at - from));
        if (record.size() < kRecordSize || !record.starts_with(kRecordSignature))
            return false;
        if (Number32(record, 20) == kAllOnes32 || Number32(record, 24) == kAllOnes32 ||
            Number32(record, 42) == kAllOnes32)
            return true;
        at += kRecordSize + Number16(record, 28) + Number16(record, 30) + Number16(record, 32);
    }
    return false;
}

} // namespace

// A comment may contain marks of an end, so that the last mark need not be the end record. That is the last one after
// which the comment is as long as it states and before which there is a directory.
std::optional<Directory> FindZip64Directory(ArchiveBytes& bytes) {
    const Tail tail(bytes);
    for (std::size_t at = tail.text.size(); (at = tail.text.rfind(kEndSignature, at)) != std::string::npos;
         --at) {
        const std::size_t rest = tail.text.size() - at;
        if (rest >= kEndSize && rest - kEndSize == Number16(tail.text, at + 20)) {
            if (at >= kLocatorSize && tail.Has(at - kLocatorSize, kLocatorSignature)) {
                if (std::optional<Directory> directory = BeforeLocator(tail, at - kLocatorSize))
                    return directory;
            } else if (const std::optional<Directory> directory = BeforePlainEnd(tail, at);
                       directory &&
                       (directory->begin == directory->end ||
                        bytes.ReadAt(directory->begin, kRecordSignature.size()) == kRecordSignature)) {
                return HasZip64Entry(bytes, *directory) ? directory : std::nullopt;
            }
        }
        if (at == 0)
            break;
    }
    return std::nullopt;
}

std::optional<DirectoryRecord> ReadRecord(ArchiveBytes& bytes, const Directory& directory, std::uint64_t at) {
    if (at < directory.begin || at > directory.end || directory.end - at < kRecordSize)
        return std::nullopt;
    const std::string head = bytes.ReadAt(at, kRecordSize);
    if (head.size() < kRecordSize || !head.starts_with(kRecordSignature))
        return std::nullopt;
    const auto nameLength = static_cast<std::size_t>(Number16(head, 28));
    const auto extraLength = static_cast<std::size_t>(Number16(head, 30));
    const std::string rest = bytes.ReadAt(at + kRecordSize, nameLength + extraLength);
    DirectoryRecord record;
    record.next = at + kRecordSize + nameLength + extraLength + Number16(head, 32);
    if (record.next > directory.end || rest.size() < nameLength + extraLength)
        return std::nullopt;
    record.flags = static_cast<std::uint16_t>(Number16(head, 8));
    record.method = static_cast<std::uint16_t>(Number16(head, 10));
    record.dosTime = static_cast<std::uint32_t>(Number32(head, 12));
    record.crc = static_cast<std::uint32_t>(Number32(head, 16));
    record.compressedSize = Number32(head, 20);
    record.size = Number32(head, 24);
    record.externalAttributes = static_cast<std::uint32_t>(Number32(head, 38));
    record.offset = Number32(head, 42);
    record.name = rest.substr(0, nameLength);
    const Zip64Values values{&record.size, &record.compressedSize, &record.offset};
    record.isComplete = values.TakeFrom(std::string_view(rest).substr(nameLength));
    return record;
}

bool Zip64Values::IsNeeded() const {
    const std::array<std::uint64_t*, 3> values = {size, compressedSize, offset};
    return std::any_of(values.begin(), values.end(),
                       [](const std::uint64_t* value) { return value != nullptr && *value == kAllOnes32; });
}

bool Zip64Values::TakeFrom(std::string_view extra) const {
    constexpr std::uint64_t kZip64Id = 1;
    constexpr std::size_t kFieldHead = 4;
    constexpr std::size_t kValueSize = 8;
    if (!IsNeeded())
        return true;
    while (extra.size() >= kFieldHead) {
        const auto length = static_cast<std::size_t>(Number16(extra, 2));
        if (length > extra.size() - kFieldHead)
            return false;
        std::string_view field = extra.substr(kFieldHead, length);
        if (Number16(extra, 0) != kZip64Id) {
            extra.remove_prefix(kFieldHead + length);
            continue;
        }
        for (std::uint64_t* const value : {size, compressedSize, offset}) {
            if (value == nullptr || *value != kAllOnes32)
                continue;
            if (field.size() < kValueSize)
                return false;
            *value = Number64(field, 0);
            field.remove_prefix(kValueSize);
        }
        return true;
    }
    return false;
}

} // namespace vexaTransferLib::zip
