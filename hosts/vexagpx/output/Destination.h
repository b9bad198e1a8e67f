// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/AtomicFile.h>
#include <vexagpx/process/Output.h>

#include <optional>
#include <string>
#include <string_view>

namespace vexagpx {

inline constexpr char kStandardOutput[] = "-";

/// What the result of a command goes to. A file is replaced as a whole or not at all. What is no regular file,
/// such as a pipe, takes the bytes instead.
class Destination {
public:
    /// \param path a file, which need not exist, or "-" for standard output. A link stays, and the file that it
    /// leads to is written.
    /// \throws std::runtime_error when nothing can be written there
    explicit Destination(const std::string& path);

    /// A file below a folder, no link followed; a file that is there is replaced.
    /// \throws std::runtime_error when nothing can be written there
    explicit Destination(FileInFolder file);

    const std::string& Path() const { return path_; } ///< for messages

    /// Writes all of the result. Without this nothing is changed.
    /// \throws std::runtime_error, OutputError when the target is standard output
    void Commit(std::string_view bytes, Output& standardOutput);

private:
    [[noreturn]] void Fail(int error) const;
    void WriteToStream(std::string_view bytes) const;

    std::string path_;
    std::optional<AtomicFile> file_; ///< nothing for what takes the bytes itself
};

} // namespace vexagpx
