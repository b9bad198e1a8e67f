// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PlainLexer.h>

#include <algorithm>
#include <limits>

namespace vexaTransferLib::reader {

GpxInputLimits PlainLimits(const std::optional<GpxInputLimits>& given) {
    constexpr std::uint64_t kEndless = std::numeric_limits<std::uint64_t>::max();
    GpxInputLimits limits;
    if (given)
        limits = *given;
    else
        for (std::uint64_t GpxInputLimits::*limit :
             {&GpxInputLimits::elementDepth, &GpxInputLimits::textLength, &GpxInputLimits::attributes,
              &GpxInputLimits::names, &GpxInputLimits::namespaces, &GpxInputLimits::namespaceLength,
              &GpxInputLimits::tagBytes})
            limits.*limit = kEndless;
    limits.attributes = std::min(limits.attributes, kMostPlainAttributes);
    limits.elementDepth = std::min(limits.elementDepth, kMostPlainDepth);
    return limits;
}

} // namespace vexaTransferLib::reader
