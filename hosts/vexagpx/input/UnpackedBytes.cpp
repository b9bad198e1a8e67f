// SPDX-License-Identifier: MIT
#include <vexagpx/input/UnpackedBytes.h>

#include <vexagpx/input/FileKind.h>

namespace vexagpx {

std::string_view PeekedBytes::Head() {
    if (!head_) {
        std::string& head = head_.emplace(kHeadSize, '\0');
        std::size_t size = 0;
        while (size < kHeadSize && !hasEnded_)
            size += ReadMore(head.data() + size, kHeadSize - size);
        head.resize(size);
    }
    return *head_;
}

std::size_t PeekedBytes::ReadMore(char* buffer, std::size_t size) {
    const std::size_t count = hasEnded_ ? 0 : read_(buffer, size);
    hasEnded_ = count == 0;
    return count;
}

std::size_t PeekedBytes::Read(char* buffer, std::size_t size) {
    if (!head_ || taken_ == head_->size())
        return ReadMore(buffer, size);
    const std::size_t count = head_->copy(buffer, size, taken_);
    taken_ += count;
    return count;
}

UnpackedBytes::UnpackedBytes(PeekedBytes& bytes, const ArchiveLimits& limits, const std::string& name)
    : bytes_(bytes) {
    if (!IsGzip(bytes.Head()))
        return;
    gzip_.emplace([this](char* buffer, std::size_t size) { return bytes_.Read(buffer, size); }, limits, name);
    unpacked_.emplace([this](char* buffer, std::size_t size) { return gzip_->Read(buffer, size); });
}

} // namespace vexagpx
