// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PlainCheck.h>

#include <vexaTransferLib/reader/ChildCounter.h>
#include <vexaTransferLib/reader/PlainLexer.h>

#include <algorithm>

namespace vexaTransferLib::reader {

void SortByPlace(std::vector<LongElement>& longElements) {
    std::sort(longElements.begin(), longElements.end(),
              [](const LongElement& left, const LongElement& right) { return left.begin < right.begin; });
}

NotPlain CheckPlain(ByteWindow& window, const std::optional<GpxInputLimits>& limits,
                    std::vector<LongElement>& longElements) {
    ChildCounter counter(longElements);
    const NotPlain why = LexPlain(window, limits, counter);
    SortByPlace(longElements);
    return why;
}

} // namespace vexaTransferLib::reader
