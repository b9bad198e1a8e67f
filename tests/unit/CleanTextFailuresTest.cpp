// SPDX-License-Identifier: MIT
#include <vexaTransferLib/CleanText.h>

#include <vexaTransferLib/cleaner/Steps.h>

#include <common/dbc.h>

#include "support/ContractChecks.h"
#include "support/IcuMemory.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>
#include <unicode/uclean.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <functional>
#include <new>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace vexaTransferLib {

namespace {

using testing_support::CaptureStandardError;
using testing_support::IsOneReport;
using testing_support::RefusedIcuMemory;
using testing_support::Utf8;

using Matcher = boost::scoped_ptr<icu::RegexMatcher>;
using Operation = void (CleanText::*)(icu::UnicodeString&);

constexpr char kSource[] = "LibCore/vexaTransferLib/CleanText.h";

constexpr char kHtml[] = "The HTML could not be converted to plain text because a replace operation failed.";
constexpr char kSymbols[] = "The HTML symbols could not be replaced because a replace operation failed.";
constexpr char kBBCode[] = "Unable to replace the BBCode inside a string.";
constexpr char kRemoveReturns[] = "Unable to remove extra carriage returns.";
constexpr char kInsertReturns[] = "Unable to insert carriage returns.";
constexpr char kTabs[] = "Unable to replace tab characters.";
constexpr char kLineEdges[] = "Unable to remove leading and trailing spaces.";
constexpr char kSpaces[] = "Unable to remove redundant spaces.";
constexpr char kLineBreaks[] = "Unable to remove extra line breaks.";
constexpr char kSingleQuotes[] = "Unable to replace single quotes.";
constexpr char kDoubleQuotes[] = "Unable to replace double quotes.";
constexpr char kTextEdges[] = "Unable to trim spaces.";
constexpr char kOutOfMemory[] = "std::bad_alloc";

icu::UnicodeString Repeated(const char16_t* unit, int count) {
    icu::UnicodeString text;
    for (; count > 0; --count)
        text.append(unit, -1);
    return text;
}

void MakeMatcher(Matcher& matcher, const char16_t* expression) {
    UErrorCode status = U_ZERO_ERROR;
    matcher.reset(new icu::RegexMatcher(icu::UnicodeString(expression), 0, status));
    ASSERT_TRUE(U_SUCCESS(status));
}

struct ReplaceRow {
    const char16_t* expression;
    const char16_t* text;
    const char16_t* replacement;
    const char16_t* expected;
    const char* reason;
};

TEST(CleanTextReplaceTest, ReplacesAllMatchesByTheEnginesReplacementSyntax) {
    static constexpr ReplaceRow kRows[] = {
        {u"b", u"abcb", u"x", u"axcx", "plain text"},
        {u"b", u"abcb", u"", u"ac", "nothing"},
        {u"b+", u"abbc", u"<$0$0>", u"a<bbbb>c", "the match"},
        {u"(a)(b)", u"abab", u"$2$1", u"baba", "groups"},
        {u"b", u"abc", u"\\$\\\\", u"a$\\c", "escaped characters"},
        {u"x*", u"ab", u"-", u"-a-b-", "empty matches"},
        {u"b", u"", u"x", u"", "an empty text"},
        {u"b", u"ac", u"$", u"ac", "no match: the replacement is not read"},
    };
    for (const ReplaceRow& row : kRows) {
        Matcher matcher;
        MakeMatcher(matcher, row.expression);
        icu::UnicodeString text(row.text);
        CleanText().RegexReplaceAll(matcher, text, row.replacement, "unused");
        EXPECT_EQ(Utf8(text), Utf8(row.expected)) << row.reason;
    }
}

TEST(CleanTextReplaceTest, FailsWithTheGivenMessageAndLeavesWhatWasNotReplaced) {
    static constexpr ReplaceRow kRows[] = {
        {u"b", u"abcb", u"$", u"abcb", "a lone dollar sign"},
        {u"b", u"abcb", u"x$", u"abcb", "half a replacement is none"},
        {u"b", u"abcb", u"$1", u"abcb", "no such group"},
        {u"b", u"abcb", u"${name}", u"abcb", "no such name"},
    };
    for (const ReplaceRow& row : kRows) {
        Matcher matcher;
        MakeMatcher(matcher, row.expression);
        icu::UnicodeString text(row.text);
        EXPECT_FAILURE(
            CleanText().RegexReplaceAll(matcher, text, row.replacement, "The caller's message: 100 %."),
            dbc::postcondition_error, "The caller's message: 100 %.", kSource)
            << row.reason;
        EXPECT_EQ(Utf8(text), Utf8(row.expected)) << row.reason;
    }
}

TEST(CleanTextReplaceTest, TheTextMayBeItsOwnReplacement) {
    Matcher matcher;
    MakeMatcher(matcher, u"b");
    icu::UnicodeString text(u"abcb");
    CleanText().RegexReplaceAll(matcher, text, text, "unused");
    EXPECT_EQ(Utf8(text), "aabcbcabcb");
}

TEST(CleanTextReplaceTest, TheMatchersFormerUseDoesNotCount) {
    Matcher matcher;
    MakeMatcher(matcher, u"b");
    const icu::UnicodeString former(u"bbb");
    UErrorCode status = U_ZERO_ERROR;
    matcher->reset(former).region(1, 2, status);
    ASSERT_TRUE(matcher->find());
    icu::UnicodeString text(u"bab");
    CleanText().RegexReplaceAll(matcher, text, u"x", "unused");
    EXPECT_EQ(Utf8(text), "xax");
}

TEST(CleanTextReplaceTest, WhenTheEngineGivesUpTheTextHoldsWhatWasReplacedSoFar) {
    Matcher matcher;
    MakeMatcher(matcher, u"(?:ab|a)+c");
    UErrorCode status = U_ZERO_ERROR;
    matcher->setStackLimit(4096, status);
    ASSERT_TRUE(U_SUCCESS(status));
    const icu::UnicodeString rest = u"-" + Repeated(u"ab", 4000) + u"c-abc";
    icu::UnicodeString text = u"abc-ac" + rest;
    EXPECT_FAILURE(CleanText().RegexReplaceAll(matcher, text, u"[$0]", "gave up"), dbc::postcondition_error,
                   "gave up", kSource);
    EXPECT_EQ(Utf8(text), Utf8(u"[abc]-[ac]" + rest));

    icu::UnicodeString next(u"abc");
    CleanText().RegexReplaceAll(matcher, next, u"x", "unused");
    EXPECT_EQ(Utf8(next), "x") << "the matcher can be used again";
}

TEST(CleanTextReplaceDeathTest, AnEmptyHolderStopsTheProcess) {
    EXPECT_EXIT(
        {
            const Matcher none;
            icu::UnicodeString text(u"a");
            CleanText().RegexReplaceAll(none, text, u"b", "unused");
        },
        testing::KilledBySignal(SIGABRT),
        "^ASSERT failed at LibCore/vexaTransferLib/CleanText\\.h:[1-9][0-9]*\n$");
}

TEST(CleanTextMemoryTest, ATextWithoutMemoryForItsResultIsUnchanged) {
    struct MemoryRow {
        Operation operation;
        icu::UnicodeString text;
        const char* message;
    };
    const MemoryRow rows[] = {
        {&CleanText::HTMLToPlainText, Repeated(u"<!--a-->b", 5'000), kHtml},
        {&CleanText::StripBBCode, Repeated(u"[b]a", 10'000), kBBCode},
        {&CleanText::CleanPlainTextForTova, Repeated(u"ab \n", 10'000), kLineEdges},
        {&CleanText::ConvertToDosLineBreaks, Repeated(u"a\r", 10'000), kRemoveReturns},
        {&CleanText::ConvertToDosLineBreaks, Repeated(u"\n", 3'000), kInsertReturns},
        {&CleanText::ReplaceNumericCharacterReferences, Repeated(u"&#65;b", 10'000), kSymbols},
        {&CleanText::ReplaceHTMLSymbols, Repeated(u"&#65;b", 10'000), kSymbols},
    };
    constexpr std::size_t kLargestRequest = 8'192;
    for (const MemoryRow& row : rows) {
        icu::UnicodeString text(row.text);
        {
            const RefusedIcuMemory refused = RefusedIcuMemory::Above(kLargestRequest);
            EXPECT_FAILURE((CleanText().*row.operation)(text), dbc::postcondition_error, row.message,
                           kSource);
            EXPECT_GT(refused.Refused(), 0U);
        }
        EXPECT_TRUE(text == row.text) << row.message;
    }
}

TEST(CleanTextMemoryTest, APlainReplacementWithoutMemoryForItsResultIsOutOfMemory) {
    const icu::UnicodeString dashes = Repeated(u"\u2014", 3'000);
    icu::UnicodeString text(dashes);
    const RefusedIcuMemory refused = RefusedIcuMemory::Above(8'192);
    EXPECT_THROW(CleanText().CleanPlainTextForTova(text), std::bad_alloc);
    EXPECT_TRUE(text == dashes);
}

using Step = bool (*)(icu::UnicodeString&);

// The text before the first step, after it, after the second ...
std::vector<icu::UnicodeString> States(icu::UnicodeString text, const std::vector<Step>& steps) {
    std::vector<icu::UnicodeString> states{text};
    for (const Step step : steps) {
        EXPECT_TRUE(step(text));
        if (text != states.back())
            states.push_back(text);
    }
    return states;
}

bool FailsWithRequest(std::size_t number, Operation operation, icu::UnicodeString& text, bool& refused) {
    const RefusedIcuMemory memory = RefusedIcuMemory::AtCall(number);
    bool failed = false;
    CaptureStandardError([&] {
        try {
            (CleanText().*operation)(text);
        } catch (const std::exception&) {
            failed = true;
        }
    });
    refused = memory.Refused() > 0;
    return failed;
}

// Each request for memory is refused in turn. The text must then be the result of the steps before the one
// that failed.
void ExpectAllStatesAreLeft(Operation operation, const icu::UnicodeString& text,
                            const std::vector<Step>& steps) {
    const std::vector<icu::UnicodeString> states = States(text, steps);
    std::size_t reached = 0;
    bool refused = true;
    for (std::size_t number = 1; refused; ++number) {
        icu::UnicodeString left(text);
        if (!FailsWithRequest(number, operation, left, refused)) {
            EXPECT_TRUE(left == states.back()) << "request " << number;
            continue;
        }
        if (reached + 1 < states.size() && left == states[reached + 1])
            ++reached;
        EXPECT_TRUE(left == states[reached]) << "request " << number << " left\n" << Utf8(left);
    }
    EXPECT_EQ(reached + 2, states.size()) << "every state but the last is left by a failure";
}

// ICU's memory in a child process, where replacing it does not affect the process of the tests.
struct IcuHeap {
    std::size_t firstRefused = 0; // counted from 1, and all requests after it; 0: none
    std::size_t counted = 0;
    std::size_t refused = 0;

    bool Refuses() {
        ++counted;
        const bool refuse = firstRefused != 0 && counted >= firstRefused;
        refused += refuse ? 1 : 0;
        return refuse;
    }

    void RefuseFrom(std::size_t number) {
        firstRefused = number;
        counted = 0;
        refused = 0;
    }

    void RefuseNone() { firstRefused = 0; }
};

IcuHeap heap;

void* U_CALLCONV Allocate(const void*, std::size_t size) {
    return heap.Refuses() ? nullptr : std::malloc(size);
}

void* U_CALLCONV Reallocate(const void*, void* memory, std::size_t size) {
    return heap.Refuses() ? nullptr : std::realloc(memory, size);
}

void U_CALLCONV Free(const void*, void* memory) {
    std::free(memory);
}

// The result of `action` in a child process in which ICU allocates through `heap`.
std::string InChild(const std::function<std::string()>& action) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        return "no pipe";
    const pid_t child = fork();
    if (child == 0) {
        UErrorCode status = U_ZERO_ERROR;
        u_setMemoryFunctions(nullptr, Allocate, Reallocate, Free, &status);
        const std::string result = U_SUCCESS(status) ? action() : "ICU did not take the memory functions\n";
        const bool written =
            write(ends[1], result.data(), result.size()) == static_cast<ssize_t>(result.size());
        _exit(written ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    close(ends[1]);
    std::string result;
    std::array<char, 4096> buffer{};
    for (ssize_t got = 0; (got = read(ends[0], buffer.data(), buffer.size())) > 0;)
        result.append(buffer.data(), static_cast<std::size_t>(got));
    close(ends[0]);
    int state = 0;
    if (child < 0 || waitpid(child, &state, 0) != child || !WIFEXITED(state) ||
        WEXITSTATUS(state) != EXIT_SUCCESS)
        result += "the child died\n";
    return result;
}

// The message of the failure, or what is wrong with it; empty when there was none.
std::string FailureOf(const std::function<void()>& action) {
    std::string failure;
    bool reports = true;
    const std::string written = CaptureStandardError([&] {
        try {
            action();
            reports = false;
        } catch (const dbc::postcondition_error& error) {
            failure = error.what();
        } catch (const std::bad_alloc&) {
            failure = kOutOfMemory;
            reports = false;
        } catch (const std::exception& error) {
            failure = std::string("unexpected: ") + error.what();
        }
        heap.RefuseNone();
    });
    const bool asItShould = reports ? static_cast<bool>(IsOneReport(written, kSource)) : written.empty();
    return asItShould ? failure : failure + " reported as " + written;
}

void AppendUnlessLast(std::string& lines, std::string& last, const std::string& line) {
    if (line == last)
        return;
    lines += line + '\n';
    last = line;
}

// The messages of an operation while all requests from the 1st, 2nd ... on are refused.
std::string OperationFailures(Operation operation, const icu::UnicodeString& input) {
    icu::UnicodeString expected(input);
    (CleanText().*operation)(expected);
    std::string lines;
    std::string last;
    for (std::size_t number = 1;; ++number) {
        icu::UnicodeString text(input);
        heap.RefuseFrom(number);
        const std::string failure = FailureOf([&] { (CleanText().*operation)(text); });
        const bool refused = heap.refused != 0;
        if (!failure.empty())
            AppendUnlessLast(lines, last, failure);
        else if (text != expected)
            lines += "wrong text without a failure\n";
        if (!refused)
            return lines;
    }
}

std::string Lines(const std::vector<const char*>& messages) {
    std::string lines;
    for (const char* message : messages)
        lines += std::string(message) + '\n';
    return lines;
}

// Longer than the short strings that need no memory, and every step changes it.
icu::UnicodeString WorkForAllSteps() {
    return Repeated(
        u"\t <!--c--><style>x</style><p>\ta<br>\u2018b\u2019 <i>\u201Cc\u201D &#65;\r\n\n\n\n&lt;&amp;  "
        u"\r\u2026\u2013\u2014 d [b]e [/b] f\t \tg\n[b] h ",
        20);
}

TEST(CleanTextMemoryTest, AFailedStepLeavesTheTextAsTheStepsBeforeLeftIt) {
    ExpectAllStatesAreLeft(&CleanText::HTMLToPlainText, WorkForAllSteps(),
                           {cleaner::RemoveComments, cleaner::RemoveStylesAndScripts, cleaner::ReplaceTabs,
                            cleaner::ReplaceBlockTags, cleaner::ReplaceBreakTags, cleaner::RemoveTags,
                            cleaner::ReplaceNumericReferences, cleaner::ReplaceNamedReferences,
                            cleaner::RemoveLoneCarriageReturns, cleaner::CompleteLineFeeds,
                            cleaner::TrimLines, cleaner::CollapseSpaces, cleaner::CollapseLineBreaks});
    ExpectAllStatesAreLeft(&CleanText::CleanPlainTextForTova, WorkForAllSteps(),
                           {cleaner::TrimLines, cleaner::ReplaceEllipses, cleaner::StraightenSingleQuotes,
                            cleaner::StraightenDoubleQuotes, cleaner::ReplaceDashes, cleaner::ReplaceTabs,
                            cleaner::CollapseSpaces, cleaner::TrimText});
}

TEST(CleanTextMemoryTest, EveryStepReportsWithItsOwnMessage) {
    struct StepsRow {
        Operation operation;
        std::vector<const char*> messages;
    };
    const StepsRow rows[] = {
        {&CleanText::ConvertToDosLineBreaks, {kRemoveReturns, kInsertReturns}},
        {&CleanText::StripBBCode, {kBBCode}},
        {&CleanText::ReplaceNumericCharacterReferences, {kSymbols}},
        {&CleanText::ReplaceHTMLSymbols, {kSymbols, kOutOfMemory}},
        {&CleanText::HTMLToPlainText,
         {kHtml, kTabs, kHtml, kSymbols, kOutOfMemory, kRemoveReturns, kInsertReturns, kLineEdges, kSpaces,
          kLineBreaks}},
        {&CleanText::CleanPlainTextForTova,
         {kLineEdges, kOutOfMemory, kSingleQuotes, kDoubleQuotes, kOutOfMemory, kTabs, kSpaces, kTextEdges}},
        {&CleanText::CleanWebTextForTova,
         {kHtml, kTabs, kHtml, kSymbols, kOutOfMemory, kRemoveReturns, kInsertReturns, kLineEdges, kSpaces,
          kLineBreaks, kBBCode, kLineEdges, kOutOfMemory, kSingleQuotes, kDoubleQuotes, kOutOfMemory,
          kSpaces}}, // no tabs are left for the last pipeline, and none that would become spaces at its ends
    };
    for (const StepsRow& row : rows)
        EXPECT_EQ(InChild([&] { return OperationFailures(row.operation, WorkForAllSteps()); }),
                  Lines(row.messages));
}

} // namespace

} // namespace vexaTransferLib
