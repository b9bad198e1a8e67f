// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A link as a file has it.

#include <common/Export.h>

#include <unicode/unistr.h>

namespace vexaTransferLib {

/// A link of a document that was read completely: the `link` element of GPX 1.1, or the `url` and `urlname` of GPX
/// 1.0. Plain data, a copy of what the file has; nothing is checked or trimmed. A part that the file does not have
/// is empty.
///
///     for (const GpxLink& link : GpxPointDetails(point.GetElement()).GetLinks())
///         Show(link.text.isEmpty() ? link.href : link.text);
struct VEXATRANSFERLIB_API GpxLink {
    icu::UnicodeString href; ///< the address; may be relative, and whatever else the file has there
    icu::UnicodeString text; ///< what to show for it
    icu::UnicodeString type; ///< the MIME type of its target; GPX 1.1 only
};

} // namespace vexaTransferLib
