// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxError.h>
#include <vexaTransferLib/GpxReadObserver.h>
#include <vexaTransferLib/reader/InputName.h>
#include <vexaTransferLib/reader/NodeView.h>

#include <cstdint>
#include <string>

namespace vexaTransferLib::reader {

/// In UTF-8; empty for null.
std::string ToUtf8(const char16_t* units);

/// Details whose message names the file.
GpxReadErrorDetails MakeDetails(GpxReadErrorKind kind, const InputName& name, std::string messageStart,
                                std::string messageEnd = {});
/// An error with the message of the details.
GpxReadError MakeError(const InputName& name, const GpxReadErrorDetails& details);

/// Ends the reading of an untrusted file.
/// \throws ReadAborted with a GpxReadError
[[noreturn]] void RefuseUntrusted(GpxReadErrorKind kind, const InputName& name, const std::string& why);
/// The same for a limit: "It has more points than 5 (limit of points)."
[[noreturn]] void RefuseOverLimit(const InputName& name, const char* what, std::uint64_t limit,
                                  const char* limitName);

/// \throws GpxReadError for a file that is not read because the XML parser has found errors
[[noreturn]] void FailWithErrors(const InputName& name, bool isOpened, const GpxParserMessage& firstError);
/// \throws GpxReadError for a file of which the host ignores that it could not be opened
[[noreturn]] void FailWithoutDocument(const InputName& name);

// For the handler of any exception.

/// Throws the XML parser's own exceptions as GpxReadError, any other as it is.
/// \param isOpened false when nothing could be read of the file
[[noreturn]] void RethrowParserException(const InputName& name, bool isOpened);
/// Throws contract errors as GpxReadError and GpxReadValueError, any other as it is.
/// \param isGpx false when the root element is none of GPX
[[noreturn]] void RethrowContentError(const InputName& name, bool isGpx, SourceLocation location);

} // namespace vexaTransferLib::reader
