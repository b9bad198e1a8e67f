// SPDX-License-Identifier: MIT
#include <vexagpx/input/Input.h>

#include <vexagpx/input/FolderFiles.h>
#include <vexagpx/terminal/ProgressBar.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace vexagpx {

namespace {

[[noreturn]] void FailToRead(const std::string& argument, int error) {
    if (argument == kStandardInput)
        throw std::runtime_error("Unable to read standard input: " + ErrorText(error));
    throw std::runtime_error("Unable to read the file: " + argument + " (" + ErrorText(error) + ")");
}

/// True for what cannot be opened twice. For a file that does not exist the library has its own message.
bool IsStream(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return false;
    if (S_ISDIR(status.st_mode))
        FailForFolder(path);
    return !S_ISREG(status.st_mode);
}

/// The free space of the file's file system, for a user who is not root.
std::uint64_t FreeSpace(int fd) {
    struct statvfs status {};
    if (::fstatvfs(fd, &status) != 0)
        return std::numeric_limits<std::uint64_t>::max();
    return static_cast<std::uint64_t>(status.f_bavail) * status.f_frsize;
}

struct StreamLimits {
    std::uint64_t most; ///< what the user allows
    std::uint64_t room; ///< that temporary files may take; other programs need the rest

    void Check(std::uint64_t size, const std::string& argument) const {
        if (size > most)
            throw std::runtime_error("The stream has more than " + std::to_string(most) +
                                     " bytes (--max-stream-size). (" + argument + ")");
        if (size > room)
            throw std::runtime_error(
                "The stream takes more than half of the space that is free for temporary "
                "files; TMPDIR can name another folder for them. (" +
                argument + ")");
    }
};

} // namespace

std::string ShownName(const std::string& argument) {
    return argument == kStandardInput ? "standard input" : argument;
}

InputFile::InputFile(const std::string& argument, std::uint64_t mostOfStream) : argument_(argument) {
    if (argument == kStandardInput) {
        Copy(STDIN_FILENO, kStandardInput, mostOfStream);
    } else if (IsStream(argument)) {
        try {
            const Descriptor stream = OpenFile(argument, O_RDONLY);
            Copy(stream.Get(), argument.substr(argument.rfind('/') + 1), mostOfStream);
        } catch (const std::system_error& error) {
            FailToRead(argument, error.code().value());
        }
    } else {
        filePath_ = argument;
    }
    // The library shows the path like this.
    path_ = icu::UnicodeString::fromUTF8(filePath_);
}

void InputFile::Copy(int from, const std::string& fileName, std::uint64_t mostOfStream) {
    folder_ = std::make_unique<TemporaryFolder>(fileName);
    Descriptor copy = OpenFile(folder_->FilePath(), O_WRONLY | O_CREAT | O_EXCL, 0600);
    const StreamLimits limits{mostOfStream, FreeSpace(copy.Get()) / 2};
    std::array<char, 1 << 16> buffer;
    const bool isTyped = ::isatty(from) != 0;
    ProgressBar bar(ShownName(argument_));
    Progress progress{0, FileSize(from)};
    for (;;) {
        const long count = ReadSome(from, buffer.data(), buffer.size());
        if (count < 0)
            FailToRead(argument_, errno);
        if (count == 0)
            break;
        progress.done += static_cast<std::uint64_t>(count);
        limits.Check(progress.done, argument_);
        if (!WriteAll(copy.Get(), {buffer.data(), static_cast<std::size_t>(count)}))
            throw std::runtime_error("Unable to write a temporary file: " + ErrorText(errno));
        // A user who types the text sees how much there is.
        if (!isTyped)
            bar.Update(progress);
    }
    if (!copy.Close())
        throw std::runtime_error("Unable to write a temporary file: " + ErrorText(errno));
    filePath_ = folder_->FilePath();
}

Descriptor OpenInput(const std::string& path, const std::string& argument) {
    try {
        return OpenFile(path, O_RDONLY);
    } catch (const std::system_error& error) {
        FailToRead(argument, error.code().value());
    }
}

std::size_t ReadPiece(const Descriptor& file, const std::string& argument, char* buffer, std::size_t size) {
    const long count = ReadSome(file.Get(), buffer, size);
    if (count < 0)
        FailToRead(argument, errno);
    return static_cast<std::size_t>(count);
}

std::string ReadInput(const std::string& argument) {
    try {
        if (argument == kStandardInput)
            return ReadAll(STDIN_FILENO);
        const Descriptor file = OpenFile(argument, O_RDONLY);
        return ReadAll(file.Get());
    } catch (const std::system_error& error) {
        FailToRead(argument, error.code().value());
    }
}

} // namespace vexagpx
