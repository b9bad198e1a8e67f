// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/model/SourceText.h>

#include <string>

namespace vexaTransferLib::testing_support {

/// The source of a text in UTF-8; null when it is not plain.
SourceText::Pointer SourceOf(const std::string& text);

/// The root of a text in UTF-8 that is well-formed XML.
GpxElement RootOf(const std::string& text);

} // namespace vexaTransferLib::testing_support
