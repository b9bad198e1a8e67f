// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/AtomicFile.h>

#include <vexaTransferLib/GpxError.h>

#include <fcntl.h>
#include <limits.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <memory>
#include <utility>

namespace vexaTransferLib::standard {

namespace {

constexpr char kNotCreated[] = "Unable to create the GPX file. Target could be write protected or full.";
constexpr char kNotWritten[] = "Unable to write the GPX file. Target could be write protected or full.";
constexpr unsigned kUsualMode = 0666;

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// Without it the new name may be lost when the power fails, but not the file.
void SyncFolder(const std::string& path) {
    const int folder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    static_cast<void>(::fsync(folder));
    ::close(folder);
}

// Where a symbolic link leads; empty for any other file, and for none.
std::string LinkTarget(const std::string& link) {
    std::array<char, PATH_MAX> target;
    const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
    if (length <= 0)
        return {};
    const std::string path(target.data(), static_cast<std::size_t>(length));
    return path.front() == '/' ? path : FolderOf(link) + '/' + path;
}

// The name of the file that symbolic links lead to, which need not exist; empty when there is no end of them.
std::string Resolved(std::string name) {
    struct Free {
        void operator()(char* text) const { ::free(text); }
    };
    if (const std::unique_ptr<char, Free> path(::realpath(name.c_str(), nullptr)); path)
        return path.get();
    constexpr int kMostLinks = 40; // as the system has it
    for (int links = 0; links < kMostLinks; ++links) {
        std::string target = LinkTarget(name);
        if (target.empty())
            return name;
        name = std::move(target);
    }
    errno = ELOOP;
    return {};
}

} // namespace

AtomicFile::AtomicFile(std::string target, bool isAtomic)
    : name_(std::move(target)), target_(Resolved(name_)) {
    if (target_.empty())
        Fail(kNotCreated);
    struct stat status = {};
    const bool hasTarget = ::stat(target_.c_str(), &status) == 0;
    if (isAtomic && hasTarget && ::access(target_.c_str(), W_OK) != 0)
        Fail(kNotCreated); // A folder that can be written would let the file be replaced.
    if (isAtomic && (!hasTarget || S_ISREG(status.st_mode)))
        CreateBeside(status.st_mode & 07777U, hasTarget);
    else
        CreateTarget();
}

AtomicFile::~AtomicFile() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
    if (!temporary_.empty())
        ::unlink(temporary_.c_str());
}

void AtomicFile::Fail(const char* message) const {
    throw GpxWriteError(message, {name_, errno});
}

void AtomicFile::CreateBeside(unsigned mode, bool hasTarget) {
    std::string pattern = target_ + ".XXXXXX";
    descriptor_ = ::mkostemp(pattern.data(), O_CLOEXEC);
    if (descriptor_ < 0)
        Fail(kNotCreated);
    temporary_ = std::move(pattern);
    if (!hasTarget) {
        // The mask can only be read by setting it, which other threads would see; a new file shows it as well.
        const int probe =
            ::open((temporary_ + "-").c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kUsualMode);
        struct stat status = {};
        const bool isKnown = probe >= 0 && ::fstat(probe, &status) == 0;
        if (probe >= 0) {
            ::close(probe);
            ::unlink((temporary_ + "-").c_str());
        }
        mode = isKnown ? status.st_mode & 07777U : 0644U;
    }
    if (::fchmod(descriptor_, mode) != 0)
        Fail(kNotCreated);
}

void AtomicFile::CreateTarget() {
    descriptor_ = ::open(target_.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, kUsualMode);
    if (descriptor_ < 0)
        Fail(kNotCreated);
}

void AtomicFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            Fail(kNotWritten);
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

// Devices and pipes cannot be synchronised.
void AtomicFile::Sync() const {
    if (::fsync(descriptor_) != 0 && errno != EINVAL && errno != ENOTSUP)
        Fail(kNotWritten);
}

void AtomicFile::Commit() {
    Sync();
    const int descriptor = std::exchange(descriptor_, -1);
    if (::close(descriptor) != 0)
        Fail(kNotWritten);
    if (temporary_.empty())
        return;
    // After the renaming nothing fails.
    const std::string folder = FolderOf(target_);
    if (::rename(temporary_.c_str(), target_.c_str()) != 0)
        Fail(kNotWritten);
    temporary_.clear();
    SyncFolder(folder);
}

} // namespace vexaTransferLib::standard
