// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#define VEXA_FAULTS_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VEXA_FAULTS_ASAN 1
#endif
#endif

// The C library's functions are replaced only where a sanitizer has not replaced them.
#if defined(__GLIBC__) && !defined(VEXA_FAULTS_ASAN)
#define VEXA_FAULTS_MALLOC 1
#endif

namespace vexaTransferLib::testing_support {

/// The requests of one thread to one source of memory.
struct MemoryRequests {
    bool isArmed = false;
    bool isPaused = false;
    std::size_t firstRefused = 0; ///< counted from 1; 0 for none
    bool allFromThere = false;
    std::size_t calls = 0;
    std::size_t refused = 0;

    /// Counts a request; true when it must be refused.
    bool Refuse() noexcept {
        if (!isArmed || isPaused)
            return false;
        ++calls;
        const bool isRefused = calls == firstRefused || (allFromThere && calls > firstRefused);
        refused += isRefused ? 1 : 0;
        return isRefused;
    }
};

/// operator new in all its forms, which this executable replaces. Neither Xerces nor ICU use it here.
struct CppMemory {
    static MemoryRequests& Requests() noexcept;
    /// The number of blocks of all threads.
    static long Blocks() noexcept;
};

/// Xerces' memory manager from its initialisation to its end; see XercesMemory.cpp.
struct XercesMemoryManager {
    static MemoryRequests& Requests() noexcept;
    static long Blocks() noexcept;
    static void Initialize();
};

/// malloc, calloc and realloc for all callers, such as operator new, zlib and minizip. Replaced where
/// VEXA_FAULTS_MALLOC is defined.
struct CMemory {
    static MemoryRequests& Requests() noexcept;
};

/// Counts the requests of this thread to a source of memory and refuses some as long as this object exists.
/// There may be one at a time for each source. RefusedIcuMemory is the same for ICU.
template <class Source>
class [[nodiscard]] RefusedMemory {
public:
    /// Refuses the request with this number, counted from 1.
    static RefusedMemory AtCall(std::size_t number) { return RefusedMemory(number, false); }
    /// Refuses that request and all later ones.
    static RefusedMemory FromCall(std::size_t number) { return RefusedMemory(number, true); }
    /// Refuses none and only counts.
    static RefusedMemory None() { return RefusedMemory(0, false); }

    ~RefusedMemory() { Source::Requests().isArmed = false; }
    RefusedMemory(const RefusedMemory&) = delete;
    RefusedMemory& operator=(const RefusedMemory&) = delete;

    std::size_t Calls() const { return Source::Requests().calls; }
    std::size_t Refused() const { return Source::Requests().refused; }

private:
    RefusedMemory(std::size_t number, bool allFromThere) {
        Source::Requests() = MemoryRequests{true, false, number, allFromThere, 0, 0};
    }
};

using RefusedNew = RefusedMemory<CppMemory>;
using RefusedXercesMemory = RefusedMemory<XercesMemoryManager>;
using RefusedMalloc = RefusedMemory<CMemory>;

/// As long as this object exists, no request of the thread is refused or counted. For a test's own code that
/// runs during an operation.
class MemoryPause {
public:
    MemoryPause() { Set(true); }
    ~MemoryPause() { Set(false); }
    MemoryPause(const MemoryPause&) = delete;
    MemoryPause& operator=(const MemoryPause&) = delete;

private:
    static void Set(bool isPaused) noexcept {
        CppMemory::Requests().isPaused = isPaused;
        XercesMemoryManager::Requests().isPaused = isPaused;
        CMemory::Requests().isPaused = isPaused;
    }
};

} // namespace vexaTransferLib::testing_support
