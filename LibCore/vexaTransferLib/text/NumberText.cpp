// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/NumberText.h>

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <locale.h>

namespace vexaTransferLib::text {

namespace {

locale_t ClassicLocale() {
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", locale_t());
    return classic;
}

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                                   1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

// Reads on while there are digits; more than 19 of them overflow.
const char16_t* ReadDigits(const char16_t* text, std::uint64_t& number) {
    for (;; ++text) {
        const std::uint32_t digit = std::uint32_t{*text} - u'0'; // wraps below '0'
        if (digit > 9)
            return text;
        number = number * 10 + digit;
    }
}

} // namespace

char* WriteFixed(char* out, double number, int decimals) {
    return std::to_chars(out, out + kLongestFixed, number, std::chars_format::fixed, decimals).ptr;
}

const char* ReadDouble(const char* text, double& number) {
    const char* const end = text + std::strlen(text);
    double read = 0.0;
    const std::from_chars_result result = std::from_chars(text, end, read);
    if (result.ec == std::errc() && result.ptr == end) {
        number = read;
        return end;
    }
    // from_chars knows no leading blank, no plus sign, no hexadecimal and no overflow.
    char* stop = nullptr;
    number = strtod_l(text, &stop, ClassicLocale());
    return stop;
}

// Digits and power of ten are exact as doubles, so the division rounds once, to what strtod gives.
bool ReadShortDecimal(const char16_t* text, double& number) {
    constexpr std::ptrdiff_t kMostDigits = std::size(kPowersOfTen) - 1;
    constexpr std::uint64_t kLargestExact = std::uint64_t{1} << std::numeric_limits<double>::digits;
    const bool isNegative = *text == u'-';
    const char16_t* const begin = isNegative ? text + 1 : text;
    std::uint64_t read = 0;
    const char16_t* end = ReadDigits(begin, read);
    std::ptrdiff_t digits = end - begin;
    std::ptrdiff_t decimals = 0;
    if (*end == u'.') {
        const char16_t* const fraction = end + 1;
        end = ReadDigits(fraction, read);
        decimals = end - fraction;
        digits += decimals;
    }
    if (*end != u'\0' || digits == 0 || digits > kMostDigits || read > kLargestExact)
        return false;
    const double magnitude = static_cast<double>(read) / kPowersOfTen[decimals];
    number = isNegative ? -magnitude : magnitude;
    return true;
}

std::int32_t ReadInt32(const char* text) {
    const long read = std::strtol(text, nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long>(read, std::numeric_limits<std::int32_t>::min(),
                                                      std::numeric_limits<std::int32_t>::max()));
}

} // namespace vexaTransferLib::text
