// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Posix.h>
#include <vexagpx/process/TemporaryFolder.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace vexagpx {

inline constexpr char kStandardInput[] = "-";

/// How messages name the file of an argument.
std::string ShownName(const std::string& argument);

/// Bytes that a stream may have, when no other limit is asked for.
inline constexpr std::uint64_t kMostOfStream = std::uint64_t{1} << 32;

/// A file named on the command line, whose name is any bytes, as the library can open it. Standard input, named "-",
/// and what can be read only once, such as a pipe, is copied to a temporary file of the same name.
class InputFile {
public:
    /// \param mostOfStream bytes that are copied at most; more than half of the free space is refused, too
    /// \throws std::runtime_error
    explicit InputFile(const std::string& argument, std::uint64_t mostOfStream = kMostOfStream);

    /// The name as the command line had it.
    const std::string& Argument() const { return argument_; }
    /// The bytes by which library and system open the file.
    const std::string& FilePath() const { return filePath_; }
    /// The same as text, for messages: of bytes that are no UTF-8 another name.
    const icu::UnicodeString& Path() const { return path_; }
    /// True for what can be read only once.
    bool IsCopy() const { return folder_ != nullptr; }
    /// A message with the name as the command line had it in place of the path.
    std::string Presented(std::string message) const;

private:
    void Copy(int from, const std::string& fileName, std::uint64_t mostOfStream);

    std::string argument_;
    std::unique_ptr<TemporaryFolder> folder_;
    std::string filePath_;
    icu::UnicodeString path_;
};

/// \param argument how messages name the file
/// \throws std::runtime_error when the file cannot be opened for reading
Descriptor OpenInput(const std::string& path, const std::string& argument);

/// The next bytes of a file; 0 at its end.
/// \throws std::runtime_error
std::size_t ReadPiece(const Descriptor& file, const std::string& argument, char* buffer, std::size_t size);

/// All bytes of a file or of standard input.
/// \throws std::runtime_error
std::string ReadInput(const std::string& argument);

} // namespace vexagpx
