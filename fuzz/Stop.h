// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

/// Ends the fuzzer, which then keeps the input. `fuzz/run` closes standard error, so the reason goes to standard
/// output; abort() does not write what that has buffered.
[[noreturn]] inline void StopBecause(const std::string& why) {
    std::fprintf(stdout, "%s\n", why.c_str());
    std::fflush(stdout);
    std::abort();
}
