// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/WrittenDigits.h>

#include <vexaTransferLib/text/NumberText.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace vexaTransferLib::text {

namespace {

constexpr char kBlanks[] = " \t\n\v\f\r";
constexpr char kDigits[] = "0123456789";

// A decimal number: 0.DIGITS times a power of ten. The digits have no zeros at their start and end; zero has none.
struct Decimal {
    bool isNegative = false;
    std::string digits;
    std::int64_t exponent = 0;

    bool operator==(const Decimal& other) const {
        return digits == other.digits &&
               (digits.empty() || (isNegative == other.isNegative && exponent == other.exponent));
    }
    std::int64_t DecimalCount() const { return static_cast<std::int64_t>(digits.size()) - exponent; }
};

const char* AppendDigits(const char* text, std::string& digits) {
    const std::size_t length = std::strspn(text, kDigits);
    digits.append(text, length);
    return text + length;
}

// False for an exponent without digits.
bool ReadExponent(const char*& text, std::int64_t& exponent) {
    constexpr std::int64_t kTooLarge = 1000000000;
    const bool isNegative = *text == '-';
    if (*text == '-' || *text == '+')
        ++text;
    const std::size_t length = std::strspn(text, kDigits);
    for (std::size_t i = 0; i < length; ++i)
        exponent = std::min(exponent * 10 + (text[i] - '0'), kTooLarge);
    text += length;
    exponent = isNegative ? -exponent : exponent;
    return length != 0;
}

void RemoveOuterZeros(Decimal& decimal) {
    const std::size_t first = std::min(decimal.digits.find_first_not_of('0'), decimal.digits.size());
    decimal.digits.erase(0, first);
    decimal.exponent -= static_cast<std::int64_t>(first);
    decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);
}

// False for a text that is not a decimal number: a hexadecimal one, an infinity, no number.
bool ReadDecimal(const char* text, Decimal& decimal) {
    text += std::strspn(text, kBlanks);
    decimal.isNegative = *text == '-';
    if (*text == '-' || *text == '+')
        ++text;
    text = AppendDigits(text, decimal.digits);
    decimal.exponent = static_cast<std::int64_t>(decimal.digits.size());
    if (*text == '.')
        text = AppendDigits(text + 1, decimal.digits);
    if (decimal.digits.empty())
        return false;
    if (*text == 'e' || *text == 'E') {
        std::int64_t exponent = 0;
        if (!ReadExponent(++text, exponent))
            return false;
        decimal.exponent += exponent;
    }
    RemoveOuterZeros(decimal);
    return *text == '\0';
}

bool IsSame(double one, double other) {
    return one == other || (std::isnan(one) && std::isnan(other));
}

} // namespace

DigitsLeft CompareDigits(const char* text, double kept, int decimals) {
    const std::string written(FixedText(kept, decimals).View());
    double read = 0.0;
    ReadDouble(text, read);
    Decimal source;
    if (!ReadDecimal(text, source)) {
        double again = 0.0;
        ReadDouble(written.c_str(), again);
        return IsSame(read, again) ? DigitsLeft::kAll : DigitsLeft::kOther;
    }
    Decimal result;
    if (ReadDecimal(written.c_str(), result) && source == result)
        return DigitsLeft::kAll;
    const bool isOnlyRounded =
        source.DecimalCount() > decimals && FixedText(read, decimals).View() == std::string_view(written);
    return isOnlyRounded ? DigitsLeft::kRounded : DigitsLeft::kOther;
}

} // namespace vexaTransferLib::text
