// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/Utf8Sink.h>

#include "support/ContractChecks.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"

#include <vexaTransferLib/GpxDocument.h>

#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace vexaTransferLib::writer {
namespace {

using namespace testing_support;

constexpr char kSource[] = "tests/unit/Utf8SinkTest.cpp";

std::string Bytes(const UnicodeStrUtils::ByteString& bytes) {
    return std::string(bytes.buffer.get(), bytes.length);
}

std::string Converted(const icu::UnicodeString& text) {
    return Bytes(UnicodeStrUtils::ByteString(text, "utf-8"));
}

std::string Written(const icu::UnicodeString& text) {
    Utf8Sink sink({kSource, __LINE__});
    sink.Raw(text);
    return Bytes(sink.Take());
}

TEST(Utf8SinkTest, WritesEveryCodeUnitAsTheConverterDoes) {
    icu::UnicodeString text;
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit)
        text.append(static_cast<char16_t>(unit)).append(u' ');
    EXPECT_TRUE(Written(text) == Converted(text));
}

TEST(Utf8SinkTest, WritesEveryCharacterBeyondAsTheConverterDoes) {
    icu::UnicodeString text;
    for (UChar32 character = 0x10000; character <= 0x10FFFF; character += 17)
        text.append(character);
    EXPECT_TRUE(Written(text) == Converted(text));
}

TEST(Utf8SinkTest, WritesUnpairedSurrogatesAsTheConverterDoes) {
    constexpr char16_t kUnits[] = {u'a', 0xD800, 0xDBFF, 0xDC00, 0xDFFF, u'<', 0};
    std::mt19937 random(3);
    for (int round = 0; round < 20000; ++round) {
        icu::UnicodeString text;
        for (auto length = random() % 8; length > 0; --length)
            text.append(kUnits[random() % std::size(kUnits)]);
        ASSERT_EQ(Written(text), Converted(text)) << round;
    }
}

TEST(Utf8SinkTest, EscapesAsTheOtherSinkDoes) {
    constexpr char16_t kUnits[] = {u'"', u'&', u'\'', u'<', u'>', u';', u'x', 0xE9, 0x20AC, 0xD83D, 0xDDFB};
    std::mt19937 random(5);
    for (int round = 0; round < 20000; ++round) {
        icu::UnicodeString text;
        for (auto length = random() % 10; length > 0; --length)
            text.append(kUnits[random() % std::size(kUnits)]);
        icu::UnicodeString expected;
        UnicodeSink(expected).Escaped(text);
        Utf8Sink sink({kSource, __LINE__});
        sink.Escaped(text);
        ASSERT_EQ(Bytes(sink.Take()), Converted(expected)) << round;
    }
}

// The lengths are at and above the first capacity, so that a sanitizer reports a byte written past the
// buffer.
TEST(Utf8SinkTest, LongTextsOfOneWidthAreWrittenAsTheConverterDoes) {
    for (const UChar32 character : {0x7F, 0xE9, 0x7FF, 0x20AC, 0xFFFD, 0x1F30D, 0xD800}) {
        for (const std::int32_t count : {1022, 1023, 1024, 1364, 1365, 1366, 2046, 4092, 4093, 100000}) {
            const icu::UnicodeString text(count * U16_LENGTH(character), character, count);
            const std::string expected = Converted(text);
            EXPECT_TRUE(Written(text) == expected) << character << " " << count;
            Utf8Sink sink({kSource, __LINE__});
            sink.Escaped(text);
            sink.Escaped(u"<" + text);
            EXPECT_TRUE(Bytes(sink.Take()) == expected + "&lt;" + expected) << character << " " << count;
            icu::UnicodeString collected;
            UnicodeSink(collected).Escaped(text + u"<" + text);
            EXPECT_TRUE(Converted(collected) == expected + "&lt;" + expected) << character << " " << count;
        }
    }
}

TEST(Utf8SinkTest, TakesPiecesOfEveryKind) {
    Utf8Sink sink({kSource, __LINE__});
    sink.Ascii("<a>");
    sink.Raw(u"\u00E9<");
    sink.Escaped(u"<b>");
    sink.Fixed(-1.5, 3);
    sink.Grouped(1234567);
    sink.Grouped(1234.5678);
    EXPECT_EQ(Bytes(sink.Take()), "<a>\xC3\xA9<&lt;b&gt;-1.5001,234,5671,234.568");
}

TEST(Utf8SinkTest, GivesFourZerosAfterTheText) {
    for (const std::size_t length : {0U, 1U, 4091U, 4092U, 4093U, 4096U, 100000U}) {
        Utf8Sink sink({kSource, __LINE__});
        sink.Ascii(std::string(length, 'x'));
        const UnicodeStrUtils::ByteString bytes = sink.Take();
        EXPECT_EQ(bytes.length, length);
        EXPECT_EQ(std::string(bytes.buffer.get(), length + 4),
                  std::string(length, 'x') + std::string(4, '\0'));
    }
}

TEST(Utf8SinkTest, StartsAnewAfterTake) {
    Utf8Sink sink({kSource, __LINE__});
    sink.Ascii("first");
    const UnicodeStrUtils::ByteString first = sink.Take();
    sink.Ascii("second");
    EXPECT_EQ(Bytes(sink.Take()), "second");
    EXPECT_EQ(Bytes(first), "first");
}

TEST(Utf8SinkTest, ATextBeyondTheLimitIsAnError) {
    constexpr std::size_t kLimit = 10000;
    Utf8Sink fits({kSource, __LINE__}, kLimit);
    fits.Ascii(std::string(kLimit, 'x'));
    EXPECT_EQ(fits.Take().length, kLimit);
    Utf8Sink sink({kSource, __LINE__}, kLimit);
    const auto writeMore = [&sink] {
        for (std::size_t i = 0; i <= kLimit; ++i)
            sink.Ascii("x");
        sink.Take();
    };
    EXPECT_FAILURE(writeMore(), dbc::postcondition_error, "The GPX text is too large to be held in memory.",
                   kSource);
}

TEST(Utf8SinkTest, ADocumentIsTheTextOfItsPartsInUtf8) {
    const GpxDocument document = FullDocument();
    for (const char* number : {"1.0", "1.1"}) {
        const GpxVersion version(icu::UnicodeString::fromUTF8(number));
        icu::UnicodeString parts;
        for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point)
            point->AppendToString(version, parts);
        for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
            route->AppendToString(version, parts);
        for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track)
            track->AppendToString(version, parts);
        const std::string expected = Converted(parts) + "</gpx>\r\n";
        const std::string whole = Bytes(document.GetAsByteString(version, u"App", u"url"));
        ASSERT_GT(whole.size(), expected.size());
        EXPECT_EQ(whole.substr(whole.size() - expected.size()), expected);
    }
}

} // namespace
} // namespace vexaTransferLib::writer
