// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstddef>
#include <memory>
#include <vector>

namespace vexaTransferLib::reader {

/// Memory for one tree after another. Single objects are not freed: Clear gives up all of them at once, and
/// the next tree uses the same memory.
class Arena {
public:
    /// \param alignment a power of two
    void* Allocate(std::size_t size, std::size_t alignment) {
        const std::size_t start = (used_ + alignment - 1) & ~(alignment - 1);
        if (start + size > size_)
            return AllocateInNextBlock(size);
        used_ = start + size;
        return bytes_ + start;
    }
    void Clear() {
        if (nextBlock_ > 1 || size_ > kBlockSize)
            Rewind();
        used_ = 0;
    }

private:
    static constexpr std::size_t kBlockSize = 65536;

    struct Block {
        std::unique_ptr<std::byte[]> bytes;
        std::size_t size;
    };

    void* AllocateInNextBlock(std::size_t size);
    void Rewind();

    std::vector<Block> blocks_;
    std::size_t nextBlock_ = 0;
    // The block that is in use.
    std::byte* bytes_ = nullptr;
    std::size_t size_ = 0;
    std::size_t used_ = 0;
};

} // namespace vexaTransferLib::reader
