// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/zip/ArchiveBytes.h>

#include <cstdint>
#include <memory>
#include <vector>

struct z_stream_s;

namespace vexaTransferLib::zip {

/// The packed bytes of an entry, and what they should unpack to.
struct PackedEntry {
    std::uint64_t begin = 0;
    std::uint64_t compressedSize = 0;
    std::uint64_t size = 0;
    std::uint32_t crc = 0;
    bool isDeflated = false;
};

/// Unpacks one entry, and returns what minizip returns.
class EntryStream {
public:
    /// \throws std::bad_alloc
    EntryStream(ArchiveBytes& bytes, const PackedEntry& entry);
    ~EntryStream();
    EntryStream(const EntryStream&) = delete;
    EntryStream& operator=(const EntryStream&) = delete;

    /// The next bytes: their number, 0 at the end, and a negative error of minizip or zlib.
    int Read(char* buffer, unsigned int size);

    /// False when as many bytes were read as the archive states, but others than it has the checksum of.
    bool IsRight() const;

private:
    int ReadStored(char* buffer, unsigned int size);
    int Inflate(char* buffer, unsigned int size);
    /// \return kReadError when the file is shorter than the entry; otherwise 0
    int Fill();

    ArchiveBytes& bytes_;
    PackedEntry entry_;
    std::uint64_t packedTaken_ = 0; ///< of the packed bytes
    std::uint64_t taken_ = 0;       ///< of the unpacked bytes
    std::uint32_t crc_ = 0;
    std::vector<char> input_;
    std::unique_ptr<z_stream_s> inflater_; ///< null for a stored entry
};

} // namespace vexaTransferLib::zip
