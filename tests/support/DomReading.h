// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>

#include <string>

namespace vexaTransferLib::testing_support {

/// Does the same as GpxParser::Parse with the public operations on DOM nodes.
void ReadByDom(GpxParser& parser, const std::string& path, GpxDocument& document);

} // namespace vexaTransferLib::testing_support
