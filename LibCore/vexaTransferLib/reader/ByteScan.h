// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <array>
#include <cstddef>

#ifdef __SSE2__
#include <emmintrin.h>

#include <bit>
#endif

namespace vexaTransferLib::reader {

/// Finds, in bytes of XML, the first that needs a closer look: one of the given marks, a control character (among them
/// tab, line feed and the zero that ends a window), or a byte that is not ASCII.
template <char... marks>
class ByteScan {
public:
    /// Looks at up to fifteen bytes after the one that it finds.
    static const char* Find(const char* at) {
#ifdef __SSE2__
        for (;; at += kStep) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
            // Signed, bytes that are not ASCII are below the blank as well.
            __m128i found = _mm_cmplt_epi8(bytes, _mm_set1_epi8(' '));
            ((found = _mm_or_si128(found, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(marks)))), ...);
            const int mask = _mm_movemask_epi8(found);
            if (mask != 0)
                return at + std::countr_zero(static_cast<unsigned>(mask));
        }
#else
        while (!kFound[static_cast<unsigned char>(*at)])
            ++at;
        return at;
#endif
    }

private:
    static constexpr std::size_t kStep = 16;
    static constexpr std::array<bool, 256> kFound = [] {
        std::array<bool, 256> found{};
        for (std::size_t byte = 0; byte < found.size(); ++byte)
            found[byte] = byte < ' ' || byte >= 0x80;
        ((found[static_cast<unsigned char>(marks)] = true), ...);
        return found;
    }();
};

} // namespace vexaTransferLib::reader
