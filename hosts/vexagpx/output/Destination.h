// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/AtomicFile.h>
#include <vexagpx/process/Output.h>
#include <vexagpx/process/Posix.h>

#include <optional>
#include <string>
#include <string_view>

namespace vexagpx {

inline constexpr char kStandardOutput[] = "-";

/// Whether two paths lead to one existing file.
bool IsSameFile(const std::string& path, const std::string& other);

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

    // All throw std::runtime_error, and OutputError for standard output.

    /// Writes the next piece of the result. A file is unchanged until Commit is called.
    void Write(std::string_view piece, Output& standardOutput);
    /// Ends the result, which is then in its place.
    void Commit(Output& standardOutput);
    /// Writes the whole result.
    void Commit(std::string_view bytes, Output& standardOutput);

private:
    [[noreturn]] void Fail(int error) const;
    void WriteToStream(std::string_view piece);
    void CloseStream();

    std::string path_;
    std::optional<AtomicFile> file_;   ///< nothing for what is written to directly
    std::optional<Descriptor> stream_; ///< open from the first piece on
};

} // namespace vexagpx
