// SPDX-License-Identifier: MIT
#include <vexagpx/output/Destination.h>

#include <array>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vexagpx {

namespace {

bool IsStandardOutput(const std::string& path) {
    // Redirected output must go to the open file: a file of the same name that replaces it would not be seen by
    // whoever opened the old one.
    return path == kStandardOutput || path == "/dev/stdout" || path == "/dev/fd/1" ||
           path == "/proc/self/fd/1";
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

/// Follows symbolic links, also to a file that does not exist yet, so that the link is kept and the file that it leads
/// to is written.
std::string FollowLinks(std::string path) {
    std::array<char, PATH_MAX> link;
    for (int i = 0; i < 40; ++i) {
        const ssize_t length = ::readlink(path.c_str(), link.data(), link.size());
        if (length < 0)
            break;
        const std::string next(link.data(), static_cast<std::size_t>(length));
        path = next.front() == '/' ? next : FolderOf(path).append(next);
    }
    return path;
}

/// \throws std::system_error
FileInFolder Resolve(const std::string& path) {
    const std::string resolved = FollowLinks(path);
    const std::string name = resolved.substr(resolved.rfind('/') + 1);
    if (name.empty())
        throw std::system_error(ENOENT, std::generic_category());
    return {OpenFolder(FolderOf(resolved)), name, path};
}

} // namespace

bool IsSameFile(const std::string& path, const std::string& other) {
    std::error_code error;
    return std::filesystem::equivalent(path, other, error);
}

Destination::Destination(const std::string& path) : path_(path) {
    if (IsStandardOutput(path))
        return;
    struct stat status {};
    // The system may forbid to follow a link in a folder that everybody may write to.
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if (!exists && errno != ENOENT)
        Fail(errno);
    if (exists && S_ISDIR(status.st_mode))
        Fail(EISDIR);
    if (exists && !S_ISREG(status.st_mode))
        return;
    try {
        file_.emplace(Resolve(path), AtomicFile::Existing::kReplaced);
    } catch (const std::system_error& error) {
        Fail(error.code().value());
    }
}

Destination::Destination(FileInFolder file) : path_(file.path) {
    file_.emplace(std::move(file), AtomicFile::Existing::kReplaced);
}

void Destination::Fail(int error) const {
    throw std::runtime_error("Unable to write the file: " + path_ + " (" + ErrorText(error) + ")");
}

void Destination::Write(std::string_view piece, Output& standardOutput) {
    if (file_)
        file_->Write(piece);
    else if (IsStandardOutput(path_))
        standardOutput.Write(piece);
    else
        WriteToStream(piece);
}

void Destination::Commit(Output& standardOutput) {
    if (file_)
        file_->Commit();
    else if (IsStandardOutput(path_))
        standardOutput.Flush();
    else
        CloseStream();
}

void Destination::Commit(std::string_view bytes, Output& standardOutput) {
    Write(bytes, standardOutput);
    Commit(standardOutput);
}

void Destination::WriteToStream(std::string_view piece) {
    try {
        if (!stream_)
            stream_ = OpenFile(path_, O_WRONLY);
        if (!WriteAll(stream_->Get(), piece))
            Fail(errno);
    } catch (const std::system_error& error) {
        Fail(error.code().value());
    }
}

void Destination::CloseStream() {
    if (stream_ && !stream_->Close())
        Fail(errno);
}

} // namespace vexagpx
