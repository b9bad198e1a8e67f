// SPDX-License-Identifier: MIT

// Loaded before the C library: creating a temporary folder also writes VEXAGPX_TEST_WORDS to standard error
// and, when VEXAGPX_TEST_ABORT is set, ends the process as a failed assertion does. Every file system has
// VEXAGPX_TEST_FREE bytes free, when that is set.

#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <sys/statvfs.h>
#include <unistd.h>

extern "C" char* mkdtemp(char* path) {
    if (const char* words = std::getenv("VEXAGPX_TEST_WORDS"))
        static_cast<void>(!write(STDERR_FILENO, words, std::strlen(words)));
    if (std::getenv("VEXAGPX_TEST_ABORT") != nullptr)
        std::abort();
    using Function = char* (*)(char*);
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, "mkdtemp"))(path);
}

extern "C" int fstatvfs(int fd, struct statvfs* status) {
    using Function = int (*)(int, struct statvfs*);
    // The headers of a 32-bit system give the function with large files another name.
    const char* const name = sizeof(off_t) > sizeof(long) ? "fstatvfs64" : "fstatvfs";
    const int result = reinterpret_cast<Function>(dlsym(RTLD_NEXT, name))(fd, status);
    if (const char* free = std::getenv("VEXAGPX_TEST_FREE")) {
        status->f_frsize = 1;
        status->f_bavail = std::strtoull(free, nullptr, 10);
    }
    return result;
}
