// SPDX-License-Identifier: MIT
#include <vexagpx/input/Input.h>

#include <vexagpx/input/FileKind.h>
#include <vexagpx/input/FolderFiles.h>
#include <vexagpx/input/UnpackedBytes.h>
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

/// True for what cannot be opened twice.
/// \throws std::runtime_error for a folder, and when there is no such file
bool IsStream(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        FailToRead(path, errno);
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

/// The bytes of something that is copied, counted and shown as progress.
class CopySource {
public:
    CopySource(int fd, const std::string& argument, const ArchiveLimits& limits, bool isStream)
        : fd_(fd), argument_(argument), most_(isStream ? limits.streamSize : kNoLimit),
          isTyped_(::isatty(fd) != 0), bar_(ShownName(argument)), progress_{0, FileSize(fd)} {}

    std::size_t Read(char* buffer, std::size_t size) {
        const long count = ReadSome(fd_, buffer, size);
        if (count < 0)
            FailToRead(argument_, errno);
        progress_.done += static_cast<std::uint64_t>(count);
        if (progress_.done > most_)
            throw std::runtime_error("The stream has more than " + std::to_string(most_) +
                                     " bytes (--max-stream-size). (" + argument_ + ")");
        // A user who types the text sees how much there is.
        if (!isTyped_)
            bar_.Update(progress_);
        return static_cast<std::size_t>(count);
    }

private:
    static constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

    int fd_;
    const std::string& argument_;
    std::uint64_t most_;
    bool isTyped_;
    ProgressBar bar_;
    Progress progress_;
};

/// A new temporary file, which leaves half of the free space to other programs.
class CopyTarget {
public:
    CopyTarget(const std::string& path, const std::string& argument)
        : file_(OpenFile(path, O_WRONLY | O_CREAT | O_EXCL, 0600)), argument_(argument),
          room_(FreeSpace(file_.Get()) / 2) {}

    void Write(std::string_view bytes) {
        size_ += bytes.size();
        if (size_ > room_)
            throw std::runtime_error(
                "The stream takes more than half of the space that is free for temporary "
                "files; TMPDIR can name another folder for them. (" +
                argument_ + ")");
        if (!WriteAll(file_.Get(), bytes))
            FailToWrite();
    }
    void Close() {
        if (!file_.Close())
            FailToWrite();
    }

private:
    [[noreturn]] static void FailToWrite() {
        throw std::runtime_error("Unable to write a temporary file: " + ErrorText(errno));
    }

    Descriptor file_;
    const std::string& argument_;
    std::uint64_t room_;
    std::uint64_t size_ = 0;
};

void CopyAll(PeekedBytes& from, CopyTarget& to) {
    std::array<char, 1 << 16> buffer;
    while (const std::size_t count = from.Read(buffer.data(), buffer.size()))
        to.Write({buffer.data(), count});
    to.Close();
}

} // namespace

std::string ShownName(const std::string& argument) {
    return argument == kStandardInput ? "standard input" : argument;
}

InputFile::InputFile(const std::string& argument, const ArchiveLimits& limits, InputUse use)
    : argument_(argument) {
    if (argument == kStandardInput) {
        isStream_ = true;
        Copy(STDIN_FILENO, kStandardInput, limits, use);
    } else if (argument.empty()) {
        filePath_ = argument; // for which the library has its own message
    } else {
        OpenPath(limits, use);
    }
    // The library shows the path like this.
    path_ = icu::UnicodeString::fromUTF8(filePath_);
}

void InputFile::OpenPath(const ArchiveLimits& limits, InputUse use) {
    isStream_ = IsStream(argument_);
    const Descriptor file = OpenInput(argument_, argument_);
    const std::string fileName = argument_.substr(argument_.rfind('/') + 1);
    if (isStream_)
        return Copy(file.Get(), fileName, limits, use);
    PeekedBytes bytes(
        [&](char* buffer, std::size_t size) { return ReadPiece(file, argument_, buffer, size); });
    if (!IsGzip(bytes.Head())) {
        if (use == InputUse::kDocument && !IsReadAsArchive(bytes.Head(), argument_))
            RefuseOtherKinds(bytes.Head(), argument_);
        filePath_ = argument_;
        return;
    }
    const Descriptor packed = OpenInput(argument_, argument_);
    Copy(packed.Get(), WithoutGzipSuffix(fileName), limits, use);
}

void InputFile::Copy(int from, const std::string& fileName, const ArchiveLimits& limits, InputUse use) {
    folder_ = std::make_unique<TemporaryFolder>(fileName);
    CopyTarget target(folder_->FilePath(), argument_);
    CopySource source(from, argument_, limits, isStream_);
    PeekedBytes bytes([&](char* buffer, std::size_t size) { return source.Read(buffer, size); });
    UnpackedBytes content(bytes, limits, ShownName(argument_));
    if (use == InputUse::kDocument && !IsReadAsArchive(content.Get().Head(), argument_))
        RefuseOtherKinds(content.Get().Head(), ShownName(argument_));
    CopyAll(content.Get(), target);
    filePath_ = folder_->FilePath();
}

std::string HeadOf(const InputFile& file) {
    try {
        const Descriptor descriptor = OpenFile(file.FilePath(), O_RDONLY);
        PeekedBytes bytes([&](char* buffer, std::size_t size) {
            return ReadPiece(descriptor, file.Argument(), buffer, size);
        });
        return std::string(bytes.Head());
    } catch (const std::runtime_error&) {
        return {};
    }
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
