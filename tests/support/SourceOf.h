// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxElement.h>

#include <string>

namespace vexaTransferLib::testing_support {

/// The root of a text in UTF-8 that is well-formed XML.
GpxElement RootOf(const std::string& text);

} // namespace vexaTransferLib::testing_support
