// SPDX-License-Identifier: MIT

// Replacements that call the file functions of the C library and of the system. The shared libraries use them
// too.

#include "support/CFiles.h"

#include <cerrno>
#include <cstdio>
#include <stdexcept>

#include <algorithm>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace vexaTransferLib::testing_support {

namespace {

thread_local constinit CFileFaults* active = nullptr;

} // namespace

CFileFaultsScope::CFileFaultsScope(CFileFaults& faults) {
    if (active != nullptr)
        throw std::logic_error("files have their faults already");
    active = &faults;
}

CFileFaultsScope::~CFileFaultsScope() {
    active = nullptr;
}

namespace {

template <class Function>
Function* Next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// Replaces the file of the descriptor, so that the system itself makes all later calls fail.
void Break(int file, CFileFaults::Read read) {
    const int other = open("/dev/null", read == CFileFaults::Read::kFails ? O_WRONLY : O_RDONLY);
    dup2(other, file);
    close(other);
}

std::FILE* Open(const char* function, const char* path, const char* mode) {
    if (active != nullptr && active->openError != 0) {
        errno = active->openError;
        return nullptr;
    }
    std::FILE* const file = Next<std::FILE*(const char*, const char*)>(function)(path, mode);
    if (active != nullptr && file != nullptr)
        ++active->opened;
    return file;
}

} // namespace

#define VEXA_EXPORTED __attribute__((visibility("default")))

extern "C" {

VEXA_EXPORTED std::FILE* fopen(const char* path, const char* mode) {
    return Open("fopen", path, mode);
}

// The function of a 32-bit system for files of any size.
VEXA_EXPORTED std::FILE* fopen64(const char* path, const char* mode) {
    return Open("fopen64", path, mode);
}

VEXA_EXPORTED int fclose(std::FILE* file) {
    static auto* const next = Next<int(std::FILE*)>("fclose");
    const int result = next(file);
    if (active == nullptr)
        return result;
    ++active->closed;
    return active->failsToClose ? EOF : result;
}

VEXA_EXPORTED int setvbuf(std::FILE* file, char* buffer, int mode, std::size_t size) noexcept {
    static auto* const next = Next<int(std::FILE*, char*, int, std::size_t)>("setvbuf");
    return active != nullptr && active->failsToUnbuffer ? -1 : next(file, buffer, mode, size);
}

VEXA_EXPORTED std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
    static auto* const next = Next<std::size_t(const void*, std::size_t, std::size_t, std::FILE*)>("fwrite");
    if (active == nullptr || size == 0)
        return next(bytes, size, count, file);
    const std::size_t written = next(bytes, size, std::min(count, active->room / size), file);
    active->room -= written * size;
    return written;
}

VEXA_EXPORTED std::size_t fread(void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
    static auto* const next = Next<std::size_t(void*, std::size_t, std::size_t, std::FILE*)>("fread");
    if (active != nullptr && ++active->reads == active->faultyRead)
        Break(fileno(file), active->read);
    return next(bytes, size, count, file);
}

VEXA_EXPORTED ssize_t read(int file, void* bytes, std::size_t size) {
    static auto* const next = Next<ssize_t(int, void*, std::size_t)>("read");
    if (active == nullptr)
        return next(file, bytes, size);
    if (++active->reads == active->faultyRead)
        Break(file, active->read);
    if (!active->interruptsReads)
        return next(file, bytes, size);
    if (active->reads % 2 == 1)
        return next(file, bytes, std::min<std::size_t>(size, 1000));
    ++active->interruptions;
    errno = EINTR;
    return -1;
}

} // extern "C"

} // namespace vexaTransferLib::testing_support
