// SPDX-License-Identifier: MIT
#include <vexagpx/Target.h>

#include <vexagpx/Interruption.h>
#include <vexagpx/Posix.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vexagpx {

namespace {

bool IsStandardOutput(const std::string& path) {
    // By its name a redirected file would be replaced under the feet of whoever opened it.
    return path == kStandardOutput || path == "/dev/stdout" || path == "/dev/fd/1" ||
           path == "/proc/self/fd/1";
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

/// Follows symbolic links, also to a file that does not exist yet, so that the link stays and its target is
/// written.
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

mode_t DefaultMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

} // namespace

Target::Target(const std::string& path, Existing existing)
    : path_(path), resolvedPath_(path), existing_(existing) {
    struct stat status {};
    if (existing == Existing::kKept && ::lstat(path.c_str(), &status) == 0)
        Fail(EEXIST);
    const bool exists = ::stat(path.c_str(), &status) == 0;
    const int statError = exists ? 0 : errno;
    if (IsStandardOutput(path) || (exists && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode))) {
        MakeTemporaryFolder();
    } else if (!exists) {
        if (statError != ENOENT)
            Fail(statError);
        MakeTemporaryFile(DefaultMode());
    } else if (S_ISDIR(status.st_mode)) {
        Fail(EISDIR);
    } else if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) {
        Fail(errno);
    } else {
        MakeTemporaryFile(status.st_mode & 07777);
    }
}

void Target::Fail(int error) const {
    throw std::runtime_error("Unable to write the file: " + path_ + " (" + ErrorText(error) + ")");
}

void Target::MakeTemporaryFile(mode_t mode) {
    replaces_ = true;
    resolvedPath_ = FollowLinks(path_);
    temporaryPath_ = FolderOf(resolvedPath_) + ".vexagpx-XXXXXX";
    const SignalsHeld held;
    Descriptor file(::mkostemp(temporaryPath_.data(), O_CLOEXEC));
    if (!file.IsOpen())
        Fail(errno);
    temporaryFile_ = std::make_unique<Leftover>(Leftover::Kind::kFile, temporaryPath_);
    if (::fchmod(file.Get(), mode) != 0)
        Fail(errno);
}

void Target::MakeTemporaryFolder() {
    temporaryFolder_ = std::make_unique<TemporaryFolder>("out.gpx");
    temporaryPath_ = temporaryFolder_->FilePath();
}

void Target::Commit(Output& standardOutput) {
    if (IsStandardOutput(path_)) {
        CopyTo(standardOutput);
    } else if (!replaces_) {
        CopyToStream();
    } else {
        if (!Rename())
            Fail(errno);
        temporaryFile_->Keep();
    }
}

bool Target::Rename() const {
    const char* const from = temporaryPath_.c_str();
    const char* const to = resolvedPath_.c_str();
    if (existing_ == Existing::kReplaced)
        return std::rename(from, to) == 0;
    if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return true;
    // Some file systems cannot do both in one step; nothing was there a moment ago.
    return errno == EINVAL && std::rename(from, to) == 0;
}

void Target::CopyTo(Output& out) const {
    const Descriptor source = OpenFile(temporaryPath_, O_RDONLY);
    out.Write(ReadAll(source.Get()));
    out.Flush();
}

void Target::CopyToStream() const {
    try {
        const Descriptor source = OpenFile(temporaryPath_, O_RDONLY);
        Descriptor sink = OpenFile(resolvedPath_, O_WRONLY);
        if (!WriteAll(sink.Get(), ReadAll(source.Get())) || !sink.Close())
            Fail(errno);
    } catch (const std::system_error& error) {
        Fail(error.code().value());
    }
}

} // namespace vexagpx
