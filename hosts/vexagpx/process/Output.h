// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vexagpx {

/// Standard output could not be written. No later write can repair that, so this ends the program.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Standard output, with a buffer of its own so that every failed write is noticed.
class Output {
public:
    explicit Output(int fd) : fd_(fd) {}

    /// \throws OutputError, as Flush and Close do
    void Write(std::string_view text);
    void Flush();
    /// Flushes and closes the descriptor: some file systems report lost bytes only then.
    void Close();

    /// The columns of the terminal that it is; empty when it is none, or one that does not know them.
    std::optional<std::size_t> TerminalColumns() const;

private:
    int fd_;
    std::string buffer_;
};

} // namespace vexagpx
