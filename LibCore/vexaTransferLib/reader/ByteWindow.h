// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/text/LineCounter.h>

#include <xercesc/util/BinInputStream.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace vexaTransferLib::reader {

/// The part of a file that is in memory while the file is read from its start to its end. A place in the file is its
/// distance from the start in bytes, because a pointer is valid only until the window moves.
class ByteWindow {
public:
    /// After the last byte of the window there are at least this many zero bytes, so that a reader needs no check of
    /// the end for each byte.
    static constexpr std::size_t kPadding = 16;

    /// Fits into the cache of a processor core together with the memory that the readers use.
    static constexpr std::size_t kStartCapacity = std::size_t{256} * 1024;

    explicit ByteWindow(std::unique_ptr<xercesc::BinInputStream> stream,
                        std::size_t capacity = kStartCapacity);

    /// A whole file that is in memory already, and stays there unchanged. kPadding zero bytes must follow it.
    explicit ByteWindow(std::string_view bytes);

    const char* Begin() const { return bytes_; }
    const char* End() const { return bytes_ + size_; }
    std::uint64_t PlaceOf(const char* byte) const {
        return start_ + static_cast<std::uint64_t>(byte - bytes_);
    }
    const char* At(std::uint64_t place) const { return bytes_ + (place - start_); }

    /// Reads on. Bytes before \p keptFrom leave the window, all others stay; their pointers become invalid. Moves and
    /// grows so that all calls together cost as much as the length of the file. Returns false at the end of the file.
    /// \throws what the stream throws; std::bad_alloc
    bool ReadOn(std::uint64_t keptFrom);
    /// True when the whole file is in the window, from its first byte to its last.
    bool IsWhole() const { return start_ == 0 && hasEnded_; }
    /// Continues at the start of the same file, which may have changed since.
    void Restart(std::unique_ptr<xercesc::BinInputStream> stream);
    /// Continues at the start of the file, whose bytes are all in the window.
    void Restart();

    /// Until Restart, lines are not counted, which takes time: Locate must not be called.
    void LeaveLines() { countsLines_ = false; }
    /// Line and column of a place in the window, as the XML parser counts them.
    text::SourceLocation Locate(std::uint64_t place) {
        return lines_.Locate({Begin(), size_}, start_, place);
    }

private:
    void Move(std::size_t kept);
    void RestartLines();
    void Fill();

    std::unique_ptr<xercesc::BinInputStream> stream_;
    /// Null for a file that is in memory.
    std::unique_ptr<char[]> buffer_;
    const char* bytes_;
    std::size_t capacity_;
    std::size_t size_ = 0;
    /// The place of the first byte of the window.
    std::uint64_t start_ = 0;
    bool hasEnded_ = false;
    bool countsLines_ = true;
    text::LineCounter lines_;
};

} // namespace vexaTransferLib::reader
