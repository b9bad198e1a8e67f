// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

/// A file in memory, whose name is a path like any other.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* bytes, std::size_t size) : descriptor_(memfd_create("input", 0)) {
        if (descriptor_ < 0 || write(descriptor_, bytes, size) != static_cast<ssize_t>(size))
            std::abort();
    }
    ~MemoryFile() { close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    int descriptor_;
};
