// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/SkipReporter.h>
#include <vexaTransferLib/text/NumberText.h>
#include <vexaTransferLib/text/TimeText.h>

#include <unicode/unistr.h>

namespace vexaTransferLib::reader {

// Reports of values that are kept, but not as the file has them. `attribute` is the name of the attribute that has
// the value; null when it is the text of the element.

/// A number that was read, and what is known of its text.
struct Number {
    double value = 0.0;
    text::DigitCounts digits;
};

// For an observer only.
void NotifyLostDigits(SkipReporter& reporter, const NodeView& element, const char16_t* attribute, double kept,
                      int decimals);
void NotifyTimeLosses(SkipReporter& reporter, const NodeView& element, const char16_t* attribute,
                      double millis, const text::TimeLosses& losses);

/// Reports a number whose digits are not all written.
/// \param kept the number that the document has for it
/// \param decimals how many are written
inline void ReportLostDigits(SkipReporter& reporter, const NodeView& element, const char16_t* attribute,
                             const Number& number, double kept, int decimals) {
    if (reporter.IsWanted() && (kept != number.value || !number.digits.AreWritten(decimals)))
        NotifyLostDigits(reporter, element, attribute, kept, decimals);
}

inline void ReportTimeLosses(SkipReporter& reporter, const NodeView& element, const char16_t* attribute,
                             double millis, const text::TimeLosses& losses) {
    if (reporter.IsWanted() && losses.IsAny())
        NotifyTimeLosses(reporter, element, attribute, millis, losses);
}

/// Reports a time that is kept as a number that means none.
/// \param consequence such as "A form field with this time counts as one without."
void ReportTimeAsNone(SkipReporter& reporter, const NodeView& element, const char16_t* attribute,
                      const char* consequence);

/// Reports a text that the cleaner has changed.
void ReportCleaned(SkipReporter& reporter, const NodeView& element, const icu::UnicodeString& before,
                   const icu::UnicodeString& after);

} // namespace vexaTransferLib::reader
