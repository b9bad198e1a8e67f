// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/model/SourceText.h>

#include <optional>
#include <string>

namespace vexaTransferLib::reader {

/// Makes the source of a document from the bytes of a plain file. Null when the file is not plain; the bytes are then
/// unchanged.
/// \param bytes moved from
/// \param limits of an untrusted file; empty for a trusted one
/// \throws std::bad_alloc
SourceText::Pointer MakeSource(std::string& bytes, const std::optional<GpxInputLimits>& limits);

} // namespace vexaTransferLib::reader
