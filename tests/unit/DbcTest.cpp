// SPDX-License-Identifier: MIT
#include <common/dbc.h>

#include "support/ContractChecks.h"

#include <stdexcept>
#include <string>
#include <type_traits>

using vexaTransferLib::testing_support::CaptureStandardError;

namespace {

constexpr char kSource[] = "tests/unit/DbcTest.cpp";

template <class Error>
constexpr bool kIsALogicErrorOfItsOwn =
    std::is_base_of_v<std::logic_error, Error> && !std::is_base_of_v<std::invalid_argument, Error> &&
    !std::is_base_of_v<std::domain_error, Error> && !std::is_base_of_v<std::length_error, Error> &&
    !std::is_base_of_v<std::out_of_range, Error>;

static_assert(kIsALogicErrorOfItsOwn<dbc::precondition_error>);
static_assert(kIsALogicErrorOfItsOwn<dbc::postcondition_error>);
static_assert(kIsALogicErrorOfItsOwn<dbc::invariant_error>);
static_assert(!std::is_base_of_v<dbc::precondition_error, dbc::postcondition_error>);
static_assert(!std::is_base_of_v<dbc::precondition_error, dbc::invariant_error>);
static_assert(!std::is_base_of_v<dbc::postcondition_error, dbc::precondition_error>);
static_assert(!std::is_base_of_v<dbc::postcondition_error, dbc::invariant_error>);
static_assert(!std::is_base_of_v<dbc::invariant_error, dbc::precondition_error>);
static_assert(!std::is_base_of_v<dbc::invariant_error, dbc::postcondition_error>);

// The text that a statement writes to standard error; its exception, if any, is ignored.
template <class Action>
std::string Written(Action action) {
    return CaptureStandardError([&] {
        try {
            action();
        } catch (const std::logic_error&) {
        }
    });
}

std::string ReportOfLine(int line) {
    return std::string("ASSERT failed at ") + kSource + ":" + std::to_string(line) + "\n";
}

} // namespace

TEST(DbcTest, TheMessageIsWhat) {
    EXPECT_STREQ(dbc::precondition_error("pre").what(), "pre");
    EXPECT_STREQ(dbc::postcondition_error("post").what(), "post");
    EXPECT_STREQ(dbc::invariant_error("inv").what(), "inv");
    EXPECT_STREQ(dbc::precondition_error(std::string()).what(), "");
}

TEST(DbcTest, ErrorsCanBeCopied) {
    const dbc::precondition_error pre("pre");
    const dbc::postcondition_error post("post");
    const dbc::invariant_error inv("inv");
    dbc::precondition_error preCopy("");
    dbc::postcondition_error postCopy("");
    dbc::invariant_error invCopy("");
    preCopy = pre;
    postCopy = post;
    invCopy = inv;
    EXPECT_STREQ(dbc::precondition_error(preCopy).what(), "pre");
    EXPECT_STREQ(dbc::postcondition_error(postCopy).what(), "post");
    EXPECT_STREQ(dbc::invariant_error(invCopy).what(), "inv");
}

TEST(DbcTest, ReportNamesSourceAndLine) {
    EXPECT_EQ(CaptureStandardError([] { dbc::ReportFailure(kSource, 123); }), ReportOfLine(123));
}

namespace {

/// Sets a handler as long as this object exists.
class HandlerScope {
public:
    HandlerScope(dbc::ReportHandler handler, void* context)
        : former_(dbc::SetReportHandler(handler, context)) {}
    ~HandlerScope() { dbc::SetReportHandler(former_.handler, former_.context); }
    HandlerScope(const HandlerScope&) = delete;
    HandlerScope& operator=(const HandlerScope&) = delete;

private:
    dbc::ReportReceiver former_;
};

void AppendReport(const char* source, int line, void* context) noexcept {
    static_cast<std::string*>(context)->append(source).append(" ").append(std::to_string(line)).append("\n");
}

} // namespace

TEST(ReportHandlerTest, ReceivesTheReportInsteadOfStandardError) {
    std::string reports;
    const HandlerScope scope(AppendReport, &reports);
    EXPECT_EQ(Written([] {
                  dbc::ReportFailure(kSource, 1);
                  dbc::SoftCheck(false, kSource, 2);
                  dbc::SoftCheck(true, kSource, 3);
                  dbc::FailPrecondition(kSource, 4, "m");
              }),
              "");
    EXPECT_EQ(Written([] { dbc::Ensure(false, kSource, "m", 5); }), "");
    const std::string source(kSource);
    EXPECT_EQ(reports, source + " 1\n" + source + " 2\n" + source + " 4\n" + source + " 5\n");
}

TEST(ReportHandlerTest, WithoutAHandlerReportsAreDroppedAndErrorsThrown) {
    const HandlerScope scope(nullptr, nullptr);
    EXPECT_EQ(Written([] { dbc::ReportFailure(kSource, 1); }), "");
    EXPECT_EQ(CaptureStandardError(
                  [] { EXPECT_THROW(dbc::FailPostcondition(kSource, 2, "m"), dbc::postcondition_error); }),
              "");
}

TEST(ReportHandlerTest, TheFormerSettingIsGivenBack) {
    std::string reports;
    const dbc::ReportReceiver first = dbc::SetReportHandler(AppendReport, &reports);
    EXPECT_EQ(first.handler, &dbc::WriteReport);
    EXPECT_EQ(first.context, nullptr);
    const dbc::ReportReceiver second = dbc::SetReportHandler(nullptr, nullptr);
    EXPECT_EQ(second.handler, &AppendReport);
    EXPECT_EQ(second.context, &reports);
    const dbc::ReportReceiver third = dbc::SetReportHandler(first.handler, first.context);
    EXPECT_EQ(third.handler, nullptr);
    EXPECT_EQ(Written([] { dbc::ReportFailure(kSource, 7); }), ReportOfLine(7));
    EXPECT_EQ(reports, "");
}

TEST(ReportHandlerTest, MaySetAnotherHandler) {
    const HandlerScope scope(
        [](const char*, int, void*) noexcept { dbc::SetReportHandler(nullptr, nullptr); }, nullptr);
    dbc::ReportFailure(kSource, 1);
    EXPECT_EQ(dbc::SetReportHandler(nullptr, nullptr).handler, nullptr);
}

TEST(DbcTest, FailuresReportAndThrowTheErrorOfTheirName) {
    EXPECT_FAILURE(dbc::FailPrecondition(kSource, __LINE__, "m"), dbc::precondition_error, "m", kSource);
    EXPECT_FAILURE(dbc::FailPostcondition(kSource, __LINE__, "m"), dbc::postcondition_error, "m", kSource);
    EXPECT_FAILURE(dbc::FailInvariant(kSource, __LINE__, "m"), dbc::invariant_error, "m", kSource);
    EXPECT_EQ(Written([] { dbc::FailPrecondition(kSource, 1, "m"); }), ReportOfLine(1));
    EXPECT_EQ(Written([] { dbc::FailPostcondition(kSource, 2, "m"); }), ReportOfLine(2));
    EXPECT_EQ(Written([] { dbc::FailInvariant(kSource, 3, "m"); }), ReportOfLine(3));
}

TEST(DbcTest, ChecksThatHoldAreSilent) {
    EXPECT_REPORT(dbc::Require(true, kSource, "m"), "");
    EXPECT_REPORT(dbc::Ensure(true, kSource, "m"), "");
    EXPECT_REPORT(dbc::Invariant(true, kSource, "m"), "");
    EXPECT_REPORT(EXPECT_TRUE(dbc::SoftCheck(true, kSource)), "");
}

TEST(DbcTest, ChecksThatFailThrowTheErrorOfTheirKind) {
    EXPECT_FAILURE(dbc::Require(false, kSource, "m"), dbc::precondition_error, "m", kSource);
    EXPECT_FAILURE(dbc::Ensure(false, kSource, "m"), dbc::postcondition_error, "m", kSource);
    EXPECT_FAILURE(dbc::Invariant(false, kSource, "m"), dbc::invariant_error, "m", kSource);
}

TEST(DbcTest, SoftCheckReportsAndReturns) {
    bool result = true;
    EXPECT_REPORT(result = dbc::SoftCheck(false, kSource), kSource);
    EXPECT_FALSE(result);
    EXPECT_TRUE(dbc::SoftCheck(true, kSource));
}

TEST(DbcTest, TheLineIsTheCallersUnlessGiven) {
    const int here = __LINE__;
    EXPECT_EQ(Written([] { dbc::Require(false, kSource, "m"); }), ReportOfLine(here + 1));
    EXPECT_EQ(Written([] { dbc::Ensure(false, kSource, "m"); }), ReportOfLine(here + 2));
    EXPECT_EQ(Written([] { dbc::Invariant(false, kSource, "m"); }), ReportOfLine(here + 3));
    EXPECT_EQ(Written([] { dbc::SoftCheck(false, kSource); }), ReportOfLine(here + 4));
    EXPECT_EQ(Written([] { dbc::Require(false, kSource, "m", 42); }), ReportOfLine(42));
}
