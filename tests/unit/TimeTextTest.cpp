// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/TimeText.h>

#include "support/IcuMemory.h"
#include "support/LocaleScopes.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>
#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <string_view>
#include <vector>

using vexaTransferLib::testing_support::CLocaleScope;
using vexaTransferLib::testing_support::IcuLocaleScope;
using vexaTransferLib::testing_support::RefusedIcuMemory;
using vexaTransferLib::testing_support::Utf8;
using vexaTransferLib::text::ReadTime;
using vexaTransferLib::text::TimeText;
using vexaTransferLib::text::YearDigits;

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kFirstGregorian = -12219292800000.0; // 1582-10-15
constexpr double kDay = 86400000.0;

std::string Bare(double millis) {
    return std::string(TimeText(millis, YearDigits::kBare).View());
}
std::string Four(double millis) {
    return std::string(TimeText(millis, YearDigits::kFour).View());
}

// ICU's own calendar and date format, in a fixed locale.
class IcuTimes {
public:
    IcuTimes()
        : calendar_(*icu::TimeZone::getGMT(), icu::Locale::getUS(), status_),
          format_(u"yyyy-MM-dd'T'HH:mm:ss'Z'", icu::Locale::getUS(), status_) {
        format_.setTimeZone(*icu::TimeZone::getGMT());
    }

    std::string Bare(double millis) {
        calendar_.setTime(millis, status_);
        std::array<char, 64> text = {};
        std::snprintf(text.data(), text.size(), "%d-%.2d-%.2dT%.2d:%.2d:%.2dZ", Get(UCAL_YEAR),
                      Get(UCAL_MONTH) + 1, Get(UCAL_DAY_OF_MONTH), Get(UCAL_HOUR_OF_DAY), Get(UCAL_MINUTE),
                      Get(UCAL_SECOND));
        return text.data();
    }

    std::string Four(double millis) {
        icu::UnicodeString text;
        return Utf8(format_.format(millis, text));
    }

    bool IsFine() const { return U_SUCCESS(status_); }

private:
    int Get(UCalendarDateFields field) { return calendar_.get(field, status_); }

    UErrorCode status_ = U_ZERO_ERROR;
    icu::GregorianCalendar calendar_;
    icu::SimpleDateFormat format_;
};

void ExpectAsIcu(IcuTimes& icuTimes, double millis) {
    ASSERT_EQ(Bare(millis), icuTimes.Bare(millis)) << std::hexfloat << millis;
    ASSERT_EQ(Four(millis), icuTimes.Four(millis)) << std::hexfloat << millis;
    ASSERT_TRUE(icuTimes.IsFine());
}

// Reads a text in both forms, which must give the same.
bool ReadPlainTime(const std::u16string& text, double& millis) {
    const double before = millis;
    const bool isRead = vexaTransferLib::text::ReadPlainTime(text.c_str(), millis);
    const std::string narrow = Utf8(text.c_str());
    // A block of exactly its size, so that a sanitizer reports reading past the end.
    const std::vector<char> buffer(narrow.begin(), narrow.end());
    double ofBytes = before;
    EXPECT_EQ(vexaTransferLib::text::ReadPlainTime(std::string_view(buffer.data(), buffer.size()), ofBytes),
              isRead)
        << narrow;
    EXPECT_EQ(ofBytes, millis) << narrow;
    return isRead;
}

} // namespace

TEST(TimeTextTest, PlainTimesAreReadAtOnce) {
    for (const char* text :
         {"2009-01-15T10:20:30Z", "1970-01-01T00:00:00Z", "9999-12-31T23:59:59Z", "2000-02-29T00:00:00Z",
          "2100-02-28T23:59:59Z", "2009-02-31T00:00:00Z", "2009-12-31T24:59:59Z", "2400-03-01T12:00:00Z"}) {
        const std::string narrow = text;
        double expected = -1.0;
        double millis = -2.0;
        EXPECT_TRUE(ReadTime(narrow, expected)) << text;
        EXPECT_TRUE(ReadPlainTime(std::u16string(narrow.begin(), narrow.end()), millis)) << text;
        EXPECT_EQ(millis, expected) << text;
    }
}

TEST(TimeTextTest, PlainTimesOfEveryDayAreReadAsByTheGeneralReader) {
    for (int day = 0; day < 200000; ++day) {
        const std::string text = Four(day * kDay + day % 86400 * 1000.0);
        double expected = -1.0;
        double millis = -2.0;
        ASSERT_TRUE(ReadTime(text, expected)) << text;
        ASSERT_TRUE(ReadPlainTime(std::u16string(text.begin(), text.end()), millis)) << text;
        ASSERT_EQ(millis, expected) << text;
    }
}

TEST(TimeTextTest, OtherTextsAreNoPlainTimes) {
    for (const char16_t* text :
         {u"2009-01-15T10:20:30",       u"2009-01-15T10:20:30z",      u"2009-01-15T10:20:30Z ",
          u"2009-01-15T10:20:30ZZ",     u" 2009-01-15T10:20:30Z",     u"2009-01-15 10:20:30Z",
          u"2009-01-15T10:20:30.5Z",    u"2009-01-15T10:20:30+00Z",   u"2009-01-15T10:20Z",
          u"20090115T102030Z",          u"1969-12-31T23:59:59Z",      u"0000-01-01T00:00:00Z",
          u"2009-00-15T10:20:30Z",      u"2009-13-15T10:20:30Z",      u"2009-01-00T10:20:30Z",
          u"2009-01-32T10:20:30Z",      u"2009-01-15T25:20:30Z",      u"2009-01-15T10:60:30Z",
          u"2009-01-15T10:20:60Z",      u"12009-01-15T10:20:30Z",     u"+209-01-15T10:20:30Z",
          u"2009-01-15T10:20:3\u0660Z", u"2009-01-15T10:20:30\u015A", u"20a0-01-01T00:00:00Z",
          u"200a-01-01T00:00:00Z",      u"2a09-01-01T00:00:00Z",      u"a009-01-01T00:00:00Z",
          u"2009-0a-01T00:00:00Z"}) {
        double millis = -2.0;
        EXPECT_FALSE(ReadPlainTime(text, millis)) << Utf8(text);
        EXPECT_EQ(millis, -2.0) << "nothing is read";
    }
}

TEST(TimeTextTest, AnyOtherByteInAPlainTimeIsReadInBothFormsAlike) {
    const std::u16string whole = u"2009-01-15T10:20:30Z";
    int read = 0;
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (char16_t unit = 1; unit < 0x180; ++unit) {
            std::u16string text = whole;
            text[at] = unit;
            double millis = -2.0;
            read += ReadPlainTime(text, millis) ? 1 : 0;
        }
    EXPECT_GT(read, 60);
    EXPECT_LT(read, 200);
}

TEST(TimeTextTest, AYearAloneIsNoTime) {
    double millis = -2.0;
    EXPECT_FALSE(ReadTime("2020-T12:34:56Z", millis));
    EXPECT_EQ(millis, -2.0) << "nothing is read";
}

TEST(TimeTextTest, NoPartOfAPlainTimeIsOne) {
    const std::u16string whole = u"2009-01-15T10:20:30Z";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        // A block of exactly its size, so that a sanitizer reports reading past the end.
        std::vector<char16_t> text(length + 1);
        std::copy_n(whole.begin(), length, text.begin());
        double millis = -2.0;
        EXPECT_FALSE(vexaTransferLib::text::ReadPlainTime(text.data(), millis)) << length;
        EXPECT_FALSE(ReadPlainTime(whole.substr(0, length), millis)) << length;
    }
}

TEST(TimeTextTest, WholeSecondsOfTheGregorianCalendar) {
    const struct {
        double millis;
        const char* expected;
        const char* reason;
    } rows[] = {
        {0.0, "1970-01-01T00:00:00Z", "the epoch"},
        {-0.0, "1970-01-01T00:00:00Z", "the epoch"},
        {1500.0, "1970-01-01T00:00:01Z", "cut, not rounded"},
        {999.999, "1970-01-01T00:00:00Z", "cut, not rounded"},
        {-0.5, "1969-12-31T23:59:59Z", "fractions before the epoch floor"},
        {-5e-324, "1969-12-31T23:59:59Z", "fractions before the epoch floor, however small"},
        {-1.0, "1969-12-31T23:59:59Z", "just before the epoch"},
        {-1000.0, "1969-12-31T23:59:59Z", "a whole second before the epoch"},
        {-1000.5, "1969-12-31T23:59:58Z", "fractions before the epoch floor"},
        {1232014830000.0, "2009-01-15T10:20:30Z", "ordinary"},
        {951782400000.0, "2000-02-29T00:00:00Z", "a century that is a leap year"},
        {4107456000000.0, "2100-02-28T00:00:00Z", "a century that is none"},
        {4107542400000.0, "2100-03-01T00:00:00Z", "a century that is none"},
        {253402300799999.0, "9999-12-31T23:59:59Z", "four digits"},
        {253402300800000.0, "10000-01-01T00:00:00Z", "five digits"},
        {kFirstGregorian, "1582-10-15T00:00:00Z", "the first day of the calendar"},
        {kFirstGregorian - 0.5, "1582-10-04T23:59:59Z", "Julian before"},
        {kFirstGregorian - 1.0, "1582-10-04T23:59:59Z", "Julian before"},
        {1.8e17, "5705942-12-07T08:00:00Z", "the end of the arithmetic"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Bare(row.millis), row.expected) << row.reason;
        EXPECT_EQ(Four(row.millis), row.expected) << row.reason;
    }
}

TEST(TimeTextTest, YearsBelow1000DifferInTheirDigits) {
    const double year999 = -30610224000000.0;
    IcuTimes icuTimes;
    EXPECT_EQ(Bare(year999), "999-12-27T00:00:00Z");
    EXPECT_EQ(Four(year999), "0999-12-27T00:00:00Z");
    ExpectAsIcu(icuTimes, year999);
    EXPECT_EQ(Bare(-62135769600000.0), "1-01-01T00:00:00Z");
    EXPECT_EQ(Four(-62135769600000.0), "0001-01-01T00:00:00Z");
}

TEST(TimeTextTest, NanHasNoText) {
    EXPECT_EQ(Bare(kNan), "");
    EXPECT_EQ(Four(kNan), "");
    EXPECT_EQ(Bare(-kNan), "");
}

TEST(TimeTextTest, HugeTimesAreClamped) {
    IcuTimes icuTimes;
    for (const double millis : {kInfinity, -kInfinity, std::numeric_limits<double>::max(),
                                std::numeric_limits<double>::lowest(), 1e30, -1e30, 1.9e17}) {
        EXPECT_EQ(Bare(millis), icuTimes.Bare(millis));
        EXPECT_EQ(Four(millis), Bare(millis));
    }
    EXPECT_EQ(Bare(kInfinity).substr(0, 13), "5828963-12-20");
}

TEST(TimeTextTest, EqualsIcuAtItsBorders) {
    IcuTimes icuTimes;
    for (const double border : {kFirstGregorian, 0.0, 1.8e17, 253402300800000.0, -62135769600000.0}) {
        for (const double offset : {-kDay, -1000.0, -1.0, 0.0, 1.0, 999.0, 1000.0, kDay})
            ExpectAsIcu(icuTimes, border + offset);
        // Next to 0 ICU's own calendar gives up: the rest of the day rounds to a whole one.
        if (border != 0.0) {
            ExpectAsIcu(icuTimes, std::nextafter(border, -kInfinity));
            ExpectAsIcu(icuTimes, std::nextafter(border, kInfinity));
        }
    }
}

TEST(TimeTextTest, EqualsIcuOnEveryDayOfFourCenturies) {
    IcuTimes icuTimes;
    for (int day = -80000; day < 80000; ++day)
        ExpectAsIcu(icuTimes, day * kDay + 86399999.0);
}

TEST(TimeTextTest, EqualsIcuOnRandomTimes) {
    IcuTimes icuTimes;
    std::mt19937_64 random(20090115);
    std::uniform_real_distribution<double> ordinary(kFirstGregorian, 4e12);
    std::uniform_real_distribution<double> arithmetic(kFirstGregorian, 1.8e17);
    std::uniform_real_distribution<double> julian(-1.8e17, kFirstGregorian);
    std::uniform_real_distribution<double> border(kFirstGregorian - 40 * kDay, kFirstGregorian + 40 * kDay);
    std::uniform_real_distribution<double> epoch(-5000.0, 5000.0);
    for (int i = 0; i < 10000; ++i) {
        for (auto* range : {&ordinary, &arithmetic, &julian, &border, &epoch})
            ExpectAsIcu(icuTimes, (*range)(random));
    }
}

// One object for all times, so that each finds the date of another in the buffer.
TEST(TimeTextTest, SettingItAgainGivesTheTextOfANewOne) {
    constexpr double kTimes[] = {0.0,
                                 kDay - 1.0,
                                 kDay,
                                 -1.0,
                                 kFirstGregorian,
                                 kFirstGregorian - 1.0,
                                 -30610224000000.0,
                                 253402300800000.0,
                                 1.8e17,
                                 kInfinity,
                                 kNan};
    TimeText text;
    EXPECT_EQ(text.View(), "");
    for (const double first : kTimes) {
        for (const double second : kTimes) {
            for (const YearDigits digits : {YearDigits::kBare, YearDigits::kFour, YearDigits::kBare}) {
                text.Set(first, digits);
                EXPECT_EQ(text.View(), TimeText(first, digits).View()) << first;
                text.Set(second, digits);
                EXPECT_EQ(text.View(), TimeText(second, digits).View()) << first << ", " << second;
            }
        }
    }
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> days(kFirstGregorian - 3 * kDay, kFirstGregorian + 3 * kDay);
    for (int i = 0; i < 10000; ++i) {
        const double millis = days(random);
        const YearDigits digits = random() % 2 == 0 ? YearDigits::kBare : YearDigits::kFour;
        text.Set(millis, digits);
        ASSERT_EQ(text.View(), TimeText(millis, digits).View()) << std::hexfloat << millis;
    }
}

TEST(TimeTextTest, NoLocaleShows) {
    constexpr double kJulian = -30610224000000.0;
    const std::string expected = Four(1232014830000.0) + Bare(kJulian) + Four(kJulian);
    for (const char* name :
         {"th_TH_TRADITIONAL", "th_TH@calendar=buddhist", "ar_EG", "fa_IR", "ja_JP@calendar=japanese"}) {
        const IcuLocaleScope scope(name);
        EXPECT_EQ(Four(1232014830000.0) + Bare(kJulian) + Four(kJulian), expected) << name;
    }
    const CLocaleScope german("de_DE.UTF-8");
    if (!german.IsInstalled())
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed; the ICU locales were checked";
    EXPECT_EQ(Four(1232014830000.0) + Bare(kJulian) + Four(kJulian), expected);
}

TEST(TimeTextTest, ACalendarWithoutMemoryIsReportedAndNotTakenForANaN) {
    constexpr double kJulian = -30610224000000.0;
    const std::string expected = Four(kJulian);
    bool thrown = false;
    for (std::size_t call = 1;; ++call) {
        const RefusedIcuMemory refused = RefusedIcuMemory::AtCall(call);
        try {
            EXPECT_EQ(Four(kJulian), expected) << call;
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
        if (refused.Refused() == 0)
            break;
    }
    EXPECT_TRUE(thrown);
}
