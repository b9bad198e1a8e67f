// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Documents.h>
#include <vexagpx/process/Output.h>
#include <vexagpx/report/Contents.h>
#include <vexagpx/report/Receipt.h>

#include <string>

namespace vexagpx {

/// A receipt as one JSON object on one line.
void WriteReceiptJson(const Origin& origin, const Contents& contents, const Receipt& receipt, Output& out);

/// The same of what could not be read: the error, and what the XML parser said.
void WriteFailureJson(const Origin& origin, const std::string& error, const Receipt& receipt, Output& out);

} // namespace vexagpx
