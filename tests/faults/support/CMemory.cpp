// SPDX-License-Identifier: MIT

// Replacements that call the C library's functions. The shared libraries use them too. Their memory is freed
// by the C library's own free.

#include "support/Memory.h"

#include <cerrno>
#include <cstdlib>

namespace {

thread_local constinit vexaTransferLib::testing_support::MemoryRequests requests;

} // namespace

namespace vexaTransferLib::testing_support {

MemoryRequests& CMemory::Requests() noexcept {
    return requests;
}

} // namespace vexaTransferLib::testing_support

#ifdef VEXA_FAULTS_MALLOC

namespace {

bool IsRefused() noexcept {
    if (!requests.Refuse())
        return false;
    errno = ENOMEM;
    return true;
}

} // namespace

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

__attribute__((visibility("default"))) void* malloc(std::size_t size) noexcept {
    return IsRefused() ? nullptr : __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size) noexcept {
    return IsRefused() ? nullptr : __libc_calloc(count, size);
}

__attribute__((visibility("default"))) void* realloc(void* memory, std::size_t size) noexcept {
    return IsRefused() ? nullptr : __libc_realloc(memory, size);
}

} // extern "C"

#endif
