// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace vexaTransferLib::text {

/// How years below 1000 are written: as the bare number in a point's own time, with four digits in all other times.
enum class YearDigits { kBare, kFour };

/// GPX time text of milliseconds since 1970 UTC, whole seconds, in the Gregorian calendar (Julian before
/// 1582-10-15, as ICU has it) with ASCII digits. Empty for a NaN.
///
/// One object can be set to one time after another. The date is computed only when the day changes, which makes the
/// times of a track cheap.
class TimeText {
public:
    TimeText() = default;
    TimeText(double millis, YearDigits yearDigits) { Set(millis, yearDigits); }

    void Set(double millis, YearDigits yearDigits);
    std::string_view View() const { return {buffer_.data(), length_}; }

private:
    static constexpr std::int64_t kNoDay = std::numeric_limits<std::int64_t>::min();

    void SetDay(std::int64_t day, YearDigits yearDigits);
    void SetClock(int hour, int minute, int second);
    void SetFromCalendar(double millis, YearDigits yearDigits);

    std::array<char, 64> buffer_;
    std::size_t length_ = 0;
    // The date at the start of the buffer: its day since 1970, how its year is written, and its length.
    std::int64_t day_ = kNoDay;
    YearDigits yearDigits_ = YearDigits::kBare;
    std::size_t dateLength_ = 0;
};

/// See the public functions of the same names in GpxUtils.h.
bool ReadLongField(long& out, const char* text, unsigned long length, long min, long max);
unsigned long ReadFraction(long& out, const char* text, double scale);
bool ReadTime(const std::string& text, double& millis);

/// What the text of a time says that the time, written in whole seconds, does not.
struct TimeLosses {
    bool hasFraction = false;  ///< of a second
    bool hasNoSuchDay = false; ///< a day that its month does not have: the time is in the next month
    bool hasRest = false;      ///< text after the time that is neither read nor blank

    bool IsAny() const { return hasFraction || hasNoSuchDay || hasRest; }
};

/// The same as ReadTime; \p losses are unchanged for a text that is not a time.
bool ReadTime(const std::string& text, double& millis, TimeLosses& losses);

/// Reads a time of the usual form, "2009-01-15T10:20:30Z" without anything after it: much faster than ReadTime, with
/// the same result. For any other text, whether it is a time or not, returns false and leaves \p millis unchanged.
bool ReadPlainTime(const char16_t* text, double& millis);
bool ReadPlainTime(std::string_view text, double& millis);
/// The same; nothing but the day can be lost. \p losses are unchanged for any other text.
bool ReadPlainTime(const char16_t* text, double& millis, TimeLosses& losses);
bool ReadPlainTime(std::string_view text, double& millis, TimeLosses& losses);

} // namespace vexaTransferLib::text
