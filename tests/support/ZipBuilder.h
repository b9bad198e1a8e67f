// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Lays out ZIP archives byte by byte, so that an archive can be wrong in exactly one way.
namespace testing_support {

constexpr std::uint16_t kZipStored = 0;
constexpr std::uint16_t kZipDeflated = 8;
constexpr std::uint16_t kZipEncryptedFlag = 1;
constexpr std::uint16_t kZipUtf8Flag = 0x800;

/// External attributes of a symbolic link; the content of the entry is the link's target.
constexpr std::uint32_t kZipSymbolicLink = 0120777u << 16;

/// Where the checksum and the sizes of an entry are: in its local header, or after its data.
enum class ZipDescriptor { kNone, kSigned, kUnsigned };

/// Which headers of an entry leave its sizes (and the directory its offset) to a zip64 extra field. Writers
/// that do not know the size beforehand do so in the local header only.
enum class Zip64Extra { kNone, kLocal, kBoth };

struct ZipEntry {
    std::string name = {}; ///< bytes as they are stored
    std::string content = {};
    std::uint16_t method = kZipDeflated; ///< of another method than the two above, `packed` gives the bytes
    std::uint16_t flags = 0;
    ZipDescriptor descriptor = ZipDescriptor::kNone; ///< sets its flag too
    Zip64Extra zip64 = Zip64Extra::kNone;
    std::uint32_t externalAttributes = 0;
    std::uint32_t dosTime = 0x2C74536F; ///< 2002-03-20 10:27:30
    std::string comment = {};
    std::string localExtra = {}; ///< extra fields in front of the one for zip64
    std::string centralExtra = {};

    // These replace what follows from the content, in both headers and in the descriptor.
    std::optional<std::string> packed = {};
    std::optional<std::uint32_t> crc = {};
    std::optional<std::uint64_t> size = {};
    std::optional<std::uint64_t> compressedSize = {};

    std::optional<std::string> localName = {}; ///< another name in the local header
    std::optional<std::uint64_t> offset = {};  ///< another offset in the directory
};

struct ZipOptions {
    std::string comment = {};
    std::string stub = {}; ///< bytes in front of the first entry
    bool offsetsCountStub = true;
    bool zip64 = false; ///< a zip64 end record and its locator; the plain end record holds no number
    std::optional<std::uint64_t> entryCount = {};      ///< stated; cut to 16 bits in the plain end record
    std::optional<std::uint16_t> entriesOnDisk = {};   ///< stated in the plain end record only
    std::optional<std::uint16_t> diskNumber = {};      ///< stated in the plain end record only
    std::optional<std::uint16_t> commentLength = {};   ///< stated
    std::optional<std::uint64_t> directorySize = {};   ///< stated
    std::optional<std::uint64_t> directoryOffset = {}; ///< stated
};

/// The content as a raw deflate stream.
std::string Deflated(const std::string& content);

std::string BuildZip(const std::vector<ZipEntry>& entries, const ZipOptions& options = {});

/// The offset of the entry's packed bytes in an archive that BuildZip made: after its local header.
std::size_t PackedBytesAt(const std::string& archive, const std::string& name);

} // namespace testing_support
