// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/process/Output.h>

#include <vexaTransferLib/GpxHead.h>

#include <unicode/unistr.h>

namespace vexagpx {

/// Writes a line for each thing that the head of a GPX file says, indented, without what is absent or empty, and one
/// for a file that has nothing after the head.
/// \param shownTime the time that the user sees already; the head's is left out when its text is the same
void WriteHeadText(const vexaTransferLib::GpxHead& head, const icu::UnicodeString& shownTime, Output& out);

/// Writes the member "head" of the current object, with everything that is present and what has ended the head.
void WriteHeadJson(const vexaTransferLib::GpxHead& head, JsonWriter& json);

} // namespace vexagpx
