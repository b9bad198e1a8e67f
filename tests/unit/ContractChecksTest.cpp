// SPDX-License-Identifier: MIT
#include "support/ContractChecks.h"

#include <common/dbc.h>

#include <cstdio>
#include <stdexcept>
#include <vector>

using vexaTransferLib::testing_support::CaptureStandardError;
using vexaTransferLib::testing_support::IsOneReport;
using vexaTransferLib::testing_support::ReportedLine;
using vexaTransferLib::testing_support::ReportsOnly;
using vexaTransferLib::testing_support::Throws;

namespace {

constexpr char kSource[] = "tests/unit/ContractChecksTest.cpp";
constexpr char kPointSource[] = "LibCore/vexaTransferLib/GpxPoint.cpp";
constexpr char kOtherSource[] = "LibCore/vexaTransferLib/GpxUtils.cpp";

void FailAsExpected() {
    dbc::FailPrecondition(kSource, __LINE__, "message");
}

void Write(const char* text) {
    std::fputs(text, stderr);
}

} // namespace

TEST(ContractChecksTest, CaptureGivesWhatWasWrittenAndNoMore) {
    EXPECT_EQ(CaptureStandardError([] { Write("one\ntwo"); }), "one\ntwo");
    EXPECT_EQ(CaptureStandardError([] {}), "");
}

TEST(ContractChecksTest, CaptureEndsWhenTheActionThrows) {
    EXPECT_THROW(CaptureStandardError([] { throw std::runtime_error("x"); }), std::runtime_error);
    EXPECT_EQ(CaptureStandardError([] { Write("next"); }), "next");
}

TEST(ContractChecksTest, OneReportIsOneWholeLineOfTheSource) {
    const struct {
        const char* text;
        bool expected;
        const char* reason;
    } rows[] = {
        {"ASSERT failed at LibCore/vexaTransferLib/GpxPoint.cpp:7\n", true, "as it is written"},
        {"ASSERT failed at LibCore/vexaTransferLib/GpxPoint.cpp:1234567\n", true, "any line"},
        {"", false, "no report"},
        {"ASSERT failed at LibCore/vexaTransferLib/GpxPoint.cpp:7", false, "no line end"},
        {"ASSERT failed at LibCore/vexaTransferLib/GpxPoint.cpp:7\r\n", false, "wrong line end"},
        {"ASSERT failed at LibCore/vexaTransferLib/GpxPoint.cpp:7\n"
         "ASSERT failed at LibCore/vexaTransferLib/GpxPoint.cpp:7\n",
         false, "two lines"},
        {"ASSERT failed at LibCore/vexaTransferLib/GpxPoint.cpp:7\nmore", false, "something behind it"},
        {"first ASSERT failed at LibCore/vexaTransferLib/GpxPoint.cpp:7\n", false, "something before it"},
        {"ASSERT failed at LibCore/vexaTransferLib/GpxUtils.cpp:7\n", false, "another source"},
        {"ASSERT failed at LibCore/vexaTransferLib/GpxPointXcpp:7\n", false,
         "the full stop stands for itself"},
        {"ASSERT failed at /home/LibCore/vexaTransferLib/GpxPoint.cpp:7\n", false, "a machine's path"},
        {"ASSERT failed at LibCore/vexaTransferLib/GpxPoint:7\n", false, "no extension"},
        {"ASSERT failed at LibCore/vexaTransferLib/GpxPoint.cpp:0\n", false, "line zero"},
        {"ASSERT failed at LibCore/vexaTransferLib/GpxPoint.cpp:\n", false, "no line"},
        {"ASSERT failed at LibCore/vexaTransferLib/GpxPoint.cpp:-7\n", false, "no number"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(static_cast<bool>(IsOneReport(row.text, kPointSource)), row.expected) << row.reason;
}

TEST(ContractChecksTest, ThrowsHoldsWhenTypeMessageAndReportAgree) {
    EXPECT_TRUE(Throws(FailAsExpected, typeid(dbc::precondition_error), "message", kSource));
    EXPECT_TRUE(Throws([] { throw std::runtime_error("quiet"); }, typeid(std::runtime_error), "quiet", ""));
}

TEST(ContractChecksTest, ThrowsFailsWhenAnythingDiffers) {
    EXPECT_FALSE(Throws([] {}, typeid(dbc::precondition_error), "message", kSource)) << "nothing thrown";
    EXPECT_FALSE(Throws([] { dbc::ReportFailure(kSource, __LINE__); }, typeid(dbc::precondition_error),
                        "message", kSource))
        << "only reported";
    EXPECT_FALSE(Throws(FailAsExpected, typeid(dbc::postcondition_error), "message", kSource))
        << "another type";
    EXPECT_FALSE(Throws(FailAsExpected, typeid(std::logic_error), "message", kSource))
        << "a base of the type";
    EXPECT_FALSE(Throws(FailAsExpected, typeid(dbc::precondition_error), "messag", kSource))
        << "shorter message";
    EXPECT_FALSE(Throws(FailAsExpected, typeid(dbc::precondition_error), "message.", kSource))
        << "longer message";
    EXPECT_FALSE(Throws(FailAsExpected, typeid(dbc::precondition_error), "message", kOtherSource))
        << "another source";
    EXPECT_FALSE(Throws(FailAsExpected, typeid(dbc::precondition_error), "message", ""))
        << "a report where none may be";
    EXPECT_FALSE(Throws([] { throw dbc::precondition_error("message"); }, typeid(dbc::precondition_error),
                        "message", kSource))
        << "no report";
    EXPECT_FALSE(Throws(
        [] {
            dbc::ReportFailure(kSource, __LINE__);
            FailAsExpected();
        },
        typeid(dbc::precondition_error), "message", kSource))
        << "two reports";
    EXPECT_FALSE(Throws(
        [] {
            Write("something\n");
            throw std::runtime_error("quiet");
        },
        typeid(std::runtime_error), "quiet", ""))
        << "something else written";
}

TEST(ContractChecksTest, ThrowsLetsForeignExceptionsThrough) {
    EXPECT_THROW(static_cast<void>(Throws([] { throw 1; }, typeid(std::runtime_error), "", "")), int);
    EXPECT_EQ(CaptureStandardError([] { Write("still works"); }), "still works");
}

TEST(ContractChecksTest, ReportsOnlyWantsOneReportAndNoException) {
    EXPECT_TRUE(ReportsOnly([] { dbc::ReportFailure(kSource, __LINE__); }, kSource));
    EXPECT_TRUE(ReportsOnly([] {}, ""));

    EXPECT_FALSE(ReportsOnly([] {}, kSource)) << "no report";
    EXPECT_FALSE(ReportsOnly([] { dbc::ReportFailure(kOtherSource, __LINE__); }, kSource))
        << "another source";
    EXPECT_FALSE(ReportsOnly([] { dbc::ReportFailure(kSource, __LINE__); }, ""))
        << "a report where none may be";
    EXPECT_FALSE(ReportsOnly(
        [] {
            dbc::ReportFailure(kSource, __LINE__);
            dbc::ReportFailure(kSource, __LINE__);
        },
        kSource))
        << "two reports";
    EXPECT_FALSE(ReportsOnly(FailAsExpected, kSource)) << "thrown as well";
}

TEST(ContractChecksTest, AReportMustNameALineThatHasACheck) {
    const std::string first = "ASSERT failed at tests/unit/ContractChecksTest.cpp:1\n";
    EXPECT_EQ(ReportedLine(first), "// SPDX-License-Identifier: MIT");
    EXPECT_EQ(ReportedLine("ASSERT failed at tests/unit/ContractChecksTest.cpp:1000000\n"), "");
    EXPECT_EQ(ReportedLine("ASSERT failed at no/such/file.cpp:1\n"), "");
    EXPECT_EQ(ReportedLine("nothing"), "");

    EXPECT_FALSE(ReportsOnly([] { dbc::ReportFailure(kSource, 1); }, kSource)) << "a line without a check";
    EXPECT_FALSE(ReportsOnly([] { dbc::ReportFailure(kSource, 1000000); }, kSource)) << "past the file's end";
    EXPECT_FALSE(Throws([] { dbc::FailInvariant(kSource, 1, "message"); }, typeid(dbc::invariant_error),
                        "message", kSource))
        << "a line without a check";
    EXPECT_FALSE(ReportsOnly([] { dbc::ReportFailure("no/such/file.cpp", __LINE__); }, "no/such/file.cpp"))
        << "no such file";
}

TEST(ContractChecksTest, MacrosTakeAnyStatement) {
    int calls = 0;
    EXPECT_FAILURE((++calls, FailAsExpected()), dbc::precondition_error, "message", kSource);
    EXPECT_REPORT((++calls, dbc::SoftCheck(false, kSource)), kSource);
    EXPECT_EQ(calls, 2);
}
