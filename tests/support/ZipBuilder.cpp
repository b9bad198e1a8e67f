// SPDX-License-Identifier: MIT
#include "support/ZipBuilder.h"

#include <zlib.h>

#include <stdexcept>
#include <string_view>

namespace testing_support {

namespace {

constexpr std::uint16_t kDescriptorFlag = 8;
constexpr std::uint32_t kInZip64 = 0xFFFFFFFF;
constexpr std::uint16_t kVersion = 20;
constexpr std::uint16_t kVersionZip64 = 45;
constexpr std::uint16_t kMadeOnUnix = 3 << 8;

class Bytes {
public:
    Bytes& Signature(char third, char fourth) { return Text({'P', 'K', third, fourth}); }
    Bytes& Number16(std::uint64_t value) { return Number(value, 2); }
    Bytes& Number32(std::uint64_t value) { return Number(value, 4); }
    Bytes& Number64(std::uint64_t value) { return Number(value, 8); }
    Bytes& Text(const std::string& text) {
        bytes_ += text;
        return *this;
    }
    const std::string& Get() const { return bytes_; }

private:
    Bytes& Number(std::uint64_t value, int count) {
        for (int i = 0; i < count; ++i, value >>= 8)
            bytes_ += static_cast<char>(value & 0xFF);
        return *this;
    }

    std::string bytes_;
};

/// The fields that both headers have.
struct Stated {
    explicit Stated(const ZipEntry& entry)
        : packed(entry.packed                   ? *entry.packed
                 : entry.method == kZipDeflated ? Deflated(entry.content)
                                                : entry.content),
          version(entry.zip64 == Zip64Extra::kNone ? kVersion : kVersionZip64),
          flags(static_cast<std::uint16_t>(
              entry.descriptor == ZipDescriptor::kNone ? entry.flags : entry.flags | kDescriptorFlag)),
          crc(entry.crc.value_or(static_cast<std::uint32_t>(
              crc32_z(0, reinterpret_cast<const Bytef*>(entry.content.data()), entry.content.size())))),
          size(entry.size.value_or(entry.content.size())),
          compressedSize(entry.compressedSize.value_or(packed.size())) {}

    std::string packed;
    std::uint16_t version;
    std::uint16_t flags;
    std::uint32_t crc;
    std::uint64_t size;
    std::uint64_t compressedSize;
};

std::string Descriptor(const ZipEntry& entry, const Stated& stated) {
    Bytes out;
    if (entry.descriptor == ZipDescriptor::kNone)
        return {};
    if (entry.descriptor == ZipDescriptor::kSigned)
        out.Signature(7, 8);
    out.Number32(stated.crc);
    if (entry.zip64 != Zip64Extra::kNone)
        return out.Number64(stated.compressedSize).Number64(stated.size).Get();
    return out.Number32(stated.compressedSize).Number32(stated.size).Get();
}

/// The entry after its local header.
std::string Local(const ZipEntry& entry) {
    const Stated stated(entry);
    const bool zip64 = entry.zip64 != Zip64Extra::kNone;
    const bool later = entry.descriptor != ZipDescriptor::kNone;
    const std::uint64_t size = later ? 0 : stated.size;
    const std::uint64_t compressedSize = later ? 0 : stated.compressedSize;
    const std::string& name = entry.localName ? *entry.localName : entry.name;
    Bytes extra;
    extra.Text(entry.localExtra);
    if (zip64)
        extra.Number16(1).Number16(16).Number64(size).Number64(compressedSize);
    Bytes out;
    out.Signature(3, 4).Number16(stated.version).Number16(stated.flags).Number16(entry.method);
    out.Number32(entry.dosTime).Number32(later ? 0 : stated.crc);
    out.Number32(zip64 ? kInZip64 : compressedSize).Number32(zip64 ? kInZip64 : size);
    out.Number16(name.size()).Number16(extra.Get().size()).Text(name).Text(extra.Get());
    return out.Text(stated.packed).Text(Descriptor(entry, stated)).Get();
}

/// The entry's record in the directory.
std::string Central(const ZipEntry& entry, std::uint64_t placedAt) {
    const Stated stated(entry);
    const bool zip64 = entry.zip64 == Zip64Extra::kBoth;
    const std::uint64_t offset = entry.offset.value_or(placedAt);
    Bytes extra;
    extra.Text(entry.centralExtra);
    if (zip64)
        extra.Number16(1).Number16(24).Number64(stated.size).Number64(stated.compressedSize).Number64(offset);
    Bytes out;
    out.Signature(1, 2).Number16(kMadeOnUnix | stated.version).Number16(stated.version);
    out.Number16(stated.flags).Number16(entry.method).Number32(entry.dosTime).Number32(stated.crc);
    out.Number32(zip64 ? kInZip64 : stated.compressedSize);
    out.Number32(zip64 ? kInZip64 : stated.size);
    out.Number16(entry.name.size()).Number16(extra.Get().size()).Number16(entry.comment.size());
    out.Number16(0).Number16(0).Number32(entry.externalAttributes).Number32(zip64 ? kInZip64 : offset);
    return out.Text(entry.name).Text(extra.Get()).Text(entry.comment).Get();
}

struct Directory {
    std::uint64_t count;
    std::uint64_t size;
    std::uint64_t offset;
};

/// The zip64 end record, which is at the given offset, and its locator.
std::string Zip64End(const Directory& directory, std::uint64_t offset) {
    constexpr std::uint64_t kRestOfRecord = 44;
    Bytes out;
    out.Signature(6, 6).Number64(kRestOfRecord).Number16(kVersionZip64).Number16(kVersionZip64);
    out.Number32(0).Number32(0).Number64(directory.count).Number64(directory.count);
    out.Number64(directory.size).Number64(directory.offset);
    return out.Signature(6, 7).Number32(0).Number64(offset).Number32(1).Get();
}

std::string End(const Directory& directory, const ZipOptions& options) {
    const std::uint64_t count = options.zip64 ? 0xFFFF : directory.count;
    Bytes out;
    out.Signature(5, 6).Number16(options.diskNumber.value_or(0)).Number16(options.diskNumber.value_or(0));
    out.Number16(options.entriesOnDisk ? *options.entriesOnDisk : count).Number16(count);
    out.Number32(options.zip64 ? kInZip64 : directory.size);
    out.Number32(options.zip64 ? kInZip64 : directory.offset);
    out.Number16(options.commentLength ? *options.commentLength : options.comment.size());
    return out.Text(options.comment).Get();
}

} // namespace

std::string Deflated(const std::string& content) {
    z_stream stream{};
    constexpr int kRaw = -MAX_WBITS;
    constexpr int kMemoryLevel = 8;
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, kRaw, kMemoryLevel, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::runtime_error("deflateInit2 failed");
    std::string packed(deflateBound(&stream, static_cast<uLong>(content.size())), '\0');
    stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(content.data()));
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const int result = deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    if (result != Z_STREAM_END)
        throw std::runtime_error("deflate failed");
    return packed;
}

std::string BuildZip(const std::vector<ZipEntry>& entries, const ZipOptions& options) {
    std::string out = options.stub;
    const std::uint64_t notCounted = options.offsetsCountStub ? 0 : options.stub.size();
    std::string records;
    for (const ZipEntry& entry : entries) {
        records += Central(entry, out.size() - notCounted);
        out += Local(entry);
    }
    const Directory directory{options.entryCount.value_or(entries.size()),
                              options.directorySize.value_or(records.size()),
                              options.directoryOffset.value_or(out.size() - notCounted)};
    out += records;
    if (options.zip64)
        out += Zip64End(directory, out.size() - notCounted);
    return out + End(directory, options);
}

std::size_t PackedBytesAt(const std::string& archive, const std::string& name) {
    constexpr std::size_t kExtraLengthAt = 28;
    constexpr std::size_t kNameAt = 30;
    std::size_t header = 0;
    while ((header = archive.find("PK\3\4", header)) != std::string::npos) {
        if (std::string_view(archive).substr(header + kNameAt).starts_with(name))
            break;
        ++header;
    }
    if (header == std::string::npos)
        throw std::runtime_error("no entry " + name);
    const auto byte = [&archive](std::size_t at) { return static_cast<unsigned char>(archive.at(at)); };
    const std::size_t extra = header + kExtraLengthAt;
    return header + kNameAt + name.size() + byte(extra) + byte(extra + 1) * std::size_t{256};
}

} // namespace testing_support
