// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/Arena.h>

#include <algorithm>

namespace vexaTransferLib::reader {

namespace {

/// Memory in more blocks than these is freed after a big tree: the small trees that follow do not need it.
constexpr std::size_t kKeptBlocks = 16;

} // namespace

void* Arena::AllocateInNextBlock(std::size_t size) {
    while (nextBlock_ < blocks_.size() && blocks_[nextBlock_].size < size)
        ++nextBlock_;
    if (nextBlock_ == blocks_.size()) {
        const std::size_t blockSize = std::max(kBlockSize, size);
        // Not std::make_unique, which would fill the block with zeros. libc++ 14 lacks
        // std::make_unique_for_overwrite.
        blocks_.push_back({std::unique_ptr<std::byte[]>(new std::byte[blockSize]), blockSize});
    }
    bytes_ = blocks_[nextBlock_].bytes.get();
    size_ = blocks_[nextBlock_].size;
    used_ = size;
    ++nextBlock_;
    return bytes_;
}

void Arena::Rewind() {
    const bool isBig = blocks_.size() > kKeptBlocks ||
                       std::any_of(blocks_.begin(), blocks_.end(),
                                   [](const Block& block) { return block.size > kBlockSize; });
    if (isBig)
        blocks_.clear();
    nextBlock_ = blocks_.empty() ? 0 : 1;
    bytes_ = blocks_.empty() ? nullptr : blocks_.front().bytes.get();
    size_ = blocks_.empty() ? 0 : blocks_.front().size;
}

} // namespace vexaTransferLib::reader
