// SPDX-License-Identifier: MIT
#include <vexagpx/output/AtomicFile.h>

#include <vexagpx/process/Signals.h>

#include <cerrno>
#include <cstdio>
#include <random>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace vexagpx {

namespace {

mode_t UsualMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

std::string RandomName() {
    constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    constexpr int kLength = 10;
    std::random_device random;
    std::uniform_int_distribution<std::size_t> letter(0, kLetters.size() - 1);
    std::string name = ".vexagpx-";
    for (int i = 0; i < kLength; ++i)
        name += kLetters[letter(random)];
    return name;
}

} // namespace

mode_t ReplacementMode(const struct stat& old, const struct stat& replacement, mode_t usual) {
    mode_t mode = old.st_mode & 0777;
    if (old.st_uid != replacement.st_uid || old.st_gid != replacement.st_gid)
        mode &= usual;
    if (old.st_gid != replacement.st_gid) {
        const mode_t both = (mode >> 3) & mode & 07;
        mode = (mode & 0700) | (both << 3) | both;
    }
    return mode;
}

AtomicFile::AtomicFile(FileInFolder target, Existing existing)
    : target_(std::move(target)), existing_(existing) {
    if (target_.name.empty())
        Fail(EISDIR);
    if (const std::optional<struct stat> status = Status())
        CheckReplaceable(*status);
    MakeTemporaryFile();
}

void AtomicFile::Fail(int error) const {
    throw std::runtime_error("Unable to write the file: " + target_.path + " (" + ErrorText(error) + ")");
}

std::optional<struct stat> AtomicFile::Status() const {
    try {
        return StatusOf(target_);
    } catch (const std::system_error& error) {
        Fail(error.code().value());
    }
}

void AtomicFile::CheckReplaceable(const struct stat& status) const {
    if (existing_ == Existing::kKept)
        Fail(EEXIST);
    if (S_ISDIR(status.st_mode))
        Fail(EISDIR);
    if (S_ISLNK(status.st_mode))
        Fail(ELOOP);
    if (!S_ISREG(status.st_mode))
        Fail(EEXIST);
    if (::faccessat(target_.folder.Get(), target_.name.c_str(), W_OK, AT_EACCESS | AT_SYMLINK_NOFOLLOW) != 0)
        Fail(errno);
}

void AtomicFile::MakeTemporaryFile() {
    try {
        Descriptor folder = Duplicate(target_.folder);
        const SignalBlock block;
        do {
            temporaryName_ = RandomName();
            file_ = Descriptor(::openat(target_.folder.Get(), temporaryName_.c_str(),
                                        O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
        } while (!file_.IsOpen() && errno == EEXIST);
        if (!file_.IsOpen())
            Fail(errno);
        removal_ =
            std::make_unique<ScopedRemoval>(ScopedRemoval::Kind::kFile, std::move(folder), temporaryName_);
    } catch (const std::system_error& error) {
        Fail(error.code().value());
    }
}

void AtomicFile::Write(std::string_view bytes) {
    if (!WriteAll(file_.Get(), bytes))
        Fail(errno);
}

void AtomicFile::Commit() {
    SetMode();
    if (!file_.Close() || !Rename())
        Fail(errno);
    removal_->Keep();
}

void AtomicFile::SetMode() const {
    struct stat made {};
    if (::fstat(file_.Get(), &made) != 0)
        Fail(errno);
    // Looked up again, because the old file may have been replaced since the constructor.
    const std::optional<struct stat> old = Status();
    const mode_t usual = UsualMode();
    const mode_t mode = old && S_ISREG(old->st_mode) ? ReplacementMode(*old, made, usual) : usual;
    if (::fchmod(file_.Get(), mode) != 0)
        Fail(errno);
}

bool AtomicFile::Rename() const {
    const int folder = target_.folder.Get();
    const char* const from = temporaryName_.c_str();
    const char* const to = target_.name.c_str();
    if (existing_ == Existing::kReplaced)
        return ::renameat(folder, from, folder, to) == 0;
    if (::renameat2(folder, from, folder, to, RENAME_NOREPLACE) == 0)
        return true;
    // Some file systems cannot rename and check in one step. The name was free a moment ago.
    return errno == EINVAL && ::renameat(folder, from, folder, to) == 0;
}

} // namespace vexagpx
