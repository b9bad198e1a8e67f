// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <algorithm>
#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

namespace vexaTransferLib {

/// Bytes in a block that grows. The block is the C library's, which can enlarge a long one without copying it and
/// leaves new bytes as they are: a file of any length is read into it once.
class SourceBytes {
public:
    const char* Data() const { return bytes_.get(); }
    std::size_t Size() const { return size_; }
    std::string_view View() const { return {bytes_.get(), size_}; }

    /// Room for a text whose length is known before its first byte is.
    /// \throws std::bad_alloc
    void Reserve(std::size_t capacity) {
        if (capacity <= capacity_)
            return;
        Reallocate(capacity);
        AskForLargePages();
    }
    /// Room for at least so many more bytes, which are written behind the last one and then counted by Grow. Each byte
    /// is copied a few times at most, however often this is called.
    /// \throws std::bad_alloc
    char* MakeRoom(std::size_t count) {
        if (count > capacity_ - size_)
            Reallocate(std::max(size_ + count, 2 * capacity_));
        return bytes_.get() + size_;
    }
    void Grow(std::size_t count) { size_ += count; }
    /// \throws std::bad_alloc
    void Append(std::string_view bytes) {
        if (bytes.empty())
            return;
        std::memcpy(MakeRoom(bytes.size()), bytes.data(), bytes.size());
        Grow(bytes.size());
    }
    /// Writes zero bytes behind the last byte, which do not count, and gives back what is not needed.
    /// \throws std::bad_alloc
    void Finish(std::size_t padding) {
        Reallocate(size_ + padding);
        std::memset(bytes_.get() + size_, 0, padding);
    }

private:
    struct Free {
        void operator()(char* block) const { std::free(block); }
    };

    void Reallocate(std::size_t capacity) {
        char* const block = static_cast<char*>(std::realloc(bytes_.get(), capacity));
        if (block == nullptr)
            throw std::bad_alloc();
        static_cast<void>(bytes_.release());
        bytes_.reset(block);
        capacity_ = capacity;
    }

    /// Without them, the system hands over the memory of a long text in pages of 4 KiB, which takes longer than reading
    /// the file into them. It is free to do so all the same. A block with large pages is copied when it grows.
    void AskForLargePages() const {
#ifdef MADV_HUGEPAGE
        constexpr std::size_t kLargePage = std::size_t{1} << 21;
        const std::size_t offset =
            (kLargePage - reinterpret_cast<std::uintptr_t>(bytes_.get()) % kLargePage) % kLargePage;
        if (capacity_ >= offset + kLargePage)
            static_cast<void>(madvise(bytes_.get() + offset, (capacity_ - offset) / kLargePage * kLargePage,
                                      MADV_HUGEPAGE));
#endif
    }

    std::unique_ptr<char, Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace vexaTransferLib
