// SPDX-License-Identifier: MIT
#include "support/SystemFiles.h"

#include "support/ZipFiles.h"

#include <cstdarg>
#include <stdexcept>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace vexaTransferLib::testing_support {

namespace {

thread_local constinit SystemFiles* active = nullptr;

} // namespace

SystemFiles::SystemFiles() : openAtFirst_(OpenDescriptors()) {
    if (active != nullptr)
        throw std::logic_error("files are counted already");
    active = this;
}

SystemFiles::~SystemFiles() {
    active = nullptr;
}

std::size_t SystemFiles::StillOpen() const {
    return OpenDescriptors() - openAtFirst_;
}

namespace {

// The system's function of that name. Counts the call.
int CallOpen(const char* function, const char* path, int flags, std::va_list arguments) {
    using Function = int(const char*, int, ...);
    auto* const next = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, function));
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    if (active != nullptr)
        active->NoteOpen();
    return next(path, flags, mode);
}

} // namespace

// These replace the system's functions of the same names and call them.
extern "C" {

__attribute__((visibility("default"))) int open(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const int fd = CallOpen("open", path, flags, arguments);
    va_end(arguments);
    return fd;
}

// What the library calls on systems of 32 bits, where it reads large files.
__attribute__((visibility("default"))) int open64(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const int fd = CallOpen("open64", path, flags, arguments);
    va_end(arguments);
    return fd;
}

__attribute__((visibility("default"))) ssize_t read(int fd, void* bytes, std::size_t size) {
    using Function = ssize_t(int, void*, std::size_t);
    static auto* const next = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "read"));
    const ssize_t count = next(fd, bytes, size);
    if (active != nullptr && count > 0)
        active->NoteRead(static_cast<std::size_t>(count));
    return count;
}

} // extern "C"

} // namespace vexaTransferLib::testing_support
