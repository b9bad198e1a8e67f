// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/DisplayText.h>

#include <vexagpx/process/TerminalControl.h>
#include <vexagpx/terminal/Clusters.h>

#include <vexaTransferLib/GpxUtils.h>

#include <unicode/gregocal.h>
#include <unicode/timezone.h>
#include <unicode/uchar.h>

#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <string>

namespace vexagpx {

namespace {

constexpr char16_t kEllipsis = u'\u2026';

icu::UnicodeString FromAscii(const std::string& text) {
    return icu::UnicodeString::fromUTF8(text);
}

std::string Fixed(double number, int decimals) {
    // -DBL_MAX has a sign and 309 digits before the point.
    std::array<char, 352> digits;
    const std::to_chars_result result = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                                      std::chars_format::fixed, decimals);
    return std::string(digits.data(), result.ptr);
}

// Stored as a double, so that a number just below a limit is rounded in the same way on processors that compute with
// more digits.
double Thousandth(double number) {
    const volatile double rounded = number / 1000.0;
    return rounded;
}

bool IsSpace(UChar32 character) {
    return u_isUWhiteSpace(character) || u_charType(character) == U_CONTROL_CHAR;
}

/// True for what has no shape of its own.
bool IsInvisible(UChar32 character) {
    return IsTerminalControl(character) || u_charType(character) == U_FORMAT_CHAR ||
           u_hasBinaryProperty(character, UCHAR_VARIATION_SELECTOR);
}

} // namespace

icu::UnicodeString Printable(const icu::UnicodeString& text) {
    icu::UnicodeString result;
    bool space = false;
    for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        const UChar32 character = text.char32At(i);
        if (IsSpace(character)) {
            space = true;
            continue;
        }
        const std::int32_t next = text.moveIndex32(i, 1);
        if (IsInvisible(character) &&
            (space || !IsPartOfCluster(result, character, next < text.length() ? text.char32At(next) : 0)))
            continue;
        if (space && !result.isEmpty())
            result.append(u' ');
        space = false;
        result.append(U_IS_SURROGATE(character) ? UChar32{0xFFFD} : character);
    }
    return result;
}

std::size_t DisplayWidth(const icu::UnicodeString& text) {
    std::size_t width = 0;
    for (std::int32_t i = 0; i < text.length();) {
        const Cluster cluster = ClusterAt(text, i);
        width += cluster.width;
        i = cluster.end;
    }
    return width;
}

icu::UnicodeString Fitted(const icu::UnicodeString& text, std::size_t width) {
    std::size_t taken = 0;
    // Where the part ends that fits together with the ellipsis.
    std::int32_t end = 0;
    for (std::int32_t i = 0; i < text.length();) {
        const Cluster cluster = ClusterAt(text, i);
        taken += cluster.width;
        i = cluster.end;
        if (taken < width)
            end = i;
        if (taken > width)
            return text.tempSubString(0, end) + kEllipsis;
    }
    return text;
}

icu::UnicodeString FittedAtEnd(const icu::UnicodeString& text, std::size_t width) {
    std::size_t taken = DisplayWidth(text);
    if (taken <= width)
        return text;
    std::int32_t start = 0;
    while (taken >= width && start < text.length()) {
        const Cluster cluster = ClusterAt(text, start);
        taken -= cluster.width;
        start = cluster.end;
    }
    return icu::UnicodeString(kEllipsis) + text.tempSubString(start);
}

icu::UnicodeString FixedText(double number, int decimals) {
    return FromAscii(Fixed(number, decimals));
}

icu::UnicodeString LengthText(double metres) {
    if (metres < 999.5)
        return FromAscii(Fixed(metres, 0) + " m");
    const double kilometres = Thousandth(metres);
    const int decimals = kilometres < 9.995 ? 2 : kilometres < 999.95 ? 1 : 0;
    return FromAscii(Fixed(kilometres, decimals) + " km");
}

icu::UnicodeString HeightText(double metres) {
    if (std::abs(metres) < 1e7) {
        const double whole = std::round(metres);
        return FromAscii(Fixed(whole == 0.0 ? 0.0 : whole, 0) + " m");
    }
    std::array<char, 32> digits;
    const std::to_chars_result result =
        std::to_chars(digits.data(), digits.data() + digits.size(), metres, std::chars_format::general, 4);
    return FromAscii(std::string(digits.data(), result.ptr) + " m");
}

icu::UnicodeString SizeText(std::uint64_t bytes) {
    constexpr const char* kUnits[] = {" kB", " MB", " GB", " TB", " PB", " EB"};
    if (bytes < 1000)
        return FromAscii(std::to_string(bytes) + " B");
    std::size_t unit = 0;
    double number = Thousandth(static_cast<double>(bytes));
    for (; number >= 999.95; number = Thousandth(number))
        ++unit;
    return FromAscii(Fixed(number, 1) + kUnits[unit]);
}

icu::UnicodeString DegreesText(double degrees) {
    return FromAscii(Fixed(degrees, 6));
}

icu::UnicodeString DurationText(double millis) {
    struct Unit {
        double millis;
        const char* name;
    };
    static constexpr Unit kUnits[] = {
        {86400000.0, " d"}, {3600000.0, " h"}, {60000.0, " min"}, {1000.0, " s"}};
    std::string text;
    int parts = 0;
    for (const Unit& unit : kUnits) {
        const double count = std::floor(millis / unit.millis);
        millis -= count * unit.millis;
        if (parts > 0)
            ++parts;
        if (count > 0.0) {
            text += (text.empty() ? "" : " ") + Fixed(count, 0) + unit.name;
            parts = parts == 0 ? 1 : parts;
        }
        if (parts == 2)
            break;
    }
    return FromAscii(text.empty() ? "0 s" : text);
}

icu::UnicodeString TimeText(double millis) {
    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(*icu::TimeZone::getGMT(), icu::Locale::getRoot(), status);
    calendar.setTime(millis, status);
    return U_FAILURE(status) ? icu::UnicodeString() : vexaTransferLib::ToGpxTime(&calendar);
}

} // namespace vexagpx
