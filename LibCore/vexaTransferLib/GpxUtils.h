// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// XML text, optional texts, fixed-width numbers and the GPX time text.
///
/// No function here keeps a state or depends on a locale; all may run on several threads at once.

#include <common/Export.h>

#include <unicode/calendar.h>
#include <unicode/unistr.h>

#include <string>

namespace vexaTransferLib {

/// The text with `"`, `&`, `'`, `<` and `>` replaced by their XML entities; fit for element content and for
/// attribute values. Nothing else changes (control characters stay), and entities that the text already contains
/// are escaped again. Linear time. Bogus when \p text is, and when ICU cannot hold the result.
VEXATRANSFERLIB_API icu::UnicodeString EscapeXMLValueString(const icu::UnicodeString& text);

/// Appends `<name>value</name>` and CR LF, with the value escaped and without indentation. Appends nothing when the
/// value is empty.
/// \throws dbc::precondition_error "Cannot write an unnamed XML string element.", nothing appended
/// \throws dbc::postcondition_error "The GPX text is too large to be held in memory."
VEXATRANSFERLIB_API void AppendStringElement(icu::UnicodeString& out, const icu::UnicodeString& name,
                                             const icu::UnicodeString& value);

/// False, and \p out untouched, when \p value is empty; otherwise copies it.
VEXATRANSFERLIB_API bool GetStringValue(icu::UnicodeString& out, const icu::UnicodeString& value);

/// Assigns a text that must not be empty (a text of blanks is not).
/// \throws dbc::precondition_error with \p message; \p target is then unchanged
/// \throws std::bad_alloc when ICU cannot hold a copy; \p target is then unchanged
VEXATRANSFERLIB_API void SetStringValue(const std::string& message, icu::UnicodeString& target,
                                        const icu::UnicodeString& value);

/// Reads a decimal field of exactly \p length bytes (fewer when the text ends before). The whole field must
/// be a number as `strtol` reads it (leading blanks and a sign are accepted, an empty field is 0) within \p
/// min and \p max, both included. False, and \p out untouched, otherwise; a field of 32 bytes or more also
/// writes the contract report. Never throws.
VEXATRANSFERLIB_API bool ReadLongFromString(long& out, const char* text, unsigned long length, long min,
                                            long max);

/// Reads the digits at the start of \p text as a decimal fraction ("5" is 0.5), multiplies it by \p scale,
/// rounds half up and stores the result. Returns the number of digits, 0 (and \p out untouched) when there is
/// none or when the whole text has 30 bytes or more, which also writes the contract report. Never throws.
VEXATRANSFERLIB_API unsigned long ReadAndScaleDoubleFromString(long& out, const char* text, double scale);

/// Reads GPX time text into milliseconds since 1970-01-01T00:00:00 UTC. False, and \p millis untouched, when
/// the text is refused; an empty text also writes the contract report. Never throws.
///
/// Accepted: `2009-01-15T10:20:30Z`; with a fraction of the second, minute or hour where the text ends in it;
/// an offset (`+02:00`, `-0530`, `+02`); no zone at all (UTC); without hyphens or colons; with seconds or
/// minutes left out; hour 24. Years 1970 to 9999. A day past the end of its month is counted into the next
/// (February 31). Refused: a bare date, a leap second, a lower-case "t", an offset that follows hour or
/// minutes directly (`T10:20+02:00`).
VEXATRANSFERLIB_API bool ParseGpxTime(const std::string& text, double& millis);

/// The calendar's time as GPX time text in UTC with whole seconds, e.g. "2009-01-15T10:20:30Z": Gregorian,
/// ASCII digits, whatever the calendar's own type and the default locale. Empty for a null pointer, which
/// also writes the contract report, and for a calendar that has no time. The calendar stays the caller's.
VEXATRANSFERLIB_API icu::UnicodeString ToGpxTime(icu::Calendar* calendar);

} // namespace vexaTransferLib
