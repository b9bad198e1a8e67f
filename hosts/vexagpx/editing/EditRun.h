// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/editing/ChangeList.h>
#include <vexagpx/editing/EditOptions.h>
#include <vexagpx/input/Input.h>
#include <vexagpx/process/Output.h>

#include <vexaTransferLib/GpxDocument.h>

#include <functional>
#include <string>

namespace vexagpx {

/// Changes a document and tells what it changed.
using Edit = std::function<void(vexaTransferLib::GpxDocument& document, ChangeList& changes)>;

/// Reads a file completely, changes it, saves it so that nothing else of it changes, and tells what changed: on
/// standard output, or on standard error when the result goes to standard output. A file is replaced as a whole or not
/// at all. False after a failure, which has been reported; nothing is written then.
bool RunEdit(const EditOptions& options, const Edit& edit, Output& standardOutput);

/// Makes the bytes that a file becomes, and tells what it changed.
/// \throws std::runtime_error when it cannot
using ByteEdit = std::function<std::string(const InputFile& file, ChangeList& changes)>;

/// As RunEdit, for a file that may be no document yet.
bool RunByteEdit(const EditOptions& options, const ByteEdit& edit, Output& standardOutput);

} // namespace vexagpx
