// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <vexaTransferLib/GpxDocument.h>

#include <string>
#include <vector>

namespace vexagpx {

/// Writes the whole model as one JSON object on one line, with what a completely read document has beside it.
void DumpDocument(const vexaTransferLib::GpxDocument& document, const DocumentSource& source, Output& out);

struct DumpOptions {
    std::vector<std::string> files;
    InputRules rules;
};

/// The `dump` command. False when a file could not be read.
bool Dump(const DumpOptions& options, Output& out);

} // namespace vexagpx
