// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Output.h>

#include <vexaTransferLib/GpxTarvikExtParser.h>

#include <string>
#include <vector>

namespace vexagpx {

enum class InfoForm { kLine, kJson };

/// What a scan found, on one line.
/// \param entry printed name of an archive's entry; null for a file
void WriteInfo(const vexaTransferLib::GpxTarvikExtParser& scanner, const std::string& file,
               const std::string* entry, InfoForm form, Output& out);

/// The `info` command: reads only the heads of the files. False when one could not be opened or
/// was refused; one that is not well-formed is told of in its line of text.
bool Info(const std::vector<std::string>& files, const InputRules& rules, InfoForm form, Output& out);

} // namespace vexagpx
