// SPDX-License-Identifier: MIT

// Loaded in front of the C library: whoever makes a temporary folder also writes VEXAGPX_TEST_WORDS to
// standard error and, when VEXAGPX_TEST_ABORT is set, ends as a failed assertion does.

#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <unistd.h>

extern "C" char* mkdtemp(char* path) {
    if (const char* words = std::getenv("VEXAGPX_TEST_WORDS"))
        static_cast<void>(!write(STDERR_FILENO, words, std::strlen(words)));
    if (std::getenv("VEXAGPX_TEST_ABORT") != nullptr)
        std::abort();
    using Function = char* (*)(char*);
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, "mkdtemp"))(path);
}
