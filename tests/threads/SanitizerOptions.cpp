// SPDX-License-Identifier: MIT The options of ThreadSanitizer when the tests are built with it; it reads them
// before main.

#ifdef __SANITIZE_THREAD__
#define VEXA_THREAD_SANITIZER
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define VEXA_THREAD_SANITIZER
#endif
#endif

#ifdef VEXA_THREAD_SANITIZER

extern "C" __attribute__((visibility("default"))) const char* __tsan_default_options();

extern "C" const char* __tsan_default_options() {
    return "suppressions=" VEXA_TSAN_SUPPRESSIONS;
}

#endif
