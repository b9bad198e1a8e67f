// SPDX-License-Identifier: MIT
#include <common/dbc.h>

#include <cstdio>

namespace dbc {

precondition_error::precondition_error(const std::string& message) : std::logic_error(message) {}
precondition_error::~precondition_error() = default;

postcondition_error::postcondition_error(const std::string& message) : std::logic_error(message) {}
postcondition_error::~postcondition_error() = default;

invariant_error::invariant_error(const std::string& message) : std::logic_error(message) {}
invariant_error::~invariant_error() = default;

void ReportFailure(const char* source, int line) noexcept {
    std::fprintf(stderr, "ASSERT failed at %s:%d\n", source, line);
}

void FailPrecondition(const char* source, int line, const std::string& message) {
    ReportFailure(source, line);
    throw precondition_error(message);
}

void FailPostcondition(const char* source, int line, const std::string& message) {
    ReportFailure(source, line);
    throw postcondition_error(message);
}

void FailInvariant(const char* source, int line, const std::string& message) {
    ReportFailure(source, line);
    throw invariant_error(message);
}

} // namespace dbc
