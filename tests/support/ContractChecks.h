// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <typeinfo>

namespace vexaTransferLib::testing_support {

/// The text that was written to standard error while `action` ran.
std::string CaptureStandardError(const std::function<void()>& action);

/// True when `text` is exactly one contract report line that names `source` (a path from the repository
/// root).
testing::AssertionResult IsOneReport(const std::string& text, const std::string& source);

/// The line of our sources that the first report of `text` names, without the blanks before it; empty when there is no
/// such line.
std::string ReportedLine(const std::string& text);

/// True when `action` throws exactly the given type (see CaughtAs), with exactly this `what()`, and writes exactly one
/// contract report that names `source` and a line there that has a check; an empty `source` means that nothing at all
/// may be written.
testing::AssertionResult Throws(const std::function<void()>& action, const std::type_info& type,
                                const std::string& message, const std::string& source);

/// True when `action` does not throw and writes exactly one contract report that names `source` and a line there that
/// has a check.
testing::AssertionResult ReportsOnly(const std::function<void()>& action, const std::string& source);

} // namespace vexaTransferLib::testing_support

/// EXPECT_FAILURE(point.SetName(u""), dbc::precondition_error, "The GPX ...",
/// "LibCore/vexaTransferLib/GpxUtils.cpp");
#define EXPECT_FAILURE(statement, error, message, source)                                                    \
    EXPECT_TRUE(vexaTransferLib::testing_support::Throws([&] { static_cast<void>(statement); },              \
                                                         typeid(error), message, source))

/// EXPECT_REPORT(EXPECT_FALSE(ParseGpxTime("", millis)), "LibCore/vexaTransferLib/GpxUtils.cpp");
#define EXPECT_REPORT(statement, source)                                                                     \
    EXPECT_TRUE(vexaTransferLib::testing_support::ReportsOnly([&] { statement; }, source))
