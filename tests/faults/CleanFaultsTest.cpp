// SPDX-License-Identifier: MIT

// Cleaning while one request for memory, or that request and all later ones, is refused. Each request is
// refused in turn.

#include <vexaTransferLib/CleanText.h>
#include <vexaTransferLib/GpxParser.h>

#include "support/Attempts.h"
#include "support/IcuMemory.h"
#include "support/Memory.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

using Operation = void (CleanText::*)(icu::UnicodeString&);

struct Pipeline {
    const char* name;
    Operation operation;
    bool leavesUntouched; ///< true when the text is unchanged after a failure
};

constexpr Pipeline kPipelines[] = {
    {"HTMLToPlainText", &CleanText::HTMLToPlainText, false},
    {"StripBBCode", &CleanText::StripBBCode, true},
    {"CleanPlainTextForTova", &CleanText::CleanPlainTextForTova, false},
    {"CleanWebTextForTova", &CleanText::CleanWebTextForTova, false},
    {"ConvertToDosLineBreaks", &CleanText::ConvertToDosLineBreaks, false},
    {"ReplaceHTMLSymbols", &CleanText::ReplaceHTMLSymbols, false},
    {"ReplaceNumericCharacterReferences", &CleanText::ReplaceNumericCharacterReferences, true},
};

const std::set<std::string_view> kDocumented = {
    kBadAlloc,
    "postcondition: The HTML could not be converted to plain text because a replace operation failed.",
    "postcondition: The HTML symbols could not be replaced because a replace operation failed.",
    "postcondition: Unable to replace the BBCode inside a string.",
    "postcondition: Unable to remove extra carriage returns.",
    "postcondition: Unable to insert carriage returns.",
    "postcondition: Unable to replace tab characters.",
    "postcondition: Unable to remove leading and trailing spaces.",
    "postcondition: Unable to remove redundant spaces.",
    "postcondition: Unable to remove extra line breaks.",
    "postcondition: Unable to replace single quotes.",
    "postcondition: Unable to replace double quotes.",
    "postcondition: Unable to trim spaces.",
};

/// A text in which every step replaces something, and which is longer than the texts that ICU stores without
/// memory.
icu::UnicodeString Work() {
    icu::UnicodeString text;
    for (int i = 0; i < 20; ++i)
        text +=
            u" <!--c--><style>x</style><p>\ta<br>\u2018b\u2019 <i>\u201Cc\u201D &#65;\r\n\n\n\n&lt;&amp;  "
            u"\r\u2026\u2013\u2014 d [b]e[/b]\t \tf ";
    return text;
}

template <class Refuse>
std::size_t CleanWithEachRefused(const Pipeline& pipeline, Refuse refuse) {
    const icu::UnicodeString before = Work();
    icu::UnicodeString whole(before);
    (CleanText().*pipeline.operation)(whole);
    return ForEachCall([&](std::size_t call) {
        const long blocks = CppMemory::Blocks();
        icu::UnicodeString text(before);
        const Attempt attempt =
            AttemptWith([&] { return refuse(call); }, [&] { (CleanText().*pipeline.operation)(text); });
        EXPECT_FALSE(text.isBogus());
        if (attempt.Failure().empty()) {
            EXPECT_EQ(Utf8(text), Utf8(whole));
        } else {
            EXPECT_TRUE(kDocumented.contains(attempt.Failure())) << attempt.Failure();
            EXPECT_TRUE(!pipeline.leavesUntouched || text == before) << Utf8(text);
        }
        text = before;
        (CleanText().*pipeline.operation)(text);
        EXPECT_EQ(Utf8(text), Utf8(whole)) << "without a refusal";
        EXPECT_EQ(CppMemory::Blocks(), blocks) << "blocks of memory are lost; " << attempt.Failure();
        return attempt;
    });
}

template <class Refuse>
void CleanEachWay(const std::string& what, Refuse refuse) {
    for (const Pipeline& pipeline : kPipelines) {
        SCOPED_TRACE(pipeline.name);
        Record(what + "_" + pipeline.name, CleanWithEachRefused(pipeline, refuse));
    }
}

TEST(CleanFaultsTest, OneRequestToOperatorNew) {
    CleanEachWay("new", [](std::size_t call) { return RefusedNew::AtCall(call); });
}

TEST(CleanFaultsTest, AllFurtherRequestsToOperatorNew) {
    CleanEachWay("new_on", [](std::size_t call) { return RefusedNew::FromCall(call); });
}

TEST(CleanFaultsTest, OneRequestOfIcu) {
    CleanEachWay("icu", [](std::size_t call) { return RefusedIcuMemory::AtCall(call); });
    const Pipeline& web = kPipelines[3];
    EXPECT_GT(CleanWithEachRefused(web, [](std::size_t call) { return RefusedIcuMemory::AtCall(call); }), 0U);
}

TEST(CleanFaultsTest, MakingACleanerNeedsNoMemory) {
    const auto make = [] { const CleanText cleaner; };
    const Attempt withoutNew = AttemptWith([] { return RefusedNew::FromCall(1); }, make);
    EXPECT_EQ(withoutNew.Failure(), "");
    EXPECT_EQ(withoutNew.refused, 0U);
    const Attempt withoutIcuMemory = AttemptWith([] { return RefusedIcuMemory::Above(0); }, make);
    EXPECT_EQ(withoutIcuMemory.Failure(), "");
    EXPECT_EQ(withoutIcuMemory.refused, 0U);
}

TEST(CleanFaultsTest, AParserWithoutMemoryForItsCleanerSaysSo) {
    const std::size_t calls = ForEachCall([&](std::size_t call) {
        const long blocks = CppMemory::Blocks();
        const Attempt attempt =
            AttemptWith([&] { return RefusedNew::AtCall(call); }, [] { GpxParser parser; });
        if (attempt.refused != 0) {
            EXPECT_EQ(attempt.Failure(), "postcondition: Unable to construct a text cleaner: std::bad_alloc");
        }
        EXPECT_EQ(CppMemory::Blocks(), blocks);
        return attempt;
    });
    EXPECT_GT(calls, 0U);
    Record("new_parser", calls);
    // There is no memory for the message either.
    const Attempt attempt = AttemptWith([] { return RefusedNew::FromCall(1); }, [] { GpxParser parser; });
    EXPECT_EQ(attempt.Failure(), kBadAlloc);
}

} // namespace
} // namespace vexaTransferLib
