// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/TimeText.h>

#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/CivilDate.h>
#include <vexaTransferLib/text/DecimalDigits.h>
#include <vexaTransferLib/text/NumberText.h>

#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace vexaTransferLib::text {

namespace {

constexpr std::int64_t kMillisPerSecond = 1000;
constexpr std::int64_t kMillisPerMinute = 60 * kMillisPerSecond;
constexpr std::int64_t kMillisPerHour = 60 * kMillisPerMinute;
constexpr std::int64_t kMillisPerDay = 24 * kMillisPerHour;

// Between these times the arithmetic below and ICU's calendar agree. Before the first, ICU gives dates of the Julian
// calendar.
constexpr double kFirstGregorianMillis = -12219292800000.0;
constexpr double kLastArithmeticMillis = 1.8e17;

constexpr long kFirstYear = 1970;

// The part of a time text that has not been read. Never points past the zero that ends the text.
class TimeReader {
public:
    explicit TimeReader(const std::string& text) : next_(text.data()), end_(text.data() + text.size()) {}

    std::ptrdiff_t Remaining() const { return end_ - next_; }
    bool AtEnd() const { return next_ == end_; }
    char Peek() const { return *next_; }

    bool Skip(char expected) {
        if (AtEnd() || *next_ != expected)
            return false;
        ++next_;
        return true;
    }

    // A field may be longer than the rest of the text: the terminating zero then ends it.
    bool Field(long& out, unsigned long length, long min, long max) {
        if (!ReadLongField(out, next_, length, min, max))
            return false;
        next_ += std::min<std::ptrdiff_t>(Remaining(), static_cast<std::ptrdiff_t>(length));
        return true;
    }

    bool Fraction(long& out, double scale) {
        const unsigned long digits = ReadFraction(out, next_, scale);
        next_ += digits;
        return digits > 0;
    }

    /// True when a fraction at this place is a whole number of seconds.
    bool IsWholeSeconds(std::uint64_t secondsOfOne) const {
        // A fraction with more digits, the last of which is not 0, is never one.
        constexpr std::ptrdiff_t kMostDigits = 6;
        std::ptrdiff_t length = std::ptrdiff_t(std::strspn(next_, "0123456789"));
        while (length > 0 && next_[length - 1] == '0')
            --length;
        std::uint64_t scale = 1;
        std::uint64_t fraction = 0;
        for (const char* at = next_; at != next_ + std::min(length, kMostDigits); ++at, scale *= 10)
            fraction = fraction * 10 + static_cast<std::uint64_t>(*at - '0');
        return length <= kMostDigits && fraction * secondsOfOne % scale == 0;
    }

    bool HasMoreThanBlanks() const { return next_ + std::strspn(next_, " \t\r\n") != end_; }

private:
    const char* next_;
    const char* end_;
};

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

struct TimeFields {
    long year = 0;
    long month = 0;
    long day = 0;
    long hour = 0;
    long minute = 0;
    long second = 0;
    long millis = 0;
    long extraSeconds = 0;
    long offsetMinutes = 0;
    bool hasFraction = false; // of a second
};

bool ReadDate(TimeReader& text, TimeFields& fields) {
    if (!text.Field(fields.year, 4, kFirstYear, 9999))
        return false;
    text.Skip('-');
    if (text.Remaining() < 4 || !text.Field(fields.month, 2, 1, 12))
        return false;
    text.Skip('-');
    return text.Remaining() >= 4 && text.Field(fields.day, 2, 1, 31);
}

bool ReadSeconds(TimeReader& text, TimeFields& fields) {
    if (text.Remaining() < 2)
        return true;
    if (!text.Field(fields.second, 2, 0, 59))
        return false;
    if (!text.Skip('.'))
        return true;
    fields.hasFraction = !text.IsWholeSeconds(1);
    return text.Fraction(fields.millis, 1000.0);
}

bool ReadMinutes(TimeReader& text, TimeFields& fields) {
    if (text.Remaining() < 2)
        return true;
    if (!text.Field(fields.minute, 2, 0, 59))
        return false;
    if (!text.Skip(':') && text.Skip('.')) {
        fields.hasFraction = !text.IsWholeSeconds(60);
        return text.Fraction(fields.extraSeconds, 60.0);
    }
    return ReadSeconds(text, fields);
}

bool ReadClock(TimeReader& text, TimeFields& fields) {
    if (!text.Skip('T') || !text.Field(fields.hour, 2, 0, 24))
        return false;
    if (!text.Skip(':') && text.Skip('.')) {
        fields.hasFraction = !text.IsWholeSeconds(3600);
        return text.Fraction(fields.extraSeconds, 3600.0);
    }
    return ReadMinutes(text, fields);
}

// Text after "Z" or after a complete offset is ignored.
bool ReadZone(TimeReader& text, TimeFields& fields) {
    if (text.Skip('Z') || text.AtEnd())
        return true;
    const char sign = text.Peek();
    if ((sign != '+' && sign != '-') || text.Remaining() < 3)
        return false;
    text.Skip(sign);
    long hours = 0;
    long minutes = 0;
    if (!text.Field(hours, 2, 0, 24))
        return false;
    text.Skip(':');
    if (text.Remaining() >= 2 && !text.Field(minutes, 2, 0, 59))
        return false;
    fields.offsetMinutes = (sign == '-' ? -1 : 1) * (hours * 60 + minutes);
    return true;
}

// Reads a two-digit field and the mark that must follow it; never past a zero that ends the text.
bool PlainField(const char16_t*& text, long& field, long max, char16_t mark) {
    if (!IsDigit(text[0]) || !IsDigit(text[1]) || text[2] != mark)
        return false;
    field = (text[0] - u'0') * 10 + (text[1] - u'0');
    text += 3;
    return field <= max;
}

// A day past the end of the month, hour 24 and 1000 ms continue into the next month, day and second.
double ToMillis(const TimeFields& fields) {
    const std::int64_t days = DaysFromCivil(fields.year, static_cast<int>(fields.month), 1) + fields.day - 1;
    return static_cast<double>(days * kMillisPerDay + fields.hour * kMillisPerHour +
                               (fields.minute - fields.offsetMinutes) * kMillisPerMinute +
                               (fields.second + fields.extraSeconds) * kMillisPerSecond + fields.millis);
}

bool HasNoSuchDay(const TimeFields& fields) {
    constexpr long kShortestMonth = 28;
    return fields.day > kShortestMonth &&
           fields.day > DaysInMonth(fields.year, static_cast<int>(fields.month));
}

bool AreInRange(const TimeFields& fields) {
    return fields.year >= kFirstYear && fields.month != 0 && fields.day != 0;
}

// Reads a time of the usual form and moves \p text after its "Z".
bool ReadPlainFields(const char16_t*& text, TimeFields& fields) {
    if (!IsDigit(text[0]) || !IsDigit(text[1]))
        return false;
    const long century = (text[0] - u'0') * 10 + (text[1] - u'0');
    text += 2;
    if (!PlainField(text, fields.year, 99, u'-') || !PlainField(text, fields.month, 12, u'-') ||
        !PlainField(text, fields.day, 31, u'T') || !PlainField(text, fields.hour, 24, u':') ||
        !PlainField(text, fields.minute, 59, u':') || !PlainField(text, fields.second, 59, u'Z'))
        return false;
    fields.year += century * 100;
    return AreInRange(fields);
}

constexpr std::string_view kPlainForm = "0000-00-00T00:00:00Z";

// A part of a plain time: several bytes at once, of which the digits become 0 to 9 and the marks 0.
template <class Bytes, std::size_t start>
class PlainPart {
public:
    explicit PlainPart(const char* text) {
        std::memcpy(&bytes_, text + start, sizeof bytes_);
        bytes_ -= kForm;
        isPlain_ = (((bytes_ + kUpToHighest) | bytes_) & kHighestBits) == 0;
        bytes_ = bytes_ * 10 + (bytes_ >> 8);
    }

    // True when it has digits and marks where a plain time has them. A byte that is too small or too large shows in its
    // highest bit, or in that of one before it.
    bool IsPlain() const { return isPlain_; }
    // The number of the two digits at this place of the part.
    long Number(unsigned place) const { return static_cast<long>((bytes_ >> (8 * place)) & 0xFF); }

private:
    template <class ValueOf>
    static constexpr Bytes ForEachByte(ValueOf valueOf) {
        Bytes bytes = 0;
        for (std::size_t i = 0; i < sizeof bytes; ++i)
            bytes |= static_cast<Bytes>(static_cast<Bytes>(valueOf(kPlainForm[start + i])) << (8 * i));
        return bytes;
    }

    static constexpr Bytes kForm = ForEachByte([](char byte) { return byte; });
    // Added to a byte that is right, they give at most 0x7F.
    static constexpr Bytes kUpToHighest = ForEachByte([](char byte) { return byte == '0' ? 0x76 : 0x7F; });
    static constexpr Bytes kHighestBits = ForEachByte([](char) { return 0x80; });

    Bytes bytes_ = 0;
    bool isPlain_;
};

// The same for as many bytes as a plain time has; false on a machine that has another order of bytes.
bool ReadPlainFields(const char* text, TimeFields& fields) {
    if constexpr (std::endian::native != std::endian::little)
        return false;
    const PlainPart<std::uint64_t, 0> date(text);
    const PlainPart<std::uint64_t, 8> clock(text);
    const PlainPart<std::uint32_t, 16> seconds(text);
    if (!date.IsPlain() || !clock.IsPlain() || !seconds.IsPlain())
        return false;
    fields.year = date.Number(0) * 100 + date.Number(2);
    fields.month = date.Number(5);
    fields.day = clock.Number(0);
    fields.hour = clock.Number(3);
    fields.minute = clock.Number(6);
    fields.second = seconds.Number(1);
    return fields.month <= 12 && fields.day <= 31 && fields.hour <= 24 && fields.minute <= 59 &&
           fields.second <= 59 && AreInRange(fields);
}

char* AppendYear(char* out, std::int64_t year, std::ptrdiff_t width) {
    std::array<char, 24> digits;
    if (year < 0)
        *out++ = '-';
    const char* const end =
        std::to_chars(digits.data(), digits.data() + digits.size(), year < 0 ? -year : year).ptr;
    out = std::fill_n(out, std::max<std::ptrdiff_t>(0, width - (end - digits.data())), '0');
    return std::copy(static_cast<const char*>(digits.data()), end, out);
}

// Two digits and a mark.
char* AppendPart(char* out, int value, char mark) {
    *out++ = static_cast<char>('0' + value / 10);
    *out++ = static_cast<char>('0' + value % 10);
    *out++ = mark;
    return out;
}

char* AppendDate(char* out, const CivilDate& date, YearDigits yearDigits) {
    out = AppendYear(out, date.year, yearDigits == YearDigits::kFour ? 4 : 1);
    *out++ = '-';
    out = AppendPart(out, date.month, '-');
    return AppendPart(out, date.day, 'T');
}

char* AppendClock(char* out, int hour, int minute, int second) {
    out = AppendPart(out, hour, ':');
    out = AppendPart(out, minute, ':');
    return AppendPart(out, second, 'Z');
}

// Reads a field of digits only, as nearly every one is. The C library's function is slow for these.
bool ReadDigits(long& out, const char* text, unsigned long length) {
    constexpr unsigned long kMostDigits = 9;
    return length != 0 && length <= kMostDigits && ReadDecimalDigits({text, length}, out);
}

} // namespace

void TimeText::Set(double millis, YearDigits yearDigits) {
    if (!(millis >= kFirstGregorianMillis && millis <= kLastArithmeticMillis)) {
        SetFromCalendar(millis, yearDigits);
        return;
    }
    const auto whole = static_cast<std::int64_t>(std::floor(millis));
    std::int64_t day = whole / kMillisPerDay;
    std::int64_t rest = whole % kMillisPerDay;
    if (rest < 0) {
        rest += kMillisPerDay;
        --day;
    }
    if (day != day_ || yearDigits != yearDigits_)
        SetDay(day, yearDigits);
    const int second = static_cast<int>(rest / kMillisPerSecond);
    SetClock(second / 3600, second / 60 % 60, second % 60);
}

void TimeText::SetDay(std::int64_t day, YearDigits yearDigits) {
    char* const date = buffer_.data();
    dateLength_ = static_cast<std::size_t>(AppendDate(date, CivilFromDays(day), yearDigits) - date);
    day_ = day;
    yearDigits_ = yearDigits;
}

void TimeText::SetClock(int hour, int minute, int second) {
    char* const clock = buffer_.data() + dateLength_;
    length_ = dateLength_ + static_cast<std::size_t>(AppendClock(clock, hour, minute, second) - clock);
}

// The locale is fixed because the default one may count the years in another way. A NaN, which calendars do
// not accept, gives an empty text.
void TimeText::SetFromCalendar(double millis, YearDigits yearDigits) {
    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(*icu::TimeZone::getGMT(), icu::Locale::getUS(), status);
    calendar.setTime(millis, status);
    CivilDate date = {};
    date.year = calendar.get(UCAL_YEAR, status);
    date.month = calendar.get(UCAL_MONTH, status) + 1;
    date.day = calendar.get(UCAL_DAY_OF_MONTH, status);
    const int hour = calendar.get(UCAL_HOUR_OF_DAY, status);
    const int minute = calendar.get(UCAL_MINUTE, status);
    const int second = calendar.get(UCAL_SECOND, status);
    // A lack of memory must not look like a NaN, because the time would then silently be left out.
    if (status == U_MEMORY_ALLOCATION_ERROR)
        throw std::bad_alloc();
    length_ = 0;
    if (U_FAILURE(status))
        return;
    char* const start = buffer_.data();
    day_ = kNoDay;
    dateLength_ = static_cast<std::size_t>(AppendDate(start, date, yearDigits) - start);
    SetClock(hour, minute, second);
}

bool ReadLongField(long& out, const char* text, unsigned long length, long min, long max) {
    constexpr unsigned long kFieldSize = 32;
    if (!SoftCheck(text != nullptr && length < kFieldSize, sites::kLongField))
        return false;
    long read = 0;
    if (!ReadDigits(read, text, length)) {
        char field[kFieldSize] = {};
        std::strncpy(field, text, length);
        char* stop = nullptr;
        read = std::strtol(field, &stop, 10);
        if (*stop != '\0')
            return false;
    }
    if (read < min || read > max)
        return false;
    out = read;
    return true;
}

unsigned long ReadFraction(long& out, const char* text, double scale) {
    constexpr std::size_t kLimit = 30;
    if (!SoftCheck(text != nullptr && std::strlen(text) < kLimit, sites::kFraction))
        return 0;
    char fraction[kLimit + 2] = "0.";
    const std::size_t digits = std::strspn(text, "0123456789");
    if (digits == 0)
        return 0;
    std::memcpy(fraction + 2, text, digits);
    fraction[2 + digits] = '\0';
    double value = 0.0;
    ReadDouble(fraction, value);
    // The library's own scales are 60 to 3600; the bounds matter only to a host that passes another.
    constexpr double kLongBound = sizeof(long) > sizeof(std::int32_t) ? 9.2e18 : 2147483647.0;
    // Volatile, so that every processor rounds the sum to a double: one just below a whole number becomes that number.
    const volatile double rounded = Multiply(value, scale) + 0.5;
    out = static_cast<long>(std::fmin(std::fmax(rounded, -kLongBound), kLongBound));
    return digits;
}

bool ReadPlainTime(const char16_t* text, double& millis) {
    TimeLosses losses;
    return ReadPlainTime(text, millis, losses);
}

bool ReadPlainTime(std::string_view text, double& millis) {
    TimeLosses losses;
    return ReadPlainTime(text, millis, losses);
}

bool ReadPlainTime(const char16_t* text, double& millis, TimeLosses& losses) {
    TimeFields fields;
    if (!ReadPlainFields(text, fields) || *text != u'\0')
        return false;
    millis = ToMillis(fields);
    if (HasNoSuchDay(fields))
        losses.hasNoSuchDay = true;
    return true;
}

bool ReadPlainTime(std::string_view text, double& millis, TimeLosses& losses) {
    TimeFields fields;
    if (text.size() != kPlainForm.size() || !ReadPlainFields(text.data(), fields))
        return false;
    millis = ToMillis(fields);
    if (HasNoSuchDay(fields))
        losses.hasNoSuchDay = true;
    return true;
}

bool ReadTime(const std::string& text, double& millis) {
    TimeLosses losses;
    return ReadTime(text, millis, losses);
}

bool ReadTime(const std::string& text, double& millis, TimeLosses& losses) {
    constexpr std::size_t kLongestRefused = 10;
    if (!SoftCheck(!text.empty(), sites::kGpxTime) || text.size() <= kLongestRefused)
        return false;
    TimeReader reader(text);
    TimeFields fields;
    if (!ReadDate(reader, fields) || !ReadClock(reader, fields) || !ReadZone(reader, fields))
        return false;
    millis = ToMillis(fields);
    losses = {fields.hasFraction, HasNoSuchDay(fields), reader.HasMoreThanBlanks()};
    return true;
}

} // namespace vexaTransferLib::text
