// SPDX-License-Identifier: MIT
#include "support/Memory.h"

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <atomic>
#include <cstdlib>

#ifdef VEXA_FAULTS_ASAN
#include <sanitizer/lsan_interface.h>
#endif

namespace vexaTransferLib::testing_support {

namespace {

thread_local constinit MemoryRequests requests;
constinit std::atomic<long> blocks{0};

// Uses malloc instead of operator new, so that the requests to the two can be counted separately.
class Manager final : public xercesc::MemoryManager {
public:
    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }

    void* allocate(XMLSize_t size) override {
#ifdef VEXA_FAULTS_ASAN
        // When its memory runs out, Xerces cleans up nothing, because cleaning up might need memory.
        const __lsan::ScopedDisabler xercesLosesMemoryWhenItRunsOut;
#endif
        void* const memory = requests.Refuse() ? nullptr : std::malloc(size == 0 ? 1 : size);
        if (memory == nullptr)
            throw xercesc::OutOfMemoryException();
        blocks.fetch_add(1, std::memory_order_relaxed);
        return memory;
    }

    void deallocate(void* memory) override {
        if (memory == nullptr)
            return;
        blocks.fetch_sub(1, std::memory_order_relaxed);
        std::free(memory);
    }
};

} // namespace

MemoryRequests& XercesMemoryManager::Requests() noexcept {
    return requests;
}

long XercesMemoryManager::Blocks() noexcept {
    return blocks.load(std::memory_order_relaxed);
}

void XercesMemoryManager::Initialize() {
    static Manager manager;
    xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr, nullptr,
                                          &manager);
}

} // namespace vexaTransferLib::testing_support
