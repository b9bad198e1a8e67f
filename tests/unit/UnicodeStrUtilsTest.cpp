// SPDX-License-Identifier: MIT
#include <common/UnicodeStrUtils.h>

#include "support/ContractChecks.h"
#include "support/IcuMemory.h"
#include "support/TestFiles.h"

#include <unicode/ucnv.h>

#include <map>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

using UnicodeStrUtils::ByteString;
using UnicodeStrUtils::Converter;
using UnicodeStrUtils::UnicodeStringCaseInsensitiveComp;
using UnicodeStrUtils::UnicodeStringToStlString;
using UnicodeStrUtils::UnicodeStringToUTF8;
using vexaTransferLib::testing_support::RefusedIcuMemory;
using vexaTransferLib::testing_support::Utf8;

namespace {

constexpr char kConversionFailed[] = "Unable to convert the UnicodeString.";

static_assert(std::has_virtual_destructor_v<ByteString>);
static_assert(!std::is_copy_constructible_v<Converter>);
static_assert(!std::is_copy_assignable_v<Converter>);
static_assert(std::is_same_v<decltype(ByteString::length), std::uint32_t>);

icu::UnicodeString Bogus() {
    icu::UnicodeString bogus;
    bogus.setToBogus();
    return bogus;
}

// With the four zero bytes, which must be there.
std::string AllBytes(const ByteString& bytes) {
    return bytes.buffer ? std::string(bytes.buffer.get(), bytes.length + 4) : std::string("no buffer");
}

std::string WithZeros(const std::string& bytes) {
    return bytes + std::string(4, '\0');
}

} // namespace

TEST(UnicodeStrUtilsTest, ConverterOpensByNameAndByDefault) {
    const Converter utf8("utf-8");
    UErrorCode status = U_ZERO_ERROR;
    ASSERT_NE(utf8.Get(), nullptr);
    EXPECT_STREQ(ucnv_getName(utf8.Get(), &status), "UTF-8");
    const Converter fallback;
    ASSERT_NE(fallback.Get(), nullptr);
    EXPECT_STREQ(ucnv_getName(fallback.Get(), &status), ucnv_getDefaultName());
}

TEST(UnicodeStrUtilsTest, ConverterNamesWhatItCouldNotOpen) {
    EXPECT_FAILURE(Converter("no-such-code-page"), std::runtime_error,
                   "Unable to open the converter: no-such-code-page", "");
}

TEST(UnicodeStrUtilsTest, ConverterNamesTheDefaultThatItCouldNotOpen) {
    const std::string expected =
        std::string("Unable to open the converter: ") + ucnv_getDefaultName() + " (default)";
    const RefusedIcuMemory refused = RefusedIcuMemory::Above(0);
    EXPECT_FAILURE(Converter(nullptr), std::runtime_error, expected, "");
    EXPECT_GT(refused.Refused(), 0U);
}

TEST(UnicodeStrUtilsTest, EmptyAndBogusTextsGiveNoBytesWhateverTheCodePage) {
    for (const icu::UnicodeString& text : {icu::UnicodeString(), Bogus()}) {
        for (const char* codePage : {static_cast<const char*>(nullptr), "utf-8", "no-such-code-page"}) {
            const ByteString bytes(text, codePage);
            EXPECT_EQ(bytes.length, 0U);
            EXPECT_EQ(AllBytes(bytes), WithZeros(""));
        }
    }
}

TEST(UnicodeStrUtilsTest, ConvertsToTheNamedCodePage) {
    const char16_t loneHigh[] = {u'a', 0xD800, u'b'};
    const char16_t loneLow[] = {0xDC00};
    const char16_t zero[] = {u'a', 0, u'b'};
    const struct {
        icu::UnicodeString text;
        const char* codePage;
        std::string expected;
        const char* reason;
    } rows[] = {
        {u"abc", "utf-8", "abc", "ASCII"},
        {u"\u00E9", "utf-8", "\xC3\xA9", "two bytes"},
        {u"\u20AC", "utf-8", "\xE2\x82\xAC", "three bytes"},
        {u"\U0001F30D", "utf-8", "\xF0\x9F\x8C\x8D", "a surrogate pair is four bytes"},
        {u"\uFEFFa", "utf-8",
         "\xEF\xBB\xBF"
         "a",
         "a mark in the text stays"},
        {icu::UnicodeString(loneHigh, 3), "utf-8",
         "a\xEF\xBF\xBD"
         "b",
         "a lone surrogate becomes the substitution"},
        {icu::UnicodeString(loneLow, 1), "utf-8", "\xEF\xBF\xBD",
         "a lone surrogate becomes the substitution"},
        {icu::UnicodeString(zero, 3), "utf-8", std::string("a\0b", 3), "U+0000 is a byte of its own"},
        {u"\u00E9", "iso-8859-1", "\xE9", "Latin-1"},
        {u"\u20AC", "iso-8859-1", "\x1A", "what cannot be mapped becomes the substitution"},
        {u"a\u00E9", "utf-16le", std::string("a\0\xE9\0", 4), "wide"},
        {u"a", "utf-32be", std::string("\0\0\0a", 4), "wider"},
        {u"\u00E9", nullptr, "\xC3\xA9", "the default is UTF-8"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        const ByteString bytes(row.text, row.codePage);
        EXPECT_EQ(bytes.length, row.expected.size());
        EXPECT_EQ(AllBytes(bytes), WithZeros(row.expected));
    }
}

TEST(UnicodeStrUtilsTest, UnknownCodePageIsNamed) {
    EXPECT_FAILURE(ByteString(u"x", "no-such-code-page"), std::runtime_error,
                   "Unable to open the converter: no-such-code-page", "");
    EXPECT_FAILURE(UnicodeStringToStlString(u"x", "no-such-code-page"), std::runtime_error,
                   "Unable to open the converter: no-such-code-page", "");
}

TEST(UnicodeStrUtilsTest, TextWhoseByteCountOverflowsIsRefused) {
    // 716 million units of three bytes each are more than INT32_MAX; they share one buffer of 1.4 GB.
    constexpr std::int32_t kUnits = 715827883;
    const icu::UnicodeString text(kUnits, u'\u20AC', kUnits);
    if (text.isBogus())
        GTEST_SKIP() << "not enough memory for a text of 1.4 GB";
    EXPECT_FAILURE(ByteString(text, "utf-8"), std::runtime_error, kConversionFailed, "");
}

TEST(UnicodeStrUtilsTest, AConverterThatCountsOtherBytesThanItWritesIsRefused) {
    constexpr char kCompoundText[] = "x11-compound-text";
    UErrorCode status = U_ZERO_ERROR;
    ucnv_close(ucnv_open(kCompoundText, &status));
    if (U_FAILURE(status))
        GTEST_SKIP() << "this ICU has no converter x11-compound-text";
    const struct {
        const char16_t* text;
        const char* reason;
    } rows[] = {
        {u"a\u0416", "three bytes more than counted: the text would be cut"},
        {u"\n\u05D0\u4E2D", "three bytes more than counted, within the room for the zeros"},
        {u"\u0416", "three bytes fewer than counted: the last three would be nobody's"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_FAILURE(ByteString(row.text, kCompoundText), std::runtime_error, kConversionFailed, "");
        EXPECT_FAILURE(UnicodeStringToStlString(row.text, kCompoundText), std::runtime_error,
                       kConversionFailed, "");
    }
    EXPECT_EQ(UnicodeStringToStlString(u"abc", kCompoundText), "abc");
}

TEST(UnicodeStrUtilsTest, CopiesShareTheBuffer) {
    const ByteString bytes(u"abc", "utf-8");
    const ByteString copy(bytes);
    ByteString assigned(u"other", "utf-8");
    assigned = bytes;
    EXPECT_EQ(copy.buffer.get(), bytes.buffer.get());
    EXPECT_EQ(assigned.buffer.get(), bytes.buffer.get());
    EXPECT_EQ(assigned.length, 3U);
    EXPECT_EQ(bytes.buffer.use_count(), 3);
}

TEST(UnicodeStrUtilsTest, ClearLetsGoAndCopiesKeepTheirs) {
    ByteString bytes(u"abc", "utf-8");
    const ByteString copy(bytes);
    bytes.Clear();
    EXPECT_EQ(bytes.length, 0U);
    EXPECT_EQ(AllBytes(bytes), WithZeros(""));
    EXPECT_EQ(AllBytes(copy), WithZeros("abc"));
    EXPECT_EQ(copy.buffer.use_count(), 1);
}

TEST(UnicodeStrUtilsTest, ToUtf8GivesCountAndTerminatedBytes) {
    boost::shared_array<char> out(new char[1]);
    const boost::shared_array<char> former = out;
    EXPECT_EQ(UnicodeStringToUTF8(u"\u00E9", out), 2);
    EXPECT_EQ(std::string(out.get(), 6), WithZeros("\xC3\xA9"));
    EXPECT_EQ(former.use_count(), 1);
    EXPECT_EQ(out.use_count(), 1);

    EXPECT_EQ(UnicodeStringToUTF8(u"", out), 0);
    EXPECT_EQ(std::string(out.get(), 4), WithZeros(""));
}

TEST(UnicodeStrUtilsTest, ToUtf8LeavesTheOutputWhenItFails) {
    boost::shared_array<char> out(new char[1]);
    const char* const former = out.get();
    const icu::UnicodeString text(u"x");
    const RefusedIcuMemory refused = RefusedIcuMemory::Above(0);
    EXPECT_THROW(UnicodeStringToUTF8(text, out), std::runtime_error);
    EXPECT_EQ(out.get(), former);
}

TEST(UnicodeStrUtilsTest, ToStlStringEndsAtTheFirstZeroByte) {
    const char16_t zero[] = {u'a', 0, u'b'};
    EXPECT_EQ(UnicodeStringToStlString(icu::UnicodeString(zero, 3), "utf-8"), "a");
    EXPECT_EQ(UnicodeStringToStlString(u"ab", "utf-16le"), "a");
    EXPECT_EQ(UnicodeStringToStlString(u"\u00E9", "utf-8"), "\xC3\xA9");
    EXPECT_EQ(UnicodeStringToStlString(u"\u00E9"), "\xC3\xA9");
    EXPECT_EQ(UnicodeStringToStlString(u"", "no-such-code-page"), "");
}

TEST(UnicodeStrUtilsTest, OrderIgnoresCase) {
    const struct {
        icu::UnicodeString first;
        icu::UnicodeString second;
        int order;
        const char* reason;
    } rows[] = {
        {u"Color", u"COLOR", 0, "case only"},
        {u"a", u"B", -1, "a before b whatever the case"},
        {u"B", u"a", 1, "a before b whatever the case"},
        {u"", u"a", -1, "empty first"},
        {u"", u"", 0, "both empty"},
        {u"ab", u"abc", -1, "shorter first"},
        {u"Z", u"_", 1, "z, not Z, is compared"},
        {u"\u00C4", u"\u00E4", 0, "beyond ASCII"},
        {u"stra\u00DFe", u"STRASSE", 0, "full folding"},
        {u"\u212A", u"k", 0, "the Kelvin sign"},
        {u"\u017F", u"s", 0, "the long s"},
        {u"\uFB06", u"ST", 0, "the st ligature"},
        {u"I", u"\u0131", -1, "a dotless i is another letter"},
        {u"\uFF5E", u"\U00010000", 1, "by code unit, not by code point"},
    };
    const UnicodeStringCaseInsensitiveComp less;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_EQ(less(row.first, row.second), row.order < 0);
        EXPECT_EQ(less(row.second, row.first), row.order > 0);
    }
}

TEST(UnicodeStrUtilsTest, OrderServesAMap) {
    std::map<icu::UnicodeString, int, UnicodeStringCaseInsensitiveComp> map;
    map[u"Color"] = 1;
    map[u"COLOR"] = 2;
    map[u"beta"] = 3;
    ASSERT_EQ(map.size(), 2U);
    EXPECT_EQ(Utf8(map.begin()->first), "beta");
    EXPECT_EQ(Utf8(map.rbegin()->first), "Color");
    EXPECT_EQ(map[u"color"], 2);
}
