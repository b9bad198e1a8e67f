// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

#include <string>

namespace vexaTransferLib::text {

/// \{
/// False for what no file can be called. The system would cut the name at a zero; a surrogate without its partner
/// has no bytes, so that the name of another file would take its place.
bool IsFileName(const icu::UnicodeString& path) noexcept;
bool IsFileName(const std::string& bytes) noexcept;
/// \}

} // namespace vexaTransferLib::text
