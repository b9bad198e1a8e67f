// SPDX-License-Identifier: MIT

// The global operators new and delete of the fault tests.

#include "support/Memory.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

thread_local constinit vexaTransferLib::testing_support::MemoryRequests requests;
constinit std::atomic<long> blocks{0};

void* Counted(void* memory) noexcept {
    if (memory != nullptr)
        blocks.fetch_add(1, std::memory_order_relaxed);
    return memory;
}

void* Allocate(std::size_t size) noexcept {
    return requests.Refuse() ? nullptr : Counted(std::malloc(size == 0 ? 1 : size));
}

void* Allocate(std::size_t size, std::align_val_t alignment) noexcept {
    const auto unit = static_cast<std::size_t>(alignment);
    return requests.Refuse() ? nullptr : Counted(std::aligned_alloc(unit, (size + unit) / unit * unit));
}

void Free(void* memory) noexcept {
    if (memory == nullptr)
        return;
    blocks.fetch_sub(1, std::memory_order_relaxed);
    std::free(memory);
}

void* OrThrow(void* memory) {
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

} // namespace

namespace vexaTransferLib::testing_support {

MemoryRequests& CppMemory::Requests() noexcept {
    return requests;
}

long CppMemory::Blocks() noexcept {
    return blocks.load(std::memory_order_relaxed);
}

} // namespace vexaTransferLib::testing_support

void* operator new(std::size_t size) {
    return OrThrow(Allocate(size));
}
void* operator new[](std::size_t size) {
    return OrThrow(Allocate(size));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return OrThrow(Allocate(size, alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return OrThrow(Allocate(size, alignment));
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return Allocate(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return Allocate(size, alignment);
}

void operator delete(void* memory) noexcept {
    Free(memory);
}
void operator delete[](void* memory) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    Free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    Free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    Free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    Free(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    Free(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept {
    Free(memory);
}
