// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace vexagpx {

/// Standard output could not take what was written. No later write can repair that, so it ends the program.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Standard output, buffered here so that every failed write is seen.
class Output {
public:
    explicit Output(int fd) : fd_(fd) {}

    /// \throws OutputError, as Flush and Close do
    void Write(std::string_view text);
    void Flush();
    /// Flushes and closes the descriptor: some file systems only then tell that the bytes were lost.
    void Close();

private:
    int fd_;
    std::string buffer_;
};

} // namespace vexagpx
