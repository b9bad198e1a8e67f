// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/model/SourceText.h>
#include <vexaTransferLib/reader/PlainCheck.h>

#include <xercesc/util/BinInputStream.hpp>

#include <cstdint>
#include <optional>
#include <vector>

namespace vexaTransferLib::reader {

/// All bytes of a file, with the padding of a SourceText behind them.
/// \param expectedSize how long the file was; 0 when nobody knows
/// \throws std::bad_alloc; what the stream throws
SourceBytes ReadAll(xercesc::BinInputStream& stream, std::uint64_t expectedSize);

/// Makes the source of a document from the bytes of a plain file. Null when the file is not plain; the bytes are then
/// unchanged.
/// \param bytes moved from, with the padding of a SourceText behind them
/// \param limits of an untrusted file; empty for a trusted one
/// \param longElements gets the long elements in the order of the file
/// \throws std::bad_alloc
SourceText::Pointer MakeSource(SourceBytes& bytes, const std::optional<GpxInputLimits>& limits,
                               std::vector<LongElement>& longElements);

} // namespace vexaTransferLib::reader
