// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

#include <string>

namespace vexaTransferLib::text {

/// \{
/// True when a file can have this name. An empty text is no name, and the system would cut the name at a zero. A
/// surrogate without its partner has no bytes in UTF-8, so that the name would become that of another file.
bool IsFileName(const icu::UnicodeString& path) noexcept;
bool IsFileName(const std::string& bytes) noexcept;
/// \}

} // namespace vexaTransferLib::text
