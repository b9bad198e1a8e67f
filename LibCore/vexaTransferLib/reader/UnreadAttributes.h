// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/SkipReporter.h>

namespace vexaTransferLib::reader {

/// Reports the attributes of an element that is kept, but those of these names. For an observer only.
/// \param noLoss the name of one that is reported, but is no loss; may be null
void NotifyUnreadAttributes(SkipReporter& reporter, const NodeView& element, AttributeNames read,
                            const char16_t* noLoss);

inline void ReportUnreadAttributes(SkipReporter& reporter, const NodeView& element, AttributeNames read = {},
                                   const char16_t* noLoss = nullptr) {
    if (reporter.IsWanted())
        NotifyUnreadAttributes(reporter, element, read, noLoss);
}

} // namespace vexaTransferLib::reader
