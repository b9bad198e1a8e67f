// SPDX-License-Identifier: MIT
#include "support/Attempts.h"

#include "support/CaughtAs.h"

#include <common/dbc.h>

#include <cstdio>
#include <new>
#include <stdexcept>
#include <typeinfo>

namespace vexaTransferLib::testing_support {

namespace {

const char* KindOf(const std::exception& failure) {
    if (CaughtAs(failure) == typeid(dbc::precondition_error))
        return "precondition";
    if (CaughtAs(failure) == typeid(dbc::postcondition_error))
        return "postcondition";
    if (CaughtAs(failure) == typeid(dbc::invariant_error))
        return "invariant";
    return typeid(failure) == typeid(std::runtime_error) ? "runtime" : "unexpected";
}

} // namespace

std::string Describe(const std::exception& failure) {
    if (typeid(failure) == typeid(std::bad_alloc))
        return kBadAlloc;
    return std::string(KindOf(failure)) + ": " + failure.what();
}

void Record(const std::string& what, std::size_t calls) {
    testing::Test::RecordProperty(what, std::to_string(calls));
    std::printf("[  CALLS   ] %s: %zu\n", what.c_str(), calls);
}

} // namespace vexaTransferLib::testing_support
