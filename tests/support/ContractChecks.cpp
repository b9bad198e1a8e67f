// SPDX-License-Identifier: MIT
#include "support/ContractChecks.h"

#include "support/CaughtAs.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <string_view>

namespace vexaTransferLib::testing_support {

namespace {

bool IsLineNumber(std::string_view text) {
    return !text.empty() && text.front() != '0' && text.find_first_not_of("0123456789") == text.npos;
}

// True for a line that contains a check, or that represents a check in another file.
bool HasACheck(std::string_view line) {
    constexpr std::array<std::string_view, 5> kChecks = {"dbc::", "Here()", "__LINE__", "RequireNotBogus(",
                                                         "Utf8Sink "};
    return std::any_of(kChecks.begin(), kChecks.end(),
                       [&](std::string_view check) { return line.find(check) != line.npos; });
}

testing::AssertionResult HasReport(const std::string& written, const std::string& source) {
    if (!source.empty()) {
        const testing::AssertionResult isOne = IsOneReport(written, source);
        const std::string line = isOne ? ReportedLine(written) : "";
        if (!isOne || HasACheck(line))
            return isOne;
        return testing::AssertionFailure() << written << "no check is there: \"" << line << "\"";
    }
    if (written.empty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "nothing may be written, but this was: " << written;
}

} // namespace

std::string CaptureStandardError(const std::function<void()>& action) {
    testing::internal::CaptureStderr();
    try {
        action();
    } catch (...) {
        testing::internal::GetCapturedStderr();
        throw;
    }
    return testing::internal::GetCapturedStderr();
}

testing::AssertionResult IsOneReport(const std::string& text, const std::string& source) {
    const std::string start = "ASSERT failed at " + source + ":";
    std::string_view line(text);
    if (line.starts_with(start) && line.ends_with('\n')) {
        line.remove_prefix(start.size());
        line.remove_suffix(1);
        if (IsLineNumber(line))
            return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "expected one report of " << source << ", got: \"" << text << "\"";
}

std::string ReportedLine(const std::string& text) {
    constexpr std::string_view kStart = "ASSERT failed at ";
    const std::size_t colon = text.find(':');
    if (!text.starts_with(kStart) || colon == text.npos)
        return "";
    std::ifstream file(std::string(VEXA_TEST_DATA) + "/../../" +
                       text.substr(kStart.size(), colon - kStart.size()));
    std::string line;
    for (long left = std::atol(text.c_str() + colon + 1); left > 0; --left)
        if (!std::getline(file, line))
            return "";
    return line.substr(std::min(line.find_first_not_of(' '), line.size()));
}

testing::AssertionResult Throws(const std::function<void()>& action, const std::type_info& type,
                                const std::string& message, const std::string& source) {
    std::string what;
    const std::type_info* thrown = nullptr;
    const std::string written = CaptureStandardError([&] {
        try {
            action();
        } catch (const std::exception& exception) {
            thrown = &CaughtAs(exception);
            what = exception.what();
        }
    });
    if (thrown == nullptr)
        return testing::AssertionFailure() << "nothing was thrown; expected \"" << message << "\"";
    if (*thrown != type)
        return testing::AssertionFailure()
               << "thrown: " << thrown->name() << " \"" << what << "\"; expected " << type.name();
    if (what != message)
        return testing::AssertionFailure() << "message: \"" << what << "\"; expected \"" << message << "\"";
    return HasReport(written, source);
}

testing::AssertionResult ReportsOnly(const std::function<void()>& action, const std::string& source) {
    try {
        return HasReport(CaptureStandardError(action), source);
    } catch (const std::exception& exception) {
        return testing::AssertionFailure()
               << "thrown: " << typeid(exception).name() << " \"" << exception.what() << "\"";
    }
}

} // namespace vexaTransferLib::testing_support
