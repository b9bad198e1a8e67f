// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/ByteWindow.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

std::unique_ptr<char[]> MakeBuffer(std::size_t capacity) {
    return std::unique_ptr<char[]>(new char[capacity + ByteWindow::kPadding]);
}

} // namespace

ByteWindow::ByteWindow(std::unique_ptr<xercesc::BinInputStream> stream, std::size_t capacity)
    : stream_(std::move(stream)), buffer_(MakeBuffer(capacity)), bytes_(buffer_.get()), capacity_(capacity) {
    Fill();
}

ByteWindow::ByteWindow(std::string_view bytes)
    : bytes_(bytes.data()), capacity_(bytes.size()), size_(bytes.size()), hasEnded_(true) {}

bool ByteWindow::ReadOn(std::uint64_t keptFrom) {
    if (hasEnded_)
        return false;
    Move(static_cast<std::size_t>(keptFrom - start_));
    const std::size_t before = size_;
    Fill();
    return size_ != before;
}

// What is kept must not take more than half of the window, so that each byte is moved a few times at most.
void ByteWindow::Move(std::size_t kept) {
    if (countsLines_)
        lines_.Forget({Begin(), size_}, start_, start_ + kept);
    const std::size_t left = size_ - kept;
    if (left > capacity_ / 2) {
        const std::size_t capacity = capacity_ * 2;
        std::unique_ptr<char[]> buffer = MakeBuffer(capacity);
        std::memcpy(buffer.get(), buffer_.get() + kept, left);
        buffer_ = std::move(buffer);
        bytes_ = buffer_.get();
        capacity_ = capacity;
    } else {
        std::memmove(buffer_.get(), buffer_.get() + kept, left);
    }
    start_ += kept;
    size_ = left;
}

void ByteWindow::Fill() {
    const XMLSize_t wanted = capacity_ - size_;
    const XMLSize_t count = stream_->readBytes(reinterpret_cast<XMLByte*>(buffer_.get() + size_), wanted);
    hasEnded_ = count < wanted;
    size_ += count;
    std::memset(buffer_.get() + size_, 0, kPadding);
}

void ByteWindow::Restart(std::unique_ptr<xercesc::BinInputStream> stream) {
    stream_ = std::move(stream);
    start_ = 0;
    size_ = 0;
    RestartLines();
    Fill();
}

void ByteWindow::Restart() {
    RestartLines();
}

void ByteWindow::RestartLines() {
    countsLines_ = true;
    lines_ = text::LineCounter();
}

} // namespace vexaTransferLib::reader
