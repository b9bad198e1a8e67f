// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/reader/ByteWindow.h>

#include <xercesc/framework/MemBufInputSource.hpp>

#include <cstddef>
#include <memory>
#include <string_view>

namespace vexaTransferLib::testing_support {

/// A window on bytes in memory, which must stay valid.
inline reader::ByteWindow WindowOn(std::string_view bytes,
                                   std::size_t capacity = reader::ByteWindow::kStartCapacity) {
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.data()), bytes.size(),
                                            "bytes");
    auto* const stream = source.makeStream();
    return reader::ByteWindow(std::unique_ptr<xercesc::BinInputStream>(stream), capacity);
}

} // namespace vexaTransferLib::testing_support
