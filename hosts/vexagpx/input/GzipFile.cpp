// SPDX-License-Identifier: MIT
#include <vexagpx/input/GzipFile.h>

#include <vexagpx/input/EntryName.h>

#include <zlib.h>

#include <algorithm>
#include <climits>
#include <new>
#include <stdexcept>
#include <utility>

namespace vexagpx {

namespace {

constexpr std::size_t kInputSize = 1 << 16;
constexpr int kGzipOnly = 16; // added to the bits of the window

} // namespace

GzipFile::GzipFile(ReadBytes packed, const ArchiveLimits& limits, std::string name)
    : packed_(std::move(packed)), limits_(limits), name_(std::move(name)), input_(kInputSize),
      stream_(std::make_unique<z_stream>()) {
    if (inflateInit2(stream_.get(), MAX_WBITS + kGzipOnly) != Z_OK)
        throw std::bad_alloc();
}

GzipFile::~GzipFile() {
    inflateEnd(stream_.get());
}

void GzipFile::Fail(const std::string& message) const {
    throw std::runtime_error(message + " (" + name_ + ")");
}

/// False at the end of the file.
bool GzipFile::Fill() {
    if (stream_->avail_in > 0)
        return true;
    const std::size_t count = packed_(input_.data(), input_.size());
    packedSize_ += count;
    stream_->next_in = reinterpret_cast<Bytef*>(input_.data());
    stream_->avail_in = static_cast<uInt>(count);
    return count > 0;
}

/// False when there is no further member.
bool GzipFile::StartMember() {
    while (members_ > 0 && Fill() && *stream_->next_in == 0) {
        ++stream_->next_in;
        --stream_->avail_in;
    }
    if (!Fill())
        return false;
    if (members_ > 0 && *stream_->next_in != 0x1F)
        Fail("After the end of the gzip data there are other bytes: the file is damaged or was joined from "
             "several.");
    ++members_;
    isInMember_ = true;
    inflateReset(stream_.get());
    return true;
}

std::size_t GzipFile::Read(char* buffer, std::size_t size) {
    while (isInMember_ || StartMember()) {
        if (!Fill())
            Fail("The gzip data end too early: the file is not complete. Copy or download it again.");
        if (const std::size_t count = Unpack(buffer, size))
            return count;
    }
    if (members_ == 0)
        Fail("The gzip data end too early: the file is not complete. Copy or download it again.");
    return 0;
}

/// The bytes that fit, which may be none.
std::size_t GzipFile::Unpack(char* buffer, std::size_t size) {
    const auto room = static_cast<uInt>(std::min<std::size_t>(size, UINT_MAX));
    stream_->next_out = reinterpret_cast<Bytef*>(buffer);
    stream_->avail_out = room;
    const int result = inflate(stream_.get(), Z_NO_FLUSH);
    if (result == Z_MEM_ERROR)
        throw std::bad_alloc();
    if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR)
        Fail("The gzip data are damaged: " + std::string(stream_->msg == nullptr ? "unknown" : stream_->msg) +
             ". Copy or download the file again.");
    isInMember_ = result != Z_STREAM_END;
    const std::size_t count = room - stream_->avail_out;
    size_ += count;
    CheckLimits();
    return count;
}

void GzipFile::CheckLimits() const {
    if (size_ > limits_.entrySize)
        Fail("The gzip file unpacks to more than " + std::to_string(limits_.entrySize) +
             " bytes (--max-entry-size).");
    if (limits_.IsBeyondRatio(size_, packedSize_))
        Fail("The gzip file grows to more than 4 MiB and " + std::to_string(limits_.ratio) +
             " times its size (--max-ratio).");
}

std::string WithoutGzipSuffix(const std::string& name) {
    constexpr std::size_t kSuffixSize = 3;
    return IsGzipName(name) ? name.substr(0, name.size() - kSuffixSize) : name;
}

} // namespace vexagpx
