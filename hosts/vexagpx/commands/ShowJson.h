// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/process/Output.h>

#include <vexaTransferLib/GpxDocument.h>

namespace vexagpx {

/// Writes what `show` tells about a document, all of it, as one JSON object on one line.
void WriteShowJson(const vexaTransferLib::GpxDocument& document, const DocumentSource& source, Output& out);

} // namespace vexagpx
