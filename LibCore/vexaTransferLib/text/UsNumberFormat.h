// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/fmtable.h>
#include <unicode/numfmt.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <memory>

namespace vexaTransferLib::text {

/// ICU's number format for the US locale, made on first use (3.4 us) and kept. Stops the process when ICU
/// cannot make one. A writer or reader has one for a whole call, not one for each value.
class UsNumberFormat {
public:
    UsNumberFormat();
    ~UsNumberFormat();
    UsNumberFormat(const UsNumberFormat&) = delete;
    UsNumberFormat& operator=(const UsNumberFormat&) = delete;

    /// With thousands separators, e.g. "1,234"; a double with at most three decimals, e.g. "1,234.568".
    icu::UnicodeString Format(std::int32_t number);
    icu::UnicodeString Format(double number);

    /// The integer at the start of the text, a fraction cut off, clamped to 32 bits; 0 when there is none.
    /// Looks at the first 400 code units only: a longer run of digits costs ICU quadratic time.
    std::int32_t ParseInteger(const icu::UnicodeString& text);

    /// The 64 bits that ICU stores for the number at the start of the text: those of an integer, or, for a
    /// fraction and a number that no integer can hold, those of a double. 0 when there is none. Looks at the first
    /// 400 code units only.
    std::int64_t ParseStored(const icu::UnicodeString& text);

private:
    icu::NumberFormat& Get();
    icu::Formattable Parse(const icu::UnicodeString& text);

    std::unique_ptr<icu::NumberFormat> format_;
};

} // namespace vexaTransferLib::text
