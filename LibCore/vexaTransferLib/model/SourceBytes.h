// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

namespace vexaTransferLib {

/// Bytes in a block that grows. The block is the C library's, which can enlarge a long one without copying it and leaves
/// new bytes as they are: a file of any length is read into it once.
class SourceBytes {
public:
    const char* Data() const { return bytes_.get(); }
    std::size_t Size() const { return size_; }
    std::string_view View() const { return {bytes_.get(), size_}; }

    /// Room for at least so many more bytes, which are written behind the last one and then counted by Grow. Each byte is
    /// copied a few times at most, however often this is called.
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

    std::unique_ptr<char, Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace vexaTransferLib
