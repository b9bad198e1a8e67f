// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/ArchiveLimits.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct z_stream_s;

namespace vexagpx {

/// Reads the next bytes into a buffer of this size; returns 0 at the end. May throw.
using ReadBytes = std::function<std::size_t(char*, std::size_t)>;

/// Unpacks a gzip file of one or several members while it is read. Zeros after the last member, with which some
/// programs fill a block, are accepted. Every error is a std::runtime_error that names the file.
class GzipFile {
public:
    /// \param packed gives the bytes of the file
    /// \param limits of the size of what is unpacked, and of its ratio to what was read of the file
    /// \param name how messages name the file
    GzipFile(ReadBytes packed, const ArchiveLimits& limits, std::string name);
    ~GzipFile();
    GzipFile(const GzipFile&) = delete;
    GzipFile& operator=(const GzipFile&) = delete;

    /// The next unpacked bytes; 0 at the end, after the checksums of all members.
    /// \throws std::runtime_error for damaged data, an early end, other bytes after the end, and beyond a limit
    std::size_t Read(char* buffer, std::size_t size);

private:
    [[noreturn]] void Fail(const std::string& message) const;
    bool Fill();
    bool StartMember();
    std::size_t Unpack(char* buffer, std::size_t size);
    void CheckLimits() const;

    ReadBytes packed_;
    ArchiveLimits limits_;
    std::string name_;
    std::vector<char> input_;
    std::unique_ptr<z_stream_s> stream_;
    std::uint64_t packedSize_ = 0; ///< bytes that were read of the file
    std::uint64_t size_ = 0;       ///< bytes that were unpacked
    std::size_t members_ = 0;
    bool isInMember_ = false;
};

/// "walk.gpx" for "walk.gpx.gz"; any other name as it is.
std::string WithoutGzipSuffix(const std::string& name);

} // namespace vexagpx
