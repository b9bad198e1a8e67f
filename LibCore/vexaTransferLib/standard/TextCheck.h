// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>

#include <unicode/unistr.h>

#include <optional>

namespace vexaTransferLib::standard {

/// The first character of a text that XML cannot hold.
std::optional<char32_t> FirstUnwritable(const icu::UnicodeString& text);

/// Looks for the first text of the creator and the model with a character that XML cannot hold.
/// \throws dbc::precondition_error that names the object, the text and the character
void CheckTexts(const GpxDocument& document, const icu::UnicodeString& creator);

} // namespace vexaTransferLib::standard
