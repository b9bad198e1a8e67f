// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>

namespace vexaTransferLib::standard {

/// Looks for the first text of the creator and the model with a character that XML cannot hold.
/// \throws dbc::precondition_error that names the object, the text and the character
void CheckTexts(const GpxDocument& document, const icu::UnicodeString& creator);

} // namespace vexaTransferLib::standard
