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

// These replace the system's functions of the same names and call them.
extern "C" {

__attribute__((visibility("default"))) int open(const char* path, int flags, ...) {
    using Function = int(const char*, int, ...);
    static auto* const next = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "open"));
    mode_t mode = 0;
    if ((flags & (O_CREAT | O_TMPFILE)) != 0) {
        std::va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    if (active != nullptr)
        active->NoteOpen();
    return next(path, flags, mode);
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
