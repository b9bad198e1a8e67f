// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/NumberText.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cfloat>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <locale.h>
#include <version>

namespace vexaTransferLib::text {

namespace {

// On 32-bit x86 the x87 unit rounds a result twice: to 64 bits when it is computed, to a double when it is stored.
constexpr bool kRoundsTwice = FLT_EVAL_METHOD != 0;

locale_t ClassicLocale() {
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", locale_t());
    return classic;
}

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                                   1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

constexpr std::ptrdiff_t kMostDigits = std::size(kPowersOfTen) - 1;

// Reads a text of up to kMostDigits ASCII digits, a sign and a point.
template <class Character>
[[maybe_unused]] double ReadNarrowed(const Character* begin, const Character* end) {
    std::array<char, kMostDigits + 3> text = {};
    std::transform(begin, end, text.begin(), [](Character unit) { return static_cast<char>(unit); });
    return strtod_l(text.data(), nullptr, ClassicLocale());
}

// Four digits at once, where a machine has the order of bytes that this needs; false for anything else.
bool ReadFourDigits(const char* text, std::uint32_t& number) {
    if constexpr (std::endian::native != std::endian::little)
        return false;
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, text, sizeof bytes);
    // Digits become 0 to 9. A byte that is too small or too large shows in its highest bit, or in that of one before
    // it.
    bytes -= 0x30303030u;
    if ((((bytes + 0x76767676u) | bytes) & 0x80808080u) != 0)
        return false;
    bytes = bytes * 10 + (bytes >> 8);
    number = (bytes & 0xFFu) * 100 + ((bytes >> 16) & 0xFFu);
    return true;
}

// Appends the digits at the start of the text to the number and returns their end. More than 19 overflow.
template <class Character>
const Character* AppendDigits(const Character* text, std::uint64_t& number) {
    for (;; ++text) {
        const std::uint32_t digit = std::uint32_t(*text) - u'0'; // wraps below '0'
        if (digit > 9)
            return text;
        number = number * 10 + digit;
    }
}

// The same for decimals, of which there are often many.
const char16_t* AppendDecimals(const char16_t* text, std::uint64_t& number) {
    return AppendDigits(text, number);
}

const char* AppendDecimals(const char* text, std::uint64_t& number) {
    for (std::uint32_t four = 0; ReadFourDigits(text, four); text += 4)
        number = number * 10000 + four;
    return AppendDigits(text, number);
}

// Digits and power of ten are exact as doubles, so that the division rounds once and gives the result of strtod.
template <class Character, class IsEnd>
[[gnu::always_inline]] inline bool ReadShort(const Character* text, IsEnd isEnd, double& number,
                                             DigitCounts& counts) {
    constexpr std::uint64_t kLargestExact = std::uint64_t{1} << std::numeric_limits<double>::digits;
    const bool isNegative = *text == u'-';
    const Character* const begin = isNegative ? text + 1 : text;
    std::uint64_t read = 0;
    const Character* end = AppendDigits(begin, read);
    std::ptrdiff_t digits = end - begin;
    std::ptrdiff_t decimals = 0;
    if (*end == u'.') {
        const Character* const fraction = end + 1;
        end = AppendDecimals(fraction, read);
        decimals = end - fraction;
        digits += decimals;
    }
    if (!isEnd(end) || digits == 0 || digits > kMostDigits || read > kLargestExact)
        return false;
    counts = {static_cast<std::int32_t>(digits - decimals), static_cast<std::int32_t>(decimals)};
    if constexpr (kRoundsTwice) {
        number = ReadNarrowed(text, end);
        return true;
    }
    const double magnitude = static_cast<double>(read) / kPowersOfTen[decimals];
    number = isNegative ? -magnitude : magnitude;
    return true;
}

#ifdef __SIZEOF_INT128__
// How many units of the last decimal make 1, for 0 to 9 decimals.
constexpr std::array<std::uint32_t, 10> kUnits = {1,      10,      100,      1000,      10000,
                                                  100000, 1000000, 10000000, 100000000, 1000000000};
// The units of every smaller number fit into 64 bits, even with nine decimals.
constexpr double kFirstTooLarge = 8589934592.0; // 2^33

// A number in units of its last decimal, rounded as `printf` does: to the nearest, a tie to the even one. Integers
// are enough to be exact, because a double is a whole number divided by a power of two. `bits` are those of a number
// from 0 to below kFirstTooLarge.
std::uint64_t RoundedUnits(std::uint64_t bits, std::uint32_t unitsOfOne) {
    __extension__ using Wide = unsigned __int128;
    constexpr int kMantissaBits = 52;
    constexpr int kExponentOfIntegers = 1075;
    constexpr int kMostProductBits = 83;
    constexpr std::uint64_t kHiddenBit = std::uint64_t{1} << kMantissaBits;
    const int shift = kExponentOfIntegers - static_cast<int>(bits >> kMantissaBits);
    // The number is less than half a unit. This includes subnormals, which have no hidden bit.
    if (shift > kMostProductBits)
        return 0;
    const Wide product = Wide{(bits & (kHiddenBit - 1)) | kHiddenBit} * unitsOfOne;
    const Wide half = Wide{1} << (shift - 1);
    const Wide rest = product & (2 * half - 1);
    const auto units = static_cast<std::uint64_t>(product >> shift);
    const bool roundsUp = rest > half || (rest == half && units % 2 != 0);
    return units + (roundsUp ? 1 : 0);
}

char* WriteDecimals(char* out, std::uint32_t units, int decimals) {
    char* const end = out + decimals;
    for (char* next = end; next != out; units /= 10)
        *--next = static_cast<char>('0' + units % 10);
    return end;
}

// Several times as fast as std::to_chars, which would take most of the time of writing a track.
char* WriteSmallFixed(char* out, double number, int decimals) {
    const std::uint32_t unitsOfOne = kUnits[static_cast<std::size_t>(decimals)];
    const std::uint64_t units = RoundedUnits(std::bit_cast<std::uint64_t>(std::fabs(number)), unitsOfOne);
    if (std::signbit(number))
        *out++ = '-';
    out = std::to_chars(out, out + kLongestFixed, units / unitsOfOne).ptr;
    *out++ = '.';
    return WriteDecimals(out, static_cast<std::uint32_t>(units % unitsOfOne), decimals);
}
#endif

} // namespace

char* WriteFixed(char* out, double number, int decimals) {
#ifdef __SIZEOF_INT128__
    if (std::fabs(number) < kFirstTooLarge && decimals > 0 && decimals < static_cast<int>(kUnits.size()))
        return WriteSmallFixed(out, number, decimals);
#endif
    return std::to_chars(out, out + kLongestFixed, number, std::chars_format::fixed, decimals).ptr;
}

const char* ReadDouble(const char* text, double& number) {
// from_chars is faster, but libc++ 14 has none for doubles, and others multiply doubles, which rounds twice on x87.
#if defined(__cpp_lib_to_chars) && FLT_EVAL_METHOD == 0
    const char* const end = text + std::strlen(text);
    double read = 0.0;
    const std::from_chars_result result = std::from_chars(text, end, read);
    if (result.ec == std::errc() && result.ptr == end) {
        number = read;
        return end;
    }
#endif
    // from_chars reads no leading blank, plus sign, hexadecimal number, or number that is too large.
    char* stop = nullptr;
    number = strtod_l(text, &stop, ClassicLocale());
    return stop;
}

double Multiply(double a, double b) {
    if constexpr (kRoundsTwice)
        return std::fma(a, b, -0.0);
    return a * b;
}

double Add(double a, double b) {
    if constexpr (kRoundsTwice)
        return std::fma(a, 1.0, b);
    return a + b;
}

bool ReadShortDecimal(const char16_t* text, double& number, DigitCounts& counts) {
    return ReadShort(
        text, [](const char16_t* at) { return *at == u'\0'; }, number, counts);
}

bool ReadShortDecimal(const char16_t* text, double& number) {
    DigitCounts counts;
    return ReadShortDecimal(text, number, counts);
}

bool ReadShortDecimal(std::string_view text, double& number, DigitCounts& counts) {
    const char* const textEnd = text.data() + text.size();
    return ReadShort(
        text.data(), [textEnd](const char* at) { return at == textEnd; }, number, counts);
}

bool ReadShortDecimal(std::string_view text, double& number) {
    DigitCounts counts;
    return ReadShortDecimal(text, number, counts);
}

std::int32_t ReadInt32(const char* text) {
    const long read = std::strtol(text, nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long>(read, std::numeric_limits<std::int32_t>::min(),
                                                      std::numeric_limits<std::int32_t>::max()));
}

} // namespace vexaTransferLib::text
