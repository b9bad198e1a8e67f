// SPDX-License-Identifier: MIT
#pragma once

// Symbols are hidden unless they carry VEXATRANSFERLIB_API. A class that is thrown or caught across the
// library's border carries it as a whole; its private helpers carry VEXATRANSFERLIB_LOCAL.
#if defined(__GNUC__)
#define VEXATRANSFERLIB_API __attribute__((visibility("default")))
#define VEXATRANSFERLIB_LOCAL __attribute__((visibility("hidden")))
#else
#define VEXATRANSFERLIB_API
#define VEXATRANSFERLIB_LOCAL
#endif
