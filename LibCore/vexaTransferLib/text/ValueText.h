// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexaTransferLib::text {

// Values as XML Schema writes them, in ASCII, with white space around them or not. Unlike the functions that read them
// as the host always did, these take nothing else, and more of what is right.

/// A decimal or a double: "12", "+12.5", ".5", "1e2". Neither infinity nor a NaN is one.
std::optional<double> ReadSchemaNumber(std::string_view text);

/// A whole number with a sign or none; empty when 64 bits do not hold it.
std::optional<std::int64_t> ReadSchemaInteger(std::string_view text);
/// A whole number that is not negative.
std::optional<std::uint64_t> ReadSchemaUnsigned(std::string_view text);

/// "true", "false", "1" or "0", and the former two in any case, as files have them: "True".
std::optional<bool> ReadBoolean(std::string_view text);

/// A time such as "2009-01-15T10:20:30.25+01:00", of any year from 1 to 9999, in milliseconds since 1970-01-01T00:00:00
/// UTC, with the fraction of a millisecond. Without a zone it is one of UTC. The day must be one of its month; hour 24
/// is the end of a day.
std::optional<double> ReadSchemaTime(std::string_view text);

/// \{
/// A number as the vendor's elements have it, with commas between groups of three digits or none: "1,234".
std::optional<std::int32_t> ReadGroupedInteger(std::string_view text);
std::optional<double> ReadGroupedNumber(std::string_view text);
/// \}

/// True when they differ in the case of ASCII letters only.
bool EqualsIgnoringCase(std::string_view left, std::string_view right);

/// The time as XML Schema writes it, in UTC, with as many digits of the second as it takes to read the same back. Empty
/// for a time before the year 1 or after the year 9999, and for a NaN.
std::string SchemaTime(double millis);

/// Without the white space of XML around it.
std::string_view Trimmed(std::string_view text);

} // namespace vexaTransferLib::text
