// SPDX-License-Identifier: MIT
#include "support/SourceOf.h"

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/model/SourceText.h>
#include <vexaTransferLib/reader/SourceMaker.h>

#include <optional>
#include <stdexcept>
#include <vector>

namespace vexaTransferLib::testing_support {

SourceText::Pointer SourceOf(const std::string& text) {
    SourceBytes bytes;
    bytes.Append(text);
    bytes.Finish(SourceText::kPadding);
    std::vector<reader::LongElement> longElements;
    return reader::MakeSource(bytes, std::nullopt, longElements);
}

GpxElement RootOf(const std::string& text) {
    const SourceText::Pointer source = SourceOf(text);
    if (!source)
        throw std::invalid_argument("not plain: " + text);
    return GpxModelAccess::MakeElement(source, source->RootPlace());
}

} // namespace vexaTransferLib::testing_support
