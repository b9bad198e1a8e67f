// SPDX-License-Identifier: MIT Time and memory that cleaning long texts needs, for any content.
#include <vexaTransferLib/CleanText.h>

#include "support/HostileTexts.h"
#include "support/IcuMemory.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <limits>

namespace vexaTransferLib {

namespace {

using testing_support::HostileMixture;
using testing_support::HostileText;
using testing_support::HostileTexts;
using testing_support::RefusedIcuMemory;
using testing_support::Utf8;

using Operation = void (CleanText::*)(icu::UnicodeString&);

icu::UnicodeString Repeated(const char16_t* unit, int count) {
    icu::UnicodeString text;
    for (; count > 0; --count)
        text.append(unit, -1);
    return text;
}

double SecondsFor(const icu::UnicodeString& text) {
    icu::UnicodeString cleaned(text);
    const std::clock_t begin = std::clock();
    CleanText().CleanWebTextForTova(cleaned);
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

double SecondsForAnOrdinaryText(std::int32_t length) {
    constexpr HostileText kParagraphs{
        .name = "ordinary",
        .unit = u"<p>A <b>cache</b> by the river &amp; under the bridge, \u201Cso\u201D.</p>\r\n"};
    const icu::UnicodeString text = kParagraphs.OfLength(length);
    double quickest = std::numeric_limits<double>::infinity();
    for (int round = 0; round < 3; ++round)
        quickest = std::min(quickest, SecondsFor(text));
    return quickest;
}

// One step of quadratic time needs hundreds of times as long as all steps need for an ordinary text.
TEST(CleanTextLongTextsTest, NoTextTakesMuchLongerThanAnOrdinaryOne) {
    constexpr std::int32_t kLength = 250'000;
    constexpr double kMostTimesLonger = 25;
    const double most = kMostTimesLonger * SecondsForAnOrdinaryText(kLength);
    for (const HostileText& hostile : HostileTexts())
        EXPECT_LT(SecondsFor(hostile.OfLength(kLength)), most) << hostile.name;
    EXPECT_LT(SecondsFor(HostileMixture(kLength)), most);
}

struct LongRow {
    Operation operation;
    icu::UnicodeString text;
    icu::UnicodeString expected;
    const char* reason;
};

void ExpectCleaned(const LongRow& row) {
    icu::UnicodeString text(row.text);
    (CleanText().*row.operation)(text);
    EXPECT_TRUE(text == row.expected)
        << row.reason << ": " << text.length() << " units instead of " << row.expected.length()
        << ", starting with \"" << Utf8(text.tempSubString(0, 40)) << '"';
}

TEST(CleanTextLongTextsTest, LongTextsComeOutClean) {
    const icu::UnicodeString letters = Repeated(u"a", 1'000'000);
    const LongRow rows[] = {
        {&CleanText::StripBBCode, u"[url=" + letters + u"]b", u"b", "a long parameter"},
        {&CleanText::HTMLToPlainText, u"<!--" + letters + u"-->b", u"b", "a long comment"},
        {&CleanText::HTMLToPlainText, u"<style>" + letters + u"</style>b", u"b", "a long style"},
        {&CleanText::HTMLToPlainText, u"<p" + letters + u">b", u"\r\n\r\nb", "a long tag"},
        {&CleanText::CleanPlainTextForTova, letters, letters, "a long word"},
        {&CleanText::ConvertToDosLineBreaks, Repeated(u"\n", 500'000), Repeated(u"\r\n", 500'000), "LF"},
        {&CleanText::ConvertToDosLineBreaks, Repeated(u"\r", 500'000), u"", "CR"},
        {&CleanText::CleanPlainTextForTova, Repeated(u"\u2019\u201D", 200'000), Repeated(u"'\"", 200'000),
         "quotes"},
    };
    for (const LongRow& row : rows)
        ExpectCleaned(row);
}

TEST(CleanTextLongTextsTest, TextsOnWhichTheRegularExpressionEngineGivesUpComeOutClean) {
    constexpr Operation kHtmlToText = &CleanText::HTMLToPlainText;
    constexpr Operation kCleanPlain = &CleanText::CleanPlainTextForTova;
    const icu::UnicodeString spaces = Repeated(u" ", 600'000);
    const icu::UnicodeString breaks = Repeated(u"\r\n", 300'000);
    const icu::UnicodeString tabs = Repeated(u"\t", 1'200'000);
    const icu::UnicodeString mixed = Repeated(u"\t ", 300'000);
    const LongRow rows[] = {
        {kHtmlToText, spaces, u"", "nothing but spaces"},
        {kHtmlToText, u"<p>  a  \n b\n" + spaces + u" \n c ", u"\r\n\r\na\r\nb\r\n\r\nc", "a line of spaces"},
        {kHtmlToText, u"<i>" + breaks, u"\r\n\r\n", "nothing but line breaks"},
        {kHtmlToText, u"a\n\n\nb" + breaks + u"c\n\n\nd", u"a\r\n\r\nb\r\n\r\nc\r\n\r\nd", "line breaks"},
        {kHtmlToText, u"<!-- x -->a\t\tb<br>" + tabs + u"\tc\t", u"a b\r\nc", "tabs"},
        {kCleanPlain, spaces, u"", "nothing but spaces"},
        {kCleanPlain, u" \u2018 \n " + spaces, u"'\n", "spaces at the end"},
        {kCleanPlain, u" \u2018\u2026\t\tb" + tabs + u"\t\u2014 ", u"'... b --", "tabs"},
        {kCleanPlain, u"x\t \u201Ca" + mixed + u"\t\u2013", u"x \"a -", "a run of spaces that tabs made"},
        {&CleanText::CleanWebTextForTova, u"[b]&#8230;\u2026\n" + spaces, u"......\r\n", "all pipelines"},
    };
    for (const LongRow& row : rows)
        ExpectCleaned(row);
}

TEST(CleanTextLongTextsTest, ATextInWhichThereIsNothingToCleanNeedsNoMemory) {
    const icu::UnicodeString clean(
        u"Here <is nothing, 3 & 4 [so] to be = cleaned;\r\nnot even - the dashes.\r\n");
    icu::UnicodeString text;
    text.fastCopyFrom(clean);
    const RefusedIcuMemory counted = RefusedIcuMemory::None();
    CleanText().CleanWebTextForTova(text);
    EXPECT_EQ(counted.Calls(), 0U);
    EXPECT_TRUE(text == clean);
}

} // namespace

} // namespace vexaTransferLib
