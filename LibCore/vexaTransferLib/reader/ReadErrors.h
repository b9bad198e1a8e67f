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

/// The text in UTF-8; empty for null.
std::string ToUtf8(const char16_t* units);

/// Details whose message names the file.
GpxReadErrorDetails MakeDetails(GpxReadErrorKind kind, const InputName& name, std::string messageStart,
                                std::string messageEnd = {});
/// An error with the message of the details.
GpxReadError MakeError(const InputName& name, const GpxReadErrorDetails& details);

/// Ends the reading of an untrusted file.
/// \throws ReadAborted with a GpxReadError
[[noreturn]] void RefuseUntrusted(GpxReadErrorKind kind, const InputName& name, const std::string& why);
/// The same for a limit that is exceeded: "It has more points than 5 (limit of points)."
[[noreturn]] void RefuseOverLimit(const InputName& name, const char* what, std::uint64_t limit,
                                  const char* limitName);

/// \throws GpxReadError for a file that is not read because the XML parser has found errors
[[noreturn]] void FailWithErrors(const InputName& name, bool isOpened, const GpxParserMessage& firstError);
/// \throws GpxReadError for a file that could not be opened when the host ignores that error
[[noreturn]] void FailWithoutDocument(const InputName& name);

// These are called within a handler of any exception.

/// Rethrows an exception of the XML parser as a GpxReadError, any other unchanged.
/// \param isOpened false when the file could not be opened or read at all
[[noreturn]] void RethrowParserException(const InputName& name, bool isOpened);
/// Rethrows contract errors as GpxReadError and GpxReadValueError, any other exception unchanged.
/// \param isGpx false when the root element is not one of GPX
[[noreturn]] void RethrowContentError(const InputName& name, bool isGpx, SourceLocation location);

} // namespace vexaTransferLib::reader
