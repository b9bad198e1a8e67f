// SPDX-License-Identifier: MIT
#include <vexagpx/process/Posix.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vexagpx {

namespace {

Descriptor Opened(int fd) {
    if (fd < 0)
        throw std::system_error(errno, std::generic_category());
    return Descriptor(fd);
}

std::uint64_t SizeOf(const struct stat& status) {
    return S_ISREG(status.st_mode) ? static_cast<std::uint64_t>(status.st_size) : 0;
}

} // namespace

bool Descriptor::Close() {
    const int fd = std::exchange(fd_, -1);
    // On Linux the number is free after EINTR: a second call could close another file.
    return fd < 0 || ::close(fd) == 0 || errno == EINTR;
}

Descriptor OpenFile(const std::string& path, int flags, unsigned mode) {
    int fd;
    do
        fd = ::open(path.c_str(), flags | O_CLOEXEC, mode);
    while (fd < 0 && errno == EINTR);
    return Opened(fd);
}

Descriptor OpenFolder(const std::string& path) {
    return Opened(::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

Descriptor OpenFolderIn(const Descriptor& folder, const std::string& name) {
    return Opened(::openat(folder.Get(), name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

Descriptor Duplicate(const Descriptor& descriptor) {
    return Opened(::fcntl(descriptor.Get(), F_DUPFD_CLOEXEC, 0));
}

bool WriteAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(fd, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

long ReadSome(int fd, char* buffer, std::size_t capacity) {
    ssize_t count;
    do
        count = ::read(fd, buffer, capacity);
    while (count < 0 && errno == EINTR);
    return count;
}

std::string ReadAll(int fd) {
    std::string bytes;
    std::string buffer(1 << 16, '\0');
    for (;;) {
        const long count = ReadSome(fd, buffer.data(), buffer.size());
        if (count < 0)
            throw std::system_error(errno, std::generic_category());
        if (count == 0)
            return bytes;
        bytes.append(buffer, 0, static_cast<std::size_t>(count));
    }
}

std::uint64_t FileSize(int fd) {
    struct stat status {};
    return ::fstat(fd, &status) == 0 ? SizeOf(status) : 0;
}

std::uint64_t FileSize(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? SizeOf(status) : 0;
}

bool IsCapableTerminal(int fd) {
    const char* const kind = std::getenv("TERM");
    return ::isatty(fd) != 0 && kind != nullptr && *kind != '\0' && std::string_view(kind) != "dumb";
}

std::string ErrorText(int error) {
    // strerror is translated by setlocale only, which nothing here calls.
    return std::strerror(error);
}

void KeepStandardDescriptors() {
    for (int fd = 0; fd <= 2; ++fd) {
        if (::fcntl(fd, F_GETFD) >= 0 || errno != EBADF)
            continue;
        // The system gives out the lowest free number, which is this one. Only standard error can be written.
        static_cast<void>(::open("/dev/null", fd == STDOUT_FILENO ? O_RDONLY : O_WRONLY));
    }
}

} // namespace vexagpx
