// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstdint>
#include <optional>
#include <string_view>

namespace vexaTransferLib {

// Values as a complete reading takes them from a source, in UTF-8. The bytes after a text must be readable up to the
// padding of its source. The writer asks the same functions whether a value is still what the source says.

/// A finite number, with blanks around it or not.
std::optional<double> NumberIn(std::string_view text);
/// A time as XML Schema writes it, or as GpxUtils reads it, in whole milliseconds since 1970-01-01T00:00:00 UTC.
std::optional<double> TimeIn(std::string_view text);
/// A whole number of 32 bits, also with the thousands separators that the vendor's programs write: "1,234".
std::optional<std::int32_t> IntegerIn(std::string_view text);
/// The same, but of digits alone and perhaps a sign.
std::optional<std::int32_t> PlainIntegerIn(std::string_view text);

} // namespace vexaTransferLib
