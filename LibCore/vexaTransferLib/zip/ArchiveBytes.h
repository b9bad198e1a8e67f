// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

namespace vexaTransferLib::zip {

/// The number that 2, 4 or 8 bytes at a place are, the lowest byte first. The bytes must be there.
std::uint64_t Number16(std::string_view bytes, std::size_t at);
std::uint64_t Number32(std::string_view bytes, std::size_t at);
std::uint64_t Number64(std::string_view bytes, std::size_t at);

/// The file of an archive, which is read at any place.
class ArchiveBytes {
public:
    /// A file that cannot be opened has no bytes.
    explicit ArchiveBytes(const std::string& path);

    std::uint64_t Size() const { return size_; }

    /// Reads bytes into a buffer. Returns how many, which are fewer than `count` where the file ends or cannot be read.
    std::size_t ReadAt(std::uint64_t at, char* buffer, std::size_t count);

    /// The bytes at a place; fewer where the file ends or cannot be read.
    std::string ReadAt(std::uint64_t at, std::size_t count);

private:
    std::ifstream file_;
    std::uint64_t size_ = 0;
};

} // namespace vexaTransferLib::zip
