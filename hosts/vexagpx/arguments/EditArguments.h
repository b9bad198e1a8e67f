// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/CommandLine.h>
#include <vexagpx/editing/EditOptions.h>
#include <vexagpx/editing/PathChoice.h>

#include <CLI/CLI.hpp>

namespace vexagpx {

/// What all commands take that change a document: IN, OUT and how to write.
/// \param options part of those of the command
void AddEdit(CLI::App& command, Invocation& invocation, EditOptions& options);

/// For the callback that is called after all arguments of a command with AddEdit were taken.
/// \throws CLI::ValidationError when the files to read and to write do not fit together
void CheckEditFiles(const EditOptions& options);

/// \param choice part of the options of the command
void AddPathChoice(CLI::App& command, PathChoice& choice);

} // namespace vexagpx
