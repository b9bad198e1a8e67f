// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/unistr.h>

#include <string>

namespace vexaTransferLib::testing_support {

/// The code units as bytes; no byte order mark is added.
std::string InUtf16(const icu::UnicodeString& text, bool bigEndian);

} // namespace vexaTransferLib::testing_support
