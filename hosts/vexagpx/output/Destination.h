// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/AtomicFile.h>
#include <vexagpx/process/Output.h>

#include <optional>
#include <string>
#include <string_view>

namespace vexagpx {

inline constexpr char kStandardOutput[] = "-";

/// Where the result of a command is written. A file is replaced as a whole or not at all. Anything but a regular file,
/// such as a pipe, is written to directly.
class Destination {
public:
    /// \param path a file, which need not exist, or "-" for standard output. A link is kept, and the file that it
    /// leads to is written.
    /// \throws std::runtime_error when it cannot be written
    explicit Destination(const std::string& path);

    /// A file that replaces an existing one; no link is followed.
    /// \throws std::runtime_error when it cannot be written
    explicit Destination(FileInFolder file);

    const std::string& Path() const { return path_; } ///< for messages

    /// Writes the whole result. Without this call nothing changes.
    /// \throws std::runtime_error; OutputError for standard output
    void Commit(std::string_view bytes, Output& standardOutput);

private:
    [[noreturn]] void Fail(int error) const;
    void WriteToStream(std::string_view bytes) const;

    std::string path_;
    std::optional<AtomicFile> file_; ///< nothing for what is written to directly
};

} // namespace vexagpx
