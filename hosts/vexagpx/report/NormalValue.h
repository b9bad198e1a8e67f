// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxElement.h>

#include <string>
#include <string_view>

namespace vexagpx {

/// A decimal number as one text for each value, whatever its digits: "15e-1" for "+01.50", " 1.5 " and "15e-1". Any
/// other text as it is.
std::string NormalNumber(std::string_view text);

/// The text of an element as one text for each instant, all digits of its fraction included. A time without a zone
/// counts as UTC. Any other text as it is.
std::string NormalTime(const vexaTransferLib::GpxElement& element, const std::string& text);

} // namespace vexagpx
