// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/Elements.h>
#include <vexaTransferLib/writer/TextSink.h>

#include "support/ContractChecks.h"
#include "support/IcuMemory.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>

using namespace vexaTransferLib;
using testing_support::RefusedIcuMemory;
using testing_support::Utf8;
using writer::UnicodeSink;

namespace {

constexpr char kSource[] = "tests/unit/TextSinkTest.cpp";

std::string Sunk(const std::function<void(UnicodeSink&)>& write) {
    icu::UnicodeString out;
    UnicodeSink sink(out);
    write(sink);
    return Utf8(out);
}

} // namespace

TEST(TextSinkTest, AsciiOfAnyLengthIsAppendedWhole) {
    for (const std::size_t length : {0U, 1U, 255U, 256U, 257U, 511U, 512U, 513U, 5000U}) {
        std::string text(length, ' ');
        for (std::size_t i = 0; i < length; ++i)
            text[i] = static_cast<char>('!' + i % 94);
        EXPECT_EQ(Sunk([&](UnicodeSink& sink) { sink.Ascii(text); }), text);
    }
}

TEST(TextSinkTest, PiecesAreAppendedInOrderAfterTheExistingText) {
    icu::UnicodeString out(u"before ");
    UnicodeSink sink(out);
    sink.Ascii("<a>");
    sink.Raw(u"&\u00E9");
    sink.Escaped(u"&\u00E9");
    sink.Fixed(1.5, 2);
    sink.Grouped(1234);
    sink.Grouped(1234.5);
    EXPECT_EQ(Utf8(out), "before <a>&\xC3\xA9&amp;\xC3\xA9"
                         "1.501,2341,234.5");
}

TEST(TextSinkTest, RawAndEscapedTakeEmptyTexts) {
    EXPECT_EQ(Sunk([](UnicodeSink& sink) {
                  sink.Raw(u"");
                  sink.Escaped(u"");
              }),
              "");
}

TEST(TextSinkTest, TextThatIsNotBogusPasses) {
    EXPECT_REPORT(writer::RequireNotBogus(u"", kSource), "");
}

TEST(TextSinkTest, TextThatIcuGaveUpOnIsReported) {
    icu::UnicodeString out;
    UnicodeSink sink(out);
    {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(4096);
        sink.Ascii(std::string(10000, 'x'));
    }
    sink.Ascii("later pieces are ignored");
    EXPECT_TRUE(out.isBogus());
    // The compilers differ about the line of a call within a macro of several lines.
    const auto check = [&] { static_cast<void>(writer::RequireNotBogus(out, kSource)); };
    EXPECT_FAILURE(check(), dbc::postcondition_error, "The GPX text is too large to be held in memory.",
                   kSource);
}

TEST(TextSinkTest, ElementsAreLines) {
    using writer::AppendAsciiElement;
    const struct {
        std::function<void(UnicodeSink&)> write;
        const char* expected;
    } rows[] = {
        {[](UnicodeSink& sink) { writer::AppendOpen(sink, "a"); }, "<a>"},
        {[](UnicodeSink& sink) { writer::AppendLineEnd(sink, "a"); }, "</a>\r\n"},
        {[](UnicodeSink& sink) { writer::AppendTextElement(sink, "a", u"<&>"); }, "<a>&lt;&amp;&gt;</a>\r\n"},
        {[](UnicodeSink& sink) { writer::AppendTextElement(sink, "a", u""); }, ""},
        {[](UnicodeSink& sink) { writer::AppendRawElement(sink, "\t", "a", u"<&>"); }, "\t<a><&></a>\r\n"},
        {[](UnicodeSink& sink) { writer::AppendRawElement(sink, "\t", "a", u""); }, ""},
        {[](UnicodeSink& sink) { AppendAsciiElement(sink, "a", ""); }, "<a></a>\r\n"},
        {[](UnicodeSink& sink) { writer::AppendFixedElement(sink, "a", 1.0, 6); }, "<a>1.000000</a>\r\n"},
        {[](UnicodeSink& sink) { writer::AppendGroupedElement(sink, "\t", "a", 1234); },
         "\t<a>1,234</a>\r\n"},
        {[](UnicodeSink& sink) { writer::AppendGroupedElement(sink, "", "a", 0.5); }, "<a>0.5</a>\r\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Sunk(row.write), row.expected);
}

TEST(TextSinkTest, PolesAndDateLineAreWrittenExactly) {
    constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        double latitude;
        double longitude;
        const char* expected;
        const char* reason;
    } rows[] = {
        {-90.0, -180.0, R"(lat="-90.000000000" lon="-180.000000000")", "the limits"},
        {90.0, 180.0, R"(lat="90.000000000" lon="180.000000000")", "the other limits"},
        {-90.0 - kEpsilon, -180.0 + kEpsilon, R"(lat="-90.000000000" lon="-180.000000000")",
         "within an epsilon"},
        {std::nextafter(90.0, 91.0), 0.0, R"(lat="90.000000000" lon="0.000000000")", "no digit shows it"},
        {91.0, 181.5, R"(lat="91.000000000" lon="181.500000000")", "neither clamped nor refused"},
        {-91.0, -181.5, R"(lat="-91.000000000" lon="-181.500000000")", "neither clamped nor refused"},
        {-0.0, 0.0000000004, R"(lat="-0.000000000" lon="0.000000000")", "below the last decimal"},
        {kNan, kNan, R"(lat="nan" lon="nan")", "not a number"},
    };
    for (const auto& row : rows) {
        const auto write = [&](UnicodeSink& sink) {
            writer::AppendPointStart(sink, "wpt", row.latitude, row.longitude);
        };
        EXPECT_EQ(Sunk(write), std::string("<wpt ") + row.expected + ">\r\n") << row.reason;
    }
}
