// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/NumberText.h>

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale.h>

namespace vexaTransferLib::text {

namespace {

locale_t ClassicLocale() {
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", locale_t());
    return classic;
}

} // namespace

FixedText::FixedText(double number, int decimals) {
    char* const begin = buffer_.data();
    const std::to_chars_result result =
        std::to_chars(begin, begin + buffer_.size(), number, std::chars_format::fixed, decimals);
    length_ = static_cast<std::size_t>(result.ptr - begin);
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

std::int32_t ReadInt32(const char* text) {
    const long read = std::strtol(text, nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long>(read, std::numeric_limits<std::int32_t>::min(),
                                                      std::numeric_limits<std::int32_t>::max()));
}

} // namespace vexaTransferLib::text
