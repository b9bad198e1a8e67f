// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/saving/Saving.h>
#include <vexaTransferLib/saving/TextEdits.h>

#include <vexaTransferLib/GpxDocument.h>

namespace vexaTransferLib::saving {

/// What GpxElementEditor changed in the document, in the order of the text. What is inside of something that is removed
/// or replaced is left out.
TextEdits MakeElementChanges(Saving& saving, const GpxDocument& document);

} // namespace vexaTransferLib::saving
