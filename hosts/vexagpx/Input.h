// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/Posix.h>
#include <vexagpx/TemporaryFolder.h>

#include <unicode/unistr.h>

#include <memory>
#include <string>

namespace vexagpx {

inline constexpr char kStandardInput[] = "-";

/// A file named on the command line, as the library can open it by name. Standard input, named "-", and what
/// can be read only once, such as a pipe, is copied to a temporary file of the same name.
class InputFile {
public:
    /// \throws std::runtime_error
    explicit InputFile(const std::string& argument);

    /// The name as the command line had it.
    const std::string& Argument() const { return argument_; }
    /// Where the file is, for the library and for the system.
    const icu::UnicodeString& Path() const { return path_; }
    const std::string& FilePath() const { return filePath_; }
    /// True for what can be read only once.
    bool IsCopy() const { return folder_ != nullptr; }
    /// A message with the name as the command line had it in place of the path.
    std::string Presented(std::string message) const;

private:
    void Copy(int from, const std::string& fileName);

    std::string argument_;
    std::unique_ptr<TemporaryFolder> folder_;
    std::string filePath_;
    icu::UnicodeString path_;
};

/// \throws std::runtime_error when the file cannot be opened for reading
Descriptor OpenInput(const InputFile& file);

/// All bytes of a file or of standard input.
/// \throws std::runtime_error
std::string ReadInput(const std::string& argument);

} // namespace vexagpx
