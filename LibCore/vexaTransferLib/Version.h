// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The version of the library that a host is compiled against. It is known to the preprocessor alone, so that a host
/// can ask for it in an `#if`; the shared library found at run time may be a newer one of the same soname.
///
///     #if VEXATRANSFERLIB_VERSION_NUMBER >= VEXATRANSFERLIB_MAKE_VERSION(0, 2, 0)

/// \{
/// A part of the version: a whole number from 0 to 999.
#define VEXATRANSFERLIB_VERSION_MAJOR 0
#define VEXATRANSFERLIB_VERSION_MINOR 1
#define VEXATRANSFERLIB_VERSION_PATCH 0
/// \}

/// A version as one whole number, which is larger for a later version.
#define VEXATRANSFERLIB_MAKE_VERSION(major, minor, patch) ((major)*1000000 + (minor)*1000 + (patch))

/// The version as one whole number, to be compared with that of another version.
#define VEXATRANSFERLIB_VERSION_NUMBER                                                                       \
    VEXATRANSFERLIB_MAKE_VERSION(VEXATRANSFERLIB_VERSION_MAJOR, VEXATRANSFERLIB_VERSION_MINOR,               \
                                 VEXATRANSFERLIB_VERSION_PATCH)

/// \cond
#define VEXATRANSFERLIB_QUOTED_(text) #text
#define VEXATRANSFERLIB_JOINED_(major, minor, patch)                                                         \
    VEXATRANSFERLIB_QUOTED_(major) "." VEXATRANSFERLIB_QUOTED_(minor) "." VEXATRANSFERLIB_QUOTED_(patch)
/// \endcond

/// The version as a string literal, such as "0.1.0".
#define VEXATRANSFERLIB_VERSION                                                                              \
    VEXATRANSFERLIB_JOINED_(VEXATRANSFERLIB_VERSION_MAJOR, VEXATRANSFERLIB_VERSION_MINOR,                    \
                            VEXATRANSFERLIB_VERSION_PATCH)
