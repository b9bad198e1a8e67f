// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/ArchiveLimits.h>
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

/// What a command reads a file as: a GPX document or an archive of some, or an archive of anything.
enum class InputUse { kDocument, kArchive };

/// A file from the command line in a form that the library can open; its name may be any bytes. Standard input, named
/// "-", and anything that can be read only once, such as a pipe, is copied to a temporary file of the same name, and a
/// gzip file is unpacked to one.
class InputFile {
public:
    /// \param limits of the bytes that are copied; more than half of the free space is refused, too
    /// \throws std::runtime_error, for what is neither GPX nor a ZIP archive before anything is copied of it
    explicit InputFile(const std::string& argument, const ArchiveLimits& limits = {},
                       InputUse use = InputUse::kDocument);

    /// The name as on the command line.
    const std::string& Argument() const { return argument_; }
    /// The path by which library and system open the file.
    const std::string& FilePath() const { return filePath_; }
    /// The same path as text, for messages; bytes that are not UTF-8 are replaced.
    const icu::UnicodeString& Path() const { return path_; }
    /// True when the file is the copy of something that can be read only once.
    bool IsCopy() const { return isStream_; }

private:
    void OpenPath(const ArchiveLimits& limits, InputUse use);
    void Copy(int from, const std::string& fileName, const ArchiveLimits& limits, InputUse use);

    std::string argument_;
    bool isStream_ = false;
    std::unique_ptr<TemporaryFolder> folder_;
    std::string filePath_;
    icu::UnicodeString path_;
};

/// The first bytes of a file by which its kind is known; none when it cannot be read.
std::string HeadOf(const InputFile& file);

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
