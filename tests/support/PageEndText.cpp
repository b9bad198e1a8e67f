// SPDX-License-Identifier: MIT
#include "support/PageEndText.h"

#include <cstring>
#include <stdexcept>

#include <sys/mman.h>
#include <unistd.h>

namespace vexaTransferLib::testing_support {

PageEndText::PageEndText(std::u16string_view text) {
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    size_ = 2 * page;
    memory_ = ::mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory_ == MAP_FAILED)
        throw std::runtime_error("no memory for a text at the end of a page");
    char* const end = static_cast<char*>(memory_) + page;
    const std::size_t length = text.size() * sizeof(char16_t);
    if (length > page || ::mprotect(end, page, PROT_NONE) != 0) {
        ::munmap(memory_, size_);
        throw std::runtime_error("no text at the end of a page");
    }
    std::memcpy(end - length, text.data(), length);
    text_ = reinterpret_cast<const char16_t*>(end - length);
}

PageEndText::~PageEndText() {
    ::munmap(memory_, size_);
}

} // namespace vexaTransferLib::testing_support
