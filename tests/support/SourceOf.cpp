// SPDX-License-Identifier: MIT
#include "support/SourceOf.h"

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/model/SourceText.h>
#include <vexaTransferLib/reader/SourceMaker.h>

#include <optional>
#include <stdexcept>

namespace vexaTransferLib::testing_support {

GpxElement RootOf(const std::string& text) {
    std::string bytes = text;
    const SourceText::Pointer source = reader::MakeSource(bytes, std::nullopt);
    if (!source)
        throw std::invalid_argument("not plain: " + text);
    return GpxModelAccess::MakeElement(source, source->RootPlace());
}

} // namespace vexaTransferLib::testing_support
