// SPDX-License-Identifier: MIT
#include "support/IcuMemory.h"

#include <unicode/uclean.h>

#include <cstdlib>
#include <stdexcept>

namespace vexaTransferLib::testing_support {

namespace {

struct Limits {
    bool armed = false;
    std::size_t largest = 0;
    std::size_t refusedCall = 0;
    std::size_t calls = 0;
    std::size_t refused = 0;
    std::size_t bytes = 0;
};

thread_local Limits limits;

bool IsRefused(std::size_t size) {
    if (!limits.armed)
        return false;
    ++limits.calls;
    limits.bytes += size;
    const bool refused = size > limits.largest || limits.calls == limits.refusedCall;
    limits.refused += refused ? 1 : 0;
    return refused;
}

void* U_CALLCONV Allocate(const void*, std::size_t size) {
    return IsRefused(size) ? nullptr : std::malloc(size);
}

void* U_CALLCONV Reallocate(const void*, void* memory, std::size_t size) {
    return IsRefused(size) ? nullptr : std::realloc(memory, size);
}

void U_CALLCONV Free(const void*, void* memory) {
    std::free(memory);
}

// Installs the functions once; they are never removed. They call the functions that ICU uses by default, so
// that Free can free memory that was allocated before.
void Install() {
    static const bool installed = [] {
        UErrorCode status = U_ZERO_ERROR;
        u_setMemoryFunctions(nullptr, Allocate, Reallocate, Free, &status);
        return U_SUCCESS(status);
    }();
    if (!installed)
        throw std::runtime_error("ICU did not take the memory functions");
}

} // namespace

RefusedIcuMemory::RefusedIcuMemory(std::size_t largest, std::size_t refusedCall) {
    Install();
    if (limits.armed)
        throw std::logic_error("ICU's memory is already refused");
    limits = Limits{true, largest, refusedCall};
}

RefusedIcuMemory::~RefusedIcuMemory() {
    limits.armed = false;
}

std::size_t RefusedIcuMemory::Calls() const {
    return limits.calls;
}

std::size_t RefusedIcuMemory::Bytes() const {
    return limits.bytes;
}

std::size_t RefusedIcuMemory::Refused() const {
    return limits.refused;
}

} // namespace vexaTransferLib::testing_support
