// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstddef>
#include <optional>
#include <string_view>

namespace vexaTransferLib::reader {

/// A longer declaration is not a usual one.
inline constexpr std::size_t kLongestPlainDeclaration = 1024;

/// The length of the byte order mark and the XML declaration at the start of a file, if it has them, when they say that
/// it is XML 1.0 in UTF-8 and have the usual form. Empty for any other declaration.
/// \param start the file, or as many bytes of it as the longest declaration has, or more
std::optional<std::size_t> PlainDeclarationLength(std::string_view start);

} // namespace vexaTransferLib::reader
