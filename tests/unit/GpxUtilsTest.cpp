// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxUtils.h>

#include "support/ContractChecks.h"
#include "support/IcuMemory.h"
#include "support/LocaleScopes.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <random>
#include <string>

using namespace vexaTransferLib;
using testing_support::CaptureStandardError;
using testing_support::CLocaleScope;
using testing_support::IcuLocaleScope;
using testing_support::RefusedIcuMemory;
using testing_support::Utf8;

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxUtils.cpp";
constexpr double kUntouched = -77.0;
constexpr double kMorning = 1232014830000.0; // 2009-01-15T10:20:30Z
constexpr double kSecond = 1000.0;
constexpr double kMinute = 60.0 * kSecond;
constexpr double kHour = 60.0 * kMinute;

icu::UnicodeString Bogus() {
    icu::UnicodeString bogus;
    bogus.setToBogus();
    return bogus;
}

// The text in a block of memory of exactly its size, so that reading past its end is an error.
std::unique_ptr<char[]> Exact(const std::string& text) {
    auto copy = std::make_unique<char[]>(text.size() + 1);
    std::memcpy(copy.get(), text.c_str(), text.size() + 1);
    return copy;
}

std::unique_ptr<icu::GregorianCalendar> GmtCalendar() {
    UErrorCode status = U_ZERO_ERROR;
    auto calendar =
        std::make_unique<icu::GregorianCalendar>(*icu::TimeZone::getGMT(), icu::Locale::getUS(), status);
    EXPECT_TRUE(U_SUCCESS(status));
    calendar->clear();
    return calendar;
}

std::string GpxTimeOf(double millis) {
    UErrorCode status = U_ZERO_ERROR;
    const auto calendar = GmtCalendar();
    calendar->setTime(millis, status);
    return Utf8(ToGpxTime(calendar.get()));
}

} // namespace

TEST(GpxUtilsTest, EscapesTheFiveSpecialCharactersAndNothingElse) {
    const char16_t zero[] = {u'a', 0, u'&'};
    const char16_t lone[] = {0xD800, u'<', 0xDC00};
    const struct {
        icu::UnicodeString text;
        icu::UnicodeString expected;
        const char* reason;
    } rows[] = {
        {u"", u"", "empty"},
        {u"plain", u"plain", "nothing to escape"},
        {u"&", u"&amp;", "ampersand"},
        {u"<", u"&lt;", "less than"},
        {u">", u"&gt;", "greater than"},
        {u"\"", u"&quot;", "double quote"},
        {u"'", u"&apos;", "apostrophe"},
        {u"&&<<", u"&amp;&amp;&lt;&lt;", "runs of them"},
        {u"a&b<c>d\"e'f", u"a&amp;b&lt;c&gt;d&quot;e&apos;f", "text between them"},
        {u"&amp;", u"&amp;amp;", "entities are escaped again"},
        {u"&#10;", u"&amp;#10;", "references are escaped again"},
        {u"\x01\t\r\n\x1F\x7F", u"\x01\t\r\n\x1F\x7F", "control characters stay"},
        {u"\u00E9\u201C\U0001F30D\uFF1C", u"\u00E9\u201C\U0001F30D\uFF1C", "everything beyond ASCII stays"},
        {icu::UnicodeString(zero, 3), icu::UnicodeString(zero, 2) + u"&amp;", "U+0000 stays"},
        {icu::UnicodeString(lone, 3), icu::UnicodeString(lone, 1) + u"&lt;" + icu::UnicodeString(lone + 2, 1),
         "lone surrogates stay"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(EscapeXMLValueString(row.text), row.expected) << row.reason;
}

TEST(GpxUtilsTest, ABogusTextIsEscapedToABogusOne) {
    icu::UnicodeString bogus;
    bogus.setToBogus();
    EXPECT_TRUE(EscapeXMLValueString(bogus).isBogus());
    EXPECT_FALSE(EscapeXMLValueString(u"").isBogus());
}

TEST(GpxUtilsTest, EscapesInLinearTime) {
    constexpr std::int32_t kUnits = 2000000;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(EscapeXMLValueString(icu::UnicodeString(kUnits, u'&', kUnits)).length(), 5 * kUnits);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(GpxUtilsTest, AppendsAnElementLine) {
    icu::UnicodeString out(u"before ");
    AppendStringElement(out, u"name", u"x");
    AppendStringElement(out, u"a:\u00E9", u"<&>\n");
    EXPECT_EQ(Utf8(out), "before <name>x</name>\r\n<a:\xC3\xA9>&lt;&amp;&gt;\n</a:\xC3\xA9>\r\n");
}

TEST(GpxUtilsTest, AppendsNothingForAnEmptyValue) {
    icu::UnicodeString out(u"before");
    AppendStringElement(out, u"name", u"");
    AppendStringElement(out, u"name", Bogus());
    EXPECT_EQ(Utf8(out), "before");
}

TEST(GpxUtilsTest, RefusesAnUnnamedElementBeforeTheValueIsLookedAt) {
    for (const char16_t* value : {u"x", u""}) {
        icu::UnicodeString out(u"before");
        EXPECT_FAILURE(AppendStringElement(out, u"", value), dbc::precondition_error,
                       "Cannot write an unnamed XML string element.", kSource);
        EXPECT_EQ(Utf8(out), "before");
    }
}

TEST(GpxUtilsTest, GetStringValueCopiesWhatIsThere) {
    icu::UnicodeString out(u"before");
    EXPECT_FALSE(GetStringValue(out, u""));
    EXPECT_EQ(Utf8(out), "before");
    EXPECT_TRUE(GetStringValue(out, u" "));
    EXPECT_EQ(Utf8(out), " ");
}

TEST(GpxUtilsTest, SetStringValueRefusesAnEmptyTextWithTheCallersMessage) {
    icu::UnicodeString target(u"before");
    EXPECT_FAILURE(SetStringValue("the caller's own", target, u""), dbc::precondition_error,
                   "the caller's own", kSource);
    EXPECT_FAILURE(SetStringValue("", target, Bogus()), dbc::precondition_error, "", kSource);
    EXPECT_EQ(Utf8(target), "before");
    SetStringValue("unused", target, u" ");
    EXPECT_EQ(Utf8(target), " ");
    SetStringValue("unused", target, target);
    EXPECT_EQ(Utf8(target), " ");
}

TEST(GpxUtilsTest, SetStringValueKeepsTheTargetWhenMemoryCannotHoldACopy) {
    const icu::UnicodeString storage(5000, u'x', 5000);
    const icu::UnicodeString alias(false, storage.getBuffer(), storage.length());
    icu::UnicodeString target(u"before");
    {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(1000);
        EXPECT_THROW(SetStringValue("unused", target, alias), std::bad_alloc);
    }
    EXPECT_EQ(Utf8(target), "before");
}

TEST(GpxUtilsTest, AppendStringElementReportsALineThatMemoryCannotHold) {
    const icu::UnicodeString value(5000, u'x', 5000);
    icu::UnicodeString out(u"before");
    const RefusedIcuMemory refused = RefusedIcuMemory::Above(1000);
    EXPECT_FAILURE(AppendStringElement(out, u"name", value), dbc::postcondition_error,
                   "The GPX text is too large to be held in memory.", kSource);
    EXPECT_EQ(Utf8(out), "before");
}

TEST(GpxUtilsTest, AppendStringElementMayBeGivenItsOutput) {
    icu::UnicodeString out(u"a&");
    AppendStringElement(out, u"name", out);
    EXPECT_EQ(Utf8(out), "a&<name>a&amp;</name>\r\n");
}

TEST(GpxUtilsTest, ReadsFieldsOfFixedWidth) {
    const struct {
        const char* text;
        unsigned long length;
        long min;
        long max;
        bool accepted;
        long expected;
        const char* reason;
    } rows[] = {
        {"2009-01", 4, 1970, 9999, true, 2009, "the field only"},
        {"0123", 2, 0, 59, true, 1, "a leading zero is not octal"},
        {"59", 2, 0, 59, true, 59, "the bounds are included"},
        {"00", 2, 0, 59, true, 0, "the bounds are included"},
        {"60", 2, 0, 59, false, 0, "above"},
        {"00", 2, 1, 59, false, 0, "below"},
        {" 7", 2, 0, 59, true, 7, "a leading blank"},
        {"\t7", 2, 0, 59, true, 7, "a leading tab"},
        {"+7", 2, 0, 59, true, 7, "a sign"},
        {"-7", 2, -9, 59, true, -7, "a sign"},
        {"-7", 2, 0, 59, false, 0, "below"},
        {"7 ", 2, 0, 59, false, 0, "a trailing blank"},
        {"7x", 2, 0, 59, false, 0, "no digit"},
        {"x7", 2, 0, 59, false, 0, "no digit"},
        {"0x", 2, 0, 59, false, 0, "not hexadecimal"},
        {"1.", 2, 0, 59, false, 0, "no digit"},
        {"  ", 2, 0, 59, false, 0, "blanks alone are not consumed"},
        {"12", 0, 0, 59, true, 0, "a field of no length is 0"},
        {"12", 0, 1, 59, false, 0, "and must be in range"},
        {"7", 2, 0, 59, true, 7, "the text ends in the field"},
        {"", 2, 0, 59, true, 0, "the text ends before the field"},
        {"0000000000000000000000000000012", 31, 0, 59, true, 12, "the longest field"},
        {"9999999999999999999999999", 25, 0, std::numeric_limits<long>::max(), true,
         std::numeric_limits<long>::max(), "saturates"},
        {"9999999999999999999999999", 25, 0, 100, false, 0, "saturates"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << "\"" << row.text << "\": " << row.reason);
        long out = -77;
        const auto text = Exact(row.text);
        EXPECT_REPORT(
            EXPECT_EQ(ReadLongFromString(out, text.get(), row.length, row.min, row.max), row.accepted), "");
        EXPECT_EQ(out, row.accepted ? row.expected : -77);
    }
}

TEST(GpxUtilsTest, ReportsAFieldOf32AndMoreAndANullText) {
    const std::string digits(100, '1');
    for (const unsigned long length : {32UL, 33UL, 100UL, std::numeric_limits<unsigned long>::max()}) {
        long out = -77;
        EXPECT_REPORT(EXPECT_FALSE(ReadLongFromString(out, digits.c_str(), length, 0, 9)), kSource);
        EXPECT_EQ(out, -77);
    }
    long out = -77;
    EXPECT_REPORT(EXPECT_FALSE(ReadLongFromString(out, nullptr, 2, 0, 9)), kSource);
    EXPECT_EQ(out, -77);
}

TEST(GpxUtilsTest, ReadsAndScalesFractionDigits) {
    constexpr long kBound =
        static_cast<long>(std::min<long long>(9200000000000000000, std::numeric_limits<long>::max()));
    const struct {
        const char* text;
        double scale;
        unsigned long digits;
        long expected;
        const char* reason;
    } rows[] = {
        {"5", 1000.0, 1, 500, "tenths"},
        {"50", 1000.0, 2, 500, "trailing zero"},
        {"05", 1000.0, 2, 50, "leading zero"},
        {"1234", 1000.0, 4, 123, "rounded down"},
        {"1235", 1000.0, 4, 124, "half goes up"},
        {"0005", 1000.0, 4, 1, "half goes up"},
        {"0004", 1000.0, 4, 0, "rounded down"},
        {"5005", 1000.0, 4, 500, "the product is rounded to just below the half"},
        {"5465", 1000.0, 4, 547, "the product is rounded to the half before the half is added"},
        {"0065", 1000.0, 4, 7, "the product is rounded to the half before the half is added"},
        {"95375", 3600.0, 5, 3434, "the product is rounded to the half before the half is added"},
        {"0416666666666666643537", 60.0, 22, 3, "the sum is rounded to the whole"},
        {"9995", 1000.0, 4, 1000, "half goes up to the whole"},
        {"9996", 1000.0, 4, 1000, "up to the whole"},
        {"0", 1000.0, 1, 0, "zero"},
        {"5Z", 60.0, 1, 30, "ends at the first other character"},
        {"25+02:00", 3600.0, 2, 900, "ends at the first other character"},
        {"5.5", 1000.0, 1, 500, "a second point ends it"},
        {"5e3", 1000.0, 1, 500, "no exponent"},
        {"99999999999999999999999999999", 1000.0, 29, 1000, "29 digits"},
        {"5", -1000.0, 1, -499, "cut towards zero after the half is added"},
        {"5", 0.0, 1, 0, "scale 0"},
        {"5", 1e300, 1, kBound, "bounded, not undefined"},
        {"5", -1e300, 1, -kBound, "bounded, not undefined"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.text << ": " << row.reason);
        long out = -77;
        const auto text = Exact(row.text);
        EXPECT_REPORT(EXPECT_EQ(ReadAndScaleDoubleFromString(out, text.get(), row.scale), row.digits), "");
        EXPECT_EQ(out, row.expected);
    }
}

TEST(GpxUtilsTest, NoFractionDigitLeavesTheOutput) {
    for (const char* text : {"", "Z", "-5", "+5", " 5", ".5", "x"}) {
        long out = -77;
        EXPECT_REPORT(EXPECT_EQ(ReadAndScaleDoubleFromString(out, text, 1000.0), 0U), "");
        EXPECT_EQ(out, -77) << text;
    }
}

TEST(GpxUtilsTest, ReportsAFractionTextOf30AndMoreAndANullText) {
    long out = -77;
    // The whole rest counts, not only the digits.
    for (const std::string& text : {std::string(30, '1'), std::string(100, '1'), "1" + std::string(29, 'x')})
        EXPECT_REPORT(EXPECT_EQ(ReadAndScaleDoubleFromString(out, text.c_str(), 1000.0), 0U), kSource);
    EXPECT_REPORT(EXPECT_EQ(ReadAndScaleDoubleFromString(out, nullptr, 1000.0), 0U), kSource);
    EXPECT_EQ(out, -77);
    EXPECT_REPORT(
        EXPECT_EQ(ReadAndScaleDoubleFromString(out, ("1" + std::string(28, 'x')).c_str(), 1000.0), 1U), "");
    EXPECT_EQ(out, 100);
}

TEST(GpxUtilsTest, AcceptsTimeText) {
    const double midnight = kMorning - 10 * kHour - 20 * kMinute - 30 * kSecond;
    const double ten = midnight + 10 * kHour;
    const double tenTwenty = ten + 20 * kMinute;
    const struct {
        const char* text;
        double expected;
        const char* reason;
    } rows[] = {
        {"2009-01-15T10:20:30Z", kMorning, "the form that is written"},
        {"1970-01-01T00:00:00Z", 0.0, "the epoch"},
        {"9999-12-31T23:59:59Z", 253402300799000.0, "the last year"},
        {"2009-01-15T10:20:30.5Z", kMorning + 500, "tenths"},
        {"2009-01-15T10:20:30.1234Z", kMorning + 123, "rounded"},
        {"2009-01-15T10:20:30.9996Z", kMorning + 1000, "carried into the next second"},
        {"2009-01-15T10:20:30.5", kMorning + 500, "fraction, no zone"},
        {"2009-01-15T10:20:30.5+02:00", kMorning + 500 - 2 * kHour, "fraction, then an offset"},
        {"2009-01-15T10:20:30.00000000000000000000000000005", kMorning, "29 characters after the point"},
        {"2009-01-15T10:20:30", kMorning, "no zone is UTC"},
        {"2009-01-15T10:20:30Zanything", kMorning, "what follows Z does not matter"},
        {"2009-01-15T10:20:30+02:00", kMorning - 2 * kHour, "offset with a colon"},
        {"2009-01-15T10:20:30-0530", kMorning + 5 * kHour + 30 * kMinute, "offset without a colon"},
        {"2009-01-15T10:20:30+02", kMorning - 2 * kHour, "offset of hours"},
        {"2009-01-15T10:20:30+02:", kMorning - 2 * kHour, "offset of hours and a colon"},
        {"2009-01-15T10:20:30+02:3", kMorning - 2 * kHour, "a single minute digit does not count"},
        {"2009-01-15T10:20:30+02:30xyz", kMorning - 2.5 * kHour, "what follows the offset does not matter"},
        {"2009-01-15T10:20:30+24:59", kMorning - 24 * kHour - 59 * kMinute, "the largest offset"},
        {"2009-01-15T10:20:30-24:59", kMorning + 24 * kHour + 59 * kMinute, "the largest offset"},
        {"1970-01-01T00:00:00+01:00", -kHour, "an offset may lead before the epoch"},
        {"20090115T102030Z", kMorning, "basic form"},
        {"2009-0115T10:2030Z", kMorning, "each separator is optional"},
        {"200901-15T1020:30Z", kMorning, "each separator is optional"},
        {"2009-01-15T10:20Z", tenTwenty, "no seconds"},
        {"2009-01-15T10:20", tenTwenty, "no seconds, no zone"},
        {"2009-01-15T10:20:", tenTwenty, "a colon at the end"},
        {"2009-01-15T10:20:Z", tenTwenty, "a colon before the zone"},
        {"2009-01-15T10Z", ten, "no minutes"},
        {"2009-01-15T10", ten, "no minutes, no zone"},
        {"2009-01-15T10:", ten, "a colon at the end"},
        {"2009-01-15T10:Z", ten, "a colon before the zone"},
        {"2009-01-15T1", midnight + kHour, "the end of the text is the second character of the hour"},
        {"2009-01-15T10.5Z", ten + 30 * kMinute, "fraction of the hour"},
        {"2009-01-15T10.5", ten + 30 * kMinute, "fraction of the hour"},
        {"2009-01-15T10.25+02:00", ten + 15 * kMinute - 2 * kHour, "fraction of the hour, then an offset"},
        {"2009-01-15T10.99999Z", ten + kHour, "3600 seconds"},
        {"2009-01-15T10:20.5Z", tenTwenty + 30 * kSecond, "fraction of the minute"},
        {"2009-01-15T10:20.25-01", tenTwenty + 15 * kSecond + kHour,
         "fraction of the minute, then an offset"},
        {"2009-01-15T24:00:00Z", midnight + 24 * kHour, "midnight at the end of the day"},
        {"2009-01-15T24:30:00Z", midnight + 24 * kHour + 30 * kMinute, "past it"},
        {"2009-01-15T24.5Z", midnight + 24 * kHour + 30 * kMinute, "past it"},
        {"2009-02-31T00:00:00Z", 1236038400000.0, "runs on to March 3"},
        {"2008-02-29T00:00:00Z", 1204243200000.0, "leap day"},
        {"2009-12-31T24:00:00Z", 1262304000000.0, "into the next year"},
        {"2009-01-15T10:20+1", tenTwenty + kSecond, "the sign belongs to the seconds"},
        {"2009- 1-15T10:20:30Z", kMorning, "a blank in the field"},
        {"2009-+1-15T+9:20:30Z", kMorning - kHour, "a sign in the field"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.text << ": " << row.reason);
        double millis = kUntouched;
        EXPECT_REPORT(EXPECT_TRUE(ParseGpxTime(row.text, millis)), "");
        EXPECT_EQ(millis, row.expected);
    }
}

TEST(GpxUtilsTest, RefusesTimeTextAndLeavesTheOutput) {
    const struct {
        const char* text;
        const char* reason;
    } rows[] = {
        {"1", "10 characters and fewer"},
        {"2009-01-15", "a bare date"},
        {"20090115T1", "10 characters and fewer"},
        {"1969-12-31T23:59:59Z", "year before 1970"},
        {"0000-01-01T00:00:00Z", "year before 1970"},
        {"-200-01-01T00:00:00Z", "negative year"},
        {"10000-01-01T00:00:00Z", "five digits"},
        {"209-01-15T10:20:30Z", "three digits"},
        {" 2009-01-15T10:20:30Z", "a blank before"},
        {"abcd-01-15T10:20:30Z", "no year"},
        {"2009-00-15T10:20:30Z", "month 0"},
        {"2009-13-15T10:20:30Z", "month 13"},
        {"2009-1-15T10:20:30Z", "one digit"},
        {"2009--1-15T10:20:30Z", "a minus in the month"},
        {"2009-xx-15T10:20:30Z", "no month"},
        {"2009-01-00T10:20:30Z", "day 0"},
        {"2009-01-32T10:20:30Z", "day 32"},
        {"2009-01-1T10:20:30Z", "one digit"},
        {"2009/01/15T10:20:30Z", "other separators"},
        {"2009-01-15 10:20:30Z", "a blank for the T"},
        {"2009-01-15t10:20:30Z", "a small t"},
        {"2009-01-1510:20:30Z", "no T"},
        {"2009-01-15Z", "no T"},
        {"2009-01-15TZ0", "no hour"},
        {"2009-01-15TZ", "no hour"},
        {"2009-01-15T", "no hour"},
        {"2009-115T10:20:30Z", "one digit"},
        {"2020-T12:34:56Z", "neither month nor day"},
        {"2009-01-15T25:00:00Z", "hour 25"},
        {"2009-01-15T-1:00:00Z", "negative hour"},
        {"2009-01-15T1:20:30Z", "one digit"},
        {"2009-01-15T10:60:00Z", "minute 60"},
        {"2009-01-15T10:2", "one digit"},
        {"2009-01-15T10:2Z", "one digit"},
        {"2009-01-15T10X", "unknown zone"},
        {"2009-01-15T10Zx", "minutes are expected"},
        {"2009-01-15T10:20:60Z", "leap second"},
        {"2009-01-15T10:20:3", "one digit"},
        {"2009-01-15T10:20:3Z", "one digit"},
        {"2009-01-15T10:20Zx", "seconds are expected"},
        {"2009-01-15T10:20:30X", "unknown zone"},
        {"2009-01-15T10:20:30z", "a small z"},
        {"2009-01-15T10:20:30 Z", "a blank before the zone"},
        {"2009-01-15T10:20:30,5Z", "a comma"},
        {"2009-01-15T10:20:30.", "no fraction digit"},
        {"2009-01-15T10:20:30.Z", "no fraction digit"},
        {"2009-01-15T10:20:30.5.5Z", "two points"},
        {"2009-01-15T10:20.Z", "no fraction digit"},
        {"2009-01-15T10:20.", "no fraction digit"},
        {"2009-01-15T10.Z", "no fraction digit"},
        {"2009-01-15T10.", "no fraction digit"},
        {"2009-01-15T10.5:20Z", "something behind the fraction of the hour"},
        {"2009-01-15T10:20.5:30Z", "something behind the fraction of the minute"},
        {"2009-01-15T10:20:30+", "no offset"},
        {"2009-01-15T10:20:30+2", "one digit"},
        {"2009-01-15T10:20:30+25", "25 hours"},
        {"2009-01-15T10:20:30+xx", "no offset"},
        {"2009-01-15T10:20:30+02:60", "60 minutes"},
        {"2009-01-15T10:20:30+02:xx", "no minutes"},
        {"2009-01-15T10:20:30+02Z0", "no minutes"},
        {"2009-01-15T10:20+02:00", "an offset directly after the minutes"},
        {"2009-01-15T10+0200", "an offset directly after the hour"},
        {"2009-01-15T10:20:30\xC2\xA0", "other bytes"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.text << ": " << row.reason);
        double millis = kUntouched;
        EXPECT_REPORT(EXPECT_FALSE(ParseGpxTime(row.text, millis)), "");
        EXPECT_EQ(millis, kUntouched);
    }
}

TEST(GpxUtilsTest, ReportsAnEmptyTimeTextAndAnEndlessFraction) {
    double millis = kUntouched;
    EXPECT_REPORT(EXPECT_FALSE(ParseGpxTime("", millis)), kSource);
    for (const char* start : {"2009-01-15T10:20:30.", "2009-01-15T10:20.", "2009-01-15T10."}) {
        EXPECT_REPORT(EXPECT_FALSE(ParseGpxTime(start + std::string(30, '1'), millis)), kSource);
        EXPECT_REPORT(EXPECT_FALSE(ParseGpxTime(start + std::string(29, '1') + "Z", millis)), kSource);
        EXPECT_EQ(millis, kUntouched);
        EXPECT_REPORT(EXPECT_TRUE(ParseGpxTime(start + std::string(28, '1') + "Z", millis)), "");
        millis = kUntouched;
    }
}

TEST(GpxUtilsTest, NothingIsReadPastTheEndOfATimeText) {
    for (const std::string whole :
         {"2009-01-15T10:20:30.123+02:30", "20090115T102030.123-0230", "2009-01-15T10:20.5-02:30",
          "2009-01-15T10.25+0130", "2009-01-15T10:20:30.5Z"}) {
        for (std::size_t length = 1; length <= whole.size(); ++length) {
            SCOPED_TRACE(whole.substr(0, length));
            // After the zero that ends it, the shortened text still has its old characters.
            std::string shortened = whole;
            shortened.resize(length);
            std::string fresh(shortened.c_str());
            fresh.shrink_to_fit();
            double first = kUntouched;
            double second = kUntouched;
            EXPECT_EQ(ParseGpxTime(shortened, first), ParseGpxTime(fresh, second));
            EXPECT_EQ(first, second);
        }
    }
}

TEST(GpxUtilsTest, NothingIsReadPastTheEndOfAField) {
    for (const std::string whole : {"123456789", "12Z", "+1"}) {
        for (std::size_t length = 0; length <= whole.size(); ++length) {
            const auto text = Exact(whole.substr(0, length));
            long out = 0;
            for (unsigned long width = 0; width < 32; ++width)
                ReadLongFromString(out, text.get(), width, -1, 9999);
            ReadAndScaleDoubleFromString(out, text.get(), 1000.0);
        }
    }
}

TEST(GpxUtilsTest, ReadsEveryAcceptedTimeAsIcuDoes) {
    std::mt19937 random(20090115);
    const auto pick = [&random](int first, int last) {
        return std::uniform_int_distribution<int>(first, last)(random);
    };
    for (int i = 0; i < 30000; ++i) {
        const int year = pick(1970, 9999);
        const int month = pick(1, 12);
        const int day = pick(1, 31);
        const int hour = pick(0, 24);
        const int minute = pick(0, 59);
        const int second = pick(0, 59);
        const int fraction = pick(0, 9999);
        const int form = pick(0, 3); // 0 whole, 1 fraction of the second, 2 of the minute, 3 of the hour
        const int sign = pick(-1, 1);
        const int offset = pick(0, 24 * 60 + 59);

        std::array<char, 64> text = {};
        int length = std::snprintf(text.data(), text.size(),
                                   pick(0, 1) != 0 ? "%04d-%02d-%02dT%02d" : "%04d%02d%02dT%02d", year, month,
                                   day, hour);
        const auto append = [&](const char* format, auto... values) {
            length += std::snprintf(text.data() + length, text.size() - static_cast<std::size_t>(length),
                                    format, values...);
        };
        if (form <= 2)
            append(":%02d", minute);
        if (form <= 1)
            append(":%02d", second);
        if (form >= 1)
            append(".%04d", fraction);
        if (sign == 0)
            append("%s", "Z");
        else
            append("%c%02d:%02d", sign > 0 ? '+' : '-', offset / 60, offset % 60);

        const auto scaled = [fraction](double scale) {
            // Stored, so that each step is rounded to a double on every processor.
            const volatile double share = fraction / 10000.0;
            const volatile double product = share * scale;
            const volatile double sum = product + 0.5;
            return static_cast<int>(sum);
        };
        UErrorCode status = U_ZERO_ERROR;
        const auto calendar = GmtCalendar();
        calendar->set(year, month - 1, day, hour == 24 ? 23 : hour, form <= 2 ? minute : 0,
                      form <= 1 ? second : 0);
        calendar->set(UCAL_MILLISECOND, form == 1 ? scaled(1000.0) : 0);
        calendar->add(UCAL_HOUR_OF_DAY, hour == 24 ? 1 : 0, status);
        calendar->add(UCAL_MINUTE, -sign * offset, status);
        if (form >= 2)
            calendar->add(UCAL_SECOND, scaled(form == 2 ? 60.0 : 3600.0), status);
        const double expected = calendar->getTime(status);
        ASSERT_TRUE(U_SUCCESS(status));

        double millis = kUntouched;
        ASSERT_TRUE(ParseGpxTime(text.data(), millis)) << text.data();
        ASSERT_EQ(millis, expected) << text.data();
    }
}

TEST(GpxUtilsTest, ReadsBackEveryTimeThatItWrites) {
    std::mt19937_64 random(3);
    std::uniform_int_distribution<std::int64_t> seconds(0, 253402300799);
    for (int i = 0; i < 10000; ++i) {
        const double millis = static_cast<double>(seconds(random)) * 1000.0;
        double read = kUntouched;
        ASSERT_TRUE(ParseGpxTime(GpxTimeOf(millis), read));
        ASSERT_EQ(read, millis);
    }
}

TEST(GpxUtilsTest, WritesCalendarTimes) {
    EXPECT_EQ(GpxTimeOf(0.0), "1970-01-01T00:00:00Z");
    EXPECT_EQ(GpxTimeOf(kMorning + 999.0), "2009-01-15T10:20:30Z");
    EXPECT_EQ(GpxTimeOf(-1.0), "1969-12-31T23:59:59Z");
    EXPECT_EQ(GpxTimeOf(-30610224000000.0), "0999-12-27T00:00:00Z");
}

TEST(GpxUtilsTest, WritesTheTimeOfAnyCalendarInUtcAndGregorian) {
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(u"Asia/Kolkata"));
    for (const char* name :
         {"en_US", "th_TH@calendar=buddhist", "fa_IR@calendar=persian", "ar_SA@calendar=islamic"}) {
        UErrorCode status = U_ZERO_ERROR;
        const std::unique_ptr<icu::Calendar> calendar(
            icu::Calendar::createInstance(*zone, icu::Locale::createFromName(name), status));
        ASSERT_TRUE(U_SUCCESS(status));
        calendar->setTime(kMorning, status);
        EXPECT_EQ(Utf8(ToGpxTime(calendar.get())), "2009-01-15T10:20:30Z") << name;
    }
}

TEST(GpxUtilsTest, ReportsAMissingCalendar) {
    icu::UnicodeString text(u"before");
    EXPECT_REPORT(text = ToGpxTime(nullptr), kSource);
    EXPECT_TRUE(text.isEmpty());
    EXPECT_FALSE(text.isBogus());
}

TEST(GpxUtilsTest, ACalendarWithoutATimeGivesNoText) {
    const auto calendar = GmtCalendar();
    calendar->setLenient(false);
    calendar->set(UCAL_MONTH, 99);
    icu::UnicodeString text(u"before");
    EXPECT_REPORT(text = ToGpxTime(calendar.get()), "");
    EXPECT_TRUE(text.isEmpty());
}

TEST(GpxUtilsTest, NoLocaleShows) {
    for (const char* name : {"th_TH_TRADITIONAL", "ar_EG", "fa_IR"}) {
        const IcuLocaleScope scope(name);
        double millis = kUntouched;
        EXPECT_EQ(GpxTimeOf(kMorning), "2009-01-15T10:20:30Z") << name;
        EXPECT_TRUE(ParseGpxTime("2009-01-15T10:20:30.5Z", millis));
        EXPECT_EQ(millis, kMorning + 500.0) << name;
    }
    const CLocaleScope german("de_DE.UTF-8");
    if (!german.IsInstalled())
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed; the ICU locales were checked";
    double millis = kUntouched;
    EXPECT_TRUE(ParseGpxTime("2009-01-15T10:20:30.5Z", millis));
    EXPECT_EQ(millis, kMorning + 500.0);
    EXPECT_TRUE(ParseGpxTime("2009-01-15T10.5Z", millis));
    EXPECT_EQ(millis, kMorning + 9 * kMinute + 30 * kSecond);
}
