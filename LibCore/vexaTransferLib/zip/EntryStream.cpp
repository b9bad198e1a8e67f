// SPDX-License-Identifier: MIT
#include <vexaTransferLib/zip/EntryStream.h>

#include <vexaTransferLib/zip/Archive.h>

#include <zlib.h>

#include <algorithm>
#include <new>

namespace vexaTransferLib::zip {

namespace {

constexpr std::size_t kInputSize = 1 << 14;

} // namespace

EntryStream::EntryStream(ArchiveBytes& bytes, const PackedEntry& entry) : bytes_(bytes), entry_(entry) {
    if (!entry.isDeflated)
        return;
    input_.resize(kInputSize);
    auto inflater = std::make_unique<z_stream>();
    if (inflateInit2(inflater.get(), -MAX_WBITS) != Z_OK)
        throw std::bad_alloc();
    inflater_ = std::move(inflater);
}

EntryStream::~EntryStream() {
    if (inflater_)
        inflateEnd(inflater_.get());
}

int EntryStream::Read(char* buffer, unsigned int size) {
    const auto wanted = static_cast<unsigned int>(std::min<std::uint64_t>(size, entry_.size - taken_));
    if (wanted == 0)
        return 0;
    const int count = inflater_ ? Inflate(buffer, wanted) : ReadStored(buffer, wanted);
    if (count > 0) {
        taken_ += static_cast<std::uint64_t>(count);
        crc_ = static_cast<std::uint32_t>(
            crc32(crc_, reinterpret_cast<const Bytef*>(buffer), static_cast<uInt>(count)));
    }
    return count;
}

int EntryStream::ReadStored(char* buffer, unsigned int size) {
    const std::uint64_t wanted = std::min<std::uint64_t>(size, entry_.compressedSize - packedTaken_);
    const std::size_t count =
        bytes_.ReadAt(entry_.begin + packedTaken_, buffer, static_cast<std::size_t>(wanted));
    if (count < wanted)
        return kReadError;
    packedTaken_ += count;
    return static_cast<int>(count);
}

int EntryStream::Fill() {
    const std::uint64_t wanted = std::min<std::uint64_t>(input_.size(), entry_.compressedSize - packedTaken_);
    const std::size_t count =
        bytes_.ReadAt(entry_.begin + packedTaken_, input_.data(), static_cast<std::size_t>(wanted));
    if (count < wanted)
        return kReadError;
    packedTaken_ += count;
    inflater_->next_in = reinterpret_cast<Bytef*>(input_.data());
    inflater_->avail_in = static_cast<uInt>(count);
    return 0;
}

int EntryStream::Inflate(char* buffer, unsigned int size) {
    inflater_->next_out = reinterpret_cast<Bytef*>(buffer);
    inflater_->avail_out = size;
    int result = Z_OK;
    while (inflater_->avail_out > 0 && result == Z_OK) {
        if (inflater_->avail_in == 0 && packedTaken_ < entry_.compressedSize)
            if (const int error = Fill())
                return error;
        result = inflate(inflater_.get(), Z_SYNC_FLUSH);
    }
    const auto count = static_cast<int>(size - inflater_->avail_out);
    const bool hasFailed = result != Z_OK && result != Z_STREAM_END && (count == 0 || result != Z_BUF_ERROR);
    return hasFailed ? result : count;
}

bool EntryStream::IsRight() const {
    return taken_ < entry_.size || crc_ == entry_.crc;
}

} // namespace vexaTransferLib::zip
