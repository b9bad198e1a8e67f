// SPDX-License-Identifier: MIT

// The numbers and the time that the scanner reads.

#include <vexaTransferLib/GpxTarvikExtParser.h>

#include "support/ContractChecks.h"
#include "support/GpxText.h"
#include "support/HeadScan.h"
#include "support/LocaleScopes.h"
#include "support/StoredNumbers.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr char kUtilsSource[] = "LibCore/vexaTransferLib/GpxUtils.cpp";

std::string Element(const std::string& name, const std::string& text) {
    return "<tarvik:" + name + ">" + text + "</tarvik:" + name + ">";
}

GPXStats StatsIn(const std::string& elements) {
    GpxTarvikExtParser scanner;
    ScanBytes(scanner, WithExtensions(elements));
    EXPECT_TRUE(scanner.GetStats()) << elements;
    return scanner.GetStats() ? *scanner.GetStats() : GPXStats();
}

TEST(GpxTarvikExtParserNumbersTest, CountsAreTheLowBitsOfWhatIsStored) {
    for (const StoredNumber& row : StoredNumbers())
        EXPECT_EQ(StatsIn(Element("wptcount", row.text)).wptcount,
                  static_cast<std::int32_t>(static_cast<std::uint64_t>(row.stored) & 0xFFFFFFFFU))
            << row.text << ": " << row.reason;
}

TEST(GpxTarvikExtParserNumbersTest, TheTotalIsWhatIsStoredReadAsADouble) {
    for (const StoredNumber& row : StoredNumbers())
        EXPECT_EQ(BitsOf(StatsIn(Element("trktotalkm", row.text)).trktotalkm), row.stored)
            << row.text << ": " << row.reason;
}

TEST(GpxTarvikExtParserNumbersTest, UnusualNumbersHaveTheseResults) {
    EXPECT_EQ(StatsIn(Element("wptcount", "7.9")).wptcount, -1717986918);
    EXPECT_EQ(StatsIn(Element("wptcount", "-0")).wptcount, 0);
    EXPECT_EQ(StatsIn(Element("wptcount", "NaN")).wptcount, 0);
    EXPECT_EQ(StatsIn(Element("wptcount", "2147483648")).wptcount, std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(StatsIn(Element("wptcount", "4294967301")).wptcount, 5);
    EXPECT_EQ(StatsIn(Element("wptcount", "9223372036854775808")).wptcount, 0);
    EXPECT_EQ(StatsIn(Element("trktotalkm", "12")).trktotalkm,
              12 * std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(StatsIn(Element("trktotalkm", "1,234.568")).trktotalkm, 1234.568);
}

TEST(GpxTarvikExtParserNumbersTest, EveryIntegerFieldIsReadAlike) {
    const std::string bits = std::to_string(static_cast<std::int32_t>(BitsOf(7.9)));
    EXPECT_EQ(Scan(WithExtensions(Element("defaultsymbol", "7.9"))), "layer |||" + bits + "; time 0");
    EXPECT_EQ(Scan(WithExtensions(Element("trkcount", "7.9"))), "stats 0 " + bits + " 0 0 -1; time 0");
    EXPECT_EQ(Scan(WithExtensions(Element("trksegcount", "7.9"))), "stats 0 0 " + bits + " 0 -1; time 0");
    EXPECT_EQ(Scan(WithExtensions(Element("geocachecount", "7.9"))), "stats 0 0 0 0 " + bits + "; time 0");
    EXPECT_EQ(Scan(WithExtensions(Element("geocachesymbolcount", "7.9"))),
              "stats 0 0 0 0 " + bits + "; time 0");
}

TEST(GpxTarvikExtParserNumbersTest, WhiteSpaceAroundANumberIsTrimmed) {
    EXPECT_EQ(StatsIn(Element("wptcount", " \t\r\n 12 \n")).wptcount, 12);
    EXPECT_EQ(StatsIn(Element("trktotalkm", "\n\t1.5 ")).trktotalkm, 1.5);
    EXPECT_EQ(StatsIn(Element("wptcount", std::string(1000, ' ') + "12")).wptcount, 12)
        << "trimmed before the first 400 units are taken";
    EXPECT_EQ(StatsIn(Element("wptcount", "\u00A012")).wptcount, 0) << "a no-break space is not trimmed";
}

TEST(GpxTarvikExtParserNumbersTest, AVeryLongNumberCostsNothing) {
    const std::string text(1000000, '9');
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(StatsIn(Element("trktotalkm", text)).trktotalkm, std::numeric_limits<double>::infinity());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

const std::string kNumbersAndTime = WithExtensions(
    Element("wptcount", "1,234") + Element("trktotalkm", "1,234.5") + "<time>2009-01-15T10:20:30.5Z</time>");
const std::string kNumbersAndTimeFound = "stats 1234 0 0 40934a0000000000 -1; time 1232014830500";

TEST(GpxTarvikExtParserNumbersTest, TheLocaleOfTheProcessDoesNotShow) {
    const CLocaleScope scope("de_DE.UTF-8");
    if (!scope.IsInstalled())
        GTEST_SKIP() << "this machine has no locale de_DE.UTF-8";
    EXPECT_EQ(Scan(kNumbersAndTime), kNumbersAndTimeFound);
}

TEST(GpxTarvikExtParserNumbersTest, TheDefaultLocaleOfIcuDoesNotShow) {
    for (const char* name : {"de_DE", "th_TH", "th_TH_TRADITIONAL", "fa_IR", "ar_EG", "tr_TR"}) {
        const IcuLocaleScope scope(name);
        EXPECT_EQ(Scan(kNumbersAndTime), kNumbersAndTimeFound) << name;
        EXPECT_EQ(Scan(WithExtensions("<tarvik:WAYPOINTGUID>w</tarvik:WAYPOINTGUID>")), "guids |w; time 0")
            << name;
    }
}

double TimeIn(const std::string& children) {
    GpxTarvikExtParser scanner;
    ScanBytes(scanner, Gpx11(children));
    return scanner.GetDocumentTime();
}

constexpr double kTime = 1232014830000.0; // 2009-01-15T10:20:30Z
const std::string kTimeElement = "<time>2009-01-15T10:20:30Z</time>";

TEST(GpxTarvikExtParserTimeTest, EveryTimeOfTheHeadCounts) {
    struct Row {
        std::string children;
        double expected;
        const char* reason;
    };
    const Row rows[] = {
        {"<metadata>" + kTimeElement + "</metadata>", kTime, "in the metadata"},
        {kTimeElement, kTime, "below the root"},
        {"<a><b><c>" + kTimeElement + "</c></b></a>", kTime, "anywhere"},
        {"<tarvik:form>" + kTimeElement + "</tarvik:form>", kTime, "in a vendor element"},
        {"<TIME>2009-01-15T10:20:30Z</TIME>", kTime, "in another case"},
        {"<gpx10:time>2009-01-15T10:20:30Z</gpx10:time>", kTime, "of GPX 1.0"},
        {"<x:tiMe xmlns:x='HTTP://WWW.TOPOGRAFIX.COM/gpx/1/0'>2009-01-15T10:20:30Z</x:tiMe>", kTime,
         "a namespace in another case"},
        {"<time>\n\t 2009-01-15T10:20:30Z \n</time>", kTime, "trimmed"},
        {"<time><![CDATA[2009-01-15]]>T10:<!-- : -->20&#58;30Z</time>", kTime, "in pieces"},
        {"<time>2009-01-15T10:20:30+02:00</time>", kTime - 7200000, "with an offset"},
        {"<time>2009-01-15T10:20:30.25</time>", kTime + 250, "with a fraction, without a zone"},
        {"<time>2009-01-15T10:20:29Z</time>" + kTimeElement, kTime, "the last one wins"},
        {kTimeElement + "<time>yesterday, noon</time>", kTime, "an unreadable one leaves the earlier"},
        {kTimeElement + "<time>1969-12-31T23:59:59Z</time>", kTime, "an unreadable one leaves the earlier"},
        {kTimeElement + "<time>1970-01-01T00:00:00Z</time>", 0.0, "the epoch"},
        {"<time>2009-01-15</time>", 0.0, "unreadable"},
        {"<time>x<name>2009-01-15T10:20:30Z</name></time>", kTime, "text since the last start tag"},
        {"<other:time>2009-01-15T10:20:30Z</other:time>", 0.0, "of another namespace"},
        {"<tarvik:time>2009-01-15T10:20:30Z</tarvik:time>", 0.0, "of the vendor's namespace"},
        {"<time xmlns=''>2009-01-15T10:20:30Z</time>", 0.0, "of no namespace"},
        {"<times>2009-01-15T10:20:30Z</times>", 0.0, "another name"},
        {"<wpt lat='1' lon='2'>" + kTimeElement + "</wpt>" + kTimeElement, 0.0, "after the head"},
        {"<rte/>" + kTimeElement, 0.0, "after the head"},
        {"<trk>" + kTimeElement + "</trk>", 0.0, "after the head"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(TimeIn(row.children), row.expected) << row.reason << ": " << row.children;
}

TEST(GpxTarvikExtParserTimeTest, TheTimeOfTheRootElementCounts) {
    EXPECT_EQ(Scan("<time xmlns='http://www.topografix.com/GPX/1/0'>2009-01-15T10:20:30Z</time>"),
              "time 1232014830000");
}

TEST(GpxTarvikExtParserTimeTest, AnEmptyTimeIsReportedAndLeavesTheEarlier) {
    for (const char* empty : {"<time/>", "<time></time>", "<time> \n </time>"}) {
        EXPECT_REPORT(EXPECT_EQ(TimeIn(kTimeElement + empty), kTime), kUtilsSource);
        EXPECT_REPORT(EXPECT_EQ(TimeIn(empty), 0.0), kUtilsSource);
    }
}

TEST(GpxTarvikExtParserTimeTest, AnUnreadableTimeIsNotReported) {
    EXPECT_EQ(CaptureStandardError([] { TimeIn("<time>some other day</time>"); }), "");
}

} // namespace
} // namespace vexaTransferLib
