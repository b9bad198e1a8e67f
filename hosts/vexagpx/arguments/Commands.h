// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/CommandLine.h>

namespace vexagpx {

// Each gives the tool a command with its arguments, options and examples.

void AddShow(CLI::App& app, Invocation& invocation);
void AddStats(CLI::App& app, Invocation& invocation);
void AddCaches(CLI::App& app, Invocation& invocation);
void AddDump(CLI::App& app, Invocation& invocation);
void AddInfo(CLI::App& app, Invocation& invocation);
void AddIndex(CLI::App& app, Invocation& invocation);
void AddCheck(CLI::App& app, Invocation& invocation);
void AddPlot(CLI::App& app, Invocation& invocation);
void AddConvert(CLI::App& app, Invocation& invocation);
void AddExport(CLI::App& app, Invocation& invocation);
void AddDiff(CLI::App& app, Invocation& invocation);
void AddSet(CLI::App& app, Invocation& invocation);
void AddCut(CLI::App& app, Invocation& invocation);
void AddSimplify(CLI::App& app, Invocation& invocation);
void AddMerge(CLI::App& app, Invocation& invocation);
void AddSplit(CLI::App& app, Invocation& invocation);
void AddReverse(CLI::App& app, Invocation& invocation);
void AddRepair(CLI::App& app, Invocation& invocation);
void AddClean(CLI::App& app, Invocation& invocation);
void AddZip(CLI::App& app, Invocation& invocation);

} // namespace vexagpx
