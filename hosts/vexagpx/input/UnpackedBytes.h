// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/GzipFile.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vexagpx {

/// Bytes of which the first ones can be looked at before they are read.
class PeekedBytes {
public:
    explicit PeekedBytes(ReadBytes read) : read_(std::move(read)) {}

    /// The first kHeadSize bytes, or all when there are fewer. To be called before Read.
    std::string_view Head();

    /// The next bytes, those of the head first; 0 at the end.
    std::size_t Read(char* buffer, std::size_t size);

private:
    std::size_t ReadMore(char* buffer, std::size_t size);

    ReadBytes read_;
    std::optional<std::string> head_;
    std::size_t taken_ = 0; ///< of the head
    bool hasEnded_ = false; ///< what has ended may wait or fail when it is read again
};

/// Bytes as they are, or unpacked when they are a gzip file.
class UnpackedBytes {
public:
    /// \param bytes of which nothing was read; must exist as long as this object
    /// \param name how messages name the file
    /// \throws what GzipFile::Read throws
    UnpackedBytes(PeekedBytes& bytes, const ArchiveLimits& limits, const std::string& name);
    UnpackedBytes(const UnpackedBytes&) = delete;
    UnpackedBytes& operator=(const UnpackedBytes&) = delete;

    bool IsUnpacked() const { return gzip_.has_value(); }
    PeekedBytes& Get() { return IsUnpacked() ? *unpacked_ : bytes_; }

private:
    PeekedBytes& bytes_;
    std::optional<GzipFile> gzip_;
    std::optional<PeekedBytes> unpacked_;
};

} // namespace vexagpx
