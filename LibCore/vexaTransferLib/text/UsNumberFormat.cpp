// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/UsNumberFormat.h>

#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/IcuText.h>

#include <unicode/fieldpos.h>
#include <unicode/parsepos.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace vexaTransferLib::text {

namespace {

constexpr std::int32_t kParsedUnits = 400;

// Passes a status, because ICU's function without one returns an empty text when there is no memory.
template <class Number>
icu::UnicodeString FormatWith(icu::NumberFormat& format, Number number) {
    icu::UnicodeString text;
    icu::FieldPosition ignored(icu::FieldPosition::DONT_CARE);
    UErrorCode status = U_ZERO_ERROR;
    format.format(number, text, ignored, status);
    if (U_FAILURE(status))
        text.setToBogus();
    ThrowIfBogus(text);
    return text;
}

} // namespace

UsNumberFormat::UsNumberFormat() = default;
UsNumberFormat::~UsNumberFormat() = default;

icu::NumberFormat& UsNumberFormat::Get() {
    if (!format_) {
        UErrorCode status = U_ZERO_ERROR;
        format_.reset(icu::NumberFormat::createInstance(icu::Locale::getUS(), status));
        // Without ICU's own data no number can be read or written, so that there is no way to continue.
        if (!SoftCheck(format_ != nullptr, sites::kNumberFormat))
            std::abort();
    }
    return *format_;
}

icu::UnicodeString UsNumberFormat::Format(std::int32_t number) {
    return FormatWith(Get(), number);
}

icu::UnicodeString UsNumberFormat::Format(double number) {
    return FormatWith(Get(), number);
}

icu::Formattable UsNumberFormat::Parse(const icu::UnicodeString& text) {
    icu::Formattable number;
    icu::ParsePosition position(0);
    Get().parse(text.tempSubString(0, kParsedUnits), number, position);
    return number;
}

std::int32_t UsNumberFormat::ParseInteger(const icu::UnicodeString& text) {
    const icu::Formattable number = Parse(text);
    // ICU would cast a NaN to an integer, which is undefined in C++. This is the result of that cast on x86.
    if (number.getType() == icu::Formattable::kDouble && std::isnan(number.getDouble()))
        return std::numeric_limits<std::int32_t>::min();
    UErrorCode ignored = U_ZERO_ERROR;
    return number.getLong(ignored);
}

std::int64_t UsNumberFormat::ParseStored(const icu::UnicodeString& text) {
    const icu::Formattable number = Parse(text);
    switch (number.getType()) {
    case icu::Formattable::kDouble:
        return std::bit_cast<std::int64_t>(number.getDouble());
    case icu::Formattable::kInt64:
        return number.getInt64();
    default:
        return number.getLong();
    }
}

} // namespace vexaTransferLib::text
