// SPDX-License-Identifier: MIT
#include <vexaTrackLib/GeocacheFilter.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>

namespace vexaTrackLib {

namespace {

constexpr double kMillisOfDay = 86'400'000.0;

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// The number at the start of a text, which is taken off; empty without one.
std::optional<double> TakeNumber(std::string_view& text) {
    double number = 0.0;
    const std::from_chars_result read =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (read.ec != std::errc() || !std::isfinite(number))
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    return number;
}

std::optional<std::int64_t> TakeDigits(std::string_view& text, std::size_t count) {
    if (text.size() < count ||
        text.substr(0, count).find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    std::int64_t number = 0;
    std::from_chars(text.data(), text.data() + count, number);
    text.remove_prefix(count);
    return number;
}

bool TakeDash(std::string_view& text) {
    const bool isDash = !text.empty() && text.front() == '-';
    text.remove_prefix(isDash ? 1 : 0);
    return isDash;
}

bool IsLeapYear(std::int64_t year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

std::int64_t DaysOfMonth(std::int64_t year, std::int64_t month) {
    constexpr std::int64_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

/// Days since 1970-01-01 in the Gregorian calendar.
std::int64_t DayNumber(std::int64_t year, std::int64_t month, std::int64_t day) {
    const std::int64_t before = year - 1;
    std::int64_t days = before * 365 + before / 4 - before / 100 + before / 400;
    for (std::int64_t i = 1; i < month; ++i)
        days += DaysOfMonth(year, i);
    constexpr std::int64_t kDaysBefore1970 = 719'162;
    return days + day - 1 - kDaysBefore1970;
}

/// "2024-05-31" as milliseconds since 1970.
std::optional<double> ParseDate(std::string_view text) {
    const std::optional<std::int64_t> year = TakeDigits(text, 4);
    if (!year || *year == 0 || !TakeDash(text))
        return std::nullopt;
    const std::optional<std::int64_t> month = TakeDigits(text, 2);
    if (!month || *month < 1 || *month > 12 || !TakeDash(text))
        return std::nullopt;
    const std::optional<std::int64_t> day = TakeDigits(text, 2);
    if (!day || *day < 1 || *day > DaysOfMonth(*year, *month) || !text.empty())
        return std::nullopt;
    return static_cast<double>(DayNumber(*year, *month, *day)) * kMillisOfDay;
}

double DayOf(double millis) {
    return std::floor(millis / kMillisOfDay);
}

bool IsEqualIgnoringCase(std::string_view text, std::string_view lower) {
    return text.size() == lower.size() &&
           std::equal(text.begin(), text.end(), lower.begin(), [](char one, char other) {
               return (one >= 'A' && one <= 'Z' ? static_cast<char>(one - 'A' + 'a') : one) == other;
           });
}

icu::UnicodeString Folded(const icu::UnicodeString& text) {
    icu::UnicodeString folded(text);
    return folded.foldCase();
}

/// A length in metres, which is also the unit of a number alone.
std::optional<double> ParseLength(std::string_view text) {
    struct Unit {
        std::string_view name;
        double metres;
    };
    constexpr Unit kUnits[] = {{"", 1.0}, {"m", 1.0}, {"km", 1000.0}, {"mi", 1609.344}, {"ft", 0.3048}};
    text = Trimmed(text);
    const std::optional<double> number = TakeNumber(text);
    if (!number || *number < 0.0)
        return std::nullopt;
    text = Trimmed(text);
    const auto* const unit = std::find_if(std::begin(kUnits), std::end(kUnits), [&](const Unit& one) {
        return IsEqualIgnoringCase(text, one.name);
    });
    return unit != std::end(kUnits) ? std::optional(*number * unit->metres) : std::nullopt;
}

} // namespace

/// Reads conditions from left to right.
class GeocacheFilterParser {
public:
    explicit GeocacheFilterParser(std::string_view text) : text_(text) {}

    GeocacheFilter Parse() {
        GeocacheFilter filter;
        do
            filter.conditions_.push_back(TakeCondition());
        while (TakeWord("and"));
        SkipBlanks();
        if (at_ != text_.size())
            Fail(at_, "\"and\" is expected between conditions");
        return filter;
    }

private:
    using Operator = GeocacheFilter::Operator;

    struct OperatorText {
        std::string_view text;
        Operator op;
    };

    [[noreturn]] static void Fail(std::size_t place, const std::string& what) {
        throw std::invalid_argument("Column " + std::to_string(place + 1) + ": " + what + ".");
    }

    void SkipBlanks() {
        while (at_ != text_.size() && IsBlank(text_[at_]))
            ++at_;
    }
    static bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

    std::string_view PeekWord() {
        SkipBlanks();
        std::size_t end = at_;
        while (end != text_.size() && IsLetter(text_[end]))
            ++end;
        return text_.substr(at_, end - at_);
    }
    bool TakeWord(std::string_view lower) {
        const std::string_view word = PeekWord();
        const bool isWord = IsEqualIgnoringCase(word, lower);
        at_ += isWord ? word.size() : 0;
        return isWord;
    }

    GeocacheFilter::Condition TakeCondition() {
        const bool isNegated = TakeWord("not");
        const std::string_view name = PeekWord();
        const std::size_t place = at_;
        if (name.empty())
            Fail(place, "a key is expected, such as \"difficulty\"");
        const std::optional<GeocacheKey> key = FindGeocacheKey(name);
        if (!key)
            throw std::invalid_argument("Column " + std::to_string(place + 1) + ": " +
                                        UnknownGeocacheKey(name));
        at_ += name.size();
        if (KindOf(*key) == GeocacheKeyKind::kFlag)
            return {*key, Operator::kEqual, TakeFlag() != isNegated};
        if (isNegated)
            Fail(place, "\"not\" is for available and archived only");
        const Operator op = TakeOperator(*key);
        SkipBlanks();
        const std::size_t valuePlace = at_;
        return {*key, op, ValueOf(*key, TakeValue(), valuePlace)};
    }

    /// The truth value after a key, which is true when there is none.
    bool TakeFlag() {
        SkipBlanks();
        const bool isUnequal = text_.substr(at_, 2) == "!=";
        if (!isUnequal && text_.substr(at_, 1) != "=")
            return true;
        at_ += isUnequal ? 2 : 1;
        const bool isTrue = TakeWord("true");
        if (!isTrue && !TakeWord("false"))
            Fail(at_, "true or false is expected");
        return isTrue != isUnequal;
    }

    Operator TakeOperator(GeocacheKey key) {
        // A longer one before one that it starts with.
        static constexpr OperatorText kOperators[] = {
            {"!=", Operator::kUnequal}, {"<=", Operator::kLessOrEqual}, {">=", Operator::kGreaterOrEqual},
            {"<", Operator::kLess},     {">", Operator::kGreater},      {"=", Operator::kEqual},
            {"~", Operator::kContains}};
        SkipBlanks();
        for (const OperatorText& one : kOperators) {
            if (text_.substr(at_, one.text.size()) != one.text)
                continue;
            if (one.op == Operator::kContains && KindOf(key) != GeocacheKeyKind::kText)
                Fail(at_, "\"~\" is for texts only");
            at_ += one.text.size();
            return one.op;
        }
        Fail(at_, "one of = != < <= > >= ~ is expected");
    }

    /// Up to the next "and", or what is between quotation marks.
    std::string_view TakeValue() {
        if (at_ != text_.size() && (text_[at_] == '"' || text_[at_] == '\'')) {
            const std::size_t start = at_ + 1;
            const std::size_t end = text_.find(text_[at_], start);
            if (end == std::string_view::npos)
                Fail(at_, "the quotation mark has no partner");
            at_ = end + 1;
            return text_.substr(start, end - start);
        }
        const std::size_t start = at_;
        while (at_ != text_.size() && !IsBeforeAnd())
            ++at_;
        return Trimmed(text_.substr(start, at_ - start));
    }
    bool IsBeforeAnd() const {
        constexpr std::size_t kLength = 5; // " and "
        const std::string_view next = text_.substr(at_, kLength);
        return next.size() == kLength && IsBlank(next.front()) && IsBlank(next.back()) &&
               IsEqualIgnoringCase(next.substr(1, 3), "and");
    }

    static GeocacheValue ValueOf(GeocacheKey key, std::string_view text, std::size_t place) {
        const std::string quoted = "\"" + std::string(text) + "\"";
        std::optional<double> number;
        switch (KindOf(key)) {
        case GeocacheKeyKind::kNumber: {
            std::string_view rest = text;
            number = TakeNumber(rest);
            if (!number || !rest.empty())
                Fail(place, quoted + " is not a number");
            return *number;
        }
        case GeocacheKeyKind::kLength:
            number = ParseLength(text);
            if (!number)
                Fail(place, quoted + " is not a length, such as 500m, 2km or 1mi");
            return *number;
        case GeocacheKeyKind::kDate:
            number = ParseDate(text);
            if (!number)
                Fail(place, quoted + " is not a date, such as 2024-05-31");
            return *number;
        default:
            if (text.empty())
                Fail(place, "a value is expected");
            return icu::UnicodeString::fromUTF8(
                icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

GeocacheFilter GeocacheFilter::Parse(std::string_view text) {
    constexpr std::size_t kMost = 10'000;
    if (text.size() > kMost)
        throw std::invalid_argument("The condition is too long.");
    return GeocacheFilterParser(text).Parse();
}

void GeocacheFilter::Add(const GeocacheFilter& other) {
    conditions_.insert(conditions_.end(), other.conditions_.begin(), other.conditions_.end());
}

namespace {

int Sign(double left, double right) {
    return left < right ? -1 : left > right ? 1 : 0;
}

/// Below 0, 0 or above 0 for a value that is less than, equal to or greater than the wanted one; empty for no number.
std::optional<int> OrderOf(GeocacheKey key, const GeocacheValue& value, const GeocacheValue& wanted) {
    if (const auto* const text = std::get_if<icu::UnicodeString>(&value))
        return Sign(text->caseCompare(std::get<icu::UnicodeString>(wanted), 0), 0);
    const double number = std::get<double>(value);
    if (std::isnan(number))
        return std::nullopt;
    const bool isDate = KindOf(key) == GeocacheKeyKind::kDate;
    return isDate ? Sign(DayOf(number), DayOf(std::get<double>(wanted)))
                  : Sign(number, std::get<double>(wanted));
}

} // namespace

bool GeocacheFilter::IsMet(const Condition& condition, const Geocache& cache) {
    const GeocacheValue value = ValueOf(cache, condition.key);
    if (value.index() == 0)
        return false;
    if (const auto* const flag = std::get_if<bool>(&value))
        return *flag == std::get<bool>(condition.value);
    if (condition.op == Operator::kContains)
        return Folded(std::get<icu::UnicodeString>(value))
                   .indexOf(Folded(std::get<icu::UnicodeString>(condition.value))) >= 0;
    const std::optional<int> order = OrderOf(condition.key, value, condition.value);
    if (!order)
        return false;
    switch (condition.op) {
    case Operator::kEqual:
        return *order == 0;
    case Operator::kUnequal:
        return *order != 0;
    case Operator::kLess:
        return *order < 0;
    case Operator::kLessOrEqual:
        return *order <= 0;
    case Operator::kGreater:
        return *order > 0;
    default:
        return *order >= 0;
    }
}

bool GeocacheFilter::Accepts(const Geocache& cache) const {
    return std::all_of(conditions_.begin(), conditions_.end(),
                       [&](const Condition& condition) { return IsMet(condition, cache); });
}

} // namespace vexaTrackLib
