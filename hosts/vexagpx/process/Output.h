// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace vexagpx {

/// Standard output could not be written. No later write can repair that, so this ends the program.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Nobody reads standard output any more, as after `vexagpx show walk.gpx | head -1`.
class ClosedPipe : public OutputError {
public:
    using OutputError::OutputError;
};

/// Standard output, with a buffer of its own so that every failed write is noticed. What writes text in pieces, such as
/// JsonWriter, writes into one; so there may be others than standard output.
class Output {
public:
    using TakePiece = std::function<void(std::string_view)>;

    explicit Output(int fd) : fd_(fd) {}
    /// Gives what is written to `take`, in long pieces, instead of to a descriptor.
    explicit Output(TakePiece take) : fd_(-1), take_(std::move(take)) {}

    /// \throws OutputError, as Flush and Close do; and what the taker of the pieces throws
    void Write(std::string_view text);
    void Flush();
    /// Flushes and closes the descriptor: some file systems report lost bytes only then.
    void Close();

    /// The columns of the terminal that it is; empty when it is none, or one that does not know them.
    std::optional<std::size_t> TerminalColumns() const;
    /// True when text in it may have colours.
    bool UsesColours() const;
    /// True when it is a terminal that shows only ASCII.
    bool ShowsOnlyAscii() const;

private:
    void GiveBuffer();

    int fd_; ///< -1 when the pieces are taken otherwise
    TakePiece take_;
    std::string buffer_;
};

} // namespace vexagpx
