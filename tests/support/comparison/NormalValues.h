// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vexaTransferLib::testing_support {

/// The text without blanks, tabs and line ends at both ends.
std::string_view TrimmedXml(std::string_view text);

/// A decimal number as one text for each value: "1.5" for "+01.50", " 1.5 " and "15e-1". All digits count. A text
/// that is no decimal number is returned as it is.
std::string NormalNumber(std::string_view text);

/// A time as one text for each instant, in UTC and without zeros at the end of the fraction. A time without a
/// zone is one in UTC. A text that is no date and time is returned as it is.
std::string NormalTime(std::string_view text);

} // namespace vexaTransferLib::testing_support
