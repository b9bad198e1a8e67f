// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vexaTransferLib::testing_support {

/// Every difference between two documents, one text each: where it is, what was expected and what is there,
/// e.g. `track 0, segment 1, point 5, name: "a", not "b"`. No field is left out; numbers are compared bit by
/// bit (all NaNs are one). Of two lists of different length only the lengths are reported, and of two points of
/// different kinds only the kinds.
std::vector<std::string> DifferencesOf(const GpxDocument& expected, const GpxDocument& actual);

/// True when there is no difference; otherwise prints the first ones and their number.
testing::AssertionResult IsSameModel(const GpxDocument& expected, const GpxDocument& actual);

} // namespace vexaTransferLib::testing_support
